#pragma once

#include <string>

#include "CATIDOMDocument.h"
#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"
#include "HostError.h"
#include "QTBConstants.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIRepNodeCont.h"

class QTBPdmStore;

// A PDM session with one open PDM window, from construction to destruction. Operations raise HostError.
class HostSession
{
public:
    // schema: path of the schema file, empty for the example schema. language: of the messages, empty for English.
    HostSession(const std::string& schema, const std::string& language);
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;
    ~HostSession();

    // Language of messages and display names from now on; "English" or the name of a folder of the message catalogs.
    void SetLanguage(const std::string& language);

    // Opens a CAD assembly: a product structure file (.xml) or a STEP file. Each document gets an editor and a window.
    // The answer is the documents that the file opens for themselves, without those that have a window already; an
    // assembly of which all have one is refused. The boxes of a STEP file's shapes are read when
    // they are asked for; those of a product structure file always.
    CATListValCATBaseUnknown_var OpenAssembly(const std::string& path, bool withBoxes = false);

    // Closes the assemblies that are open.
    void CloseAssemblies();

    // Makes a PDM store the session's PDM system, in the place of the one before. An empty user stands for who runs the
    // program.
    void ConnectStore(const std::string& path, const std::string& user);
    // Null without one.
    QTBPdmStore* GetStore() const;
    const std::string& GetStorePath() const { return m_StorePath; }

    // Reads a PDM answer as a command does: updates the PDM graph and lets the windows follow. Returns what the graph
    // left out, for people; empty when it took all.
    std::string ReadAnswer(const std::string& path);

    // The same for an answer that a command line names: "-" is what comes from the standard input.
    std::string ReadAnswerArgument(const std::string& argument);

    // Expands every root of the PDM window along all relations of the schema, from left to right, whatever the action
    // that read them.
    void ExpandEverything();

    // Shows PDM objects as roots, those of other actions too where the nodes say so; one that the container shows
    // somewhere stays there. All are tried before the first failure is raised.
    static void AddRoots(const QTBIRepNodeCont_var& spIRepNodeCont, const CATListValCATBaseUnknown_var& pdmObjects,
                         NodesToRetrieve nodes = ALL_NODES);
    // The same in an empty window: what it showed before goes.
    static void ReplaceRoots(const QTBIRepNodeCont_var& spIRepNodeCont, const CATListValCATBaseUnknown_var& pdmObjects,
                             NodesToRetrieve nodes = ALL_NODES);

    // The roots that the PDM window shows.
    CATListValCATBaseUnknown_var GetRoots() const;

    const QTBIPdmNodeCont_var& GetPdmNodeCont() const { return m_spIPdmNodeCont; }
    const QTBIRepNodeCont_var& GetRepNodeCont() const { return m_spIRepNodeCont; }

    // What a failed result says to a person.
    static std::string Describe(HRESULT hr);

    // Raises HostError with the result's message behind the given words when the result is a failure.
    static void Require(HRESULT hr, ExitCode exitCode, const std::string& what);

    // Raises HostError when there is no such file; the role says what it was to be.
    static void RequireFile(const std::string& path, const std::string& role);

private:
    std::string TakeAnswer(const CATIDOMDocument_var& spAnswer, const std::string& name);

    QTBIPdmNodeCont_var m_spIPdmNodeCont;
    QTBIRepNodeCont_var m_spIRepNodeCont;
    CATListValCATBaseUnknown_var m_Assemblies;
    CATBaseUnknown_var m_spStore;
    std::string m_StorePath;
};

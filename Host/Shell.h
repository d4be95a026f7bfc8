#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "HostSession.h"
#include "QTBIRepNode.h"
#include "QTBNodeRelationInfo.h"

class CATCmdAccess;
class CATFrmWindow;

// The commands of an interactive session. A command that fails says why and leaves the session as it is.
class Shell
{
public:
    // Writes everything it has to say to the stream.
    Shell(HostSession& session, std::ostream& out);
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;
    ~Shell();

    // Runs one line: a command with its arguments, an empty line or a comment that begins with #. A line of more than
    // MAX_LINE_LENGTH bytes fails. False when the session is to end.
    bool Execute(const std::string& line);
    static constexpr std::size_t MAX_LINE_LENGTH = 1000000;

    // The next line of a stream, as far as one byte more than Execute takes: the rest of a longer one is passed over.
    // False at the end of the stream.
    static bool ReadLine(std::istream& input, std::string* pLine);

    // Lines that failed so far.
    int GetFailureCount() const { return m_FailureCount; }

    // Names of all commands, for completion.
    std::vector<std::string> GetCommandNames() const;

private:
    using Arguments = std::vector<std::string>;
    struct Command
    {
        std::string arguments;
        std::string help;
        std::size_t fewest; // arguments
        std::size_t most;
        void (Shell::*pRun)(const Arguments&);
    };

    void Help(const Arguments& arguments);
    void Answer(const Arguments& arguments);
    void Assembly(const Arguments& arguments);
    void Open(const Arguments& arguments);
    void Windows(const Arguments& arguments);
    void Window(const Arguments& arguments);
    void Close(const Arguments& arguments);
    void Roots(const Arguments& arguments);
    void Tree(const Arguments& arguments);
    void Expand(const Arguments& arguments);
    void ExpandAll(const Arguments& arguments);
    void Fold(const Arguments& arguments);
    void Menu(const Arguments& arguments);
    void Pick(const Arguments& arguments);
    void Highlight(const Arguments& arguments);
    void Select(const Arguments& arguments);
    void Properties(const Arguments& arguments);
    void Products(const Arguments& arguments);
    void Show(const Arguments& arguments);
    void Consider(const Arguments& arguments);
    void Messages(const Arguments& arguments);
    void Notices(const Arguments& arguments);
    void Language(const Arguments& arguments);
    void Quit(const Arguments& arguments);

    CATFrmWindow* GetWindow() const;
    QTBIRepNodeCont_var GetContainer() const;
    // The rep node of a line of the tree printed last, or of a PDM key in the current window.
    QTBIRepNode_var GetNode(const std::string& name) const;
    CATListValQTBNodeRelationInfo GetRelations(const Arguments& arguments, std::size_t first) const;
    void ExpandNode(const Arguments& arguments, unsigned char bOneLevelOnly);
    // Numbers and prints the items of a menu.
    void PrintMenu(CATCmdAccess* pFirstItem);
    void DropMenu();

    HostSession& m_Session;
    std::ostream& m_Out;
    std::map<std::string, Command> m_Commands;
    std::vector<CATBaseUnknown_var> m_TreeNodes; // of the tree printed last, in its order
    CATListValCATBaseUnknown_var m_Documents;
    NodesToRetrieve m_Consider = ALL_NODES;
    // The menu printed last: its root, its items by number and the node that it belongs to.
    CATCmdAccess* m_pMenu = nullptr;
    std::vector<CATCmdAccess*> m_MenuItems;
    CATBaseUnknown_var m_spMenuNode;
    int m_FailureCount = 0;
    bool m_IsOver = false;
};

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIRepNodeCont.h"

using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;
using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;

// A session for one input of a fuzz target: the shipped catalogs and schema, an empty PDM graph, no windows. It ends
// with the object; a component that outlives it ends the program with a message, as a leak would.
//
// Nothing an input makes is written anywhere but to a folder of this process, in memory where that is possible.
class QTBFuzzSession
{
public:
    QTBFuzzSession();
    QTBFuzzSession(const QTBFuzzSession&) = delete;
    QTBFuzzSession& operator=(const QTBFuzzSession&) = delete;
    ~QTBFuzzSession();

    // Puts the shipped schema in force, where an input has put its own.
    static void LoadShippedSchema();

    static QTBIPdmNodeCont_var GetPdmNodeCont();

    // Reads an answer and lets the windows follow. What the answer is refused for does not matter.
    static void ReadAnswer(std::string_view xml);

    // Opens a PDM window; the container of its rep nodes.
    static QTBIRepNodeCont_var OpenWindow();

    // Expands every root of a window along all relations of the schema in one direction, all the way down.
    static void ExpandAll(const QTBIRepNodeCont_var& spIRepNodeCont, bool leftToRight);

    // Folds every root's first branch, and the first branch of the one after that.
    static void FoldSome(const QTBIRepNodeCont_var& spIRepNodeCont);

    // Asks every node of the graph and every rep node of a window for what a user can see of it.
    static void LookAtEverything(const QTBIRepNodeCont_var& spIRepNodeCont);

    // Ends the program with a message when what has to hold between operations does not.
    static void CheckInvariants();

    // The bytes of an input as text.
    static std::string_view ToText(const std::uint8_t* data, std::size_t size)
    {
        return {reinterpret_cast<const char*>(data), size};
    }
    static std::vector<std::string_view> SplitLines(std::string_view text);

    // The folder for files, which ends with the process, and a file in it.
    static const std::string& GetFolder();
    static std::string WriteFile(const std::string& name, std::string_view content);

    // Ends the program: something is wrong that no sanitizer sees.
    [[noreturn]] static void Fail(const std::string& what);

private:
    int m_ComponentsBefore = 0;
};

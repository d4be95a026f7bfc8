#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"

class CATFrmWindow;
class CATPathElementSet;

// The displayed trees of a PDM window, taken down for printing.
namespace TreePrinter {

// One displayed rep node; nodes stand in the order in which a tree is read from top to bottom.
struct Line
{
    std::string text;     // the display string
    std::string pdmClass; // PDM class of the node, empty when the rep node lost its PDM node
    std::string key;      // PDM key, likewise
    int level;            // 0 for a root
    bool isRelation;
    bool isLast;     // the last child of its parent
    int hiddenBelow; // nodes left out below this one, because of the level limit
    bool isHighlighted = false;
    CATBaseUnknown_var spNode{}; // the rep node
    bool isPreselected = false;
    std::string icon{}; // of the navigation tree, empty where that was not asked
    int stateCode = 0;  // the state that the navigation tree marks, 0 for none
    std::string version{};
    std::string checkedOutBy{}; // user, empty when nobody has it checked out
};

// Walks the trees from the given root rep nodes. Children below maxLevel are only counted; -1 for no limit. What is in
// pHighlighted, which may be null, is highlighted.
std::vector<Line> Collect(const CATListValCATBaseUnknown_var& roots, int maxLevel,
                          const CATPathElementSet* pHighlighted = nullptr);

// The navigation tree of a PDM window, all of it unfolded, with icons and states: the whole tree, or what stands below
// one rep node, that one included. maxLevel as above, counted from there.
std::vector<Line> CollectWindow(CATFrmWindow& window, int maxLevel, const CATBaseUnknown_var& spBranch = NULL_var);

// What a marked state means, in a word or two; empty for no state.
std::string DescribeState(int stateCode);

// Indented trees with the PDM class in a column of its own, and behind it version, icon and state where there are any.
// With colours for a terminal that has them.
void PrintText(std::ostream& stream, const std::vector<Line>& lines, bool hasColors = false);

// A JSON array with an object for each root: display, class, key, kind and, where there are any, children.
// indent is the number of blanks in front of each line.
void PrintJson(std::ostream& stream, const std::vector<Line>& lines, int indent);

} // namespace TreePrinter

#pragma once

#include <map>
#include <string>
#include <vector>

#include "CATDOMElementView.h"
#include "CATIDOMDocument.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

class QTBSchema;

// What the answer to a change says, as text for people: a line for each item.
namespace AnswerText {

// KEY: description, version and state of objects that have them.
std::string DescribeObjects(const CATListValCATBaseUnknown_var& pdmObjects);

// KEY: LEFT -> RIGHT, as the answer has them, whether or not the graph holds their objects.
std::string DescribeRelations(const CATIDOMDocument_var& spAnswer);
int CountRelations(const CATIDOMDocument_var& spAnswer);

// KEY: deleted
std::string DescribeDeleted(const CATIDOMDocument_var& spAnswer);

// The items of an answer that the PDM graph leaves out. Made before the graph reads the answer and takes its items.
class LeftOut
{
public:
    explicit LeftOut(const CATIDOMDocument_var& spAnswer);

    // How many there are and why, in one line that names the first of them; empty when the graph took all.
    // relationsRead are those that it linked (QTBIPdmNodeCont::UpdatePdmGraph).
    std::string Describe(const CATListValCATBaseUnknown_var& relationsRead);

private:
    static constexpr int MAX_NAMED = 5;
    struct Group
    {
        int count = 0;
        int named = 0;
        std::string keys;
    };

    bool IsReadable(const CATDOMElementView& item, const QTBSchema& schema);
    void Add(const char* reason, const CATUnicodeString& usKey);

    std::map<std::string, Group> m_Groups; // by reason
    int m_Count = 0;
    std::vector<CATUnicodeString> m_Relations;
};

// Version and state of an object, with a comma in front; empty for an object that has neither.
std::string DescribeState(const CATBaseUnknown_var& spPdmObject);

} // namespace AnswerText

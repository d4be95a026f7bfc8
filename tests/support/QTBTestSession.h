#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"

// Fixture with the project's message catalogs and schema and a fresh session: an empty PDM graph, no windows, no
// connection to a PDM system, action index 0, debug output off. When a test ends the session is closed, and no
// component may be alive that was not there before.
class QTBTestSession : public ::testing::Test
{
protected:
    QTBTestSession();
    ~QTBTestSession() override;

    void SetUp() override;
    void TearDown() override;

    // The session's PDM node container.
    static QTBIPdmNodeCont_var GetPdmNodeCont();

    // Feeds an answer, whole or as the content of its function element, to UpdatePdmGraph. Update expects success.
    static HRESULT TryUpdate(const std::string& answer);
    static void Update(const std::string& items);

    // The node under that key, empty when there is none.
    static CATBaseUnknown_var FindNode(const char* key);
    static QTBIPdmNode_var PdmNode(const char* key) { return FindNode(key); }
    static QTBIPdmObjNode_var ObjNode(const char* key) { return FindNode(key); }
    static QTBIPdmRelNode_var RelNode(const char* key) { return FindNode(key); }

    // What a node says of itself.
    static std::string KeyOf(const CATBaseUnknown_var& spNode);
    static std::string AttributeOf(const CATBaseUnknown_var& spNode, const char* name);
    static std::string InfoOf(const CATBaseUnknown_var& spNode, const char* name);

    // Keys of the nodes of a list, in its order.
    static std::vector<std::string> KeysOf(const CATListValCATBaseUnknown_var& nodes);
    static std::vector<std::string> TextsOf(const CATListValCATUnicodeString& texts);

    // Keys of all nodes of the graph, sorted.
    static std::vector<std::string> AllKeys();

    // Keys of a node's neighbours under a relation name.
    static std::vector<std::string> RightKeys(const char* key, const char* relationName);
    static std::vector<std::string> LeftKeys(const char* key, const char* relationName);

    // Pieces of an answer. further is XML to stand among the item's attributes (Attribute and Info make it).
    static std::string Attribute(std::string_view name, std::string_view value);
    struct InfoEntry
    {
        std::string_view name;
        std::string_view value;
    };
    static std::string Info(std::initializer_list<InfoEntry> entries);
    static std::string Object(std::string_view className, std::string_view key, std::string_view further = "");
    static std::string Part(std::string_view key, std::string_view further = "");
    static std::string Relation(std::string_view className, std::string_view key, std::string_view leftKey,
                                std::string_view rightKey, std::string_view further = "");
    // Part-to-part relation whose objects are the parts of these keys.
    static std::string PartPart(std::string_view key, std::string_view leftKey, std::string_view rightKey,
                                std::string_view further = "");
    // A whole answer around items.
    static std::string Answer(std::string_view items);

private:
    int m_ComponentsBefore = 0;
};

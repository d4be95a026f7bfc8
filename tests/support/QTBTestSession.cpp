#include "QTBTestSession.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "CATBaseUnknown.h"
#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBDebugUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBSchemaUtil.h"

namespace {

std::string ToString(const CATUnicodeString& text)
{
    return std::string(text.View());
}

std::string MessageOf(HRESULT hr)
{
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    return pError != nullptr ? ToString(pError->GetNLSMessage()) : "no error object";
}

// Text as it stands in XML.
std::string Escape(std::string_view text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

} // namespace

QTBTestSession::QTBTestSession() = default;
QTBTestSession::~QTBTestSession() = default;

void QTBTestSession::SetUp()
{
    CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
    QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
    // Each test starts from a session of its own, whatever ran before it.
    QTBGlobVarsUtil::EndSession();
    const HRESULT hr = QTBSchemaUtil::LoadSchema(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
    ASSERT_TRUE(SUCCEEDED(hr)) << MessageOf(hr);
    m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount();
    ASSERT_TRUE(GetPdmNodeCont() != NULL_var);
}

void QTBTestSession::TearDown()
{
    QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
    QTBGlobVarsUtil::EndSession();
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore) << "components outlive the session";
}

QTBIPdmNodeCont_var QTBTestSession::GetPdmNodeCont()
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    EXPECT_TRUE(SUCCEEDED(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont)));
    return spIPdmNodeCont;
}

HRESULT QTBTestSession::TryUpdate(const std::string& answer)
{
    return GetPdmNodeCont()->UpdatePdmGraph(CATUnicodeString(answer), nullptr, nullptr);
}

void QTBTestSession::Update(const std::string& items)
{
    const HRESULT hr = TryUpdate(Answer(items));
    ASSERT_TRUE(SUCCEEDED(hr)) << MessageOf(hr);
}

CATBaseUnknown_var QTBTestSession::FindNode(const char* key)
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bNodeFound = FALSE;
    EXPECT_TRUE(SUCCEEDED(GetPdmNodeCont()->GetPdmNodeByKey(key, &spIPdmNode, &bNodeFound)));
    EXPECT_EQ(bNodeFound != FALSE, spIPdmNode != NULL_var);
    return spIPdmNode;
}

std::string QTBTestSession::KeyOf(const CATBaseUnknown_var& spNode)
{
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    CATUnicodeString usKey("no node");
    if (spINodeAttributes != NULL_var) {
        spINodeAttributes->GetKey(&usKey);
    }
    return ToString(usKey);
}

std::string QTBTestSession::AttributeOf(const CATBaseUnknown_var& spNode, const char* name)
{
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    CATUnicodeString usValue;
    if (spINodeAttributes == NULL_var ||
        FAILED(spINodeAttributes->GetStringAttributeValue(name, &usValue, FALSE, FALSE))) {
        return "not defined";
    }
    return ToString(usValue);
}

std::string QTBTestSession::InfoOf(const CATBaseUnknown_var& spNode, const char* name)
{
    const QTBIPdmNode_var spIPdmNode(spNode);
    CATUnicodeString usValue;
    if (spIPdmNode == NULL_var || FAILED(spIPdmNode->GetQtbInfoAttr(name, &usValue, FALSE, nullptr, TRUE))) {
        return "not defined";
    }
    return ToString(usValue);
}

std::vector<std::string> QTBTestSession::KeysOf(const CATListValCATBaseUnknown_var& nodes)
{
    std::vector<std::string> keys;
    for (const CATBaseUnknown_var& spNode : nodes) {
        keys.push_back(KeyOf(spNode));
    }
    return keys;
}

std::vector<std::string> QTBTestSession::TextsOf(const CATListValCATUnicodeString& texts)
{
    std::vector<std::string> result;
    for (const CATUnicodeString& text : texts) {
        result.push_back(ToString(text));
    }
    return result;
}

std::vector<std::string> QTBTestSession::AllKeys()
{
    CATListValCATBaseUnknown_var Nodes;
    EXPECT_TRUE(SUCCEEDED(GetPdmNodeCont()->GetAllPdmNodes(&Nodes)));
    std::vector<std::string> keys = KeysOf(Nodes);
    std::sort(keys.begin(), keys.end());
    return keys;
}

std::vector<std::string> QTBTestSession::RightKeys(const char* key, const char* relationName)
{
    const QTBINodeRelations_var spINodeRelations(FindNode(key));
    CATListValCATBaseUnknown_var Nodes;
    if (spINodeRelations == NULL_var || FAILED(spINodeRelations->GetRightNodeList(relationName, &Nodes, ALL_NODES))) {
        ADD_FAILURE() << "no relations: " << key;
    }
    return KeysOf(Nodes);
}

std::vector<std::string> QTBTestSession::LeftKeys(const char* key, const char* relationName)
{
    const QTBINodeRelations_var spINodeRelations(FindNode(key));
    CATListValCATBaseUnknown_var Nodes;
    if (spINodeRelations == NULL_var || FAILED(spINodeRelations->GetLeftNodeList(relationName, &Nodes, ALL_NODES))) {
        ADD_FAILURE() << "no relations: " << key;
    }
    return KeysOf(Nodes);
}

std::string QTBTestSession::Attribute(std::string_view name, std::string_view value)
{
    return "<a name=\"" + Escape(name) + "\">" + Escape(value) + "</a>";
}

std::string QTBTestSession::Info(std::initializer_list<InfoEntry> entries)
{
    std::string xml = R"(<a name="QtbInfo" type="nvlist">)";
    for (const InfoEntry& entry : entries) {
        xml += "<nv name=\"" + Escape(entry.name) + "\">" + Escape(entry.value) + "</nv>";
    }
    return xml + "</a>";
}

std::string QTBTestSession::Object(std::string_view className, std::string_view key, std::string_view further)
{
    return "<o>" + Attribute("Class", className) + Attribute("Key", key) + std::string(further) + "</o>";
}

std::string QTBTestSession::Part(std::string_view key, std::string_view further)
{
    return Object("Part", key, further);
}

std::string QTBTestSession::Relation(std::string_view className, std::string_view key, std::string_view leftKey,
                                     std::string_view rightKey, std::string_view further)
{
    return "<r>" + Attribute("Class", className) + Attribute("Key", key) + Attribute("Relation", className) +
           Attribute("Left", leftKey) + Attribute("Right", rightKey) + std::string(further) + "</r>";
}

std::string QTBTestSession::PartPart(std::string_view key, std::string_view leftKey, std::string_view rightKey,
                                     std::string_view further)
{
    return Relation("PartPart", key, leftKey, rightKey,
                    Attribute("Class1", "Part") + Attribute("Class2", "Part") + std::string(further));
}

std::string QTBTestSession::Answer(std::string_view items)
{
    return R"(<answer><function name="test">)" + std::string(items) + "</function></answer>";
}

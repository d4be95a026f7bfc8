#include "QTBTraceUtil.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATDocumentServices.h"
#include "CATIProduct.h"
#include "CATPrdStructure.h"
#include "CATPrdXmlReader.h"
#include "CATProductServices.h"
#include "QTBConstants.h"
#include "QTBDebugUtil.h"
#include "QTBNodeRelationInfo.h"
#include "QTBTestLateType.h"
#include "QTBTestSession.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class TraceUtil : public QTBTestSession
{
protected:
    // What the call writes with the debug status on; with it off nothing may be written and the result is the same.
    template <class Call>
    static std::string Trace(HRESULT expected, Call call)
    {
        QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(call(), expected);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
        QTBDebugUtil::s_bGlobalDebugStatus = TRUE;
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(call(), expected);
        QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
        return ::testing::internal::GetCapturedStdout();
    }
};

TEST_F(TraceUtil, NamesANodeByClassAndDescription)
{
    Update(Part("P1", Attribute("PartNumber", "4711") + Attribute("Name", "Rod")));
    const std::string text(QTBTraceUtil::GetNodeString(FindNode("P1"), FALSE).View());
    EXPECT_THAT(text, ::testing::StartsWith("Part '"));
    EXPECT_THAT(text, HasSubstr("4711"));
    EXPECT_EQ(std::string(QTBTraceUtil::GetNodeString(FindNode("P1"), TRUE).View()), text + " [P1]");
}

TEST_F(TraceUtil, NamesAnyOtherComponentByItsLateType)
{
    QTBTestLateType product("TestProduct");
    EXPECT_EQ(QTBTraceUtil::GetNodeString(product.Create(), FALSE), "TestProduct");
    EXPECT_EQ(QTBTraceUtil::GetNodeString(NULL_var, TRUE), "NULL_var");
}

TEST_F(TraceUtil, NamesAProductByInstanceAndPartNumber)
{
    CATPrdStructure structure;
    ASSERT_EQ(CATPrdXmlReader::ReadText(R"(<products><product id="p" file="p.CATProduct" partNumber="P">
                  <instance of="c" name="C.1"/><instance of="v" name="V.1"/><instance of="l" name="L.1"/>
                </product>
                <product id="c" file="c.CATPart" partNumber="PC"/>
                <product id="v" file="v.CATPart" shape="v.cgr" link="visualization"/>
                <product id="l" file="l.CATPart" link="broken"/></products>)",
                                        "text", &structure),
              S_OK);
    ASSERT_EQ(CATProductServices::Open(structure, nullptr), S_OK);
    CATIProduct_var spRoot;
    ASSERT_EQ(CATProductServices::FindRootProduct("P", &spRoot), S_OK);
    std::vector<std::string> texts{QTBTraceUtil::GetNodeString(spRoot, FALSE).ConvertToChar()};
    const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spRoot->GetChildren("CATIProduct"));
    for (const CATBaseUnknown_var& spChild : *pChildren) {
        texts.emplace_back(QTBTraceUtil::GetNodeString(spChild, FALSE).ConvertToChar());
    }
    const CATIProduct_var spVisualized = CATIProduct_var((*pChildren)[2])->GetReferenceProduct();
    texts.emplace_back(QTBTraceUtil::GetNodeString(spVisualized, FALSE).ConvertToChar());
    EXPECT_THAT(texts, testing::ElementsAre("P", "C.1 (PC)", "V.1", "L.1", "v.CATPart"));
    CATDocumentServices::RemoveAll();
}

TEST_F(TraceUtil, PrintsTheAttributesOfANode)
{
    Update(Part("P1", Attribute("PartNumber", "4711") + Info({{"QtbVersion", "A"}})));
    const std::string trace = Trace(S_OK, [] { return QTBTraceUtil::PrintQtbAttributes(FindNode("P1"), 1); });
    EXPECT_THAT(trace, HasSubstr("\tAttributes of Part"));
    EXPECT_THAT(trace, HasSubstr("\t\tPartNumber (string):[4711]\n"));
    EXPECT_THAT(trace, HasSubstr("\t\tQtbInfo (nvlist)\n"));
}

TEST_F(TraceUtil, PrintsTheRelationsOfANode)
{
    Update(Part("P1") + Part("P2") + PartPart("R1", "P1", "P2"));
    const std::string right = Trace(S_OK, [] { return QTBTraceUtil::PrintQtbRelations(FindNode("P1")); });
    EXPECT_THAT(right, HasSubstr("\tRight:[PartPart] "));
    EXPECT_THAT(right, HasSubstr("[R1]\n"));
    EXPECT_THAT(right, ::testing::Not(HasSubstr("Left:")));
    const std::string left = Trace(S_OK, [] { return QTBTraceUtil::PrintQtbRelations(FindNode("P2")); });
    EXPECT_THAT(left, HasSubstr("\tLeft:[PartPart] "));
}

TEST_F(TraceUtil, PrintsARelationInfo)
{
    const QTBNodeRelationInfo info("PartPart", usLEFT_TO_RIGHT);
    EXPECT_EQ(Trace(S_OK, [&] { return QTBTraceUtil::PrintNodeRelationInfo(info); }),
              "relation:[PartPart], direction:[LeftToRight]\n");
}

TEST_F(TraceUtil, PrintsPdmNodesWithTheirActionAndTheKeysOfTheirObjects)
{
    Update(Part("P1") + Part("P2") + PartPart("R1", "P1", "P2"));
    const std::string object = Trace(S_OK, [] { return QTBTraceUtil::PrintPdmNodeInfo(PdmNode("P1"), "old "); });
    EXPECT_THAT(object, ::testing::StartsWith("old Part"));
    EXPECT_THAT(object, ::testing::EndsWith("[P1], action index:[1]\n"));
    const std::string relation = Trace(S_OK, [] { return QTBTraceUtil::PrintPdmNodeInfo(PdmNode("R1"), ""); });
    EXPECT_THAT(relation, ::testing::EndsWith("left object:[P1], right object:[P2]\n"));
}

TEST_F(TraceUtil, PrintsARelationThatIsNotLinkedYetInOneLine)
{
    Update(Part("P1") + Part("P2") + PartPart("R1", "P1", "P2"));
    EXPECT_TRUE(SUCCEEDED(QTBINodeRelations_var(FindNode("R1"))->RemoveAllRels(nullptr)));
    const std::string relation = Trace(S_OK, [] { return QTBTraceUtil::PrintPdmNodeInfo(PdmNode("R1"), "new "); });
    EXPECT_THAT(relation, ::testing::StartsWith("new "));
    EXPECT_THAT(relation, ::testing::EndsWith("[R1], action index:[1]\n"));
    EXPECT_THAT(relation, ::testing::Not(HasSubstr("FAILED")));
}

TEST_F(TraceUtil, PrintsTheItemsOfAListWithTheirPositions)
{
    CATListValCATUnicodeString list;
    list.Append("one");
    list.Append("two");
    EXPECT_EQ(Trace(S_OK, [&] { return QTBTraceUtil::PrintStringList(list); }), "\t1: one\n\t2: two\n");
    EXPECT_EQ(Trace(S_OK, [] { return QTBTraceUtil::PrintStringList({}); }), "");
}

TEST_F(TraceUtil, FailsQuietlyForWhatCannotBePrinted)
{
    QTBTestLateType product("TestProduct");
    const CATBaseUnknown_var spProduct = product.Create();
    EXPECT_EQ(QTBTraceUtil::PrintQtbAttributes(NULL_var, 0), E_FAIL);
    EXPECT_EQ(QTBTraceUtil::PrintQtbAttributes(spProduct, 0), E_FAIL);
    EXPECT_EQ(QTBTraceUtil::PrintQtbRelations(NULL_var), E_FAIL);
    EXPECT_EQ(QTBTraceUtil::PrintQtbRelations(spProduct), E_FAIL);
    EXPECT_EQ(QTBTraceUtil::PrintPdmNodeInfo(NULL_var, ""), E_FAIL);
}

} // namespace

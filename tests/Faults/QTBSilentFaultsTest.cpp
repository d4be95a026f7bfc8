#include <algorithm>

#include <gmock/gmock.h>

#include "CATCmdAccess.h"
#include "CATCmdContainer.h"
#include "CATFrmWindow.h"
#include "QTBFaultSession.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPsnNode.h"
#include "QTBLoadManager.h"
#include "QTBMatchers.h"
#include "QTBPartInstanceInfo.h"

namespace {

using ::testing::Contains;

// A call that succeeds without giving what it promised does not get past the operation that made it.
class SilentFaults : public QTBFaultSession
{
protected:
    CATUnicodeString m_usText;
    CATListValCATUnicodeString m_Texts;
    CATListValCATBaseUnknown_var m_Nodes;
    unsigned char m_bFlag = FALSE;
    unsigned char m_bYes = TRUE;

    void Forget() override { m_Nodes.RemoveAll(); }

    // Texts of the errors when the call gives nothing from its first, second, ... place on.
    std::set<std::string> TextsWithout(const char* silentCall, const QTBScenario& scenario)
    {
        std::set<std::string> texts;
        for (int callsBefore = 0; callsBefore < 30; ++callsBefore) {
            g_QTBLoadManager.Reset();
            const HRESULT hr = RunWithout(silentCall, scenario, callsBefore);
            const CATError* pError = FAILED(hr) ? CATError::CATGetLastError(hr, nullptr) : nullptr;
            if (pError != nullptr && !pError->GetNLSParameters().empty()) {
                texts.insert(std::string(pError->GetNLSParameters()[0].View()));
            }
        }
        return texts;
    }

    QTBScenario Menu(const char* subject)
    {
        return On<QTBIRepNode>(subject, "InitContextMenuInfo", [](QTBIRepNode& node) {
            CATCmdContainer container("menu");
            CATCmdAccess* pFirstItem = nullptr;
            return node.InitContextMenuInfo(&container, &pFirstItem);
        });
    }
    QTBScenario Read()
    {
        return On<QTBIPdmNodeCont>("graph", "UpdatePdmGraph", [](QTBIPdmNodeCont& graph) {
            return graph.UpdatePdmGraph(CATUnicodeString(Answer(Part("P") + Part("Q") + PartPart("PQ", "P", "Q"))),
                                        nullptr, nullptr);
        });
    }
    QTBScenario ShowInWindow(const char* subject)
    {
        return On<QTBILinkToQtb>(subject, "HighlightProdStrucNode", [](QTBILinkToQtb& link) {
            CATFrmWindow* pWindow = nullptr;
            return link.HighlightProdStrucNode(TRUE, TRUE, &pWindow);
        });
    }
    QTBScenario ShowFile(const char* subject)
    {
        return On<QTBILinkToQtb>(subject, "HighlightCatiaFileNode", [](QTBILinkToQtb& link) {
            CATFrmWindow* pWindow = nullptr;
            return link.HighlightCatiaFileNode(TRUE, TRUE, &pWindow);
        });
    }
    QTBScenario ShowProduct(const char* subject)
    {
        return On<QTBILinkToPsn>(subject, "HighlightPsnNodes", [](QTBILinkToPsn& link) {
            CATFrmWindow* pWindow = nullptr;
            return link.HighlightPsnNodes(TRUE, TRUE, &pWindow);
        });
    }
};

TEST_F(SilentFaults, OfTheSchemaAreSeenByTheMenus)
{
    EXPECT_THAT(TextsWithout("QTBSchemaUtil::GetCurrentSchemaPtr", Menu("window:A")), Contains("pSchema != NULL"));
    EXPECT_THAT(TextsWithout("QTBSchema::GetRelationPtr", Menu("window:A")), Contains("pRelation != NULL"));
    EXPECT_THAT(TextsWithout("QTBSchemaObject::GetCustomExpandPdmTreePtr", Menu("window:A")),
                Contains("pPdmTree != NULL"));
}

TEST_F(SilentFaults, OfTheSchemaAreSeenByDescriptions)
{
    const QTBScenario describe = On<QTBIPdmNode>(
        "A", "GetDescriptionString", [&](QTBIPdmNode& node) { return node.GetDescriptionString(&m_usText); });
    EXPECT_THAT(TextsWithout("QTBSchemaAttributeRepList::GetPtr", describe), Contains("pDescAttr != NULL"));
}

TEST_F(SilentFaults, OfTheSchemaAreSeenByGraphUpdates)
{
    EXPECT_THAT(TextsWithout("QTBSchemaUtil::GetClassAttr", Read()), Contains("usClassAttrName != \"\""));
    EXPECT_THAT(TextsWithout("QTBSchemaUtil::GetKeyAttr", Read()), Contains("usKeyAttrName != \"\""));
    EXPECT_THAT(TextsWithout("QTBINodeAttributes::GetStringAttributeValue", Read()), Contains("usClassName != \"\""));
}

TEST_F(SilentFaults, OfTheSchemaAreSeenByTheTypesOfProducts)
{
    const QTBScenario getCommands =
        On<QTBIPsnNode>("product:N", "GetPdmNodeTypeCommandHeaderIds",
                        [&](QTBIPsnNode& node) { return node.GetPdmNodeTypeCommandHeaderIds(&m_Texts); });
    const QTBScenario getType = On<QTBIPsnNode>("product:X", "GetPdmNodeType", [&](QTBIPsnNode& node) {
        return node.GetPdmNodeType(&m_usText, nullptr, &m_bFlag);
    });
    EXPECT_THAT(TextsWithout("QTBSchemaUtil::GetPartClassNames", getCommands),
                Contains("PartClassNamesWithSubParts.Size() > 0"));
    EXPECT_THAT(TextsWithout("QTBSchemaUtil::GetPartClassNames", getType),
                Contains("ClassNamesWithSubParts.Size() > 0"));
    EXPECT_THAT(TextsWithout("QTBSchemaUtil::GetSystem", getCommands),
                Contains("(PdmSystem == QTB_PDMSYSTEM_ARAS_INNOVATOR) || (PdmSystem == QTB_PDMSYSTEM_ENOVIA_MATRIX)"));
}

TEST_F(SilentFaults, OfPathsAreSeenWhereNodesAreShown)
{
    const QTBScenario preselect =
        On<QTBIRepNode>("window:B", "Preselect", [&](QTBIRepNode& node) { return node.Preselect(&m_bYes); });
    EXPECT_THAT(TextsWithout("QTBVisUtil::GetPathElementPtrFromNode", preselect),
                Contains("pPathElementOnThisNode != NULL"));
    const DebugCapture capture;
    EXPECT_THAT(RunWithout("QTBVisUtil::GetPathElementPtrFromNode",
                           On<QTBIRepNode>("window:B", "Highlight",
                                           [&](QTBIRepNode& node) { return node.Highlight(&m_bYes, &m_bYes); })),
                Succeeds());
    EXPECT_THAT(capture.Text(), ::testing::HasSubstr("pPathElementOnRepNode != NULL : assertion FAILED"));
    EXPECT_THAT(TextsWithout("QTBVisUtil::GetPathElementPtrFromNode", ShowProduct("window:B")),
                Contains("pPathElementOnPsnNode != NULL"));
    EXPECT_THAT(TextsWithout("QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode", ShowProduct("window:B")),
                Contains("pFrmEditor != NULL"));
}

TEST_F(SilentFaults, OfTheTreeAreSeenWhereProductsAreLookedFor)
{
    {
        // A place of which the tree knows nothing is passed over.
        const DebugCapture capture;
        EXPECT_THAT(TextsWithout("QTBIRepNode::GetDirectChildren", ShowInWindow("product:C")),
                    ::testing::ElementsAre("ProdStrucRepNodes.Size() > 0"));
        EXPECT_THAT(capture.Text(), ::testing::HasSubstr("ChildObjNodeList.Size() == 1 : assertion FAILED"));
    }
    EXPECT_THAT(TextsWithout("QTBIPsnNode::GetPathToRootPartInstanceInfo", ShowInWindow("product:C")),
                Contains("spIProductOnPdmPartMainNode"));
    EXPECT_THAT(TextsWithout("QTBIPsnNode::GetFatherProduct", On<QTBILinkToQtb>("product:C", "ProdStrucPdmNodeExists",
                                                                                [&](QTBILinkToQtb& link) {
                                                                                    return link.ProdStrucPdmNodeExists(
                                                                                        &m_bFlag, nullptr, nullptr);
                                                                                })),
                Contains("spIProductOnFather"));
    EXPECT_THAT(TextsWithout("QTBIRepNode::GetDirectChildren", ShowFile("product:C")),
                Contains("ChildObjNodeList.Size() == 1"));
    EXPECT_THAT(TextsWithout("QTBRepTreeUtil::RepresentsPdmPartNode", ShowFile("product:C")),
                Contains("bRepresentsPdmPartNode"));
    {
        const DebugCapture capture;
        EXPECT_THAT(TextsWithout("QTBRepTreeUtil::RepresentsPdmPartNode", ShowInWindow("product:C")),
                    Contains("ProdStrucRepNodes.Size() > 0"));
        EXPECT_THAT(capture.Lines(), Contains("QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart -> usPartNumber != "
                                              "usParentPartNumber -> returning"));
    }
    EXPECT_THAT(TextsWithout("QTBVisUtil::GetQtbWindowForHighlight", ShowInWindow("product:C")),
                Contains("ProdStrucRepNodes.Size() > 0"));
}

TEST_F(SilentFaults, OfWindowsAreToldWhereProductsAreShown)
{
    const DebugCapture capture;
    EXPECT_THAT(RunWithout("QTBVisUtil::GetPsnWindowsForHighlight", ShowProduct("window:B")), Succeeds());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBELinkToPsnOnRepNode::HighlightPsnNodes -> *ppFrmWindowWhereHighlighted == NULL !"));
}

TEST_F(SilentFaults, OfFilteredModelsAreSeenByUpdates)
{
    const QTBScenario update =
        On<QTBIRepNodeCont>("window", "UpdateRepTreeAfterGetFilteredModels", [&](QTBIRepNodeCont& cont) {
            QTBIRepNode_var spRoot(m_spSecond);
            return cont.UpdateRepTreeAfterGetFilteredModels(&spRoot, &m_Nodes, &m_Nodes);
        }).With("window:A");
    EXPECT_THAT(TextsWithout("QTBPartToFilePdmTreeInfo::GetPdmTreePtr", update), Contains("pPdmTree"));
}

TEST_F(SilentFaults, OfTheCallerAreAsserted)
{
    const QTBILinkToQtb_var spLinkToQtb(Subject("product:B"));
    EXPECT_THAT(spLinkToQtb->ProdStrucPdmNodeExists(nullptr, nullptr, nullptr), FailsAssertion("pbExists != NULL"));
    EXPECT_THAT(spLinkToQtb->CatiaFilePdmNodeExists(nullptr, nullptr), FailsAssertion("pbExists != NULL"));
    EXPECT_THAT(spLinkToQtb->FileStrucPdmNodeExists(nullptr, nullptr, nullptr), FailsAssertion("pbExists != NULL"));
    EXPECT_THAT(spLinkToQtb->CorrespondingPdmNodesExist(nullptr, nullptr, nullptr, nullptr),
                FailsAssertion("pbExist != NULL"));
    EXPECT_THAT(spLinkToQtb->GetCatiaPartNumberForLink(nullptr, FALSE), FailsAssertion("pusCatiaPartNumber != NULL"));
    EXPECT_THAT(spLinkToQtb->SetCatiaPartNumberForLink(""), FailsAssertion("usCatiaPartNumber != \"\""));
    const QTBILinkToPsn_var spLinkToPsn(Subject("window:B"));
    EXPECT_THAT(spLinkToPsn->CorrespondingPsnNodeExists(nullptr, nullptr), FailsAssertion("pbExists != NULL"));
    EXPECT_THAT(spLinkToPsn->CorrespondingPsnNodesExist(nullptr, nullptr, nullptr), FailsAssertion("pbExist != NULL"));
    EXPECT_THAT(spLinkToPsn->GetPathToRootPartInstanceInfo(nullptr, nullptr, nullptr),
                FailsAssertion("pPathToRootPartInstanceInfoList != NULL"));
    EXPECT_THAT(GetPdmNodeCont()->GetPdmNodes(nullptr, m_Texts, m_Texts, &m_Nodes),
                FailsAssertion("pClassNames != NULL"));
}

} // namespace

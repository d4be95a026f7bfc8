#include <gmock/gmock.h>

#include "CATDocument.h"
#include "CATFrmWindow.h"
#include "QTBFaultSession.h"
#include "QTBGlobVarsUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIPsnNode.h"
#include "QTBLoadManager.h"
#include "QTBPartInstanceInfo.h"

namespace {

// The operations that link products and PDM nodes.
class ProductFaults : public QTBFaultSession, public ::testing::WithParamInterface<const char*>
{
protected:
    CATUnicodeString m_usText;
    CATUnicodeString m_usMoreText;
    CATListValCATUnicodeString m_Texts;
    CATListValCATUnicodeString m_MoreTexts;
    CATListValCATBaseUnknown_var m_Nodes;
    CATIProduct_var m_spProduct;
    QTBIPdmNode_var m_spPdmNode;
    QTBIPdmObjNode_var m_spObject;
    QTBIPdmObjNode_var m_spFile;
    QTBIPdmRelNode_var m_spRelation;
    unsigned char m_bFlag = FALSE;
    unsigned char m_bMore = FALSE;

    void SetUp() override
    {
        QTBFaultSession::SetUp();
        QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    }

    void Forget() override
    {
        m_Nodes.RemoveAll();
        m_spProduct = NULL_var;
        m_spPdmNode = NULL_var;
        m_spObject = NULL_var;
        m_spFile = NULL_var;
        m_spRelation = NULL_var;
    }

    // Calls the operation on the product.
    template <class Interface, class Operation>
    void RunOn(const char* name, Operation operation, const QTBPromises& promises = {})
    {
        // What an earlier call found out about a product is forgotten, so that it is found out again.
        const auto afresh = [operation](Interface& interface) {
            g_QTBLoadManager.Reset();
            return operation(interface);
        };
        QTBScenario scenario = On<Interface>(GetParam(), name, afresh).Depends();
        scenario.promises = promises;
        Run(scenario);
    }
    template <class Operation>
    void RunOnPsn(const char* name, Operation operation, const QTBPromises& promises = {})
    {
        RunOn<QTBIPsnNode>(name, operation, promises);
    }
    template <class Operation>
    void RunOnLink(const char* name, Operation operation)
    {
        RunOn<QTBILinkToQtb>(name, operation);
    }
};

TEST_P(ProductFaults, OfTheStructureEndInFailures)
{
    RunOnPsn("GetFatherProduct", [&](QTBIPsnNode& node) { return node.GetFatherProduct(&m_spProduct, TRUE); });
    RunOnPsn(
        "GetDirectChildren",
        [&](QTBIPsnNode& node) { return node.GetDirectChildren(&m_Nodes, TRUE, TRUE, QTB_BOM_TYPE_PART, TRUE); },
        QTBPromises().Empties(m_Nodes));
    RunOnPsn(
        "GetAllChildren",
        [&](QTBIPsnNode& node) { return node.GetAllChildren(&m_Nodes, TRUE, TRUE, QTB_BOM_TYPE_PART, TRUE, TRUE); },
        QTBPromises().Empties(m_Nodes));
    RunOnPsn(
        "GetDirectReferenceChildNodes",
        [&](QTBIPsnNode& node) { return node.GetDirectReferenceChildNodes(&m_Nodes, QTB_BOM_TYPE_ALL, &m_Texts); },
        QTBPromises().Empties(m_Nodes).Empties(m_Texts));
    RunOnPsn(
        "GetAllReferenceChildNodes",
        [&](QTBIPsnNode& node) { return node.GetAllReferenceChildNodes(&m_Nodes, QTB_BOM_TYPE_ALL, &m_Texts); },
        QTBPromises().Empties(m_Nodes).Empties(m_Texts));
    RunOnPsn("GetPdmBomInfo", [&](QTBIPsnNode& node) {
        QTBBomType bomType = QTB_BOM_TYPE_INVALID;
        return node.GetPdmBomInfo(&bomType);
    });
    RunOnPsn("IsCmiArchiveRoot", [&](QTBIPsnNode& node) { return node.IsCmiArchiveRoot(&m_bFlag, &m_usText); });
    RunOnPsn("SaveCurrentChildInstanceInfoStrings",
             [&](QTBIPsnNode& node) { return node.SaveCurrentChildInstanceInfoStrings(); });
    RunOnPsn("CheckCurrentChildInstanceInfoLists",
             [&](QTBIPsnNode& node) { return node.CheckCurrentChildInstanceInfoLists(&m_Texts, &m_MoreTexts, TRUE); });
    RunOnPsn("PrintNodeInformation", [&](QTBIPsnNode& node) { return node.PrintNodeInformation(); });
}

TEST_P(ProductFaults, OfTypesEndInFailures)
{
    RunOnPsn("GetPdmFileObjInfo", [&](QTBIPsnNode& node) { return node.GetPdmFileObjInfo(&m_usText); });
    RunOnPsn("GetPsnNodeType", [&](QTBIPsnNode& node) { return node.GetPsnNodeType(&m_usText, &m_usMoreText); });
    RunOnPsn("GetPdmNodeType",
             [&](QTBIPsnNode& node) { return node.GetPdmNodeType(&m_usText, &m_usMoreText, &m_bFlag); });
    RunOnPsn("SetPdmNodeType", [&](QTBIPsnNode& node) { return node.SetPdmNodeType("CATProductFile"); });
    RunOnPsn("SetPdmNodeType of a document type", [&](QTBIPsnNode& node) { return node.SetPdmNodeType("CATProduct"); });
    RunOnPsn("GetPdmNodeTypeCommandHeaderIds",
             [&](QTBIPsnNode& node) { return node.GetPdmNodeTypeCommandHeaderIds(&m_Texts); });
    RunOnPsn("NeedsSpecialBehavior", [&](QTBIPsnNode& node) { return node.NeedsSpecialBehavior(&m_bFlag, &m_usText); });
    RunOnPsn("GetPathToRootPartInstanceInfo", [&](QTBIPsnNode& node) {
        CATListValQTBPartInstanceInfo path;
        return node.GetPathToRootPartInstanceInfo(&path, &m_spProduct);
    });
}

TEST_P(ProductFaults, OfDocumentsEndInFailures)
{
    RunOnPsn("SetStdCatiaAttribute", [&](QTBIPsnNode& node) {
        return node.SetStdCatiaAttribute(QTB_PSNATTR_DEFINITION, "text", &m_bFlag, TRUE);
    });
    RunOnPsn("DocumentIsDirty", [&](QTBIPsnNode& node) { return node.DocumentIsDirty(&m_bFlag, &m_bMore); });
}

TEST_P(ProductFaults, OfLinksToTheGraphEndInFailures)
{
    RunOnLink("ProdStrucPdmNodeExists",
              [&](QTBILinkToQtb& link) { return link.ProdStrucPdmNodeExists(&m_bFlag, &m_spPdmNode, &m_spObject); });
    RunOnLink("CatiaFilePdmNodeExists",
              [&](QTBILinkToQtb& link) { return link.CatiaFilePdmNodeExists(&m_bFlag, &m_spPdmNode); });
    RunOnLink("FileStrucPdmNodeExists",
              [&](QTBILinkToQtb& link) { return link.FileStrucPdmNodeExists(&m_bFlag, &m_spPdmNode, &m_bMore); });
    RunOnLink("CorrespondingPdmNodesExist", [&](QTBILinkToQtb& link) {
        return link.CorrespondingPdmNodesExist(&m_bFlag, &m_spRelation, &m_spObject, &m_spFile);
    });
    RunOnLink("GetCatiaPartNumberForLink",
              [&](QTBILinkToQtb& link) { return link.GetCatiaPartNumberForLink(&m_usText, TRUE); });
    RunOnLink("SetCatiaPartNumberForLink", [&](QTBILinkToQtb& link) {
        return link.SetCatiaPartNumberForLink(CATIProduct_var(&link)->GetPartNumber());
    });
    RunOnLink("HighlightProdStrucNode", [&](QTBILinkToQtb& link) {
        CATFrmWindow* pWindow = nullptr;
        return link.HighlightProdStrucNode(TRUE, TRUE, &pWindow);
    });
    RunOnLink("HighlightCatiaFileNode", [&](QTBILinkToQtb& link) {
        CATFrmWindow* pWindow = nullptr;
        return link.HighlightCatiaFileNode(TRUE, TRUE, &pWindow);
    });
}

INSTANTIATE_TEST_SUITE_P(Products, ProductFaults,
                         ::testing::Values("product:A", "product:B", "product:C", "product:N", "product:X", "product:F",
                                           "product:Y", "product:V", "product:G"));

// The same where files stand for the structure.
class FileStructureFaults : public ProductFaults
{
protected:
    bool UsesBomPartStructure() const override { return false; }
};

TEST_P(FileStructureFaults, OfLinksEndInFailures)
{
    RunOnLink("CorrespondingPdmNodesExist", [&](QTBILinkToQtb& link) {
        return link.CorrespondingPdmNodesExist(&m_bFlag, &m_spRelation, &m_spObject, &m_spFile);
    });
    RunOnLink("FileStrucPdmNodeExists",
              [&](QTBILinkToQtb& link) { return link.FileStrucPdmNodeExists(&m_bFlag, &m_spPdmNode, &m_bMore); });
    RunOnLink("HighlightCatiaFileNode", [&](QTBILinkToQtb& link) {
        CATFrmWindow* pWindow = nullptr;
        return link.HighlightCatiaFileNode(TRUE, TRUE, &pWindow);
    });
    RunOnPsn("GetPdmNodeType",
             [&](QTBIPsnNode& node) { return node.GetPdmNodeType(&m_usText, &m_usMoreText, &m_bFlag); });
    RunOnPsn("GetPdmNodeTypeCommandHeaderIds",
             [&](QTBIPsnNode& node) { return node.GetPdmNodeTypeCommandHeaderIds(&m_Texts); });
}

INSTANTIATE_TEST_SUITE_P(Products, FileStructureFaults,
                         ::testing::Values("product:A", "product:B", "product:C", "product:N", "product:X"));

class LinkFaults : public ProductFaults
{
};

TEST_P(LinkFaults, OfLinksToProductsEndInFailures)
{
    RunOn<QTBILinkToPsn>("CorrespondingPsnNodeExists",
                         [&](QTBILinkToPsn& link) { return link.CorrespondingPsnNodeExists(&m_bFlag, &m_spProduct); });
    RunOn<QTBILinkToPsn>("CorrespondingPsnNodesExist", [&](QTBILinkToPsn& link) {
        CATFrmWindow* pWindow = nullptr;
        return link.CorrespondingPsnNodesExist(&m_bFlag, &m_Nodes, &pWindow);
    });
    RunOn<QTBILinkToPsn>("GetPathToRootPartInstanceInfo", [&](QTBILinkToPsn& link) {
        CATListValQTBPartInstanceInfo path;
        return link.GetPathToRootPartInstanceInfo(&path, &m_usText, &m_usMoreText);
    });
    RunOn<QTBILinkToPsn>("HighlightPsnNodes", [&](QTBILinkToPsn& link) {
        CATFrmWindow* pWindow = nullptr;
        return link.HighlightPsnNodes(TRUE, TRUE, &pWindow);
    });
}

INSTANTIATE_TEST_SUITE_P(RepNodes, LinkFaults,
                         ::testing::Values("window:A", "window:AB", "window:B", "window:FB", "window:FC"));

} // namespace

#include <memory>

#include <gmock/gmock.h>

#include "CATCmdAccess.h"
#include "CATCmdContainer.h"
#include "CATFrmEditor.h"
#include "CATIAlias.h"
#include "CATICSOFilter.h"
#include "CATIContextualMenu.h"
#include "CATIContextualSubMenu.h"
#include "CATIEditor.h"
#include "CATINavigModify.h"
#include "CATINavigateObject.h"
#include "CATIRootProperties.h"
#include "CATIUIActivate.h"
#include "CATInit.h"
#include "QTBContextMenuInfo.h"
#include "QTBFaultSession.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIPdmNode.h"

namespace {

// The operations of rep nodes, of their containers, and what the frame asks of them.
class RepNodeFaults : public QTBFaultSession
{
protected:
    CATUnicodeString m_usText;
    CATUnicodeString m_usMoreText;
    CATListValCATBaseUnknown_var m_Nodes;
    CATListValCATBaseUnknown_var m_MoreNodes;
    unsigned char m_bFlag = FALSE;
    unsigned char m_bYes = TRUE;
    unsigned char m_bNo = FALSE;
    int m_Number = 0;
    QTBIRepNode_var m_spRepNode;
    QTBIPdmNode_var m_spPdmNode;

    void Forget() override
    {
        m_spRepNode = NULL_var;
        m_spPdmNode = NULL_var;
        m_Nodes.RemoveAll();
        m_MoreNodes.RemoveAll();
    }
};

TEST_F(RepNodeFaults, OfTheTreeEndInFailures)
{
    for (const char* subject : {"window:B", "cont:AB"}) {
        Run(On<QTBIRepNode>(subject, "IsRepRootNode", [&](QTBIRepNode& node) {
                return node.IsRepRootNode(&m_bFlag);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetDirectChildren",
                            [&](QTBIRepNode& node) { return node.GetDirectChildren(&m_Nodes); })
                .Depends()
                .Empties(m_Nodes));
        Run(On<QTBIRepNode>(subject, "GetFilteredDirectChildren by class",
                            [&](QTBIRepNode& node) { return node.GetFilteredDirectChildren("PartPart", &m_Nodes); })
                .Depends()
                .Empties(m_Nodes));
        Run(On<QTBIRepNode>(
                subject, "GetFilteredDirectChildren by attribute",
                [&](QTBIRepNode& node) { return node.GetFilteredDirectChildren("InstanceName", "C.1", &m_Nodes); })
                .Depends()
                .Empties(m_Nodes));
        Run(On<QTBIRepNode>(subject, "GetAllChildren", [&](QTBIRepNode& node) { return node.GetAllChildren(&m_Nodes); })
                .Depends()
                .Appends(m_Nodes));
        Run(On<QTBIRepNode>(subject, "GetParent", [&](QTBIRepNode& node) { return node.GetParent(&m_spRepNode); })
                .Depends()
                .Resets(m_spRepNode));
        Run(On<QTBIRepNode>(subject, "GetParentObject", [&](QTBIRepNode& node) {
                return node.GetParentObject(&m_spRepNode);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "IsRepDefaultNode", [&](QTBIRepNode& node) {
                return node.IsRepDefaultNode(&m_bFlag);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "Redraw", [&](QTBIRepNode& node) { return node.Redraw(&m_bYes); }).Depends());
        Run(On<QTBIRepNode>(subject, "GetDisplayString", [&](QTBIRepNode& node) {
                return node.GetDisplayString(&m_usText);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetPdmNode",
                            [&](QTBIRepNode& node) { return node.GetPdmNode(&m_spPdmNode, TRUE, nullptr); })
                .Depends()
                .Resets(m_spPdmNode));
        Run(On<QTBIRepNode>(subject, "GetPdmNodeKey", [&](QTBIRepNode& node) {
                return node.GetPdmNodeKey(&m_usText);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetPdmNodeAttributeValue", [&](QTBIRepNode& node) {
                return node.GetPdmNodeAttributeValue("Key", &m_usText);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetPdmNodeClassName", [&](QTBIRepNode& node) {
                return node.GetPdmNodeClassName(&m_usText);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "RepresentsPdmRelNode", [&](QTBIRepNode& node) {
                return node.RepresentsPdmRelNode(&m_bFlag, &m_bNo);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetPdmNodeActionIndex", [&](QTBIRepNode& node) {
                return node.GetPdmNodeActionIndex(&m_Number);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "PdmNodeIsIsAffectedByCurrentAction", [&](QTBIRepNode& node) {
                return node.PdmNodeIsIsAffectedByCurrentAction(&m_bFlag);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetContainerId", [&](QTBIRepNode& node) {
                return node.GetContainerId(&m_Number);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "AddDebugInfoString", [&](QTBIRepNode& node) {
                return node.AddDebugInfoString("text", &m_bYes);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "PrintDebugInfo", [&](QTBIRepNode& node) {
                return node.PrintDebugInfo();
            }).Depends());
    }
    Run(On<QTBIRepNode>("window:A", "GetDirectChildren in pairs",
                        [&](QTBIRepNode& node) { return node.GetDirectChildren(&m_Nodes, &m_MoreNodes); })
            .Depends()
            .Empties(m_Nodes)
            .Empties(m_MoreNodes));
}

TEST_F(RepNodeFaults, OfShowingEndInFailures)
{
    for (const char* subject : {"window:B", "window:AB"}) {
        Run(On<QTBIRepNode>(subject, "Highlight", [&](QTBIRepNode& node) {
                return node.Highlight(&m_bYes, &m_bYes);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "Preselect", [&](QTBIRepNode& node) {
                return node.Preselect(&m_bYes);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetFrmEditorPtr", [&](QTBIRepNode& node) {
                CATFrmEditor* pEditor = nullptr;
                return node.GetFrmEditorPtr(&pEditor);
            }).Depends());
    }
}

TEST_F(RepNodeFaults, OfDisplayedRelationsEndInFailures)
{
    Run(On<QTBIRepNode>("cont:B", "AddPdmRelationToBeDisplayed",
                        [&](QTBIRepNode& node) {
                            return node.AddPdmRelationToBeDisplayed(QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT));
                        })
            .Depends()
            .Changes());
    Run(On<QTBIRepNode>("cont:B", "RemovePdmRelationToBeDisplayed",
                        [&](QTBIRepNode& node) { return node.RemovePdmRelationToBeDisplayed(PARTS); })
            .Depends()
            .Changes());
    Run(On<QTBIRepNode>("cont:B", "SetPdmRelationsToBeDisplayed",
                        [&](QTBIRepNode& node) {
                            return node.SetPdmRelationsToBeDisplayed(InfoList({PARTS, FILES}));
                        })
            .Depends()
            .Changes());
    Run(On<QTBIRepNode>("cont:B", "CheckPdmRelationToBeDisplayed", [&](QTBIRepNode& node) {
            return node.CheckPdmRelationToBeDisplayed(QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT), &m_bFlag);
        }).Depends());
    Run(On<QTBIRepNode>("cont:A", "MarkChildrenForRemoval",
                        [&](QTBIRepNode& node) {
                            return node.MarkChildrenForRemoval(InfoList({PARTS, FILES}), &m_bYes);
                        })
            .Depends()
            .Changes());
    Run(On<QTBIRepNode>("cont:A", "CleanUpChildren",
                        [&](QTBIRepNode& node) {
                            node.MarkChildrenForRemoval(InfoList({PARTS, FILES}), &m_bYes);
                            return node.CleanUpChildren(&m_bYes);
                        })
            .Depends()
            .StopsHalfWay());
}

TEST_F(RepNodeFaults, OfMenusEndInFailures)
{
    for (const char* subject : {"window:A", "window:AB", "window:FA"}) {
        Run(On<QTBIRepNode>(subject, "InitContextMenuInfo", [&](QTBIRepNode& node) {
                CATCmdContainer container("menu");
                CATCmdAccess* pFirstItem = nullptr;
                return node.InitContextMenuInfo(&container, &pFirstItem);
            }).Depends());
        Run(On<QTBIRepNode>(subject, "GetContextMenuInfo", [&](QTBIRepNode& node) {
                CATListValQTBContextMenuInfo infos;
                CATListValQTBContextMenuInfo more;
                QTBContextMenuInfo current;
                return node.GetContextMenuInfo(&infos, &current, &more);
            }).Depends());
        Run(On<CATIContextualMenu>(subject, "GetContextualMenu", [&](CATIContextualMenu& menu) {
                CATCmdAccess* pMenu = nullptr;
                menu.GetContextualMenu(pMenu);
                return S_OK;
            }).NeverFails());
        Run(On<CATIContextualSubMenu>(subject, "GetContextualSubMenu", [&](CATIContextualSubMenu& menu) {
                menu.GetContextualSubMenu();
                return S_OK;
            }).NeverFails());
    }
}

TEST_F(RepNodeFaults, OfTheFrameEndInNeutralAnswers)
{
    for (const char* subject : {"window:A", "window:AB", "window:FA"}) {
        Run(On<CATINavigateObject>(subject, "GetIdentificators", [&](CATINavigateObject& node) {
                const std::unique_ptr<CATListValCATUnicodeString> pTexts(node.GetIdentificators());
                return S_OK;
            }).NeverFails());
        Run(On<CATINavigateObject>(subject, "GetChildren", [&](CATINavigateObject& node) {
                const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(node.GetChildren());
                return S_OK;
            }).NeverFails());
        Run(On<CATIAlias>(subject, "GetAlias", [&](CATIAlias& node) {
                node.GetAlias();
                return S_OK;
            }).NeverFails());
        Run(On<CATIRootProperties>(subject, "GetListOfEditors", [&](CATIRootProperties& node) {
                node.GetListOfEditors();
                return S_OK;
            }).NeverFails());
        Run(On<CATIUIActivate>(subject, "Activate", [&](CATIUIActivate& node) {
                node.Activate();
                return S_OK;
            }).NeverFails());
    }
}

TEST_F(RepNodeFaults, OfUpdatesEndInFailures)
{
    const auto all = InfoList({PARTS, FILES});
    Run(On<QTBIRepNodeCont>("window", "UpdateAllRepTrees",
                            [&](QTBIRepNodeCont& cont) {
                                return cont.UpdateAllRepTrees(&m_bYes, &m_bNo, all, &m_Nodes, &m_MoreNodes, &m_bYes);
                            })
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("cont", "UpdateRepTrees",
                            [&](QTBIRepNodeCont& cont) {
                                return cont.UpdateRepTrees(m_spSecond, all, &m_bNo, &m_Nodes, &m_MoreNodes, &m_bYes);
                            })
            .With("B")
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("window", "UpdateRepTree",
                            [&](QTBIRepNodeCont& cont) {
                                return cont.UpdateRepTree(m_spSecond,
                                                          InfoList({QTBNodeRelationInfo("PartPart", usRIGHT_TO_LEFT)}),
                                                          &m_bNo, &m_Nodes, &m_MoreNodes, &m_bYes, &m_bYes, &m_bYes);
                            })
            .With("window:B")
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("window", "UpdateRepTreeAfterGetFilteredModels",
                            [&](QTBIRepNodeCont& cont) {
                                QTBIRepNode_var spRoot(m_spSecond);
                                return cont.UpdateRepTreeAfterGetFilteredModels(&spRoot, &m_Nodes, &m_MoreNodes);
                            })
            .With("window:A")
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("cont", "AddAsRepRootNodes",
                            [&](QTBIRepNodeCont& cont) {
                                CATListValCATBaseUnknown_var sources;
                                sources.Append(m_spSecond);
                                return cont.AddAsRepRootNodes(sources, &m_bNo, &m_bNo, &m_Nodes, &m_MoreNodes);
                            })
            .With("window:B")
            .Depends()
            .StopsHalfWay()
            .Empties(m_Nodes)
            .Empties(m_MoreNodes));
    Run(On<QTBIRepNodeCont>("cont", "AddAsRepRootNodes by PDM nodes",
                            [&](QTBIRepNodeCont& cont) {
                                CATListValCATBaseUnknown_var sources;
                                sources.Append(m_spSecond);
                                return cont.AddAsRepRootNodes(sources, &m_bYes, &m_bYes, &m_Nodes, &m_MoreNodes);
                            })
            .With("window:AB")
            .Depends()
            .StopsHalfWay()
            .Empties(m_Nodes)
            .Empties(m_MoreNodes));
}

TEST_F(RepNodeFaults, OfContainersEndInFailures)
{
    for (const char* subject : {"window", "cont"}) {
        Run(On<QTBIRepNodeCont>(subject, "GetRepRootNodes",
                                [&](QTBIRepNodeCont& cont) { return cont.GetRepRootNodes(&m_Nodes, &m_bYes, &m_bNo); })
                .Depends()
                .Empties(m_Nodes));
        Run(On<QTBIRepNodeCont>(subject, "GetRepRootNodes of the store",
                                [&](QTBIRepNodeCont& cont) { return cont.GetRepRootNodes(&m_Nodes, &m_bNo, &m_bYes); })
                .Depends()
                .Empties(m_Nodes));
        Run(On<QTBIRepNodeCont>(subject, "UpdateQtbWindow", [&](QTBIRepNodeCont& cont) {
                return cont.UpdateQtbWindow(&m_bYes, &m_bNo);
            }).Depends());
        Run(On<QTBIRepNodeCont>(subject, "CreateDefaultRootNode",
                                [&](QTBIRepNodeCont& cont) { return cont.CreateDefaultRootNode(); })
                .Depends()
                .StopsHalfWay());
        Run(On<QTBIRepNodeCont>(subject, "Cleanup", [&](QTBIRepNodeCont& cont) { return cont.Cleanup(); })
                .Depends()
                .StopsHalfWay());
    }
    Run(On<QTBIRepNodeCont>("window", "SetQtbFrmWindowPtr",
                            [&](QTBIRepNodeCont& cont) { return cont.SetQtbFrmWindowPtr(m_pWindow->GetFrmWindow()); })
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("window", "DeExpand",
                            [&](QTBIRepNodeCont& cont) {
                                QTBIRepNode_var spRepNode(m_spSecond);
                                return cont.DeExpand(&spRepNode);
                            })
            .With("window:B")
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("window", "DeExpand a root",
                            [&](QTBIRepNodeCont& cont) {
                                QTBIRepNode_var spRepNode(m_spSecond);
                                return cont.DeExpand(&spRepNode);
                            })
            .With("window:A")
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("window", "RecursiveRemoveRepTree",
                            [&](QTBIRepNodeCont& cont) { return cont.RecursiveRemoveRepTree(m_spSecond, &m_bYes); })
            .With("window:A")
            .Depends()
            .StopsHalfWay());
    Run(On<QTBIRepNodeCont>("window", "CreateRelation",
                            [&](QTBIRepNodeCont& cont) {
                                QTBFakeCommunication::AnswerWith(Answer(PartPart("AC", "A", "C")));
                                return cont.CreateRelation("PartPart", m_spSecond, m_spSecond, "");
                            })
            .With("window:C")
            .Depends()
            .StopsHalfWay());
}

} // namespace

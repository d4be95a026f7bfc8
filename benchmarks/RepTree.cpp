#include "RepTree.h"

#include <cstdlib>
#include <iostream>

#include "AnswerGenerator.h"
#include "CATFrmLayout.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBIPdmNode.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBNodeRelationInfo.h"
#include "QTBRepTreeUtil.h"

RepTree::RepTree()
{
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, nullptr);
    spIQtbFrmWindow->GetFrmWindowPtr(&m_pFrmWindow);
    QTBRepTreeUtil::GetRepNodeContOfWindow(m_pFrmWindow, &m_spIRepNodeCont);
    NodesToRetrieve allNodes = ALL_NODES;
    m_spIRepNodeCont->SetPdmNodesToConsider(&allNodes);
}

RepTree::~RepTree()
{
    m_spIRepNodeCont = NULL_var;
    CATFrmLayout::GetCurrentLayout()->CloseWindow(m_pFrmWindow);
}

void RepTree::Expand(const BenchmarkSession& session) const
{
    QTBIPdmNode_var spIPdmNodeOnRoot;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey(AnswerGenerator::Key(0).c_str(), &spIPdmNodeOnRoot, &bFound);
    CATListValQTBNodeRelationInfo relations;
    relations.Append(QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    unsigned char bOneLevelOnly = FALSE;
    unsigned char bAddNewNodes = TRUE;
    m_spIRepNodeCont->UpdateRepTrees(spIPdmNodeOnRoot, relations, &bOneLevelOnly, nullptr, nullptr, &bAddNewNodes);
}

void RepTree::Require(int partCount) const
{
    CATListValCATBaseUnknown_var nodes;
    m_spIRepNodeCont->GetAllRepNodes(&nodes);
    int shown = 0;
    for (const CATBaseUnknown_var& spNode : nodes) {
        unsigned char bIsRepDefaultNode = FALSE;
        QTBIRepNode_var(spNode)->IsRepDefaultNode(&bIsRepDefaultNode);
        shown += bIsRepDefaultNode == FALSE ? 1 : 0;
    }
    if (shown != 2 * partCount - 1) {
        std::cerr << "The tree has " << shown << " nodes instead of " << 2 * partCount - 1 << ".\n";
        std::exit(1);
    }
}

QTBIRepNode_var RepTree::GetRoot() const
{
    CATListValCATBaseUnknown_var roots;
    unsigned char bOnlyAffectedByCurrentAction = FALSE;
    unsigned char bIgnoreWindow = TRUE;
    m_spIRepNodeCont->GetRepRootNodes(&roots, &bOnlyAffectedByCurrentAction, &bIgnoreWindow);
    for (const CATBaseUnknown_var& spRoot : roots) {
        unsigned char bIsRepDefaultNode = FALSE;
        QTBIRepNode_var(spRoot)->IsRepDefaultNode(&bIsRepDefaultNode);
        if (bIsRepDefaultNode == FALSE) {
            return spRoot;
        }
    }
    return QTBIRepNode_var();
}

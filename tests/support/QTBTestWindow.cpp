#include "QTBTestWindow.h"

#include <memory>

#include <gtest/gtest.h>

#include "CATFrmLayout.h"
#include "CATNavigBox.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBIPdmNode.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBNodeRelationInfo.h"
#include "QTBRepTreeUtil.h"

QTBTestWindow::QTBTestWindow()
{
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    EXPECT_EQ(QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, nullptr), S_OK);
    EXPECT_EQ(spIQtbFrmWindow->GetFrmWindowPtr(&m_pFrmWindow), S_OK);
    EXPECT_EQ(QTBRepTreeUtil::GetRepNodeContOfWindow(m_pFrmWindow, &m_spIRepNodeCont), S_OK);
}

void QTBTestWindow::Close()
{
    m_spIRepNodeCont = NULL_var;
    CATFrmLayout::GetCurrentLayout()->CloseWindow(m_pFrmWindow);
    m_pFrmWindow = nullptr;
}

void QTBTestWindow::Show(const CATBaseUnknown_var& spPdmNode, const std::vector<const char*>& relationNames) const
{
    NodesToRetrieve pdmNodes = ALL_NODES;
    EXPECT_EQ(m_spIRepNodeCont->SetPdmNodesToConsider(&pdmNodes), S_OK);
    CATListValQTBNodeRelationInfo relations;
    for (const char* relationName : relationNames) {
        relations.Append(QTBNodeRelationInfo(relationName, usLEFT_TO_RIGHT));
    }
    unsigned char bOneLevelOnly = FALSE;
    unsigned char bAddNewNodes = TRUE;
    EXPECT_EQ(m_spIRepNodeCont->UpdateRepTrees(spPdmNode, relations, &bOneLevelOnly, nullptr, nullptr, &bAddNewNodes),
              S_OK);
    unsigned char bTakeRootsAnew = TRUE;
    unsigned char bActivateWindow = FALSE;
    EXPECT_EQ(m_spIRepNodeCont->UpdateQtbWindow(&bTakeRootsAnew, &bActivateWindow), S_OK);
}

QTBIRepNode_var QTBTestWindow::Find(const CATBaseUnknown_var& spPdmNode) const
{
    CATListValCATBaseUnknown_var repNodes;
    EXPECT_EQ(QTBIPdmNode_var(spPdmNode)->GetRepNodes(&repNodes, m_spIRepNodeCont), S_OK);
    return repNodes.Size() > 0 ? QTBIRepNode_var(repNodes[1]) : QTBIRepNode_var();
}

std::vector<std::string> QTBTestWindow::PdmKeysOf(const CATListValCATBaseUnknown_var& repNodes)
{
    std::vector<std::string> keys;
    for (const CATBaseUnknown_var& spRepNode : repNodes) {
        CATUnicodeString usKey("no PDM node");
        QTBIRepNode_var(spRepNode)->GetPdmNodeKey(&usKey);
        keys.emplace_back(usKey.View());
    }
    return keys;
}

std::vector<std::string> QTBTestWindow::GetRootTexts() const
{
    std::vector<std::string> texts;
    const std::unique_ptr<CATListValCATBaseUnknown_var> pRoots(m_pFrmWindow->GetNavigBox()->GetAllRoots());
    for (const CATBaseUnknown_var& spRoot : *pRoots) {
        CATUnicodeString usText;
        EXPECT_EQ(QTBIRepNode_var(spRoot)->GetDisplayString(&usText), S_OK);
        texts.emplace_back(usText.View());
    }
    return texts;
}

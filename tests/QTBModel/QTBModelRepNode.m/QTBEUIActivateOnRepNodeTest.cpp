#include "QTBEUIActivateOnRepNode.h"

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATIUIActivate.h"
#include "CATNavigBox.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"

namespace {

class ActivatedRepNode : public QTBRepTreeSession
{
};

TEST_F(ActivatedRepNode, NamesTheWorkshopOfPdmWindowsAndTheSelectionCommand)
{
    const CATIUIActivate_var spIUIActivate(CreateLooseRepNode());
    EXPECT_EQ(spIUIActivate->GetWorkshopName(), "QTBPdmWks");
    EXPECT_EQ(spIUIActivate->GetCommandName(), "CATAfrSelectHdr");
    EXPECT_EQ(spIUIActivate->IsActive(), FALSE);
    EXPECT_EQ(spIUIActivate->Deactivate(), S_FALSE);
}

TEST_F(ActivatedRepNode, IsSelectedByADoubleClickThatActivatesTheWorkshop)
{
    Update(Part("A"));
    QTBTestWindow window;
    window.Show(FindNode("A"), {});
    const QTBIRepNode_var a = window.Find(FindNode("A"));
    CATFrmEditor* pEditor = window.GetFrmWindow()->GetEditor();
    EXPECT_EQ(pEditor->GetWorkshop(), "");
    EXPECT_EQ(window.GetFrmWindow()->GetNavigBox()->DoubleClick(a), S_OK);
    EXPECT_EQ(pEditor->GetWorkshop(), "QTBPdmWks");
    EXPECT_EQ(CATIUIActivate_var(a)->IsActive(), TRUE);
    EXPECT_EQ(pEditor->GetCSO()->GetSize(), 1);
    EXPECT_TRUE(pEditor->GetCSO()->ContainsObject(a));
    EXPECT_EQ(CATIUIActivate_var(a)->Deactivate(), S_OK);
    EXPECT_EQ(pEditor->GetWorkshop(), "");
}

} // namespace

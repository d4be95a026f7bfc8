#include "QTBEContextualMenuOnBndBox.h"

#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATMsgCatalog.h"
#include "QTBCheck.h"

namespace {

constexpr const char* MENU_NAME = "QTBContextMenu";

CATCmdStarter* CreateStarter(const char* name, const char* headerId)
{
    auto* pStarter = new CATCmdStarter(name, headerId);
    pStarter->SetTitle(CATMsgCatalog::BuildMessage(MENU_NAME, name));
    return pStarter;
}

} // namespace

HRESULT QTBEContextualMenuOnBndBox::GetContextualMenu(CATCmdAccess*& oMenu)
{
    QTB_SCOPE("QTBEContextualMenuOnBndBox::GetContextualMenu");
    oMenu = NULL;
    auto* pContainer = new CATCmdContainer(MENU_NAME, CATCmdContainer::GivenAway);
    auto* pSeparator = new CATCmdSeparator("NULL");
    pContainer->AddChild(pSeparator);
    CATCmdStarter* pMarkStarter = CreateStarter("QTBMarkBndBoxSubMenuStr", "QTBPdmWksCtxMarkBndBoxCmdHdr");
    pSeparator->SetNext(pMarkStarter);
    pMarkStarter->SetNext(CreateStarter("QTBUnMarkBndBoxSubMenuStr", "QTBPdmWksCtxUnMarkBndBoxCmdHdr"));
    oMenu = pContainer;
    return S_OK;
}

#include "QTBEContextualMenuOnBndBox.h"

#include <memory>

#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATMsgCatalog.h"
#include "QTBCheck.h"

namespace {

constexpr const char* MENU_NAME = "QTBContextMenu";

std::unique_ptr<CATCmdStarter> CreateStarter(const char* name, const char* headerId)
{
    auto pStarter = std::make_unique<CATCmdStarter>(name, headerId);
    pStarter->SetTitle(CATMsgCatalog::BuildMessage(MENU_NAME, name));
    return pStarter;
}

} // namespace

HRESULT QTBEContextualMenuOnBndBox::GetContextualMenu(CATCmdAccess*& oMenu)
{
    QTB_SCOPE("QTBEContextualMenuOnBndBox::GetContextualMenu");
    oMenu = NULL;
    auto pContainer = std::make_unique<CATCmdContainer>(MENU_NAME, CATCmdContainer::GivenAway);
    pContainer->AddChild(std::make_unique<CATCmdSeparator>("NULL").release());
    pContainer->AddChild(CreateStarter("QTBMarkBndBoxSubMenuStr", "QTBPdmWksCtxMarkBndBoxCmdHdr").release());
    pContainer->AddChild(CreateStarter("QTBUnMarkBndBoxSubMenuStr", "QTBPdmWksCtxUnMarkBndBoxCmdHdr").release());
    oMenu = pContainer.release();
    return S_OK;
}

#include "CATExtIContextualMenu.h"

#include <memory>

#include "CATAfrGetCommandHeader.h"
#include "CATCmdStarter.h"
#include "CATCommandHeader.h"
#include "CATStandardCommands.h"

CATExtIContextualMenu::CATExtIContextualMenu() : m_Menu("CATContextMenu")
{
    for (const char* headerId : CATStandardCommands::CONTEXT_MENU) {
        CATCommandHeader* pHeader = nullptr;
        if (SUCCEEDED(CATAfrGetCommandHeader(headerId, &pHeader)) && pHeader != nullptr) {
            auto pStarter = std::make_unique<CATCmdStarter>(headerId, headerId);
            pStarter->SetTitle(pHeader->GetTitle());
            m_Menu.AddChild(pStarter.release());
        }
    }
}

CATExtIContextualMenu::~CATExtIContextualMenu() = default;

HRESULT CATExtIContextualMenu::GetContextualMenu(CATCmdAccess*& oMenu)
{
    oMenu = &m_Menu;
    return S_OK;
}

#include "ShellMenu.h"

#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATIContextualMenu.h"
#include "HostSession.h"

ShellMenu::~ShellMenu()
{
    Close();
}

void ShellMenu::Open(const CATBaseUnknown_var& spObject)
{
    const CATIContextualMenu_var spIContextualMenu(spObject);
    if (spIContextualMenu == NULL_var) {
        throw HostError(ExitCode::Failure, "there is no context menu");
    }
    Close();
    m_spObject = spObject;
    // The menu is there even when the availability of its items could not be told.
    const HRESULT hr = spIContextualMenu->GetContextualMenu(m_pMenu);
    if (m_pMenu == nullptr) {
        HostSession::Require(hr, ExitCode::Failure, "context menu");
    }
}

void ShellMenu::Close()
{
    CATCmdContainer::Dismiss(m_pMenu);
    m_pMenu = nullptr;
    m_Items.clear();
    m_spObject = NULL_var;
}

void ShellMenu::Print(std::ostream& out)
{
    m_Items.clear();
    // Items whose turn is still to come, the next one last, each with its depth.
    std::vector<std::pair<CATCmdAccess*, int>> waiting = {{m_pMenu != nullptr ? m_pMenu->GetChild() : nullptr, 0}};
    while (!waiting.empty()) {
        const auto [pItem, depth] = waiting.back();
        waiting.pop_back();
        if (pItem == nullptr) {
            continue;
        }
        const std::string margin(static_cast<std::size_t>(2 * depth), ' ');
        if (dynamic_cast<CATCmdSeparator*>(pItem) != nullptr) {
            fmt::print(out, "{}----\n", margin);
        } else {
            m_Items.push_back(pItem);
            const auto* pStarter = dynamic_cast<CATCmdStarter*>(pItem);
            fmt::print(out, "{}[{}] {}{}\n", margin, m_Items.size(), pItem->GetTitle().View(),
                       pStarter != nullptr && !pStarter->IsAvailable() ? " (not available)" : "");
        }
        waiting.emplace_back(pItem->GetNext(), depth);
        waiting.emplace_back(pItem->GetChild(), depth + 1);
    }
}

const CATCmdAccess* ShellMenu::FindItem(std::size_t number) const
{
    return number > 0 && number <= m_Items.size() ? m_Items[number - 1] : nullptr;
}

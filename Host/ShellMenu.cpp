#include "ShellMenu.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATIContextualMenu.h"
#include "ShellContext.h"

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
    ListItems();
}

void ShellMenu::Close()
{
    CATCmdContainer::Dismiss(m_pMenu);
    m_pMenu = nullptr;
    m_Items.clear();
    m_spObject = NULL_var;
}

void ShellMenu::ListItems()
{
    m_Items.clear();
    std::size_t number = 0;
    // Items whose turn is still to come, the next one last, each with its depth and the title of the menu around it.
    struct Waiting
    {
        CATCmdAccess* pAccess;
        int depth;
        std::string prefix;
    };
    std::vector<Waiting> waiting = {{m_pMenu != nullptr ? m_pMenu->GetChild() : nullptr, 0, ""}};
    while (!waiting.empty()) {
        const Waiting next = std::move(waiting.back());
        waiting.pop_back();
        if (next.pAccess == nullptr) {
            continue;
        }
        const bool isSeparator = dynamic_cast<const CATCmdSeparator*>(next.pAccess) != nullptr;
        const std::string title = next.prefix + std::string(next.pAccess->GetTitle().View());
        m_Items.push_back({next.pAccess, next.depth, title, isSeparator ? 0 : ++number});
        waiting.push_back({next.pAccess->GetNext(), next.depth, next.prefix});
        waiting.push_back({next.pAccess->GetChild(), next.depth + 1, title + "/"});
    }
}

void ShellMenu::Print(std::ostream& out) const
{
    for (const Item& item : m_Items) {
        const std::string margin(static_cast<std::size_t>(2 * item.depth), ' ');
        if (item.number == 0) {
            fmt::print(out, "{}----\n", margin);
            continue;
        }
        const auto* pStarter = dynamic_cast<const CATCmdStarter*>(item.pAccess);
        fmt::print(out, "{}[{}] {}{}\n", margin, item.number, item.pAccess->GetTitle().View(),
                   pStarter != nullptr && !pStarter->IsAvailable() ? " (not available)" : "");
    }
}

const CATCmdAccess* ShellMenu::FindItem(const std::string& name) const
{
    const std::size_t number = ShellContext::ToNumber(name);
    const auto found = std::find_if(m_Items.begin(), m_Items.end(), [&](const Item& item) {
        return item.number != 0 && (item.number == number || item.title == name);
    });
    return found != m_Items.end() ? found->pAccess : nullptr;
}

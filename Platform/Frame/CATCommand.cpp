#include "CATCommand.h"

#include <utility>
#include <vector>

namespace {

int s_LiveCommands = 0;

// Made on first use and kept to the end of the program, because commands may outlive static objects.
std::vector<CATCommand*>& Requested()
{
    static auto* const s_pRequested = new std::vector<CATCommand*>();
    return *s_pRequested;
}

} // namespace

CATCommand::CATCommand(CATCommand* pParent, const CATUnicodeString& name) : m_Name(name), m_pParent(pParent)
{
    ++s_LiveCommands;
    if (m_pParent != nullptr) {
        m_pParent->AddChild(this);
    }
}

CATCommand::~CATCommand()
{
    while (CATCommand* pChild = m_pFirstChild) {
        RemoveChild(pChild);
        pChild->m_pParent = nullptr;
        delete pChild;
    }
    if (m_pParent != nullptr) {
        m_pParent->RemoveChild(this);
    }
    if (m_bDestructionRequested) {
        std::erase(Requested(), this);
    }
    --s_LiveCommands;
}

void CATCommand::RequestDelayedDestruction()
{
    if (m_bDestructionRequested) {
        return;
    }
    DestroyRequested();
    Requested().push_back(this);
    m_bDestructionRequested = true;
}

void CATCommand::DestroyRequested()
{
    while (!Requested().empty()) {
        CATCommand* pCommand = Requested().back();
        Requested().pop_back();
        pCommand->m_bDestructionRequested = false;
        delete pCommand;
    }
}

int CATCommand::GetLiveCount()
{
    return s_LiveCommands;
}

void CATCommand::AddChild(CATCommand* pChild)
{
    pChild->m_pNextSibling = m_pFirstChild;
    if (m_pFirstChild != nullptr) {
        m_pFirstChild->m_pPreviousSibling = pChild;
    }
    m_pFirstChild = pChild;
}

void CATCommand::RemoveChild(CATCommand* pChild)
{
    CATCommand*& pLinkToChild =
        pChild->m_pPreviousSibling != nullptr ? pChild->m_pPreviousSibling->m_pNextSibling : m_pFirstChild;
    pLinkToChild = pChild->m_pNextSibling;
    if (pChild->m_pNextSibling != nullptr) {
        pChild->m_pNextSibling->m_pPreviousSibling = pChild->m_pPreviousSibling;
    }
}

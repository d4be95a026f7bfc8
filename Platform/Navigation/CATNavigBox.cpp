#include "CATNavigBox.h"

#include <algorithm>
#include <utility>

#include "CATIAlias.h"
#include "CATIGraphNode.h"
#include "CATINavigModify.h"
#include "CATINavigateObject.h"
#include "CATIUIActivate.h"
#include "CATNavigInstance.h"

namespace {

// The boxes that exist. Kept to the end of the program, because windows may outlive static objects.
std::vector<CATNavigBox*>& Boxes()
{
    static auto* const s_pBoxes = new std::vector<CATNavigBox*>();
    return *s_pBoxes;
}

CATUnicodeString JoinLabel(const CATListValCATUnicodeString& identificators)
{
    CATUnicodeString label;
    for (int i = 1; i <= identificators.Size(); ++i) {
        if (i > 1) {
            label += " ";
        }
        label += identificators[i];
    }
    return label;
}

// What an object is called that the tree cannot ask for a label.
CATUnicodeString NameObject(const CATBaseUnknown_var& spObject)
{
    const CATIAlias_var spIAlias(spObject);
    const CATUnicodeString alias = spIAlias != NULL_var ? spIAlias->GetAlias() : CATUnicodeString();
    return alias.IsEmpty() ? CATUnicodeString(spObject->IsA()) : alias;
}

} // namespace

CATNavigBox::CATNavigBox()
{
    Boxes().push_back(this);
}

CATNavigBox::~CATNavigBox()
{
    std::erase(Boxes(), this);
}

CATListValCATBaseUnknown_var* CATNavigBox::GetAllRoots() const
{
    return new CATListValCATBaseUnknown_var(m_Roots);
}

void CATNavigBox::SetRoots(const CATListValCATBaseUnknown_var& roots)
{
    // The old roots live on until the new ones stand.
    const CATListValCATBaseUnknown_var newRoots = roots;
    const CATListValCATBaseUnknown_var oldRoots = std::exchange(m_Roots, CATListValCATBaseUnknown_var());
    m_RootSet.clear();
    for (const CATBaseUnknown_var& spRoot : newRoots) {
        AddRoot(spRoot);
    }
}

bool CATNavigBox::AddRoot(const CATBaseUnknown_var& spRoot)
{
    if (!spRoot || !m_RootSet.insert(spRoot.Get()).second) {
        return false;
    }
    m_Roots.Append(spRoot);
    return true;
}

bool CATNavigBox::RemoveRoot(const CATBaseUnknown_var& spRoot)
{
    if (m_RootSet.erase(spRoot.Get()) == 0) {
        return false;
    }
    const CATBaseUnknown_var keepAlive = spRoot;
    m_Roots.RemoveValue(spRoot);
    return true;
}

void CATNavigBox::Expand(const CATBaseUnknown_var& spObject)
{
    if (spObject) {
        Entry& entry = GetEntry(spObject);
        entry.bDecided = true;
        entry.bExpanded = true;
    }
}

void CATNavigBox::Collapse(const CATBaseUnknown_var& spObject)
{
    if (const auto found = m_Entries.find(spObject.Get()); found != m_Entries.end()) {
        found->second.bDecided = true;
        found->second.bExpanded = false;
    }
}

bool CATNavigBox::IsExpanded(const CATBaseUnknown_var& spObject) const
{
    const auto found = m_Entries.find(spObject.Get());
    return found != m_Entries.end() && found->second.bExpanded;
}

void CATNavigBox::Redraw(const CATBaseUnknown_var& spObject)
{
    if (const auto found = m_Entries.find(spObject.Get()); found != m_Entries.end()) {
        found->second.bKnown = false;
    }
}

void CATNavigBox::RedrawAll()
{
    for (auto& [pObject, entry] : m_Entries) {
        entry.bKnown = false;
    }
}

void CATNavigBox::RedrawEverywhere(const CATBaseUnknown_var& spObject)
{
    for (CATNavigBox* pBox : Boxes()) {
        pBox->Redraw(spObject);
    }
}

std::vector<CATNavigLine> CATNavigBox::Display()
{
    // Trees are as deep as the data, so they are walked with a stack of their own. An object is taken off its path when
    // the walk comes back to its own place on the stack.
    struct Open
    {
        CATBaseUnknown_var spObject;
        int level;
        bool bLeaves;
    };
    std::vector<CATNavigLine> lines;
    std::vector<Open> open;
    const auto push = [&open](const CATListValCATBaseUnknown_var& objects, int level) {
        for (int i = objects.Size(); i >= 1; --i) {
            open.push_back({objects[i], level, false});
        }
    };
    push(m_Roots, 0);
    while (!open.empty()) {
        const Open current = std::move(open.back());
        open.pop_back();
        Entry& entry = GetEntry(current.spObject);
        if (current.bLeaves) {
            entry.bOnPath = false;
            continue;
        }
        if (!entry.bKnown) {
            Ask(entry);
        }
        entry.bReached = true;
        const bool bHasChildren = entry.children.Size() > 0;
        const bool bUnfold = bHasChildren && entry.bExpanded && !entry.bOnPath;
        lines.push_back(
            {current.spObject, entry.label, entry.icon, entry.stateCode, current.level, bHasChildren, bUnfold});
        if (bUnfold) {
            entry.bOnPath = true;
            open.push_back({current.spObject, current.level, true});
            push(entry.children, current.level + 1);
        }
    }
    ForgetUnreached();
    return lines;
}

CATUnicodeString CATNavigBox::GetShortHelp(const CATBaseUnknown_var& spObject) const
{
    const auto found = m_Entries.find(spObject.Get());
    if (found == m_Entries.end() || found->second.pInstance == nullptr) {
        return {};
    }
    CATUnicodeString shortHelp = found->second.label;
    CATINavigModify_var(found->second.pInstance->GetNode())->ModifyShortHelp(shortHelp);
    return shortHelp;
}

HRESULT CATNavigBox::DoubleClick(const CATBaseUnknown_var& spObject) const
{
    const CATIUIActivate_var spIUIActivate(spObject);
    return spIUIActivate != NULL_var ? spIUIActivate->Activate() : S_FALSE;
}

CATBaseUnknown_var CATNavigBox::GetNode(const CATBaseUnknown_var& spObject) const
{
    const auto found = m_Entries.find(spObject.Get());
    return found != m_Entries.end() && found->second.pInstance != nullptr ? found->second.pInstance->GetNode()
                                                                          : CATBaseUnknown_var();
}

CATNavigBox::Entry& CATNavigBox::GetEntry(const CATBaseUnknown_var& spObject)
{
    Entry& entry = m_Entries[spObject.Get()];
    if (!entry.spObject) {
        entry.spObject = spObject;
    }
    return entry;
}

void CATNavigBox::Ask(Entry& entry)
{
    ++m_QuestionCount;
    entry.bKnown = true;
    AskObject(entry);
    AskNode(entry);
}

void CATNavigBox::AskObject(Entry& entry)
{
    const CATINavigateObject_var spINavigateObject(entry.spObject);
    if (spINavigateObject == NULL_var) {
        entry.label = NameObject(entry.spObject);
        entry.children.RemoveAll();
        return;
    }
    const std::unique_ptr<CATListValCATUnicodeString> pLabel(spINavigateObject->GetIdentificators());
    const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spINavigateObject->GetChildren());
    entry.label = pLabel != nullptr ? JoinLabel(*pLabel) : CATUnicodeString();
    entry.children = pChildren != nullptr ? *pChildren : CATListValCATBaseUnknown_var();
}

void CATNavigBox::AskNode(Entry& entry)
{
    if (entry.pInstance == nullptr) {
        entry.pInstance = std::make_unique<CATNavigInstance>(this, entry.spObject);
    }
    const CATINavigModify_var spINavigModify(entry.pInstance->GetNode());
    const CATIGraphNode_var spIGraphNode(entry.pInstance->GetNode());
    spINavigModify->UpdateElem(entry.pInstance.get());
    spIGraphNode->GetIconName(&entry.icon);
    const bool bMarked = spIGraphNode->IconIsMarked() != FALSE || spIGraphNode->LabelIsMarked() != FALSE;
    entry.stateCode = bMarked ? spIGraphNode->GetStateCode() : 0;
    if (!std::exchange(entry.bDecided, true)) {
        entry.bExpanded = spINavigModify->GetExpansionMode() == CATNavigExpansionMode::UnfoldedAtFirst;
    }
}

void CATNavigBox::ForgetUnreached()
{
    // The objects go when the table is done with: their end may reach it.
    std::vector<Entry> unreached;
    for (auto it = m_Entries.begin(); it != m_Entries.end();) {
        if (std::exchange(it->second.bReached, false)) {
            ++it;
        } else {
            unreached.push_back(std::move(it->second));
            it = m_Entries.erase(it);
        }
    }
}

#include "CATDOMStore.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "CATDOMDocument.h"
#include "CATDOMElement.h"
#include "CATDOMNodeList.h"

namespace {

// No XML name, so no element of a document has it.
constexpr const char* NAME_OF_REMOVED = "#removed";

// Documents with more different tags are walked through for each of them.
constexpr std::size_t MOST_TAG_NAMES = 64;

// Up to here looking through an element that is taken out costs less than looking through what is left as well.
constexpr int STEPS_ALONE = 256;

int s_LiveStores = 0;

// Frees a node and everything below it, from the bottom up: the parser's own removal recurses.
void FreeNode(pugi::xml_node root)
{
    pugi::xml_node node = root;
    for (;;) {
        while (const pugi::xml_node child = node.first_child()) {
            node = child;
        }
        pugi::xml_node parent = node.parent();
        const bool isRoot = node == root;
        parent.remove_child(node);
        if (isRoot) {
            return;
        }
        node = parent;
    }
}

// Walks a part of a document in document order and collects the handle objects on its elements.
class HandleSearch
{
public:
    HandleSearch(pugi::xml_node root, const CATDOMHandleTable& handles)
        : m_Root(root), m_Node(root), m_pHandles(&handles)
    {
    }

    bool IsDone() const { return !m_Node; }

    void Step()
    {
        if (m_Node.type() == pugi::node_element) {
            if (CATDOMElement* pElement = m_pHandles->Find(m_Node.internal_object())) {
                m_Found.push_back(pElement);
            }
        }
        m_Node = Next();
    }

    const std::vector<CATDOMElement*>& GetFound() const { return m_Found; }

private:
    pugi::xml_node Next() const
    {
        if (const pugi::xml_node child = m_Node.first_child(); IsPart(child)) {
            return child;
        }
        for (pugi::xml_node node = m_Node; node != m_Root; node = node.parent()) {
            if (const pugi::xml_node next = node.next_sibling(); IsPart(next)) {
                return next;
            }
        }
        return pugi::xml_node();
    }

    // What was removed hangs behind the document element and is no part of the document.
    static bool IsPart(const pugi::xml_node& node) { return node && *node.name() != '#'; }

    pugi::xml_node m_Root;
    pugi::xml_node m_Node;
    const CATDOMHandleTable* m_pHandles;
    std::vector<CATDOMElement*> m_Found;
};

} // namespace

int CATDOMStore::s_BulkReleases = 0;
CATDOMStore* CATDOMStore::s_pFirstWaiting = nullptr;

CATDOMStore::CATDOMStore(std::unique_ptr<pugi::xml_document> pDocument)
    : m_pDocument(std::move(pDocument)), m_pMain(NewBranch(m_pDocument->internal_object()))
{
    m_pMain->references = 1;
    ++s_LiveStores;
}

CATDOMStore::~CATDOMStore()
{
    for (CATDOMBranch* pBranch = TakeUnreachable(); pBranch != nullptr;) {
        DropReference(std::exchange(pBranch, pBranch->pNextUnreachable));
    }
    DropReference(m_pMain);
    --s_LiveStores;
}

CATIDOMDocument_var CATDOMStore::Open(std::unique_ptr<pugi::xml_document> pDocument)
{
    auto* pStore = new CATDOMStore(std::move(pDocument));
    try {
        pStore->m_pDocumentHandle = new CATDOMDocument(pStore->m_pMain->pRoot, pStore->m_pMain);
    } catch (...) {
        delete pStore;
        throw;
    }
    pStore->CountHandle(pStore->m_pMain);
    return CATIDOMDocument_var::Adopt(pStore->m_pDocumentHandle);
}

int CATDOMStore::GetLiveCount()
{
    return s_LiveStores;
}

CATIDOMElement_var CATDOMStore::GetElement(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch)
{
    if (pNode == nullptr) {
        return NULL_var;
    }
    if (CATDOMElement* pElement = m_Handles.Find(pNode)) {
        return CATIDOMElement_var(static_cast<CATIDOMElement*>(pElement));
    }
    m_Handles.MakeRoom();
    auto* pElement = new CATDOMElement(pNode, pBranch);
    m_Handles.Insert(pNode, pElement);
    CountHandle(pBranch);
    return CATIDOMElement_var::Adopt(pElement);
}

CATIDOMNode_var CATDOMStore::GetParent(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch)
{
    pugi::xml_node_struct* pParent = pugi::xml_node(pNode).parent().internal_object();
    if (pParent == nullptr || pParent == m_pRemoved) {
        return NULL_var;
    }
    if (pParent != m_pDocument->internal_object()) {
        return GetElement(pParent, pBranch);
    }
    if (m_pDocumentHandle != nullptr) {
        return CATIDOMNode_var(static_cast<CATIDOMNode*>(m_pDocumentHandle));
    }
    m_pDocumentHandle = new CATDOMDocument(pParent, pBranch);
    CountHandle(pBranch);
    return CATIDOMNode_var::Adopt(m_pDocumentHandle);
}

void CATDOMStore::CountHandle(CATDOMBranch* pBranch)
{
    ++pBranch->handles;
    ++pBranch->references;
    ++m_HandleCount;
}

CATIDOMElement_var CATDOMStore::GetDocumentElement()
{
    return GetElement(FindDocumentElement(), m_pMain);
}

pugi::xml_node_struct* CATDOMStore::FindDocumentElement() const
{
    const pugi::xml_node element = m_pDocument->document_element();
    return element.internal_object() != m_pRemoved ? element.internal_object() : nullptr;
}

CATIDOMNodeList_var CATDOMStore::GetElementsByTagName(const CATUnicodeString& usTagName)
{
    std::vector<CATIDOMElement_var> elements;
    // Known are all names or none.
    std::vector<std::string> names;
    const bool namesAreKnown = !m_TagNames.empty();
    if (!namesAreKnown || std::ranges::find(m_TagNames, usTagName.View()) != m_TagNames.end()) {
        const CATDOMElementView root(FindDocumentElement());
        for (CATDOMElementView element = root; element; element = element.GetNextBelow(root)) {
            if (!namesAreKnown) {
                RememberTagName(element, &names);
            }
            if (element.HasTagName(usTagName.View())) {
                elements.push_back(GetElement(element.GetNode(), m_pMain));
            }
        }
    }
    if (!namesAreKnown && names.size() <= MOST_TAG_NAMES) {
        m_TagNames = std::move(names);
    }
    return CATIDOMNodeList_var::Adopt(new CATDOMNodeList(std::move(elements)));
}

// The name met last stands first: an element's tag is mostly that of the element before it.
void CATDOMStore::RememberTagName(const CATDOMElementView& element, std::vector<std::string>* pNames)
{
    if (pNames->size() > MOST_TAG_NAMES) {
        return;
    }
    const auto found = std::ranges::find_if(*pNames, [&](const std::string& name) { return element.HasTagName(name); });
    if (found == pNames->end()) {
        pNames->emplace_back(element.GetTagName());
        std::swap(pNames->front(), pNames->back());
    } else if (found != pNames->begin()) {
        std::swap(*found, pNames->front());
    }
}

pugi::xml_node_struct* CATDOMStore::GetRemoved()
{
    if (m_pRemoved == nullptr) {
        m_pDocument->append_child(pugi::node_comment);
        m_pRemoved = m_pDocument->append_child(NAME_OF_REMOVED).internal_object();
    }
    return m_pRemoved;
}

pugi::xml_node_struct* CATDOMStore::FindWall(pugi::xml_node_struct* pNode) const
{
    const pugi::xml_node node(pNode);
    return m_pRemoved != nullptr && node.parent().internal_object() == m_pRemoved
               ? node.next_sibling().internal_object()
               : nullptr;
}

CATIDOMElement_var CATDOMStore::CreateElement(const char* tagName)
{
    std::unique_ptr<CATDOMBranch> pBranch(NewBranch(nullptr));
    pugi::xml_node removed(GetRemoved());
    const pugi::xml_node node = removed.append_child(tagName);
    removed.append_child(pugi::node_comment);
    pBranch->pRoot = node.internal_object();
    // Without a handle nobody reaches the node, which goes with the document.
    CATIDOMElement_var spElement = GetElement(node.internal_object(), pBranch.get());
    static_cast<void>(pBranch.release());
    return spElement;
}

CATIDOMElement_var CATDOMStore::CreateChild(pugi::xml_node_struct* pParent, CATDOMBranch* pBranch, const char* tagName)
{
    m_TagNames.clear();
    return GetElement(pugi::xml_node(pParent).append_child(tagName).internal_object(), pBranch);
}

HRESULT CATDOMStore::AppendChild(pugi::xml_node_struct* pParent, CATDOMBranch* pBranch, CATDOMElement* pChild)
{
    m_TagNames.clear();
    const pugi::xml_node child(pChild->GetNode());
    if (&pChild->GetStore() != this || pChild->GetNode() == pParent) {
        return E_FAIL;
    }
    CATDOMBranch* pChildBranch = pChild->GetBranch();
    const pugi::xml_node wall(FindWall(pChild->GetNode()));
    if (pParent == m_pDocument->internal_object()) {
        if (pugi::xml_node_struct* pElement = FindDocumentElement(); pElement != nullptr) {
            return pElement == pChild->GetNode() ? S_OK : E_FAIL;
        }
        // In front of what was removed.
        if (!m_pDocument->prepend_move(child)) {
            return E_FAIL;
        }
    } else if (!child.first_child()) {
        MoveLeaf(pParent, pBranch, pChild);
        return S_OK;
    } else if (!pugi::xml_node(pParent).append_move(child)) {
        return E_FAIL;
    }
    wall.parent().remove_child(wall);
    if (pChildBranch == pBranch) {
        return S_OK;
    }
    if (pChildBranch->pRoot != pChild->GetNode()) {
        Separate(pChild);
        pChildBranch = pChild->GetBranch();
    }
    Merge(pChildBranch, pBranch);
    return S_OK;
}

// Moving a node makes the parser look at every ancestor of its new place. An element without children is made anew
// there instead, so that building a deep document from the top takes linear time.
void CATDOMStore::MoveLeaf(pugi::xml_node_struct* pParent, CATDOMBranch* pBranch, CATDOMElement* pChild)
{
    pugi::xml_node old(pChild->GetNode());
    pugi::xml_node moved = pugi::xml_node(pParent).append_child(old.name());
    for (const pugi::xml_attribute attribute : old.attributes()) {
        moved.append_copy(attribute);
    }
    if (*old.value() != '\0') {
        moved.text().set(old.value());
    }
    m_Handles.Erase(old.internal_object());
    pChild->m_pNode = moved.internal_object();
    m_Handles.Insert(moved.internal_object(), pChild);

    CATDOMBranch* pOldBranch = pChild->GetBranch();
    ++pOldBranch->references;
    if (pOldBranch->pRoot == old.internal_object()) {
        pOldBranch->pRoot = nullptr;
    }
    const pugi::xml_node wall(FindWall(old.internal_object()));
    wall.parent().remove_child(wall);
    old.parent().remove_child(old);
    Assign(pChild, pBranch);
    FreeIfUnreachable(pOldBranch);
    DropReference(pOldBranch);
}

HRESULT CATDOMStore::RemoveChild(pugi::xml_node_struct* pParent, CATDOMElement* pChild)
{
    m_TagNames.clear();
    const pugi::xml_node child(pChild->GetNode());
    if (&pChild->GetStore() != this || child.parent().internal_object() != pParent) {
        return E_FAIL;
    }
    pugi::xml_node removed(GetRemoved());
    if (!removed.append_move(child)) {
        return E_FAIL;
    }
    removed.append_child(pugi::node_comment);
    Separate(pChild);
    return S_OK;
}

CATDOMBranch* CATDOMStore::NewBranch(pugi::xml_node_struct* pRoot)
{
    return new CATDOMBranch{this, pRoot};
}

template <class Handle>
void CATDOMStore::Assign(Handle* pHandle, CATDOMBranch* pBranch)
{
    --pHandle->GetBranch()->handles;
    CATDOMBranch* pOld = std::exchange(pHandle->m_pBranch, pBranch);
    ++pBranch->handles;
    ++pBranch->references;
    DropReference(pOld);
}

void CATDOMStore::DropReference(CATDOMBranch* pBranch)
{
    while (pBranch != nullptr && --pBranch->references == 0) {
        CATDOMBranch* pNext = pBranch->pMergedInto;
        delete pBranch;
        pBranch = pNext;
    }
}

void CATDOMStore::Separate(CATDOMElement* pElement)
{
    CATDOMBranch* pBranch = pElement->GetBranch();
    CATDOMDocument* pDocument = pBranch == m_pMain ? m_pDocumentHandle : nullptr;
    const std::size_t handles = static_cast<std::size_t>(pBranch->handles) - (pDocument != nullptr ? 1U : 0U);
    HandleSearch below(pugi::xml_node(pElement->GetNode()), m_Handles);
    HandleSearch rest(pugi::xml_node(pBranch->pRoot), m_Handles);
    const auto allFound = [&] { return below.GetFound().size() + rest.GetFound().size() == handles; };

    // Beyond a few steps both parts are searched in step, so that the smaller one decides how long it takes. Its handle
    // objects go to the new record; the larger part keeps the old one.
    for (int i = 0; i < STEPS_ALONE && !below.IsDone() && !allFound(); ++i) {
        below.Step();
    }
    while (!below.IsDone() && !rest.IsDone() && !allFound()) {
        below.Step();
        rest.Step();
    }
    const bool restIsSmaller = allFound() ? rest.GetFound().size() < below.GetFound().size() : rest.IsDone();
    CATDOMBranch* pNew = NewBranch(restIsSmaller ? pBranch->pRoot : pElement->GetNode());
    // Handle objects move: neither record must go meanwhile.
    ++pNew->references;
    ++pBranch->references;
    for (CATDOMElement* pFound : (restIsSmaller ? rest : below).GetFound()) {
        Assign(pFound, pNew);
    }
    if (restIsSmaller) {
        pBranch->pRoot = pElement->GetNode();
        if (pDocument != nullptr) {
            Assign(pDocument, pNew);
        }
        if (pBranch == m_pMain) {
            SetMain(pNew);
        }
    }
    FreeIfUnreachable(restIsSmaller ? pNew : pBranch);
    DropReference(pNew);
    DropReference(pBranch);
}

void CATDOMStore::SetMain(CATDOMBranch* pBranch)
{
    ++pBranch->references;
    DropReference(std::exchange(m_pMain, pBranch));
}

void CATDOMStore::Merge(CATDOMBranch* pBranch, CATDOMBranch* pInto)
{
    CATDOMBranch* pKeep = pInto;
    CATDOMBranch* pDrop = pBranch;
    // The larger one stays, so that chains of merged branches remain short.
    if (pBranch->handles > pInto->handles) {
        std::swap(pKeep, pDrop);
        pKeep->pRoot = pInto->pRoot;
        if (pInto == m_pMain) {
            SetMain(pKeep);
        }
    }
    pKeep->handles += std::exchange(pDrop->handles, 0);
    pDrop->pMergedInto = pKeep;
    ++pKeep->references;
}

void CATDOMStore::FreeIfUnreachable(CATDOMBranch* pBranch)
{
    if (pBranch->handles > 0 || pBranch->pRoot == nullptr) {
        return;
    }
    if (s_BulkReleases > 0) {
        NoteUnreachable(pBranch);
    } else {
        Free(pBranch);
    }
}

void CATDOMStore::NoteUnreachable(CATDOMBranch* pBranch)
{
    if (m_pUnreachable == nullptr) {
        m_pNextWaiting = std::exchange(s_pFirstWaiting, this);
        if (m_pNextWaiting != nullptr) {
            m_pNextWaiting->m_pPreviousWaiting = this;
        }
    }
    pBranch->pNextUnreachable = std::exchange(m_pUnreachable, pBranch);
    ++pBranch->references;
}

CATDOMBranch* CATDOMStore::TakeUnreachable()
{
    if (m_pUnreachable == nullptr) {
        return nullptr;
    }
    if (m_pNextWaiting != nullptr) {
        m_pNextWaiting->m_pPreviousWaiting = m_pPreviousWaiting;
    }
    (m_pPreviousWaiting != nullptr ? m_pPreviousWaiting->m_pNextWaiting : s_pFirstWaiting) = m_pNextWaiting;
    m_pNextWaiting = m_pPreviousWaiting = nullptr;
    return std::exchange(m_pUnreachable, nullptr);
}

void CATDOMStore::EndBulkRelease()
{
    if (--s_BulkReleases > 0) {
        return;
    }
    while (s_pFirstWaiting != nullptr) {
        s_pFirstWaiting->FreeUnreachable();
    }
}

void CATDOMStore::FreeUnreachable()
{
    for (CATDOMBranch* pBranch = TakeUnreachable(); pBranch != nullptr;) {
        CATDOMBranch* pCurrent = std::exchange(pBranch, pBranch->pNextUnreachable);
        FreeIfUnreachable(pCurrent);
        DropReference(pCurrent);
    }
}

void CATDOMStore::Free(CATDOMBranch* pBranch)
{
    if (pBranch == m_pMain) {
        if (pugi::xml_node_struct* pElement = FindDocumentElement(); pElement != nullptr) {
            FreeNode(pugi::xml_node(pElement));
        }
        return;
    }
    const pugi::xml_node wall(FindWall(pBranch->pRoot));
    wall.parent().remove_child(wall);
    FreeNode(pugi::xml_node(std::exchange(pBranch->pRoot, nullptr)));
}

void CATDOMStore::Forget(CATDOMElement* pElement)
{
    m_Handles.Erase(pElement->GetNode());
    CATDOMBranch* pBranch = pElement->m_pBranch;
    delete pElement;
    ForgetHandle(pBranch);
}

void CATDOMStore::Forget(CATDOMDocument* pDocument)
{
    m_pDocumentHandle = nullptr;
    CATDOMBranch* pBranch = pDocument->m_pBranch;
    delete pDocument;
    ForgetHandle(pBranch);
}

void CATDOMStore::ForgetHandle(CATDOMBranch* pBranch)
{
    CATDOMBranch* pResolved = Resolve(pBranch);
    --pResolved->handles;
    --m_HandleCount;
    // With the last handle object the whole document goes, which needs no walk.
    if (m_HandleCount > 0) {
        FreeIfUnreachable(pResolved);
    }
    DropReference(pBranch);
    if (m_HandleCount == 0) {
        delete this;
    }
}

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CATDOMBranch.h"
#include "CATDOMHandleTable.h"
#include "CATIDOMDocument.h"

namespace pugi {
class xml_document;
} // namespace pugi

class CATDOMDocument;

// One document with everything that was ever part of it and can still be reached. It is kept by its handle objects and
// dies with the last of them.
//
// There is one handle object per node at a time, so that two handles on the same node are equal. Elements that are
// removed are only detached, because the memory of a freed node is used again at once; they are freed when no handle
// object can reach them any more (CATDOMBranch).
class CATDOMStore
{
public:
    CATDOMStore(const CATDOMStore&) = delete;
    CATDOMStore& operator=(const CATDOMStore&) = delete;

    // Takes a document over and gives the handle on it.
    static CATIDOMDocument_var Open(std::unique_ptr<pugi::xml_document> pDocument);

    static int GetLiveCount();

    // The branch that this one belongs to now.
    static CATDOMBranch* Resolve(CATDOMBranch* pBranch)
    {
        while (pBranch->pMergedInto != nullptr)
            [[unlikely]]
            {
                pBranch = pBranch->pMergedInto;
            }
        return pBranch;
    }

    // Handles on nodes of a branch, from a node of the same branch; empty for null.
    CATIDOMElement_var GetElement(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch);
    CATIDOMNode_var GetParent(pugi::xml_node_struct* pNode, CATDOMBranch* pBranch);
    CATIDOMElement_var GetDocumentElement();
    CATIDOMNodeList_var GetElementsByTagName(const CATUnicodeString& usTagName);

    CATIDOMElement_var CreateElement(const char* tagName);
    CATIDOMElement_var CreateChild(pugi::xml_node_struct* pParent, CATDOMBranch* pBranch, const char* tagName);

    // E_FAIL where CATIDOMNode says so.
    HRESULT AppendChild(pugi::xml_node_struct* pParent, CATDOMBranch* pBranch, CATDOMElement* pChild);
    HRESULT RemoveChild(pugi::xml_node_struct* pParent, CATDOMElement* pChild);

    // A handle object whose last reference has gone.
    void Forget(CATDOMElement* pElement);
    void Forget(CATDOMDocument* pDocument);

    // Between the two calls, which may be nested, unreachable branches are only noted (CATDOMBulkRelease).
    static void BeginBulkRelease() { ++s_BulkReleases; }
    static void EndBulkRelease();

private:
    explicit CATDOMStore(std::unique_ptr<pugi::xml_document> pDocument);
    ~CATDOMStore();

    // The element under which removed elements and elements not yet appended hang, one next to the other. Behind each
    // of them, and in front of this element, stands a comment, where no text has one: what follows there is no sibling.
    pugi::xml_node_struct* GetRemoved();
    // The comment behind an element that hangs there; null for any other.
    pugi::xml_node_struct* FindWall(pugi::xml_node_struct* pNode) const;
    pugi::xml_node_struct* FindDocumentElement() const;
    static void RememberTagName(const CATDOMElementView& element, std::vector<std::string>* pNames);

    CATDOMBranch* NewBranch(pugi::xml_node_struct* pRoot);
    void CountHandle(CATDOMBranch* pBranch);
    // Moves a handle object from its branch to another one.
    template <class Handle>
    static void Assign(Handle* pHandle, CATDOMBranch* pBranch);
    static void DropReference(CATDOMBranch* pBranch);
    void SetMain(CATDOMBranch* pBranch);
    // Makes a branch of its own of the element and what is below it, after it was taken out of its branch. What is left
    // of that is freed when nobody has a handle on it.
    void Separate(CATDOMElement* pElement);
    void Merge(CATDOMBranch* pBranch, CATDOMBranch* pInto);
    void MoveLeaf(pugi::xml_node_struct* pParent, CATDOMBranch* pBranch, CATDOMElement* pChild);
    void FreeIfUnreachable(CATDOMBranch* pBranch);
    void Free(CATDOMBranch* pBranch);
    void NoteUnreachable(CATDOMBranch* pBranch);
    // The noted branches, of which there are none afterwards.
    CATDOMBranch* TakeUnreachable();
    void FreeUnreachable();
    void ForgetHandle(CATDOMBranch* pBranch);

    std::unique_ptr<pugi::xml_document> m_pDocument;
    pugi::xml_node_struct* m_pRemoved = nullptr;
    CATDOMBranch* m_pMain;
    CATDOMDocument* m_pDocumentHandle = nullptr;
    CATDOMHandleTable m_Handles;
    int m_HandleCount = 0;
    // Tag names in the document, those of removed elements too; empty until all elements were walked through. They
    // spare the walk for a tag that the document does not have.
    std::vector<std::string> m_TagNames;

    // Branches to be freed when the bulk release ends, kept by a reference; the stores that have some are neighbours.
    // Both are chained, since handles are dropped where nothing may fail.
    CATDOMBranch* m_pUnreachable = nullptr;
    CATDOMStore* m_pNextWaiting = nullptr;
    CATDOMStore* m_pPreviousWaiting = nullptr;

    static int s_BulkReleases;
    static CATDOMStore* s_pFirstWaiting;
};

#pragma once

#include <cstdint>
#include <memory>

#include "CATAsmProduct.h"
#include "CATIPrdLink.h"
#include "CATListVal.h"
#include "CATPrdStructure.h"

class CATPrdDocument;

// A reference: what a document says about the product that it defines, and the uses of others in it. It stands at the
// top of a tree of its own. Documents and uses keep it.
class CATPrdReference final : public CATAsmProduct
{
public:
    explicit CATPrdReference(CATPrdLinkState linkState);
    ~CATPrdReference() override;

    CATPrdReference& GetReference() override { return *this; }

    CATPrdLinkState GetLinkState() const { return m_LinkState; }
    // Whether part number, properties and children are known.
    bool IsLoaded() const;
    // A reference whose document was closed stays without one; nothing but its texts is left.
    bool IsClosed() const { return m_bClosed; }

    // The document that holds the reference; null for a broken link and after it was closed.
    CATPrdDocument* GetDocument() const { return m_pDocument; }
    void SetDocument(CATPrdDocument* pDocument) { m_pDocument = pDocument; }

    // The document with nothing but the shape; null when there is none.
    CATPrdDocument* GetShapeDocument() const { return m_pShapeDocument; }
    void SetShapeDocument(CATPrdDocument* pDocument) { m_pShapeDocument = pDocument; }

    // Path of the file that defines the reference: that of its document, which may have got another name, or the one
    // that stands in the link.
    const CATUnicodeString& GetLinkedFileName() const;
    void SetLinkedFileName(const CATUnicodeString& storageName) { m_LinkedFileName = storageName; }

    const CATPrdDefinition& GetDefinition() const { return m_Definition; }
    CATPrdDefinition& GetDefinition() { return m_Definition; }
    // The part number is what root products are looked up by, so it is written here only.
    void SetPartNumber(const CATUnicodeString& partNumber);

    // What the document will be when a product in visualization mode is loaded.
    void SetDocumentToLoad(const CATUnicodeString& type, const CATUnicodeString& displayName);
    // Loads the document of a product in visualization mode (see CATIPrdLink::LoadDocument).
    HRESULT Load();

    const CATListVal<std::shared_ptr<CATPrdUsage>>& GetUsages() const { return m_Usages; }
    std::uint32_t GetRemovedUsageCount() const { return m_RemovedUsages; }
    bool IsUsed() const { return m_UseCount > 0; }

    // Appends a use of a reference. The caller has made sure that no loop comes of it.
    void AddUsage(CATPrdReference& child, const CATPrdUsageData& data);
    // Takes a use out. Its former position, 0 for one that is not this reference's.
    int RemoveUsage(const CATPrdUsage& usage);

    // Whether another reference stands somewhere below this one, or is this one.
    bool Contains(const CATPrdReference& other) const;

    // The document is closed: uses, tree and link go.
    void Close();

    // Makes the document dirty that holds the reference.
    void Touch();

private:
    friend class CATPrdSession;

    bool IsInTree() const override { return true; }
    static void Detach(CATPrdUsage& usage);
    void RemoveUse();

    CATPrdLinkState m_LinkState;
    bool m_bClosed = false;
    std::uint32_t m_RemovedUsages = 0;
    std::size_t m_UseCount = 0;
    CATPrdDocument* m_pDocument = nullptr;
    CATPrdDocument* m_pShapeDocument = nullptr;
    CATUnicodeString m_LinkedFileName;
    CATUnicodeString m_TypeToLoad;
    CATUnicodeString m_DisplayNameToLoad;
    // Place in the session's order of root products, 0 before the session indexed it for the first time.
    std::uint64_t m_SessionNumber = 0;
    CATPrdDefinition m_Definition;
    CATListVal<std::shared_ptr<CATPrdUsage>> m_Usages;
    std::uint32_t m_LastUsageNumber = 0;
};

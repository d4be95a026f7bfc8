#include "CATProductServices.h"

#include <vector>

#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATPrdDocument.h"
#include "CATPrdReference.h"
#include "CATPrdSession.h"
#include "CATPrdStructure.h"
#include "CATPrdXmlReader.h"

namespace {

HRESULT Refuse(const CATUnicodeString& problem, const CATUnicodeString& expected)
{
    auto* pError =
        CATError::Make<CATInternalError>({problem, expected}, "ImpossibleStructureERR_1002", "CATProductStructure");
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

// Makes documents and products of a structure without problem.
class Opener
{
public:
    explicit Opener(const CATPrdStructure& structure)
        : m_Structure(structure), m_UsagesByParent(structure.GetUsagesByParent()), m_Places(structure.references.size())
    {
    }

    // The name of a file that is in session for something else; empty when everything can be opened.
    CATUnicodeString FindFileInOtherUse() const
    {
        for (const CATPrdReferenceData& data : m_Structure.references) {
            if (data.linkState == CATPrdLinkState::Broken) {
                continue;
            }
            const CATPrdReference* pKnown = FindInSession(data);
            if (pKnown != nullptr) {
                continue;
            }
            CATDocument* pDocument = nullptr;
            if (SUCCEEDED(CATDocumentServices::GetDocumentInSession(data.storageName, &pDocument))) {
                return data.storageName;
            }
            const bool isShape = data.linkState == CATPrdLinkState::Embedded;
            if (SUCCEEDED(CATDocumentServices::GetDocumentInSession(data.shapeStorageName, &pDocument)) &&
                !(isShape && CATPrdDocument::FromComponent(pDocument) != nullptr)) {
                return data.shapeStorageName;
            }
        }
        return {};
    }

    CATListValCATBaseUnknown_var Open()
    {
        std::vector<std::size_t> open = GetOpened();
        const std::vector<std::size_t> opened = open;
        for (const std::size_t reference : opened) {
            Reach(reference, reference);
        }
        while (!open.empty()) {
            const std::size_t parent = open.back();
            open.pop_back();
            if (!m_Places[parent].isNew) {
                continue;
            }
            for (const std::size_t usage : m_UsagesByParent[parent]) {
                const std::size_t child = m_Structure.usages[usage].child;
                if (m_Places[child].spReference == NULL_var) {
                    Reach(child, parent);
                    open.push_back(child);
                }
            }
        }
        Link();
        return MarkOpened(opened);
    }

private:
    // What became of a reference of the structure.
    struct Place
    {
        CATBaseUnknown_var spReference;
        // The document that holds it.
        CATPrdDocument* pDocument = nullptr;
        // Made now, and not found in the session.
        bool isNew = false;
    };

    static CATPrdReference& ToReference(const Place& place)
    {
        return static_cast<CATPrdReference&>(*place.spReference);
    }

    // The references whose documents are opened for themselves.
    std::vector<std::size_t> GetOpened() const
    {
        std::vector<bool> isUsed(m_Structure.references.size(), false);
        for (const CATPrdUsageData& usage : m_Structure.usages) {
            isUsed[usage.child] = true;
        }
        std::vector<std::size_t> opened;
        for (std::size_t i = 0; i < isUsed.size(); ++i) {
            const CATPrdReferenceData& data = m_Structure.references[i];
            if (data.linkState != CATPrdLinkState::Broken && (!isUsed[i] || data.isOpened)) {
                opened.push_back(i);
            }
        }
        return opened;
    }

    static CATPrdReference* FindInSession(const CATPrdReferenceData& data)
    {
        if (data.linkState == CATPrdLinkState::Broken || data.linkState == CATPrdLinkState::Embedded) {
            return nullptr;
        }
        CATDocument* pDocument = nullptr;
        CATDocumentServices::GetDocumentInSession(data.storageName, &pDocument);
        const CATPrdDocument* pPrdDocument = CATPrdDocument::FromComponent(pDocument);
        return pPrdDocument != nullptr && pPrdDocument->GetRoot() != nullptr
                   ? pPrdDocument->GetRoot()
                   : CATPrdSession::Instance().FindVisualized(data.storageName);
    }

    // Finds or makes a reference that is needed below another one, or for itself.
    void Reach(std::size_t i, std::size_t parent)
    {
        const CATPrdReferenceData& data = m_Structure.references[i];
        Place& place = m_Places[i];
        if (CATPrdReference* pKnown = FindInSession(data); pKnown != nullptr) {
            place.spReference = CATBaseUnknown_var(pKnown);
            if (data.linkState == CATPrdLinkState::Loaded) {
                pKnown->Load();
            }
            place.pDocument = pKnown->GetDocument();
            return;
        }
        place.spReference = CATBaseUnknown_var::Adopt(new CATPrdReference(data.linkState));
        place.isNew = true;
        CATPrdReference& reference = ToReference(place);
        reference.GetDefinition() = data.definition;
        reference.SetLinkedFileName(data.storageName);
        switch (data.linkState) {
        case CATPrdLinkState::Loaded:
            place.pDocument = AddDocument(data.documentType, data.storageName, data.displayName);
            place.pDocument->SetDirty(data.isDirty ? TRUE : FALSE);
            place.pDocument->SetRoot(reference);
            break;
        case CATPrdLinkState::Visualization:
            place.pDocument = AddDocument(CATPrdDocument::SHAPE_TYPE, data.shapeStorageName, {});
            reference.SetDocumentToLoad(data.documentType, data.displayName);
            reference.SetShapeDocument(place.pDocument);
            place.pDocument->SetRoot(reference);
            break;
        case CATPrdLinkState::Embedded:
            place.pDocument = m_Places[parent].pDocument;
            place.pDocument->AddEmbedded(reference);
            if (!data.shapeStorageName.IsEmpty()) {
                CATPrdDocument* pShape = FindOrAddShape(data.shapeStorageName);
                place.pDocument->AddShape(*pShape);
                reference.SetShapeDocument(pShape);
            }
            break;
        case CATPrdLinkState::Broken:
            break;
        }
    }

    static CATPrdDocument* AddDocument(const CATUnicodeString& type, const CATUnicodeString& storageName,
                                       const CATUnicodeString& displayName)
    {
        const CATBaseUnknown_var spDocument = CATPrdDocument::Create(type, storageName, displayName);
        CATPrdDocument* pDocument = CATPrdDocument::FromComponent(spDocument.Get());
        // The session keeps it.
        CATDocumentServices::Add(*pDocument);
        return pDocument;
    }

    static CATPrdDocument* FindOrAddShape(const CATUnicodeString& storageName)
    {
        CATDocument* pDocument = nullptr;
        return SUCCEEDED(CATDocumentServices::GetDocumentInSession(storageName, &pDocument))
                   ? CATPrdDocument::FromComponent(pDocument)
                   : AddDocument(CATPrdDocument::SHAPE_TYPE, storageName, {});
    }

    void Link()
    {
        for (const CATPrdUsageData& usage : m_Structure.usages) {
            if (m_Places[usage.parent].isNew) {
                ToReference(m_Places[usage.parent]).AddUsage(ToReference(m_Places[usage.child]), usage);
            }
        }
    }

    CATListValCATBaseUnknown_var MarkOpened(const std::vector<std::size_t>& opened)
    {
        CATListValCATBaseUnknown_var documents;
        for (const std::size_t reference : opened) {
            CATPrdDocument* pDocument = m_Places[reference].pDocument;
            pDocument->SetOpened();
            documents.Append(CATBaseUnknown_var(pDocument));
        }
        return documents;
    }

    const CATPrdStructure& m_Structure;
    std::vector<std::vector<std::size_t>> m_UsagesByParent;
    std::vector<Place> m_Places;
};

} // namespace

HRESULT CATProductServices::Open(const CATPrdStructure& structure, CATListValCATBaseUnknown_var* pDocuments)
{
    if (const auto problem = structure.FindProblem()) {
        return Refuse(problem->problem, problem->expected);
    }
    Opener opener(structure);
    if (const CATUnicodeString file = opener.FindFileInOtherUse(); !file.IsEmpty()) {
        return Refuse("the file \"" + file + "\" is in session as another document", "a file of its own");
    }
    const CATListValCATBaseUnknown_var documents = opener.Open();
    if (pDocuments != nullptr) {
        *pDocuments = documents;
    }
    return S_OK;
}

HRESULT CATProductServices::OpenFile(const CATUnicodeString& usPath, CATListValCATBaseUnknown_var* pDocuments)
{
    CATPrdStructure structure;
    const HRESULT hr = CATPrdXmlReader::ReadFile(usPath, &structure);
    return SUCCEEDED(hr) ? Open(structure, pDocuments) : hr;
}

HRESULT CATProductServices::GetRootProduct(const CATDocument& document, CATIProduct_var* pspIProductOnRoot)
{
    if (pspIProductOnRoot == nullptr) {
        return E_POINTER;
    }
    const CATPrdDocument* pDocument = CATPrdDocument::FromComponent(&document);
    *pspIProductOnRoot = pDocument != nullptr ? CATIProduct_var(pDocument->GetRoot()) : CATIProduct_var();
    return *pspIProductOnRoot != NULL_var ? S_OK : E_FAIL;
}

HRESULT CATProductServices::FindRootProduct(const CATUnicodeString& usPartNumber, CATIProduct_var* pspIProductOnRoot)
{
    if (pspIProductOnRoot == nullptr) {
        return E_POINTER;
    }
    *pspIProductOnRoot = CATIProduct_var(CATPrdSession::Instance().FindRoot(usPartNumber));
    return *pspIProductOnRoot != NULL_var ? S_OK : E_FAIL;
}

HRESULT CATProductServices::GetTreeDocument(const CATIProduct_var& spIProduct, CATDocument** ppDocument)
{
    if (ppDocument == nullptr) {
        return E_POINTER;
    }
    *ppDocument = nullptr;
    CATAsmProduct* pTop = CATAsmProduct::FromComponent(spIProduct.Get());
    while (pTop != nullptr && pTop->GetFather() != nullptr) {
        pTop = pTop->GetFather();
    }
    // An instance at the top was taken out of its tree.
    if (pTop != nullptr && pTop->GetUsage() == nullptr) {
        *ppDocument = pTop->GetReference().GetDocument();
    }
    return *ppDocument != nullptr ? S_OK : E_FAIL;
}

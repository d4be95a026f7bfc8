#include "CATPrdReference.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

#include "CATDocumentServices.h"
#include "CATPrdDocument.h"
#include "CATPrdSession.h"
#include "CATPrdUsage.h"

CATPrdReference::CATPrdReference(CATPrdLinkState linkState) : CATAsmProduct(nullptr), m_LinkState(linkState) {}

CATPrdReference::~CATPrdReference()
{
    Close();
}

bool CATPrdReference::IsLoaded() const
{
    return m_LinkState == CATPrdLinkState::Loaded || m_LinkState == CATPrdLinkState::Embedded;
}

const CATUnicodeString& CATPrdReference::GetLinkedFileName() const
{
    return m_LinkState == CATPrdLinkState::Loaded && m_pDocument != nullptr ? m_pDocument->GetStorageName()
                                                                            : m_LinkedFileName;
}

void CATPrdReference::SetPartNumber(const CATUnicodeString& partNumber)
{
    CATPrdSession::Instance().Unindex(*this);
    m_Definition.partNumber = partNumber;
    CATPrdSession::Instance().Index(*this);
}

void CATPrdReference::SetDocumentToLoad(const CATUnicodeString& type, const CATUnicodeString& displayName)
{
    m_TypeToLoad = type;
    m_DisplayNameToLoad = displayName;
}

HRESULT CATPrdReference::Load()
{
    if (m_bClosed || m_LinkState == CATPrdLinkState::Broken) {
        return E_FAIL;
    }
    if (IsLoaded()) {
        return S_OK;
    }
    CATDocument* pInSession = nullptr;
    if (SUCCEEDED(CATDocumentServices::GetDocumentInSession(m_LinkedFileName, &pInSession))) {
        return E_FAIL;
    }
    const CATBaseUnknown_var spDocument = CATPrdDocument::Create(m_TypeToLoad, m_LinkedFileName, m_DisplayNameToLoad);
    auto& document = static_cast<CATPrdDocument&>(*spDocument);
    CATPrdDocument& shapeDocument = *m_pDocument;
    CATPrdSession::Instance().Unindex(*this);
    m_LinkState = CATPrdLinkState::Loaded;
    m_pShapeDocument = nullptr;
    shapeDocument.HandRootTo(document);
    CATPrdSession::Instance().Index(*this);
    CATDocumentServices::Add(document);
    CATDocumentServices::Remove(shapeDocument);
    return S_OK;
}

void CATPrdReference::AddUsage(CATPrdReference& child, const CATPrdUsageData& data)
{
    auto pUsage = std::make_shared<CATPrdUsage>();
    pUsage->pParent = this;
    pUsage->number = ++m_LastUsageNumber;
    pUsage->pChild = &child;
    pUsage->spChild = CATBaseUnknown_var(&child);
    pUsage->instanceName = data.instanceName;
    pUsage->description = data.description;
    pUsage->userProperties = data.userProperties;
    m_Usages.Append(pUsage);
    ++child.m_UseCount;
}

int CATPrdReference::RemoveUsage(const CATPrdUsage& usage)
{
    if (usage.pParent != this) {
        return 0;
    }
    const auto found =
        std::lower_bound(m_Usages.begin(), m_Usages.end(), usage.number,
                         [](const auto& pUsage, std::uint32_t number) { return pUsage->number < number; });
    const int position = static_cast<int>(found - m_Usages.begin()) + 1;
    const std::shared_ptr<CATPrdUsage> pRemoved = *found;
    m_Usages.RemovePosition(position);
    ++m_RemovedUsages;
    Detach(*pRemoved);
    return position;
}

bool CATPrdReference::Contains(const CATPrdReference& other) const
{
    std::unordered_set<const CATPrdReference*> seen{this};
    std::vector<const CATPrdReference*> open{this};
    while (!open.empty()) {
        const CATPrdReference* pReference = open.back();
        open.pop_back();
        if (pReference == &other) {
            return true;
        }
        for (const auto& pUsage : pReference->m_Usages) {
            if (seen.insert(pUsage->pChild).second) {
                open.push_back(pUsage->pChild);
            }
        }
    }
    return false;
}

void CATPrdReference::Close()
{
    if (m_bClosed) {
        return;
    }
    CATPrdSession::Instance().Unindex(*this);
    m_LinkedFileName = GetLinkedFileName();
    m_bClosed = true;
    m_pDocument = nullptr;
    m_pShapeDocument = nullptr;
    DropChildren();
    const CATListVal<std::shared_ptr<CATPrdUsage>> usages = std::exchange(m_Usages, {});
    m_RemovedUsages += static_cast<std::uint32_t>(usages.Size());
    for (const auto& pUsage : usages) {
        Detach(*pUsage);
    }
}

void CATPrdReference::Touch()
{
    if (m_pDocument != nullptr) {
        m_pDocument->SetDirty(TRUE);
    }
}

void CATPrdReference::Detach(CATPrdUsage& usage)
{
    usage.pParent = nullptr;
    usage.pChild->RemoveUse();
}

void CATPrdReference::RemoveUse()
{
    --m_UseCount;
    if (m_UseCount == 0 && m_pDocument != nullptr && m_LinkState != CATPrdLinkState::Embedded) {
        CATPrdSession::Instance().CloseIfUnneeded(*m_pDocument);
    }
}

#include "CATPrdSession.h"

#include <utility>

#include "CATDocumentServices.h"
#include "CATPrdDocument.h"
#include "CATPrdReference.h"

CATPrdSession& CATPrdSession::Instance()
{
    // Kept to the end of the program, because products may outlive static objects.
    static auto* const s_pInstance = new CATPrdSession();
    return *s_pInstance;
}

void CATPrdSession::Index(CATPrdReference& reference)
{
    if (reference.m_pDocument == nullptr) {
        return;
    }
    if (reference.m_LinkState == CATPrdLinkState::Visualization) {
        m_Visualized.emplace(reference.m_LinkedFileName, &reference);
    } else if (reference.m_LinkState == CATPrdLinkState::Loaded && !reference.m_Definition.partNumber.IsEmpty()) {
        if (reference.m_SessionNumber == 0) {
            reference.m_SessionNumber = ++m_LastNumber;
        }
        m_Roots[reference.m_Definition.partNumber].emplace(reference.m_SessionNumber, &reference);
    }
}

void CATPrdSession::Unindex(const CATPrdReference& reference)
{
    if (const auto byFile = m_Visualized.find(reference.m_LinkedFileName);
        byFile != m_Visualized.end() && byFile->second == &reference) {
        m_Visualized.erase(byFile);
    }
    const auto byNumber = m_Roots.find(reference.m_Definition.partNumber);
    if (byNumber != m_Roots.end() && byNumber->second.erase(reference.m_SessionNumber) > 0 &&
        byNumber->second.empty()) {
        m_Roots.erase(byNumber);
    }
}

CATPrdReference* CATPrdSession::FindRoot(const CATUnicodeString& partNumber) const
{
    const auto found = m_Roots.find(partNumber);
    return found != m_Roots.end() ? found->second.begin()->second : nullptr;
}

CATPrdReference* CATPrdSession::FindVisualized(const CATUnicodeString& storageName) const
{
    const auto found = m_Visualized.find(storageName);
    return found != m_Visualized.end() ? found->second : nullptr;
}

void CATPrdSession::CloseIfUnneeded(CATPrdDocument& document)
{
    m_Unneeded.emplace_back(&document);
    if (m_bClosing) {
        return;
    }
    m_bClosing = true;
    while (!m_Unneeded.empty()) {
        const CATBaseUnknown_var spDocument = std::move(m_Unneeded.back());
        m_Unneeded.pop_back();
        auto& unneeded = static_cast<CATPrdDocument&>(*spDocument);
        if (!unneeded.IsNeeded()) {
            CATDocumentServices::Remove(unneeded);
        }
    }
    m_bClosing = false;
}

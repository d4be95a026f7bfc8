#include "CATDocumentRegister.h"

#include <utility>

#include "CATDocument.h"

CATDocumentRegister& CATDocumentRegister::Session()
{
    // Kept to the end of the program, because documents may outlive static objects.
    static auto* const s_pSession = new CATDocumentRegister();
    return *s_pSession;
}

void CATDocumentRegister::Add(CATDocument& document)
{
    if (Contains(document)) {
        return;
    }
    document.m_SessionNumber = ++m_LastNumber;
    const CATBaseUnknown_var& spDocument =
        m_Documents.emplace(document.m_SessionNumber, CATBaseUnknown_var(&document)).first->second;
    if (m_bListIsValid) {
        m_List.Append(spDocument);
    }
    Index(document);
}

void CATDocumentRegister::Remove(CATDocument& document)
{
    if (!Contains(document)) {
        return;
    }
    Unindex(document);
    const auto entry = m_Documents.find(std::exchange(document.m_SessionNumber, 0));
    // Its destruction may reach the register, so it goes when the register is done with.
    const CATBaseUnknown_var spDocument = std::move(entry->second);
    m_Documents.erase(entry);
    const CATListValCATBaseUnknown_var list = std::exchange(m_List, {});
    m_bListIsValid = m_Documents.empty();
}

void CATDocumentRegister::Rename(CATDocument& document, const CATUnicodeString& storageName)
{
    const bool isInSession = Contains(document);
    if (isInSession) {
        Unindex(document);
    }
    document.m_StorageName = storageName;
    if (isInSession) {
        Index(document);
    }
}

bool CATDocumentRegister::Contains(const CATDocument& document)
{
    return document.m_SessionNumber != 0;
}

CATDocument* CATDocumentRegister::Find(const CATUnicodeString& storageName) const
{
    const auto found = m_StorageNames.find(storageName);
    return found != m_StorageNames.end() ? found->second.begin()->second : nullptr;
}

const CATListValCATBaseUnknown_var& CATDocumentRegister::GetList()
{
    if (!m_bListIsValid) {
        CATListValCATBaseUnknown_var list(static_cast<int>(m_Documents.size()));
        for (const auto& [number, spDocument] : m_Documents) {
            list.Append(spDocument);
        }
        m_List = std::move(list);
        m_bListIsValid = true;
    }
    return m_List;
}

void CATDocumentRegister::Index(CATDocument& document)
{
    if (!document.m_StorageName.IsEmpty()) {
        m_StorageNames[document.m_StorageName].emplace(document.m_SessionNumber, &document);
        ++m_FileNames[CATUnicodeString::FromValidUtf8(CATDocument::GetFileName(document.m_StorageName))];
    }
}

void CATDocumentRegister::Unindex(const CATDocument& document)
{
    if (document.m_StorageName.IsEmpty()) {
        return;
    }
    const auto byPath = m_StorageNames.find(document.m_StorageName);
    byPath->second.erase(document.m_SessionNumber);
    if (byPath->second.empty()) {
        m_StorageNames.erase(byPath);
    }
    const auto byFile =
        m_FileNames.find(CATUnicodeString::FromValidUtf8(CATDocument::GetFileName(document.m_StorageName)));
    if (--byFile->second == 0) {
        m_FileNames.erase(byFile);
    }
}

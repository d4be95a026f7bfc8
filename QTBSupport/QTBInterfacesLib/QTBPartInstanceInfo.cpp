#include "QTBPartInstanceInfo.h"

void QTBPartInstanceInfo::SetInstanceInfo(const CATUnicodeString& usPartNumber, const CATUnicodeString& usInstanceName)
{
    CATListValCATUnicodeString InstanceNames;
    InstanceNames.Append(usInstanceName);
    SetInstanceInfo(usPartNumber, InstanceNames);
}

void QTBPartInstanceInfo::SetInstanceInfo(const CATUnicodeString& usPartNumber,
                                          const CATListValCATUnicodeString& InstanceNames)
{
    m_usPartNumber = usPartNumber;
    m_InstanceNames = InstanceNames;
}

HRESULT QTBPartInstanceInfo::GetInstanceInfo(CATUnicodeString* pusPartNumber, CATUnicodeString* pusInstanceName) const
{
    if (pusPartNumber == nullptr || pusInstanceName == nullptr) {
        return E_POINTER;
    }
    *pusPartNumber = m_usPartNumber;
    *pusInstanceName = m_InstanceNames.Size() > 0 ? m_InstanceNames[1] : CATUnicodeString();
    return S_OK;
}

HRESULT QTBPartInstanceInfo::GetInstanceInfo(CATUnicodeString* pusPartNumber,
                                             CATListValCATUnicodeString* pInstanceNames) const
{
    if (pusPartNumber == nullptr || pInstanceNames == nullptr) {
        return E_POINTER;
    }
    *pusPartNumber = m_usPartNumber;
    *pInstanceNames = m_InstanceNames;
    return S_OK;
}

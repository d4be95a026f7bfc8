#pragma once

#include "CATDataType.h"
#include "CATListValCATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

// One step of an instance path: the number of a part and the name of one of its instances, or the names that the
// instance may have. Path lists are ordered root first.
class QTBINTERFACESLIB_API QTBPartInstanceInfo
{
public:
    QTBPartInstanceInfo() = default;

    void SetInstanceInfo(const CATUnicodeString& usPartNumber, const CATUnicodeString& usInstanceName);
    void SetInstanceInfo(const CATUnicodeString& usPartNumber, const CATListValCATUnicodeString& InstanceNames);

    // Each form reads a step that was set in either form: the single name of a step with several names is the first of
    // them, empty when there is none. E_POINTER for a null argument.
    HRESULT GetInstanceInfo(CATUnicodeString* pusPartNumber, CATUnicodeString* pusInstanceName) const;
    HRESULT GetInstanceInfo(CATUnicodeString* pusPartNumber, CATListValCATUnicodeString* pInstanceNames) const;

    friend bool operator==(const QTBPartInstanceInfo&, const QTBPartInstanceInfo&) = default;

private:
    CATUnicodeString m_usPartNumber;
    CATListValCATUnicodeString m_InstanceNames;
};

using CATListValQTBPartInstanceInfo = CATListVal<QTBPartInstanceInfo>;

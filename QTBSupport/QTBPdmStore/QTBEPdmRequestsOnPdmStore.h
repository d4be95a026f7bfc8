#pragma once

#include <functional>

#include "CATIDOMDocument.h"
#include "CATListValCATUnicodeString.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPdmStore.h"

// QTBIPdmRequests on the late type QTBPdmStore.
class QTBEPdmRequestsOnPdmStore : public CATBaseUnknown
{
public:
    HRESULT GetItems(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer);
    // E_FAIL for lists of different lengths, also below.
    HRESULT Query(const CATUnicodeString& usClassName, const CATListValCATUnicodeString& AttrNames,
                  const CATListValCATUnicodeString& AttrValues, const unsigned char& bNewestVersionsOnly,
                  CATIDOMDocument_var* pspAnswer);
    HRESULT Expand(const CATListValCATUnicodeString& Keys, const CATListValQTBNodeRelationInfo& Relations,
                   const int& iLevels, CATIDOMDocument_var* pspAnswer);

    HRESULT CheckOut(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer);
    HRESULT CheckIn(const CATListValCATUnicodeString& Keys, const CATListValCATUnicodeString& FilePaths,
                    CATIDOMDocument_var* pspAnswer);
    HRESULT Promote(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer);
    HRESULT Revise(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer);
    HRESULT UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usAttributesXml,
                             CATIDOMDocument_var* pspAnswer);
    HRESULT CreateObject(const CATUnicodeString& usClassName, const CATUnicodeString& usKey,
                         const CATUnicodeString& usAttributesXml, CATIDOMDocument_var* pspAnswer);
    HRESULT DeleteItems(const CATListValCATUnicodeString& Keys, const CATUnicodeString* pusDeleteOption,
                        CATIDOMDocument_var* pspAnswer);

    // The functions are those of QTBPdmStore::Invoke.
    HRESULT InvokeFunction(const CATUnicodeString& usFunctionName, const CATListValCATUnicodeString& ArgNames,
                           const CATListValCATUnicodeString& ArgValues, CATIDOMDocument_var* pspAnswer);
    HRESULT FetchFile(const CATUnicodeString& usKey, const CATUnicodeString& usPath);

private:
    QTBPdmStore& GetStore() const;
    HRESULT Answer(const std::function<HRESULT(QTBPdmStore&, const QTBPdmStore::Receiver&)>& request,
                   CATIDOMDocument_var* pspAnswer) const;
};

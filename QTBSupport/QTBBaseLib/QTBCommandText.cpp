#include "QTBCommandText.h"

#include <string_view>

#include "CATError.h"
#include "QTBExpDlgRelExpandInfo.h"
#include "QTBMessageUtil.h"
#include "QTBPdmTree.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBStringUtil.h"

namespace {

constexpr std::string_view SINGLE_EXPAND = "SingleExpand";
constexpr std::string_view MULTI_EXPAND = "MultiExpand";
constexpr std::string_view PDM_TREE = "PdmTree";
constexpr std::string_view CREATE = "Create";
constexpr const char* LEFT_TO_RIGHT_MARKER = "->";
constexpr const char* RIGHT_TO_LEFT_MARKER = "<-";

HRESULT FailUnknown(const CATUnicodeString& usText)
{
    return CATError::GetReturn(2, QTBMessageUtil::CommandTextNotKnownError(usText), nullptr, __FILE__, __LINE__);
}

bool StartsWith(const CATUnicodeString& usText, std::string_view start)
{
    return usText.View().starts_with(start);
}

const char* GetMarker(unsigned char bLeftToRight)
{
    return bLeftToRight != FALSE ? LEFT_TO_RIGHT_MARKER : RIGHT_TO_LEFT_MARKER;
}

} // namespace

CATUnicodeString QTBCommandText::MakeExpand(const QTBSchema& schema, const QTBExpDlgRelExpandInfo& info)
{
    const QTBSchemaRelation* pRelation = info.GetSchemaRelationPtr();
    if (pRelation == nullptr) {
        return "";
    }
    const QTBSchemaRelationship* pRelationship = pRelation->GetRelationshipPtr(info.IsLeftToRight());
    CATUnicodeString usText(info.IsMultiExpand() != FALSE ? MULTI_EXPAND : SINGLE_EXPAND);
    usText += " " + schema.GetSystemText() + "/" + schema.GetCustomization() + " ";
    usText += pRelation->GetName();
    usText += GetMarker(info.IsLeftToRight());
    if (pRelationship != nullptr) {
        usText += pRelationship->GetName();
    }
    return usText;
}

// What names look like is the schema's business, so the text is compared with those that its relations have.
HRESULT QTBCommandText::ReadExpand(const CATUnicodeString& usText, QTBExpDlgRelExpandInfo* pInfo)
{
    if (pInfo == nullptr) {
        return E_POINTER;
    }
    const bool isMulti = StartsWith(usText, MULTI_EXPAND);
    if (!isMulti && !StartsWith(usText, SINGLE_EXPAND)) {
        return S_FALSE;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    const unsigned char bMultiExpand = isMulti ? TRUE : FALSE;
    for (int i = 1; i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        pSchema->GetRelationPtr(i, &pRelation);
        for (const unsigned char bLeftToRight : {TRUE, FALSE}) {
            const QTBExpDlgRelExpandInfo info(pRelation, bLeftToRight, bMultiExpand, TRUE);
            if (pRelation->GetRelationshipPtr(bLeftToRight) != nullptr && MakeExpand(*pSchema, info) == usText) {
                *pInfo = info;
                return S_OK;
            }
        }
    }
    return FailUnknown(usText);
}

CATUnicodeString QTBCommandText::MakePdmTree(const CATUnicodeString& usSystem, const CATUnicodeString& usCustomization,
                                             const QTBPdmTree& pdmTree)
{
    return CATUnicodeString(PDM_TREE) + usSystem + usCustomization + pdmTree.GetName();
}

HRESULT QTBCommandText::ReadPdmTree(const CATUnicodeString& usText, CATUnicodeString* pusTreeName)
{
    if (pusTreeName == nullptr) {
        return E_POINTER;
    }
    if (!StartsWith(usText, PDM_TREE)) {
        return S_FALSE;
    }
    CATUnicodeString usSystem;
    CATUnicodeString usCustomization;
    if (const HRESULT hr = QTBSchemaUtil::GetSystem(&usSystem); FAILED(hr)) {
        return hr;
    }
    if (const HRESULT hr = QTBSchemaUtil::GetCustomization(&usCustomization); FAILED(hr)) {
        return hr;
    }
    const CATUnicodeString usStart = CATUnicodeString(PDM_TREE) + usSystem + usCustomization;
    if (!StartsWith(usText, usStart.View()) || usText.View().size() == usStart.View().size()) {
        return FailUnknown(usText);
    }
    *pusTreeName = CATUnicodeString(usText.View().substr(usStart.View().size()));
    return S_OK;
}

CATUnicodeString QTBCommandText::MakeCreation(const Creation& creation)
{
    CATListValCATUnicodeString Parameters;
    Parameters.Append(creation.usRelationName);
    Parameters.Append(GetMarker(creation.bLeftToRight));
    Parameters.Append(creation.usClassName);
    Parameters.Append(creation.usOwnerClassName);
    Parameters.Append(creation.usOwnerKey);
    Parameters.Append(creation.usCatalogName);
    CATUnicodeString usParameters;
    // Only a list of one item may have no text.
    QTBStringUtil::MakeQtbInfoListAttrString(Parameters, &usParameters);
    return CATUnicodeString(CREATE) + usParameters;
}

HRESULT QTBCommandText::ReadCreation(const CATUnicodeString& usText, Creation* pCreation)
{
    if (pCreation == nullptr) {
        return E_POINTER;
    }
    if (!StartsWith(usText, CREATE)) {
        return S_FALSE;
    }
    CATListValCATUnicodeString Parameters;
    const HRESULT hr =
        QTBStringUtil::ConvertQtbInfoListAttrString(CATUnicodeString(usText.View().substr(CREATE.size())), &Parameters);
    QTBSchema* pSchema = nullptr;
    if (FAILED(hr) || Parameters.Size() != 6 || FAILED(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema))) {
        return FailUnknown(usText);
    }
    const bool isLeftToRight = Parameters[2] == LEFT_TO_RIGHT_MARKER;
    QTBSchemaRelation* pRelation = nullptr;
    if ((!isLeftToRight && !(Parameters[2] == RIGHT_TO_LEFT_MARKER)) ||
        FAILED(pSchema->GetRelationPtr(Parameters[1], &pRelation)) || pSchema->FindObject(Parameters[3]) == nullptr) {
        return FailUnknown(usText);
    }
    *pCreation = Creation{Parameters[1], static_cast<unsigned char>(isLeftToRight ? TRUE : FALSE),
                          Parameters[3], Parameters[4],
                          Parameters[5], Parameters[6]};
    return S_OK;
}

#include "QTBFileUtil.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "CATDocument.h"
#include "CATIPrdLink.h"
#include "CATIProduct.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIRepNode.h"
#include "QTBPdmSessionUtil.h"
#include "QTBRepTreeUtil.h"

namespace {

std::size_t FindNameStart(std::string_view path)
{
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? 0 : separator + 1;
}

// Position of the dot in front of the extension, npos when there is none.
std::size_t FindExtensionDot(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string_view::npos || dot <= FindNameStart(path) ? std::string_view::npos : dot;
}

// Extensions of the files of each type, in lower case.
struct ExtensionType
{
    std::string_view extension;
    const CATUnicodeString* pusFileType;
};
constexpr std::array<ExtensionType, 5> EXTENSION_TYPES{{{"catproduct", &usCATPRODUCT},
                                                        {"catpart", &usCATPART},
                                                        {"catdrawing", &usCATDRAWING},
                                                        {"cgr", &usCGR},
                                                        {"model", &usV4MODEL}}};

bool EqualsIgnoringCase(std::string_view text, std::string_view lowerCaseText)
{
    return std::equal(text.begin(), text.end(), lowerCaseText.begin(), lowerCaseText.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

HRESULT GetTypeOfFileName(const CATUnicodeString& usFileName, CATUnicodeString* pusFileType)
{
    CATUnicodeString usExtension;
    if (FAILED(QTBFileUtil::GetFileExtensionFromFileName(usFileName, &usExtension))) {
        return E_FAIL;
    }
    for (const ExtensionType& type : EXTENSION_TYPES) {
        if (EqualsIgnoringCase(usExtension.View(), type.extension)) {
            *pusFileType = *type.pusFileType;
            return S_OK;
        }
    }
    return E_FAIL;
}

// The type of a product that stands in that relation to its document, which is defined by that file.
HRESULT GetTypeOfProduct(CATIPrdLink& link, CATPrdLinkState state, const CATUnicodeString& usFileName,
                         CATUnicodeString* pusPsnNodeType)
{
    CATDocument* pDocument = nullptr;
    switch (state) {
    case CATPrdLinkState::Embedded:
        *pusPsnNodeType = usEMBCOMP;
        return S_OK;
    case CATPrdLinkState::Broken:
        *pusPsnNodeType = usBROKENLINK;
        return S_OK;
    case CATPrdLinkState::Visualization:
        // The document in session is that of the shape, which says nothing of the file.
        return GetTypeOfFileName(usFileName, pusPsnNodeType);
    case CATPrdLinkState::Loaded:
        return SUCCEEDED(link.GetDocument(&pDocument)) ? QTBFileUtil::GetFileType(pDocument, pusPsnNodeType) : E_FAIL;
    }
    return E_FAIL;
}

} // namespace

HRESULT QTBFileUtil::GetFileNameWithoutExtension(const CATUnicodeString& usFileName, CATUnicodeString* pusName)
{
    if (pusName == nullptr) {
        return E_POINTER;
    }
    *pusName = CATUnicodeString(usFileName.View().substr(0, FindExtensionDot(usFileName.View())));
    return S_OK;
}

HRESULT QTBFileUtil::GetFileNameFromPathString(const CATUnicodeString& usPath, CATUnicodeString* pusFileName)
{
    if (pusFileName == nullptr) {
        return E_POINTER;
    }
    *pusFileName = CATUnicodeString(usPath.View().substr(FindNameStart(usPath.View())));
    return S_OK;
}

HRESULT QTBFileUtil::GetFileExtensionFromFileName(const CATUnicodeString& usFileName, CATUnicodeString* pusExtension)
{
    if (pusExtension == nullptr) {
        return E_POINTER;
    }
    const std::size_t dot = FindExtensionDot(usFileName.View());
    if (dot == std::string_view::npos) {
        return E_FAIL;
    }
    *pusExtension = CATUnicodeString(usFileName.View().substr(dot + 1));
    return S_OK;
}

HRESULT QTBFileUtil::GetFileName(const QTBIRepNode_var& spIRepNode, CATUnicodeString* pusFileName)
{
    if (pusFileName == nullptr) {
        return E_POINTER;
    }
    unsigned char bRepresentsCatiaFileNode = FALSE;
    CATUnicodeString usFileName;
    const HRESULT hr =
        QTBRepTreeUtil::RepresentsCatiaFileNode(spIRepNode, &bRepresentsCatiaFileNode, &usFileName, nullptr);
    if (FAILED(hr) || bRepresentsCatiaFileNode == FALSE || usFileName.IsEmpty()) {
        return FAILED(hr) ? hr : E_FAIL;
    }
    *pusFileName = usFileName;
    return S_OK;
}

HRESULT QTBFileUtil::GetReferenceFileName(const CATIProduct_var& spIProduct, CATUnicodeString* pusFileName,
                                          CATUnicodeString* pusPsnNodeType)
{
    const CATIPrdLink_var spIPrdLink(spIProduct);
    CATPrdLinkState state = CATPrdLinkState::Broken;
    if (spIPrdLink == NULL_var || FAILED(spIPrdLink->GetLinkState(&state))) {
        return E_FAIL;
    }
    CATUnicodeString usStorageName;
    if (state != CATPrdLinkState::Embedded && FAILED(spIPrdLink->GetLinkedFileName(&usStorageName))) {
        return E_FAIL;
    }
    CATUnicodeString usFileName;
    GetFileNameFromPathString(usStorageName, &usFileName);
    CATUnicodeString usPsnNodeType;
    if (pusPsnNodeType != nullptr && FAILED(GetTypeOfProduct(*spIPrdLink, state, usFileName, &usPsnNodeType))) {
        return E_FAIL;
    }
    if (pusFileName != nullptr) {
        *pusFileName = usFileName;
    }
    if (pusPsnNodeType != nullptr) {
        *pusPsnNodeType = usPsnNodeType;
    }
    return S_OK;
}

HRESULT QTBFileUtil::GetFileType(CATDocument* pDocument, CATUnicodeString* pusFileType)
{
    if (pDocument == nullptr || pusFileType == nullptr) {
        return E_POINTER;
    }
    const CATUnicodeString usDocumentType = pDocument->GetType();
    if (QTBPdmSessionUtil::GetFileClassOfDocType(usDocumentType) != QTB_CATIA_FILE_CLASS_UNKNOWN) {
        *pusFileType = usDocumentType;
        return S_OK;
    }
    return GetTypeOfFileName(pDocument->GetStorageName(), pusFileType);
}

HRESULT QTBFileUtil::CreateExMapFilePath(const CATUnicodeString& usPath, CATUnicodeString* pusExMapFilePath)
{
    if (pusExMapFilePath == nullptr) {
        return E_POINTER;
    }
    CATUnicodeString usFileName;
    CATUnicodeString usFolder;
    GetFileNameFromPathString(usPath, &usFileName);
    QTBGlobVarsUtil::GetExMapFolder(&usFolder);
    if (usFileName.IsEmpty()) {
        return E_FAIL;
    }
    const bool needsSlash = !usFolder.IsEmpty() && FindNameStart(usFolder.View()) < usFolder.GetLengthInByte();
    *pusExMapFilePath = usFolder + (needsSlash ? "/" : "") + usFileName;
    return S_OK;
}

#include "QTBFileUtil.h"

#include <string_view>

#include "QTBIRepNode.h"
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

#include "CATXMLDocumentFactory.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include <pugixml.hpp>

#include "CATDOMStore.h"
#include "CATEnvLimit.h"
#include "CATXMLError.h"
#include "CATXMLTextCheck.h"
#include "CATXMLWriter.h"

namespace {

HRESULT Refuse(const CATUnicodeString& usSourceName, const CATUnicodeString& usProblem,
               const CATUnicodeString& usExpected)
{
    return CATError::GetReturn(2, new CATXMLError(usSourceName, 0, 0, usProblem, usExpected), nullptr, __FILE__,
                               __LINE__);
}

// Whether mark stands anywhere with '<' in front of it.
bool HasMarkup(std::string_view xml, char mark)
{
    for (std::size_t i = xml.find(mark); i != std::string_view::npos; i = xml.find(mark, i + 1)) {
        if (i > 0 && xml[i - 1] == '<') {
            return true;
        }
    }
    return false;
}

unsigned int ParseOptionsFor(std::string_view xml)
{
    constexpr unsigned int OPTIONS = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_wconv_attribute |
                                     pugi::parse_eol | pugi::parse_embed_pcdata;
    // A text is one piece unless comments, CDATA sections or instructions split it. Only then every piece of white
    // space matters; otherwise that between elements need not be kept.
    const std::size_t endOfDeclaration = xml.substr(0, 5) == "<?xml" ? xml.find("?>") : std::string_view::npos;
    const std::string_view body = endOfDeclaration == std::string_view::npos ? xml : xml.substr(endOfDeclaration);
    const bool isSplit = HasMarkup(body, '!') || HasMarkup(body, '?');
    return OPTIONS | (isSplit ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
}

HRESULT Parse(std::string_view xml, const CATUnicodeString& usSourceName, CATIDOMDocument_var* pspDocument)
{
    auto pDocument = std::make_unique<pugi::xml_document>();
    const pugi::xml_parse_result result =
        pDocument->load_buffer(xml.data(), xml.size(), ParseOptionsFor(xml), pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory) {
        return E_OUTOFMEMORY;
    }
    if (!result) {
        return CATXMLTextCheck::Refuse(xml, static_cast<std::size_t>(result.offset), usSourceName, result.description(),
                                       "well-formed XML");
    }
    *pspDocument = CATDOMStore::Open(std::move(pDocument));
    return S_OK;
}

// A document takes several times as much memory as its text.
HRESULT CheckSize(std::uintmax_t size, const CATUnicodeString& usSourceName)
{
    const auto most = static_cast<std::uintmax_t>(CATGetMaxFileBytes());
    if (size <= most) {
        return S_OK;
    }
    return Refuse(usSourceName, CATUnicodeString(std::to_string(size) + " bytes"),
                  CATUnicodeString("at most " + std::to_string(most) + " bytes (CAT_MAX_FILE_MB)"));
}

HRESULT ReadBytes(const CATUnicodeString& usPath, std::string* pBytes)
{
    const std::filesystem::path path(usPath.ConvertToChar());
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        return Refuse(usPath, "there is no such file", "an XML file");
    }
    if (!std::filesystem::is_regular_file(status)) {
        return Refuse(usPath, "this is no file", "an XML file");
    }
    std::ifstream file(path, std::ios::binary);
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!file || error) {
        return Refuse(usPath, "the file cannot be opened", "a file that may be read");
    }
    if (const HRESULT hr = CheckSize(size, usPath); FAILED(hr)) {
        return hr;
    }
    pBytes->resize(size);
    file.read(pBytes->data(), static_cast<std::streamsize>(size));
    pBytes->resize(static_cast<std::size_t>(file.gcount()));
    return file.bad() ? Refuse(usPath, "the file cannot be read", "a file that may be read") : S_OK;
}

} // namespace

HRESULT CATXMLDocumentFactory::CreateDocument(const CATUnicodeString& usRootName, CATIDOMDocument_var* pspDocument)
{
    if (pspDocument == nullptr) {
        return E_POINTER;
    }
    if (!CATXMLWriter::IsName(usRootName.View())) {
        return E_FAIL;
    }
    auto pDocument = std::make_unique<pugi::xml_document>();
    pDocument->append_child(usRootName.ConvertToChar());
    *pspDocument = CATDOMStore::Open(std::move(pDocument));
    return S_OK;
}

HRESULT CATXMLDocumentFactory::ReadText(const CATUnicodeString& usXml, const CATUnicodeString& usSourceName,
                                        CATIDOMDocument_var* pspDocument)
{
    if (pspDocument == nullptr) {
        return E_POINTER;
    }
    HRESULT hr = CheckSize(usXml.View().size(), usSourceName);
    if (SUCCEEDED(hr)) {
        hr = CATXMLTextCheck::CheckText(usXml.View(), usSourceName);
    }
    return SUCCEEDED(hr) ? Parse(usXml.View(), usSourceName, pspDocument) : hr;
}

HRESULT CATXMLDocumentFactory::ReadTrustedText(std::string_view utf8Xml, CATIDOMDocument_var* pspDocument)
{
    return pspDocument != nullptr ? Parse(utf8Xml, "XML text", pspDocument) : E_POINTER;
}

HRESULT CATXMLDocumentFactory::ReadFile(const CATUnicodeString& usPath, CATIDOMDocument_var* pspDocument)
{
    if (pspDocument == nullptr) {
        return E_POINTER;
    }
    std::string text;
    HRESULT hr = ReadBytes(usPath, &text);
    if (SUCCEEDED(hr)) {
        hr = CATXMLTextCheck::DecodeBytes(usPath, &text);
    }
    if (SUCCEEDED(hr)) {
        hr = CATXMLTextCheck::CheckText(text, usPath);
    }
    return SUCCEEDED(hr) ? Parse(text, usPath, pspDocument) : hr;
}

int CATXMLDocumentFactory::GetLiveDocumentCount()
{
    return CATDOMStore::GetLiveCount();
}

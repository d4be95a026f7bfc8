#include "QTBStringUtil.h"

#include <string>
#include <string_view>

namespace {

constexpr char SEPARATOR = ';';
constexpr char ESCAPE = '\\';

bool IsEscaped(std::string_view text, std::size_t at)
{
    return text[at] == ESCAPE && at + 1 < text.size() && (text[at + 1] == SEPARATOR || text[at + 1] == ESCAPE);
}

} // namespace

HRESULT QTBStringUtil::ConvertQtbInfoListAttrString(const CATUnicodeString& usText, CATListValCATUnicodeString* pItems)
{
    if (pItems == nullptr) {
        return E_POINTER;
    }
    // The text may be an item of the list.
    const CATUnicodeString usTextToSplit(usText);
    const std::string_view text = usTextToSplit.View();
    pItems->RemoveAll();
    if (text.empty()) {
        return S_OK;
    }
    std::string item;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsEscaped(text, i)) {
            ++i;
            item.push_back(text[i]);
        } else if (text[i] == SEPARATOR) {
            pItems->Append(CATUnicodeString::FromValidUtf8(item));
            item.clear();
        } else {
            item.push_back(text[i]);
        }
    }
    pItems->Append(CATUnicodeString::FromValidUtf8(item));
    return S_OK;
}

HRESULT QTBStringUtil::MakeQtbInfoListAttrString(const CATListValCATUnicodeString& items, CATUnicodeString* pusText)
{
    if (pusText == nullptr) {
        return E_POINTER;
    }
    if (items.Size() == 1 && items[1].IsEmpty()) {
        return E_FAIL;
    }
    std::string text;
    for (int i = 1; i <= items.Size(); ++i) {
        if (i > 1) {
            text.push_back(SEPARATOR);
        }
        for (const char byte : items[i].View()) {
            if (byte == SEPARATOR || byte == ESCAPE) {
                text.push_back(ESCAPE);
            }
            text.push_back(byte);
        }
    }
    *pusText = CATUnicodeString::FromValidUtf8(text);
    return S_OK;
}

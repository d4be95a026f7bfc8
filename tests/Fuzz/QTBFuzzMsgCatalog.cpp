// A message catalog, in place of the user messages, and the same text in another language.

#include <filesystem>

#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBFuzzSession.h"
#include "QTBMessageUtil.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTBFuzzSession session;
    const std::string_view text = QTBFuzzSession::ToText(data, size);
    std::filesystem::create_directories(QTBFuzzSession::GetFolder() + "/German");
    QTBFuzzSession::WriteFile("QTBUserMessages.CATNls", text.substr(0, size / 2));
    QTBFuzzSession::WriteFile("German/QTBUserMessages.CATNls", text.substr(size / 2));
    CATMsgCatalog::SetSearchPath({QTBFuzzSession::GetFolder().c_str(), QTB_SOURCE_DIR "/resources/msgcatalog"});
    for (const char* language : {"", "German", ".."}) {
        CATMsgCatalog::SetLanguage(language);
        CATError* pError = QTBMessageUtil::AttributeNotDefinedError("/P1 /P2", CATUnicodeString(text.substr(0, 100)));
        if (pError->GetNLSMessage().IsEmpty() && CATMsgCatalog::GetReports().empty() && text.empty()) {
            QTBFuzzSession::Fail("a message without text");
        }
        pError->Release();
        CATMsgCatalog::BuildMessage("QTBUserMessages", "K", {"/P2", "x"});
    }
    return 0;
}

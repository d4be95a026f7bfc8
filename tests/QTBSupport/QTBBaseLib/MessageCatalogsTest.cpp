// std::regex looks uninitialized to the compiler in a build with sanitizers.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include "CATMsgCatalog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "QTBConstants.h"

// The project's own message catalogs.
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

const fs::path CATALOGS = QTB_SOURCE_DIR "/resources/msgcatalog";

std::string Read(const fs::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// All matches of the expression's first group.
std::set<std::string> FindAll(const std::string& text, const std::regex& expression)
{
    std::set<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), expression); it != std::sregex_iterator(); ++it) {
        found.insert((*it)[1]);
    }
    return found;
}

std::set<std::string> GetCatalogNames(const fs::path& folder)
{
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".CATNls") {
            names.insert(entry.path().stem());
        }
    }
    return names;
}

// The numbers of the parameters that each key of a catalog file uses.
std::map<std::string, std::set<std::string>> GetParametersOfKeys(const fs::path& path)
{
    static const std::regex line(R"re(([\w.-]+)\s*=\s*"((?:[^"\\]|\\.)*)"\s*;)re");
    static const std::regex parameter(R"(/P(\d+))");
    std::map<std::string, std::set<std::string>> keys;
    const std::string text = Read(path);
    for (auto it = std::sregex_iterator(text.begin(), text.end(), line); it != std::sregex_iterator(); ++it) {
        keys[(*it)[1]] = FindAll((*it)[2], parameter);
    }
    return keys;
}

class MessageCatalogs : public ::testing::Test
{
protected:
    MessageCatalogs()
    {
        CATMsgCatalog::SetSearchPath({CATALOGS.c_str()});
        CATMsgCatalog::SetLanguage("");
    }
    ~MessageCatalogs() override { CATMsgCatalog::SetLanguage(""); }
};

TEST_F(MessageCatalogs, AreTheSameInEnglishAndGerman)
{
    EXPECT_EQ(GetCatalogNames(CATALOGS), GetCatalogNames(CATALOGS / "German"));
    EXPECT_FALSE(GetCatalogNames(CATALOGS).empty());
}

TEST_F(MessageCatalogs, HaveTheSameKeysAndParametersInEnglishAndGerman)
{
    for (const std::string& name : GetCatalogNames(CATALOGS)) {
        const std::string file = name + ".CATNls";
        EXPECT_EQ(GetParametersOfKeys(CATALOGS / file), GetParametersOfKeys(CATALOGS / "German" / file)) << name;
        EXPECT_FALSE(GetParametersOfKeys(CATALOGS / file).empty()) << name;
    }
}

TEST_F(MessageCatalogs, AreReadWithoutReports)
{
    for (const char* language : {"", "German"}) {
        CATMsgCatalog::SetLanguage(language);
        for (const std::string& name : GetCatalogNames(CATALOGS)) {
            for (const auto& [key, parameters] : GetParametersOfKeys(CATALOGS / (name + ".CATNls"))) {
                EXPECT_TRUE(CATMsgCatalog::MessageExists(name.c_str(), key.c_str())) << name << " " << key;
            }
        }
    }
    EXPECT_THAT(CATMsgCatalog::GetReports(), IsEmpty());
}

TEST_F(MessageCatalogs, HaveEveryMessageThatTheSourcesName)
{
    std::set<std::string> keys;
    for (const std::string& name : GetCatalogNames(CATALOGS)) {
        for (const auto& [key, parameters] : GetParametersOfKeys(CATALOGS / (name + ".CATNls"))) {
            keys.insert(key);
        }
    }
    static const std::regex messageId(R"re("(\w+(?:ERR|WRN|INF)_\d{4})")re");
    std::size_t named = 0;
    for (const char* folder : {"Platform", "QTBSupport", "QTBModel"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(fs::path(QTB_SOURCE_DIR) / folder)) {
            if (entry.path().extension() == ".cpp") {
                for (const std::string& id : FindAll(Read(entry.path()), messageId)) {
                    EXPECT_TRUE(keys.count(id) > 0) << id << " in " << entry.path();
                    ++named;
                }
            }
        }
    }
    EXPECT_GT(named, 0U);
}

TEST_F(MessageCatalogs, TellTheTextLineAndFileOfAFailedCheck)
{
    for (const char* id : {"HResultFailedERR_1001", "NoInterfaceERR_1002", "AssertionFailedERR_1003"}) {
        for (const char* language : {"", "German"}) {
            CATMsgCatalog::SetLanguage(language);
            const std::string message(CATMsgCatalog::BuildMessage("QTBDebugErrors", id, {"TEXT", "17", "FILE"}).View());
            EXPECT_THAT(message, ::testing::AllOf(::testing::HasSubstr("TEXT"), ::testing::HasSubstr("17"),
                                                  ::testing::HasSubstr("FILE")));
        }
    }
}

TEST_F(MessageCatalogs, HaveADisplayTextForEveryTypeOfProduct)
{
    for (const CATUnicodeString& type : {usCATPRODUCT, usCATPART, usCATDRAWING, usCMIARCHIVE, usCGR, usDESIGNTABLE,
                                         usV4MODEL, usEMBCOMP, usBROKENLINK}) {
        EXPECT_TRUE(CATMsgCatalog::MessageExists("QTBUserMessages", type)) << type;
    }
}

TEST_F(MessageCatalogs, HaveTheTitlesOfTheContextMenus)
{
    const auto exists = [](const char* catalog, const char* header) {
        const CATUnicodeString key = CATUnicodeString(catalog) + "." + header + ".Title";
        EXPECT_TRUE(CATMsgCatalog::MessageExists(catalog, key)) << key;
    };
    exists("QTBCtxExpandCmdHdr", "QTBPdmWksCtxExpandCmdHdr");
    exists("QTBCtxExpandMultiCmdHdr", "QTBPdmWksCtxExpandMultiCmdHdr");
    exists("QTBCtxCustomExpandCmdHdr", "QTBPdmWksCtxCustomExpandCmdHdr");
    exists("QTBCtxOpenInNewWndCmdHdr", "QTBPdmWksCtxOpenInNewWndCmdHdr");
    exists("QTBUI", "QTBPdmWksCtxCheckInCmdHdr");
    exists("QTBUI", "QTBPdmWksCtxCheckOutCmdHdr");
    exists("QTBUI", "QTBPdmWksCtxPromoteCmdHdr");
    exists("QTBUI", "QTBPdmWksCtxReviseCmdHdr");
    exists("QTBUI", "QTBPdmWksCtxExecuteCmdHdr");
    exists("QTBUI", "QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr");
    exists("QTBCtxLoadStructureCmdHdr", "QTBPdmWksCtxLoadStructureCmdHdr");
    exists("QTBCtxAddTempCmdHdr", "QTBPdmWksCtxAddTempCmdHdr");
    exists("QTBCtxOpenCmdHdr", "QTBPdmWksCtxOpenCmdHdr");
    exists("QTBCtxTempOpenCmdHdr", "QTBPdmWksCtxTempOpenCmdHdr");
    exists("QTBCtxCopyAttributesCmdHdr", "QTBPdmWksCtxCopyAttributesCmdHdr");
    exists("QTBCtxUpdateItemCmdHdr", "QTBGenWksCtxUpdateItemCmdHdr");
    exists("QTBCtxCreateCmdHdr", "QTBPdmWksCtxCreateCmdHdr");
    exists("QTBCtxDeleteCmdHdr", "QTBPdmWksCtxDeleteCmdHdr");
}

} // namespace

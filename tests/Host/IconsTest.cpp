// The pictures behind the names: every icon that the schema, the menus and the tree name is there, and nothing else.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "HostSession.h"
#include "QTBSchema.h"
#include "QTBSchemaObject.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"
#include "QTBXmlUtil.h"
#include "TreePrinter.h"

namespace fs = std::filesystem;

namespace {

const fs::path RESOURCES = QTB_SOURCE_DIR "/resources";

// Icons that the message catalogs name for commands.
std::set<std::string> CollectCommandIcons()
{
    std::set<std::string> names;
    const std::regex line(R"re(\.Icon = "([^"]*)";)re");
    for (const fs::directory_entry& entry : fs::directory_iterator(RESOURCES / "msgcatalog")) {
        if (!entry.is_regular_file()) {
            continue;
        }
        std::ifstream file(entry.path());
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        for (std::sregex_iterator match(text.begin(), text.end(), line), end; match != end; ++match) {
            names.insert((*match)[1]);
        }
    }
    return names;
}

} // namespace

TEST(Icons, EveryNameHasAPictureAndEveryPictureAName)
{
    const HostSession session("", "");
    // What the tree shows for a class without icon.
    std::set<std::string> names = {"QTBCatiaV5"};
    QTBSchema* pSchema = nullptr;
    ASSERT_EQ(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), S_OK);
    for (int i = 1; i <= pSchema->GetObjectCount(); ++i) {
        QTBSchemaObject* pObject = nullptr;
        ASSERT_EQ(pSchema->GetObjectPtr(i, &pObject), S_OK);
        names.emplace(pObject->GetIconName().View());
    }
    for (int i = 1; i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        ASSERT_EQ(pSchema->GetRelationPtr(i, &pRelation), S_OK);
        names.emplace(pRelation->GetIconName().View());
    }
    names.merge(CollectCommandIcons());
    for (const int stateCode : {244, 246, 247, 248, 249}) {
        names.insert("QTBState" + std::to_string(stateCode));
        EXPECT_NE(TreePrinter::DescribeState(stateCode), "unknown");
    }
    std::set<std::string> pictures;
    for (const fs::directory_entry& entry : fs::directory_iterator(RESOURCES / "icons")) {
        EXPECT_EQ(entry.path().extension(), ".svg");
        pictures.insert(entry.path().stem().string());
        CATIDOMDocument_var spIDOMDocument;
        ASSERT_EQ(QTBXmlUtil::GetDomDocumentFromFile(entry.path().c_str(), &spIDOMDocument), S_OK) << entry.path();
        CATIDOMElement_var spRoot;
        ASSERT_EQ(spIDOMDocument->GetDocumentElement(&spRoot), S_OK);
        EXPECT_TRUE(spRoot->GetView().HasTagName("svg")) << entry.path();
        EXPECT_EQ(spRoot->GetView().FindAttribute("viewBox").GetValue(), "0 0 16 16") << entry.path();
    }
    EXPECT_EQ(pictures, names);
}

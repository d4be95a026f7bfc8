#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "CATListValCATUnicodeString.h"
#include "CATMsgCatalog.h"
#include "CATXMLError.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

// The project's schema and catalogs, put back in force when a test ends that loaded another one.
class QTBSchemaFixture : public ::testing::Test
{
protected:
    static constexpr const char* PROJECT_SCHEMA = QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml";

    void SetUp() override
    {
        CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
        CATMsgCatalog::SetLanguage("");
        ASSERT_EQ(QTBSchemaUtil::LoadSchema(PROJECT_SCHEMA), S_OK);
    }

    void TearDown() override
    {
        CATMsgCatalog::SetLanguage("");
        EXPECT_EQ(QTBSchemaUtil::LoadSchema(PROJECT_SCHEMA), S_OK);
        QTBSchemaUtil::ReleaseReplacedSchemas();
        std::error_code error;
        std::filesystem::remove(m_File, error);
    }

    // A schema file with that text, and what comes of loading it.
    std::string WriteFile(std::string_view text)
    {
        std::ofstream(m_File, std::ios::binary) << text;
        return m_File;
    }
    HRESULT Load(std::string_view text) { return QTBSchemaUtil::LoadSchema(WriteFile(text).c_str()); }

    // A schema with the given sections and the least of the others.
    static std::string Schema(std::string_view objects, std::string_view relations = "", std::string_view further = "",
                              std::string_view settings = "")
    {
        std::string text = R"(<qtbSchema system="ENOVIA_MATRIX" catalog="QTBSchema" )";
        text.append(settings).append(">\n").append(ATTRIBUTE_NAMES);
        text.append("<objects>\n").append(objects).append("\n</objects>\n");
        text.append("<relations>\n").append(relations).append("\n</relations>\n").append(further);
        return text.append("</qtbSchema>");
    }

    static constexpr std::string_view ATTRIBUTE_NAMES =
        R"(<attributeNames class="C" key="K" relation="R" left="L" right="T" leftClass="LC" rightClass="RC"/>)"
        "\n";

    static QTBSchema& Current()
    {
        QTBSchema* pSchema = nullptr;
        EXPECT_EQ(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), S_OK);
        return *pSchema;
    }

    static QTBSchemaObject& Object(const char* name)
    {
        QTBSchemaObject* pObject = nullptr;
        EXPECT_EQ(Current().GetObjectPtr(name, &pObject), S_OK) << name;
        return *pObject;
    }

    static QTBSchemaRelation& Relation(const char* name)
    {
        QTBSchemaRelation* pRelation = nullptr;
        EXPECT_EQ(Current().GetRelationPtr(name, &pRelation), S_OK) << name;
        return *pRelation;
    }

    static std::vector<std::string> Texts(const CATListValCATUnicodeString& list)
    {
        std::vector<std::string> texts;
        for (const CATUnicodeString& text : list) {
            texts.emplace_back(text.View());
        }
        return texts;
    }

    std::string m_File = ::testing::TempDir() + "QTBSchemaFixture-" +
                         ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".xml";
};

#include "QTBSchemaUtil.h"

#include <cstdlib>

#include <gmock/gmock.h>

#include "QTBPdmSessionUtil.h"
#include "QTBSchemaFixture.h"
#include "QTBTestSession.h"

using ::testing::ElementsAre;

namespace {

using SchemaUtil = QTBSchemaFixture;

template <class Value>
Value Get(HRESULT (*get)(Value*))
{
    Value value{};
    EXPECT_EQ(get(&value), S_OK);
    EXPECT_EQ(get(nullptr), E_POINTER);
    return value;
}

bool IsNoSchemaError(HRESULT hr)
{
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    return hr < 0 && pError != nullptr && pError->GetMsgId() == "NoSchemaERR_1001";
}

// What the look-ups answer in a process that has loaded no schema; runs in a process of its own.
[[noreturn]] void ExitWithAnswersWithoutSchema()
{
    QTBSchema* pSchema = nullptr;
    CATUnicodeString text;
    unsigned char flag = FALSE;
    const bool isRight =
        IsNoSchemaError(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema)) && pSchema == nullptr &&
        IsNoSchemaError(QTBSchemaUtil::GetKeyAttr(&text)) &&
        IsNoSchemaError(QTBSchemaUtil::PdmClassIsDefined("Part", &flag, nullptr)) &&
        IsNoSchemaError(QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_CLASS, &text, FALSE)) &&
        IsNoSchemaError(QTBPdmSessionUtil::CatDocTypeCatToPdm(usCGR, &text, FALSE)) &&
        QTBSchemaUtil::GetCurrentSchemaNlsString("Class.Part").IsEmpty() &&
        QTBPdmSessionUtil::UseBomPartStructure() == FALSE && text.IsEmpty();
    std::_Exit(isRight ? 0 : 1);
}

} // namespace

TEST(SchemaUtilDeathTest, WithoutASchemaEveryLookUpSaysSo)
{
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(ExitWithAnswersWithoutSchema(), ::testing::ExitedWithCode(0), "");
}

TEST_F(SchemaUtil, NamesTheSpecialAttributes)
{
    EXPECT_EQ(Get(&QTBSchemaUtil::GetClassAttr), "Class");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetKeyAttr), "Key");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetRelationAttr), "Relation");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetLeftRelationshipAttr), "Left");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetRightRelationshipAttr), "Right");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetLeftRelationClassAttribute), "Class1");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetRightRelationClassAttribute), "Class2");
}

TEST_F(SchemaUtil, GivesTheSettingsOfTheSchema)
{
    EXPECT_EQ(Get(&QTBSchemaUtil::MaxDescAttrLength), 60);
    EXPECT_EQ(Get(&QTBSchemaUtil::ShowDataSourceNlsValues), TRUE);
    EXPECT_EQ(Get(&QTBSchemaUtil::GetCustomization), "Standard");
    EXPECT_EQ(Get(&QTBSchemaUtil::GetCurrentSchemaCatalogName), "QTBSchema");
    EXPECT_EQ(Get<QTBPdmSystem>(&QTBSchemaUtil::GetSystem), QTB_PDMSYSTEM_ENOVIA_MATRIX);
    EXPECT_EQ(Get<CATUnicodeString>(&QTBSchemaUtil::GetSystem), "ENOVIA_MATRIX");
    ASSERT_EQ(Load(R"(<qtbSchema system="ARAS_INNOVATOR" catalog="X">)" + std::string(ATTRIBUTE_NAMES) +
                   R"(<objects><object name="Part"/></objects></qtbSchema>)"),
              S_OK);
    EXPECT_EQ(Get<QTBPdmSystem>(&QTBSchemaUtil::GetSystem), QTB_PDMSYSTEM_ARAS_INNOVATOR);
    EXPECT_EQ(Get(&QTBSchemaUtil::MaxDescAttrLength), 0);
    EXPECT_EQ(Get(&QTBSchemaUtil::ShowDataSourceNlsValues), FALSE);
}

TEST_F(SchemaUtil, KnowsClassesOfObjectsAndOfRelations)
{
    unsigned char bIsDefined = 2;
    QTBSchemaNode* pSchemaNode = nullptr;
    ASSERT_EQ(QTBSchemaUtil::PdmClassIsDefined("Part", &bIsDefined, &pSchemaNode), S_OK);
    EXPECT_EQ(bIsDefined, TRUE);
    EXPECT_EQ(pSchemaNode, &Object("Part"));
    ASSERT_EQ(QTBSchemaUtil::PdmClassIsDefined("PartFile", &bIsDefined, &pSchemaNode), S_OK);
    EXPECT_EQ(pSchemaNode, &Relation("PartFile"));
    ASSERT_EQ(QTBSchemaUtil::PdmClassIsDefined("Unknown", &bIsDefined, &pSchemaNode), S_OK);
    EXPECT_EQ(bIsDefined, FALSE);
    EXPECT_EQ(pSchemaNode, nullptr);
    EXPECT_EQ(QTBSchemaUtil::PdmClassIsDefined("Part", &bIsDefined, nullptr), S_OK);
    EXPECT_EQ(QTBSchemaUtil::PdmClassIsDefined("Part", nullptr, nullptr), E_POINTER);
}

TEST_F(SchemaUtil, PartClassesAreListedByWhatTheyAllow)
{
    CATListValCATUnicodeString all;
    CATListValCATUnicodeString withSubParts;
    CATListValCATUnicodeString catParts;
    all.Append("left over");
    ASSERT_EQ(QTBSchemaUtil::GetPartClassNames(&all, &withSubParts, &catParts), S_OK);
    EXPECT_THAT(Texts(all), ElementsAre("Part", "StandardPart"));
    EXPECT_THAT(Texts(withSubParts), ElementsAre("Part"));
    EXPECT_THAT(Texts(catParts), ElementsAre("Part", "StandardPart"));
    EXPECT_EQ(QTBSchemaUtil::GetPartClassNames(&all, nullptr, nullptr), S_OK);
}

TEST_F(SchemaUtil, DisplayTextsComeFromTheCatalogInTheUsersLanguage)
{
    CATUnicodeString name;
    ASSERT_EQ(QTBSchemaUtil::GetNlsClassName(&Object("StandardPart"), &name), S_OK);
    EXPECT_EQ(name, "Standard part");
    EXPECT_EQ(QTBSchemaUtil::GetCurrentSchemaNlsString("State.Released"), "Released");
    CATMsgCatalog::SetLanguage("German");
    EXPECT_EQ(QTBSchemaUtil::GetCurrentSchemaNlsString("State.Released"), "Freigegeben");
    ASSERT_EQ(QTBSchemaUtil::GetNlsClassName(&Relation("PartPart"), &name), S_OK);
    EXPECT_EQ(name, "Teileverwendung");
}

TEST_F(SchemaUtil, ATextThatTheCatalogLacksIsEmpty)
{
    EXPECT_TRUE(QTBSchemaUtil::GetCurrentSchemaNlsString("No.Such.Key").IsEmpty());
    EXPECT_TRUE(QTBSchemaUtil::GetCurrentSchemaNlsString("").IsEmpty());
}

TEST_F(SchemaUtil, AClassWithoutDisplayNameIsCalledByItsName)
{
    ASSERT_EQ(Load(Schema(R"(<object name="Part" nlsKey="No.Such.Key"/><object name="Screw"/>)")), S_OK);
    CATUnicodeString name;
    ASSERT_EQ(QTBSchemaUtil::GetNlsClassName(&Object("Part"), &name), S_OK);
    EXPECT_EQ(name, "Part");
    ASSERT_EQ(QTBSchemaUtil::GetNlsClassName(&Object("Screw"), &name), S_OK);
    EXPECT_EQ(name, "Screw");
    EXPECT_EQ(QTBSchemaUtil::GetNlsClassName(nullptr, &name), E_POINTER);
    EXPECT_EQ(QTBSchemaUtil::GetNlsClassName(&Object("Part"), nullptr), E_POINTER);
}

TEST_F(SchemaUtil, EveryTextKeyOfTheProjectSchemaHasATextInEachLanguage)
{
    for (const char* language : {"", "German"}) {
        CATMsgCatalog::SetLanguage(language);
        const auto expectText = [language](const CATUnicodeString& key) {
            EXPECT_FALSE(QTBSchemaUtil::GetCurrentSchemaNlsString(key).IsEmpty()) << key << ' ' << language;
        };
        for (int i = 1; i <= Current().GetObjectCount(); ++i) {
            QTBSchemaObject* pObject = nullptr;
            ASSERT_EQ(Current().GetObjectPtr(i, &pObject), S_OK);
            expectText(pObject->GetNlsKey());
        }
        for (int i = 1; i <= Current().GetRelationCount(); ++i) {
            QTBSchemaRelation* pRelation = nullptr;
            ASSERT_EQ(Current().GetRelationPtr(i, &pRelation), S_OK);
            expectText(pRelation->GetNlsKey());
            expectText(pRelation->GetLeftToRightRelationshipPtr()->GetNlsKey());
            expectText(pRelation->GetRightToLeftRelationshipPtr()->GetNlsKey());
        }
        QTBSchemaDataSource* pDataSource = nullptr;
        ASSERT_EQ(QTBSchemaUtil::GetDataSourcePtr("States", &pDataSource), S_OK);
        for (int i = 1; i <= pDataSource->GetValuesCount(); ++i) {
            QTBSchemaValue* pValue = nullptr;
            ASSERT_EQ(pDataSource->GetValuePtr(i, &pValue), S_OK);
            expectText(pValue->GetDisplayName());
        }
    }
}

TEST_F(SchemaUtil, AttributesAndDataSourcesAreFoundByName)
{
    QTBSchemaAttribute* pAttribute = nullptr;
    ASSERT_EQ(QTBSchemaUtil::GetAttributePtr("State", &pAttribute, FALSE), S_OK);
    EXPECT_EQ(pAttribute->GetDataSourceName(), "States");
    QTBSchemaDataSource* pDataSource = nullptr;
    EXPECT_EQ(QTBSchemaUtil::GetDataSourcePtr("Unknown", &pDataSource), E_FAIL);
    EXPECT_EQ(pDataSource, nullptr);
    EXPECT_EQ(QTBSchemaUtil::GetDataSourcePtr("States", nullptr), E_POINTER);
}

TEST_F(SchemaUtil, AnUnknownAttributeIsReportedOnRequestOnly)
{
    QTBSchemaAttribute* pAttribute = nullptr;
    HRESULT hr = QTBSchemaUtil::GetAttributePtr("Unknown", &pAttribute, FALSE);
    EXPECT_EQ(hr, E_FAIL);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr), nullptr);
    hr = QTBSchemaUtil::GetAttributePtr("Unknown", &pAttribute, TRUE);
    ASSERT_NE(CATError::CATGetLastError(hr, nullptr), nullptr);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage(),
              "The PDM schema does not describe the attribute \"Unknown\".");
    EXPECT_EQ(pAttribute, nullptr);
    EXPECT_EQ(QTBSchemaUtil::GetAttributePtr("State", nullptr, FALSE), E_POINTER);
}

TEST_F(SchemaUtil, PdmNodeTypesAreShownByTheNamesOfClassesAndDocumentTypes)
{
    CATUnicodeString text;
    ASSERT_EQ(QTBSchemaUtil::GetPdmNodeTypeNlsString(FALSE, "StandardPart", &text, TRUE), S_OK);
    EXPECT_EQ(text, "Standard part");
    ASSERT_EQ(QTBSchemaUtil::GetPdmNodeTypeNlsString(TRUE, "StandardPart", &text, TRUE), S_OK);
    EXPECT_EQ(text, "Standard part (current)");
    ASSERT_EQ(QTBSchemaUtil::GetPdmNodeTypeNlsString(FALSE, usCMIARCHIVE, &text, TRUE), S_OK);
    EXPECT_EQ(text, "Archive");
    ASSERT_EQ(QTBSchemaUtil::GetPdmNodeTypeNlsString(FALSE, "Unknown", &text, TRUE), S_OK);
    EXPECT_EQ(text, "Unknown");
    EXPECT_EQ(QTBSchemaUtil::GetPdmNodeTypeNlsString(FALSE, "Unknown", &text, FALSE), E_FAIL);
    EXPECT_EQ(QTBSchemaUtil::GetPdmNodeTypeNlsString(FALSE, "Part", nullptr, TRUE), E_POINTER);
}

TEST_F(SchemaUtil, EachPdmNodeTypeHasACommandToSetIt)
{
    CATUnicodeString id;
    ASSERT_EQ(QTBSchemaUtil::GetPdmNodeTypeCommandHeaderIdString(FALSE, "Part", &id), S_OK);
    EXPECT_EQ(id, "QTBSetPdmNodeTypePartCmdHdr");
    ASSERT_EQ(QTBSchemaUtil::GetPdmNodeTypeCommandHeaderIdString(TRUE, usCATPART, &id), S_OK);
    EXPECT_EQ(id, "QTBCurrentPdmNodeTypeCATPartCmdHdr");
    EXPECT_EQ(QTBSchemaUtil::GetPdmNodeTypeCommandHeaderIdString(FALSE, "Unknown", &id), E_FAIL);
    EXPECT_EQ(QTBSchemaUtil::GetPdmNodeTypeCommandHeaderIdString(FALSE, "Part", nullptr), E_POINTER);
}

TEST_F(SchemaUtil, NodeBehaviorsFailWhenNoneAreConfigured)
{
    QTBCatiaNodeBehaviorDefinitions* pDefinitions = nullptr;
    ASSERT_EQ(QTBSchemaUtil::GetCatiaNodeBehaviorDefinitionsPtr(&pDefinitions), S_OK);
    EXPECT_EQ(pDefinitions->GetCatiaNodeBehaviorCount(), 3);
    ASSERT_EQ(Load(Schema(R"(<object name="Part"/>)")), S_OK);
    EXPECT_EQ(QTBSchemaUtil::GetCatiaNodeBehaviorDefinitionsPtr(&pDefinitions), E_FAIL);
    EXPECT_EQ(QTBSchemaUtil::GetCatiaNodeBehaviorDefinitionsPtr(nullptr), E_POINTER);
}

TEST_F(SchemaUtil, ClassesOfAReplacedSchemaStayGoodUntilTheyAreReleased)
{
    const QTBSchemaObject& part = Object("Part");
    ASSERT_EQ(Load(Schema(R"(<object name="Part"/>)")), S_OK);
    EXPECT_NE(&Object("Part"), &part);
    EXPECT_EQ(part.GetIconName(), "QTBPart");
    EXPECT_TRUE(Object("Part").GetIconName().IsEmpty());
    QTBSchemaUtil::ReleaseReplacedSchemas();
    EXPECT_EQ(Object("Part").GetName(), "Part");
}

namespace {

// A document whose owner is an embedded object.
class EmbeddedDescription : public QTBTestSession
{
protected:
    static std::string Owner(const std::string& attributes)
    {
        return R"(<a name="Owner" type="object"><o><a name="Class">Person</a><a name="Key">P</a>)" + attributes +
               "</o></a>";
    }

    static HRESULT Read(const char* key, const char* attribute, CATUnicodeString* pValue)
    {
        return QTBSchemaUtil::GetEmbeddedDescriptionAttributeValue(PdmNode(key), attribute, pValue);
    }
};

} // namespace

TEST_F(EmbeddedDescription, IsReadFromTheEmbeddedObject)
{
    Update(Object("Document", "D1", Owner(Attribute("FullName", "Jo Doe"))));
    CATUnicodeString value;
    ASSERT_EQ(Read("D1", "FullName", &value), S_OK);
    EXPECT_EQ(value, "Jo Doe");
    CATUnicodeString description;
    ASSERT_EQ(PdmNode("D1")->GetDescriptionString(&description), S_OK);
    EXPECT_EQ(description, ", , Jo Doe");
}

TEST_F(EmbeddedDescription, FailsQuietlyWhenAnythingIsMissing)
{
    Update(Object("Document", "D1", Owner("")) + Object("Document", "D2") +
           Object("Document", "D3", Attribute("Owner", "Jo Doe")) + Part("P1"));
    CATUnicodeString value = "kept";
    for (const char* key : {"D1", "D2", "D3", "P1"}) {
        EXPECT_EQ(Read(key, "FullName", &value), E_FAIL) << key;
    }
    EXPECT_EQ(Read("D1", "DocumentNumber", &value), E_FAIL);
    EXPECT_EQ(QTBSchemaUtil::GetEmbeddedDescriptionAttributeValue(NULL_var, "FullName", &value), E_FAIL);
    EXPECT_EQ(Read("D1", "FullName", nullptr), E_POINTER);
    EXPECT_EQ(value, "kept");
}

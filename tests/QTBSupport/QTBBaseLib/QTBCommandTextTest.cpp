#include "QTBCommandText.h"

#include <gmock/gmock.h>

#include "QTBEditedSchema.h"
#include "QTBExpDlgRelExpandInfo.h"
#include "QTBMatchers.h"
#include "QTBPdmTree.h"
#include "QTBSchema.h"
#include "QTBTestSession.h"

namespace {

class CommandText : public QTBTestSession
{
protected:
    static QTBSchema* Schema()
    {
        QTBSchema* pSchema = nullptr;
        EXPECT_EQ(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), S_OK);
        return pSchema;
    }
    static QTBExpDlgRelExpandInfo Info(const char* relation, unsigned char bLeftToRight, unsigned char bMultiExpand)
    {
        QTBSchemaRelation* pRelation = nullptr;
        EXPECT_EQ(Schema()->GetRelationPtr(relation, &pRelation), S_OK) << relation;
        return QTBExpDlgRelExpandInfo(pRelation, bLeftToRight, bMultiExpand, TRUE);
    }
};

constexpr const char* UNKNOWN = "CommandTextNotKnownERR_2009";

TEST_F(CommandText, NamesSchemaRelationDirectionAndRelationshipToExpandAlong)
{
    EXPECT_EQ(QTBCommandText::MakeExpand(*Schema(), Info("PartPart", TRUE, FALSE)),
              "SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of");
    EXPECT_EQ(QTBCommandText::MakeExpand(*Schema(), Info("PartPart", FALSE, TRUE)),
              "MultiExpand ENOVIA_MATRIX/Standard PartPart<-is used in");
    EXPECT_EQ(QTBCommandText::MakeExpand(*Schema(), QTBExpDlgRelExpandInfo()), "");
}

TEST_F(CommandText, IsReadBackForEveryRelationAndDirectionOfTheSchema)
{
    for (int i = 1; i <= Schema()->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        Schema()->GetRelationPtr(i, &pRelation);
        for (const unsigned char bLeftToRight : {TRUE, FALSE}) {
            for (const unsigned char bMultiExpand : {TRUE, FALSE}) {
                const QTBExpDlgRelExpandInfo info(pRelation, bLeftToRight, bMultiExpand, TRUE);
                const CATUnicodeString usText = QTBCommandText::MakeExpand(*Schema(), info);
                QTBExpDlgRelExpandInfo read;
                EXPECT_THAT(QTBCommandText::ReadExpand(usText, &read), Succeeds()) << usText;
                EXPECT_TRUE(read == info) << usText;
            }
        }
    }
}

TEST_F(CommandText, IsGoodForTheSchemaThatItWasMadeWith)
{
    const CATUnicodeString usExpand = QTBCommandText::MakeExpand(*Schema(), Info("PartPart", TRUE, FALSE));
    const CATUnicodeString usTree = QTBCommandText::MakePdmTree("ENOVIA_MATRIX", "Standard", QTBPdmTree("WhereUsed"));
    QTBLoadEditedSchema({{R"(customization="Standard")", R"(customization="Other")"}});
    QTBExpDlgRelExpandInfo info;
    EXPECT_THAT(QTBCommandText::ReadExpand(usExpand, &info), FailsWithMessage(UNKNOWN));
    EXPECT_TRUE(info == QTBExpDlgRelExpandInfo());
    CATUnicodeString usName("before");
    EXPECT_THAT(QTBCommandText::ReadPdmTree(usTree, &usName), FailsWithMessage(UNKNOWN));
    EXPECT_EQ(usName, "before");
}

TEST_F(CommandText, IsNotReadWhenItNamesNothingOfTheSchema)
{
    QTBExpDlgRelExpandInfo info;
    for (const char* text : {"SingleExpand", "MultiExpand ENOVIA_MATRIX/Standard PartPart",
                             "SingleExpand ENOVIA_MATRIX/Standard PartPart->is used in",
                             "SingleExpand ENOVIA_MATRIX/Standard Nothing->consists of"}) {
        EXPECT_THAT(QTBCommandText::ReadExpand(text, &info), FailsWithMessage(UNKNOWN)) << text;
    }
    EXPECT_EQ(QTBCommandText::ReadExpand("SingleExpand", nullptr), E_POINTER);
}

TEST_F(CommandText, NamesSystemCustomizationAndTreeToExpandAlong)
{
    const CATUnicodeString usText = QTBCommandText::MakePdmTree("ENOVIA_MATRIX", "Standard", QTBPdmTree("WhereUsed"));
    EXPECT_EQ(usText, "PdmTreeENOVIA_MATRIXStandardWhereUsed");
    CATUnicodeString usName;
    EXPECT_THAT(QTBCommandText::ReadPdmTree(usText, &usName), Succeeds());
    EXPECT_EQ(usName, "WhereUsed");
    EXPECT_THAT(QTBCommandText::ReadPdmTree("PdmTreeENOVIA_MATRIXStandard", &usName), FailsWithMessage(UNKNOWN));
    EXPECT_EQ(QTBCommandText::ReadPdmTree(usText, nullptr), E_POINTER);
}

TEST_F(CommandText, CarriesWhatACreationNeedsWhateverTheTextsHold)
{
    const QTBCommandText::Creation creation{"PartDocument", FALSE, "Part", "Document", "D;1\\2", "QTBSchema"};
    const CATUnicodeString usText = QTBCommandText::MakeCreation(creation);
    EXPECT_TRUE(usText.View().starts_with("Create")) << usText;
    QTBCommandText::Creation read;
    EXPECT_THAT(QTBCommandText::ReadCreation(usText, &read), Succeeds());
    EXPECT_TRUE(read == creation);
    EXPECT_EQ(QTBCommandText::MakeCreation({"PartPart", TRUE, "Part", "Part", "A", "QTBSchema"}),
              "CreatePartPart;->;Part;Part;A;QTBSchema");
    EXPECT_EQ(QTBCommandText::ReadCreation(usText, nullptr), E_POINTER);
}

TEST_F(CommandText, IsNoCreationWithoutKnownRelationDirectionAndClass)
{
    QTBCommandText::Creation read;
    for (const char* text : {"Create", "CreatePartPart;->;Part;Part;A", "CreateNothing;->;Part;Part;A;QTBSchema",
                             "CreatePartPart;--;Part;Part;A;QTBSchema", "CreatePartPart;->;Nothing;Part;A;QTBSchema"}) {
        EXPECT_THAT(QTBCommandText::ReadCreation(text, &read), FailsWithMessage(UNKNOWN)) << text;
    }
}

TEST_F(CommandText, OfAnotherCommandIsLeftAlone)
{
    QTBExpDlgRelExpandInfo info;
    CATUnicodeString usName;
    QTBCommandText::Creation creation;
    EXPECT_EQ(QTBCommandText::ReadExpand("PdmTreeX", &info), S_FALSE);
    EXPECT_EQ(QTBCommandText::ReadPdmTree("CreateX", &usName), S_FALSE);
    EXPECT_EQ(QTBCommandText::ReadCreation("SingleExpandX", &creation), S_FALSE);
    EXPECT_EQ(QTBCommandText::ReadCreation("", &creation), S_FALSE);
}

} // namespace

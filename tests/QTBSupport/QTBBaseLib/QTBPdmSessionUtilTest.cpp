#include "QTBPdmSessionUtil.h"

#include <gmock/gmock.h>

#include "QTBSchemaFixture.h"

using ::testing::ElementsAre;

namespace {

class PdmSessionUtil : public QTBSchemaFixture
{
protected:
    struct FileClass
    {
        CATUnicodeString pdmClass = "left over";
        unsigned char bIsBomPart = 2;
        CATListValCATUnicodeString* pPdmClasses = nullptr;
        unsigned char bIsDefined = 2;
    };

    static FileClass InfoOf(QTBCatiaFileClass fileClass, QTBBomType bomType)
    {
        FileClass info;
        EXPECT_EQ(QTBPdmSessionUtil::GetCatiaFileClassInfo(fileClass, &info.pdmClass, &info.bIsBomPart,
                                                           &info.pPdmClasses, bomType, &info.bIsDefined),
                  S_OK);
        return info;
    }

    static CATUnicodeString Setting(QTBPdmSessionStringAttr attr)
    {
        CATUnicodeString value;
        EXPECT_EQ(QTBPdmSessionUtil::GetPdmSessionStringAttrValue(attr, &value, TRUE), S_OK);
        return value;
    }
};

} // namespace

TEST_F(PdmSessionUtil, SettingsComeFromTheSchema)
{
    EXPECT_EQ(Setting(QTB_PDM_SESSION_PART_NUMBER_ATTR), "PartNumber");
    EXPECT_EQ(Setting(QTB_PDM_SESSION_INSTANCE_NAME_ATTR), "InstanceName");
    EXPECT_EQ(Setting(QTB_PDM_SESSION_FILE_NAME_ATTR), "FileName");
    EXPECT_EQ(Setting(QTB_PDM_SESSION_PART_CLASS), "Part");
}

TEST_F(PdmSessionUtil, AnUndefinedSettingFailsWithAMessageOnRequestOnly)
{
    ASSERT_EQ(Load(Schema(R"(<object name="Part"/>)")), S_OK);
    CATUnicodeString value = "kept";
    HRESULT hr = QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_NUMBER_ATTR, &value, FALSE);
    EXPECT_EQ(hr, E_FAIL);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr), nullptr);
    hr = QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_NUMBER_ATTR, &value, TRUE);
    ASSERT_LT(hr, 0);
    ASSERT_NE(CATError::CATGetLastError(hr, nullptr), nullptr);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage(),
              "The PDM schema does not define the session setting \"partNumberAttr\".");
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_CLASS, nullptr, TRUE), E_POINTER);
}

TEST_F(PdmSessionUtil, TheBomPartStructureIsASettingOfTheSchema)
{
    EXPECT_EQ(QTBPdmSessionUtil::UseBomPartStructure(), TRUE);
    ASSERT_EQ(Load(Schema(R"(<object name="Part"/>)")), S_OK);
    EXPECT_EQ(QTBPdmSessionUtil::UseBomPartStructure(), FALSE);
}

TEST_F(PdmSessionUtil, FileClassesAreStoredAsObjectsOfAPdmClass)
{
    const FileClass catPart = InfoOf(QTB_CATIA_FILE_CLASS_CATPART, QTB_BOM_TYPE_AUX_FILE);
    EXPECT_EQ(catPart.pdmClass, "CATPartFile");
    EXPECT_EQ(catPart.bIsBomPart, TRUE);
    EXPECT_EQ(catPart.bIsDefined, TRUE);
    ASSERT_NE(catPart.pPdmClasses, nullptr);
    EXPECT_THAT(Texts(*catPart.pPdmClasses), ElementsAre("CATPartFile"));

    const FileClass archive = InfoOf(QTB_CATIA_FILE_CLASS_CMIARCHIVE, QTB_BOM_TYPE_AUX_FILE);
    EXPECT_EQ(archive.pdmClass, "CMIArchiveFile");
    EXPECT_EQ(archive.bIsBomPart, FALSE);
}

TEST_F(PdmSessionUtil, AFileClassThatTheSchemaDoesNotNameIsNotDefined)
{
    const FileClass asPart = InfoOf(QTB_CATIA_FILE_CLASS_CATPART, QTB_BOM_TYPE_PART);
    EXPECT_TRUE(asPart.pdmClass.IsEmpty());
    EXPECT_EQ(asPart.bIsBomPart, FALSE);
    EXPECT_EQ(asPart.pPdmClasses, nullptr);
    EXPECT_EQ(asPart.bIsDefined, FALSE);
    EXPECT_EQ(InfoOf(QTB_CATIA_FILE_CLASS_UNKNOWN, QTB_BOM_TYPE_AUX_FILE).bIsDefined, FALSE);
    EXPECT_EQ(InfoOf(QTB_CATIA_FILE_CLASS_CATPART, QTB_BOM_TYPE_INVALID).bIsDefined, FALSE);
}

TEST_F(PdmSessionUtil, PartsCanHoldTheFilesThemselves)
{
    ASSERT_EQ(Load(Schema(R"(<object name="Part"><part subParts="true"/><catiaFile type="CATPart"/></object>
                             <object name="Screw" parent="Part"/>
                             <object name="File"><catiaFile type="CATPart"/></object>)")),
              S_OK);
    const FileClass asPart = InfoOf(QTB_CATIA_FILE_CLASS_CATPART, QTB_BOM_TYPE_PART);
    EXPECT_EQ(asPart.pdmClass, "Part");
    EXPECT_THAT(Texts(*asPart.pPdmClasses), ElementsAre("Part", "Screw"));
    EXPECT_EQ(InfoOf(QTB_CATIA_FILE_CLASS_CATPART, QTB_BOM_TYPE_AUX_FILE).pdmClass, "File");
    EXPECT_EQ(InfoOf(QTB_CATIA_FILE_CLASS_CATPART, QTB_BOM_TYPE_ALL).pdmClass, "Part");
}

TEST_F(PdmSessionUtil, ForAllBomTypesAFileStandsInForAMissingPart)
{
    EXPECT_EQ(InfoOf(QTB_CATIA_FILE_CLASS_CGR, QTB_BOM_TYPE_ALL).pdmClass, "CGRFile");
}

TEST_F(PdmSessionUtil, FileClassInfoIsGivenOnlyWhereItIsWanted)
{
    CATUnicodeString pdmClass;
    ASSERT_EQ(QTBPdmSessionUtil::GetCatiaFileClassInfo(QTB_CATIA_FILE_CLASS_CGR, &pdmClass, nullptr, nullptr,
                                                       QTB_BOM_TYPE_AUX_FILE, nullptr),
              S_OK);
    EXPECT_EQ(pdmClass, "CGRFile");
    EXPECT_EQ(QTBPdmSessionUtil::GetCatiaFileClassInfo(QTB_CATIA_FILE_CLASS_CGR, nullptr, nullptr, nullptr,
                                                       QTB_BOM_TYPE_AUX_FILE, nullptr),
              S_OK);
}

TEST_F(PdmSessionUtil, ClassesKnowTheFileClassThatTheyStore)
{
    unsigned char bIsFileClass = 2;
    const auto isFileClass = [&bIsFileClass](QTBCatiaFileClass fileClass, const char* type) {
        EXPECT_EQ(QTBPdmSessionUtil::IsCatiaFileClass(fileClass, type, &bIsFileClass), S_OK);
        return bIsFileClass;
    };
    EXPECT_EQ(isFileClass(QTB_CATIA_FILE_CLASS_CMIARCHIVE, "CMIArchiveFile"), TRUE);
    EXPECT_EQ(isFileClass(QTB_CATIA_FILE_CLASS_CMIARCHIVE, "CATPartFile"), FALSE);
    EXPECT_EQ(isFileClass(QTB_CATIA_FILE_CLASS_CMIARCHIVE, "CMIArchive"), FALSE);
    EXPECT_EQ(isFileClass(QTB_CATIA_FILE_CLASS_UNKNOWN, "Part"), FALSE);
    EXPECT_EQ(QTBPdmSessionUtil::IsCatiaFileClass(QTB_CATIA_FILE_CLASS_CGR, "CGRFile", nullptr), E_POINTER);
}

TEST_F(PdmSessionUtil, DocumentTypesAndPdmClassesTranslateBothWays)
{
    CATUnicodeString pdmClass;
    CATUnicodeString docType;
    QTBCatiaFileClass fileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    for (const CATUnicodeString& type :
         {usCATPRODUCT, usCATPART, usCATDRAWING, usCMIARCHIVE, usCGR, usDESIGNTABLE, usV4MODEL}) {
        ASSERT_EQ(QTBPdmSessionUtil::CatDocTypeCatToPdm(type, &pdmClass, FALSE), S_OK) << type;
        EXPECT_EQ(pdmClass, type + "File");
        ASSERT_EQ(QTBPdmSessionUtil::CatDocTypePdmToCat(pdmClass, &docType, &fileClass), S_OK) << pdmClass;
        EXPECT_EQ(docType, type);
        EXPECT_EQ(fileClass, QTBPdmSessionUtil::GetFileClassOfDocType(type));
        EXPECT_EQ(QTBPdmSessionUtil::GetDocTypeOfFileClass(fileClass), type);
    }
    EXPECT_EQ(QTBPdmSessionUtil::CatDocTypePdmToCat("CGRFile", nullptr, nullptr), S_OK);
}

TEST_F(PdmSessionUtil, WhatIsNoDocumentTypeIsNotTranslated)
{
    CATUnicodeString text = "kept";
    EXPECT_EQ(QTBPdmSessionUtil::CatDocTypeCatToPdm("Part", &text, FALSE), E_FAIL);
    EXPECT_EQ(QTBPdmSessionUtil::CatDocTypeCatToPdm(usEMBCOMP, &text, FALSE), E_FAIL);
    EXPECT_EQ(QTBPdmSessionUtil::CatDocTypePdmToCat("Part", &text, nullptr), E_FAIL);
    EXPECT_EQ(QTBPdmSessionUtil::CatDocTypePdmToCat("CATPart", &text, nullptr), E_FAIL);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(QTBPdmSessionUtil::CatDocTypeCatToPdm(usCGR, nullptr, FALSE), E_POINTER);
    EXPECT_EQ(QTBPdmSessionUtil::GetFileClassOfDocType(usBROKENLINK), QTB_CATIA_FILE_CLASS_UNKNOWN);
    EXPECT_TRUE(QTBPdmSessionUtil::GetDocTypeOfFileClass(QTB_CATIA_FILE_CLASS_UNKNOWN).IsEmpty());

    const HRESULT hr = QTBPdmSessionUtil::CatDocTypeCatToPdm("Part", &text, TRUE);
    ASSERT_NE(CATError::CATGetLastError(hr, nullptr), nullptr);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage(),
              "The PDM schema does not say how documents of the type \"Part\" are stored.");
}

#include "QTBFileUtil.h"

#include <cstdlib>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "QTBProductSession.h"
#include "QTBTestWindow.h"

namespace {

class FileUtil : public QTBProductSession
{
protected:
    static std::string WithoutExtension(const char* fileName)
    {
        CATUnicodeString usName;
        EXPECT_THAT(QTBFileUtil::GetFileNameWithoutExtension(fileName, &usName), Succeeds());
        return ToText(usName);
    }

    static std::string NameIn(const char* path)
    {
        CATUnicodeString usName;
        EXPECT_THAT(QTBFileUtil::GetFileNameFromPathString(path, &usName), Succeeds());
        return ToText(usName);
    }

    static std::string ExtensionOf(const char* fileName)
    {
        CATUnicodeString usExtension;
        return SUCCEEDED(QTBFileUtil::GetFileExtensionFromFileName(fileName, &usExtension)) ? ToText(usExtension)
                                                                                            : "none";
    }

    // File name and type of a product: "name|type".
    static std::string ReferenceOf(const CATIProduct_var& spProduct)
    {
        CATUnicodeString usFileName("untouched");
        CATUnicodeString usType("untouched");
        const HRESULT hr = QTBFileUtil::GetReferenceFileName(spProduct, &usFileName, &usType);
        EXPECT_TRUE(SUCCEEDED(hr) || (usFileName == "untouched" && usType == "untouched"));
        return SUCCEEDED(hr) ? ToText(usFileName) + "|" + ToText(usType) : "none";
    }

    static std::string ExMapPathOf(const char* path)
    {
        CATUnicodeString usPath("untouched");
        EXPECT_THAT(QTBFileUtil::CreateExMapFilePath(path, &usPath), Succeeds());
        return ToText(usPath);
    }
};

TEST_F(FileUtil, TheExtensionIsWhatFollowsTheLastDotOfTheName)
{
    EXPECT_EQ(WithoutExtension("bracket.CATPart"), "bracket");
    EXPECT_EQ(WithoutExtension("sheet.1.CATDrawing"), "sheet.1");
    EXPECT_EQ(WithoutExtension("bracket"), "bracket");
    EXPECT_EQ(WithoutExtension(".hidden"), ".hidden");
    EXPECT_EQ(WithoutExtension("/data.d/bracket"), "/data.d/bracket");
    EXPECT_EQ(WithoutExtension("/data.d/bracket.x"), "/data.d/bracket");
    EXPECT_EQ(WithoutExtension(""), "");
    EXPECT_EQ(ExtensionOf("C:\\data\\bracket.CATPart"), "CATPart");
    EXPECT_EQ(ExtensionOf("bracket"), "none");
    EXPECT_EQ(ExtensionOf("bracket."), "");
    EXPECT_EQ(QTBFileUtil::GetFileNameWithoutExtension("a", nullptr), E_POINTER);
    EXPECT_EQ(QTBFileUtil::GetFileExtensionFromFileName("a", nullptr), E_POINTER);
}

TEST_F(FileUtil, TheNameFollowsTheLastSeparatorOfAPath)
{
    EXPECT_EQ(NameIn("/data/bracket.CATPart"), "bracket.CATPart");
    EXPECT_EQ(NameIn("C:\\data/x\\bracket.CATPart"), "bracket.CATPart");
    EXPECT_EQ(NameIn("bracket.CATPart"), "bracket.CATPart");
    EXPECT_EQ(NameIn("/data/"), "");
    EXPECT_EQ(QTBFileUtil::GetFileNameFromPathString("a", nullptr), E_POINTER);
}

TEST_F(FileUtil, AProductHasTheFileAndTypeOfItsReference)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="c" name="C.1"/><instance of="v" name="V.1"/><instance of="l" name="L.1"/>
              <instance of="e" name="E.1"/>
            </product>
            <product id="c" file="c.stp" type="CATPart" partNumber="PC"/>
            <product id="v" file="v.CatPart" shape="v.cgr" link="visualization"/>
            <product id="l" file="l.CATPart" link="broken"/>
            <component id="e" partNumber="PE"/>
            <product id="n" type="CATDrawing" partNumber="N"/>)");
    EXPECT_EQ(ReferenceOf(Root("P")), "p.CATProduct|CATProduct");
    EXPECT_EQ(ReferenceOf(At("P", {"C.1"})), "c.stp|CATPart");
    EXPECT_EQ(ReferenceOf(At("P", {"V.1"})), "v.CatPart|CATPart");
    EXPECT_EQ(ReferenceOf(At("P", {"L.1"})), "l.CATPart|BrokenLink");
    EXPECT_EQ(ReferenceOf(At("P", {"E.1"})), "|EmbeddedComponent");
    EXPECT_EQ(ReferenceOf(Root("N")), "|CATDrawing");
    EXPECT_THAT(QTBFileUtil::GetReferenceFileName(Root("P"), nullptr, nullptr), Succeeds());
}

TEST_F(FileUtil, AShapeOfAFileOfAnotherTypeHasANameButNoType)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="v" name="V.1"/></product>
            <product id="v" file="v.stp" type="CATPart" shape="v.cgr" link="visualization"/>)");
    EXPECT_EQ(ReferenceOf(At("P", {"V.1"})), "none");
    CATUnicodeString usFileName;
    EXPECT_THAT(QTBFileUtil::GetReferenceFileName(At("P", {"V.1"}), &usFileName, nullptr), Succeeds());
    EXPECT_EQ(usFileName, "v.stp");
}

TEST_F(FileUtil, AClosedProductHasNoFile)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"/>)");
    const CATIProduct_var spProduct = Root("P");
    CATDocumentServices::RemoveAll();
    EXPECT_EQ(ReferenceOf(spProduct), "none");
    EXPECT_EQ(ReferenceOf(CATIProduct_var()), "none");
}

TEST_F(FileUtil, ADocumentHasItsOwnType)
{
    Open(R"(<product id="m" file="m.model" partNumber="M"/>)");
    CATUnicodeString usType;
    EXPECT_THAT(QTBFileUtil::GetFileType(DocumentOf(Root("M")), &usType), Succeeds());
    EXPECT_EQ(usType, "V4Model");
    EXPECT_EQ(QTBFileUtil::GetFileType(nullptr, &usType), E_POINTER);
    EXPECT_EQ(QTBFileUtil::GetFileType(DocumentOf(Root("M")), nullptr), E_POINTER);
}

TEST_F(FileUtil, ADocumentOfAnotherKindHasTheTypeOfItsFile)
{
    const QTBTestWindow window;
    CATDocument* pDocument = window.GetFrmWindow()->GetEditor()->GetDocument();
    CATUnicodeString usType;
    EXPECT_THAT(QTBFileUtil::GetFileType(pDocument, &usType), FailsQuietly());
    pDocument->SetStorageName("/data/x.CATDRAWING");
    EXPECT_THAT(QTBFileUtil::GetFileType(pDocument, &usType), Succeeds());
    EXPECT_EQ(usType, "CATDrawing");
    pDocument->SetStorageName("/data/x.txt");
    EXPECT_THAT(QTBFileUtil::GetFileType(pDocument, &usType), FailsQuietly());
}

TEST_F(FileUtil, AnExchangedFileStandsInTheExchangeFolder)
{
    QTBGlobVarsUtil::SetExMapFolder("/exmap");
    EXPECT_EQ(ExMapPathOf("bracket.CATPart"), "/exmap/bracket.CATPart");
    EXPECT_EQ(ExMapPathOf("/data/bracket.CATPart"), "/exmap/bracket.CATPart");
    QTBGlobVarsUtil::SetExMapFolder("/exmap/");
    EXPECT_EQ(ExMapPathOf("bracket.CATPart"), "/exmap/bracket.CATPart");
    QTBGlobVarsUtil::SetExMapFolder("C:\\exmap\\");
    EXPECT_EQ(ExMapPathOf("bracket.CATPart"), "C:\\exmap\\bracket.CATPart");
}

TEST_F(FileUtil, TheExchangeFolderIsThatOfTheEnvironmentUnlessItIsSet)
{
    ASSERT_EQ(unsetenv("QTB_EXMAP_FOLDER"), 0);
    EXPECT_EQ(ExMapPathOf("bracket.CATPart"), "bracket.CATPart");
    ASSERT_EQ(setenv("QTB_EXMAP_FOLDER", "/from/environment", 1), 0);
    EXPECT_EQ(ExMapPathOf("bracket.CATPart"), "/from/environment/bracket.CATPart");
    QTBGlobVarsUtil::SetExMapFolder("/exmap");
    EXPECT_EQ(ExMapPathOf("bracket.CATPart"), "/exmap/bracket.CATPart");
    ASSERT_EQ(unsetenv("QTB_EXMAP_FOLDER"), 0);
    EXPECT_EQ(QTBGlobVarsUtil::GetExMapFolder(nullptr), E_FAIL);
}

TEST_F(FileUtil, APathWithoutFileNameCannotBeExchanged)
{
    CATUnicodeString usPath("untouched");
    EXPECT_THAT(QTBFileUtil::CreateExMapFilePath("", &usPath), FailsQuietly());
    EXPECT_THAT(QTBFileUtil::CreateExMapFilePath("/data/", &usPath), FailsQuietly());
    EXPECT_EQ(usPath, "untouched");
    EXPECT_EQ(QTBFileUtil::CreateExMapFilePath("bracket.CATPart", nullptr), E_POINTER);
}

TEST_F(FileUtil, ARepNodeHasTheFileThatItStandsFor)
{
    Update(File("CATPartFile", "1", "f.CATPart") + File("CATPartFile", "2", "") + NumberedPart("3", "P"));
    const QTBTestWindow window;
    for (const char* key : {"1", "2", "3"}) {
        window.Show(FindNode(key), {});
    }
    CATUnicodeString usFileName;
    EXPECT_THAT(QTBFileUtil::GetFileName(window.Find(FindNode("1")), &usFileName), Succeeds());
    EXPECT_EQ(usFileName, "f.CATPart");
    EXPECT_THAT(QTBFileUtil::GetFileName(window.Find(FindNode("2")), &usFileName), FailsQuietly());
    EXPECT_THAT(QTBFileUtil::GetFileName(window.Find(FindNode("3")), &usFileName), FailsQuietly());
    EXPECT_THAT(QTBFileUtil::GetFileName(QTBIRepNode_var(), &usFileName), FailsQuietly());
    EXPECT_EQ(QTBFileUtil::GetFileName(window.Find(FindNode("1")), nullptr), E_POINTER);
}

} // namespace

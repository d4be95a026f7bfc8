#include "QTBArchiveUtil.h"

#include <filesystem>

#include <gmock/gmock.h>

#include "QTBDocUtil.h"
#include "QTBLoadManager.h"
#include "QTBProductSession.h"
#include "QTBTestFolder.h"

namespace {

constexpr const char* ARCHIVE = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="a" name="A.1"/><instance of="a" name="A.2"/><instance of="l" name="L.1"/>
      <instance of="n" name="N.1"/><instance of="e" name="E.1"/>
    </product>
    <product id="a" file="a.CATProduct" partNumber="A"><instance of="c" name="C.1"/></product>
    <product id="c" file="c.CATPart" partNumber="C"/>
    <product id="l" file="l.CATPart" link="broken"/>
    <product id="n" type="CATPart" partNumber="N"/>
    <component id="e" partNumber="E"/>)";

class ArchiveUtil : public QTBProductSession
{
protected:
    static CATIProduct_var OpenArchive(const std::string& directory = "/data")
    {
        Open(ARCHIVE, directory);
        EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(Root("P"), TRUE, "box.cmi"), Succeeds());
        return Root("P");
    }

    static bool IsDirty(const CATIProduct_var& spProduct)
    {
        unsigned char bIsDirty = 7;
        EXPECT_THAT(QTBArchiveUtil::IsArchiveDirty(spProduct, &bIsDirty), Succeeds());
        EXPECT_NE(bIsDirty, 7);
        return bIsDirty != FALSE;
    }
};

TEST_F(ArchiveUtil, AnArchiveIsDirtyWhenADocumentInItHasChanges)
{
    const CATIProduct_var spRoot = OpenArchive();
    EXPECT_FALSE(IsDirty(spRoot));
    DocumentOf(Root("C"))->SetDirty(TRUE);
    EXPECT_TRUE(IsDirty(spRoot));
    DocumentOf(Root("C"))->SetDirty(FALSE);
    DocumentOf(Root("P"))->SetDirty(TRUE);
    EXPECT_TRUE(IsDirty(spRoot));
}

TEST_F(ArchiveUtil, ADocumentThatWasNeverSavedMakesAnArchiveDirtyOnlyWithChanges)
{
    const CATIProduct_var spRoot = OpenArchive();
    DocumentOf(Root("N"))->SetDirty(TRUE);
    EXPECT_TRUE(IsDirty(spRoot));
}

TEST_F(ArchiveUtil, AnArchiveIsDirtyWhenAFileInItDiffersFromTheOneExchanged)
{
    const QTBTestFolder folder;
    const CATIProduct_var spRoot = OpenArchive(folder.GetPath());
    EXPECT_FALSE(IsDirty(spRoot));
    const std::string path = folder.Write("c.CATPart", "text");
    EXPECT_TRUE(IsDirty(spRoot));
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    EXPECT_FALSE(IsDirty(spRoot));
}

TEST_F(ArchiveUtil, AnArchiveWithAFileThatCannotBeReadIsAnError)
{
    const QTBTestFolder folder;
    const CATIProduct_var spRoot = OpenArchive(folder.GetPath());
    std::filesystem::create_directory(folder.GetPath("c.CATPart"));
    unsigned char bIsDirty = FALSE;
    EXPECT_THAT(QTBArchiveUtil::IsArchiveDirty(spRoot, &bIsDirty), FailsWithMessage("FileNotReadableERR_1003"));
}

TEST_F(ArchiveUtil, OnlyARecordedArchiveRootThatIsInSessionCanBeAsked)
{
    const CATIProduct_var spRoot = OpenArchive();
    unsigned char bIsDirty = 7;
    EXPECT_THAT(QTBArchiveUtil::IsArchiveDirty(Root("C"), &bIsDirty), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(At("P", {"L.1"}), TRUE, "lost.cmi"), Succeeds());
    EXPECT_THAT(QTBArchiveUtil::IsArchiveDirty(At("P", {"L.1"}), &bIsDirty), FailsQuietly());
    EXPECT_THAT(QTBArchiveUtil::IsArchiveDirty(CATIProduct_var(), &bIsDirty), FailsQuietly());
    EXPECT_THAT(QTBArchiveUtil::IsArchiveDirty(spRoot, nullptr), FailsQuietly());
    EXPECT_EQ(bIsDirty, 7);
}

TEST_F(ArchiveUtil, APartThatIsUsedOverAndOverIsLookedAtOnce)
{
    // Each level uses the next one ten times: far more places than could be looked at one by one.
    std::string xml;
    for (int level = 1; level <= 30; ++level) {
        xml += "<product id=\"" + std::to_string(level) + "\" file=\"" + std::to_string(level) +
               ".CATProduct\" partNumber=\"P" + std::to_string(level) + "\">";
        for (int use = 1; use <= 10 && level < 30; ++use) {
            xml += "<instance of=\"" + std::to_string(level + 1) + "\" name=\"I" + std::to_string(use) + "\"/>";
        }
        xml += "</product>";
    }
    Open(xml);
    EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(Root("P1"), TRUE, "box.cmi"), Succeeds());
    EXPECT_FALSE(IsDirty(Root("P1")));
    DocumentOf(Root("P30"))->SetDirty(TRUE);
    EXPECT_TRUE(IsDirty(Root("P1")));
}

TEST_F(ArchiveUtil, TheRootFileIsNamedByThePdmObject)
{
    Update(File("CMIArchiveFile", "1", "box.cmi", Info({{"QtbArchiveRootFileName", "p.CATProduct"}})) +
           File("CMIArchiveFile", "2", "other.cmi"));
    CATUnicodeString usName;
    EXPECT_THAT(QTBArchiveUtil::GetRootFileName(PdmNode("1"), &usName), Succeeds());
    EXPECT_EQ(usName, "p.CATProduct");
    EXPECT_THAT(QTBArchiveUtil::GetRootFileName(PdmNode("2"), &usName), FailsQuietly());
    EXPECT_THAT(QTBArchiveUtil::GetRootFileName(QTBIPdmNode_var(), &usName), FailsQuietly());
    EXPECT_EQ(QTBArchiveUtil::GetRootFileName(PdmNode("1"), nullptr), E_POINTER);
}

} // namespace

#include <filesystem>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "QTBDocUtil.h"
#include "QTBProductSession.h"
#include "QTBTestFolder.h"
#include "QTBTestWindow.h"

namespace {

class ProductDocUtil : public QTBProductSession
{
protected:
    static std::string DocumentFor(const CATIProduct_var& spProduct, const char* partNumber)
    {
        CATDocument* pDocument = nullptr;
        const HRESULT hr = QTBDocUtil::CmiGetDocForProduct(spProduct, partNumber, &pDocument);
        EXPECT_EQ(SUCCEEDED(hr), pDocument != nullptr);
        return pDocument != nullptr ? ToText(pDocument->GetStorageName()) : "none";
    }

    static bool NeedsToBeSaved(const std::string& path, unsigned char bIgnoreDocuments = FALSE,
                               unsigned char bCompareContent = FALSE)
    {
        unsigned char bNeeds = 7;
        EXPECT_THAT(QTBDocUtil::DocumentNeedsToBeSavedInPdm(path.c_str(), &bNeeds, bIgnoreDocuments, bCompareContent),
                    Succeeds());
        EXPECT_NE(bNeeds, 7);
        return bNeeds != FALSE;
    }
};

TEST_F(ProductDocUtil, ARootProductIsFoundByItsPartNumber)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="c" name="C.1"/></product>
            <product id="c" file="c.CATPart" partNumber="C"/>)");
    CATIProduct_var spRoot;
    EXPECT_THAT(QTBDocUtil::GetPsnDocumentInSession("P", &spRoot), Succeeds());
    EXPECT_EQ(spRoot->GetPartNumber(), "P");
    EXPECT_THAT(QTBDocUtil::GetPsnDocumentInSession("C", &spRoot), Succeeds());
    EXPECT_TRUE(spRoot->GetFatherProduct() == NULL_var);
    EXPECT_THAT(QTBDocUtil::GetPsnDocumentInSession("none", &spRoot), FailsQuietly());
    EXPECT_THAT(QTBDocUtil::GetPsnDocumentInSession("", &spRoot), FailsQuietly());
    EXPECT_EQ(QTBDocUtil::GetPsnDocumentInSession("P", nullptr), E_POINTER);
}

TEST_F(ProductDocUtil, ADocumentHasItsRootProduct)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"/>)");
    CATIProduct_var spRoot;
    EXPECT_THAT(QTBDocUtil::GetDocumentRootProduct(*DocumentOf(Root("P")), &spRoot), Succeeds());
    EXPECT_TRUE(spRoot == Root("P"));
    EXPECT_EQ(QTBDocUtil::GetDocumentRootProduct(*DocumentOf(Root("P")), nullptr), E_POINTER);
    const QTBTestWindow window;
    EXPECT_THAT(QTBDocUtil::GetDocumentRootProduct(*window.GetFrmWindow()->GetEditor()->GetDocument(), &spRoot),
                FailsQuietly());
}

TEST_F(ProductDocUtil, AProductHasTheDocumentThatIsInSession)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="v" name="V.1"/><instance of="l" name="L.1"/><instance of="e" name="E.1"/>
            </product>
            <product id="c" file="c.CATPart" partNumber="C"/>
            <product id="v" file="v.CATPart" shape="v.cgr" link="visualization"/>
            <product id="l" file="l.CATPart" link="broken"/><component id="e" partNumber="E"/>)");
    EXPECT_EQ(DocumentFor(Root("C"), "C"), "/data/c.CATPart");
    EXPECT_EQ(DocumentFor(At("P", {"V.1"}), ""), "/data/v.cgr");
    EXPECT_EQ(DocumentFor(At("P", {"E.1"}), "E"), "/data/p.CATProduct");
}

TEST_F(ProductDocUtil, AProductWithoutDocumentHasThatOfItsPartNumber)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="l" name="L.1"/></product>
            <product id="c" file="c.CATPart" partNumber="C"/><product id="l" file="l.CATPart" link="broken"/>)");
    EXPECT_EQ(DocumentFor(At("P", {"L.1"}), "C"), "/data/c.CATPart");
    EXPECT_EQ(DocumentFor(At("P", {"L.1"}), "none"), "none");
    EXPECT_EQ(DocumentFor(At("P", {"L.1"}), ""), "none");
    EXPECT_EQ(DocumentFor(CATIProduct_var(), "C"), "none");
    EXPECT_EQ(QTBDocUtil::CmiGetDocForProduct(Root("C"), "C", nullptr), E_POINTER);
}

TEST_F(ProductDocUtil, AFileThatWasNotExchangedNeedsToBeSaved)
{
    const QTBTestFolder folder;
    EXPECT_FALSE(NeedsToBeSaved(folder.GetPath("a.CATPart")));
    EXPECT_TRUE(NeedsToBeSaved(folder.Write("a.CATPart", "text")));
}

TEST_F(ProductDocUtil, AnExchangedFileNeedsToBeSavedOnceItChanged)
{
    const QTBTestFolder folder;
    const std::string path = folder.Write("a.CATPart", "text");
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    EXPECT_FALSE(NeedsToBeSaved(path));
    folder.Write("a.CATPart", "TEXT");
    EXPECT_TRUE(NeedsToBeSaved(path));
    EXPECT_TRUE(NeedsToBeSaved(path, FALSE, TRUE));
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    EXPECT_FALSE(NeedsToBeSaved(path));
    folder.Write("a.CATPart", "longer text");
    EXPECT_TRUE(NeedsToBeSaved(path, FALSE, TRUE));
    folder.Remove("a.CATPart");
    EXPECT_FALSE(NeedsToBeSaved(path));
}

TEST_F(ProductDocUtil, AFileWrittenAnewWithTheSameContentIsNoDifferenceWhenTheContentIsCompared)
{
    const QTBTestFolder folder;
    const std::string path = folder.Write("a.CATPart", std::string(200000, 'x'));
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    folder.Write("a.CATPart", std::string(200000, 'x'));
    EXPECT_TRUE(NeedsToBeSaved(path, FALSE, FALSE));
    EXPECT_FALSE(NeedsToBeSaved(path, FALSE, TRUE));
    folder.Write("a.CATPart", std::string(199999, 'x') + "y");
    EXPECT_TRUE(NeedsToBeSaved(path, FALSE, TRUE));
}

TEST_F(ProductDocUtil, AFileIsTheSameUnderEachOfItsPaths)
{
    const QTBTestFolder folder;
    const std::string path = folder.Write("a.CATPart", "text");
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    EXPECT_FALSE(NeedsToBeSaved(folder.GetPath() + "/./a.CATPart"));
    std::filesystem::create_symlink(path, folder.GetPath("link.CATPart"));
    EXPECT_FALSE(NeedsToBeSaved(folder.GetPath("link.CATPart")));
}

TEST_F(ProductDocUtil, ADocumentWithChangesNeedsToBeSavedUnlessDocumentsAreIgnored)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P" dirty="true"/>)");
    EXPECT_TRUE(NeedsToBeSaved("/data/p.CATProduct"));
    EXPECT_FALSE(NeedsToBeSaved("/data/p.CATProduct", TRUE));
    DocumentOf(Root("P"))->SetDirty(FALSE);
    EXPECT_FALSE(NeedsToBeSaved("/data/p.CATProduct"));
}

TEST_F(ProductDocUtil, WhatWasExchangedIsForgottenWithTheSession)
{
    const QTBTestFolder folder;
    const std::string path = folder.Write("a.CATPart", "text");
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    QTBGlobVarsUtil::EndSession();
    EXPECT_TRUE(NeedsToBeSaved(path));
}

TEST_F(ProductDocUtil, WhatCannotBeReadIsAnErrorThatNamesIt)
{
    const QTBTestFolder folder;
    unsigned char bNeeds = FALSE;
    EXPECT_THAT(QTBDocUtil::DocumentNeedsToBeSavedInPdm(folder.GetPath().c_str(), &bNeeds, FALSE, FALSE),
                FailsWith("FileNotReadableERR_1003", folder.GetPath().c_str()));
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(folder.GetPath().c_str()),
                FailsWith("FileNotReadableERR_1003", folder.GetPath().c_str()));
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(folder.GetPath("none").c_str()),
                FailsWith("FileNotReadableERR_1003", folder.GetPath("none").c_str()));
    const std::string device = "/dev/null";
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(device.c_str()), FailsWith("FileNotReadableERR_1003", device.c_str()));
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(""), FailsQuietly());
    EXPECT_THAT(QTBDocUtil::DocumentNeedsToBeSavedInPdm("", &bNeeds, FALSE, FALSE), FailsQuietly());
    EXPECT_THAT(QTBDocUtil::DocumentNeedsToBeSavedInPdm("/data/a", nullptr, FALSE, FALSE), FailsQuietly());
}

} // namespace

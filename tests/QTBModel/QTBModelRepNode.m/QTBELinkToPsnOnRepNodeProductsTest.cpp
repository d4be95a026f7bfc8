#include "QTBELinkToPsnOnRepNode.h"

#include <map>
#include <memory>

#include <gmock/gmock.h>

#include "CATIPrdLink.h"
#include "QTBGlobVarsUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBMatchers.h"
#include "QTBProductSession.h"
#include "QTBReplacedExtension.h"
#include "QTBTestEnvironment.h"
#include "QTBTestWindow.h"
#include "TIECATIPrdLink.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// Links that name a file for each part number.
class NamedLink : public CATBaseUnknown
{
public:
    inline static std::map<std::string, const char*> s_FileNames;

    HRESULT GetLinkState(CATPrdLinkState* pState)
    {
        *pState = CATPrdLinkState::Loaded;
        return S_OK;
    }
    HRESULT GetLinkedFileName(CATUnicodeString* pusStorageName)
    {
        *pusStorageName = s_FileNames[std::string(CATIProduct_var(this)->GetPartNumber().View())];
        return S_OK;
    }
    HRESULT GetDocument(CATDocument**) { return E_FAIL; }
    HRESULT GetShapeRepDocument(CATDocument**) { return E_FAIL; }
    HRESULT LoadDocument() { return E_FAIL; }
    HRESULT GetDesignTables(CATListValCATUnicodeString*, CATListValCATUnicodeString*) { return E_FAIL; }
};

// The products of a window's rep nodes: N1 (B.2 B.1 D.9), each B with C.1 and the drawing D.1.
class ProductsOfRepNode : public QTBProductSession
{
protected:
    void SetUp() override
    {
        QTBProductSession::SetUp();
        Open(R"(
            <product id="p" file="p.CATProduct" partNumber="N1">
              <instance of="b" name="B.2"/><instance of="b" name="B.1"/><instance of="d" name="D.9"/>
            </product>
            <product id="b" file="b.CATProduct" partNumber="N2">
              <instance of="c" name="C.1"/><instance of="d" name="D.1"/>
            </product>
            <product id="c" file="c.CATPart" partNumber="N3"/>
            <product id="d" file="d.CATDrawing" partNumber="N4"/>)");
        Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + NumberedPart("C", "N3") +
               PartPart("AB", "A", "B", R"(<a name="InstanceName" type="list"><v>B.1</v><v>B.2</v></a>)") +
               Usage("BC", "B", "C", "C.1") + File("CATDrawingFile", "D", "d.CATDrawing") +
               Relation("PartFile", "BD", "B", "D"));
        m_pWindow = std::make_unique<QTBTestWindow>();
    }
    void TearDown() override
    {
        m_pWindow.reset();
        QTBProductSession::TearDown();
    }

    QTBILinkToPsn_var LinkOf(const char* key) const { return m_pWindow->Find(FindNode(key)); }

    // Instance names from the root down, which is named by its part number.
    static std::string PathOf(const CATIProduct_var& spProduct)
    {
        const CATIProduct_var spFather = spProduct->GetFatherProduct();
        return spFather != NULL_var ? PathOf(spFather) + "/" + NameOf(spProduct) : NameOf(spProduct);
    }
    // What stands in the list before is not among them.
    std::vector<std::string> ProductsOf(const char* key) const
    {
        unsigned char bExist = 7;
        CATListValCATBaseUnknown_var products;
        products.Append(Root("N4"));
        EXPECT_THAT(LinkOf(key)->CorrespondingPsnNodesExist(&bExist, &products, nullptr), Succeeds());
        EXPECT_EQ(bExist, products.Size() > 0 ? TRUE : FALSE);
        std::vector<std::string> paths;
        for (const CATBaseUnknown_var& spProduct : products) {
            paths.push_back(PathOf(spProduct));
        }
        return paths;
    }

    // Opens a document of the folder of files exchanged with the PDM system: X (Y.1 Y.2 Z.1).
    static void OpenExchanged()
    {
        QTBGlobVarsUtil::SetExMapFolder("/exchange");
        Open(R"(
                <product id="x" file="x.CATProduct" partNumber="X">
                  <instance of="y" name="Y.1"/><instance of="y" name="Y.2"/><instance of="z" name="Z.1"/>
                </product>
                <product id="y" file="y.CATPart" partNumber="Y"/>
                <product id="z" file="z.CATPart" partNumber="Z"/>)",
             "/exchange");
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(ProductsOfRepNode, UnderARelationOfTwoInstancesAreBothInTheOrderOfTheCadSystem)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    EXPECT_THAT(ProductsOf("B"), ElementsAre("N1/B.2", "N1/B.1"));
    EXPECT_THAT(ProductsOf("AB"), ElementsAre("N1/B.2", "N1/B.1")) << "a relation has those of its part";
}

TEST_F(ProductsOfRepNode, AreNoneBeyondTheLimitOnProducts)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    {
        const QTBTestEnvironment limit("QTB_MAX_PRODUCTS", "5");
        EXPECT_THAT(ProductsOf("C"), ElementsAre("N1/B.2/C.1", "N1/B.1/C.1")) << "the root, two of B, two of C";
    }
    const QTBTestEnvironment limit("QTB_MAX_PRODUCTS", "4");
    EXPECT_THAT(ProductsOf("C"), IsEmpty());
}

TEST_F(ProductsOfRepNode, OfARelationOfManyInstancesAreThoseOfItsNames)
{
    std::string names;
    std::string instances;
    std::vector<std::string> expected;
    for (int i = 1; i <= 40; ++i) {
        const std::string name = "T." + std::to_string(i);
        names += "<v>" + name + "</v>";
        instances += "<instance of=\"t\" name=\"" + name + "\"/>";
        expected.push_back("M1/" + name);
    }
    Open("<product id=\"q\" file=\"q.CATProduct\" partNumber=\"M1\">" + instances +
         R"(<instance of="t" name="T.0"/></product><product id="t" file="t.CATPart" partNumber="M3"/>)");
    Update(NumberedPart("Q", "M1") + NumberedPart("T", "M3") +
           PartPart("QT", "Q", "T", "<a name=\"InstanceName\" type=\"list\">" + names + "</a>"));
    m_pWindow->Show(FindNode("Q"), {"PartPart"});
    EXPECT_EQ(ProductsOf("T"), expected);
}

TEST_F(ProductsOfRepNode, AreNoneWhenAPartOnTheWayHasAnotherNumber)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    EXPECT_THAT(ProductsOf("C"), ElementsAre("N1/B.2/C.1", "N1/B.1/C.1"));
    EXPECT_THAT(Root("N2")->SetPartNumber("OTHER"), Succeeds());
    const DebugCapture capture;
    EXPECT_THAT(ProductsOf("C"), IsEmpty());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBELinkToPsnOnRepNode::GetTargetPsnNodes -> InstanceInfoIndex:2, "
                         "usCurrentParentPartNumber:[OTHER] !=  usExpectedParentPartNumber:[N2] -> returning "
                         "unsuccessfully"));
}

TEST_F(ProductsOfRepNode, AreNoneWhenALaterBranchOfThePathFailsThoughAnEarlierOneLedToSome)
{
    Open(R"(
        <product id="q" file="q.CATProduct" partNumber="M1">
          <instance of="r" name="R.1"/><instance of="s" name="R.2"/>
        </product>
        <product id="r" file="r.CATProduct" partNumber="M2"><instance of="t" name="T.1"/></product>
        <product id="s" file="s.CATProduct" partNumber="OTHER"><instance of="t" name="T.1"/></product>
        <product id="t" file="t.CATPart" partNumber="M3"/>)");
    Update(NumberedPart("Q", "M1") + NumberedPart("R", "M2") + NumberedPart("T", "M3") +
           PartPart("QR", "Q", "R", R"(<a name="InstanceName" type="list"><v>R.1</v><v>R.2</v></a>)") +
           Usage("RT", "R", "T", "T.1"));
    m_pWindow->Show(FindNode("Q"), {"PartPart"});
    EXPECT_THAT(ProductsOf("R"), ElementsAre("M1/R.1", "M1/R.2"));
    {
        const DebugCapture capture;
        EXPECT_THAT(ProductsOf("T"), IsEmpty());
        EXPECT_THAT(capture.Lines(),
                    Contains("QTBELinkToPsnOnRepNode::GetTargetPsnNodes -> InstanceInfoIndex:2, "
                             "usCurrentParentPartNumber:[OTHER] !=  usExpectedParentPartNumber:[M2] -> returning "
                             "unsuccessfully"));
    }
    EXPECT_THAT(Root("OTHER")->SetPartNumber("M2"), Succeeds());
    EXPECT_THAT(ProductsOf("T"), ElementsAre("M1/R.1/T.1", "M1/R.2/T.1"));

    EXPECT_THAT(At("M1", {"R.2"})->RemoveChild(At("M1", {"R.2", "T.1"})), Succeeds());
    const DebugCapture capture;
    EXPECT_THAT(ProductsOf("T"), IsEmpty());
    EXPECT_THAT(capture.Lines(), Contains("QTBELinkToPsnOnRepNode::GetTargetPsnNodes -> no PSN child nodes found for "
                                          "these instance names:"));
}

TEST_F(ProductsOfRepNode, AreThoseOfTheDocumentNearestTheRoot)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    EXPECT_THAT(ProductsOf("C"), ElementsAre("N1/B.2/C.1", "N1/B.1/C.1"));
    EXPECT_THAT(Root("N1")->SetPartNumber("OTHER"), Succeeds());
    EXPECT_THAT(ProductsOf("C"), ElementsAre("N2/C.1")) << "there was a deeper one";
    EXPECT_THAT(Root("N2")->SetPartNumber("OTHER"), Succeeds());
    EXPECT_THAT(ProductsOf("C"), ElementsAre("N3")) << "and one of the part itself";
}

TEST_F(ProductsOfRepNode, AreCountedInTheDebugOutputWhenTheFirstOfSeveralIsGiven)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    unsigned char bExists = FALSE;
    CATIProduct_var spProduct;
    {
        const DebugCapture capture;
        EXPECT_THAT(LinkOf("C")->CorrespondingPsnNodeExists(&bExists, &spProduct), Succeeds());
        EXPECT_EQ(bExists, TRUE);
        EXPECT_EQ(PathOf(spProduct), "N1/B.2/C.1");
        EXPECT_THAT(capture.Lines(), Contains("QTBELinkToPsnOnRepNode::CorrespondingPsnNodeExists -> 2 corresponding "
                                              "PSN nodes exist"));
    }
    const DebugCapture capture;
    EXPECT_THAT(LinkOf("A")->CorrespondingPsnNodeExists(&bExists, &spProduct), Succeeds());
    EXPECT_EQ(PathOf(spProduct), "N1");
    EXPECT_THAT(capture.Text(), Not(HasSubstr("corresponding PSN nodes exist")));
}

TEST_F(ProductsOfRepNode, OfARootPartAreTheRootOfTheDocumentWithItsNumber)
{
    m_pWindow->Show(FindNode("A"), {"PartPart"});
    m_pWindow->Show(FindNode("C"), {});
    EXPECT_THAT(ProductsOf("A"), ElementsAre("N1"));
    unsigned char bExists = FALSE;
    CATIProduct_var spProduct;
    EXPECT_THAT(LinkOf("A")->CorrespondingPsnNodeExists(&bExists, &spProduct), Succeeds());
    EXPECT_EQ(bExists, TRUE);
    EXPECT_TRUE(spProduct == Root("N1"));
}

TEST_F(ProductsOfRepNode, OfADrawingUnderAPartAreThoseOfItsFileBelowTheProductsOfThePart)
{
    m_pWindow->Show(FindNode("A"), {"PartPart", "PartFile"});
    EXPECT_THAT(ProductsOf("D"), ElementsAre("N1/B.2/D.1", "N1/B.1/D.1")) << "and not N1/D.9, which is not the part's";
}

TEST_F(ProductsOfRepNode, OfAFileBelowNoPartAreTheRootOfTheDocumentWithItsName)
{
    OpenExchanged();
    Update(File("CATProductFile", "FX", "x.CATProduct"));
    m_pWindow->Show(FindNode("FX"), {});
    EXPECT_THAT(ProductsOf("FX"), ElementsAre("X"));
}

TEST_F(ProductsOfRepNode, OfAFileBelowNoPartAreThoseOfItsNameBelowARootOfAnotherName)
{
    const QTBReplacedExtension namedLink("ASMPRODUCT", CATIPrdLink::MetaObject(),
                                         QTBFactoryOf<TIECATIPrdLink, CATIPrdLink, NamedLink>());
    NamedLink::s_FileNames = {{"X", "/other.CATProduct"}, {"Y", "/x.CATProduct"}, {"Z", "/z.CATPart"}};
    OpenExchanged();
    Update(File("CATProductFile", "FX", "x.CATProduct"));
    m_pWindow->Show(FindNode("FX"), {});
    EXPECT_THAT(ProductsOf("FX"), ElementsAre("X/Y.1", "X/Y.2"));
    NamedLink::s_FileNames["Y"] = "";
    EXPECT_THAT(ProductsOf("FX"), IsEmpty());
    NamedLink::s_FileNames["X"] = "/x.CATProduct";
    EXPECT_THAT(ProductsOf("FX"), ElementsAre("X"));
}

TEST_F(ProductsOfRepNode, OfAFileWhoseDocumentIsNotInSessionAreNone)
{
    OpenExchanged();
    Update(File("CATProductFile", "FX", "missing.CATProduct"));
    m_pWindow->Show(FindNode("FX"), {});
    EXPECT_THAT(ProductsOf("FX"), IsEmpty());
}

TEST_F(ProductsOfRepNode, OfAnArchiveAreThoseOfItsRootFile)
{
    OpenExchanged();
    Update(File("CMIArchiveFile", "Z", "box.zip", Info({{"QtbArchiveRootFileName", "x.CATProduct"}})));
    m_pWindow->Show(FindNode("Z"), {});
    EXPECT_THAT(ProductsOf("Z"), ElementsAre("X"));
}

TEST_F(ProductsOfRepNode, ThatAreNoneCannotBeHighlighted)
{
    Update(NumberedPart("E", "N9"));
    m_pWindow->Show(FindNode("E"), {});
    EXPECT_THAT(ProductsOf("E"), IsEmpty());
    CATFrmWindow* pFrmWindow = nullptr;
    EXPECT_THAT(LinkOf("E")->HighlightPsnNodes(TRUE, TRUE, &pFrmWindow), FailsAssertion("bExist"));
    EXPECT_EQ(pFrmWindow, nullptr);
}

} // namespace

#include "QTBELinkToQtbOnASMPRODUCT.h"

#include <gmock/gmock.h>

#include "QTBILinkToQtb.h"
#include "QTBMatchers.h"
#include "QTBProductSession.h"
#include "QTBTestWindow.h"

namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

constexpr const char* GET = "QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> ";

// P with the part B (N2), the visualized V and the part in a document that was never saved.
class LinkToQtb : public QTBProductSession
{
protected:
    void SetUp() override
    {
        QTBProductSession::SetUp();
        Open(R"(
            <product id="p" file="p.CATProduct" partNumber="N1">
              <instance of="b" name="B.1"/><instance of="v" name="V.1"/><instance of="n" name="N.1"/>
            </product>
            <product id="b" file="b.CATPart" partNumber="N2"/>
            <product id="v" file="v.CATPart" shape="v.cgr" partNumber="N3" link="visualization"/>
            <product id="n" type="CATPart"/>)");
    }

    static std::string PartNumberOf(const CATIProduct_var& spProduct, unsigned char bLoad = FALSE)
    {
        CATUnicodeString usPartNumber;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->GetCatiaPartNumberForLink(&usPartNumber, bLoad), Succeeds());
        return ToText(usPartNumber);
    }
    static void Link(const CATIProduct_var& spProduct, const char* partNumber)
    {
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->SetCatiaPartNumberForLink(partNumber), Succeeds());
    }
    static std::string WithPrefix(const std::string& text) { return GET + text; }
};

TEST_F(LinkToQtb, SettingANumberWritesItToTheProductAndTellsOfAChange)
{
    const CATIProduct_var spProduct = Root("N1");
    const DebugCapture capture;
    Link(spProduct, "N1");
    EXPECT_THAT(capture.Lines(), IsEmpty());
    Link(spProduct, "N9");
    EXPECT_THAT(capture.Lines(), Contains("QTBELinkToQtbOnASMPRODUCT::SetCatiaPartNumberForLink -> current PSN part "
                                          "number:[N1], new part number:[N9]"));
    EXPECT_EQ(ToText(spProduct->GetPartNumber()), "N9");
}

TEST_F(LinkToQtb, TheNumberOfTheCadSystemWinsAndDifferencesAreTold)
{
    const CATIProduct_var spProduct = Root("N1");
    EXPECT_EQ(PartNumberOf(spProduct), "N1");
    Link(spProduct, "N8");
    spProduct->SetPartNumber("N9");
    const DebugCapture capture;
    EXPECT_EQ(PartNumberOf(spProduct), "N9");
    EXPECT_THAT(capture.Lines(), IsSupersetOf({WithPrefix("part number (PSN) has changed from [N1] to [N9]"),
                                               WithPrefix("part number (PDM):[N8], part number (PSN):[N9]")}));
}

TEST_F(LinkToQtb, AVisualizedProductHasItsNumberFromTheFileNameUntilItIsLoaded)
{
    const CATIProduct_var spProduct = At("N1", {"V.1"});
    {
        const DebugCapture capture;
        EXPECT_EQ(PartNumberOf(spProduct), "v");
        EXPECT_THAT(capture.Lines(),
                    IsSupersetOf({WithPrefix("CATPart in visualization mode"),
                                  WithPrefix("getting the part number from the file name [v.CATPart]")}));
    }
    const DebugCapture capture;
    EXPECT_EQ(PartNumberOf(spProduct, TRUE), "N3");
    EXPECT_THAT(capture.Lines(), Contains(WithPrefix("loading the CATIA document")));
}

TEST_F(LinkToQtb, AVisualizedProductHasTheNumberThatItWasLinkedTo)
{
    const CATIProduct_var spProduct = At("N1", {"V.1"});
    QTBILinkToQtb_var(spProduct)->SetCatiaPartNumberForLink("N7");
    EXPECT_EQ(PartNumberOf(spProduct), "N7");
}

TEST_F(LinkToQtb, AProductWithoutNumberAndFileHasNone)
{
    const CATIProduct_var spProduct = At("N1", {"N.1"});
    const DebugCapture capture;
    CATUnicodeString usPartNumber;
    EXPECT_THAT(QTBILinkToQtb_var(spProduct)->GetCatiaPartNumberForLink(&usPartNumber, FALSE), FailsQuietly());
    EXPECT_THAT(capture.Lines(), IsSupersetOf({WithPrefix("getting the part number from the file name []"),
                                               WithPrefix("usFileName == \"\" !")}));
}

TEST_F(LinkToQtb, ARelationOfTheInstanceNameIsRejectedWhenItPlacesAnotherPart)
{
    Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + NumberedPart("C", "Other") +
           Usage("AC", "A", "C", "B.1"));
    const DebugCapture capture;
    unsigned char bExists = FALSE;
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(QTBILinkToQtb_var(At("N1", {"B.1"}))->ProdStrucPdmNodeExists(&bExists, &spIPdmNode, nullptr),
                Succeeds());
    // The part itself stands in.
    EXPECT_EQ(bExists, TRUE);
    EXPECT_EQ(KeyOf(spIPdmNode), "B");
    EXPECT_THAT(capture.Lines(),
                IsSupersetOf({"QTBELinkToQtbOnASMPRODUCT::GetQtbStructureNodes -> ",
                              "Wrong part number (same instance name, different part numbers -> different nodes)",
                              "part numbers:'N2'(PSN) / 'Other'(PDM)"}));
}

TEST_F(LinkToQtb, ThePlaceInTheTreeIsFoundByInstanceNameAndOnlyWhenItIsTheOnlyOne)
{
    constexpr const char* EXPAND = "QTBELinkToQtbOnASMPRODUCT::ExpandToChildPart -> ";
    Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + Usage("AB", "A", "B", "B.1"));
    const QTBTestWindow window;
    const auto highlight = [&] {
        return QTBILinkToQtb_var(At("N1", {"B.1"}))->HighlightProdStrucNode(TRUE, FALSE, nullptr);
    };
    {
        // The tree shows the part alone.
        window.Show(FindNode("A"), {});
        const DebugCapture capture;
        EXPECT_THAT(highlight(), FailsAssertion("ProdStrucRepNodes.Size() > 0"));
        EXPECT_THAT(capture.Lines(), Contains(EXPAND + std::string("instance name [B.1] not found, returning")));
    }
    window.Show(FindNode("A"), {"PartPart"});
    EXPECT_THAT(highlight(), Succeeds());
    Update(Usage("AB2", "A", "B", "B.1"));
    window.Show(FindNode("A"), {"PartPart"});
    const DebugCapture capture;
    EXPECT_THAT(highlight(), FailsAssertion("ProdStrucRepNodes.Size() > 0"));
    EXPECT_THAT(capture.Lines(), Contains(EXPAND + std::string("instance name [B.1] found more than once, returning")));
}

} // namespace

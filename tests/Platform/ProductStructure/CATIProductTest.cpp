#include "CATIProduct.h"

#include <chrono>
#include <vector>

#include "CATProductTestSession.h"
#include "QTBTestLateType.h"

using Products = CATProductTestSession;

namespace {

constexpr const char* ASSEMBLY = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="a" name="A.1"/><instance of="b" name="B.1"/><instance of="a" name="A.2"/>
    </product>
    <product id="a" file="a.CATProduct" partNumber="A"><instance of="b" name="B.1"/></product>
    <product id="b" file="b.CATPart" partNumber="B" nomenclature="bolt" description="a bolt" definition="forged"
             revision="C"/>)";

TEST_F(Products, ARootIsAReferenceWithoutFatherAndName)
{
    Open(ASSEMBLY);
    const CATIProduct_var spRoot = Root("P");
    CATUnicodeString usName;
    EXPECT_EQ(spRoot->IsReference(), S_OK);
    EXPECT_TRUE(spRoot->GetFatherProduct() == NULL_var);
    EXPECT_EQ(spRoot->GetPrdInstanceName(&usName), E_FAIL);
    EXPECT_EQ(spRoot->SetPrdInstanceName("x"), E_FAIL);
    EXPECT_TRUE(spRoot->GetReferenceProduct() == spRoot);
    EXPECT_STREQ(spRoot->IsA(), "ASMPRODUCT");
}

TEST_F(Products, ChildrenComeInTheOrderOfTheFileAndKnowTheirFather)
{
    Open(ASSEMBLY);
    const CATIProduct_var spRoot = Root("P");
    EXPECT_EQ(ChildNames(spRoot), "A.1 B.1 A.2 ");
    for (const CATBaseUnknown_var& spChild : Children(spRoot)) {
        const CATIProduct_var spInstance(spChild);
        EXPECT_EQ(spInstance->IsReference(), E_FAIL);
        EXPECT_TRUE(spInstance->GetFatherProduct() == spRoot);
    }
    EXPECT_EQ(Child(spRoot, 2)->GetPartNumber(), "B");
    EXPECT_TRUE(Child(spRoot, 2)->GetReferenceProduct() == Root("B"));
    EXPECT_EQ(ChildNames(Child(spRoot, 2)), "");
}

TEST_F(Products, EachPlaceHasOneProductThatIsFoundAgain)
{
    Open(ASSEMBLY);
    const CATIProduct_var spRoot = Root("P");
    const CATIProduct_var spBelowFirst = Child(Child(spRoot, 1), 1);
    const CATIProduct_var spBelowSecond = Child(Child(spRoot, 3), 1);
    EXPECT_EQ(Name(spBelowFirst), "B.1");
    EXPECT_EQ(Name(spBelowSecond), "B.1");
    EXPECT_FALSE(spBelowFirst == spBelowSecond);
    EXPECT_TRUE(Child(Child(spRoot, 1), 1) == spBelowFirst);
    EXPECT_TRUE(Child(Child(spRoot, 3), 1) == spBelowSecond);
    EXPECT_TRUE(spBelowSecond->GetFatherProduct()->GetFatherProduct() == spRoot);
    EXPECT_TRUE(spBelowFirst->GetReferenceProduct() == spBelowSecond->GetReferenceProduct());
}

TEST_F(Products, AProductThatNobodyHoldsStaysTheSameAsLongAsItsDocumentIsInSession)
{
    Open(ASSEMBLY);
    const CATBaseUnknown* pFirst = CATBaseUnknown_var(Child(Child(Root("P"), 1), 1)).Get();
    EXPECT_EQ(CATBaseUnknown_var(Child(Child(Root("P"), 1), 1)).Get(), pFirst);
}

TEST_F(Products, AReferenceHasATreeOfItsOwn)
{
    Open(ASSEMBLY);
    const CATIProduct_var spReference = Child(Root("P"), 1)->GetReferenceProduct();
    EXPECT_TRUE(spReference->GetFatherProduct() == NULL_var);
    EXPECT_TRUE(Child(spReference, 1)->GetFatherProduct() == spReference);
    EXPECT_FALSE(Child(spReference, 1) == Child(Child(Root("P"), 1), 1));
}

TEST_F(Products, TheTreeDocumentIsThatOfTheProductAtTheTop)
{
    Open(ASSEMBLY);
    CATDocument* pDocument = nullptr;
    EXPECT_EQ(CATProductServices::GetTreeDocument(Child(Child(Root("P"), 1), 1), &pDocument), S_OK);
    EXPECT_EQ(pDocument, DocumentOf(Root("P")));
    EXPECT_EQ(CATProductServices::GetTreeDocument(Child(Root("A"), 1), &pDocument), S_OK);
    EXPECT_EQ(pDocument, DocumentOf(Root("A")));
    EXPECT_EQ(CATProductServices::GetTreeDocument(NULL_var, &pDocument), E_FAIL);
    EXPECT_EQ(pDocument, nullptr);
}

TEST_F(Products, ChildrenAreAskedForByTheNameOfAnInterface)
{
    Open(ASSEMBLY);
    const CATIProduct_var spRoot = Root("P");
    const auto count = [&spRoot](const char* interfaceName) {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spRoot->GetChildren(interfaceName));
        return pChildren->Size();
    };
    EXPECT_EQ(count("CATIProduct"), 3);
    EXPECT_EQ(count("CATIPrdProperties"), 3);
    EXPECT_EQ(count("CATIEditor"), 0);
    EXPECT_EQ(count(nullptr), 0);
}

TEST_F(Products, APartNumberWrittenThroughAnInstanceIsThatOfTheReference)
{
    Open(ASSEMBLY);
    const CATIProduct_var spInstance = Child(Child(Root("P"), 1), 1);
    EXPECT_EQ(spInstance->SetPartNumber("B2"), S_OK);
    EXPECT_EQ(Child(Root("P"), 2)->GetPartNumber(), "B2");
    EXPECT_EQ(Root("B2")->GetPartNumber(), "B2");
    CATIProduct_var spRoot;
    EXPECT_EQ(CATProductServices::FindRootProduct("B", &spRoot), E_FAIL);
    EXPECT_TRUE(spRoot == NULL_var);
    EXPECT_TRUE(DocumentOf(spInstance)->IsDirty());
    EXPECT_FALSE(DocumentOf(Root("P"))->IsDirty());
    EXPECT_EQ(spInstance->SetPartNumber(""), E_FAIL);
    EXPECT_EQ(spInstance->GetPartNumber(), "B2");
}

TEST_F(Products, APartNumberMayHaveTenThousandCharacters)
{
    const std::string longNumber(10000, 'x');
    Open("<product id='p' file='p.CATPart' partNumber='" + longNumber + "'/>");
    EXPECT_EQ(Root(longNumber.c_str())->GetPartNumber().GetLengthInChar(), 10000);
    const std::string another = longNumber + "\xC3\xA9";
    EXPECT_EQ(Root(longNumber.c_str())->SetPartNumber(CATUnicodeString(std::string_view(another))), S_OK);
    EXPECT_EQ(Root(another.c_str())->GetPartNumber().GetLengthInChar(), 10001);
}

TEST_F(Products, OfSeveralRootsWithOnePartNumberThatOfTheFirstDocumentIsFound)
{
    Open("<product id='a' file='a.CATPart' partNumber='N'/><product id='b' file='b.CATPart' partNumber='N'/>");
    EXPECT_EQ(FileOf(Root("N")), "a.CATPart");
    CATDocumentServices::Remove(*DocumentOf(Root("N")));
    EXPECT_EQ(FileOf(Root("N")), "b.CATPart");
    CATDocumentServices::Remove(*DocumentOf(Root("N")));
    CATIProduct_var spRoot;
    EXPECT_EQ(CATProductServices::FindRootProduct("N", &spRoot), E_FAIL);
}

TEST_F(Products, ARenamedInstanceIsRenamedAtEveryPlaceOfItsFather)
{
    Open(ASSEMBLY);
    EXPECT_EQ(Child(Child(Root("P"), 1), 1)->SetPrdInstanceName("Bolt.7"), S_OK);
    EXPECT_EQ(ChildNames(Child(Root("P"), 3)), "Bolt.7 ");
    EXPECT_EQ(ChildNames(Root("A")), "Bolt.7 ");
    EXPECT_TRUE(DocumentOf(Root("A"))->IsDirty());
    EXPECT_FALSE(DocumentOf(Root("B"))->IsDirty());
    EXPECT_EQ(Child(Root("P"), 1)->SetPrdInstanceName(""), E_FAIL);
}

TEST_F(Products, PropertiesAreThoseOfTheReferenceAndLeaveTheDocumentClean)
{
    Open(ASSEMBLY);
    const CATIProduct_var spInstance = Child(Root("P"), 2);
    const CATIPrdProperties_var spProperties(spInstance);
    CATUnicodeString usValue;
    EXPECT_EQ(spInstance->GetNomenclature(&usValue), S_OK);
    EXPECT_EQ(usValue, "bolt");
    EXPECT_EQ(spInstance->GetDescriptionRef(&usValue), S_OK);
    EXPECT_EQ(usValue, "a bolt");
    EXPECT_EQ(spInstance->GetDefinition(&usValue), S_OK);
    EXPECT_EQ(usValue, "forged");
    EXPECT_EQ(spInstance->GetRevision(&usValue), S_OK);
    EXPECT_EQ(usValue, "C");

    EXPECT_EQ(spProperties->SetNomenclature("n"), S_OK);
    EXPECT_EQ(spProperties->SetDescriptionRef("d"), S_OK);
    EXPECT_EQ(spProperties->SetDefinition("f"), S_OK);
    EXPECT_EQ(spProperties->SetRevision("r"), S_OK);
    const CATIPrdProperties_var spOnReference(Root("B"));
    EXPECT_EQ(spOnReference->GetNomenclature(&usValue), S_OK);
    EXPECT_EQ(usValue, "n");
    EXPECT_EQ(spOnReference->GetDescriptionRef(&usValue), S_OK);
    EXPECT_EQ(usValue, "d");
    EXPECT_EQ(spOnReference->GetDefinition(&usValue), S_OK);
    EXPECT_EQ(usValue, "f");
    EXPECT_EQ(spOnReference->GetRevision(&usValue), S_OK);
    EXPECT_EQ(usValue, "r");
    EXPECT_FALSE(DocumentOf(spInstance)->IsDirty());
    EXPECT_EQ(spProperties->GetRevision(nullptr), E_POINTER);
}

TEST_F(Products, OnlyInstancesHaveAnInstanceDescription)
{
    Open(ASSEMBLY);
    const CATIPrdProperties_var spOnInstance(Child(Root("P"), 1));
    CATUnicodeString usValue("before");
    EXPECT_EQ(spOnInstance->GetDescriptionInst(&usValue), S_OK);
    EXPECT_EQ(usValue, "");
    EXPECT_EQ(spOnInstance->SetDescriptionInst("left"), S_OK);
    EXPECT_EQ(spOnInstance->GetDescriptionInst(&usValue), S_OK);
    EXPECT_EQ(usValue, "left");
    const CATIPrdProperties_var spOnReference(Root("A"));
    EXPECT_EQ(spOnReference->GetDescriptionInst(&usValue), E_FAIL);
    EXPECT_EQ(spOnReference->SetDescriptionInst("x"), E_FAIL);
}

TEST_F(Products, UserPropertiesOfInstanceAndReferenceAreKeptApart)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="b" name="B.1"><property name="k">of B.1</property></instance>
              <instance of="b" name="B.2"/>
            </product>
            <product id="b" file="b.CATPart" partNumber="B"><property name="k">of B</property></product>)");
    const CATIPrdProperties_var spFirst(Child(Root("P"), 1));
    const CATIPrdProperties_var spSecond(Child(Root("P"), 2));
    const CATIPrdProperties_var spReference(Root("B"));
    CATUnicodeString usValue;
    EXPECT_EQ(spFirst->GetUserProperty("k", &usValue), S_OK);
    EXPECT_EQ(usValue, "of B.1");
    EXPECT_EQ(spSecond->GetUserProperty("k", &usValue), E_FAIL);
    EXPECT_EQ(spReference->GetUserProperty("k", &usValue), S_OK);
    EXPECT_EQ(usValue, "of B");
    EXPECT_EQ(spSecond->SetUserProperty("k", ""), S_OK);
    EXPECT_EQ(spSecond->GetUserProperty("k", &usValue), S_OK);
    EXPECT_EQ(usValue, "");
    EXPECT_EQ(spSecond->SetUserProperty("", "x"), E_FAIL);
    EXPECT_EQ(spSecond->GetUserProperty("k", nullptr), E_POINTER);
}

TEST_F(Products, AnAddedChildStandsAtEveryPlaceOfItsFather)
{
    Open(ASSEMBLY);
    const CATIProduct_var spFirst = Child(Root("P"), 1);
    const CATIProduct_var spSecond = Child(Root("P"), 3);
    EXPECT_EQ(ChildNames(spSecond), "B.1 ");
    CATIProduct_var spChild;
    EXPECT_EQ(spFirst->AddChild(Child(Root("P"), 2), "B.2", &spChild), S_OK);
    EXPECT_EQ(Name(spChild), "B.2");
    EXPECT_TRUE(spChild->GetFatherProduct() == spFirst);
    EXPECT_TRUE(Child(spFirst, 2) == spChild);
    EXPECT_EQ(ChildNames(spSecond), "B.1 B.2 ");
    EXPECT_EQ(ChildNames(Root("A")), "B.1 B.2 ");
    EXPECT_TRUE(DocumentOf(Root("A"))->IsDirty());
    EXPECT_FALSE(DocumentOf(Root("P"))->IsDirty());
}

TEST_F(Products, AProductIsNotAddedWhereItWouldContainItself)
{
    Open(ASSEMBLY);
    for (const CATIProduct_var& spParent : {Root("P"), Child(Root("P"), 1), Root("B")}) {
        const HRESULT hr = spParent->AddChild(Root("P"), "Loop.1", nullptr);
        EXPECT_TRUE(FAILED(hr));
        const CATError* pError = CATError::CATGetLastError(hr, nullptr);
        ASSERT_NE(pError, nullptr);
        EXPECT_EQ(pError->GetMsgId(), "ProductContainsItselfERR_1001");
    }
    EXPECT_EQ(ChildNames(Root("P")), "A.1 B.1 A.2 ");
    EXPECT_EQ(Root("P")->AddChild(Root("B"), "", nullptr), E_FAIL);
    EXPECT_EQ(Root("P")->AddChild(NULL_var, "x", nullptr), E_FAIL);
}

TEST_F(Products, ARemovedChildGoesFromEveryPlaceAndTheOthersStayTheSame)
{
    Open(ASSEMBLY);
    const CATIProduct_var spLast = Child(Root("P"), 3);
    const CATIProduct_var spRemoved = Child(Root("P"), 1);
    const CATIProduct_var spBelow = Child(spRemoved, 1);
    EXPECT_EQ(Root("P")->RemoveChild(spRemoved), S_OK);
    EXPECT_EQ(ChildNames(Root("P")), "B.1 A.2 ");
    EXPECT_TRUE(Child(Root("P"), 2) == spLast);
    EXPECT_TRUE(spRemoved->GetFatherProduct() == NULL_var);
    EXPECT_EQ(ChildNames(spRemoved), "");
    EXPECT_TRUE(spBelow->GetFatherProduct() == NULL_var);
    EXPECT_EQ(Name(spRemoved), "A.1");
    EXPECT_EQ(spRemoved->GetPartNumber(), "A");
    EXPECT_EQ(spRemoved->SetPrdInstanceName("x"), E_FAIL);
    EXPECT_EQ(Root("P")->RemoveChild(spRemoved), E_FAIL);
    CATDocument* pDocument = nullptr;
    EXPECT_EQ(CATProductServices::GetTreeDocument(spRemoved, &pDocument), E_FAIL);

    // The same through one place, seen at another.
    const CATIProduct_var spOther = Child(Root("A"), 1);
    EXPECT_EQ(spLast->RemoveChild(Child(spLast, 1)), S_OK);
    EXPECT_TRUE(spOther->GetFatherProduct() == NULL_var);
    EXPECT_EQ(Root("A")->RemoveChild(spOther), E_FAIL);
    EXPECT_EQ(ChildNames(Root("A")), "");
}

TEST_F(Products, OnlyAChildCanBeRemoved)
{
    Open(ASSEMBLY);
    EXPECT_EQ(Root("P")->RemoveChild(Child(Child(Root("P"), 1), 1)), E_FAIL);
    EXPECT_EQ(Root("P")->RemoveChild(Root("A")), E_FAIL);
    EXPECT_EQ(Root("P")->RemoveChild(NULL_var), E_FAIL);
    EXPECT_EQ(ChildNames(Root("P")), "A.1 B.1 A.2 ");
}

TEST_F(Products, AComponentThatOnlyTakesTheLateTypeAsItsBaseHasNothingToGive)
{
    const QTBTestLateType lateType("TestProduct", "ASMPRODUCT");
    const CATBaseUnknown_var spComponent = lateType.Create();
    const CATIProduct_var spProduct(spComponent);
    const CATIPrdProperties_var spProperties(spComponent);
    const CATIPrdLink_var spLink(spComponent);
    ASSERT_TRUE(spProduct != NULL_var && spProperties != NULL_var && spLink != NULL_var);
    CATUnicodeString usValue;
    CATDocument* pDocument = nullptr;
    CATListValCATUnicodeString names;
    CATPrdLinkState state;
    EXPECT_TRUE(spProduct->GetFatherProduct() == NULL_var);
    EXPECT_TRUE(spProduct->GetReferenceProduct() == NULL_var);
    EXPECT_EQ(Children(spProduct).Size(), 0);
    EXPECT_EQ(spProduct->IsReference(), E_FAIL);
    EXPECT_EQ(spProduct->GetPartNumber(), "");
    EXPECT_EQ(spProduct->SetPartNumber("x"), E_FAIL);
    EXPECT_EQ(spProduct->GetRevision(&usValue), E_FAIL);
    EXPECT_EQ(spProduct->AddChild(spProduct, "x", nullptr), E_FAIL);
    EXPECT_EQ(spProduct->RemoveChild(spProduct), E_FAIL);
    EXPECT_EQ(spProperties->SetUserProperty("x", "y"), E_FAIL);
    EXPECT_EQ(spProperties->GetDescriptionInst(&usValue), E_FAIL);
    EXPECT_EQ(spLink->GetLinkState(&state), E_FAIL);
    EXPECT_EQ(spLink->GetLinkedFileName(&usValue), E_FAIL);
    EXPECT_EQ(spLink->GetDocument(&pDocument), E_FAIL);
    EXPECT_EQ(spLink->LoadDocument(), E_FAIL);
    EXPECT_EQ(spLink->GetDesignTables(&names, nullptr), E_FAIL);
    EXPECT_EQ(CATProductServices::GetTreeDocument(spProduct, &pDocument), E_FAIL);
}

TEST_F(Products, ManyChildrenAreAddedAndRemovedInReasonableTime)
{
    Open(ASSEMBLY);
    const auto begin = std::chrono::steady_clock::now();
    std::vector<CATIProduct_var> children(20000);
    for (CATIProduct_var& spChild : children) {
        ASSERT_EQ(Root("P")->AddChild(Root("B"), "B", &spChild), S_OK);
    }
    EXPECT_EQ(Children(Root("P")).Size(), 20003);
    for (const CATIProduct_var& spChild : children) {
        ASSERT_EQ(Root("P")->RemoveChild(spChild), S_OK);
    }
    EXPECT_EQ(ChildNames(Root("P")), "A.1 B.1 A.2 ");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST_F(Products, ProductsOfAClosedDocumentKeepTheirTextsOnly)
{
    Open(ASSEMBLY);
    const CATIProduct_var spRoot = Root("P");
    const CATIProduct_var spInstance = Child(spRoot, 1);
    CATDocumentServices::Remove(*DocumentOf(spRoot));
    CATPrdLinkState state;
    EXPECT_EQ(spRoot->GetPartNumber(), "P");
    EXPECT_EQ(ChildNames(spRoot), "");
    EXPECT_EQ(DocumentOf(spRoot), nullptr);
    EXPECT_EQ(CATIPrdLink_var(spRoot)->GetLinkState(&state), E_FAIL);
    EXPECT_EQ(FileOf(spRoot), "p.CATProduct");
    EXPECT_EQ(spRoot->AddChild(spRoot, "x", nullptr), E_FAIL);
    EXPECT_TRUE(spInstance->GetFatherProduct() == NULL_var);
    EXPECT_EQ(ChildNames(spInstance), "");
    EXPECT_EQ(spInstance->GetPartNumber(), "A");
    EXPECT_EQ(Name(spInstance), "A.1");
}

} // namespace

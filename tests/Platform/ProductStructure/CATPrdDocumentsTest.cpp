#include "CATApplicationFrame.h"
#include "CATFrmLayout.h"
#include "CATFrmObjectEditor.h"
#include "CATFrmWindow.h"
#include "CATInit.h"
#include "CATProductTestSession.h"

using ProductDocuments = CATProductTestSession;

namespace {

constexpr const char* VISUALIZED = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="s" name="S.1"/><instance of="s" name="S.2"/>
    </product>
    <product id="s" file="s.CATPart" shape="s.cgr" link="visualization" partNumber="S" nomenclature="screw"
             displayName="the screw"><designTable name="t"/></product>)";

CATPrdLinkState StateOf(const CATIProduct_var& spProduct)
{
    CATPrdLinkState state = CATPrdLinkState::Broken;
    EXPECT_EQ(CATIPrdLink_var(spProduct)->GetLinkState(&state), S_OK);
    return state;
}

TEST_F(ProductDocuments, HaveAStorageNameADisplayNameATypeAndADirtyFlag)
{
    Open(R"(<product id="a" file="/x/a.CATPRODUCT" partNumber="A" dirty="true" displayName="top"/>
            <product id="b" file="/x/b.model" partNumber="B"/>
            <product id="c" file="/x/c.any" type="CATDrawing" partNumber="C"/>
            <product id="d" type="CATPart" partNumber="D"/>)");
    EXPECT_EQ(DocumentOf(Root("A"))->GetStorageName(), "/x/a.CATPRODUCT");
    EXPECT_EQ(DocumentOf(Root("A"))->GetDisplayName(), "top");
    EXPECT_EQ(DocumentOf(Root("A"))->GetType(), "CATProduct");
    EXPECT_TRUE(DocumentOf(Root("A"))->IsDirty());
    EXPECT_EQ(DocumentOf(Root("B"))->GetDisplayName(), "b.model");
    EXPECT_EQ(DocumentOf(Root("B"))->GetType(), "V4Model");
    EXPECT_FALSE(DocumentOf(Root("B"))->IsDirty());
    EXPECT_EQ(DocumentOf(Root("C"))->GetType(), "CATDrawing");
    EXPECT_EQ(DocumentOf(Root("D"))->GetStorageName(), "");
    EXPECT_EQ(DocumentOf(Root("D"))->GetType(), "CATPart");
}

TEST_F(ProductDocuments, AreFoundByStorageNameFileNameAndRoot)
{
    Open(R"(<product id="a" file="/x/a.CATPart" partNumber="A"/><product id="b" file="/y/a.CATPart" partNumber="B"/>)");
    CATDocument* pDocument = nullptr;
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("/y/a.CATPart", &pDocument), S_OK);
    EXPECT_EQ(pDocument, DocumentOf(Root("B")));
    CATIProduct_var spRoot;
    EXPECT_EQ(CATProductServices::GetRootProduct(*pDocument, &spRoot), S_OK);
    EXPECT_TRUE(spRoot == Root("B"));
    pDocument->SetStorageName("/z/new.CATPart");
    EXPECT_EQ(FileOf(spRoot), "/z/new.CATPart");
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("/z/new.CATPart", &pDocument), S_OK);
    EXPECT_EQ(CATDocumentServices::GetDocumentInSession("/y/a.CATPart", &pDocument), E_FAIL);
    EXPECT_TRUE(CATDocumentServices::FileIsInSession("a.CATPart"));
    EXPECT_TRUE(CATDocumentServices::FileIsInSession("new.CATPart"));
    CATDocumentServices::Remove(*DocumentOf(Root("A")));
    EXPECT_FALSE(CATDocumentServices::FileIsInSession("a.CATPart"));
}

TEST_F(ProductDocuments, ANewOneHasAProductWithAPartNumberOfItsOwn)
{
    CATBaseUnknown_var spFirst;
    CATBaseUnknown_var spSecond;
    ASSERT_EQ(CATDocumentServices::New("CATProduct", &spFirst), S_OK);
    ASSERT_EQ(CATDocumentServices::New("CATPart", &spSecond), S_OK);
    CATIProduct_var spRoot;
    EXPECT_EQ(CATProductServices::GetRootProduct(*CATDocument::FromComponent(spFirst.Get()), &spRoot), S_OK);
    EXPECT_TRUE(Root(spRoot->GetPartNumber().ConvertToChar()) == spRoot);
    const auto spByInit =
        CATIProduct_var::Adopt(static_cast<CATIProduct*>(CATInit_var(spFirst)->GetRootContainer("CATIProduct")));
    EXPECT_TRUE(spByInit == spRoot);
    CATIProduct_var spPart;
    EXPECT_EQ(CATProductServices::GetRootProduct(*CATDocument::FromComponent(spSecond.Get()), &spPart), S_OK);
    EXPECT_FALSE(spPart->GetPartNumber() == spRoot->GetPartNumber());
    CATIProduct_var spChild;
    EXPECT_EQ(spRoot->AddChild(spPart, "Part.1", &spChild), S_OK);
    EXPECT_TRUE(spChild->GetReferenceProduct() == spPart);
}

TEST_F(ProductDocuments, AreClosedWithTheLastDocumentThatUsesThem)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
            <product id="q" file="q.CATProduct" partNumber="Q"><instance of="a" name="A.1"/></product>
            <product id="a" file="a.CATProduct" partNumber="A"><instance of="b" name="B.1"/></product>
            <product id="b" file="b.CATPart" partNumber="B"/>)");
    EXPECT_EQ(SessionFiles(), "p.CATProduct q.CATProduct a.CATProduct b.CATPart ");
    CATDocumentServices::Remove(*DocumentOf(Root("P")));
    EXPECT_EQ(SessionFiles(), "q.CATProduct a.CATProduct b.CATPart ");
    CATDocumentServices::Remove(*DocumentOf(Root("Q")));
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(ProductDocuments, OneThatOthersUseStaysWhenItIsClosed)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
            <product id="a" file="a.CATPart" partNumber="A" open="true"/>)");
    CATDocumentServices::Remove(*DocumentOf(Root("A")));
    EXPECT_EQ(SessionFiles(), "p.CATProduct a.CATPart ");
    EXPECT_EQ(Child(Root("P"), 1)->GetPartNumber(), "A");
    CATDocumentServices::Remove(*DocumentOf(Root("P")));
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(ProductDocuments, ClosingTheEditorClosesTheDocumentUnlessOthersUseIt)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
            <product id="a" file="a.CATPart" partNumber="A" open="true"/>)");
    CATFrmLayout* pLayout = CATApplicationFrame::GetFrame()->GetLayout();
    ASSERT_NE(pLayout, nullptr);
    pLayout->CloseEditor(CATFrmObjectEditor::Create(DocumentOf(Root("A"))));
    EXPECT_EQ(SessionFiles(), "p.CATProduct a.CATPart ");
    CATFrmObjectEditor* pEditor = CATFrmObjectEditor::Create(DocumentOf(Root("P")));
    CATFrmObjectEditor::Create(DocumentOf(Root("A")));
    pLayout->CloseWindow(CATFrmWindow::Create("P", pEditor));
    EXPECT_EQ(SessionFiles(), "");
    EXPECT_EQ(pLayout->GetEditorList().Size(), 0);
}

TEST_F(ProductDocuments, OneThatIsOpenedForItselfStaysWhenItsUserIsClosed)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
            <product id="a" file="a.CATPart" partNumber="A" open="true"/>)");
    CATDocumentServices::Remove(*DocumentOf(Root("P")));
    EXPECT_EQ(SessionFiles(), "a.CATPart ");
}

TEST_F(ProductDocuments, OneThatLosesItsLastUseIsClosed)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
            <product id="a" file="a.CATPart" partNumber="A"/>)");
    const CATIProduct_var spChild = Child(Root("P"), 1);
    EXPECT_EQ(Root("P")->RemoveChild(spChild), S_OK);
    EXPECT_EQ(SessionFiles(), "p.CATProduct ");
    EXPECT_EQ(spChild->GetPartNumber(), "A");
    EXPECT_EQ(Root("P")->AddChild(spChild, "A.1", nullptr), E_FAIL);
}

TEST_F(ProductDocuments, OpeningThemAgainTakesWhatIsInSession)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
            <product id="a" file="a.CATPart" partNumber="A"/>)");
    Open(R"(<product id="q" file="q.CATProduct" partNumber="Q"><instance of="a" name="A.7"/></product>
            <product id="a" file="a.CATProduct" partNumber="other"><instance of="p" name="P.1"/></product>
            <product id="p" file="p.CATProduct" partNumber="changed"><instance of="x" name="X.1"/></product>
            <product id="x" file="x.CATPart" partNumber="X"/>)");
    // What only the document in session could use is not opened.
    EXPECT_EQ(SessionFiles(), "p.CATProduct a.CATPart q.CATProduct a.CATProduct ");
    EXPECT_TRUE(Child(Child(Root("Q"), 1), 1)->GetReferenceProduct() == Root("P"));
    EXPECT_EQ(ChildNames(Root("P")), "A.1 ");
}

TEST_F(ProductDocuments, AFileThatIsInSessionAsAnotherDocumentIsRefused)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="s" name="S.1"/></product>
            <product id="s" file="s.CATPart" shape="s.cgr" link="visualization" partNumber="S"/>)");
    const HRESULT hr = TryOpen(R"(<product id="t" file="t.CATPart" shape="s.cgr" link="visualization"/>)");
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    ASSERT_NE(pError, nullptr);
    EXPECT_EQ(pError->GetMsgId(), "ImpossibleStructureERR_1002");
    EXPECT_EQ(SessionFiles(), "p.CATProduct s.cgr ");
}

TEST_F(ProductDocuments, InVisualizationModeThePartNumberIsEmptyAndNothingElseIsKnown)
{
    Open(VISUALIZED);
    const CATIProduct_var spInstance = Child(Root("P"), 1);
    const CATIPrdProperties_var spProperties(spInstance);
    CATUnicodeString usValue("untouched");
    CATListValCATUnicodeString names;
    EXPECT_EQ(StateOf(spInstance), CATPrdLinkState::Visualization);
    EXPECT_EQ(spInstance->GetPartNumber(), "");
    EXPECT_EQ(spInstance->SetPartNumber("x"), E_FAIL);
    EXPECT_EQ(spInstance->GetNomenclature(&usValue), E_FAIL);
    EXPECT_EQ(spProperties->SetRevision("x"), E_FAIL);
    EXPECT_EQ(spInstance->GetReferenceProduct()->GetPartNumber(), "");
    EXPECT_EQ(CATIPrdProperties_var(spInstance->GetReferenceProduct())->GetUserProperty("k", &usValue), E_FAIL);
    EXPECT_EQ(CATIPrdLink_var(spInstance)->GetDesignTables(&names, nullptr), E_FAIL);
    EXPECT_EQ(usValue, "untouched");
    // What belongs to the instance is known.
    EXPECT_EQ(Name(spInstance), "S.1");
    EXPECT_EQ(spProperties->SetUserProperty("k", "v"), S_OK);
    EXPECT_EQ(spInstance->AddChild(Root("P"), "x", nullptr), E_FAIL);
    CATIProduct_var spRoot;
    EXPECT_EQ(CATProductServices::FindRootProduct("S", &spRoot), E_FAIL);
    EXPECT_EQ(CATProductServices::FindRootProduct("", &spRoot), E_FAIL);
}

TEST_F(ProductDocuments, InVisualizationModeTheShapeIsInSessionAndTheFileKnown)
{
    Open(VISUALIZED);
    const CATIProduct_var spInstance = Child(Root("P"), 1);
    EXPECT_EQ(FileOf(spInstance), "s.CATPart");
    EXPECT_EQ(SessionFiles(), "p.CATProduct s.cgr ");
    EXPECT_EQ(DocumentOf(spInstance)->GetType(), "CGR");
    CATDocument* pShape = nullptr;
    EXPECT_EQ(CATIPrdLink_var(spInstance)->GetShapeRepDocument(&pShape), S_OK);
    EXPECT_EQ(pShape, DocumentOf(spInstance));
}

TEST_F(ProductDocuments, LoadingMakesThePartKnownAtEveryPlace)
{
    Open(VISUALIZED);
    const CATIProduct_var spReference = Child(Root("P"), 1)->GetReferenceProduct();
    EXPECT_EQ(CATIPrdLink_var(Child(Root("P"), 1))->LoadDocument(), S_OK);
    EXPECT_EQ(StateOf(Child(Root("P"), 2)), CATPrdLinkState::Loaded);
    EXPECT_EQ(Child(Root("P"), 2)->GetPartNumber(), "S");
    EXPECT_TRUE(Root("S") == spReference);
    EXPECT_TRUE(Child(Root("P"), 1)->GetReferenceProduct() == spReference);
    CATUnicodeString usValue;
    EXPECT_EQ(spReference->GetNomenclature(&usValue), S_OK);
    EXPECT_EQ(usValue, "screw");
    EXPECT_EQ(SessionFiles(), "p.CATProduct s.CATPart ");
    EXPECT_EQ(DocumentOf(spReference)->GetType(), "CATPart");
    EXPECT_EQ(DocumentOf(spReference)->GetDisplayName(), "the screw");
    CATDocument* pShape = nullptr;
    EXPECT_EQ(CATIPrdLink_var(spReference)->GetShapeRepDocument(&pShape), E_FAIL);
    EXPECT_EQ(CATIPrdLink_var(spReference)->LoadDocument(), S_OK);
    CATDocumentServices::Remove(*DocumentOf(Root("P")));
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(ProductDocuments, APartInVisualizationModeThatIsOpenedForItselfStaysSoWhenItIsLoaded)
{
    Open(R"(<product id="s" file="s.CATPart" shape="s.cgr" link="visualization" partNumber="S"/>)");
    CATDocument* pDocument = nullptr;
    ASSERT_EQ(CATDocumentServices::GetDocumentInSession("s.cgr", &pDocument), S_OK);
    CATIProduct_var spRoot;
    ASSERT_EQ(CATProductServices::GetRootProduct(*pDocument, &spRoot), S_OK);
    EXPECT_EQ(CATIPrdLink_var(spRoot)->LoadDocument(), S_OK);
    EXPECT_EQ(SessionFiles(), "s.CATPart ");
    EXPECT_TRUE(Root("S") == spRoot);
}

TEST_F(ProductDocuments, APartThatAnotherStructureHasLoadedIsLoaded)
{
    Open(VISUALIZED);
    Open(R"(<product id="q" file="q.CATProduct" partNumber="Q"><instance of="s" name="S.1"/></product>
            <product id="s" file="s.CATPart" partNumber="other"/>)");
    EXPECT_EQ(Child(Root("P"), 1)->GetPartNumber(), "S");
    EXPECT_TRUE(Child(Root("Q"), 1)->GetReferenceProduct() == Child(Root("P"), 1)->GetReferenceProduct());
    EXPECT_EQ(SessionFiles(), "p.CATProduct q.CATProduct s.CATPart ");
}

TEST_F(ProductDocuments, APartThatAnotherStructureShowsStaysLoaded)
{
    Open(R"(<product id="s" file="s.CATPart" partNumber="S"/>)");
    Open(VISUALIZED);
    EXPECT_EQ(Child(Root("P"), 1)->GetPartNumber(), "S");
    EXPECT_EQ(SessionFiles(), "s.CATPart p.CATProduct ");
}

TEST_F(ProductDocuments, ABrokenLinkHasAFileButNoReference)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="x" name="X.1"/></product>
            <product id="x" file="/gone/x.CATPart" link="broken"/>)");
    const CATIProduct_var spInstance = Child(Root("P"), 1);
    CATUnicodeString usValue;
    EXPECT_EQ(StateOf(spInstance), CATPrdLinkState::Broken);
    EXPECT_EQ(FileOf(spInstance), "/gone/x.CATPart");
    EXPECT_EQ(Name(spInstance), "X.1");
    EXPECT_TRUE(spInstance->GetReferenceProduct() == NULL_var);
    EXPECT_EQ(spInstance->GetPartNumber(), "");
    EXPECT_EQ(spInstance->SetPartNumber("x"), E_FAIL);
    EXPECT_EQ(spInstance->GetRevision(&usValue), E_FAIL);
    EXPECT_EQ(ChildNames(spInstance), "");
    EXPECT_EQ(DocumentOf(spInstance), nullptr);
    EXPECT_EQ(CATIPrdLink_var(spInstance)->LoadDocument(), E_FAIL);
    EXPECT_EQ(Root("P")->AddChild(spInstance, "X.2", nullptr), E_FAIL);
    EXPECT_EQ(SessionFiles(), "p.CATProduct ");
}

TEST_F(ProductDocuments, AnEmbeddedComponentIsPartOfTheDocumentAboveIt)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="c" name="C.1"/></product>
            <component id="c" partNumber="C" shape="c.cgr"><instance of="d" name="D.1"/></component>
            <component id="d" partNumber="D"><instance of="b" name="B.1"/></component>
            <product id="b" file="b.CATPart" partNumber="B"/>)");
    const CATIProduct_var spComponent = Child(Root("P"), 1);
    const CATIProduct_var spInner = Child(spComponent, 1);
    EXPECT_EQ(StateOf(spInner), CATPrdLinkState::Embedded);
    EXPECT_EQ(spInner->GetPartNumber(), "D");
    EXPECT_EQ(FileOf(spInner), "(no file)");
    EXPECT_EQ(DocumentOf(spInner), DocumentOf(Root("P")));
    EXPECT_EQ(spInner->GetReferenceProduct()->IsReference(), S_OK);
    CATIProduct_var spRoot;
    EXPECT_EQ(CATProductServices::FindRootProduct("D", &spRoot), E_FAIL);
    CATDocument* pShape = nullptr;
    EXPECT_EQ(CATIPrdLink_var(spComponent)->GetShapeRepDocument(&pShape), S_OK);
    EXPECT_EQ(pShape->GetStorageName(), "c.cgr");
    EXPECT_EQ(CATIPrdLink_var(spInner)->GetShapeRepDocument(&pShape), E_FAIL);
    EXPECT_EQ(pShape, nullptr);
    EXPECT_EQ(CATIPrdLink_var(spInner)->LoadDocument(), S_OK);

    EXPECT_EQ(spInner->SetPartNumber("D2"), S_OK);
    EXPECT_TRUE(DocumentOf(Root("P"))->IsDirty());
    EXPECT_EQ(ChildNames(spInner), "B.1 ");
    CATDocumentServices::Remove(*DocumentOf(Root("P")));
    EXPECT_EQ(SessionFiles(), "");
}

TEST_F(ProductDocuments, AnEmbeddedComponentIsNotAddedToAnotherDocument)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="c" name="C.1"/></product>
            <component id="c" partNumber="C"/>
            <product id="q" file="q.CATProduct" partNumber="Q"/>)");
    EXPECT_EQ(Root("Q")->AddChild(Child(Root("P"), 1), "C.1", nullptr), E_FAIL);
    EXPECT_EQ(Root("P")->AddChild(Child(Root("P"), 1), "C.2", nullptr), S_OK);
    EXPECT_EQ(ChildNames(Root("P")), "C.1 C.2 ");
}

TEST_F(ProductDocuments, DesignTablesHaveNamesAndFiles)
{
    Open(R"(<product id="p" file="p.CATPart" partNumber="P"><designTable name="inner"/>
              <designTable name="sizes" file="/t/sizes.xls"/></product>)");
    CATListValCATUnicodeString names;
    CATListValCATUnicodeString files;
    EXPECT_EQ(CATIPrdLink_var(Root("P"))->GetDesignTables(&names, &files), S_OK);
    ASSERT_EQ(names.Size(), 2);
    ASSERT_EQ(files.Size(), 2);
    EXPECT_EQ(names[1], "inner");
    EXPECT_EQ(files[1], "");
    EXPECT_EQ(names[2], "sizes");
    EXPECT_EQ(files[2], "/t/sizes.xls");
}

TEST_F(ProductDocuments, AChainOfAHundredThousandProductsIsWalkedAndClosed)
{
    constexpr int LEVELS = 100000;
    CATPrdStructure structure;
    for (int i = 0; i < LEVELS; ++i) {
        CATUnicodeString number;
        number.BuildFromNum(i);
        CATPrdReferenceData data;
        data.storageName = number + ".CATProduct";
        data.documentType = "CATProduct";
        data.definition.partNumber = number;
        structure.references.push_back(data);
        if (i > 0) {
            structure.usages.push_back({static_cast<std::size_t>(i) - 1, static_cast<std::size_t>(i), number, {}, {}});
        }
    }
    ASSERT_EQ(CATProductServices::Open(structure, nullptr), S_OK);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), LEVELS);
    CATIProduct_var spProduct = Root("0");
    int depth = 0;
    for (CATListValCATBaseUnknown_var children = Children(spProduct); children.Size() > 0;
         children = Children(spProduct)) {
        spProduct = CATIProduct_var(children[1]);
        ++depth;
    }
    EXPECT_EQ(depth, LEVELS - 1);
    CATDocument* pDocument = nullptr;
    EXPECT_EQ(CATProductServices::GetTreeDocument(spProduct, &pDocument), S_OK);
    EXPECT_EQ(pDocument, DocumentOf(Root("0")));
    CATDocumentServices::Remove(*pDocument);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);

    // The same chain with a loop at its end.
    structure.usages.push_back({LEVELS - 1, LEVELS / 2, "loop", {}, {}});
    EXPECT_TRUE(FAILED(CATProductServices::Open(structure, nullptr)));
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
}

TEST_F(ProductDocuments, AHundredThousandPartsAndInstancesTakeTimeAndMemoryInProportion)
{
    const auto open = [](std::size_t count) {
        CATPrdStructure structure;
        for (std::size_t i = 0; i <= count; ++i) {
            CATUnicodeString number;
            number.BuildFromNum(static_cast<int>(i));
            CATPrdReferenceData data;
            data.storageName = number + (i == 0 ? ".CATProduct" : ".CATPart");
            data.documentType = i == 0 ? "CATProduct" : "CATPart";
            data.definition.partNumber = number;
            structure.references.push_back(data);
            if (i > 0) {
                structure.usages.push_back({0, i, number, {}, {}});
            }
        }
        ASSERT_EQ(CATProductServices::Open(structure, nullptr), S_OK);
    };
    const auto walk = [] {
        int found = 0;
        for (const CATBaseUnknown_var& spChild : Children(Root("0"))) {
            CATIProduct_var spRoot;
            const CATUnicodeString usPartNumber = CATIProduct_var(spChild)->GetPartNumber();
            found += SUCCEEDED(CATProductServices::FindRootProduct(usPartNumber, &spRoot)) ? 1 : 0;
        }
        return found;
    };
    const int before = CATBaseUnknown::GetLiveComponentCount();
    open(100000);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount() - before, 2 * 100001);
    EXPECT_EQ(walk(), 100000);
    // One component per place.
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount() - before, 3 * 100000 + 2);
    CATDocumentServices::Remove(*DocumentOf(Root("0")));
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST_F(ProductDocuments, PlacesAreMadeWhenTheyAreReached)
{
    // Each level has the next one twice, so the tree has more places than could ever be made.
    constexpr int LEVELS = 60;
    std::string xml;
    for (int i = 0; i < LEVELS; ++i) {
        const std::string n = std::to_string(i);
        const std::string next = std::to_string(i + 1);
        xml += "<product id='" + n + "' file='" + n + ".CATProduct' partNumber='" + n + "'>";
        if (i + 1 < LEVELS) {
            xml += "<instance of='" + next + "' name='L'/><instance of='" + next + "' name='R'/>";
        }
        xml += "</product>";
    }
    const int before = CATBaseUnknown::GetLiveComponentCount();
    Open(xml);
    CATIProduct_var spProduct = Root("0");
    for (int i = 1; i < LEVELS; ++i) {
        spProduct = Child(spProduct, 2);
    }
    EXPECT_EQ(Children(spProduct).Size(), 0);
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount() - before, 2 * LEVELS + 2 * (LEVELS - 1));
}

} // namespace

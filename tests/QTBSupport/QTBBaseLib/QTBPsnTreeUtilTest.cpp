#include "QTBPsnTreeUtil.h"

#include <gmock/gmock.h>

#include "CATFrmObjectEditor.h"
#include "CATIPrdProperties.h"
#include "QTBProductSession.h"

namespace {

constexpr const char* PRODUCTS = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="c" name="C.1">
        <property name="QtbRelationKey">17</property><property name="QtbInstanceName">Case.1</property>
      </instance>
      <instance of="c" name="C.2"><property name="QtbRelationKey">18</property></instance>
      <instance of="c" name="C.3"/>
      <instance of="v" name="V.1"/><instance of="l" name="L.1"/><instance of="e" name="E.1"/>
      <instance of="s" name="S.1"/>
    </product>
    <product id="c" file="c.CATPart" partNumber="PC"/>
    <product id="v" file="v.CATPart" shape="v.cgr" partNumber="PV" link="visualization"/>
    <product id="l" file="l.CATPart" link="broken"/>
    <component id="e" partNumber="PE"/>
    <component id="s" partNumber="PS" shape="s.cgr"/>)";

class PsnTreeUtil : public QTBProductSession
{
protected:
    void SetUp() override
    {
        QTBProductSession::SetUp();
        Open(PRODUCTS);
    }

    // Both attributes of an instance: "key|name".
    static std::string AttributesOf(const CATIProduct_var& spProduct)
    {
        CATUnicodeString usKey("untouched");
        CATUnicodeString usName("untouched");
        const HRESULT hr = QTBPsnTreeUtil::GetInstanceAttributes(spProduct, &usKey, &usName);
        return SUCCEEDED(hr) || usKey != "untouched" ? ToText(usKey) + "|" + ToText(usName) : "none";
    }

    static std::string PathOf(const CATDocument* pDocument)
    {
        return pDocument != nullptr ? ToText(pDocument->GetStorageName()) : "none";
    }
};

TEST_F(PsnTreeUtil, TheReferenceIsTheProductItselfOrThatOfTheInstance)
{
    CATIProduct_var spReference;
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(Root("P"), &spReference, FALSE, FALSE), Succeeds());
    EXPECT_TRUE(spReference == Root("P"));
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(At("P", {"C.1"}), &spReference, TRUE, FALSE), Succeeds());
    EXPECT_TRUE(spReference == Root("PC"));
}

TEST_F(PsnTreeUtil, TheReferenceIsLoadedOnRequest)
{
    const CATIProduct_var spProduct = At("P", {"V.1"});
    CATIProduct_var spReference;
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(spProduct, &spReference, FALSE, FALSE), Succeeds());
    EXPECT_EQ(spReference->GetPartNumber(), "");
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(spProduct, &spReference, TRUE, FALSE), Succeeds());
    EXPECT_EQ(spReference->GetPartNumber(), "PV");
}

TEST_F(PsnTreeUtil, ABrokenLinkHasNoReferenceOfWhichTheUserIsToldOnRequest)
{
    CATIProduct_var spReference;
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(At("P", {"L.1"}), &spReference, FALSE, FALSE), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(At("P", {"L.1"}), &spReference, TRUE, FALSE), FailsQuietly());
    const HRESULT hr = QTBPsnTreeUtil::GetReferencePsnNode(At("P", {"L.1"}), &spReference, FALSE, TRUE);
    EXPECT_THAT(hr, FailsWith("PsnNodeRefDocNotFoundERR_2006", "L.1"));
    EXPECT_TRUE(spReference == NULL_var);
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(CATIProduct_var(), &spReference, FALSE, TRUE), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::GetReferencePsnNode(Root("P"), nullptr, FALSE, TRUE), FailsQuietly());
}

TEST_F(PsnTreeUtil, InstanceAttributesAreThoseWrittenWhenItWasCreatedFromThePdmSystem)
{
    EXPECT_EQ(AttributesOf(At("P", {"C.1"})), "17|Case.1");
    EXPECT_EQ(AttributesOf(At("P", {"C.2"})), "18|C.2");
    EXPECT_EQ(AttributesOf(At("P", {"C.3"})), "|C.3");
    EXPECT_EQ(AttributesOf(Root("P")), "none");
    EXPECT_EQ(AttributesOf(CATIProduct_var()), "none");
    CATUnicodeString usText;
    EXPECT_THAT(QTBPsnTreeUtil::GetInstanceAttributes(At("P", {"C.1"}), nullptr, &usText), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::GetInstanceAttributes(At("P", {"C.1"}), &usText, nullptr), FailsQuietly());
}

TEST_F(PsnTreeUtil, InstanceAttributesStayWhenTheInstanceIsRenamed)
{
    const CATIProduct_var spInstance = At("P", {"C.3"});
    EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(spInstance, "20", "C.3"), Succeeds());
    EXPECT_THAT(spInstance->SetPrdInstanceName("New"), Succeeds());
    EXPECT_EQ(AttributesOf(spInstance), "20|C.3");
}

TEST_F(PsnTreeUtil, InstanceAttributesAreWrittenToInstancesOnlyAndNeverEmpty)
{
    EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(Root("P"), "1", "P"), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(At("P", {"C.3"}), "", "P"), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(At("P", {"C.3"}), "1", ""), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(CATIProduct_var(), "1", "P"), FailsQuietly());
    EXPECT_EQ(AttributesOf(At("P", {"C.3"})), "|C.3");
}

TEST_F(PsnTreeUtil, AnEmbeddedComponentIsToldByItsLink)
{
    unsigned char bIsEmbedded = FALSE;
    EXPECT_THAT(QTBPsnTreeUtil::IsEmbeddedComponentNode(At("P", {"E.1"}), &bIsEmbedded), Succeeds());
    EXPECT_EQ(bIsEmbedded, TRUE);
    EXPECT_THAT(QTBPsnTreeUtil::IsEmbeddedComponentNode(At("P", {"C.1"}), &bIsEmbedded), Succeeds());
    EXPECT_EQ(bIsEmbedded, FALSE);
    EXPECT_THAT(QTBPsnTreeUtil::IsEmbeddedComponentNode(At("P", {"L.1"}), &bIsEmbedded), Succeeds());
    EXPECT_EQ(bIsEmbedded, FALSE);
    EXPECT_THAT(QTBPsnTreeUtil::IsEmbeddedComponentNode(CATIProduct_var(), &bIsEmbedded), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::IsEmbeddedComponentNode(Root("P"), nullptr), FailsQuietly());
    const CATIProduct_var spClosed = Root("P");
    CATDocumentServices::RemoveAll();
    EXPECT_THAT(QTBPsnTreeUtil::IsEmbeddedComponentNode(spClosed, &bIsEmbedded), FailsQuietly());
}

TEST_F(PsnTreeUtil, TheDocumentIsThatOfTheReferenceLoadedOnRequest)
{
    CATDocument* pDocument = nullptr;
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(At("P", {"C.1"}), &pDocument, TRUE, FALSE), Succeeds());
    EXPECT_EQ(PathOf(pDocument), "/data/c.CATPart");
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(At("P", {"E.1"}), &pDocument, TRUE, FALSE), Succeeds());
    EXPECT_EQ(PathOf(pDocument), "/data/p.CATProduct");
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(At("P", {"V.1"}), &pDocument, FALSE, FALSE), Succeeds());
    EXPECT_EQ(PathOf(pDocument), "/data/v.cgr");
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(At("P", {"V.1"}), &pDocument, TRUE, FALSE), Succeeds());
    EXPECT_EQ(PathOf(pDocument), "/data/v.CATPart");
}

TEST_F(PsnTreeUtil, WithoutDocumentThePointerIsNullAndTheUserIsToldOnRequest)
{
    CATDocument* pDocument = DocumentOf(Root("P"));
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(At("P", {"L.1"}), &pDocument, FALSE, FALSE), FailsQuietly());
    EXPECT_EQ(pDocument, nullptr);
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(At("P", {"L.1"}), &pDocument, TRUE, TRUE),
                FailsWith("PsnNodeRefDocNotFoundERR_2006", "L.1"));
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(CATIProduct_var(), &pDocument, TRUE, TRUE), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(Root("P"), nullptr, TRUE, TRUE), FailsQuietly());
    const CATIProduct_var spClosed = Root("P");
    CATDocumentServices::RemoveAll();
    EXPECT_THAT(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(spClosed, &pDocument, FALSE, TRUE),
                FailsWith("PsnNodeRefDocNotFoundERR_2006", "P"));
}

TEST_F(PsnTreeUtil, TheDocumentOfTheShapeHoldsNothingElse)
{
    CATDocument* pDocument = nullptr;
    EXPECT_THAT(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(At("P", {"S.1"}), &pDocument, FALSE), Succeeds());
    EXPECT_EQ(PathOf(pDocument), "/data/s.cgr");
    EXPECT_THAT(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(At("P", {"V.1"}), &pDocument, FALSE), Succeeds());
    EXPECT_EQ(PathOf(pDocument), "/data/v.cgr");
    EXPECT_THAT(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(At("P", {"E.1"}), &pDocument, FALSE), FailsQuietly());
    EXPECT_EQ(pDocument, nullptr);
    EXPECT_THAT(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(At("P", {"C.1"}), &pDocument, TRUE),
                FailsWith("PsnNodeRefDocNotFoundERR_2006", "C.1"));
    EXPECT_THAT(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(CATIProduct_var(), &pDocument, TRUE), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(Root("P"), nullptr, TRUE), FailsQuietly());
}

TEST_F(PsnTreeUtil, TheEditorIsThatOfTheDocumentInWhoseTreeTheProductStands)
{
    CATFrmEditor* pEditor = nullptr;
    EXPECT_THAT(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(At("P", {"C.1"}), &pEditor), FailsQuietly());
    EXPECT_EQ(pEditor, nullptr);
    CATFrmEditor* pEditorOfPart = CATFrmObjectEditor::Create(DocumentOf(Root("PC")));
    CATFrmEditor* pEditorOfProduct = CATFrmObjectEditor::Create(DocumentOf(Root("P")));
    EXPECT_THAT(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(At("P", {"C.1"}), &pEditor), Succeeds());
    EXPECT_EQ(pEditor, pEditorOfProduct);
    EXPECT_THAT(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(Root("PC"), &pEditor), Succeeds());
    EXPECT_EQ(pEditor, pEditorOfPart);
    EXPECT_THAT(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(CATIProduct_var(), &pEditor), FailsQuietly());
    EXPECT_THAT(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(Root("P"), nullptr), FailsQuietly());
    const CATIProduct_var spClosed = Root("P");
    CATDocumentServices::RemoveAll();
    EXPECT_THAT(QTBPsnTreeUtil::GetFrmEditorPtrFromPsnNode(spClosed, &pEditor), FailsQuietly());
}

} // namespace

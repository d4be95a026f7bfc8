#include "QTBECutAndPastableOnRepNode.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATICutAndPastable.h"
#include "QTBRepTreeSession.h"

namespace {

class ClipboardOfRepNode : public QTBRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBRepTreeSession::SetUp();
        Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
        a = CreateRoot("A");
        Create(Create(a, "AB"), "B");
        m_spICutAndPastable = a;
    }
    void TearDown() override
    {
        m_spICutAndPastable = NULL_var;
        a = NULL_var;
        QTBRepTreeSession::TearDown();
    }

    QTBIRepNode_var a;
    CATICutAndPastable_var m_spICutAndPastable;
};

TEST_F(ClipboardOfRepNode, AnnouncesItsOneFormatForEverything)
{
    for (const auto listFormats : {&CATICutAndPastable::ListExtractFormats, &CATICutAndPastable::ListPasteFormats,
                                   &CATICutAndPastable::ListLinkFormats, &CATICutAndPastable::ListRemoveFormats}) {
        const std::unique_ptr<CATListPtrCATFormat> pFormats(((*m_spICutAndPastable).*listFormats)());
        const std::unique_ptr<CATListPtrCATFormat> pAgain(((*m_spICutAndPastable).*listFormats)());
        ASSERT_EQ(pFormats->Size(), 1);
        EXPECT_EQ((*pFormats)[1], CATFormat::GetRegisteredFormat("QTBRepNode"));
        EXPECT_NE(pFormats, pAgain) << "a new list each time";
    }
}

TEST_F(ClipboardOfRepNode, GivesNothingAndTakesNothing)
{
    const CATFormat* pFormat = CATFormat::GetRegisteredFormat("QTBRepNode");
    CATListValCATBaseUnknown_var objects;
    objects.Append(a);
    EXPECT_EQ(m_spICutAndPastable->BoundaryExtract(objects, pFormat), 0);
    EXPECT_EQ(m_spICutAndPastable->BoundaryRemove(objects, pFormat), 0);
    EXPECT_EQ(objects.Size(), 1);
    EXPECT_TRUE(m_spICutAndPastable->Extract(pFormat) == NULL_var);
    EXPECT_EQ(m_spICutAndPastable->Link(objects, pFormat).Size(), 0);
    EXPECT_EQ(m_spICutAndPastable->Create(a, pFormat), 0);
    EXPECT_EQ(m_spICutAndPastable->Update(a, pFormat), 0);
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
}

TEST_F(ClipboardOfRepNode, PastingOntoARepNodeLeavesTheTreeUnchanged)
{
    Update(Part("C"));
    CATListValCATBaseUnknown_var objects;
    objects.Append(CreateRoot("C"));
    EXPECT_EQ(m_spICutAndPastable->Paste(objects, CATFormat::GetRegisteredFormat("QTBRepNode")).Size(), 0);
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
}

TEST_F(ClipboardOfRepNode, RemovingARepNodeLeavesTheTreeUnchanged)
{
    EXPECT_EQ(m_spICutAndPastable->Remove(CATFormat::GetRegisteredFormat("QTBRepNode")), 0);
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
}

} // namespace

#include "QTBECSOFilterOnRepNode.h"

#include <gmock/gmock.h>

#include "CATCSO.h"
#include "CATClipboard.h"
#include "CATICSOFilter.h"
#include "CATPathElementPool.h"
#include "QTBRepTreeSession.h"

namespace {

class SelectedRepNodes : public QTBRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBRepTreeSession::SetUp();
        Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
        a = CreateRoot("A");
        ab = Create(a, "AB");
    }
    void TearDown() override
    {
        m_CSO.Empty();
        a = ab = NULL_var;
        QTBRepTreeSession::TearDown();
    }

    void Select(const CATBaseUnknown_var& spObject)
    {
        m_CSO.AddElement(CATPathElement_var::Adopt(m_pPaths->Get(nullptr, spObject)).Get());
    }
    HRESULT IsAvailable(const char* commandName)
    {
        return CATICSOFilter_var(a)->CommandIsAvailable(commandName, &m_CSO);
    }

    std::shared_ptr<CATPathElementPool> m_pPaths = CATPathElementPool::Create();
    CATCSO m_CSO;
    QTBIRepNode_var a, ab;
};

TEST_F(SelectedRepNodes, RefuseCutPasteSpecialAndLink)
{
    Select(a);
    EXPECT_EQ(IsAvailable("Cut"), S_FALSE);
    EXPECT_EQ(IsAvailable("PasteSpecial"), S_FALSE);
    EXPECT_EQ(IsAvailable("Link"), S_FALSE);
}

TEST_F(SelectedRepNodes, AllowAnyOtherCommand)
{
    Select(a);
    for (const char* commandName : {"Copy", "Paste", "Delete", "cut", "Cut2", ""}) {
        EXPECT_EQ(IsAvailable(commandName), S_OK) << commandName;
    }
    EXPECT_EQ(IsAvailable(nullptr), S_OK);
    m_CSO.Empty();
    EXPECT_EQ(IsAvailable("Copy"), S_OK) << "an empty selection is one";
}

TEST_F(SelectedRepNodes, AllowNoCommandWithoutASelection)
{
    EXPECT_EQ(CATICSOFilter_var(a)->CommandIsAvailable("Copy", nullptr), S_FALSE);
}

TEST_F(SelectedRepNodes, MayBeOfAnyKindAndWithoutPdmNode)
{
    Select(a);
    Select(FindNode("A"));
    Select(CreateLooseRepNode());
    EXPECT_EQ(IsAvailable("Copy"), S_OK);
}

TEST_F(SelectedRepNodes, APathWhoseLastObjectIsMissingMakesTheQuestionFail)
{
    Select(a);
    Select(ab);
    m_pPaths->LoseObject(ab.GetImpl());
    EXPECT_THAT(IsAvailable("Copy"), FailsAssertion("pBaseUnknownOnCurrentRepNode != NULL"));
    EXPECT_EQ(IsAvailable("Cut"), S_FALSE) << "refused before the selection is looked at";
}

TEST_F(SelectedRepNodes, AreGivenInTheOrderOfTheSelectionWithoutFiltering)
{
    Select(ab);
    Select(FindNode("A"));
    Select(a);
    CATListValCATBaseUnknown_var elements;
    elements.Append(FindNode("B"));
    CATListValCATBaseUnknown_var* pElements = &elements;
    EXPECT_EQ(CATICSOFilter_var(a)->AvailableElements("Cut", &m_CSO, &pElements), S_OK);
    ASSERT_EQ(elements.Size(), 4);
    EXPECT_EQ(elements[1], FindNode("B")) << "appended to what is there";
    EXPECT_EQ(elements[2], ab);
    EXPECT_EQ(elements[3], FindNode("A"));
    EXPECT_EQ(elements[4], a);
}

TEST_F(SelectedRepNodes, ThatHaveLeftTheModelAreNotGiven)
{
    Select(ab);
    Select(a);
    Select(FindNode("B"));
    m_pPaths->LoseObject(a.GetImpl());
    CATListValCATBaseUnknown_var elements;
    CATListValCATBaseUnknown_var* pElements = &elements;
    EXPECT_EQ(CATICSOFilter_var(a)->AvailableElements("Copy", &m_CSO, &pElements), S_OK);
    ASSERT_EQ(elements.Size(), 2);
    EXPECT_EQ(elements[1], ab);
    EXPECT_EQ(elements[2], FindNode("B"));
}

TEST_F(SelectedRepNodes, AreNotGivenWithoutAListOrASelection)
{
    Select(a);
    CATListValCATBaseUnknown_var elements;
    CATListValCATBaseUnknown_var* pElements = nullptr;
    EXPECT_EQ(CATICSOFilter_var(a)->AvailableElements("Copy", &m_CSO, &pElements), S_OK);
    EXPECT_EQ(CATICSOFilter_var(a)->AvailableElements("Copy", &m_CSO, nullptr), S_OK);
    pElements = &elements;
    EXPECT_EQ(CATICSOFilter_var(a)->AvailableElements("Copy", nullptr, &pElements), S_OK);
    EXPECT_EQ(elements.Size(), 0);
}

TEST_F(SelectedRepNodes, AreCopiedInNameOnlyAndNeitherCutNorChangedByTheClipboard)
{
    CATClipboard& clipboard = *CATClipboard::GetClipboard();
    Select(a);
    Select(ab);
    EXPECT_EQ(clipboard.Cut(&m_CSO), S_FALSE);
    EXPECT_EQ(clipboard.GetFormat(), nullptr);
    EXPECT_EQ(clipboard.Copy(&m_CSO), S_OK);
    ASSERT_NE(clipboard.GetFormat(), nullptr);
    EXPECT_EQ(clipboard.GetFormat()->GetName(), "QTBRepNode");
    EXPECT_EQ(clipboard.GetContent().Size(), 0);
    CATListValCATBaseUnknown_var newObjects;
    EXPECT_EQ(clipboard.Paste(&m_CSO, &newObjects), S_OK);
    EXPECT_EQ(newObjects.Size(), 0);
    EXPECT_EQ(clipboard.Link(&m_CSO, &newObjects), S_FALSE);
    EXPECT_EQ(clipboard.Delete(&m_CSO), S_OK);
    EXPECT_EQ(TreeOf(a), "A(AB)");
    clipboard.Empty();
}

} // namespace

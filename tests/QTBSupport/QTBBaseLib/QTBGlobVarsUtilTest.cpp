#include "QTBGlobVarsUtil.h"

#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATFrmLayout.h"
#include "QTBDocUtil.h"
#include "QTBMessageUtil.h"
#include "QTBTestSession.h"

namespace {

class GlobVarsUtil : public QTBTestSession
{
protected:
    static CATListValQTBInfoListEntry GetInfoList()
    {
        CATListValQTBInfoListEntry entries;
        EXPECT_EQ(QTBGlobVarsUtil::GetInfoListEntries(&entries), S_OK);
        return entries;
    }
};

TEST_F(GlobVarsUtil, HandsOutTheSamePdmNodeContainerAlways)
{
    QTBIPdmNodeCont_var spFirst;
    QTBIPdmNodeCont_var spSecond;
    EXPECT_EQ(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spFirst), S_OK);
    EXPECT_EQ(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spSecond), S_OK);
    EXPECT_STREQ(spFirst->IsA(), "QTBPdmNodeCont");
    EXPECT_EQ(spFirst, spSecond);
}

TEST_F(GlobVarsUtil, CountsActionsFromZero)
{
    int iActionIndex = -1;
    EXPECT_EQ(QTBGlobVarsUtil::GetCurrentActionIndex(&iActionIndex), S_OK);
    EXPECT_EQ(iActionIndex, 0);
    EXPECT_EQ(QTBGlobVarsUtil::IncActionIndex(), S_OK);
    EXPECT_EQ(QTBGlobVarsUtil::IncActionIndex(), S_OK);
    QTBGlobVarsUtil::GetCurrentActionIndex(&iActionIndex);
    EXPECT_EQ(iActionIndex, 2);
}

TEST_F(GlobVarsUtil, StartsWithTheUsualSettings)
{
    QTBPlaceToAdd placeToAdd = QTB_PLACE_TO_ADD_END;
    EXPECT_EQ(QTBGlobVarsUtil::GetAddNewNodeRelationsAt(&placeToAdd), S_OK);
    EXPECT_EQ(placeToAdd, QTB_PLACE_TO_ADD_FRONT);
    unsigned char bShowRelations = FALSE;
    EXPECT_EQ(QTBGlobVarsUtil::GetShowRelations(&bShowRelations), S_OK);
    EXPECT_EQ(bShowRelations, TRUE);
    CATUnicodeString usContext("something");
    EXPECT_EQ(QTBGlobVarsUtil::GetSynchronizeContext(&usContext), S_OK);
    EXPECT_EQ(usContext, "");
    unsigned char bState = TRUE;
    EXPECT_EQ(QTBGlobVarsUtil::GetConfigurableCatiaNodeBehaviorState(&bState), S_OK);
    EXPECT_EQ(bState, FALSE);
}

TEST_F(GlobVarsUtil, KeepsWhatIsSet)
{
    QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
    QTBGlobVarsUtil::SetShowRelations(FALSE);
    QTBGlobVarsUtil::SetSynchronizeContext(usLOAD_STRUCTURE);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    QTBPlaceToAdd placeToAdd = QTB_PLACE_TO_ADD_FRONT;
    QTBGlobVarsUtil::GetAddNewNodeRelationsAt(&placeToAdd);
    EXPECT_EQ(placeToAdd, QTB_PLACE_TO_ADD_END);
    unsigned char bFlag = TRUE;
    QTBGlobVarsUtil::GetShowRelations(&bFlag);
    EXPECT_EQ(bFlag, FALSE);
    CATUnicodeString usContext;
    QTBGlobVarsUtil::GetSynchronizeContext(&usContext);
    EXPECT_EQ(usContext, usLOAD_STRUCTURE);
    QTBGlobVarsUtil::GetConfigurableCatiaNodeBehaviorState(&bFlag);
    EXPECT_EQ(bFlag, TRUE);
}

TEST_F(GlobVarsUtil, FailsQuietlyForNullPointers)
{
    EXPECT_EQ(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::GetCurrentActionIndex(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::GetAddNewNodeRelationsAt(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::GetShowRelations(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::GetSynchronizeContext(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::GetConfigurableCatiaNodeBehaviorState(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::AddMessageToInfoListDialog(nullptr), E_FAIL);
    EXPECT_EQ(QTBGlobVarsUtil::GetInfoListEntries(nullptr), E_FAIL);
}

TEST_F(GlobVarsUtil, QueuesMessagesByKindInTheirOrder)
{
    EXPECT_EQ(QTBGlobVarsUtil::AddMessageToInfoListDialog(QTBMessageUtil::CircleInRecursiveExpandWarning("A")), S_OK);
    EXPECT_EQ(QTBGlobVarsUtil::AddMessageToInfoListDialog(QTBMessageUtil::RepNodeDeleted("A", "B")), S_OK);
    EXPECT_EQ(QTBGlobVarsUtil::AddMessageToInfoListDialog(QTBMessageUtil::FunctionalityNotImplemented()), S_OK);
    EXPECT_EQ(QTBGlobVarsUtil::AddErrorToInfoListDialog("an error"), S_OK);
    const CATListValQTBInfoListEntry entries = GetInfoList();
    ASSERT_EQ(entries.Size(), 4);
    EXPECT_EQ(entries[1].kind, QTBInfoListEntry::Warning);
    EXPECT_EQ(entries[1].text, "A is used below itself. The expansion stops there.");
    EXPECT_EQ(entries[2].kind, QTBInfoListEntry::Information);
    EXPECT_EQ(entries[3].kind, QTBInfoListEntry::Error);
    EXPECT_EQ(entries[3].text, "This function is not available.");
    EXPECT_EQ(entries[4].kind, QTBInfoListEntry::Error);
    EXPECT_EQ(entries[4].text, "an error");
    EXPECT_EQ(QTBGlobVarsUtil::ClearInfoList(), S_OK);
    EXPECT_EQ(GetInfoList().Size(), 0);
}

TEST_F(GlobVarsUtil, TakesOverTheReferenceOfAMessage)
{
    CATError::ForgetResults();
    const int before = CATError::GetLiveCount();
    QTBGlobVarsUtil::AddMessageToInfoListDialog(QTBMessageUtil::FunctionalityNotImplemented());
    CATError::ForgetResults();
    EXPECT_EQ(CATError::GetLiveCount(), before);
}

TEST_F(GlobVarsUtil, QueuesAnErrorThatTravelsOnWithItsResult)
{
    const HRESULT hr = CATError::GetReturn(2, QTBMessageUtil::FunctionalityNotImplemented(), nullptr, "", 0);
    CATError* pError = CATError::CATGetLastError(hr, nullptr);
    EXPECT_EQ(QTBGlobVarsUtil::AddMessageToInfoListDialog(pError), S_OK);
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr), pError);
    EXPECT_EQ(GetInfoList().Size(), 1);
}

TEST_F(GlobVarsUtil, GivesUpTheOldestOfTooManyMessages)
{
    for (int i = 0; i <= QTBGlobVarsUtil::MAX_INFO_LIST_ENTRIES; ++i) {
        CATUnicodeString usNumber;
        usNumber.BuildFromNum(i);
        QTBGlobVarsUtil::AddErrorToInfoListDialog(usNumber);
    }
    const CATListValQTBInfoListEntry entries = GetInfoList();
    EXPECT_EQ(entries.Size(), QTBGlobVarsUtil::MAX_INFO_LIST_ENTRIES);
    EXPECT_EQ(entries[1].text, "1");
}

TEST_F(GlobVarsUtil, StartsAnewAfterTheEndOfTheSession)
{
    Update(Part("P1"));
    QTBGlobVarsUtil::AddErrorToInfoListDialog("an error");
    QTBGlobVarsUtil::SetShowRelations(FALSE);
    QTBGlobVarsUtil::EndSession();
    int iActionIndex = -1;
    QTBGlobVarsUtil::GetCurrentActionIndex(&iActionIndex);
    EXPECT_EQ(iActionIndex, 0);
    unsigned char bShowRelations = FALSE;
    QTBGlobVarsUtil::GetShowRelations(&bShowRelations);
    EXPECT_EQ(bShowRelations, TRUE);
    EXPECT_EQ(GetInfoList().Size(), 0);
    EXPECT_TRUE(AllKeys().empty());
}

TEST_F(GlobVarsUtil, ClosesThePdmDocumentsAtTheEndOfTheSession)
{
    const int windowsBefore = CATFrmLayout::GetCurrentLayout()->GetWindowList().Size();
    ASSERT_EQ(QTBDocUtil::CreateNewQtbDocument(nullptr, nullptr), S_OK);
    ASSERT_EQ(QTBDocUtil::CreateNewQtbDocument(nullptr, nullptr), S_OK);
    QTBGlobVarsUtil::EndSession();
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetWindowList().Size(), windowsBefore);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
}

} // namespace

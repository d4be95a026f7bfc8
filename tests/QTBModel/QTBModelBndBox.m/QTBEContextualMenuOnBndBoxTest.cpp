#include "QTBEContextualMenuOnBndBox.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATIContextualMenu.h"
#include "CATMsgCatalog.h"
#include "QTBBndBoxTestBox.h"

using ::testing::ElementsAre;

namespace {

class BndBoxMenu : public QTBBndBoxTestBox
{
protected:
    void SetUp() override
    {
        CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
        QTBBndBoxTestBox::SetUp();
    }

    CATCmdAccess* GetMenu() const
    {
        CATCmdAccess* pMenu = nullptr;
        EXPECT_EQ(CATIContextualMenu_var(m_spBox)->GetContextualMenu(pMenu), S_OK);
        return pMenu;
    }

    static void ExpectStarter(const CATCmdAccess* pItem, const char* name, const char* headerId, const char* title)
    {
        const auto* pStarter = dynamic_cast<const CATCmdStarter*>(pItem);
        ASSERT_NE(pStarter, nullptr) << name;
        EXPECT_EQ(pStarter->GetName(), name);
        EXPECT_EQ(pStarter->GetHeaderId(), headerId);
        EXPECT_EQ(pStarter->GetTitle(), title);
    }
};

TEST_F(BndBoxMenu, HasASeparatorAndTheTwoStartersInThatOrder)
{
    CATCmdAccess* pMenu = GetMenu();
    const auto* pContainer = dynamic_cast<const CATCmdContainer*>(pMenu);
    ASSERT_NE(pContainer, nullptr);
    EXPECT_EQ(pContainer->GetName(), "QTBContextMenu");
    EXPECT_EQ(pContainer->GetPersistence(), 1);
    const CATCmdAccess* pSeparator = pMenu->GetChild();
    ASSERT_NE(dynamic_cast<const CATCmdSeparator*>(pSeparator), nullptr);
    EXPECT_EQ(pSeparator->GetName(), "NULL");
    const CATCmdAccess* pMark = pSeparator->GetNext();
    ExpectStarter(pMark, "QTBMarkBndBoxSubMenuStr", "QTBPdmWksCtxMarkBndBoxCmdHdr", "Mark Bounding Box");
    const CATCmdAccess* pUnMark = pMark->GetNext();
    ExpectStarter(pUnMark, "QTBUnMarkBndBoxSubMenuStr", "QTBPdmWksCtxUnMarkBndBoxCmdHdr", "Unmark Bounding Box");
    EXPECT_EQ(pUnMark->GetNext(), nullptr);
    CATCmdContainer::Dismiss(pMenu);
}

TEST_F(BndBoxMenu, IsAnotherOneEachTime)
{
    CATCmdAccess* pFirst = GetMenu();
    CATCmdAccess* pSecond = GetMenu();
    EXPECT_NE(pFirst, pSecond);
    CATCmdContainer::Dismiss(pFirst);
    std::vector<std::string> names;
    for (const CATCmdAccess* pItem = pSecond->GetChild(); pItem != nullptr; pItem = pItem->GetNext()) {
        names.emplace_back(pItem->GetName().View());
    }
    EXPECT_THAT(names, ElementsAre("NULL", "QTBMarkBndBoxSubMenuStr", "QTBUnMarkBndBoxSubMenuStr"))
        << "each belongs to its caller";
    CATCmdContainer::Dismiss(pSecond);
}

TEST_F(BndBoxMenu, TakesTheTextsOfTheSessionsLanguage)
{
    CATMsgCatalog::SetLanguage("German");
    CATCmdAccess* pMenu = GetMenu();
    EXPECT_EQ(pMenu->GetChild()->GetNext()->GetTitle(), "Begrenzungsquader markieren");
    CATCmdContainer::Dismiss(pMenu);
    CATMsgCatalog::SetLanguage("");
}

} // namespace

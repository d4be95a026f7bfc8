#include "CATExtIContextualMenu.h"

#include <gmock/gmock.h>

#include "CATApplicationFrame.h"
#include "CATCmdStarter.h"
#include "CATCommandHeaderRegister.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATMsgCatalog.h"
#include "CATPathElement.h"
#include "CATStandardCommands.h"
#include "QTBTestLateType.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ContextMenu : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
        CATApplicationFrame::GetFrame()->OpenLayout();
    }
    void TearDown() override
    {
        CATFrmLayout::GetCurrentLayout()->CloseAll();
        CATStandardCommands::AddHeaders(CATApplicationFrame::GetFrame()->GetCommandHeaders());
    }

    static std::vector<std::string> TitlesOf(CATExtIContextualMenu& extension)
    {
        CATCmdAccess* pMenu = nullptr;
        EXPECT_EQ(extension.GetContextualMenu(pMenu), S_OK);
        std::vector<std::string> titles;
        for (const CATCmdAccess* pItem = pMenu->GetChild(); pItem != nullptr; pItem = pItem->GetNext()) {
            titles.emplace_back(pItem->GetTitle().View());
        }
        return titles;
    }

    static HRESULT Start(const char* headerId, const CATBaseUnknown_var& spObject)
    {
        return CATCmdStarter("item", headerId).Start(spObject);
    }

    static CATFrmEditor* OpenWindow()
    {
        CATFrmEditor* pEditor = CATFrmEditor::Create();
        CATFrmWindow::Create("window", pEditor);
        return pEditor;
    }

    QTBTestLateType m_Type{"TestMenuObject"};
};

TEST_F(ContextMenu, HasTheStandardCommands)
{
    CATExtIContextualMenu extension;
    EXPECT_THAT(TitlesOf(extension), ElementsAre("Select", "Add to Selection", "Clear Selection"));
    CATCmdAccess* pFirst = nullptr;
    CATCmdAccess* pAgain = nullptr;
    extension.GetContextualMenu(pFirst);
    extension.GetContextualMenu(pAgain);
    EXPECT_EQ(pFirst, pAgain) << "the menu belongs to the extension";
}

TEST_F(ContextMenu, LeavesAStandardCommandOutThatTheApplicationLacks)
{
    CATCommandHeaderRegister& headers = CATApplicationFrame::GetFrame()->GetCommandHeaders();
    headers.Remove(CATStandardCommands::ADD_TO_SELECTION);
    CATExtIContextualMenu withoutOne;
    EXPECT_THAT(TitlesOf(withoutOne), ElementsAre("Select", "Clear Selection"));
    headers.Remove(CATStandardCommands::SELECT);
    headers.Remove(CATStandardCommands::CLEAR_SELECTION);
    headers.Reserve(CATStandardCommands::SELECT);
    CATExtIContextualMenu withoutAny;
    EXPECT_THAT(TitlesOf(withoutAny), IsEmpty());
}

TEST_F(ContextMenu, SelectsWithItsStandardCommands)
{
    const CATBaseUnknown_var spFirst = m_Type.Create();
    const CATBaseUnknown_var spSecond = m_Type.Create();
    CATFrmEditor* pEditor = OpenWindow();
    EXPECT_EQ(Start(CATStandardCommands::SELECT, spFirst), S_OK);
    EXPECT_EQ(Start(CATStandardCommands::ADD_TO_SELECTION, spSecond), S_OK);
    EXPECT_EQ(Start(CATStandardCommands::ADD_TO_SELECTION, spSecond), S_OK);
    EXPECT_EQ(pEditor->GetCSO()->GetSize(), 2);
    EXPECT_TRUE(pEditor->GetCSO()->ContainsObject(spFirst));
    EXPECT_EQ(Start(CATStandardCommands::SELECT, spSecond), S_OK);
    EXPECT_EQ(pEditor->GetCSO()->GetSize(), 1);
    EXPECT_TRUE(pEditor->GetCSO()->ContainsObject(spSecond));
    EXPECT_EQ(Start(CATStandardCommands::CLEAR_SELECTION, NULL_var), S_OK);
    EXPECT_EQ(pEditor->GetCSO()->GetSize(), 0);
}

TEST_F(ContextMenu, SelectsByThePathThatThereIs)
{
    const CATBaseUnknown_var spRoot = m_Type.Create();
    const CATBaseUnknown_var spBelow = m_Type.Create();
    CATFrmEditor* pEditor = OpenWindow();
    const auto spRootPath = CATPathElement_var::Adopt(pEditor->GetPathElements().Get(nullptr, spRoot));
    const auto spPath = CATPathElement_var::Adopt(pEditor->GetPathElements().Get(spRootPath.Get(), spBelow));
    EXPECT_EQ(Start(CATStandardCommands::SELECT, spBelow), S_OK);
    EXPECT_TRUE(pEditor->GetCSO()->Contains(spPath.Get()));
}

TEST_F(ContextMenu, SelectsNothingWithoutEditorOrObject)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    EXPECT_EQ(Start(CATStandardCommands::SELECT, spObject), E_FAIL);
    EXPECT_EQ(Start(CATStandardCommands::CLEAR_SELECTION, spObject), E_FAIL);
    OpenWindow();
    EXPECT_EQ(Start(CATStandardCommands::ADD_TO_SELECTION, NULL_var), E_FAIL);
}

} // namespace

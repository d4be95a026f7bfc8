#include "QTBRepTreeUtil.h"

#include <gmock/gmock.h>

#include "CATDocumentServices.h"
#include "CATFrmLayout.h"
#include "CATNavigBox.h"
#include "QTBIRepNode.h"
#include "QTBNodeRelationInfo.h"
#include "QTBTestSession.h"
#include "QTBTestWindow.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class RepTreeUtil : public QTBTestSession
{
protected:
    // A product A with two parts B and C, a part D below B, and files of A and B.
    void ShowAssembly(const QTBTestWindow& window)
    {
        Update(Part("A", Attribute("PartNumber", "4711")) + Part("B", Attribute("PartNumber", "4712")) + Part("C") +
               Part("D", Attribute("PartNumber", "4714")) +
               Object("CATProductFile", "FA", Attribute("FileName", "a.CATProduct")) +
               Object("CATPartFile", "FB", Attribute("FileName", "b.CATPart")) + PartPart("R1", "A", "B") +
               PartPart("R2", "A", "C") + PartPart("R3", "B", "D") + Relation("PartFile", "S1", "A", "FA") +
               Relation("FileFile", "S2", "FA", "FB"));
        window.Show(FindNode("A"), {"PartPart", "PartFile", "FileFile"});
    }
};

TEST_F(RepTreeUtil, KnowsPartsAndTheirNumbers)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    unsigned char bIsPart = FALSE;
    CATUnicodeString usPartNumber;
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(window.Find(FindNode("A")), &bIsPart, &usPartNumber), S_OK);
    EXPECT_EQ(bIsPart, TRUE);
    EXPECT_EQ(usPartNumber, "4711");
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(window.Find(FindNode("C")), &bIsPart, &usPartNumber), S_OK);
    EXPECT_EQ(bIsPart, TRUE);
    EXPECT_EQ(usPartNumber, "");
    for (const char* key : {"R1", "FA", "S1"}) {
        usPartNumber = "before";
        EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(window.Find(FindNode(key)), &bIsPart, &usPartNumber), S_OK);
        EXPECT_EQ(bIsPart, FALSE) << key;
        EXPECT_EQ(usPartNumber, "") << key;
    }
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(window.Find(FindNode("A")), &bIsPart, nullptr), S_OK);
    EXPECT_EQ(bIsPart, TRUE);
}

TEST_F(RepTreeUtil, KnowsRelationsBetweenParts)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    const auto isPartToPart = [&](const char* key) {
        unsigned char bIsPartToPart = FALSE;
        EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(window.Find(FindNode(key)), &bIsPartToPart), S_OK);
        return bIsPartToPart != FALSE;
    };
    EXPECT_TRUE(isPartToPart("R1"));
    EXPECT_FALSE(isPartToPart("S1"));
    EXPECT_FALSE(isPartToPart("A"));
}

TEST_F(RepTreeUtil, KnowsFilesWithNameAndType)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    unsigned char bIsFile = FALSE;
    CATUnicodeString usFileName;
    CATUnicodeString usFileType;
    EXPECT_EQ(QTBRepTreeUtil::RepresentsCatiaFileNode(window.Find(FindNode("FB")), &bIsFile, &usFileName, &usFileType),
              S_OK);
    EXPECT_EQ(bIsFile, TRUE);
    EXPECT_EQ(usFileName, "b.CATPart");
    EXPECT_EQ(usFileType, "CATPart");
    for (const char* key : {"A", "S1"}) {
        EXPECT_EQ(
            QTBRepTreeUtil::RepresentsCatiaFileNode(window.Find(FindNode(key)), &bIsFile, &usFileName, &usFileType),
            S_OK);
        EXPECT_EQ(bIsFile, FALSE) << key;
        EXPECT_EQ(usFileName, "") << key;
        EXPECT_EQ(usFileType, "") << key;
    }
    EXPECT_EQ(QTBRepTreeUtil::RepresentsCatiaFileNode(window.Find(FindNode("FA")), &bIsFile, nullptr, nullptr), S_OK);
    EXPECT_EQ(bIsFile, TRUE);
}

TEST_F(RepTreeUtil, KnowsNothingOfARepNodeThatLostItsPdmNode)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    const QTBIRepNode_var spIRepNode = window.Find(FindNode("C"));
    QTBIPdmNode_var spIPdmNode = PdmNode("C");
    EXPECT_EQ(GetPdmNodeCont()->RemoveNodeFromPdmGraph(&spIPdmNode, FALSE, FALSE, FALSE, nullptr), S_OK);
    unsigned char bFlag = TRUE;
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(spIRepNode, &bFlag, nullptr), S_OK);
    EXPECT_EQ(bFlag, FALSE);
    bFlag = TRUE;
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(spIRepNode, &bFlag), S_OK);
    EXPECT_EQ(bFlag, FALSE);
    bFlag = TRUE;
    EXPECT_EQ(QTBRepTreeUtil::RepresentsCatiaFileNode(spIRepNode, &bFlag, nullptr, nullptr), S_OK);
    EXPECT_EQ(bFlag, FALSE);
}

TEST_F(RepTreeUtil, FailsForEmptyHandlesAndNullFlags)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    const QTBIRepNode_var spIRepNode = window.Find(FindNode("A"));
    unsigned char bFlag = FALSE;
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(NULL_var, &bFlag, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartNode(spIRepNode, nullptr, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(NULL_var, &bFlag), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(spIRepNode, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::RepresentsCatiaFileNode(NULL_var, &bFlag, nullptr, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::RepresentsCatiaFileNode(spIRepNode, nullptr, nullptr, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::GetAllDirectSubStructureNodes(NULL_var, nullptr, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::GetAllSubStructureNodes(NULL_var, nullptr, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::ParentCatDocObjIsInSession(NULL_var, &bFlag), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::ParentCatDocObjIsInSession(spIRepNode, nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::GetRepNodeContOfWindow(window.GetFrmWindow(), nullptr), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(nullptr, TRUE, TRUE), E_FAIL);
}

TEST_F(RepTreeUtil, GivesTheSubStructureOfOneLevel)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    CATListValCATBaseUnknown_var relations;
    CATListValCATBaseUnknown_var parts;
    parts.Append(CATBaseUnknown_var(window.Find(FindNode("D"))));
    EXPECT_EQ(QTBRepTreeUtil::GetAllDirectSubStructureNodes(window.Find(FindNode("A")), &relations, &parts), S_OK);
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(relations), UnorderedElementsAre("R1", "R2"));
    ASSERT_EQ(parts.Size(), 2);
    EXPECT_EQ(QTBTestWindow::PdmKeysOf(parts)[0], QTBTestWindow::PdmKeysOf(relations)[0] == "R1" ? "B" : "C");
    EXPECT_EQ(QTBRepTreeUtil::GetAllDirectSubStructureNodes(window.Find(FindNode("A")), nullptr, &parts), S_OK);
    EXPECT_EQ(parts.Size(), 2);
}

TEST_F(RepTreeUtil, GivesTheSubStructureBelowTheObjectOfARelation)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    CATListValCATBaseUnknown_var relations;
    CATListValCATBaseUnknown_var parts;
    EXPECT_EQ(QTBRepTreeUtil::GetAllDirectSubStructureNodes(window.Find(FindNode("R1")), &relations, &parts), S_OK);
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(relations), ElementsAre("R3"));
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(parts), ElementsAre("D"));
    EXPECT_EQ(QTBRepTreeUtil::GetAllDirectSubStructureNodes(window.Find(FindNode("D")), &relations, &parts), S_OK);
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(relations), IsEmpty());
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(parts), IsEmpty());
}

TEST_F(RepTreeUtil, GivesTheSubStructureOfAllLevels)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    CATListValCATBaseUnknown_var relations;
    CATListValCATBaseUnknown_var parts;
    EXPECT_EQ(QTBRepTreeUtil::GetAllSubStructureNodes(window.Find(FindNode("A")), &relations, &parts), S_OK);
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(relations), UnorderedElementsAre("R1", "R2", "R3"));
    EXPECT_THAT(QTBTestWindow::PdmKeysOf(parts), UnorderedElementsAre("B", "C", "D"));
    EXPECT_EQ(QTBTestWindow::PdmKeysOf(parts)[2], "D");
    EXPECT_EQ(QTBRepTreeUtil::GetAllSubStructureNodes(window.Find(FindNode("A")), nullptr, &parts), S_OK);
    EXPECT_EQ(parts.Size(), 3);
}

TEST_F(RepTreeUtil, LooksForTheNextFileAboveInTheSession)
{
    const QTBTestWindow window;
    ShowAssembly(window);
    unsigned char bInSession = TRUE;
    EXPECT_EQ(QTBRepTreeUtil::ParentCatDocObjIsInSession(window.Find(FindNode("FB")), &bInSession), S_OK);
    EXPECT_EQ(bInSession, FALSE);
    CATBaseUnknown_var spDocument;
    ASSERT_EQ(CATDocumentServices::Open("QTBDocument", "/tmp/a.CATProduct", TRUE, &spDocument), S_OK);
    EXPECT_EQ(QTBRepTreeUtil::ParentCatDocObjIsInSession(window.Find(FindNode("FB")), &bInSession), S_OK);
    EXPECT_EQ(bInSession, TRUE);
    EXPECT_EQ(QTBRepTreeUtil::ParentCatDocObjIsInSession(window.Find(FindNode("FA")), &bInSession), S_OK);
    EXPECT_EQ(bInSession, FALSE);
}

TEST_F(RepTreeUtil, ReplacesThePlaceholderInTheWindow)
{
    const QTBTestWindow window;
    Update(Part("A", Attribute("PartNumber", "4711")));
    NodesToRetrieve pdmNodes = ALL_NODES;
    unsigned char bFalse = FALSE;
    unsigned char bTrue = TRUE;
    window.GetCont()->SetPdmNodesToConsider(&pdmNodes);
    ASSERT_EQ(window.GetCont()->UpdateRepTrees(PdmNode("A"), {}, &bFalse, nullptr, nullptr, &bTrue), S_OK);
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(window.GetFrmWindow(), FALSE, FALSE), S_OK);
    ASSERT_EQ(window.GetRootTexts().size(), 1U);
    EXPECT_THAT(window.GetRootTexts()[0], ::testing::HasSubstr("4711"));
}

TEST_F(RepTreeUtil, ReplacesThePlaceholdersOfSeveralDocuments)
{
    const QTBTestWindow first;
    const QTBTestWindow second;
    EXPECT_EQ(second.GetRootTexts().size(), 2U);
    Update(Part("A", Attribute("PartNumber", "4711")));
    unsigned char bAddNewNodes = TRUE;
    EXPECT_EQ(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAddNewNodes), S_OK);
    EXPECT_THAT(first.GetRootTexts(), ElementsAre(::testing::HasSubstr("4711")));
    // For the second window the node belongs to a past action already.
    EXPECT_THAT(second.GetRootTexts(), IsEmpty());
}

TEST_F(RepTreeUtil, TakesNewRootsIntoTheWindowOnlyWhenAskedTo)
{
    const QTBTestWindow window;
    Update(Part("A") + Part("B") + Part("C"));
    window.Show(FindNode("A"), {});
    window.Show(FindNode("B"), {});
    EXPECT_EQ(window.GetRootTexts().size(), 2U);
    unsigned char bFalse = FALSE;
    unsigned char bTrue = TRUE;
    ASSERT_EQ(window.GetCont()->UpdateRepTrees(PdmNode("C"), {}, &bFalse, nullptr, nullptr, &bTrue), S_OK);
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(window.GetFrmWindow(), FALSE, FALSE), S_OK);
    EXPECT_EQ(window.GetRootTexts().size(), 2U);
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(window.GetFrmWindow(), TRUE, FALSE), S_OK);
    EXPECT_EQ(window.GetRootTexts().size(), 3U);
}

TEST_F(RepTreeUtil, MakesTheWindowTheCurrentOneWhenAskedTo)
{
    const QTBTestWindow first;
    const QTBTestWindow second;
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(first.GetFrmWindow(), FALSE, FALSE), S_OK);
    EXPECT_EQ(pLayout->GetCurrentWindow(), second.GetFrmWindow());
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(first.GetFrmWindow(), FALSE, TRUE), S_OK);
    EXPECT_EQ(pLayout->GetCurrentWindow(), first.GetFrmWindow());
}

TEST_F(RepTreeUtil, HasNothingToRefreshInOtherWindows)
{
    CATFrmWindow* pWindow = CATFrmWindow::Create("other", nullptr);
    EXPECT_EQ(QTBRepTreeUtil::UpdateQtbWindow(pWindow, TRUE, TRUE), S_OK);
    QTBIRepNodeCont_var spIRepNodeCont;
    EXPECT_EQ(QTBRepTreeUtil::GetRepNodeContOfWindow(pWindow, &spIRepNodeCont), E_FAIL);
    EXPECT_EQ(QTBRepTreeUtil::GetRepNodeContOfWindow(nullptr, &spIRepNodeCont), E_FAIL);
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pWindow);
}

} // namespace

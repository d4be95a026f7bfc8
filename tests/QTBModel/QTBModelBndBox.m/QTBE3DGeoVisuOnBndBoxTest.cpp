#include "QTBE3DGeoVisuOnBndBox.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATI3DGeoVisu.h"
#include "CATIModelEvents.h"
#include "CATIVisProperties.h"
#include "CATMathPoint.h"
#include "CATMathVector.h"
#include "CATVisuScene.h"
#include "QTBBndBoxRep.h"
#include "QTBBndBoxTestBox.h"
#include "QTBTestLateType.h"
#include "TIECATI3DGeoVisu.h"

using ::testing::ElementsAre;

namespace {

class BndBoxRep : public QTBBndBoxTestBox
{
protected:
    std::unique_ptr<QTBBndBoxRep> BuildRep() const
    {
        std::unique_ptr<CATRep> pRep(CATI3DGeoVisu_var(m_spBox)->BuildRep());
        auto* pBndBoxRep = dynamic_cast<QTBBndBoxRep*>(pRep.get());
        EXPECT_NE(pBndBoxRep, nullptr) << "a type of its own";
        static_cast<void>(pRep.release());
        return std::unique_ptr<QTBBndBoxRep>(pBndBoxRep);
    }
};

TEST_F(BndBoxRep, OfABoxNeverSetIsTheUnitCubeAtTheOriginInItsColour)
{
    const auto pRep = BuildRep();
    EXPECT_THAT(pRep->GetCorners(), ElementsAre(CATMathPoint(0, 0, 0), CATMathPoint(1, 0, 0), CATMathPoint(0, 1, 0),
                                                CATMathPoint(1, 1, 0), CATMathPoint(0, 0, 1), CATMathPoint(1, 0, 1),
                                                CATMathPoint(0, 1, 1), CATMathPoint(1, 1, 1)));
    EXPECT_EQ(pRep->GetColor(), 244U);
    EXPECT_EQ(pRep->GetDrawMode(), 2);
}

TEST_F(BndBoxRep, HasAnotherColourWhileTheBoxIsMarked)
{
    m_spIBndBox->SetMarked(TRUE);
    EXPECT_EQ(BuildRep()->GetColor(), 245U);
    m_spIBndBox->SetMarked(FALSE);
    EXPECT_EQ(BuildRep()->GetColor(), 244U);
}

TEST_F(BndBoxRep, TakesEdgesThatAreNeitherOrthogonalNorOfUnitLengthUnchanged)
{
    m_spIBndBox->SetCorner(CATMathPoint(10, 20, 30));
    m_spIBndBox->SetFirstEdge(CATMathVector(5, 1, 0));
    m_spIBndBox->SetSecondEdge(CATMathVector(-2, 4, 0));
    m_spIBndBox->SetThirdEdge(CATMathVector(1, 1, 100));
    EXPECT_THAT(BuildRep()->GetCorners(),
                ElementsAre(CATMathPoint(10, 20, 30), CATMathPoint(15, 21, 30), CATMathPoint(8, 24, 30),
                            CATMathPoint(13, 25, 30), CATMathPoint(11, 21, 130), CATMathPoint(16, 22, 130),
                            CATMathPoint(9, 25, 130), CATMathPoint(14, 26, 130)));
}

TEST_F(BndBoxRep, IsMadeAnewEachTimeAndIsAllThereIs)
{
    EXPECT_NE(BuildRep(), BuildRep());
    EXPECT_EQ(CATI3DGeoVisu_var(m_spBox)->BuildCoarseRep(), nullptr);
    EXPECT_EQ(CATI3DGeoVisu_var(m_spBox)->BuildPathRep(nullptr), nullptr);
}

TEST_F(BndBoxRep, DoesNotExistForAComponentThatIsNoBox)
{
    QTBTestLateType type("TestBoxWithoutData");
    type.Register<TIECATI3DGeoVisu, CATI3DGeoVisu, QTBE3DGeoVisuOnBndBox>();
    EXPECT_EQ(CATI3DGeoVisu_var(type.Create())->BuildRep(), nullptr);
}

TEST_F(BndBoxRep, ShowsAMarkInTheViewAfterTheNextRedraw)
{
    CATFrmEditor* pEditor = CATFrmEditor::Create();
    CATFrmWindow* pWindow = CATFrmNavigGraphicWindow::Create("3D", pEditor);
    CATVisuScene& scene = *pWindow->GetScene();
    scene.Add(m_spBox);
    EXPECT_EQ(scene.Display().at(0).color, 244U);
    m_spIBndBox->SetMarked(TRUE);
    EXPECT_EQ(scene.Display().at(0).color, 244U);
    CATIModelEvents_var(m_spBox)->Dispatch(CATModelEvent::Modified);
    EXPECT_EQ(scene.Display().at(0).color, 245U);
    CATIVisProperties_var(m_spBox)->SetVisible(FALSE);
    EXPECT_TRUE(scene.Display().empty());
    CATFrmLayout::GetCurrentLayout()->CloseEditor(pEditor);
}

} // namespace

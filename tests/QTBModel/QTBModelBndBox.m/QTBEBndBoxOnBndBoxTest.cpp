#include "QTBEBndBoxOnBndBox.h"

#include "QTBBndBoxTestBox.h"

namespace {

class BndBox : public QTBBndBoxTestBox
{
protected:
    // What the box says of itself.
    struct Shape
    {
        CATMathPoint corner{7, 7, 7};
        CATMathVector firstEdge{7, 7, 7};
        CATMathVector secondEdge{7, 7, 7};
        CATMathVector thirdEdge{7, 7, 7};

        friend bool operator==(const Shape&, const Shape&) = default;
    };
    Shape GetShape() const
    {
        Shape shape;
        EXPECT_EQ(m_spIBndBox->GetCorner(shape.corner), S_OK);
        EXPECT_EQ(m_spIBndBox->GetFirstEdge(shape.firstEdge), S_OK);
        EXPECT_EQ(m_spIBndBox->GetSecondEdge(shape.secondEdge), S_OK);
        EXPECT_EQ(m_spIBndBox->GetThirdEdge(shape.thirdEdge), S_OK);
        return shape;
    }
};

TEST_F(BndBox, IsTheUnmarkedUnnamedUnitCubeAtTheOriginAtFirst)
{
    EXPECT_EQ(GetShape(), (Shape{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
    EXPECT_EQ(m_spIBndBox->IsMarked(), FALSE);
    EXPECT_EQ(m_spIBndBox->GetName(), "");
}

TEST_F(BndBox, KeepsWhatItIsGiven)
{
    const Shape shape{{-1.5, 2, 3}, {10, 1, 0}, {-3, 20.25, 0}, {1, 1, 0}};
    EXPECT_EQ(m_spIBndBox->SetCorner(shape.corner), S_OK);
    EXPECT_EQ(m_spIBndBox->SetFirstEdge(shape.firstEdge), S_OK);
    EXPECT_EQ(m_spIBndBox->SetSecondEdge(shape.secondEdge), S_OK);
    EXPECT_EQ(m_spIBndBox->SetThirdEdge(shape.thirdEdge), S_OK);
    EXPECT_EQ(m_spIBndBox->SetName("Gearbox"), S_OK);
    EXPECT_EQ(GetShape(), shape);
    EXPECT_EQ(m_spIBndBox->GetName(), "Gearbox");
}

TEST_F(BndBox, IsMarkedAndUnmarked)
{
    EXPECT_EQ(m_spIBndBox->SetMarked(TRUE), S_OK);
    EXPECT_EQ(m_spIBndBox->IsMarked(), TRUE);
    EXPECT_EQ(m_spIBndBox->SetMarked(FALSE), S_OK);
    EXPECT_EQ(m_spIBndBox->IsMarked(), FALSE);
}

TEST_F(BndBox, HasItsOwnData)
{
    const QTBIBndBox_var spOther(Create());
    EXPECT_EQ(m_spIBndBox->SetName("one"), S_OK);
    EXPECT_EQ(spOther->GetName(), "");
}

} // namespace

#include "CAT3DCuboidRep.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <type_traits>

namespace {

// Points and vectors are handed over as three consecutive numbers.
static_assert(sizeof(CATMathPoint) == 3 * sizeof(double) && std::is_standard_layout_v<CATMathPoint>);
static_assert(sizeof(CATMathVector) == 3 * sizeof(double) && std::is_standard_layout_v<CATMathVector>);

using ::testing::ElementsAre;

const CATMathPoint CORNER(1, 2, 3);
const CATMathVector FIRST(10, 0, 0);
const CATMathVector SECOND(5, 20, 0);
const CATMathVector THIRD(0, -1, 30);

TEST(CuboidRep, HasTheEightCornersThatItsEdgesSpan)
{
    const CAT3DCuboidRep rep(CORNER, FIRST, SECOND, THIRD, CAT3DCuboidRep::Faces);
    EXPECT_THAT(rep.GetCorners(), ElementsAre(CATMathPoint(1, 2, 3), CATMathPoint(11, 2, 3), CATMathPoint(6, 22, 3),
                                              CATMathPoint(16, 22, 3), CATMathPoint(1, 1, 33), CATMathPoint(11, 1, 33),
                                              CATMathPoint(6, 21, 33), CATMathPoint(16, 21, 33)));
    EXPECT_EQ(rep.GetDrawMode(), 0);
}

TEST(CuboidRep, HasFourEdgesAlongEachOfTheThree)
{
    const CAT3DCuboidRep rep(CORNER, FIRST, SECOND, THIRD, CAT3DCuboidRep::FacesAndEdges);
    const CATMathVector directions[] = {FIRST, SECOND, THIRD};
    std::set<CAT3DCuboidRep::CornerPair> different;
    std::map<int, int> edgesAtCorner;
    for (std::size_t i = 0; i < CAT3DCuboidRep::EDGE_COUNT; ++i) {
        const auto [from, to] = CAT3DCuboidRep::GetEdges()[i];
        EXPECT_LT(from, to);
        const auto& corners = rep.GetCorners();
        EXPECT_EQ(corners[static_cast<std::size_t>(to)] - corners[static_cast<std::size_t>(from)], directions[i / 4]);
        different.emplace(from, to);
        ++edgesAtCorner[from];
        ++edgesAtCorner[to];
    }
    EXPECT_EQ(different.size(), 12U);
    EXPECT_EQ(edgesAtCorner.size(), 8U);
    for (const auto& [corner, count] : edgesAtCorner) {
        EXPECT_EQ(count, 3) << corner;
    }
}

TEST(CuboidRep, LiesInTheBoxAlongTheAxesThatHoldsIt)
{
    const CAT3DCuboidRep rep(CORNER, FIRST, SECOND, THIRD, CAT3DCuboidRep::Edges);
    EXPECT_EQ(rep.GetExtent(), std::pair(CATMathPoint(1, 1, 3), CATMathPoint(16, 22, 33)));
    const CAT3DCuboidRep point(CORNER, {}, {}, {}, CAT3DCuboidRep::Edges);
    EXPECT_EQ(point.GetExtent(), std::pair(CORNER, CORNER));
}

TEST(CuboidRep, HasTheViewsColourUntilItIsGivenOne)
{
    CAT3DCuboidRep rep(CORNER, FIRST, SECOND, THIRD, CAT3DCuboidRep::Faces);
    EXPECT_EQ(rep.GetColor(), 0U);
    rep.SetColor(244);
    EXPECT_EQ(rep.GetColor(), 244U);
}

TEST(MathVector, IsAddedAndIsTheDifferenceOfPoints)
{
    EXPECT_EQ(FIRST + SECOND, CATMathVector(15, 20, 0));
    EXPECT_EQ((CORNER + FIRST) - CORNER, FIRST);
    EXPECT_EQ(CATMathVector(), CATMathVector(0, 0, 0));
    EXPECT_EQ(CATMathPoint(), CATMathPoint(0, 0, 0));
}

} // namespace

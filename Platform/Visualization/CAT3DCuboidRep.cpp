#include "CAT3DCuboidRep.h"

#include <algorithm>

namespace {

constexpr int DIRECTION_COUNT = 3;

constexpr std::array<CAT3DCuboidRep::CornerPair, CAT3DCuboidRep::EDGE_COUNT> ListEdges()
{
    std::array<CAT3DCuboidRep::CornerPair, CAT3DCuboidRep::EDGE_COUNT> edges;
    std::size_t count = 0;
    for (int direction = 0; direction < DIRECTION_COUNT; ++direction) {
        const int beyond = 1 << direction;
        for (int corner = 0; corner < CAT3DCuboidRep::CORNER_COUNT; ++corner) {
            if ((corner & beyond) == 0) {
                edges[count++] = {corner, corner | beyond};
            }
        }
    }
    return edges;
}

} // namespace

CAT3DCuboidRep::CAT3DCuboidRep(const CATMathPoint& corner, const CATMathVector& firstEdge,
                               const CATMathVector& secondEdge, const CATMathVector& thirdEdge, int drawMode)
    : m_DrawMode(drawMode)
{
    const std::array<CATMathVector, DIRECTION_COUNT> edges{firstEdge, secondEdge, thirdEdge};
    m_Corners[0] = corner;
    std::size_t count = 1;
    for (const CATMathVector& edge : edges) {
        for (std::size_t i = 0; i < count; ++i) {
            m_Corners[count + i] = m_Corners[i] + edge;
        }
        count *= 2;
    }
}

CAT3DCuboidRep::~CAT3DCuboidRep() = default;

const std::array<CAT3DCuboidRep::CornerPair, CAT3DCuboidRep::EDGE_COUNT>& CAT3DCuboidRep::GetEdges()
{
    static constexpr auto s_Edges = ListEdges();
    return s_Edges;
}

std::pair<CATMathPoint, CATMathPoint> CAT3DCuboidRep::GetExtent() const
{
    const auto range = [this](double (CATMathPoint::*getCoordinate)() const) {
        const auto [low, high] =
            std::minmax_element(m_Corners.begin(), m_Corners.end(), [=](const CATMathPoint& a, const CATMathPoint& b) {
                return (a.*getCoordinate)() < (b.*getCoordinate)();
            });
        return std::pair{((*low).*getCoordinate)(), ((*high).*getCoordinate)()};
    };
    const auto x = range(&CATMathPoint::GetX);
    const auto y = range(&CATMathPoint::GetY);
    const auto z = range(&CATMathPoint::GetZ);
    return {{x.first, y.first, z.first}, {x.second, y.second, z.second}};
}

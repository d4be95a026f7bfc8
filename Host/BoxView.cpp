#include "BoxView.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "CAT3DCuboidRep.h"

namespace {

constexpr unsigned int UNMARKED = 244;
constexpr unsigned int MARKED = 245;

} // namespace

void BoxView::Add(const CATVisuItem& item)
{
    const auto* pRep = dynamic_cast<const CAT3DCuboidRep*>(item.pRep);
    if (pRep == nullptr) {
        return;
    }
    Cuboid cuboid{{}, item.color};
    std::transform(pRep->GetCorners().begin(), pRep->GetCorners().end(), cuboid.corners.begin(), &Project);
    m_Cuboids.push_back(cuboid);
}

BoxView::Point BoxView::Project(const CATMathPoint& point)
{
    // The eye is far away at +x, -y, +z; what is nearer stands lower.
    const double half = 0.5;
    const double rightness = std::sqrt(3.0) / 2;
    return {(point.GetX() + point.GetY()) * rightness, point.GetZ() + (point.GetY() - point.GetX()) * half};
}

LineImage BoxView::Draw() const
{
    LineImage image(m_Size, m_Size);
    Point lowest(std::numeric_limits<double>::max(), std::numeric_limits<double>::max());
    Point highest(-lowest.first, -lowest.second);
    for (const Cuboid& cuboid : m_Cuboids) {
        for (const Point& corner : cuboid.corners) {
            lowest = {std::min(lowest.first, corner.first), std::min(lowest.second, corner.second)};
            highest = {std::max(highest.first, corner.first), std::max(highest.second, corner.second)};
        }
    }
    const double extent = std::max({highest.first - lowest.first, highest.second - lowest.second, 1e-9});
    const double margin = m_Size * 0.04;
    const double scale = (m_Size - 2 * margin) / extent;
    const auto toPixels = [&](const Point& point) {
        return Point(m_Size / 2.0 + (point.first - (lowest.first + highest.first) / 2) * scale,
                     m_Size / 2.0 - (point.second - (lowest.second + highest.second) / 2) * scale);
    };
    for (const bool isMarked : {false, true}) {
        for (const Cuboid& cuboid : m_Cuboids) {
            if ((cuboid.color == MARKED) != isMarked) {
                continue;
            }
            for (const auto& [first, second] : CAT3DCuboidRep::GetEdges()) {
                const Point from = toPixels(cuboid.corners[static_cast<std::size_t>(first)]);
                const Point to = toPixels(cuboid.corners[static_cast<std::size_t>(second)]);
                image.DrawLine(from.first, from.second, to.first, to.second, isMarked ? 2.4 : 1.2,
                               GetColor(cuboid.color));
            }
        }
    }
    return image;
}

LineImage::Color BoxView::GetColor(unsigned int color)
{
    if (color == MARKED) {
        return {214, 39, 40};
    }
    if (color == UNMARKED) {
        return {47, 95, 158};
    }
    // The rest of the palette: hues around the circle.
    const auto wave = [color](double shift) {
        return static_cast<std::uint8_t>(std::lround(110 + 90 * std::sin(color * 0.7 + shift)));
    };
    return {wave(0), wave(2.1), wave(4.2)};
}

#pragma once

#include <array>
#include <utility>

#include "CATMathPoint.h"
#include "CATMathVector.h"
#include "CATRep.h"

// A cuboid: a corner and the three edges that start there. The edges may have any length and direction; where they are
// not at right angles the cuboid is oblique, where they lie in a plane it is flat.
class PLATFORM_API CAT3DCuboidRep : public CATRep
{
public:
    // What of the cuboid is drawn.
    enum DrawMode
    {
        Faces = 0,
        Edges = 1,
        FacesAndEdges = 2
    };

    static constexpr int CORNER_COUNT = 8;
    static constexpr int EDGE_COUNT = 12;

    // Positions of two corners in GetCorners.
    using CornerPair = std::pair<int, int>;

    CAT3DCuboidRep(const CATMathPoint& corner, const CATMathVector& firstEdge, const CATMathVector& secondEdge,
                   const CATMathVector& thirdEdge, int drawMode);
    ~CAT3DCuboidRep() override;

    int GetDrawMode() const { return m_DrawMode; }

    // The corners. Bit 0 of a position, counted from 0, is set for those beyond the first edge, bit 1 beyond the
    // second, bit 2 beyond the third: position 0 is the corner that was given, position 7 the one opposite.
    const std::array<CATMathPoint, CORNER_COUNT>& GetCorners() const { return m_Corners; }

    // The edges, each from the corner with the lower position: four along the first edge, four along the second, four
    // along the third.
    static const std::array<CornerPair, EDGE_COUNT>& GetEdges();

    // The corners of the smallest box along the axes that holds the cuboid: the lowest and the highest coordinates.
    std::pair<CATMathPoint, CATMathPoint> GetExtent() const;

private:
    std::array<CATMathPoint, CORNER_COUNT> m_Corners;
    int m_DrawMode;
};

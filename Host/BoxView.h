#pragma once

#include <array>
#include <utility>
#include <vector>

#include "CATMathPoint.h"
#include "CATVisuItem.h"
#include "LineImage.h"

// A 3D view of cuboids without a screen: seen from the front (-y), right (+x) and above, all axes shortened alike,
// fitted into a square picture.
class BoxView
{
public:
    // Pixels in width and height.
    explicit BoxView(int size) : m_Size(size) {}

    // An object of a scene; what is no cuboid is not drawn.
    void Add(const CATVisuItem& item);

    // The twelve edges of each cuboid in its colour, the marked ones over the others.
    LineImage Draw() const;

    // What a number of the view's palette looks like.
    static LineImage::Color GetColor(unsigned int color);

private:
    using Point = std::pair<double, double>; // right, up

    struct Cuboid
    {
        std::array<Point, 8> corners;
        unsigned int color;
    };

    static Point Project(const CATMathPoint& point);

    int m_Size;
    std::vector<Cuboid> m_Cuboids;
};

#pragma once

#include "CATMathVector.h"

// Point in space, millimetres. Three consecutive numbers.
class CATMathPoint
{
public:
    constexpr CATMathPoint() = default;
    constexpr CATMathPoint(double x, double y, double z) : m_X(x), m_Y(y), m_Z(z) {}

    constexpr double GetX() const { return m_X; }
    constexpr double GetY() const { return m_Y; }
    constexpr double GetZ() const { return m_Z; }

    friend constexpr CATMathPoint operator+(const CATMathPoint& point, const CATMathVector& vector)
    {
        return {point.m_X + vector.GetX(), point.m_Y + vector.GetY(), point.m_Z + vector.GetZ()};
    }
    friend constexpr CATMathVector operator-(const CATMathPoint& a, const CATMathPoint& b)
    {
        return {a.m_X - b.m_X, a.m_Y - b.m_Y, a.m_Z - b.m_Z};
    }
    friend constexpr bool operator==(const CATMathPoint&, const CATMathPoint&) = default;

private:
    double m_X = 0;
    double m_Y = 0;
    double m_Z = 0;
};

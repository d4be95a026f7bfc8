#pragma once

// Vector in space, millimetres. Three consecutive numbers.
class CATMathVector
{
public:
    constexpr CATMathVector() = default;
    constexpr CATMathVector(double x, double y, double z) : m_X(x), m_Y(y), m_Z(z) {}

    constexpr double GetX() const { return m_X; }
    constexpr double GetY() const { return m_Y; }
    constexpr double GetZ() const { return m_Z; }

    friend constexpr CATMathVector operator+(const CATMathVector& a, const CATMathVector& b)
    {
        return {a.m_X + b.m_X, a.m_Y + b.m_Y, a.m_Z + b.m_Z};
    }
    friend constexpr bool operator==(const CATMathVector&, const CATMathVector&) = default;

private:
    double m_X = 0;
    double m_Y = 0;
    double m_Z = 0;
};

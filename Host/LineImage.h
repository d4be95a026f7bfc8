#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A picture made of lines.
class LineImage
{
public:
    struct Color
    {
        std::uint8_t red;
        std::uint8_t green;
        std::uint8_t blue;

        friend bool operator==(const Color&, const Color&) = default;
    };

    // A white picture.
    LineImage(int width, int height);

    int GetWidth() const { return m_Width; }
    int GetHeight() const { return m_Height; }

    // The pixel in that column and row, counted from 0 at the upper left; white outside.
    Color GetPixel(int x, int y) const;

    // Draws a line of that width, smoothed, over what is there. Ends may lie outside of the picture; a line whose ends
    // are no numbers is left out.
    void DrawLine(double x1, double y1, double x2, double y2, double width, Color color);

    // Writes the picture. Raises HostError when the file cannot be written.
    void WritePng(const std::string& path) const;

private:
    void Blend(int x, int y, double coverage, Color color);

    int m_Width;
    int m_Height;
    std::vector<std::uint8_t> m_Pixels; // three bytes each, rows from the top
};

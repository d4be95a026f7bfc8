#include "LineImage.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "HostError.h"
#include "HostOutputFile.h"

namespace {

constexpr std::size_t BYTES = 3;
constexpr std::uint8_t WHITE = 255;

// Cuts the line from (*pX1, *pY1) to (*pX2, *pY2) at a rectangle; false when nothing is left.
bool Clip(double left, double top, double right, double bottom, double* pX1, double* pY1, double* pX2, double* pY2)
{
    const double dx = *pX2 - *pX1;
    const double dy = *pY2 - *pY1;
    double from = 0;
    double to = 1;
    const auto cut = [&from, &to](double direction, double distance) {
        if (direction == 0) {
            return distance >= 0;
        }
        const double at = distance / direction;
        (direction < 0 ? from : to) = direction < 0 ? std::max(from, at) : std::min(to, at);
        return from <= to;
    };
    if (!cut(-dx, *pX1 - left) || !cut(dx, right - *pX1) || !cut(-dy, *pY1 - top) || !cut(dy, bottom - *pY1)) {
        return false;
    }
    *pX2 = *pX1 + to * dx;
    *pY2 = *pY1 + to * dy;
    *pX1 += from * dx;
    *pY1 += from * dy;
    return true;
}

} // namespace

LineImage::LineImage(int width, int height)
    : m_Width(width), m_Height(height),
      m_Pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * BYTES, WHITE)
{
}

LineImage::Color LineImage::GetPixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_Width || y >= m_Height) {
        return {WHITE, WHITE, WHITE};
    }
    const std::size_t at =
        (static_cast<std::size_t>(y) * static_cast<std::size_t>(m_Width) + static_cast<std::size_t>(x)) * BYTES;
    return {m_Pixels[at], m_Pixels[at + 1], m_Pixels[at + 2]};
}

void LineImage::Blend(int x, int y, double coverage, Color color)
{
    if (coverage <= 0 || x < 0 || y < 0 || x >= m_Width || y >= m_Height) {
        return;
    }
    std::uint8_t* pPixel =
        &m_Pixels[(static_cast<std::size_t>(y) * static_cast<std::size_t>(m_Width) + static_cast<std::size_t>(x)) *
                  BYTES];
    const double share = std::min(coverage, 1.0);
    for (const std::uint8_t component : {color.red, color.green, color.blue}) {
        *pPixel = static_cast<std::uint8_t>(std::lround(*pPixel * (1 - share) + component * share));
        ++pPixel;
    }
}

void LineImage::DrawLine(double x1, double y1, double x2, double y2, double width, Color color)
{
    const double margin = width + 1;
    if (!std::isfinite(x1 + y1 + x2 + y2) ||
        !Clip(-margin, -margin, m_Width + margin, m_Height + margin, &x1, &y1, &x2, &y2)) {
        return;
    }
    const double dx = x2 - x1;
    const double dy = y2 - y1;
    const double length2 = dx * dx + dy * dy;
    const bool isFlat = std::abs(dx) >= std::abs(dy);
    // Along the longer direction, each step with the pixels across; a pixel is covered as far as it is near the line.
    const double reach = width / 2 + 1;
    const double from = isFlat ? std::min(x1, x2) : std::min(y1, y2);
    const double to = isFlat ? std::max(x1, x2) : std::max(y1, y2);
    const double slope = isFlat ? (dx != 0 ? dy / dx : 0) : (dy != 0 ? dx / dy : 0);
    const double across = reach * std::sqrt(1 + slope * slope);
    for (int step = static_cast<int>(std::floor(from - reach)); step <= static_cast<int>(std::ceil(to + reach));
         ++step) {
        const double center = (isFlat ? y1 + (step - x1) * slope : x1 + (step - y1) * slope);
        for (int other = static_cast<int>(std::floor(center - across));
             other <= static_cast<int>(std::ceil(center + across)); ++other) {
            const double x = isFlat ? step : other;
            const double y = isFlat ? other : step;
            const double along = length2 > 0 ? std::clamp(((x - x1) * dx + (y - y1) * dy) / length2, 0.0, 1.0) : 0;
            const double distance = std::hypot(x - (x1 + along * dx), y - (y1 + along * dy));
            Blend(static_cast<int>(x), static_cast<int>(y), width / 2 + 0.5 - distance, color);
        }
    }
}

void LineImage::WritePng(const std::string& path) const
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(m_Width);
    image.height = static_cast<png_uint_32>(m_Height);
    image.format = PNG_FORMAT_RGB;
    // Not by the library itself, which removes the file, or a device of that name, when it cannot write.
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = bytes.size();
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, m_Pixels.data(), 0, nullptr) == 0) {
        throw HostError(ExitCode::Failure, path + " cannot be drawn: " + image.message);
    }
    HostOutputFile file(path);
    file.Write(std::string_view(bytes).substr(0, size));
    file.Complete();
}

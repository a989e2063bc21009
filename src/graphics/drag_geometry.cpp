// The constraints of a dragged point.
#include "graphics/drag_geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace toolbox::graphics {
namespace {

std::int64_t distance(std::int32_t a, std::int32_t b) {
    return std::abs(std::int64_t{a} - b);
}

std::int32_t truncated(double x) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp(x, double{Limits::min()}, double{Limits::max()}));
}

}  // namespace

Pixel constrainOrthogonally(Pixel point, Pixel origin) {
    if (distance(point.x, origin.x) >= distance(point.y, origin.y)) return {point.x, origin.y};
    return {origin.x, point.y};
}

Pixel projectOntoEllipse(Pixel point, const EllipseDims& ellipse) {
    const Pixel center = ellipse.center;
    const std::int64_t dx = std::int64_t{point.x} - center.x;
    const std::int64_t dy = std::int64_t{point.y} - center.y;
    if (dx == 0 && dy == 0) return point;
    // Doubles hold these integers exactly for distances up to 67 million pixels.
    const auto x = static_cast<double>(dx);
    const auto y = static_cast<double>(dy);
    // Rounded to single precision: it decides on which side of a pixel a point falls.
    const auto length = static_cast<float>(std::sqrt(x * x + y * y));
    return {truncated(center.x + ellipse.radiusX * x / length),
            truncated(center.y - ellipse.radiusY * y / length)};
}

}  // namespace toolbox::graphics

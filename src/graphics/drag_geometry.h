// Where a dragged point may lie, apart from any window.
#pragma once

#include <cstdint>

namespace toolbox::graphics {

/// A point of a window's client area, in pixels.
struct Pixel {
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const Pixel&) const = default;
};

/// The point moved onto the horizontal or the vertical through `origin`, whichever it is nearer to;
/// the horizontal when both are as near.
[[nodiscard]] Pixel constrainOrthogonally(Pixel point, Pixel origin);

struct EllipseDims {
    Pixel center;
    std::int32_t radiusX = 0;
    std::int32_t radiusY = 0;
};

/// The point at the direction in which `point` lies from the center, at the radii's distance, and
/// mirrored about the horizontal through the center. The center itself stays.
[[nodiscard]] Pixel projectOntoEllipse(Pixel point, const EllipseDims& ellipse);

}  // namespace toolbox::graphics

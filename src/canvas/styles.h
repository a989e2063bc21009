// What styles and coordinates can be.
#pragma once

#include <algorithm>
#include <cmath>

#include "toolbox/canvas.h"

namespace toolbox::canvas {

[[nodiscard]] inline bool isNear(double coordinate) {
    return std::fabs(coordinate) <= kTvCanvasFar;  // false for what is no number
}

[[nodiscard]] inline bool isNear(TvPoint point) {
    return isNear(point.x) && isNear(point.y);
}

[[nodiscard]] inline bool isPen(const TvPen& pen) {
    const auto isLength = [](double dash) { return dash >= 0 && isNear(dash); };
    return isNear(pen.width) && std::all_of(pen.dash.begin(), pen.dash.end(), isLength);
}

[[nodiscard]] inline bool isFont(const TvFont& font) {
    return font.size >= 0.01 && font.size <= 10000 && font.family <= TvFont::Courier;
}

[[nodiscard]] inline bool isPlace(const TvTextPlace& place) {
    return std::isfinite(place.angle) && place.align <= TvAlign::right &&
           place.level <= TvLevel::bottom;
}

/// A page's side as a canvas takes it.
[[nodiscard]] inline double pageSide(double points) {
    return points >= 1 ? std::min(points, 14400.0) : 1;
}

}  // namespace toolbox::canvas

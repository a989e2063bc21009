// Points, rectangles and lines of the page.
#pragma once

#include <algorithm>
#include <cmath>

#include "toolbox/canvas_text.h"
#include "toolbox/transform.h"

namespace toolbox::tag {

[[nodiscard]] inline TvPoint operator+(TvPoint a, TvPoint b) {
    return {a.x + b.x, a.y + b.y};
}
[[nodiscard]] inline TvPoint operator-(TvPoint a, TvPoint b) {
    return {a.x - b.x, a.y - b.y};
}

[[nodiscard]] inline PlaneRect moved(const PlaneRect& rect, TvPoint by) {
    return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
}
/// Wider on all sides; narrower with a negative amount.
[[nodiscard]] inline PlaneRect grown(const PlaneRect& rect, double by) {
    return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}
[[nodiscard]] inline PlaneRect unionOf(const PlaneRect& a, const PlaneRect& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}
[[nodiscard]] inline PlaneRect intersection(const PlaneRect& a, const PlaneRect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}
[[nodiscard]] inline bool isWithin(const PlaneRect& inner, const PlaneRect& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}
/// The point of the rectangle that is nearest.
[[nodiscard]] inline TvPoint nearestIn(const PlaneRect& rect, TvPoint point) {
    return {std::clamp(point.x, rect.left, rect.right), std::clamp(point.y, rect.top, rect.bottom)};
}
[[nodiscard]] inline double distance(TvPoint a, TvPoint b) {
    const TvPoint way = a - b;
    return std::sqrt(way.x * way.x + way.y * way.y);
}
[[nodiscard]] inline double distanceToLine(TvPoint point, TvPoint from, TvPoint to) {
    const TvPoint along = to - from;
    const TvPoint at = point - from;
    const double square = along.x * along.x + along.y * along.y;
    const double part = square > 0 ? (along.x * at.x + along.y * at.y) / square : 0;
    const double t = std::clamp(part, 0.0, 1.0);
    return distance(at, {along.x * t, along.y * t});
}

}  // namespace toolbox::tag

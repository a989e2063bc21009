// Lengths and forces are read from pixels with the scales they are drawn with, then rounded to
// steps.
#include "drawing/drawing_edits.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

Beam beamBetween(const DrawingPlane& plane, Pixel start, Pixel end) {
    const Place from = plane.snappedPlace(start);
    const Place to = plane.snappedPlace(end);
    Beam beam;
    beam.x = std::min(from.x, to.x);
    beam.y = from.y;
    beam.span = snapped(std::fabs(to.x - from.x), kLengthStep);
    return beam;
}

CString freeBeamName(const Project& project) {
    for (std::size_t number = project.beams().size() + 1;; ++number) {
        CString name = "P" + std::to_string(number);
        if (std::ranges::none_of(project.beams(),
                                 [&](const Beam& beam) { return beam.name == name; }))
            return name;
    }
}

namespace {

/// Pixels beyond a beam's flanges: positive above the top.
int beyond(const BeamPlace& place, int y) {
    if (y < place.top) return place.top - y;
    return y > place.bottom ? place.bottom - y : 0;
}

double load(int pixels, double scale) {
    return std::clamp(snapped(pixels / scale, kForceStep), -kLoadMax, kLoadMax);
}

}  // namespace

double forceFrom(const DrawingLayout& layout, const Beam& beam, int y) {
    return load(beyond(layout.place(beam), y), layout.forceScale());
}

double uniformFrom(const DrawingLayout& layout, const Beam& beam, const PixelRect& rect) {
    const BeamPlace place = layout.place(beam);
    const int above = std::max(beyond(place, rect.top), 0);
    const int below = std::min(beyond(place, rect.bottom), 0);
    return load(above >= -below ? above : below, layout.uniformScale());
}

const Beam* beamUnder(const Project& project, const DrawingLayout& layout, const PixelRect& rect) {
    const Beam* found = nullptr;
    int most = 0;
    for (const Beam& beam : project.beams()) {
        const BeamPlace place = layout.place(beam);
        if (rect.bottom < place.top || rect.top > place.bottom) continue;
        const int covered = std::min(rect.right, place.right) - std::max(rect.left, place.left);
        if (covered <= most) continue;
        most = covered;
        found = &beam;
    }
    return found;
}

double positionOn(const DrawingLayout& layout, const Beam& beam, int x) {
    const double along = layout.plane.toPlane({x, 0}).x - beam.x;
    return std::clamp(snapped(along, kLengthStep), 0.0, beam.span);
}

Place dragged(const DrawingPlane& plane, const Place& from, Pixel start, Pixel end) {
    const Place first = plane.toPlane(start);
    const Place last = plane.toPlane(end);
    return {snapped(from.x + last.x - first.x, kLengthStep),
            snapped(from.y + last.y - first.y, kLengthStep)};
}

bool isDrag(Pixel start, Pixel end) {
    constexpr int kStill = 3;
    return std::abs(end.x - start.x) > kStill || std::abs(end.y - start.y) > kStill;
}

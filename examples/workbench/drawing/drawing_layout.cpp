// Beams, loads and texts in pixels: sizes along the beam follow the plane, arrows and texts the
// forces.
#include "drawing/drawing_layout.h"

#include <algorithm>
#include <cmath>
#include <ranges>

namespace {

// Scales of a drawing at its usual size; a smaller one, below so many pixels per metre, has shorter
// arrows.
constexpr double kUsualScale = 40;
constexpr double kForceScale = 5, kUniformScale = 4;
constexpr double kLongestArrow = 120, kHighestComb = 44;
constexpr int kShortestArrow = 8;
constexpr double kSagScale = 1.5;  // pixels per mm
constexpr int kDeepestSag = 26;

constexpr double kUnknownDepth = 200;  // mm
constexpr double kThinnest = 3;

int whole(double value) {
    return static_cast<int>(std::lround(value));
}

double smaller(double scale) {
    return std::min(1.0, scale / kUsualScale);
}

/// Pixels per unit, fewer where the largest value would pass its limit.
double limited(double usual, double largest, double limit) {
    return usual * largest > limit ? limit / largest : usual;
}

/// A beam under a uniform load, 1 at midspan.
double bentShape(double along) {
    return 3.2 * along * (1 - 2 * along * along + along * along * along);
}

}  // namespace

void DrawingLayout::measureLoads(const Project& project) {
    largestForce_ = largestUniform_ = 0;
    for (const Beam& beam : project.beams()) {
        largestUniform_ = std::max(largestUniform_, std::fabs(beam.uniform));
        for (const PointLoad& load : beam.loads)
            largestForce_ = std::max(largestForce_, std::fabs(load.force));
    }
}

void DrawingLayout::fit(const Project& project, const PixelRect& part) {
    int above = 0, below = 0;
    const auto measure = [&] {
        above = below = 0;
        for (const Beam& beam : project.beams()) {
            const PixelRect all = around(beam, place(beam));
            above = std::max(above, part.top - all.top);
            below = std::max(below, all.bottom - part.bottom);
        }
    };
    // The plane keeps a usual room for arrows and texts; long arrows need more.
    plane = DrawingPlane(extentOf(project), part);
    measure();
    const PixelRect inner{part.left, part.top + above, part.right, part.bottom - below};
    if ((above == 0 && below == 0) || inner.height() <= 0) return;
    plane = DrawingPlane(extentOf(project), inner);
    measure();
    plane.pan(0, above > 0 ? above : -below);
}

double DrawingLayout::forceScale() const {
    return limited(kForceScale, largestForce_, kLongestArrow) * smaller(plane.scale());
}

double DrawingLayout::uniformScale() const {
    return limited(kUniformScale, largestUniform_, kHighestComb) * smaller(plane.scale());
}

BeamPlace DrawingLayout::place(const Beam& beam) const {
    const Pixel left = plane.toWindow({beam.x, beam.y});
    const Pixel right = plane.toWindow({beam.x + beam.span, beam.y});
    const double depth = depth_(beam);
    const double thickness =
        std::max(kThinnest, (depth > 0 ? depth : kUnknownDepth) / 1000 * plane.scale());
    BeamPlace place{.left = left.x, .right = std::max(right.x, left.x + 1), .axis = left.y};
    place.top = left.y - whole(thickness / 2);
    place.bottom = place.top + whole(thickness);
    const int height = whole(beam.uniform * uniformScale());
    place.comb = height >= 0 ? place.top - height : place.bottom - height;
    return place;
}

Arrow DrawingLayout::arrow(const Beam& beam, const BeamPlace& place, const PointLoad& load) const {
    const int x = plane.toWindow({beam.x + load.position, beam.y}).x;
    const int length = std::max(whole(std::fabs(load.force) * forceScale()), kShortestArrow);
    if (load.force < 0) return {{x, place.bottom + length}, {x, place.bottom}};
    return {{x, place.top - length}, {x, place.top}};
}

std::vector<Arrow> DrawingLayout::comb(const BeamPlace& place) const {
    constexpr int kApart = 22;
    if (place.comb >= place.top && place.comb <= place.bottom) return {};
    const int tip = place.comb < place.top ? place.top : place.bottom;
    const int parts = std::max(place.width() / kApart, 1);
    std::vector<Arrow> arrows;
    for (int i = 0; i <= parts; ++i) {
        const int x = place.left + whole(static_cast<double>(place.width()) * i / parts);
        arrows.push_back({{x, place.comb}, {x, tip}});
    }
    return arrows;
}

std::vector<TvPoint> DrawingLayout::deflected(const BeamPlace& place, double deflection) const {
    if (!std::isfinite(deflection)) return {};
    const double deepest = kDeepestSag * smaller(plane.scale());
    const double sag =
        std::clamp(deflection * kSagScale * smaller(plane.scale()), -deepest, deepest);
    const int parts = std::clamp(place.width() / 8, 4, 64);
    std::vector<TvPoint> curve;
    for (int i = 0; i <= parts; ++i) {
        const double along = static_cast<double>(i) / parts;
        curve.push_back(
            {place.left + along * place.width(), place.bottom + sag * bentShape(along)});
    }
    return curve;
}

int DrawingLayout::nameLine(const BeamPlace& place) const {
    constexpr int kHalfLine = 11;
    const int sag = whole(kDeepestSag * smaller(plane.scale()));
    return std::max(place.bottom + std::max(sag, kSupportHeight), place.comb) + kHalfLine;
}

int DrawingLayout::dimensionLine(const BeamPlace& place) const {
    return nameLine(place) + 20;
}

PixelRect DrawingLayout::around(const Beam& beam, const BeamPlace& place) const {
    constexpr int kText = 20;
    PixelRect all{place.left - kSupportHeight, std::min(place.comb, place.top) - kText,
                  place.right + kSupportHeight, std::max(place.comb, dimensionLine(place)) + kText};
    for (const PointLoad& load : beam.loads) {
        const int tail = arrow(beam, place, load).tail.y;
        all.top = std::min(all.top, tail - kText);
        all.bottom = std::max(all.bottom, tail + kText);
    }
    return all;
}

namespace {

constexpr int kNear = 5;

bool isAt(const BeamPlace& place, Pixel at) {
    // Supports count as the beam where they are drawn: where the beam is longer than they are wide.
    const int below =
        place.width() > 4 * kSupportHeight && (at.x < place.left + kSupportHeight / 2 + 2 ||
                                               at.x > place.right - kSupportHeight / 2 - 2)
            ? kSupportHeight
            : kNear;
    return PixelRect{place.left - kNear, std::min(place.comb, place.top - kNear),
                     place.right + kNear + 1, std::max(place.comb, place.bottom + below) + 1}
        .contains(at);
}

bool isAt(const Arrow& arrow, Pixel at) {
    return std::abs(at.x - arrow.tail.x) <= kNear &&
           at.y >= std::min(arrow.tail.y, arrow.tip.y) - kNear &&
           at.y <= std::max(arrow.tail.y, arrow.tip.y);
}

}  // namespace

const Beam* beamAt(const Project& project, const DrawingLayout& layout, Pixel at) {
    for (const Beam& beam : project.beams() | std::views::reverse)
        if (isAt(layout.place(beam), at)) return &beam;
    return nullptr;
}

const Beam* nearestBeam(const Project& project, const Place& place) {
    const auto distance = [&](const Beam& beam) {
        const double beside = std::max({beam.x - place.x, place.x - beam.x - beam.span, 0.0});
        return std::hypot(beside, place.y - beam.y);
    };
    const auto nearest = std::ranges::min_element(project.beams(), {}, distance);
    return nearest == project.beams().end() ? nullptr : &*nearest;
}

Selection hitTest(const Project& project, const DrawingLayout& layout, const TvTagLayout& labels,
                  Pixel at) {
    const TvTagHit hit = labels.find(pointOf(at), 0);
    if (hit.id != 0) return {Selection::OneLabel, hit.id};
    for (const Beam& beam : project.beams() | std::views::reverse) {
        if (beam.loads.empty()) continue;
        const BeamPlace place = layout.place(beam);
        if (!layout.around(beam, place).contains(at)) continue;
        for (std::size_t i = beam.loads.size(); i-- > 0;)
            if (isAt(layout.arrow(beam, place, beam.loads[i]), at))
                return {Selection::OneLoad, beam.id, i};
    }
    if (const Beam* beam = beamAt(project, layout, at)) return {Selection::OneBeam, beam->id};
    return {};
}

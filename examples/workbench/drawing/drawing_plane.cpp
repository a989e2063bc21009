// The transform from metres to pixels, and the numbers that a mouse in it stands for.
#include "drawing/drawing_plane.h"

#include <algorithm>
#include <cmath>

namespace {

// Around the extent: arrows above, supports and texts below.
constexpr int kBeside = 50, kAbove = 80, kBelow = 66;

// Nothing farther is drawn; the system's functions for lines add coordinates up.
constexpr double kFarPixel = 1e8;

int pixel(double value) {
    return static_cast<int>(std::lround(std::clamp(value, -kFarPixel, kFarPixel)));
}

}  // namespace

PixelRect pixelsOf(const toolbox::PlaneRect& rect) {
    return {pixel(std::floor(rect.left)), pixel(std::floor(rect.top)), pixel(std::ceil(rect.right)),
            pixel(std::ceil(rect.bottom))};
}

TvPoint pointOf(Pixel pixel) {
    return {static_cast<double>(pixel.x), static_cast<double>(pixel.y)};
}

toolbox::PlaneRect planeRect(const PixelRect& rect) {
    const TvPoint first = pointOf({rect.left, rect.top}), last = pointOf({rect.right, rect.bottom});
    return {first.x, first.y, last.x, last.y};
}

toolbox::PlaneRect extentOf(const Project& project) {
    if (project.beams().empty()) return {0, 1.5, 12, -1.5};
    constexpr double kFar = 1e9;
    toolbox::PlaneRect extent{kFar, -kFar, -kFar, kFar};
    const auto include = [&extent](double left, double right, double y) {
        extent.left = std::min(extent.left, left);
        extent.right = std::max(extent.right, right);
        extent.top = std::max(extent.top, y);
        extent.bottom = std::min(extent.bottom, y);
    };
    for (const Beam& beam : project.beams()) include(beam.x, beam.x + beam.span, beam.y);
    for (const Label& label : project.labels())
        include(label.tag.anchor.x, label.tag.anchor.x, label.tag.anchor.y);
    return extent;
}

DrawingPlane::DrawingPlane(const toolbox::PlaneRect& extent, const PixelRect& part,
                           double scaleMin) {
    const double width = extent.right - extent.left;
    const double height = extent.top - extent.bottom;
    const double across = std::max(part.width() - 2 * kBeside, 1);
    const double up = std::max(part.height() - kAbove - kBelow, 1);
    // A single beam does not fill the window: there would be no room for its loads.
    constexpr double kComfortable = 150;
    const double fitting = std::min(across / std::max(width, 1.0), up / std::max(height, 0.1));
    const double scale =
        std::clamp(fitting, std::max(kScaleMin, scaleMin), std::max(kComfortable, scaleMin));
    const double beside = std::max(across - scale * width, 0.0) / 2;
    const double above = std::max(up - scale * height, 0.0) / 2;
    place(scale, part.left + kBeside + beside - scale * extent.left,
          part.top + kAbove + above + scale * extent.top);
}

void DrawingPlane::place(double scale, double x, double y) {
    scale_ = scale;
    toWindow_ = TransMatrix2D(scale, -scale, TransMatrix2D::Scale);
    toWindow_.translate(x, y);
    toWindow_.inverse(toPlane_);
}

Pixel DrawingPlane::toWindow(const Place& place) const {
    const auto at = toWindow_.mapPoint(SmallVector<double, 2>(place.x, place.y));
    return {pixel(at[0]), pixel(at[1])};
}

Place DrawingPlane::toPlane(Pixel pixel) const {
    const auto at = toPlane_.mapPoint(SmallVector<double, 2>(pixel.x, pixel.y));
    return {at[0], at[1]};
}

Place DrawingPlane::snappedPlace(Pixel pixel) const {
    const Place place = toPlane(pixel);
    return {snapped(place.x, kLengthStep), snapped(place.y, kLengthStep)};
}

toolbox::PlaneRect DrawingPlane::shown(const PixelRect& part) const {
    const Place first = toPlane({part.left, part.top});
    const Place last = toPlane({part.right, part.bottom});
    return {first.x, first.y, last.x, last.y};
}

void DrawingPlane::zoom(double factor, Pixel about) {
    const double scale = std::clamp(scale_ * factor, kScaleMin, kScaleMax);
    const Place still = toPlane(about);
    place(scale, about.x - scale * still.x, about.y + scale * still.y);
}

void DrawingPlane::pan(int dx, int dy) {
    toWindow_.translate(dx, dy);
    toWindow_.inverse(toPlane_);
}

double gridStep(double scale, int pixels) {
    const double least = pixels / scale;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double times : {1.0, 2.0, 5.0})
        if (times * power >= least) return times * power;
    return 10 * power;
}

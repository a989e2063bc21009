// Paths. Round shapes are cubic curves over a quarter of a turn at most.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "toolbox/canvas.h"

namespace {

constexpr double kTurn = 2 * std::numbers::pi;

/// An ellipse by the angle of the circle that is stretched to it.
struct Ellipse {
    TvPoint center;
    double radiusX;
    double radiusY;

    /// The point (x, y) of the unit circle's plane.
    [[nodiscard]] TvPoint at(double x, double y) const {
        return {center.x + radiusX * x, center.y + radiusY * y};
    }
};

}  // namespace

TvPath& TvPath::moveTo(TvPoint to) {
    steps_.push_back(Move);
    points_.push_back(to);
    return *this;
}

TvPath& TvPath::lineTo(TvPoint to) {
    steps_.push_back(isOpen() ? Line : Move);
    points_.push_back(to);
    return *this;
}

TvPath& TvPath::curveTo(TvPoint control1, TvPoint control2, TvPoint to) {
    if (!isOpen()) moveTo(control1);
    steps_.push_back(Curve);
    points_.insert(points_.end(), {control1, control2, to});
    return *this;
}

TvPath& TvPath::close() {
    if (isOpen()) steps_.push_back(Close);
    return *this;
}

TvPath& TvPath::polyline(std::span<const TvPoint> points) {
    if (points.size() < 2) return *this;
    steps_.push_back(Move);
    steps_.insert(steps_.end(), points.size() - 1, Line);
    points_.insert(points_.end(), points.begin(), points.end());
    return *this;
}

TvPath& TvPath::polygon(std::span<const TvPoint> points) {
    return points.size() < 2 ? *this : polyline(points).close();
}

TvPath& TvPath::rectangle(const toolbox::PlaneRect& rect) {
    const TvPoint corners[] = {{rect.left, rect.top},
                               {rect.right, rect.top},
                               {rect.right, rect.bottom},
                               {rect.left, rect.bottom}};
    return polygon(corners);
}

TvPath& TvPath::ellipse(TvPoint center, double radiusX, double radiusY) {
    // Where the control points of a quarter lie so that its middle is on the circle.
    constexpr double k = 4.0 / 3.0 * (std::numbers::sqrt2 - 1);
    const Ellipse e{center, radiusX, radiusY};
    moveTo(e.at(1, 0));
    curveTo(e.at(1, k), e.at(k, 1), e.at(0, 1));
    curveTo(e.at(-k, 1), e.at(-1, k), e.at(-1, 0));
    curveTo(e.at(-1, -k), e.at(-k, -1), e.at(0, -1));
    curveTo(e.at(k, -1), e.at(1, -k), e.at(1, 0));
    return close();
}

TvPath& TvPath::arc(TvPoint center, double radiusX, double radiusY, double start, double sweep) {
    if (std::fabs(sweep) >= kTurn) return ellipse(center, radiusX, radiusY);
    const Ellipse e{center, radiusX, radiusY};
    const int parts = std::isfinite(sweep)
                          ? std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) * 4 / kTurn)))
                          : 1;
    const double step = sweep / parts;
    const double k = 4.0 / 3.0 * std::tan(step / 4);
    moveTo(e.at(std::cos(start), std::sin(start)));
    for (int i = 0; i < parts; ++i) {
        const double from = start + i * step;
        const double to = i + 1 == parts ? start + sweep : from + step;
        const double c0 = std::cos(from);
        const double s0 = std::sin(from);
        const double c1 = std::cos(to);
        const double s1 = std::sin(to);
        curveTo(e.at(c0 - k * s0, s0 + k * c0), e.at(c1 + k * s1, s1 - k * c1), e.at(c1, s1));
    }
    return *this;
}

void TvPath::clear() {
    steps_.clear();
    points_.clear();
}

void TvPath::setMapped(const TvPath& other, const TransMatrix2D& transform) {
    if (&other != this) *this = other;
    const double* const x = transform[0];
    const double* const y = transform[1];
    for (TvPoint& point : points_)
        point = {x[0] * point.x + x[1] * point.y + x[2], y[0] * point.x + y[1] * point.y + y[2]};
}

// Each piece is flattened, cut where it leaves the square, and rounded.
#include "canvas/device/device_shape.h"

#include <algorithm>
#include <cmath>

#include "canvas/steps.h"

namespace toolbox::canvas {
namespace {

constexpr double kOff = 0.25;  // units that a flattened curve may be off
constexpr double kMostParts = 2000;

[[nodiscard]] bool isOutside(TvPoint point) {
    return std::max(std::fabs(point.x), std::fabs(point.y)) > kDeviceFar;
}

[[nodiscard]] TvPoint between(TvPoint a, TvPoint b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

/// A bound of the curve's second derivative, over 6.
[[nodiscard]] double bend(TvPoint a, TvPoint b, TvPoint c) {
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
}

/// A chord over a parameter's h is off by at most h * h / 8 of the second derivative.
void addCurve(std::vector<TvPoint>& out, TvPoint b, TvPoint c, TvPoint d) {
    const TvPoint a = out.back();
    const double most = std::max(bend(a, b, c), bend(b, c, d));
    const auto parts =
        static_cast<int>(std::clamp(std::ceil(std::sqrt(0.75 * most / kOff)), 1.0, kMostParts));
    for (int i = 1; i < parts; ++i) {
        const double t = static_cast<double>(i) / parts;
        const TvPoint ab = between(a, b, t);
        const TvPoint bc = between(b, c, t);
        const TvPoint cd = between(c, d, t);
        out.push_back(between(between(ab, bc, t), between(bc, cd, t), t));
    }
    out.push_back(d);
}

/// One side of the square: how far inside a point is.
struct Side {
    double x;
    double y;
    [[nodiscard]] double inside(TvPoint point) const {
        return kDeviceFar - x * point.x - y * point.y;
    }
};

constexpr Side kSides[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};

/// The part of a segment within the square; false when there is none.
bool cutSegment(TvPoint& from, TvPoint& to) {
    double start = 0;
    double end = 1;
    for (const Side& side : kSides) {
        const double a = side.inside(from);
        const double b = side.inside(to);
        if (a < 0 && b < 0) return false;
        if (a < 0) start = std::max(start, a / (a - b));
        if (b < 0) end = std::min(end, a / (a - b));
    }
    if (start > end) return false;
    const TvPoint first = from;
    if (start > 0) from = between(first, to, start);
    if (end < 1) to = between(first, to, end);
    return true;
}

/// What of a polygon lies on the inner side of a line.
void cutPolygon(const std::vector<TvPoint>& polygon, const Side& side, std::vector<TvPoint>& out) {
    out.clear();
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const TvPoint from = polygon[i];
        const TvPoint to = polygon[(i + 1) % polygon.size()];
        const double a = side.inside(from);
        const double b = side.inside(to);
        if (a >= 0) out.push_back(from);
        if ((a < 0) != (b < 0)) out.push_back(between(from, to, a / (a - b)));
    }
}

[[nodiscard]] int unit(double exact) {
    return static_cast<int>(std::floor(std::clamp(exact, -kDeviceFar, kDeviceFar) + 0.5));
}

}  // namespace

DevicePoint deviceUnit(TvPoint exact) {
    return {unit(exact.x), unit(exact.y)};
}

void DeviceShape::set(const TvPath& path, const DeviceMap& map, Use use) {
    points_.clear();
    counts_.clear();
    closed_.clear();
    open_ = 0;
    cut_ = false;
    flatten(path, map, use);
}

void DeviceShape::flatten(const TvPath& path, const DeviceMap& map, Use use) {
    piece_.clear();
    eachStep(path, [&](TvPath::Step step, const TvPoint* points) {
        switch (step) {
            case TvPath::Move:
                endPiece(use, false);
                [[fallthrough]];
            case TvPath::Line:
                piece_.push_back(map.at(points[0]));
                break;
            case TvPath::Curve:
                addCurve(piece_, map.at(points[0]), map.at(points[1]), map.at(points[2]));
                break;
            case TvPath::Close:
                endPiece(use, true);
                break;
        }
    });
    endPiece(use, false);
}

void DeviceShape::endPiece(Use use, bool close) {
    const bool isCut = std::any_of(piece_.begin(), piece_.end(), isOutside);
    if (!isCut) {
        emit(piece_, close || use == Use::fill);
    } else {
        cut_ = true;
        if (close) piece_.push_back(piece_.front());
        if (use == Use::fill)
            emitCutFill();
        else
            emitCutOutline();
    }
    piece_.clear();
}

void DeviceShape::emitCutFill() {
    for (const Side& side : kSides) {
        cutPolygon(piece_, side, other_);
        piece_.swap(other_);
    }
    emit(piece_, true);
}

/// What comes back into the square begins a piece of its own.
void DeviceShape::emitCutOutline() {
    other_.clear();
    for (std::size_t i = 1; i < piece_.size(); ++i) {
        TvPoint from = piece_[i - 1];
        TvPoint to = piece_[i];
        if (!cutSegment(from, to)) continue;
        if (!other_.empty() && other_.back() != from) {
            emit(other_, false);
            other_.clear();
        }
        if (other_.empty()) other_.push_back(from);
        other_.push_back(to);
    }
    emit(other_, false);
}

/// A line shorter than a unit keeps the length of one, or nothing would be seen of it.
void DeviceShape::emit(const std::vector<TvPoint>& piece, bool close) {
    if (piece.size() < 2) return;
    const std::size_t start = points_.size();
    bool isPoint = true;
    bool isOnePoint = true;
    for (const TvPoint& exact : piece) {
        const DevicePoint point = deviceUnit(exact);
        points_.push_back(point);
        isPoint = isPoint && point.x == points_[start].x && point.y == points_[start].y;
        isOnePoint = isOnePoint && exact == piece.front();
    }
    if (isPoint && !isOnePoint) ++points_.back().x;
    counts_.push_back(static_cast<int>(piece.size()));
    closed_.push_back(close);
    if (!close) ++open_;
}

}  // namespace toolbox::canvas

// Each piece is flattened, cut where it leaves the square, cut into dashes, and rounded.
#include "canvas/device/device_shape.h"

#include <algorithm>
#include <cmath>

#include "canvas/steps.h"

namespace toolbox::canvas {
namespace {

// Units that a curve may be off. The lines of a wide one are longer, for the sake of their
// direction.
constexpr double kOff = 0.02;
constexpr double kOffOfWide = 0.12;
constexpr double kWide = 2.5;
constexpr double kShortestPeriod = 0.5;  // dashes that cannot be told apart are a solid line
constexpr double kMostPeriods = 1 << 18;
constexpr double kMostParts = 2000;

[[nodiscard]] bool isOutside(TvPoint point) {
    return std::max(std::fabs(point.x), std::fabs(point.y)) > kDeviceFar;
}

[[nodiscard]] TvPoint between(TvPoint a, TvPoint b, double t) {
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

[[nodiscard]] double distance(TvPoint a, TvPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

/// A bound of the curve's second derivative, over 6.
[[nodiscard]] double bend(TvPoint a, TvPoint b, TvPoint c) {
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
}

/// A chord over a parameter's h is off by at most h * h / 8 of the second derivative.
void addCurve(std::vector<TvPoint>& out, TvPoint b, TvPoint c, TvPoint d, double off) {
    const TvPoint a = out.back();
    const double most = std::max(bend(a, b, c), bend(b, c, d));
    const auto parts =
        static_cast<int>(std::clamp(std::ceil(std::sqrt(0.75 * most / off)), 1.0, kMostParts));
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

void DeviceShape::clear() {
    points_.clear();
    counts_.clear();
    closed_.clear();
    open_ = 0;
}

void DeviceShape::set(const TvPath& path, const DeviceMap& map, const TvPen* pen) {
    clear();
    fills_ = !pen;
    off_ = pen && pen->width * map.scale() > kWide ? kOffOfWide : kOff;
    period_ = 0;
    dash_ = {};
    for (std::size_t i = 0; pen && i < dash_.size() && pen->dash[i] > 0; ++i)
        period_ += dash_[i] = pen->dash[i] * map.scale();
    flatten(path, map);
}

void DeviceShape::flatten(const TvPath& path, const DeviceMap& map) {
    piece_.clear();
    eachStep(path, [&](TvPath::Step step, const TvPoint* points) {
        switch (step) {
            case TvPath::Move:
                endPiece(false);
                [[fallthrough]];
            case TvPath::Line:
                piece_.push_back(map.at(points[0]));
                break;
            case TvPath::Curve:
                addCurve(piece_, map.at(points[0]), map.at(points[1]), map.at(points[2]), off_);
                break;
            case TvPath::Close:
                endPiece(true);
                break;
        }
    });
    endPiece(false);
}

void DeviceShape::endPiece(bool close) {
    const bool isCut = std::any_of(piece_.begin(), piece_.end(), isOutside);
    const bool isDashed = period_ >= kShortestPeriod;
    if (fills_ || (close && !isCut && !isDashed)) {
        if (isCut)
            emitCutFill();
        else
            emit(piece_, true);
    } else {
        if (close) piece_.push_back(piece_.front());
        if (isCut)
            emitCutOutline();
        else
            emitOutline(piece_);
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

/// What comes back into the square begins a line of its own.
void DeviceShape::emitCutOutline() {
    other_.clear();
    for (std::size_t i = 1; i < piece_.size(); ++i) {
        TvPoint from = piece_[i - 1];
        TvPoint to = piece_[i];
        if (!cutSegment(from, to)) continue;
        if (!other_.empty() && other_.back() != from) {
            emitOutline(other_);
            other_.clear();
        }
        if (other_.empty()) other_.push_back(from);
        other_.push_back(to);
    }
    emitOutline(other_);
}

void DeviceShape::emitOutline(const std::vector<TvPoint>& line) {
    double length = 0;
    for (std::size_t i = 1; i < line.size(); ++i) length += distance(line[i - 1], line[i]);
    if (period_ >= kShortestPeriod && length > 0 && length < period_ * kMostPeriods)
        emitDashes(line);
    else
        emit(line, false);
}

/// Drawn and left out by turns, round the corners of the line.
void DeviceShape::emitDashes(const std::vector<TvPoint>& line) {
    std::size_t dash = 0;
    double left = dash_[0];
    bool isDrawn = true;
    dashPiece_.assign(line.begin(), line.begin() + 1);
    for (std::size_t i = 1; i < line.size(); ++i) {
        const double length = distance(line[i - 1], line[i]);
        double gone = 0;
        while (length - gone > left) {
            gone += left;
            const TvPoint at = between(line[i - 1], line[i], gone / length);
            if (dashPiece_.back() != at) dashPiece_.push_back(at);
            if (isDrawn) emit(dashPiece_, false);
            dashPiece_.assign(1, at);
            isDrawn = !isDrawn;
            ++dash;
            if (dash == dash_.size() || dash_[dash] == 0) dash = 0;
            left = dash_[dash];
        }
        left -= length - gone;
        dashPiece_.push_back(line[i]);
    }
    if (isDrawn) emit(dashPiece_, false);
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

// Paths in whole units of a device, as the polygons and polylines that it takes.
//
// Curves become lines that are off by a fraction of a unit, dashes lines of their own. What lies
// further away than a device can count is cut off at a square around its origin: a line goes on in
// its direction up to there.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "toolbox/canvas.h"
#include "toolbox/win_types.h"

namespace toolbox::canvas {

#if defined(_WIN32)
using DevicePoint = POINT;
#else
/// A point of a device.
struct DevicePoint {
    int x;
    int y;
};
#endif

/// Half a side of the square: beyond every sheet of paper, and what systems still draw fast.
inline constexpr double kDeviceFar = 1 << 20;

/// From points of a page to units of a device.
struct DeviceMap {
    double scaleX = 1;
    double scaleY = 1;
    double originX = 0;
    double originY = 0;

    [[nodiscard]] TvPoint at(TvPoint point) const {
        return {point.x * scaleX + originX, point.y * scaleY + originY};
    }
    /// Units for a point, whatever the direction.
    [[nodiscard]] double scale() const { return std::sqrt(scaleX * scaleY); }
};

/// The nearest unit; halves go up, so that equal distances stay equal. At most kDeviceFar away.
[[nodiscard]] DevicePoint deviceUnit(TvPoint exact);

/// A path on a device. Keeps its memory from one to the next.
class DeviceShape {
  public:
    /// The path as it is outlined with a pen, or as it is filled: with null, each piece is closed.
    void set(const TvPath& path, const DeviceMap& map, const TvPen* pen);

    /// All pieces one after the other; the first point of a closed one is not repeated.
    [[nodiscard]] const std::vector<DevicePoint>& points() const { return points_; }
    /// Points of each piece, 2 at least.
    [[nodiscard]] const std::vector<int>& counts() const { return counts_; }
    /// Whether each piece is closed.
    [[nodiscard]] const std::vector<bool>& closed() const { return closed_; }
    [[nodiscard]] bool allClosed() const { return open_ == 0; }
    [[nodiscard]] bool noneClosed() const { return open_ == counts_.size(); }
    [[nodiscard]] bool empty() const { return counts_.empty(); }

  private:
    void clear();
    void flatten(const TvPath& path, const DeviceMap& map);
    void endPiece(bool close);
    void emitCutFill();
    void emitCutOutline();
    void emitOutline(const std::vector<TvPoint>& line);
    void emitDashes(const std::vector<TvPoint>& line);
    void emit(const std::vector<TvPoint>& piece, bool close);

    bool fills_ = false;
    double off_ = 0;                ///< units that a curve may be off
    std::array<double, 6> dash_{};  ///< units; all 0 for a solid line
    double period_ = 0;             ///< their sum
    std::vector<TvPoint> piece_;    ///< that is being made, not rounded
    std::vector<TvPoint> other_;
    std::vector<TvPoint> dashPiece_;
    std::vector<DevicePoint> points_;
    std::vector<int> counts_;
    std::vector<bool> closed_;
    std::size_t open_ = 0;
};

}  // namespace toolbox::canvas

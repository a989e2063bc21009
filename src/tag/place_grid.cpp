// A list of things in each cell. A segment is entered in the cells that it goes through, row by
// row; rows overlap a little, so that no part of it is lost to rounding.
#include "tag/place_grid.h"

#include <algorithm>
#include <cmath>

namespace toolbox::tag {
namespace {

constexpr double kMostCells = 1 << 18;

/// 0 also for what is so steep that a double does not tell.
double slopeOf(double rise, double run) {
    const double slope = rise / run;
    return std::isfinite(slope) ? slope : 0;
}

}  // namespace

PlaceGrid::PlaceGrid(const Box& region, std::size_t expected, double cell) : region_(region) {
    const double width = std::max(region.high[0] - region.low[0], 1.0);
    const double height = std::max(region.high[1] - region.low[1], 1.0);
    const double most = std::min(4 * static_cast<double>(expected) + 64, kMostCells);
    cell_ = std::max({cell, std::sqrt(width * height / most), width / most, height / most});
    cells_ = {static_cast<std::size_t>(width / cell_) + 1,
              static_cast<std::size_t>(height / cell_) + 1};
    perPoint_ = 1 / cell_;
    heads_.assign(cells_[0] * cells_[1], kNone);
    things_.reserve(expected + 1);
    chunks_.reserve(2 * expected + 1);
    constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();
    things_.push_back({{kNowhere, kNowhere}, {kNowhere, kNowhere}, {}});
    chunks_.push_back({});
}

/// The nearest column, or row, of cells.
std::size_t PlaceGrid::column(double coordinate, int axis) const {
    const double at = (coordinate - region_.low[axis]) * perPoint_;
    if (!(at > 0)) return 0;
    return static_cast<std::size_t>(
        std::min(at, static_cast<double>(cells_[axis == 0 ? 0 : 1] - 1)));
}

void PlaceGrid::enter(std::uint32_t thing, std::size_t x, std::size_t y) {
    std::uint32_t& head = heads_[y * cells_[0] + x];
    if (head == kNone || chunks_[head].things.back() != kNone) {
        chunks_.push_back({{}, head});
        head = static_cast<std::uint32_t>(chunks_.size() - 1);
    }
    auto& things = chunks_[head].things;
    *std::find(things.begin(), things.end(), kNone) = thing;
}

void PlaceGrid::add(const Box& box) {
    for (const int axis : {0, 1})
        if (box.high[axis] < region_.low[axis] || box.low[axis] > region_.high[axis]) return;
    const auto thing = static_cast<std::uint32_t>(things_.size());
    things_.push_back({box.low, box.high, {}});
    const std::size_t right = column(box.high[0], 0);
    const std::size_t bottom = column(box.high[1], 1);
    for (std::size_t y = column(box.low[1], 1); y <= bottom; ++y)
        for (std::size_t x = column(box.low[0], 0); x <= right; ++x) enter(thing, x, y);
}

void PlaceGrid::add(const TvSegment& segment) {
    const bool falls = segment.from.y <= segment.to.y;
    const TvPoint& upper = falls ? segment.from : segment.to;
    const TvPoint& lower = falls ? segment.to : segment.from;
    const double width = lower.x - upper.x;
    const double height = lower.y - upper.y;
    if (lower.y < region_.low[1] || upper.y > region_.high[1]) return;
    const auto index = static_cast<std::uint32_t>(things_.size());
    things_.push_back(
        {{upper.x, upper.y}, {lower.x, lower.y}, {slopeOf(width, height), slopeOf(height, width)}});
    const std::size_t bottom = column(lower.y, 1);
    for (std::size_t y = column(upper.y, 1); y <= bottom; ++y) enterRow(index, y);
}

void PlaceGrid::enterRow(std::uint32_t thing, std::size_t row) {
    const double top = region_.low[1] + static_cast<double>(row) * cell_;
    Covered part;
    if (!isBeside<0>(things_[thing], top - kTouch, top + cell_ + kTouch, part)) return;
    if (part.high < region_.low[0] || part.low > region_.high[0]) return;
    const std::size_t right = column(part.high, 0);
    for (std::size_t x = column(part.low, 0); x <= right; ++x) enter(thing, x, row);
}

/// Whether a thing is between two coordinates of the other axis; and if so, where on this one.
/// Without branches, for what lies in a cell is as likely beside as not.
template <int Axis>
bool PlaceGrid::isBeside(const Thing& thing, double low, double high, Covered& part) {
    constexpr int kOther = 1 - Axis;
    const bool inOrder = Axis == 0 || thing.from[kOther] <= thing.to[kOther];
    const Pair& first = inOrder ? thing.from : thing.to;
    const Pair& last = inOrder ? thing.to : thing.from;
    const double slope = thing.slope[Axis];
    const double start = first[Axis] + (std::max(low, first[kOther]) - first[kOther]) * slope;
    const double end = last[Axis] + (std::min(high, last[kOther]) - last[kOther]) * slope;
    part.low = std::min(start, end);
    part.high = std::max(start, end);
    const bool begins = first[kOther] <= high;
    const bool ends = last[kOther] >= low;
    return begins & ends;
}

template <int Axis>
PlaceGrid::Covered PlaceGrid::cover(const Box& box) const {
    constexpr int kOther = 1 - Axis;
    const double low = box.low[kOther] + kTouch;
    const double high = box.high[kOther] - kTouch;
    const double from = box.low[Axis] + kTouch;
    const double to = box.high[Axis] - kTouch;
    const std::size_t left = column(box.low[0], 0);
    const std::size_t right = column(box.high[0], 0);
    const std::size_t bottom = column(box.high[1], 1);
    Covered covered;
    Covered part;
    for (std::size_t y = column(box.low[1], 1); y <= bottom; ++y)
        for (std::size_t x = left; x <= right; ++x) {
            std::uint32_t chunk = heads_[y * cells_[0] + x];
            do {
                for (const std::uint32_t thing : chunks_[chunk].things)
                    if (isBeside<Axis>(things_[thing], low, high, part) & (part.high > from) &
                        (part.low < to)) {
                        covered.low = std::min(covered.low, part.low);
                        covered.high = std::max(covered.high, part.high);
                    }
                chunk = chunks_[chunk].next;
            } while (chunk != kNone);
        }
    return covered;
}

bool PlaceGrid::isFree(const Box& box) const {
    return !cover<0>(box).any();
}

template <int Axis>
Pair PlaceGrid::slideAlong(const Box& box, const Pair& most) const {
    const Covered first = cover<Axis>(box);
    if (!first.any()) return {0, 0};
    const double start = box.low[Axis];
    const double size = box.high[Axis] - start;
    Pair at{first.low - size, first.high};
    Pair way{start - at[0], at[1] - start};
    Pair limit = most;
    Pair found{-1, -1};
    for (;;) {
        // The nearer one of the next places both ways.
        const bool canGo[] = {way[0] <= limit[0], way[1] <= limit[1]};
        if (!canGo[0] && !canGo[1]) break;
        const int up = canGo[0] && (!canGo[1] || way[0] <= way[1]) ? 0 : 1;
        Box next = box;
        next.low[Axis] = at[up];
        next.high[Axis] = at[up] + size;
        const Covered covered = cover<Axis>(next);
        if (covered.any()) {
            at[up] = up ? covered.high : covered.low - size;
            way[up] = up ? at[up] - start : start - at[up];
        } else {
            found[up] = way[up];
            limit[up] = -1;
            limit[1 - up] = std::min(limit[1 - up], way[up]);
        }
    }
    return found;
}

Pair PlaceGrid::slide(const Box& box, int axis, const Pair& most) const {
    return axis == 0 ? slideAlong<0>(box, most) : slideAlong<1>(box, most);
}

}  // namespace toolbox::tag

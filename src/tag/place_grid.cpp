// A list of things in each cell. A segment is entered in the cells that it goes through, row by
// row; neighbouring rows cut it at the same point, so that no part of it is lost to rounding.
#include "tag/place_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace toolbox::tag {
namespace {

constexpr double kMostCells = 1 << 18;

/// Where a segment is on `axis` when it is at `at` on the other one; between its ends.
double cut(const Pair& from, const Pair& to, int axis, double at) {
    const int other = 1 - axis;
    const double t = (at - from[other]) / (to[other] - from[other]);
    const double there = from[axis] + t * (to[axis] - from[axis]);
    return std::clamp(there, std::min(from[axis], to[axis]), std::max(from[axis], to[axis]));
}

}  // namespace

PlaceGrid::PlaceGrid(const Box& region, std::size_t expected, double cell) : region_(region) {
    const double width = std::max(region.high[0] - region.low[0], 1.0);
    const double height = std::max(region.high[1] - region.low[1], 1.0);
    const double most = std::min(4 * static_cast<double>(expected) + 64, kMostCells);
    cell_ = std::max({cell, std::sqrt(width * height / most), width / most, height / most});
    cells_ = {static_cast<std::size_t>(width / cell_) + 1,
              static_cast<std::size_t>(height / cell_) + 1};
    heads_.assign(cells_[0] * cells_[1], kNone);
    things_.reserve(expected);
    entries_.reserve(4 * expected);
}

/// The nearest column, or row, of cells.
std::size_t PlaceGrid::column(double coordinate, int axis) const {
    const double at = (coordinate - region_.low[axis]) / cell_;
    if (!(at > 0)) return 0;
    return static_cast<std::size_t>(std::min(at, static_cast<double>(cells_[axis] - 1)));
}

void PlaceGrid::enter(std::uint32_t thing, std::size_t x, std::size_t y) {
    std::uint32_t& head = heads_[y * cells_[0] + x];
    entries_.push_back({thing, head});
    head = static_cast<std::uint32_t>(entries_.size() - 1);
}

void PlaceGrid::add(const Box& box) {
    for (const int axis : {0, 1})
        if (box.high[axis] < region_.low[axis] || box.low[axis] > region_.high[axis]) return;
    const auto thing = static_cast<std::uint32_t>(things_.size());
    things_.push_back({box.low, box.high, false});
    const std::size_t right = column(box.high[0], 0);
    const std::size_t bottom = column(box.high[1], 1);
    for (std::size_t y = column(box.low[1], 1); y <= bottom; ++y)
        for (std::size_t x = column(box.low[0], 0); x <= right; ++x) enter(thing, x, y);
}

void PlaceGrid::add(const TvSegment& segment) {
    const Thing thing{{segment.from.x, segment.from.y}, {segment.to.x, segment.to.y}, true};
    for (const int axis : {0, 1})
        if (std::max(thing.from[axis], thing.to[axis]) < region_.low[axis] ||
            std::min(thing.from[axis], thing.to[axis]) > region_.high[axis])
            return;
    const auto index = static_cast<std::uint32_t>(things_.size());
    things_.push_back(thing);
    const std::size_t bottom = column(std::max(thing.from[1], thing.to[1]), 1);
    for (std::size_t y = column(std::min(thing.from[1], thing.to[1]), 1); y <= bottom; ++y)
        enterRow(index, thing, y);
}

void PlaceGrid::enterRow(std::uint32_t thing, const Thing& segment, std::size_t row) {
    const auto top = region_.low[1] + static_cast<double>(row) * cell_;
    const auto bottom = region_.low[1] + static_cast<double>(row + 1) * cell_;
    Range range{};
    if (!rangeWithin(segment, 0, top, bottom, range)) {
        // Rounding: it ends where the row begins.
        range = {std::min(segment.from[0], segment.to[0]), std::max(segment.from[0], segment.to[0])};
    }
    if (range.high < region_.low[0] || range.low > region_.high[0]) return;
    const std::size_t right = column(range.high, 0);
    for (std::size_t x = column(range.low, 0); x <= right; ++x) enter(thing, x, row);
}

bool PlaceGrid::rangeWithin(const Thing& thing, int axis, double low, double high, Range& range) {
    const int other = 1 - axis;
    const bool rises = thing.from[other] <= thing.to[other];
    const Pair& first = rises ? thing.from : thing.to;
    const Pair& last = rises ? thing.to : thing.from;
    if (first[other] > high || last[other] < low) return false;
    range = {first[axis], last[axis]};
    if (thing.isSegment) {
        if (first[other] < low) range.low = cut(thing.from, thing.to, axis, low);
        if (last[other] > high) range.high = cut(thing.from, thing.to, axis, high);
        if (range.low > range.high) std::swap(range.low, range.high);
    }
    return true;
}

template <class Visit>
void PlaceGrid::visitThings(const Box& box, Visit visit) const {
    const std::size_t right = column(box.high[0], 0);
    const std::size_t bottom = column(box.high[1], 1);
    for (std::size_t y = column(box.low[1], 1); y <= bottom; ++y)
        for (std::size_t x = column(box.low[0], 0); x <= right; ++x)
            for (std::uint32_t i = heads_[y * cells_[0] + x]; i != kNone; i = entries_[i].next)
                if (!visit(things_[entries_[i].thing])) return;
}

bool PlaceGrid::isFree(const Box& box) const {
    bool free = true;
    visitThings(box, [&](const Thing& thing) {
        Range range{};
        free = !(rangeWithin(thing, 0, box.low[1] + kTouch, box.high[1] - kTouch, range) &&
                 range.high > box.low[0] + kTouch && range.low < box.high[0] - kTouch);
        return free;
    });
    return free;
}

double PlaceGrid::slide(Box box, int axis, int direction, double most) const {
    const int other = 1 - axis;
    const double low = box.low[other] + kTouch;
    const double high = box.high[other] - kTouch;
    const double start = box.low[axis];
    const double size = box.high[axis] - start;
    for (;;) {
        // The farthest end of all that the box covers here.
        double next = box.low[axis];
        bool free = true;
        visitThings(box, [&](const Thing& thing) {
            Range range{};
            if (!rangeWithin(thing, axis, low, high, range) ||
                range.high <= box.low[axis] + kTouch || range.low >= box.high[axis] - kTouch)
                return true;
            free = false;
            next = direction > 0 ? std::max(next, range.high) : std::min(next, range.low - size);
            return std::fabs(next - start) <= most;
        });
        if (free) return std::fabs(box.low[axis] - start);
        if (std::fabs(next - start) > most) return -1;
        box.low[axis] = next;
        box.high[axis] = next + size;
    }
}

}  // namespace toolbox::tag

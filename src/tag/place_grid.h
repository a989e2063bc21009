// What a box must not cover, in a uniform grid of the page, and how far a box has to slide to get
// past it. Coordinates are pairs by axis: x is 0, y is 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "toolbox/tag_layout.h"

namespace toolbox::tag {

/// What goes less than this into something, in points, only touches it.
inline constexpr double kTouch = 0.001;

using Pair = std::array<double, 2>;

struct Box {
    Pair low;
    Pair high;
};

[[nodiscard]] inline Box boxOf(const PlaneRect& rect) {
    return {{rect.left, rect.top}, {rect.right, rect.bottom}};
}
[[nodiscard]] inline PlaneRect rectOf(const Box& box) {
    return {box.low[0], box.low[1], box.high[0], box.high[1]};
}

class PlaceGrid {
  public:
    /// For boxes within `region`; `expected` is about how many things will be added, `cell` the
    /// size that its cells should have.
    PlaceGrid(const Box& region, std::size_t expected, double cell);

    // What lies outside the region is left out.
    void add(const Box& box);
    void add(const TvSegment& segment);

    /// Nothing is in the box.
    [[nodiscard]] bool isFree(const Box& box) const;
    /// The box slides along an axis, to greater coordinates for direction 1, to lesser ones for -1.
    /// How far it is to the first free place; negative when that is farther than `most`.
    [[nodiscard]] double slide(Box box, int axis, int direction, double most) const;

  private:
    /// Of a segment the ends; of a box, the corners low and high.
    struct Thing {
        Pair from;
        Pair to;
        bool isSegment;
    };
    struct Entry {
        std::uint32_t thing;
        std::uint32_t next;
    };
    struct Range {
        double low;
        double high;
    };
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    [[nodiscard]] std::size_t column(double coordinate, int axis) const;
    void enter(std::uint32_t thing, std::size_t x, std::size_t y);
    void enterRow(std::uint32_t thing, const Thing& segment, std::size_t row);
    /// The part of a thing between two coordinates of the other axis, as a range of this axis.
    static bool rangeWithin(const Thing& thing, int axis, double low, double high, Range& range);
    template <class Visit>
    void visitThings(const Box& box, Visit visit) const;

    Box region_;
    double cell_;
    std::array<std::size_t, 2> cells_;
    std::vector<std::uint32_t> heads_;
    std::vector<Entry> entries_;
    std::vector<Thing> things_;
};

}  // namespace toolbox::tag

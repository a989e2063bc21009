// What a box must not cover, in a uniform grid of the page, and how far a box has to slide to get
// past it. Coordinates are pairs by axis: x is 0, y is 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "toolbox/tag_layout.h"

namespace toolbox::tag {

/// What goes less than this into something, in points, only touches it.
inline constexpr double kTouch = 0.001;

struct Pair {
    double x;
    double y;

    double& operator[](int axis) { return axis == 0 ? x : y; }
    const double& operator[](int axis) const { return axis == 0 ? x : y; }
};

struct Box {
    Pair low;
    Pair high;
};

[[nodiscard]] inline Box boxOf(const PlaneRect& rect) {
    return {{rect.left, rect.top}, {rect.right, rect.bottom}};
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
    /// The box slides along an axis both ways, to lesser and to greater coordinates, each way no
    /// farther than `most`. How far it is to the first free places; negative where there is none,
    /// or where that of the other way is nearer.
    [[nodiscard]] Pair slide(const Box& box, int axis, const Pair& most) const;

  private:
    /// The ends of a segment, the upper one first; of a box, the corners low and high.
    struct Thing {
        Pair from;
        Pair to;
        Pair slope;  ///< how far along an axis for each point along the other; 0 for a box
    };
    /// From where to where a box covers something along an axis; at first nothing.
    struct Covered {
        double low = std::numeric_limits<double>::infinity();
        double high = -std::numeric_limits<double>::infinity();
        [[nodiscard]] bool any() const { return low <= high; }
    };
    /// Some things of a cell, the last ones first; kNone in places that are not taken.
    struct Chunk {
        static constexpr std::size_t kSize = 3;
        std::array<std::uint32_t, kSize> things;
        std::uint32_t next;
    };
    /// The first thing, which is nowhere, and the first chunk, which has nothing else: cells are
    /// gone through without asking what there is.
    static constexpr std::uint32_t kNone = 0;

    [[nodiscard]] std::size_t column(double coordinate, int axis) const;
    void enter(std::uint32_t thing, std::size_t x, std::size_t y);
    void enterRow(std::uint32_t thing, std::size_t row);
    template <int Axis>
    static bool isBeside(const Thing& thing, double low, double high, Covered& part);
    template <int Axis>
    [[nodiscard]] Covered cover(const Box& box) const;
    template <int Axis>
    [[nodiscard]] Pair slideAlong(const Box& box, const Pair& most) const;

    Box region_;
    double cell_;
    double perPoint_;  ///< cells
    std::array<std::size_t, 2> cells_;
    std::vector<std::uint32_t> heads_;
    std::vector<Chunk> chunks_;
    std::vector<Thing> things_;
};

}  // namespace toolbox::tag

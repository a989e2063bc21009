// The nearest free place of one box, as TvTagLayout::placeFree() defines it.
#pragma once

#include <optional>

#include "tag/place_grid.h"

namespace toolbox::tag {

struct SearchRange {
    Box frame;     ///< the box stays in it
    double step;   ///< between the lines of search
    double reach;  ///< how far it may move
};

/// Where a box that the frame has room for begins: moved into the frame the shortest way.
[[nodiscard]] Pair startInFrame(const Box& box, const Box& frame);

/// How far the box is to be moved from there. It slides along the lines of search, nearest line
/// first, past one obstacle after the other; a line that is farther away than the best place so far
/// ends the search.
[[nodiscard]] std::optional<Pair> nearestFree(const PlaceGrid& grid, const Box& box,
                                              const SearchRange& range);

}  // namespace toolbox::tag

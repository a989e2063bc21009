// What a file's header and master index say of it, wherever they are found and however damaged.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "header.h"
#include "toolbox/block_files.h"

namespace tbfile {

struct Index {
    Frame frame;
    bool atItsPlace = false;  ///< where the header says
    std::vector<BlocItem> entries;
    bool ascending = true;  ///< they stand in writing order
    bool possible = true;   ///< blocks can be where they say, one behind another

    /// The bytes of its entries are all there, and nothing around them is damaged.
    [[nodiscard]] bool isWhole() const { return frame.isWhole() && frame.isIndex(); }
    /// Nothing contradicts that it names every block before it.
    [[nodiscard]] bool isComplete() const { return isWhole() && ascending && possible; }
};

struct Map {
    Header header;
    Shape shape;  ///< how the blocks really lie
    std::optional<Index> index;

    /// The header names another format version than that of the blocks.
    [[nodiscard]] bool formatDiffers() const { return shape.format != header.shape.format; }
};

/// Looks for the index where the header says, then behind that (the header may be older than the
/// file), then everywhere. Where nothing agrees with the format version that the header names, the
/// others are tried. `probe` is a second window on the same file.
[[nodiscard]] Map readMap(Window& file, Window& probe);

/// Whether a whole block with this identifier stands at the place that an entry names.
[[nodiscard]] bool isConfirmed(Window& file, const Shape& shape, const BlocItem& entry);

/// Whether a block is an index whose identifier is damaged: its data are the places of blocks.
[[nodiscard]] bool isIndexInDisguise(Window& file, const Shape& shape, const Frame& frame);

}  // namespace tbfile

// Looking for blocks where the chain of their lengths is broken.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "frame.h"

namespace tbfile {

/// The first place from `from` on, before `limit`, where four bytes 0xFF end and a block may
/// therefore begin. Any alignment.
[[nodiscard]] std::optional<std::uint64_t> afterTerminator(Window& file, const Shape& shape,
                                                           std::uint64_t from, std::uint64_t limit);

/// Whole blocks one behind another.
struct Run {
    std::uint64_t start;
    std::uint64_t end;
};

struct Resumption {
    /// Where the blocks go on; `limit` when nowhere.
    std::uint64_t at;
    /// From there on they lead to `limit` without a gap. What only looks like blocks within the
    /// data of a block does not: that block's own end comes before the limit.
    bool proven = false;
    /// From there on they lead to one that the end of the file cuts off.
    bool toCut = false;
    std::vector<Run> unproven;  ///< what may be blocks before that
};

/// Searches the bytes behind `from`, where a damaged block begins, for the next whole block.
/// `limit` is where a block is known to begin, or the end of the file. `probe` is a second window
/// on the same file.
[[nodiscard]] Resumption resume(Window& file, Window& probe, const Shape& shape, std::uint64_t from,
                                std::uint64_t limit);

}  // namespace tbfile

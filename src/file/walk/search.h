// Looking for blocks where the chain of their lengths is broken.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "toolbox/block_frames.h"

namespace toolbox {

/// The first place from `from` on, before `limit`, where four bytes 0xFF end and a block may
/// therefore begin. Any alignment.
[[nodiscard]] std::optional<std::uint64_t> afterTerminator(FileReader& file,
                                                           const BlockShape& shape,
                                                           std::uint64_t from, std::uint64_t limit);

/// Whole blocks one after another.
struct Run {
    std::uint64_t start;
    std::uint64_t end;
};

struct Resumption {
    /// Where the blocks go on; `limit` when nowhere.
    std::uint64_t at = 0;
    /// From there on they lead to `limit` without a gap. What only looks like blocks within the
    /// data of a block does not: that block's own end comes before the limit.
    bool proven = false;
    std::vector<Run> unproven;  ///< what may be blocks before that

    /// The first place where there may be a block.
    [[nodiscard]] std::uint64_t first() const {
        return unproven.empty() ? at : unproven.front().start;
    }
    /// Whether blocks lead over a place where another one is said to end.
    [[nodiscard]] bool leadsOver(std::uint64_t end) const {
        if (at < end) return true;
        // None overlaps another one.
        const auto next = std::ranges::lower_bound(unproven, end, {}, &Run::start);
        return next != unproven.begin() && (next - 1)->end > end;
    }
};

/// Searches the bytes after `from`, where a damaged block begins, for whole blocks after a
/// terminator. `limit` is where a block is known to begin, or the end of the file. `probe` is a
/// second reader of the same file. Goes through the bytes up to the limit once.
[[nodiscard]] Resumption resume(FileReader& file, FileReader& probe, const BlockShape& shape,
                                std::uint64_t from, std::uint64_t limit);

/// The first block that begins between `from` and `stop` and ends where `end` is, whatever stands
/// before it: the terminator that it follows may be destroyed.
[[nodiscard]] std::optional<BlockFrame> blockEndingAt(FileReader& file, FileReader& probe,
                                                      const BlockShape& shape, std::uint64_t from,
                                                      std::uint64_t stop, std::uint64_t end);

/// The first whole block that begins between `from` and `stop` and ends at `end` at the latest,
/// whatever stands around it. Zeros or ones do not count as the head of one.
[[nodiscard]] std::optional<BlockFrame> blockAnywhere(FileReader& file, FileReader& probe,
                                                      const BlockShape& shape, std::uint64_t from,
                                                      std::uint64_t stop, std::uint64_t end);

/// Where to look for the head of a block: it begins in [from, stop) and the block ends at `end` at
/// the latest.
struct HeadRange {
    std::uint64_t from;
    std::uint64_t stop;
    std::uint64_t end;
};

/// The first place of a head that `isOne` says yes to; it gets the bytes of the head and how many
/// bytes there are from the head to the end beside those around the data.
[[nodiscard]] std::optional<std::uint64_t> headWhere(
    FileReader& file, const BlockShape& shape, const HeadRange& range,
    const std::function<bool(const char* head, std::uint64_t room)>& isOne);

}  // namespace toolbox

// The blocks that a list of checksums names: which are what was written, and where those lie that
// are not at their places.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "toolbox/file_walk.h"

namespace toolbox {

/// The list of checksums of a file, wherever it is; none when there is none.
[[nodiscard]] std::optional<ChecksumMap> findChecksums(FileReader& file, FileReader& probe,
                                                       const BlockFileMap& map);
/// Whether a list proves that the blocks have the layout that is written.
[[nodiscard]] bool isListedLayout(FileReader& file, const BlockFileHeader& header);
/// How many of three things, beside the identifier, a block has that lists of checksums have: their
/// description, their own offset, as many rows as they say.
[[nodiscard]] int listMarks(FileReader& file, const BlockShape& shape, const BlockFrame& frame);

/// Answers for the blocks whose sums are known. Without a list that proves there are none.
class ListedBlocks {
  public:
    ListedBlocks(FileReader& file, FileReader& probe, const BlockFileMap& map);

    /// The row within whose place an offset is.
    [[nodiscard]] const BlockSum* covering(std::uint64_t offset) const;
    /// The row that begins there.
    [[nodiscard]] const BlockSum* at(std::uint64_t offset) const;
    /// Whether the bytes at its place are what was written.
    [[nodiscard]] bool isProved(const BlockSum& row);

    /// The first misplaced block that begins at `from` or after and before `to`. Looks for all of
    /// them the first time, wherever blocks are not what was written.
    [[nodiscard]] const BlockFrame* misplacedFrom(std::uint64_t from, std::uint64_t to);
    /// Whether a block that nothing names is one that is not at its place; each is so once.
    [[nodiscard]] bool takeMisplaced(const BlockFrame& frame);
    /// Whether the block of a row was found elsewhere.
    [[nodiscard]] bool isElsewhere(const BlockSum& row) const;

    /// What is at the place of a row that is not proved: with the identifier, the length and the
    /// terminator of the list where at most one of them is damaged, otherwise none. `proved` says
    /// whether that made it what was written.
    [[nodiscard]] std::optional<BlockFrame> reframed(const BlockSum& row, bool& proved);

  private:
    using Missing = std::unordered_map<std::uint32_t, const BlockSum*>;

    void searchAll();
    void searchWithin(std::uint64_t from, std::uint64_t to);
    [[nodiscard]] bool hasSum(std::uint64_t offset, const BlockSum& row);

    FileReader& file_;
    FileReader& probe_;
    BlockShape shape_;
    std::vector<BlockSum> rows_;  ///< with sums, in the order of the file
    std::uint64_t budget_ = 0;    ///< bytes that may still be summed in vain
    bool searched_ = false;
    Missing missing_;
    Missing elsewhere_;
    std::vector<BlockFrame> misplaced_;  ///< in the order of the file
};

}  // namespace toolbox

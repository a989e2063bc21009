// The list of checksums: a block that says of every block of its file where it lies, how long it is
// and what CRC-32C all its bytes have, and the same of the index and the header. Its bytes are in
// docs/block-file-format.md.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/crc32c.h"
#include "file/block/layout.h"
#include "toolbox/block_files.h"

namespace toolbox {

/// A list of checksums, as a value.
struct ChecksumList {
    std::uint32_t offset = 0;    ///< of the block that holds it
    BlockSum index{};            ///< of the master index
    std::uint32_t header = 0;    ///< see blocks::headerSum()
    std::vector<BlockSum> rows;  ///< in the order of the index; its own is not known
};

namespace blocks {

/// Identifier of the block that holds the list.
inline constexpr std::uint32_t kChecksumsId = 0xFFFFFFEE;
/// Its description.
inline constexpr std::string_view kListDescription = "Checksums";

/// Bytes that a list of so many rows takes in a file.
[[nodiscard]] std::uint64_t checksumBytes(std::uint64_t rows);

/// The CRC-32C of a header but for the offset of the index, which a later commit changes.
[[nodiscard]] std::uint32_t headerSum(std::span<const char, kHeaderBytes> header);

/// The sums of the blocks of a file, while they are written.
class KeptSums {
  public:
    /// A block that was put at `offset`.
    void add(std::uint32_t id, std::uint32_t offset, std::span<const char> block) {
        const auto length = static_cast<std::uint32_t>(block.size());
        kept_.push_back({id, offset, length, base::crc32c(block)});
    }
    /// What is known of the blocks at the places of entries.
    [[nodiscard]] std::vector<BlockSum> rowsOf(std::span<const BlocItem> entries) const;

  private:
    std::deque<BlockSum> kept_;  // in the order of writing; grows without moving
};

/// The sum that a block will have in a file.
[[nodiscard]] BlockSum sumOf(const TarvBlocFile& block, std::uint32_t offset);

/// The block that holds the list, and all of its bytes.
[[nodiscard]] TarvBlocFile encode(const ChecksumList& list);
[[nodiscard]] std::vector<char> wholeList(const ChecksumList& list);
/// The list from the bytes of a whole block, head to terminator; none when they are damaged or
/// something else.
[[nodiscard]] std::optional<ChecksumList> decodeChecksums(std::span<const char> block);

}  // namespace blocks
}  // namespace toolbox

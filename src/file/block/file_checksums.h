// The list of checksums of a file that is read, and what it is worth.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "file/block/checksums.h"
#include "toolbox/block_files.h"

namespace toolbox {

/// The bytes of a file of format version 210.
struct FileBytes {
    /// Reads up to `n` bytes at an offset; returns how many there were.
    std::function<std::size_t(std::uint64_t offset, char* to, std::size_t n)> read;
    std::uint64_t size;
};

/// A file's list, looked at once.
class FileChecksums {
  public:
    /// Looks for the list where the entries of the index say, and directly before the place that
    /// the header names for the index.
    FileChecksums(const FileBytes& file, std::uint32_t indexOffset,
                  std::span<const BlocItem> entries);
    /// Looks at one place.
    FileChecksums(const FileBytes& file, std::uint32_t indexOffset, std::uint64_t place);

    /// Whether a list proves that the file has the layout that writers use, whatever its header
    /// says of its format version.
    [[nodiscard]] static bool proveLayout(const FileBytes& file, std::uint32_t indexOffset);

    [[nodiscard]] TarvFileRead::ChecksumState state() const { return state_; }
    /// Whether the list is whole and belongs to this file: what it says is so, even where the index
    /// or the header is damaged.
    [[nodiscard]] bool proves() const { return proves_; }
    /// Where the list is, or should be.
    [[nodiscard]] std::uint64_t place() const { return place_; }
    /// In the order of the index; empty unless the list was readable.
    [[nodiscard]] const std::vector<BlockSum>& rows() const { return list_.rows; }
    /// The row of a block; `position` is where the index has it. Null when the list lacks it.
    [[nodiscard]] const BlockSum* find(std::uint32_t id,
                                       std::optional<std::uint32_t> position) const;

  private:
    bool look(const FileBytes& file, std::uint32_t indexOffset, std::uint64_t place);
    void judge(const FileBytes& file, std::uint32_t indexOffset);

    TarvFileRead::ChecksumState state_ = TarvFileRead::NoChecksums;
    bool proves_ = false;
    std::uint64_t place_ = 0;
    ChecksumList list_;
};

}  // namespace toolbox

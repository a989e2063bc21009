// The list of checksums of a file that is read.
#pragma once

#include <cstdint>

#include "file/block/checksums.h"
#include "toolbox/block_files.h"

namespace toolbox {

/// What a file's list is worth, found out once.
class FileChecksums {
  public:
    /// Of an open file of `size` bytes.
    FileChecksums(const TarvFile& f, APIFile& file, std::uint64_t size);

    /// Whether a list proves that the file has the layout that writers use, whatever its header
    /// says of its format version. The header's other fields are as they stand there.
    [[nodiscard]] static bool proveLayout(const TarvFileHeader& header, APIFile& file,
                                          std::uint64_t size);

    [[nodiscard]] TarvFileRead::ChecksumState state() const { return state_; }
    /// Whether the list is whole and was written with this index: what it says is so, even where
    /// the index is damaged.
    [[nodiscard]] bool proves() const { return proves_; }
    /// The row of a block; `position` is where the index has it. Null when the list lacks it.
    [[nodiscard]] const BlockSum* find(std::uint32_t id,
                                       std::optional<std::uint32_t> position) const;

  private:
    TarvFileRead::ChecksumState state_ = TarvFileRead::NoChecksums;
    bool proves_ = false;
    ChecksumList list_;
};

}  // namespace toolbox

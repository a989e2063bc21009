// Blocks out of a file: at a place, and by searching for them.
#pragma once

#include <cstdint>
#include <optional>

#include "file/block/checksums.h"
#include "file/block/layout.h"
#include "toolbox/block_files.h"

namespace toolbox::blocks {

/// Reads up to `n` bytes at `offset`; returns those that there were. Failures of the system are
/// shown and count as the file's end. Moves the position only of a file that is not the system's
/// own (a class of the application's, which knows no reading at an offset).
[[nodiscard]] std::uint32_t readAt(APIFile& file, std::uint64_t offset, char* buffer,
                                   std::uint32_t n);

/// The size of the file; 0 when it is not known.
[[nodiscard]] std::uint64_t sizeOf(APIFile& file);

/// Which block is meant, and how long it may be.
struct Place {
    std::uint64_t offset;             ///< of the identifier
    std::optional<std::uint32_t> id;  ///< what must stand there, if it matters
    std::uint64_t extent;             ///< bytes it probably takes: a good guess saves a call
    const BlockSum* sum = nullptr;    ///< what its bytes must be, if that is known
};

/// Reads the block at a place into `out`, all but its identifier, which is left alone. Returns the
/// bytes that the block takes, or 0 when there is no whole block with the identifier and the sum;
/// `out` is then as it was. One call to the system when the extent was right.
[[nodiscard]] std::uint32_t fetch(APIFile& file, const Place& place, const Layout& layout,
                                  TarvBlocFile& out);

/// Searches from `start` on, by words, for the terminator of a block followed by `id`. Returns the
/// offset after the identifier; 0 when there is none.
[[nodiscard]] std::uint64_t scan(APIFile& file, std::uint64_t start, std::uint32_t id);

/// The layout of the blocks of a file.
[[nodiscard]] Layout layoutOf(const TarvFile& file);

}  // namespace toolbox::blocks

// What tells a file from the one that was opened: its size, its header, and its end, where the list
// of checksums lies that names every block. Times only count for a file without such a list.
#pragma once

#include <cstdint>
#include <string>

#include "toolbox/block_files.h"
#include "toolbox/platform.h"

namespace toolbox::document {

/// What one look at a file finds. A plain value.
struct Mark {
    bool isThere = false;
    std::uint64_t size = 0;
    std::int64_t written = 0;  ///< FoundFile::written
    std::uint64_t header = 0;  ///< sum of its first bytes
    std::uint64_t end = 0;     ///< sum of its last `endBytes` bytes
    std::uint32_t endBytes = 64 * 1024;
    bool isProved = false;  ///< the end holds a list of checksums, with all of its rows

    /// Nothing tells the two apart. `this` is the older one.
    [[nodiscard]] bool isSame(const Mark& now) const;
};

/// The mark of an open file, but for its time. `like` says how much of the end counts.
[[nodiscard]] Mark markOf(APIFile& file, const Mark& like);

/// Looks at the file of that name as it is now; success with `isThere` false when there is none.
[[nodiscard]] platform::ErrorCode look(const std::string& name, const Mark& like, Mark& now);

/// How much of the end of a block file counts: with a current list of checksums all of that.
[[nodiscard]] Mark extentOf(TarvFileRead& file);

}  // namespace toolbox::document

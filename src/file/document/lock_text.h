// What stands in a lock file.
//
//     Document lock 1
//     user: Zoé
//     host: PC-12
//     machine: 4c4c4544...
//     boot: 7c0e1a4e-...
//     process: 4242
//     start: 133768421
//     token: 32 digits of chance
//     taken: 1795354200 (2026-11-22 13:30 UTC)
//     seen: 00000000001795354200
//
// The lines end with LF, the characters are UTF-8. The last line has a fixed length: it alone is
// written again. A later version of the library may add lines before it, which are skipped.
#pragma once

#include <string>
#include <string_view>

#include "file/document/document_lock.h"

namespace toolbox::locks {

/// No lock file is longer; of a longer one the rest is not read.
inline constexpr std::size_t kLongest = 4096;

/// The text of a lock. Texts are cut at 200 characters, control characters give '?'.
[[nodiscard]] std::string textOf(const LockHolder& holder);

/// The last line for a time.
[[nodiscard]] std::string seenLine(std::int64_t seconds);

/// What a lock file says. Of bytes that are no lock's the holder is not known.
[[nodiscard]] LockHolder holderIn(std::string_view bytes);

}  // namespace toolbox::locks

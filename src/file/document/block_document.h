// Block files as documents: opened without a word to the user, proved, compared.
#pragma once

#include <string>

#include "file/document/mark.h"
#include "file/document/reasons.h"
#include "toolbox/block_files.h"

namespace toolbox::document {

/// Opens a block file. The fault is the system's; one without a code is a file that is no whole
/// block file (`damaged`).
[[nodiscard]] Fault openQuietly(TarvFileRead& file, const std::string& name);

/// Whether every block that the index names can be had, with its checksum where there are any.
[[nodiscard]] bool isWhole(TarvFileRead& file);

/// Whether two open files hold the same: blocks, header version and description. The order of the
/// blocks, dates and checksums do not count.
[[nodiscard]] bool holdTheSame(TarvFileRead& one, TarvFileRead& other);

/// The mark of a file as it is now; true when it is a whole block file.
bool markFile(const std::string& name, Mark& mark);

}  // namespace toolbox::document

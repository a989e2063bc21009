// Copies of files. The handles of the file system are file descriptors.
#pragma once

#include "toolbox/platform.h"

namespace toolbox::platform::posix {

/// FileSystem::copy.
[[nodiscard]] ErrorCode copyFile(FileSystem& files, const char* from, const char* to,
                                 bool failIfExists);

/// FileSystem::expandCopy.
[[nodiscard]] std::int32_t expandFile(FileSystem& files, const char* from, const char* to);

}  // namespace toolbox::platform::posix

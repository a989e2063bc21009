#pragma once

#include "toolbox/platform.h"

namespace toolbox::platform::posix {

/// FileSystem::expandCopy on top of the other calls of a file system.
[[nodiscard]] std::int32_t expandFile(FileSystem& files, const char* from, const char* to);

}  // namespace toolbox::platform::posix

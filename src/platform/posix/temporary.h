// New files in the system's folder for temporary files.
#pragma once

#include <string>

#include "toolbox/platform.h"

namespace toolbox::platform::posix {

[[nodiscard]] ErrorCode createTemporaryFile(const char* prefix, std::string& name);

}  // namespace toolbox::platform::posix

// The file system in use.
#pragma once

#include "toolbox/platform.h"

namespace toolbox {

/// Asked for at each call, so that a replaced file system also serves files that are open already.
[[nodiscard]] inline platform::FileSystem& files() {
    return *platform::current().files;
}

}  // namespace toolbox

// The host's own implementations; which ones is chosen by the folder that was compiled.
#pragma once

#include "toolbox/platform.h"

namespace toolbox::platform {

[[nodiscard]] StringResources& hostStrings();
[[nodiscard]] UserPrompt& hostPrompt();
[[nodiscard]] FileSystem& hostFiles();
[[nodiscard]] SystemInfo& hostSystem();

[[nodiscard]] inline Services hostServices() {
    return {&hostStrings(), &hostPrompt(), &hostFiles(), &hostSystem()};
}

}  // namespace toolbox::platform

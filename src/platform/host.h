// The host's own implementations; which ones is chosen by the folder that was compiled.
#pragma once

#include "toolbox/platform.h"

namespace toolbox::platform {

[[nodiscard]] StringResources& hostStrings();
[[nodiscard]] UserPrompt& hostPrompt();
[[nodiscard]] FileSystem& hostFiles();
[[nodiscard]] SystemInfo& hostSystem();
[[nodiscard]] ProfileStore& hostProfiles();
[[nodiscard]] RegistryStore& hostRegistry();
[[nodiscard]] Clipboard& hostClipboard();

[[nodiscard]] inline Services hostServices() {
    return {&hostStrings(),  &hostPrompt(),   &hostFiles(),    &hostSystem(),
            &hostProfiles(), &hostRegistry(), &hostClipboard()};
}

/// The module that the library's code lies in, which brings texts of its own where programs have
/// string resources; null where the host's strings have them anyway.
[[nodiscard]] HINSTANCE libraryModule();

}  // namespace toolbox::platform

// The folder of the user's settings.
#pragma once

#include <string>

namespace toolbox::platform::posix {

/// $XDG_CONFIG_HOME/toolbox/, or ~/.config/toolbox/ when that is not an absolute path. Asked anew
/// at each call; the folder may not exist.
[[nodiscard]] std::string configFolder();

/// Creates the folders on the way to a file of the settings folder that do not exist, for this user
/// only.
void createFoldersOf(const std::string& path);

}  // namespace toolbox::platform::posix

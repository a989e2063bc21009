// Parts of names, the nearest folder that is there, and the folder that a purpose remembers. Both
// '/' and '\' separate folders.
#pragma once

#include <string>
#include <string_view>

#include "toolbox/strings.h"

namespace toolbox::pickers {

/// What follows the last separator; all of a name without one, but for its drive.
[[nodiscard]] std::string_view fileNameOf(std::string_view path);

/// The folder above a file or folder: "C:\a\b" and "C:\a\b\" give "C:\a", "C:\a" gives "C:\".
/// Empty for a root, for a share ("\\server\share") and for a name without folder.
[[nodiscard]] std::string parentOf(std::string_view path);

/// The folder itself or the nearest above it that is there; empty when there is none.
[[nodiscard]] std::string nearestFolder(const std::string& folder);

/// The folder that a purpose remembers, be it gone; empty when there is none.
[[nodiscard]] std::string rememberedFolder(const CString& purpose);
/// Does nothing for an empty purpose or folder.
void rememberFolder(const CString& purpose, const std::string& folder);

}  // namespace toolbox::pickers

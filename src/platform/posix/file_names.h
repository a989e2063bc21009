// Names and error codes of files: what the file calls of this folder share.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "toolbox/platform.h"

namespace toolbox::platform::posix {

/// The name with '/' as its only separator; null is the empty name.
[[nodiscard]] std::string hostPath(const char* name);

/// The folder part with its separator, empty when there is none.
[[nodiscard]] std::string_view folderOf(std::string_view path);

/// From the root on, without "." and "..", which are resolved by the text alone.
[[nodiscard]] std::string fullName(const std::string& path);

/// $XDG_CONFIG_HOME/toolbox/, or ~/.config/toolbox/ when that is not an absolute path. Asked anew
/// at each call; the folder may not exist.
[[nodiscard]] std::string configFolder();

/// Rights of a folder of this user's own.
inline constexpr mode_t kUsersFolder = 0700;

/// Creates the folders on the way to a file that do not exist, for this user only.
void createFoldersOf(const std::string& path);

/// The Windows code for an errno; `otherwise` for those that have no counterpart.
[[nodiscard]] ErrorCode codeOf(int error, ErrorCode otherwise = ERROR_INVALID_PARAMETER);

/// As codeOf, for a call that took a name: tells a missing file from a missing folder.
[[nodiscard]] ErrorCode codeOfName(int error, const std::string& path);

/// As codeOfName, for a rename.
[[nodiscard]] ErrorCode codeOfRename(int error, const std::string& from, const std::string& to);

/// True when `name` matches `pattern`: `*` any text, `?` any one character, case counts. As on
/// Windows ".*" at the end also matches a name without an extension, so "*.*" is everything.
[[nodiscard]] bool matchesPattern(std::string_view name, std::string_view pattern);

[[nodiscard]] std::vector<FoundFile> findFiles(const std::string& pattern);

}  // namespace toolbox::platform::posix

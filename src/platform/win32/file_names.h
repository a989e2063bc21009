// Names of files as programs give them and as the system has them.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "toolbox/win_types.h"

namespace toolbox::platform {

/// Empty for null.
[[nodiscard]] const char* nameOf(const char* name);
[[nodiscard]] std::wstring wideOf(const char* name);
[[nodiscard]] std::string bytesOf(const std::wstring& wide, UINT codePage = CP_ACP);

/// Empty where the system cannot tell. Its function for names of bytes stops at MAX_PATH.
[[nodiscard]] std::wstring wideFullName(const char* name);
/// The name itself where the system cannot tell.
[[nodiscard]] std::string fullPath(const char* name);
/// A name as programs know it, without the prefix of names that the system takes as they stand.
[[nodiscard]] std::string withoutPrefix(const std::string& name);

/// What tells a file from every other; none when it is not there.
[[nodiscard]] std::optional<std::array<DWORD, 3>> identityOf(const char* name);

}  // namespace toolbox::platform

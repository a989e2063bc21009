// What the list of recent files and its menu share.
#pragma once

#include <cstddef>

#include "toolbox/strings.h"

namespace toolbox::file {

inline constexpr std::size_t kMostRecentFiles = 5;

/// The menu's text for the file at a place counted from 0: its number, which is the item's
/// mnemonic, and its name.
[[nodiscard]] RWCString recentItemLabel(std::size_t place, const RWCString& name);

}  // namespace toolbox::file

// What the list of recent files and its menu share.
#pragma once

#include <cstddef>
#include <list>

#include "toolbox/strings.h"
#include "toolbox/win_types.h"

namespace toolbox::file {

inline constexpr std::size_t kMostRecentFiles = 5;

/// The menu's text for the file at a place counted from 0: its number, which is the item's
/// mnemonic, and its name.
[[nodiscard]] RWCString recentItemLabel(std::size_t place, const RWCString& name);

#if defined(_WIN32)
/// Shows the names, newest first, at the end of the menu of the window's menu bar that has the item
/// `anchorID`, after a separator. Items that are there already are changed where they stand; those
/// beyond the names stay as they are.
void showRecentItems(HWND window, UINT anchorID, UINT firstID, const std::list<RWCString>& names);
#endif

}  // namespace toolbox::file

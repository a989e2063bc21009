// The recent files at the end of a menu.
#include "file/recent_items.h"

namespace toolbox::file {
namespace {

bool hasCommand(HMENU menu, UINT command) {
    return GetMenuState(menu, command, MF_BYCOMMAND) != static_cast<UINT>(-1);
}

/// The last menu of the bar that has the command; null when none has.
HMENU menuWith(HMENU bar, UINT command) {
    for (int i = bar ? GetMenuItemCount(bar) - 1 : -1; i >= 0; --i) {
        const HMENU menu = GetSubMenu(bar, i);
        if (menu && hasCommand(menu, command)) return menu;
    }
    return nullptr;
}

}  // namespace

void showRecentItems(HWND window, UINT anchorID, UINT firstID, const std::list<RWCString>& names) {
    const HMENU menu = menuWith(GetMenu(window), anchorID);
    if (!menu) return;
    if (!hasCommand(menu, firstID)) AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    std::size_t place = 0;
    for (const RWCString& name : names) {
        const UINT command = firstID + static_cast<UINT>(place);
        const RWCString label = recentItemLabel(place++, name);
        if (hasCommand(menu, command))
            ModifyMenuA(menu, command, MF_BYCOMMAND | MF_STRING, command, label);
        else
            AppendMenuA(menu, MF_STRING, command, label);
    }
    DrawMenuBar(window);
}

}  // namespace toolbox::file

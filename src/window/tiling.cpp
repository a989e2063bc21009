// Tiling the documents of a client window.
#include "window/tiling.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "toolbox/windowing.h"

namespace {

struct Documents {
    std::vector<HWND> open;  // neither minimized nor owned
    bool hasIcons = false;
    POINT iconRow{0, std::numeric_limits<LONG>::min()};  // lowest top of an icon, on the screen
};

Documents documentsOf(HWND client) {
    Documents found;
    for (HWND child = GetWindow(client, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsIconic(child)) {
            RECT icon{};
            GetWindowRect(child, &icon);
            found.hasIcons = true;
            found.iconRow.y = std::max(found.iconRow.y, icon.top);
        } else if (!GetWindow(child, GW_OWNER)) {
            found.open.push_back(child);
        }
    }
    return found;
}

void restoreMaximized(HWND client) {
    const auto active = reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0));
    if (active && IsZoomed(active)) ShowWindow(active, SW_RESTORE);
}

void moveAll(const std::vector<HWND>& windows, const std::vector<toolbox::window::Cell>& cells) {
    HDWP batch = BeginDeferWindowPos(static_cast<int>(windows.size()));
    for (std::size_t i = 0; batch && i < windows.size(); ++i) {
        const toolbox::window::Cell& cell = cells[i];
        batch = DeferWindowPos(batch, windows[i], nullptr, cell.x, cell.y, cell.width, cell.height,
                               SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (batch) EndDeferWindowPos(batch);
}

}  // namespace

void MDI::tileVertically(HWND client) {
    ShowScrollBar(client, SB_BOTH, FALSE);
    SendMessageA(client, WM_MDIICONARRANGE, 0, 0);
    Documents documents = documentsOf(client);
    if (documents.open.empty()) return;

    RECT area{};
    GetClientRect(client, &area);
    if (documents.hasIcons) {
        ScreenToClient(client, &documents.iconRow);
        area.bottom = documents.iconRow.y;
    }
    restoreMaximized(client);
    moveAll(documents.open,
            toolbox::window::tileCells(static_cast<int>(documents.open.size()), area.right,
                                       area.bottom, GetSystemMetrics(SM_CYCAPTION)));
}

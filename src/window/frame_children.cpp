// The documents of the frame and the standard commands on them.
#include <algorithm>
#include <vector>

#include "window/frame_state.h"

namespace {

// Commands of the window menu; the system commands stand for themselves.
enum : UINT {
    kExit = 1,
    kCloseChild = 6,
    kTileVertically = 7,
    kCascade = 8,
    kArrangeIcons = 9,
    kTileHorizontally = 10
};

/// The command of a menu or of an accelerator; anything else as it is. A key's command has a 1 in
/// its high word and comes from no window.
UINT commandOf(UINT id, LPARAM sender) {
    return sender == 0 && HIWORD(id) == 1 ? LOWORD(id) : id;
}

void showNeighbour(HWND child, UINT direction) {
    if (const HWND neighbour = GetWindow(child, direction)) ShowWindow(neighbour, SW_SHOWNORMAL);
}

int place(short value) {
    return value == MDI::kDefaultPlace ? CW_USEDEFAULT : value;
}

}  // namespace

HWND MDI::createMDIChild(const char* className, const char* title, unsigned long style, short x,
                         short y, short cx, short cy, LPARAM param) {
    MDICREATESTRUCTA record{};
    record.szClass = className;
    record.szTitle = title;
    record.hOwner = state_->instance;
    record.x = place(x);
    record.y = place(y);
    record.cx = place(cx);
    record.cy = place(cy);
    record.style = style;
    record.lParam = param;
    return reinterpret_cast<HWND>(
        SendMessageA(state_->client, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&record)));
}

void MDI::destroyMDIChild(HWND child) {
    SendMessageA(state_->client, WM_MDIDESTROY, reinterpret_cast<WPARAM>(child), 0);
}

HWND MDI::getActiveMDIChild() const {
    if (!state_->client || !IsWindow(state_->client)) return nullptr;
    return reinterpret_cast<HWND>(SendMessageA(state_->client, WM_MDIGETACTIVE, 0, 0));
}

void MDI::notifyMDIChildDestruction(HWND child) {
    state_->modeless.remove(child);
    state_->disabledBefore.remove(child);
}

int MDI::doFrameCommand(HWND child, UINT id, LPARAM lParam) {
    const HWND client = state_->client;
    const UINT command = commandOf(id, lParam);
    switch (command) {
        case kExit:
            SendMessageA(state_->frame, WM_CLOSE, 0, 0);
            return 1;
        case kTileVertically:
            SendMessageA(client, WM_MDITILE, MDITILE_VERTICAL, 0);
            return 1;
        case kTileHorizontally:
            SendMessageA(client, WM_MDITILE, MDITILE_HORIZONTAL, 0);
            return 1;
        case kCascade:
            SendMessageA(client, WM_MDICASCADE, MDITILE_SKIPDISABLED, 0);
            return 1;
        case kArrangeIcons:
            SendMessageA(client, WM_MDIICONARRANGE, 0, 0);
            return 1;
        case kCloseChild:
        case SC_CLOSE:
        case SC_DEFAULT:
            closeChild(child, command);
            return 1;
        case SC_MINIMIZE:
            ShowWindow(child, SW_SHOWMINIMIZED);
            return 1;
        case SC_MAXIMIZE:
            ShowWindow(child, SW_SHOWMAXIMIZED);
            return 1;
        case SC_RESTORE:
            ShowWindow(child, SW_SHOWNORMAL);
            return 1;
        case SC_NEXTWINDOW:
            showNeighbour(child, GW_HWNDNEXT);
            return 1;
        case SC_PREVWINDOW:
            showNeighbour(child, GW_HWNDPREV);
            return 1;
        default:
            return 0;
    }
}

void MDI::closeChild(HWND child, UINT id) {
    if (!child) return;
    const HWND client = state_->client;
    SendMessageA(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(child), 0);
    if (SendMessageA(child, WM_QUERYENDSESSION, id, 0))
        SendMessageA(client, WM_MDIDESTROY, reinterpret_cast<WPARAM>(child), 0);
}

int MDI::queryChildren(WPARAM wParam) {
    // A list of its own: a document may go away while it is asked.
    std::vector<HWND> documents;
    for (HWND child = GetWindow(state_->client, GW_CHILD); child;
         child = GetWindow(child, GW_HWNDNEXT))
        if (!GetWindow(child, GW_OWNER)) documents.push_back(child);

    const auto refuses = [wParam](HWND document) {
        return IsWindow(document) && !SendMessageA(document, WM_QUERYENDSESSION, wParam, 0);
    };
    const auto refusing = std::find_if(documents.begin(), documents.end(), refuses);
    if (refusing == documents.end()) return 1;
    for (auto agreed = documents.begin(); agreed != refusing; ++agreed)
        SendMessageA(*agreed, WM_ENDSESSION, 0, 0);
    return 0;
}

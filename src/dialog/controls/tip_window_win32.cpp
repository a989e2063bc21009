// A tracked tool tip of the system: its place and its time are ours, its look the user's. The
// record of its one tool has the size that every version of the common controls takes.
#include "dialog/controls/tip_window_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "dialog/controls/window_text_win32.h"

namespace toolbox::controls {
namespace {

constexpr int kWidest = 320;  // at 96 DPI

TOOLINFOA recordOf(HWND owner) {
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = owner;
    return tool;
}

LRESULT send(HWND window, UINT message, WPARAM word, TOOLINFOA& tool) {
    return SendMessageA(window, message, word, reinterpret_cast<LPARAM>(&tool));
}

/// Top left of a tip below what it is for, or above.
POINT placeFor(const SIZE& size, const RECT& beside) {
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoA(MonitorFromRect(&beside, MONITOR_DEFAULTTONEAREST), &screen);
    const RECT& work = screen.rcWork;
    POINT place{beside.left, beside.bottom};
    if (place.y + size.cy > work.bottom) place.y = beside.top - size.cy;
    place.x = std::max(std::min(place.x, work.right - size.cx), work.left);
    place.y = std::max(std::min(place.y, work.bottom - size.cy), work.top);
    return place;
}

}  // namespace

TipWindow::~TipWindow() {
    if (window()) DestroyWindow(window_);
}

int TipWindow::create(HWND owner) {
    if (window() && GetWindow(window_, GW_OWNER) == owner) return 1;
    if (window()) DestroyWindow(window_);
    isShown_ = false;
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    window_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr,
                              WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, nullptr, nullptr);
    if (!window_) return 0;
    TOOLINFOA tool = recordOf(owner);
    char none[] = "";
    tool.lpszText = none;
    send(window_, TTM_ADDTOOLA, 0, tool);
    SendMessageA(window_, TTM_SETMAXTIPWIDTH, 0, MulDiv(kWidest, screenDpi(), 96));
    return 1;
}

int TipWindow::show(HWND owner, const CString& text, const RECT& beside) {
    const HWND root = GetAncestor(owner, GA_ROOT);
    if (!root || !create(root)) return 0;
    TOOLINFOA tool = recordOf(root);
    std::string shown = text.str();
    tool.lpszText = shown.data();
    send(window_, TTM_UPDATETIPTEXTA, 0, tool);
    const LRESULT packed = send(window_, TTM_GETBUBBLESIZE, 0, tool);
    const POINT place = placeFor({LOWORD(packed), HIWORD(packed)}, beside);
    SendMessageA(window_, TTM_TRACKPOSITION, 0, MAKELPARAM(place.x, place.y));
    send(window_, TTM_TRACKACTIVATE, TRUE, tool);
    isShown_ = true;
    return 1;
}

void TipWindow::hide() {
    if (!isShown()) return;
    isShown_ = false;
    TOOLINFOA tool = recordOf(GetWindow(window_, GW_OWNER));
    send(window_, TTM_TRACKACTIVATE, FALSE, tool);
}

}  // namespace toolbox::controls

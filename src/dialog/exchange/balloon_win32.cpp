// A tracked tooltip, which neither waits nor goes by itself. The windows that end it are subclassed
// while it is shown; no timer is needed.
#include <algorithm>
#include <utility>

#include "dialog/common_controls.h"
#include "dialog/exchange/balloon.h"

namespace toolbox::dialog {
namespace {

constexpr int kWidth = 300;  // of its lines at 96 DPI

HWND makeTip(HWND owner) {
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    return CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr,
                           WS_POPUP | TTS_NOPREFIX | TTS_BALLOON | TTS_ALWAYSTIP, 0, 0, 0, 0, owner,
                           nullptr, nullptr, nullptr);
}

/// Where the balloon points: a little inside the field's lower edge, where text begins.
POINT targetIn(HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    const LONG height = place.bottom - place.top;
    constexpr LONG kLine = 24;  // what a tall field, a list say, counts as
    const LONG inside = std::min({place.right - place.left, height, kLine}) / 2;
    return {place.left + inside, std::min(place.bottom - height / 4, place.top + kLine)};
}

int screenDpi(HWND window) {
    const HDC context = GetDC(window);
    const int dpi = GetDeviceCaps(context, LOGPIXELSX);
    ReleaseDC(window, context);
    return dpi;
}

/// A message by which the user or the program changes a field, or the user leaves it.
bool endsEntry(UINT message) {
    switch (message) {
        case WM_CHAR:
        case WM_KILLFOCUS:
        case WM_PASTE:
        case WM_CUT:
        case WM_CLEAR:
        case WM_UNDO:
        case EM_UNDO:
        case EM_REPLACESEL:
        case WM_SETTEXT:
        case BM_SETCHECK:
        case CB_SETCURSEL:
        case LB_SETCURSEL:
        case WM_ENABLE:
            return true;
        default:
            return false;
    }
}

bool isMoved(UINT message, LPARAM data) {
    if (message == WM_NCDESTROY) return true;
    if (message != WM_WINDOWPOSCHANGED) return false;
    const UINT flags = reinterpret_cast<const WINDOWPOS*>(data)->flags;
    constexpr UINT kSamePlace = SWP_NOMOVE | SWP_NOSIZE;
    return (flags & kSamePlace) != kSamePlace || (flags & SWP_HIDEWINDOW);
}

/// Keys that change a field without a character.
bool isEditingKey(UINT message, WPARAM key) {
    return message == WM_KEYDOWN && (key == VK_DELETE || key == VK_UP || key == VK_DOWN);
}

bool isChild(HWND window) {
    return GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD;
}

}  // namespace

void Balloon::show(HWND control, const CString& text) {
    hide();
    const HWND owner = GetAncestor(control, GA_ROOT);
    tip_ = makeTip(owner);
    if (!tip_) return;
    CString shown = text;
    // The size that every version of the common controls takes.
    TTTOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.uFlags = TTF_TRACK;
    tool.hwnd = owner;
    tool.uId = 1;
    tool.lpszText = shown.str().data();
    const auto toolData = reinterpret_cast<LPARAM>(&tool);
    SendMessageA(tip_, TTM_SETMAXTIPWIDTH, 0, MulDiv(kWidth, screenDpi(tip_), 96));
    SendMessageA(tip_, TTM_ADDTOOLA, 0, toolData);
    const POINT target = targetIn(control);
    SendMessageA(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(target.x, target.y));
    SendMessageA(tip_, TTM_TRACKACTIVATE, TRUE, toolData);
    follow(control);
}

void Balloon::follow(HWND control) {
    // The edit field of a combo box is what the user types in.
    if (const HWND focus = GetFocus(); focus && IsChild(control, focus)) watched_.push_back(focus);
    watched_.push_back(control);
    fields_ = watched_.size();
    for (HWND window = control; isChild(window);) {
        window = GetParent(window);
        if (!window) break;
        watched_.push_back(window);
    }
    // Several balloons may watch one window: each is a subclass of its own.
    const auto self = reinterpret_cast<UINT_PTR>(this);
    for (const HWND each : watched_) SetWindowSubclass(each, watch, self, self);
}

void Balloon::hide() {
    // A window that goes may call this again.
    const std::vector<HWND> watched = std::exchange(watched_, {});
    for (const HWND each : watched)
        RemoveWindowSubclass(each, watch, reinterpret_cast<UINT_PTR>(this));
    if (const HWND tip = std::exchange(tip_, nullptr)) DestroyWindow(tip);
}

LRESULT CALLBACK Balloon::watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR balloon) {
    auto* const self = reinterpret_cast<Balloon*>(balloon);
    const auto& watched = self->watched_;
    const auto place = std::ranges::find(watched, window) - watched.begin();
    const bool isField = static_cast<std::size_t>(place) < self->fields_;
    if (isMoved(message, lParam) ||
        (isField && (endsEntry(message) || isEditingKey(message, wParam))))
        self->hide();
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace toolbox::dialog

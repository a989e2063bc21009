// The dialog has the mouse while keys are dragged; a thin window in the list marks the place, so
// that what the list paints meanwhile does no harm.
#include "dialog/keys/key_drag_win32.h"

#include <utility>

namespace toolbox::keys {
namespace {

constexpr UINT_PTR kScrollTimer = 0x4B44;  // of the dialog's own
constexpr UINT kScrollPause = 60;          // ms for a row
constexpr int kMarkHeight = 2;

}  // namespace

void KeyDrag::begin(HWND dialog) {
    end();
    if (model_.selection().empty()) return;
    dialog_ = dialog;
    mark_ = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_DISABLED, 0, 0, 1, kMarkHeight,
                            list_.getHWND(), nullptr, nullptr, nullptr);
    SetCapture(dialog);
    SetTimer(dialog, kScrollTimer, kScrollPause, nullptr);
    follow();
}

void KeyDrag::end() {
    if (!isOn()) return;
    const HWND dialog = std::exchange(dialog_, nullptr);
    KillTimer(dialog, kScrollTimer);
    if (mark_) DestroyWindow(std::exchange(mark_, nullptr));
    if (GetCapture() == dialog) ReleaseCapture();
}

POINT KeyDrag::pointer() const {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(list_.getHWND(), &point);
    return point;
}

bool KeyDrag::take(UINT message, WPARAM wParam) {
    if (!isOn()) return false;
    switch (message) {
        case WM_MOUSEMOVE:
            follow();
            return true;
        case WM_TIMER:
            if (wParam != kScrollTimer) return false;
            scroll();
            return true;
        case WM_LBUTTONUP:
            row_ = list_.rowBefore(pointer());
            order_ = model_.movedBefore(row_);
            end();
            return true;
        case WM_RBUTTONDOWN:
        case WM_CAPTURECHANGED:
            end();
            return true;
        default:
            return false;
    }
}

void KeyDrag::follow() {
    row_ = list_.rowBefore(pointer());
    const bool moves = model_.movedBefore(row_).has_value();
    SetCursor(LoadCursorA(nullptr, moves ? IDC_ARROW : IDC_NO));
    showMark(moves);
}

void KeyDrag::scroll() {
    const int by = list_.beyond(pointer());
    if (by == 0) return;
    showMark(false);
    ListView_Scroll(list_.getHWND(), 0, by * list_.rowHeight());
    follow();
}

void KeyDrag::showMark(bool shown) {
    RECT client{};
    GetClientRect(list_.getHWND(), &client);
    SetWindowPos(
        mark_, HWND_TOP, 0, list_.edgeOf(row_) - kMarkHeight / 2, client.right, kMarkHeight,
        SWP_NOACTIVATE |
            (shown ? static_cast<UINT>(SWP_SHOWWINDOW) : static_cast<UINT>(SWP_HIDEWINDOW)));
}

}  // namespace toolbox::keys

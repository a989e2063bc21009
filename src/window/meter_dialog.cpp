// The progress meter's dialog: its clocks, its button, and the messages that keep it alive.
#include "meter_dialog.h"

#include "base/template_text.h"
#include "toolbox/messages.h"
#include "toolbox/meter.h"
#include "toolbox/platform.h"
#include "toolbox/processes.h"
#include "window/time_left.h"

namespace {

constexpr UINT_PTR kClockTimer = 1;
constexpr UINT kClockPeriod = 1000;  // ms

void centreOnScreen(HWND dialog) {
    RECT place{};
    GetWindowRect(dialog, &place);
    const int x = (GetSystemMetrics(SM_CXSCREEN) - (place.right - place.left)) / 2;
    const int y = (GetSystemMetrics(SM_CYSCREEN) - (place.bottom - place.top)) / 2;
    SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// For a window that is not in the table of associations the look-up gives the pending object, which
// is of any type. So the dialog remembers whether it is in there.
void setAssociated(HWND dialog, bool on) {
    SetWindowLongPtrA(dialog, DWLP_USER, on ? 1 : 0);
}

bool isAssociated(HWND dialog) {
    return GetWindowLongPtrA(dialog, DWLP_USER) != 0;
}

std::time_t now() {
    return toolbox::platform::current().system->now();
}

}  // namespace

void TarvMeter::dispatch() const {
    static_cast<void>(pumped());
}

bool TarvMeter::pumped() const {
    if (!meter_) return true;
    const toolbox::detail::Watch self(life_);
    MSG message;
    while (!self.gone() && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) cancelMeter();
        if (isCancelEnabled() && IsDialogMessageA(meter_, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return !self.gone();
}

void TarvMeter::release() {
    restoreCursor();
    setAssociated(meter_, false);
    GetHandleObject(meter_, 1);
    meter_ = nullptr;
    if (parent_) EnableWindow(parent_, TRUE);
}

INT_PTR CALLBACK TarvMeter::dialogProcedure(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        auto* const meter = reinterpret_cast<TarvMeter*>(lParam);
        if (!SetHandleObject(meter, dialog)) {
            DestroyWindow(dialog);
            return FALSE;
        }
        setAssociated(dialog, true);
        meter->meter_ = dialog;
        return meter->handleDialog(dialog, message, wParam);
    }
    if (message == WM_DESTROY) KillTimer(dialog, kClockTimer);
    if (!isAssociated(dialog)) return FALSE;
    auto* const meter = static_cast<TarvMeter*>(GetHandleObject(dialog, 0));
    return meter ? meter->handleDialog(dialog, message, wParam) : FALSE;
}

INT_PTR TarvMeter::handleDialog(HWND dialog, UINT message, WPARAM wParam) {
    switch (message) {
        case WM_INITDIALOG:
            SetTimer(dialog, kClockTimer, kClockPeriod, nullptr);
            start_ = now();
            centreOnScreen(dialog);
            return TRUE;
        case WM_TIMER:
            showTimes();
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return FALSE;
            cancelled_ = 1;
            enableCancel(0);
            cancelMeter();
            return TRUE;
        case WM_DESTROY:
            // Somebody else destroys it: its owner, say.
            release();
            return TRUE;
        default:
            return FALSE;
    }
}

namespace {

struct Clock {
    int hours = 0;
    int minutes = 0;
    int seconds = 0;

    explicit Clock(long all) { Secs2HMS(all, &hours, &minutes, &seconds); }
};

}  // namespace

void TarvMeter::showTimes() const {
    const long elapsed = static_cast<long>(std::difftime(now(), start_));
    const Clock clock(elapsed);
    char text[40];
    toolbox::base::printTemplate(text, sizeof text, "%02d:%02d:%02d", clock.hours, clock.minutes,
                                 clock.seconds);
    SetDlgItemTextA(meter_, IDC_METER_ELAPSED, text);
    if (GetDlgItem(meter_, IDC_METER_LEFT)) showTimeLeft(elapsed);
}

void TarvMeter::showTimeLeft(long elapsed) const {
    constexpr unsigned short kTimeLeft = 1220;
    RWCString text;
    if (const auto left = toolbox::window::timeLeft(elapsed, position_, rangeHigh_)) {
        const Clock clock(*left);
        GMSG::getString(kTimeLeft, text, clock.hours, clock.minutes, clock.seconds);
    }
    SetDlgItemTextA(meter_, IDC_METER_LEFT, text);
}

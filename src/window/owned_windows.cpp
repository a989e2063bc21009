// Where the owned windows are above their owner anyway, which the system sees to in general,
// nothing is ever found behind it.
#include "window/owned_windows.h"

#include <vector>

namespace toolbox::window {
namespace {

// Timers of the frame with a procedure of their own: one look after the other.
constexpr UINT_PTR kFirstLook = 0x746F4F57, kLastLook = kFirstLook + 3;
constexpr UINT kSoon = 10;        // ms until the first look
constexpr UINT kTimesLonger = 3;  // until the next

/// All of them, when one is behind the frame, so that they keep their order.
void raiseOwned(HWND frame) {
    std::vector<HWND> owned;
    bool isOneBehind = false;
    bool isFramePassed = false;
    for (HWND each = GetWindow(frame, GW_HWNDFIRST); each; each = GetWindow(each, GW_HWNDNEXT)) {
        isFramePassed = isFramePassed || each == frame;
        if (GetWindow(each, GW_OWNER) != frame || !IsWindowVisible(each)) continue;
        owned.push_back(each);
        isOneBehind = isOneBehind || isFramePassed;
    }
    if (!isOneBehind) return;
    for (; !owned.empty(); owned.pop_back())
        SetWindowPos(owned.back(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void CALLBACK look(HWND frame, UINT, UINT_PTR timer, DWORD) {
    KillTimer(frame, timer);
    if (GetActiveWindow() != frame) return;
    raiseOwned(frame);
    UINT pause = kSoon;
    for (UINT_PTR each = kFirstLook; each <= timer; ++each) pause *= kTimesLonger;
    if (timer < kLastLook && IsWindow(frame)) SetTimer(frame, timer + 1, pause, look);
}

}  // namespace

void keepOwnedAbove(HWND frame) {
    SetTimer(frame, kFirstLook, kSoon, look);
}

}  // namespace toolbox::window

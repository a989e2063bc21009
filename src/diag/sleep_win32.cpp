// Waiting with a live user interface.
#include <algorithm>
#include <optional>
#include <vector>

#include "toolbox/processes.h"

namespace {

/// Timers of the waits in progress: a message handled during one may start another.
std::vector<UINT_PTR> waiting;

bool isWaiting(UINT_PTR timer) {
    return std::find(waiting.begin(), waiting.end(), timer) != waiting.end();
}

void CALLBACK SleepProc(HWND, UINT, UINT_PTR timer, DWORD) {
    std::erase(waiting, timer);
    KillTimer(nullptr, timer);
}

}  // namespace

void Sleep(int seconds) {
    constexpr int kLongest = 65;
    if (seconds < 1 || seconds > kLongest) return;
    const UINT_PTR timer = SetTimer(nullptr, 0, static_cast<UINT>(seconds) * 1000, SleepProc);
    if (timer == 0) return;
    waiting.push_back(timer);
    std::optional<WPARAM> quit;
    for (MSG message; isWaiting(timer);) {
        if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) continue;
        if (message.message == WM_QUIT) {
            quit = message.wParam;
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    // The loop that waits outside ends by it.
    if (quit) PostQuitMessage(static_cast<int>(*quit));
}

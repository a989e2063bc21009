// The windows that take no input while a modal dialog is shown.
#include "dialog/other_windows_win32.h"

#include <utility>

namespace toolbox::dialog {
namespace {

BOOL CALLBACK collect(HWND window, LPARAM windows) {
    if (IsWindowVisible(window) && IsWindowEnabled(window))
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

}  // namespace

void OtherWindowsOff::switchOff() {
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows_));
    for (const HWND window : windows_) EnableWindow(window, FALSE);
}

void OtherWindowsOff::switchOn() {
    for (const HWND window : std::exchange(windows_, {}))
        if (IsWindow(window)) EnableWindow(window, TRUE);
}

}  // namespace toolbox::dialog

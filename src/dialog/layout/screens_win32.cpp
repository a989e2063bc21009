// Windows and screens as boxes.
#include "dialog/layout/screens_win32.h"

namespace toolbox::dialog {
namespace {

MONITORINFO infoOf(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(monitor, &info);
    return info;
}

BOOL CALLBACK collectArea(HMONITOR monitor, HDC, LPRECT, LPARAM areas) {
    reinterpret_cast<std::vector<Box>*>(areas)->push_back(boxOf(infoOf(monitor).rcWork));
    return TRUE;
}

}  // namespace

Box boxOf(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    return boxOf(area);
}

std::vector<Box> workAreas() {
    std::vector<Box> areas;
    EnumDisplayMonitors(nullptr, nullptr, collectArea, reinterpret_cast<LPARAM>(&areas));
    return areas;
}

Box workAreaOf(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    const HMONITOR monitor =
        window && GetWindowPlacement(window, &placement)
            ? MonitorFromRect(&placement.rcNormalPosition, MONITOR_DEFAULTTONEAREST)
            : MonitorFromWindow(nullptr, MONITOR_DEFAULTTOPRIMARY);
    return boxOf(infoOf(monitor).rcWork);
}

int screenDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

void place(HWND window, const Box& box) {
    SetWindowPos(window, nullptr, box.left, box.top, box.width(), box.height(),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

}  // namespace toolbox::dialog

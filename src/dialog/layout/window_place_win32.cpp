// Places of windows in the settings: one entry for each name.
#include "dialog/layout/kept_place.h"
#include "dialog/layout/screens_win32.h"
#include "toolbox/dialogs.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox::dialog;

constexpr const char* kSection = "Places";

/// The system tells the place of a window that is minimized or maximized as seen from the corner of
/// the area that task bars leave.
Box normalBox(HWND window) {
    if (!IsIconic(window) && !IsZoomed(window)) return boxOf(window);
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    const Box box = boxOf(placement.rcNormalPosition);
    if (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) return box;
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(MonitorFromRect(&placement.rcNormalPosition, MONITOR_DEFAULTTONEAREST), &info);
    return box.movedTo(box.left + info.rcWork.left - info.rcMonitor.left,
                       box.top + info.rcWork.top - info.rcMonitor.top);
}

/// A minimized window comes back as it was before.
bool isMaximized(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    return IsIconic(window) ? (placement.flags & WPF_RESTORETOMAXIMIZED) != 0 : IsZoomed(window);
}

}  // namespace

TvWindowPlace::TvWindowPlace(const toolbox::SettingName& name) : name_(name.text()) {}

int TvWindowPlace::restore(HWND window, int withSize) {
    RWCString text;
    const auto kept = GMSG::getProfile(kSection, name_, text, RWCString()) ? scanPlace(text.view())
                                                                           : std::nullopt;
    if (!kept || !IsWindow(window)) return 0;
    if (IsIconic(window) || IsZoomed(window)) ShowWindow(window, SW_SHOWNOACTIVATE);
    place(window, placeAgain(*kept, boxOf(window), withSize != 0, screenDpi(), workAreas()));
    maximized_ = kept->isMaximized && (GetWindowLongPtrA(window, GWL_STYLE) & WS_MAXIMIZEBOX);
    setPut(window);
    if (maximized_ && IsWindowVisible(window)) ShowWindow(window, SW_SHOWMAXIMIZED);
    return 1;
}

void TvWindowPlace::setPut(HWND window) {
    GetWindowRect(window, &put_);
}

int TvWindowPlace::save(HWND window) {
    if (!IsWindow(window)) return 0;
    const KeptPlace now{normalBox(window), screenDpi(), isMaximized(window)};
    if (now.box == boxOf(put_) && now.isMaximized == (maximized_ != 0)) return 1;
    return GMSG::writeProfile(kSection, name_, RWCString(printPlace(now)));
}

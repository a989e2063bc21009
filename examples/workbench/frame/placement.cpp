// The place that a window has when it is neither minimized nor maximized is what is kept.
#include "frame/placement.h"

#include "toolbox/messages.h"

namespace {

constexpr const char* kSides[] = {"Left", "Top", "Right", "Bottom"};
constexpr const char* kMaximized = "Maximized";

}  // namespace

void savePlacement(HWND window, const char* section) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(window, &placement)) return;
    const RECT& at = placement.rcNormalPosition;
    for (int i = 0; const LONG side : {at.left, at.top, at.right, at.bottom})
        GMSG::writeProfile(section, kSides[i++], int{side});
    // A minimized window comes back as it was before.
    const bool isMaximized = placement.showCmd == SW_SHOWMINIMIZED
                                 ? (placement.flags & WPF_RESTORETOMAXIMIZED) != 0
                                 : placement.showCmd == SW_SHOWMAXIMIZED;
    GMSG::writeProfile(section, kMaximized, isMaximized ? 1 : 0);
}

bool restorePlacement(HWND window, const char* section) {
    int sides[4];
    for (int i = 0; i < 4; ++i)
        if (!GMSG::getProfile(section, kSides[i], sides[i], 0)) return false;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    placement.rcNormalPosition = {sides[0], sides[1], sides[2], sides[3]};
    if (IsRectEmpty(&placement.rcNormalPosition) ||
        !MonitorFromRect(&placement.rcNormalPosition, MONITOR_DEFAULTTONULL))
        return false;
    int maximized = 0;
    GMSG::getProfile(section, kMaximized, maximized, 0);
    placement.showCmd = maximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    if (!IsWindowVisible(window)) placement.showCmd = SW_HIDE;
    return SetWindowPlacement(window, &placement) != 0;
}

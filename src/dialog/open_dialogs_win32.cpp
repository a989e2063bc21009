// Which dialog has which window. The windows' own words stay the application's.
#include "dialog/open_dialogs_win32.h"

#include <map>

#include "toolbox/dialogs.h"

namespace {

std::map<HWND, TvDialog*>& dialogs() {
    static auto& all = *new std::map<HWND, TvDialog*>;  // outlives dialogs that are static, too
    return all;
}

/// The window that a child window is inside of.
HWND outerOf(HWND window) {
    return GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD ? GetParent(window) : nullptr;
}

}  // namespace

bool toolbox::dialog::isDialogWindow(HWND window) {
    char name[8] = "";
    return GetClassNameA(window, name, sizeof name) && lstrcmpA(name, "#32770") == 0;
}

void toolbox::dialog::enter(HWND window, TvDialog& dialog) {
    dialogs()[window] = &dialog;
}

void toolbox::dialog::remove(HWND window) {
    dialogs().erase(window);
}

TvDialog* TvDialog::find(HWND window) {
    const auto found = dialogs().find(window);
    return found == dialogs().end() ? nullptr : found->second;
}

int TvDialog::isDialogMessage(MSG& message) {
    // The outermost dialog around the window that the message goes to: those inside are its pages.
    HWND dialog = nullptr;
    HWND outermost = nullptr;
    for (HWND window = message.hwnd; window; window = outerOf(window)) {
        if (find(window)) dialog = window;
        outermost = window;
    }
    if (!dialog || find(dialog)->isModal()) return 0;
    if (dialog != outermost && toolbox::dialog::isDialogWindow(outermost)) return 0;
    return IsDialogMessageA(dialog, &message);
}

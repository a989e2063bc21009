// Which dialog has which window. The windows' own words stay the application's.
#include "dialog/open_dialogs_win32.h"

#include <map>

#include "toolbox/dialogs.h"

namespace {

std::map<HWND, TvDialog*>& dialogs() {
    static std::map<HWND, TvDialog*> all;
    return all;
}

}  // namespace

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
    // The dialog around the window that the message goes to: handling it may change the table.
    for (HWND window = message.hwnd; window; window = GetAncestor(window, GA_PARENT)) {
        const TvDialog* const dialog = find(window);
        if (dialog && !dialog->isModal()) return IsDialogMessageA(window, &message);
    }
    return 0;
}

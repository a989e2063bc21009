// The windows of open sheets, for the keys that go from page to page.
#pragma once

#include <windows.h>

namespace toolbox::dialog {

/// Modeless sheets get their keys from message loops that know them as dialogs only.
void enterSheet(HWND sheet, bool isModal);
void removeSheet(HWND sheet);

/// A key that goes from page to page: Ctrl with Tab, Page Up or Page Down.
[[nodiscard]] bool turnsPages(const MSG& message);

}  // namespace toolbox::dialog

// The windows of open sheets, for the keys that go from page to page.
#pragma once

#include <windows.h>

namespace toolbox::dialog {

/// Modeless sheets get their keys from message loops that know them as dialogs only.
void enterSheet(HWND sheet, bool isModal);
void removeSheet(HWND sheet);

}  // namespace toolbox::dialog

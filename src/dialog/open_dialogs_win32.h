// Which dialog has which window.
#pragma once

#include <functional>

#include "toolbox/win_types.h"

class TvDialog;

namespace toolbox::dialog {

void enter(HWND window, TvDialog& dialog);
void remove(HWND window);

/// The window is a dialog of the system's, be it one of these or not.
[[nodiscard]] bool isDialogWindow(HWND window);

}  // namespace toolbox::dialog

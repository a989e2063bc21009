// Which dialog has which window.
#pragma once

#include <functional>

#include "toolbox/win_types.h"

class TvDialog;

namespace toolbox::dialog {

void enter(HWND window, TvDialog& dialog);
void remove(HWND window);

}  // namespace toolbox::dialog

// The keyboard in dialogs: the first focus, and the keys that are not the frame's.
#pragma once

#include "toolbox/win_types.h"

namespace toolbox::dialog {

/// Gives the focus to the first control that takes it, unless one of the dialog has it.
void giveFirstFocus(HWND dialog);

/// One of the controls that are seen has a text to edit.
[[nodiscard]] bool hasField(HWND dialog);

/// True for a key that the frame's accelerators leave to the dialog.
[[nodiscard]] bool keeps(HWND dialog, const MSG& message);

}  // namespace toolbox::dialog

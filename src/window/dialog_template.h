// Dialog templates of the message service's module or of the application.
#pragma once

#include <windows.h>

namespace toolbox::window {

/// Opens a modal dialog over `parent` and returns what its procedure gives to EndDialog; 0 or -1
/// when there is no such template or no dialog could be made. The template is looked up in the
/// message service's module first, in the application second; of several languages the one of the
/// message service is taken. The procedure gets `data` in WM_INITDIALOG.
[[nodiscard]] INT_PTR showDialog(const char* name, HWND parent, DLGPROC procedure, LPARAM data);

/// Creates a modeless dialog from a template of `module`, of several languages in that of the
/// message service. Null when there is no such template or no dialog could be made.
[[nodiscard]] HWND createDialog(HINSTANCE module, const char* name, HWND parent, DLGPROC procedure,
                                LPARAM data);

}  // namespace toolbox::window

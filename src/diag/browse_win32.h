// Asking the user where a program is.
#pragma once

#include <windows.h>

#include <string>

namespace toolbox::diag {

/// Shows the file dialog on the message service's module. The chosen path, empty when there is
/// none; an error of the dialog is reported by the message service.
[[nodiscard]] std::string browseForProgram(HWND owner, const std::string& fileName);

}  // namespace toolbox::diag

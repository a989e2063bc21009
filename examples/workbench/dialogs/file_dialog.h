// Choosing files.
#pragma once

#include "toolbox/strings.h"

class Workbench;

/// The full name of the project file that the user chooses, for saving or opening; empty when none
/// was chosen. `file` is the name that the dialog starts with.
[[nodiscard]] CString askForFile(Workbench& workbench, const CString& file, bool saving);

/// The full name for the drawing of a project, SVG or PDF; empty when none was chosen. `name` is
/// that of the project.
[[nodiscard]] CString askForDrawingFile(Workbench& workbench, const CString& name);

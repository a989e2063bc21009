// Where the program keeps what survives it (Windows only).
#pragma once

#include "toolbox/strings.h"

struct Settings {
    CString file;            ///< profile file of the settings and the changed keys
    CString log;             ///< of the errors of this run
    bool isWritable = true;  ///< files can be made in their folder
};

/// The full names in a folder, which is made when it is missing, with those above it.
[[nodiscard]] Settings settingsIn(const CString& folder);

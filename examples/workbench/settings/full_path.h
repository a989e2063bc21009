// Names of files, for comparing them (Windows only).
#pragma once

#include "toolbox/strings.h"

/// The name with its drive and all folders, of any length; the name itself where the system cannot
/// tell.
[[nodiscard]] CString fullPath(const CString& name);

/// True when two full names are the same to the system, for which case does not count.
[[nodiscard]] bool isSamePath(const CString& one, const CString& other);

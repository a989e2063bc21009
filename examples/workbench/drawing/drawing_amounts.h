// Figures as the drawing writes them.
#pragma once

#include "toolbox/strings.h"

/// With at most so many decimals and then the unit: "12.5 kN", "6 m".
[[nodiscard]] CString amount(double value, int decimals, const char* unit = "");

// The system's common controls, whose header needs the system's own before it.
#pragma once

#include "toolbox/win_types.h"

// After windows.h.
#include <commctrl.h>

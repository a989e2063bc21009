// The system's common controls, whose own header has to come after windows.h.
#pragma once

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

// Where a window stood, kept in the settings from one run to the next.
#pragma once

#include "toolbox/win_types.h"

void savePlacement(HWND window, const char* section);
/// False, and the window stays where it is, when nothing was saved or it would be off every screen.
/// A hidden window stays hidden.
bool restorePlacement(HWND window, const char* section);

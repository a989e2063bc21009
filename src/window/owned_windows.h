// The windows that a frame owns, tool dialogs for one, stand above it.
#pragma once

#include <windows.h>

namespace toolbox::window {

/// A display without a window manager raises a window that gets the focus above those that it owns,
/// and tells so a little later. Looks a few times, soon after the frame got the focus, and raises
/// them when one is behind it, unless another window is the active one by then.
void keepOwnedAbove(HWND frame);

}  // namespace toolbox::window

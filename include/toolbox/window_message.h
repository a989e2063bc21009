// The record of one window message, as handlers get it.
//
// A window procedure packs its arguments into one and passes it by reference from handler to
// handler (DispatchServer::dispatch, MouseDragger::drag, MDI::frameWndProc). A handler that took
// care of the message sets `handled`, and those after it leave the message alone.
#pragma once

#include "toolbox/win_types.h"

/// A plain value. The parameters are as wide as the system's: pointers on 64-bit systems fit.
struct TarvMess {
    TarvMess() = default;
    /// The arguments of a window procedure.
    TarvMess(HWND window, UINT number, WPARAM word, LPARAM longParameter, int isHandled)
        : hwnd(window), message(number), wParam(word), lParam(longParameter), handled(isHandled) {}

    HWND hwnd = nullptr;  ///< the window that it is for
    UINT message = 0;     ///< its number, WM_COMMAND for one
    WPARAM wParam = 0;    ///< first parameter
    LPARAM lParam = 0;    ///< second parameter
    int handled = 0;      ///< non-zero: nobody else need handle it
};

// Utilities around windows and programs: objects that belong to windows and other keys, durations,
// and, on Windows, waiting with a live user interface, finding windows and starting programs.
//
// All of it is for the user-interface thread; tables and waits are shared by the whole process.
// While Sleep() waits and ExecApp() asks, messages are handled: what they lead to may destroy any
// window or object, the owner of the call included, and wait or ask itself.
#pragma once

#include "toolbox/export.h"
#include "toolbox/win_types.h"

/// Splits seconds into hours, minutes and seconds, by division toward zero.
TB_API void Secs2HMS(long seconds, int* h, int* m, int* s);

// Objects by window and by any other pointer: two tables of 100 places each. The objects are
// borrowed and never looked at. A key that is stored again is found with its earliest object.

/// Notes which object belongs to a window. A null window makes the object the pending one: the
/// object of every window that is not in the table, for a dialog whose handle is not known yet.
/// Returns 1; 0 when the table is full, and the object is not stored.
TB_API int SetHandleObject(void* object, void* window);
/// The window's object; the pending one (null at first) when the window is not in the table. A
/// non-zero `remove` takes the window out of the table.
TB_API void* GetHandleObject(HWND window, int remove);
/// The same for any key. 0 when the table is full, and for a null key, which stores nothing.
TB_API int SetPointerObject(void* object, void* key);
/// The key's object, null when the key is not in the table.
TB_API void* GetPointerObject(void* key, int remove);

#if defined(_WIN32)

/// A pointer kept in a window's first extra word. The window's class has asked for at least
/// sizeof(void*) extra bytes (cbWndExtra); otherwise nothing is kept and null is found.
TB_API void SetWindowPtr(HWND window, void* pointer);
/// The pointer; null when none was kept.
TB_API void* GetWindowPtr(HWND window);

// What these change is the window's class, so every window of the class has it.
/// Sets (`on` non-zero) or clears style bits (CS_DBLCLKS...).
TB_API void SetWindowStyle(HWND window, int bits, int on);
/// `icon` is a handle: those of 64-bit systems have 32 bits too.
TB_API void SetWindowIcon(HWND window, int icon);

/// Waits from 1 to 65 seconds while messages are handled, and returns at once for other values. It
/// keeps the processor busy. A message to quit that comes meanwhile is there again afterwards. Not
/// the system's function of that name, which takes milliseconds: an argument like 10ul, an unsigned
/// long, means that one.
TB_API void Sleep(int seconds);

namespace toolbox {

/// A program that was started: a window of it and the thread that owns the window.
struct RunningApp {
    HWND window;     ///< a top-level one
    DWORD threadId;  ///< the one that made it
};

}  // namespace toolbox

extern "C" {

/// The topmost of the top-level windows whose title, of which the first 80 characters count,
/// contains `text`, case counting; null when there is none. `except` is passed over: the caller's
/// own window, or null.
TB_API HWND FindWin(const char* text, HWND except);

/// 1 while the window exists and belongs to that thread, else 0. A window's handle is given to new
/// windows after its end; the thread tells.
TB_API int IsAppRunning(const toolbox::RunningApp* app);

/// Starts a program in a console of its own. `program` names an .EXE, with or without that
/// extension; a bare name is looked for in the current folder only. `commandLine` is
/// passed on as it is, null when there is none. A program that is not found is looked up in the
/// section "programs" of the user's profile (win.ini), under its name in capitals; then the user
/// may browse for it, and the place is stored there.
///
/// Returns 1 when it was started, 2 when it was not, 3 for a name with another extension. On 1
/// `info` holds the process and its thread, which the caller closes, else zeros; with a null `info`
/// nothing is to be closed.
///
/// Browsing needs, in the message service's module, the dialog DLG_BROWSE and the icons 12002 and
/// 12003: resources/browse_dialog.rc.
TB_API int ExecApp(HWND owner, const char* program, char* commandLine, PROCESS_INFORMATION* info);
}

#endif

// The workbench's own dialogs. Each modal one runs under a DialogPhase (workbench.h) and returns
// true when the user confirmed.
#pragma once

#include "project/document.h"
#include "toolbox/win_types.h"

class Workbench;

/// Edits a beam, its section and its loads.
bool editBeam(HWND parent, Workbench& workbench, Beam& beam);
/// Shows the errors reported so far; true when the user wants them cleared.
bool showMessages(HWND parent, Workbench& workbench, const CString& errors);
void showAbout(HWND parent, Workbench& workbench);

/// The list of keys, modeless: which are columns and in which order, their formats, copying a
/// token. Creates it on first use; one for the program. It is registered with the frame.
void showKeyList(Workbench& workbench);
void closeKeyList();
/// After the keys or the language changed.
void refreshKeyList();

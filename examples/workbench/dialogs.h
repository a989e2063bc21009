// The workbench's own dialogs. Each modal one returns true when the user confirmed.
#pragma once

#include "document.h"
#include "toolbox/win_types.h"

class Workbench;

/// Edits a beam, its section and its loads.
bool editBeam(HWND parent, Workbench& workbench, Beam& beam);
/// Edits a label's template; shows how it would read and what in it is no key.
bool editLabel(HWND parent, Document& document, Label& label);
/// The errors collected so far; the user may clear them.
void showMessages(HWND parent);
void showAbout(HWND parent);

/// The list of keys, modeless: which are columns and in which order, their formats, copying a
/// token. Creates it on first use; one for the program. It is registered with the frame.
void showKeyList(Workbench& workbench);
void closeKeyList();
/// After the keys or the language changed.
void refreshKeyList();

// Pictures of the screen and what lies in the clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace session {

/// Writes what an area of the screen shows into a bitmap file of 24 bits a pixel.
void savePicture(const RECT& area, const std::string& file);
[[nodiscard]] RECT wholeScreen();

/// Empties the clipboard, so that what a program copies next is told from what was there.
void emptyClipboard();
[[nodiscard]] bool hasClipboardText();
[[nodiscard]] std::string clipboardText();

}  // namespace session

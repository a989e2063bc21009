// What a person does with mouse and keyboard in another program's windows, and what the screen then
// shows. Places are on the screen.
#pragma once

#include <string>

#include "other_windows.h"

namespace session {

void click(POINT place);
/// Goes to one place, presses the button, goes to the other in small steps, lets go.
void drag(POINT from, POINT to);

/// Types a text in UTF-8, whether the keyboard has its characters or not.
void type(const std::string& text);
/// Replaces the text of a field.
void enter(HWND dialog, int field, const std::string& text);

/// Writes what an area of the screen shows into a portable pixmap.
void savePicture(const RECT& area, const std::string& file);
/// The same of a window, once what is waiting to be painted is painted.
void savePicture(HWND window, const std::string& file);

/// Runs what drives a program, in a folder that is made anew: full names of a program and of this
/// folder. When that throws, says why, leaves a picture of the screen there and returns 1.
int drive(const char* program, const char* folder,
          const std::function<void(const std::string&, const std::string&)>& run);

}  // namespace session

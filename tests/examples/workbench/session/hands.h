// Mouse and keyboard as the system sees them: what goes in here reaches whatever window is there.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

namespace session {

// The mouse. Places are on the screen.
void moveTo(POINT place);
void click(POINT place);
void doubleClick(POINT place);
/// Goes to one place, presses the button, goes to the other in small steps, lets go.
void drag(POINT from, POINT to);

/// Presses and releases a key while others (VK_CONTROL...) are held.
void press(WORD key, std::initializer_list<WORD> held = {});
/// Types a text in UTF-8, whether the keyboard has its characters or not.
void type(const std::string& text);

}  // namespace session

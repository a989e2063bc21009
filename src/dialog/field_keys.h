// Which keys a dialog keeps for itself while it is active.
#pragma once

#include <string_view>

namespace toolbox::dialog {

/// Modifier keys that are held with a key.
struct Modifiers {
    bool control = false;
    bool alternate = false;
    bool right = false;  ///< the right one of the alternate keys: with control, characters
};

/// Keys by which the user goes through any dialog, confirms or cancels it, or asks for help.
/// `key` is the system's number of the key (VK_TAB...).
[[nodiscard]] bool isDialogKey(unsigned key, Modifiers held);

/// Keys that edit a text: characters, those that move the caret, that delete, undo, and use the
/// clipboard.
[[nodiscard]] bool isFieldKey(unsigned key, Modifiers held);

/// The same of a character that a key gave.
[[nodiscard]] bool isFieldCharacter(unsigned character);

/// A control of this window class has a text to edit.
[[nodiscard]] bool isFieldClass(std::string_view windowClass);

}  // namespace toolbox::dialog

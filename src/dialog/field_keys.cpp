// Keys by their numbers, which are the system's: a letter's or a digit's is its character.
#include "dialog/field_keys.h"

#include <algorithm>
#include <string>

namespace toolbox::dialog {
namespace {

enum Key : unsigned {
    kBack = 0x08,
    kTab = 0x09,
    kReturn = 0x0D,
    kEscape = 0x1B,
    kSpace = 0x20,
    kFirstMove = 0x21,  // page up, page down, end, home, left, up, right, down
    kUp = 0x26,
    kDown = 0x28,
    kInsert = 0x2D,
    kDelete = 0x2E,
    kFirstPad = 0x60,
    kLastPad = 0x6F,
    kF1 = 0x70,
    kF4 = 0x73,
    kFirstSign = 0xBA,  // those whose place depends on the keyboard
    kLastSign = 0xE2
};

constexpr std::string_view kEditLetters = "ACVXYZ";
constexpr std::string_view kRichClass = "richedit";

bool isAny(unsigned key, std::initializer_list<unsigned> keys) {
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

bool isMove(unsigned key) {
    return key >= kFirstMove && key <= kDown;
}

bool isCharacterKey(unsigned key) {
    return key == kSpace || (key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z') ||
           (key >= kFirstPad && key <= kLastPad) || (key >= kFirstSign && key <= kLastSign);
}

}  // namespace

bool isDialogKey(unsigned key, Modifiers held) {
    if (held.alternate) return key == kF4;  // closes the dialog
    if (held.control) return false;
    return isMove(key) || isAny(key, {kTab, kReturn, kEscape, kSpace, kF1});
}

bool isFieldKey(unsigned key, Modifiers held) {
    if (held.control && held.alternate) return held.right && isCharacterKey(key);
    if (held.alternate) return isAny(key, {kBack, kUp, kDown});  // undo; the list of a combo box
    if (isMove(key) || isAny(key, {kBack, kInsert, kDelete})) return true;
    if (held.control)
        return key < 0x80 && kEditLetters.find(static_cast<char>(key)) != std::string_view::npos;
    return isCharacterKey(key) || key == kF4;  // which opens the list of a combo box
}

bool isFieldCharacter(unsigned character) {
    constexpr unsigned kControlBit = 0x40;
    if (character >= kSpace) return true;
    return isAny(character, {kBack, kTab, kReturn, kEscape}) ||
           isFieldKey(character | kControlBit, {.control = true});
}

bool isFieldClass(std::string_view windowClass) {
    std::string name(windowClass);
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return name == "edit" || name == "combobox" || name == "comboboxex32" ||
           name == "sysdatetimepick32" || name == "msctls_hotkey32" || name == "sysipaddress32" ||
           name.starts_with(kRichClass);
}

}  // namespace toolbox::dialog

// The keyboard in dialogs.
#include "dialog/dialog_keys_win32.h"

#include "dialog/field_keys.h"

namespace toolbox::dialog {
namespace {

BOOL CALLBACK lookForField(HWND window, LPARAM found) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    if (!isFieldClass(name) || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<bool*>(found) = true;
    return FALSE;
}

bool isHeld(int key) {
    return GetKeyState(key) < 0;
}

/// A radio button that gets the focus is chosen by it: that must be the one that is chosen.
HWND chosenOf(HWND dialog, HWND control) {
    const HWND first = control;
    for (HWND each = control; each;) {
        if (SendMessageA(each, BM_GETCHECK, 0, 0) == BST_CHECKED) return each;
        each = GetNextDlgGroupItem(dialog, each, FALSE);
        if (each == first) break;
    }
    return control;
}

}  // namespace

bool hasField(HWND dialog) {
    bool found = false;
    EnumChildWindows(dialog, lookForField, reinterpret_cast<LPARAM>(&found));
    return found;
}

void giveFirstFocus(HWND dialog) {
    const HWND focus = GetFocus();
    if (focus && IsChild(dialog, focus)) return;
    HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    if (!first) return;
    if (SendMessageA(first, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON)
        first = chosenOf(dialog, first);
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
}

bool keeps(HWND dialog, const MSG& message) {
    const auto key = static_cast<unsigned>(message.wParam);
    const Modifiers held{isHeld(VK_CONTROL), isHeld(VK_MENU), isHeld(VK_RMENU)};
    switch (message.message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            return isDialogKey(key, held) || (isFieldKey(key, held) && hasField(dialog));
        case WM_CHAR:
            return isFieldCharacter(key) && hasField(dialog);
        default:
            return false;
    }
}

}  // namespace toolbox::dialog

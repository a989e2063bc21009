// The menu of the list of keys: its buttons once more, with their captions and states, so that it
// needs no texts of its own and follows an application's template.
#include <string>

#include "dialog/keys/key_list_state_win32.h"
#include "key_dialogs.h"

using toolbox::detail::Watch;

namespace {

struct Item {
    int button;  ///< 0: a line
    const char* key;
};
constexpr Item kItems[] = {{IDC_KEY_LIST_FORMAT, ""},       {IDC_KEY_LIST_DESCRIPTION, "\tF2"},
                           {IDC_KEY_LIST_RESET, ""},        {0, ""},
                           {IDC_KEY_LIST_CHOSEN, ""},       {IDC_KEY_LIST_UP, ""},
                           {IDC_KEY_LIST_DOWN, ""},         {0, ""},
                           {IDC_KEY_LIST_COPY, "\tCtrl+C"}, {IDC_KEY_LIST_INSERT, ""}};

/// Of the buttons that the dialog has.
HMENU menuOf(const TvDialog& dialog) {
    const HMENU menu = CreatePopupMenu();
    for (const auto& [button, key] : kItems) {
        const HWND control = button ? dialog.control(button) : nullptr;
        if (!control) {
            if (!button) AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const bool isChecked = SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
        const UINT state = (IsWindowEnabled(control) ? MF_ENABLED : MF_GRAYED) |
                           (isChecked ? MF_CHECKED : MF_UNCHECKED);
        // A caption may end in a blank, which keeps its last letter whole.
        std::string text = dialog.getText(button).str();
        text.resize(text.find_last_not_of(' ') + 1);
        AppendMenuA(menu, MF_STRING | state, static_cast<UINT_PTR>(button), (text + key).c_str());
    }
    SetMenuDefaultItem(menu, IDC_KEY_LIST_FORMAT, FALSE);  // that of a double-click
    return menu;
}

}  // namespace

void TvKeyListDialog::State::openMenu(POINT screen) {
    const Watch self(life);
    showButtons();
    const HWND window = self.gone() ? nullptr : dialog.getHWND();
    if (!window) return;
    if (screen.x == -1 && screen.y == -1) screen = list.belowFocus();
    const HMENU menu = menuOf(dialog);
    const BOOL chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x, screen.y, 0,
                                       window, nullptr);
    DestroyMenu(menu);
    if (chosen && IsWindow(window)) SendMessageA(window, WM_COMMAND, LOWORD(chosen), 0);
}

// The field of the filter: Enter and the arrow down go on to what it found.
#pragma once

#include "key_dialogs.h"
#include "toolbox/controls.h"

namespace toolbox::keys {

/// They are posted to the dialog as a command of the list.
class KeyFilterField final : public TvControl {
  public:
    ~KeyFilterField() override { detach(); }

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        const bool goesOn = wParam == VK_RETURN || wParam == VK_DOWN;
        if (message == WM_GETDLGCODE && goesOn && lParam) return DLGC_WANTMESSAGE | DLGC_HASSETSEL;
        if (message == WM_KEYDOWN && goesOn) {
            PostMessageA(GetParent(getHWND()), WM_COMMAND, IDC_KEY_LIST, 0);
            return 0;
        }
        if (message == WM_CHAR && wParam == VK_RETURN) return 0;  // the system would beep
        return pass(message, wParam, lParam);
    }
};

}  // namespace toolbox::keys

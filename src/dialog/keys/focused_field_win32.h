// The edit field that had the focus before a dialog had it.
#pragma once

#include <windows.h>

#include "toolbox/strings.h"

namespace toolbox::keys {

class FocusedField {
  public:
    /// The dialog becomes the active window, or is made: what has the focus still is the field. One
    /// that is no field ends what was before; without a focus, or with one in the dialog, that
    /// stays.
    void look(HWND dialog);
    /// It is there and takes text.
    [[nodiscard]] bool isThere() const;
    /// Replaces what is selected in it; false when it is not there.
    bool insert(const CString& text) const;

  private:
    HWND field_ = nullptr;
};

}  // namespace toolbox::keys

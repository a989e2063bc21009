// The windows that take no input while a modal dialog is shown.
#pragma once

#include <vector>

#include "toolbox/win_types.h"

namespace toolbox::dialog {

/// The windows of this thread that are visible and take input. What was disabled before stays so.
class OtherWindowsOff {
  public:
    OtherWindowsOff() = default;
    ~OtherWindowsOff() { switchOn(); }
    OtherWindowsOff(const OtherWindowsOff&) = delete;
    OtherWindowsOff& operator=(const OtherWindowsOff&) = delete;

    /// Disables them.
    void switchOff();
    /// Enables those that it disabled. It comes before the dialog hides: the system gives the
    /// activation to a window that takes it, be it another program's.
    void switchOn();

  private:
    std::vector<HWND> windows_;
};

}  // namespace toolbox::dialog

// Everything else of the program waits while a dialog that is not a TvDialog is shown.
#pragma once

#include <string>

#include "dialog/other_windows_win32.h"
#include "toolbox/windowing.h"

namespace toolbox::dialog {

/// While it lives the windows of the thread take no input, the frame's modeless dialogs and its
/// accelerators are off, where there is a frame; at its end the current folder is as before. The
/// owner is left to the dialog, which switches it on at the right moment. Owner and frame may end
/// first.
class [[nodiscard]] DialogPhase {
  public:
    explicit DialogPhase(HWND owner);
    ~DialogPhase();
    DialogPhase(const DialogPhase&) = delete;
    DialogPhase& operator=(const DialogPhase&) = delete;

  private:
    MDI* frame_;
    bool wasFrozen_ = false;
    std::wstring folder_;
    OtherWindowsOff others_;
};

}  // namespace toolbox::dialog

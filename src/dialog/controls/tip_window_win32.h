// The small window that shows a tip where it is told to.
#pragma once

#include "toolbox/strings.h"
#include "toolbox/win_types.h"

namespace toolbox::controls {

/// Created when it is first needed, with the windows of an owner, and gone with that or this.
class TipWindow {
  public:
    TipWindow() = default;
    ~TipWindow();
    TipWindow(const TipWindow&) = delete;
    TipWindow& operator=(const TipWindow&) = delete;

    /// Shows a text below a part of the screen, above it where there is no room, never off the
    /// screen. 0 when there is no window for it.
    int show(HWND owner, const CString& text, const RECT& beside);
    void hide();
    [[nodiscard]] bool isShown() const { return isShown_ && window(); }
    /// Null before the first text, and after its end.
    [[nodiscard]] HWND window() const { return IsWindow(window_) ? window_ : nullptr; }

  private:
    int create(HWND owner);

    HWND window_ = nullptr;
    bool isShown_ = false;
};

}  // namespace toolbox::controls

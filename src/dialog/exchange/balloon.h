// The balloon beside a field that says what is wrong with it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

#include "toolbox/strings.h"

namespace toolbox::dialog {

/// At most one window at a time. It goes when the user changes the field or leaves it, when the
/// field, its dialog or a window around them moves, is hidden or ends, and with this object.
class Balloon {
  public:
    Balloon() = default;
    ~Balloon() { hide(); }
    Balloon(const Balloon&) = delete;
    Balloon& operator=(const Balloon&) = delete;

    /// Points to the control, which has the focus or has a child that has it.
    void show(HWND control, const CString& text);
    void hide();
    /// Null while none is shown.
    [[nodiscard]] HWND window() const { return tip_; }

  private:
    static LRESULT CALLBACK watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                  DWORD_PTR balloon);
    void follow(HWND control);

    HWND tip_ = nullptr;
    std::vector<HWND> watched_;  // the field, what is in it, and then the windows around it
    std::size_t fields_ = 0;     // how many of them are the field
};

}  // namespace toolbox::dialog

// An object attached to a window that exists (Windows only): what the controls (controls.h) and
// bars (bars.h) have in common.
//
// An attached object takes nothing over: it adds to what the window does, what the application had
// subclassed before or subclasses later goes on working, and the parent gets all notifications.
// Object and window may end in any order: an object whose window is gone has none, a window whose
// object is gone behaves as without it.
//
// Handlers and texts asked for may do anything, also destroy the window and delete the object.
// Everything belongs to the thread of the window. Int results are 1 for done or yes and 0 for
// refused or no; without a window every operation on it is refused.
#pragma once

#include "toolbox/detail/watch.h"
#include "toolbox/export.h"
#include "toolbox/win_types.h"

#if !defined(_WIN32)
#error "toolbox/attached_control.h needs windows: it exists on Windows only"
#endif

/// What all attached objects have in common. A class derived from one of them may handle messages
/// of its own before or after those of the base.
class TB_API TvControl {
  public:
    TvControl() = default;
    TvControl(const TvControl&) = delete;
    TvControl& operator=(const TvControl&) = delete;
    virtual ~TvControl();

    /// Attaches to a control, leaving the one before. 0, and no window, for null, for a window of
    /// another thread and for one of a class that the object is not for.
    int attach(HWND control);
    /// The same with a dialog's control.
    int attach(HWND dialog, int id);
    /// Leaves the control as it would be without the object.
    void detach();
    /// Null when there is none, or it was destroyed.
    [[nodiscard]] HWND getHWND() const { return window_; }

  protected:
    /// Every message of the window. The default passes it on.
    virtual LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// What the window does with a message without the object. The object may be gone after it.
    LRESULT pass(UINT message, WPARAM wParam, LPARAM lParam);
    /// Whether the object is for windows of this class, such as "Edit"; the default takes any.
    [[nodiscard]] virtual int accepts(const char* className) const;
    /// The window is there from now on.
    virtual void attached() {}
    /// The object leaves its window, or that is being destroyed. Classes that replace it detach in
    /// their destructor.
    virtual void detaching() {}

    /// For operations that call back.
    toolbox::detail::Watched<> life_;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR object);
    void leave();

    HWND window_ = nullptr;
};

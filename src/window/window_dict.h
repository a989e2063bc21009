// Binding windows to their objects.
#pragma once

#include <windows.h>

class WindowObject;

namespace toolbox::window {

[[nodiscard]] bool hasDictionary();
/// Enters a window that is not in the dictionary; there is one.
void bind(HWND window, WindowObject& object);
/// Takes a window out and returns its object; null when it has none.
WindowObject* unbind(HWND window);

/// While it lives, the object is the one being created: the next window without object takes it.
class Pending {
  public:
    explicit Pending(WindowObject& object);
    ~Pending();
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;

    /// The object being created, at most once; null without dictionary.
    [[nodiscard]] static WindowObject* take();
    /// An object that is deleted before it got its window gets none.
    static void forget(const WindowObject& object);

  private:
    WindowObject* object_;  // null: taken, or deleted
    Pending* outer_;
};

}  // namespace toolbox::window

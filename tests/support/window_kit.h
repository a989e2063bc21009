// Real windows in tests (Windows only): pumping messages, keyboard input, and scripts that drive a
// modal dialog from inside while the test waits in it. Tests declared with DISPLAY link it.
//
//     DialogScript script;
//     script.run([](HWND dialog) { setText(dialog, IDC_WIDTH, "12"); })
//         .run([](HWND) { pressKey(VK_RETURN); });
//     EXPECT_EQ(openTheDialog(), 1);   // fails when a step did not run, or took seconds
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace toolbox::testing {

[[nodiscard]] std::string textOf(HWND window);
[[nodiscard]] bool isOfClass(HWND window, const char* name);
/// Text of a dialog's control.
[[nodiscard]] std::string textOf(HWND dialog, int control);
void setText(HWND dialog, int control, const char* text);
/// Identifier of the child that has the keyboard focus; 0 when none of the thread has it.
[[nodiscard]] int focusedControl();

/// Handles the messages that wait now.
void pumpMessages();
/// Handles messages until the condition holds; false after some seconds.
bool pumpUntil(const std::function<bool()>& condition);

/// Presses and releases a key as the keyboard would, with the modifier keys (VK_MENU...) held.
/// It goes to the window with the focus, some time later.
void pressKey(WORD key, const std::vector<WORD>& modifiers = {});
/// Types a text of characters that have a key.
void typeText(const std::string& text);

// Real input of the mouse, and what comes of it is handled before they return.

/// Moves the mouse to a point of a window's client area.
void moveMouse(HWND window, POINT point);
void mouseButton(DWORD event);  ///< MOUSEEVENTF_LEFTDOWN...

/// Moves the mouse to the middle of a window and clicks the left button there.
void clickOn(HWND window);

/// Visible and enabled dialogs and message boxes of this thread, topmost first.
[[nodiscard]] std::vector<HWND> openDialogs();

/// The text of the tip that can be seen; empty when there is none.
[[nodiscard]] std::string shownTip();

/// How far the system's tables of windows and of drawing objects are used. Handles that are left
/// behind push both up, each by one or more; GetGuiResources() counts nothing under Wine.
struct HandleMarks {
    int windows = 0;
    int drawing = 0;
};
[[nodiscard]] HandleMarks handleMarks();

/// Does something a few times, then `times` more, and fails the test when that left handles behind.
void expectNoHandlesLeft(int times, const std::function<void()>& action);

/// Steps run one after the other, each at a tick of a timer, while this thread handles messages.
/// A step sees the topmost dialog that takes input, be it a message box, and waits for one.
class DialogScript {
  public:
    using Step = std::function<void(HWND dialog)>;
    using Condition = std::function<bool(HWND dialog)>;

    DialogScript();
    /// Fails the test when steps are left.
    ~DialogScript();
    DialogScript(const DialogScript&) = delete;
    DialogScript& operator=(const DialogScript&) = delete;

    DialogScript& run(Step step);
    /// Goes on when the condition holds. After some seconds the test fails, further steps are
    /// dropped and every dialog is cancelled, so that no test hangs.
    DialogScript& waitUntil(const char* what, Condition condition);

  private:
    struct Entry {
        const char* what;
        Condition done;
    };
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD);
    void advance();

    std::deque<Entry> steps_;
    ULONGLONG patience_ = 0;  // when the current step fails
    UINT_PTR timer_;
};

}  // namespace toolbox::testing

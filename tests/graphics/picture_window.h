// A window that shows a picture and gives all its messages to a mouse dragger.
#pragma once

#include <utility>

#include "support/picture.h"
#include "support/window_kit.h"
#include "toolbox/graphics.h"

using toolbox::testing::Picture;

/// One at a time.
class PictureWindow {
  public:
    PictureWindow() {
        theWindow = this;
        WNDCLASSA type{};
        type.style = CS_DBLCLKS;
        type.lpfnWndProc = procedure;
        type.lpszClassName = "PictureWindow";
        // Two colours, so that every figure crosses both many times.
        type.hbrBackground = CreateHatchBrush(HS_DIAGCROSS, RGB(200, 40, 90));
        RegisterClassA(&type);  // once; later calls fail
        window_ = CreateWindowExA(WS_EX_TOPMOST, "PictureWindow", "", WS_POPUP | WS_VISIBLE, 150,
                                  120, kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
        SetForegroundWindow(window_);
        moveTo(1, 1);
    }
    ~PictureWindow() {
        mouse_ = nullptr;
        DestroyWindow(window_);
        toolbox::testing::pumpMessages();
        theWindow = nullptr;
    }
    PictureWindow(const PictureWindow&) = delete;
    PictureWindow& operator=(const PictureWindow&) = delete;

    /// The dragger that gets the messages from now on; null for none.
    void use(MouseDragger* mouse) { mouse_ = mouse; }

    [[nodiscard]] HWND handle() const { return window_; }
    [[nodiscard]] Picture picture() const { return toolbox::testing::pictureOf(window_); }

    // Real input, and what comes of it is handled before they return.
    void moveTo(int x, int y) { toolbox::testing::moveMouse(window_, {x, y}); }
    void button(DWORD event) { toolbox::testing::mouseButton(event); }

    /// What the last message that was the gesture's, or a command, came to.
    MouseDragger::State state = MouseDragger::Idle;
    POINT start{-1, -1}, end{-1, -1};
    int moves = 0;  ///< mouse moves handled

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        TarvMess record(window, message, wParam, lParam, 0);
        if (theWindow) return theWindow->handle(record);
        return DefWindowProcA(window, message, wParam, lParam);
    }
    LRESULT handle(TarvMess& message) {
        if (message.message == WM_MOUSEMOVE) ++moves;
        if (mouse_) {
            const MouseDragger::State now = mouse_->drag(message, start, end);
            if (message.handled || message.message == WM_COMMAND) state = now;
            if (message.handled) return 0;
        }
        return DefWindowProcA(message.hwnd, message.message, message.wParam, message.lParam);
    }
    static constexpr int kWidth = 300, kHeight = 200;
    static inline PictureWindow* theWindow = nullptr;
    HWND window_;
    MouseDragger* mouse_ = nullptr;
};

/// Compares points by their coordinates.
inline std::pair<LONG, LONG> xy(const POINT& point) {
    return {point.x, point.y};
}

// A window that shows a picture and gives all its messages to a mouse dragger.
#pragma once

#include <utility>

#include "support/picture.h"
#include "toolbox/graphics.h"

using toolbox::testing::Picture;

class PictureWindow {
  public:
    PictureWindow();
    ~PictureWindow();
    PictureWindow(const PictureWindow&) = delete;
    PictureWindow& operator=(const PictureWindow&) = delete;

    /// The dragger that gets the messages from now on; null for none.
    void use(MouseDragger* mouse) { mouse_ = mouse; }

    [[nodiscard]] HWND handle() const { return window_; }
    [[nodiscard]] Picture picture() const { return toolbox::testing::pictureOf(window_); }

    // Real input, and what comes of it is handled before they return.
    void moveTo(int x, int y);
    void button(DWORD mouseEvent);  ///< MOUSEEVENTF_LEFTDOWN...

    /// What the last message that was the gesture's, or a command, came to.
    MouseDragger::State state = MouseDragger::Idle;
    POINT start{-1, -1};
    POINT end{-1, -1};
    int moves = 0;     ///< mouse moves handled
    UINT command = 0;  ///< of the last WM_COMMAND

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(TarvMess& message);
    void paint();

    HWND window_;
    MouseDragger* mouse_ = nullptr;
};

/// Compares points by their coordinates.
inline std::pair<LONG, LONG> xy(const POINT& point) {
    return {point.x, point.y};
}

// A window that shows a picture and gives all its messages to a mouse dragger.
#pragma once

#include <utility>
#include <vector>

#include "toolbox/graphics.h"

/// Colours of a client area, as 0x00RRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }
    bool operator==(const Picture&) const = default;
};

/// Points at which two pictures differ.
std::vector<POINT> differences(const Picture& a, const Picture& b);

class PictureWindow {
  public:
    PictureWindow();
    ~PictureWindow();
    PictureWindow(const PictureWindow&) = delete;
    PictureWindow& operator=(const PictureWindow&) = delete;

    /// The dragger that gets the messages from now on; null for none.
    void use(MouseDragger* mouse) { mouse_ = mouse; }

    [[nodiscard]] HWND handle() const { return window_; }
    [[nodiscard]] Picture picture() const;

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

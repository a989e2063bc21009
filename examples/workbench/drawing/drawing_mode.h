// What the mouse does in a drawing: each mode is a client of the window's dispatch server and makes
// gestures with a dragger of its kind.
#pragma once

#include <memory>
#include <vector>

#include "drawing/drawing_view.h"
#include "drawing/screen_scale.h"
#include "frame/workbench.h"
#include "toolbox/graphics.h"

/// The point in a message of the mouse.
[[nodiscard]] inline POINT mouseIn(LPARAM lParam) {
    return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}
/// The mouse in a message of the mouse, in the drawing's pixels.
[[nodiscard]] inline Pixel pixelOf(LPARAM lParam) {
    return ScreenScale().toDrawing(mouseIn(lParam));
}

class DrawingMode : public DispatchClient {
  public:
    /// Both are borrowed; `command` is that of the mode.
    DrawingMode(DrawingView& view, DispatchServer& server, int command);

    LRESULT handleMessage(TarvMess& message) override;
    [[nodiscard]] bool isDragging() const { return gesture_ != nullptr; }
    // Takes the figure under way off the window, and draws it again: for while that is painted.
    void hideFigure(HDC dc) const;
    void showFigure(HDC dc) const;

  protected:
    /// The figure of a gesture that starts at a pixel; null when none does.
    virtual std::unique_ptr<Dragger> begin(Pixel at) = 0;
    /// The mouse was moved; pixels are those of the figure.
    virtual void dragged(Pixel start, Pixel end) = 0;
    virtual void finished(Pixel start, Pixel end) = 0;

    [[nodiscard]] DrawingView& view() const { return view_; }
    [[nodiscard]] bool isActive() const { return view_.isMode(command_); }

    void hint(const CString& text) const { workbench().showHint(text); }
    // What shows a box returns after the view, and the mode with it, may have gone.
    template <class... Args>
    void refuse(unsigned short textId, const Args&... args) const {
        workbench().report(textId, MB_ICONEXCLAMATION, args...);
    }
    /// 0 when the project refuses it: the user was told in a box.
    std::uint32_t put(Beam beam, unsigned short step = 0) const;

  private:
    struct Gesture {
        explicit Gesture(std::unique_ptr<Dragger> with) : figure(std::move(with)), mouse(*figure) {}
        std::unique_ptr<Dragger> figure;
        MouseDragger mouse;
        POINT mouseAt{};      // in the last message
        bool isBusy = false;  // in its own reaction to a message
    };

    [[nodiscard]] Workbench& workbench() const { return view_.shown().workbench(); }

    void start(TarvMess& message);
    void drive(TarvMess& message);
    void abandon(HWND window);

    DrawingView& view_;
    int command_;
    std::unique_ptr<Gesture> gesture_;
};

/// All modes, registered with a server.
[[nodiscard]] std::vector<std::unique_ptr<DrawingMode>> drawingModes(DrawingView& view,
                                                                     DispatchServer& server);
/// The mode that selects, moves and opens.
[[nodiscard]] std::unique_ptr<DrawingMode> selectMode(DrawingView& view, DispatchServer& server);
/// Wheel, middle button and arrow keys.
[[nodiscard]] std::unique_ptr<DispatchClient> scrolling(DrawingView& view, DispatchServer& server);

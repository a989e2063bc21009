#include "graphics/mouse_gesture.h"
#include "toolbox/graphics.h"

using namespace toolbox::graphics;

namespace {

class WindowDC {
  public:
    explicit WindowDC(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~WindowDC() {
        if (dc_) ReleaseDC(window_, dc_);
    }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    operator HDC() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

POINT mousePoint(const TarvMess& message) {
    const Pixel point = pointOf(message.lParam);
    return {point.x, point.y};
}

}  // namespace

MouseDragger::MouseDragger(Dragger& dragger) : dragger_(dragger) {
    (void)describeButton(LeftButton, false, button_);
}

MouseDragger::~MouseDragger() = default;

int MouseDragger::setParametricButton(Button button, AnchorEvent event, ParametricButton& out) {
    return describeButton(button, event == OnDoubleClick, out) ? 1 : 0;
}

void MouseDragger::setAnchorEvent(AnchorEvent event, Button button, DragMode mode) {
    setParametricButton(button, event, button_);
    const unsigned int bits = mode;
    dragger_.setCursorPosMode((bits & CursorPosMode) != 0);
    mode_ = static_cast<DragMode>(bits & ~static_cast<unsigned int>(CursorPosMode));
}

void MouseDragger::getAnchorEvent(AnchorEvent& event, Button& button, DragMode& mode) const {
    button = static_cast<Button>(button_.button);
    event = button_.anchorMessage == button_.doubleClick ? OnDoubleClick : OnDown;
    mode = dragger_.getCursorPosMode() ? mode_ | CursorPosMode : mode_;
}

MouseDragger::State MouseDragger::drag(TarvMess& message, POINT& start, POINT& end) {
    if (state_ == Finished || state_ == Cancelled) state_ = Idle;
    switch (gestureStep(button_, state_ == Dragging, message.message, message.wParam)) {
        case GestureStep::cancel:
            cancel(message);
            break;
        case GestureStep::move:
            move(message, start, end);
            break;
        case GestureStep::anchor:
            begin(message, start, end);
            break;
        case GestureStep::finish:
            finish(message, start, end);
            break;
        case GestureStep::none:
            break;
    }
    return state_;
}

void MouseDragger::begin(TarvMess& message, POINT& start, POINT& end) {
    dragger_.setMode(isOrthogonal(mode_, message.wParam));
    window_ = message.hwnd;
    SetCapture(window_);
    dragger_.anchor(mousePoint(message), WindowDC(window_));
    dragger_.getPoints(start, end);
    state_ = Dragging;
    message.handled = 1;
}

void MouseDragger::move(TarvMess& message, POINT& start, POINT& end) {
    dragger_.drag(WindowDC(message.hwnd), mousePoint(message));
    dragger_.getPoints(start, end);
    message.handled = 1;
}

void MouseDragger::letGo() {
    ReleaseCapture();
    dragger_.erase(WindowDC(window_));
}

void MouseDragger::finish(TarvMess& message, POINT& start, POINT& end) {
    letGo();
    dragger_.getPoints(start, end);
    window_ = nullptr;
    state_ = Finished;
    message.handled = 1;
}

void MouseDragger::cancel(TarvMess& message) {
    if (state_ == Dragging) {
        letGo();
        // Others may have something to cancel too.
        if (message.message != WM_COMMAND) message.handled = 1;
    }
    window_ = nullptr;
    state_ = Cancelled;
}

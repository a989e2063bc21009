// A gesture with the mouse. Taking and releasing the capture sends messages whose handlers come
// back here or delete this object, so the state changes before, and is looked at again after.
#include <utility>

#include "graphics/mouse_gesture.h"
#include "toolbox/graphics.h"

using namespace toolbox::graphics;
using toolbox::detail::Watch;

namespace {

class WindowDC {
  public:
    /// None for a null window: that would be the screen's.
    explicit WindowDC(HWND window) : window_(window), dc_(window ? GetDC(window) : nullptr) {}
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
    const Watch self(life_);
    switch (gestureStep(button_, state_ == Dragging, message.message, message.wParam)) {
        case GestureStep::cancel:
            cancel(message);
            break;
        case GestureStep::lose:
            lose(message);
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
    return self.gone() ? Cancelled : state_;
}

void MouseDragger::begin(TarvMess& message, POINT& start, POINT& end) {
    const Watch self(life_);
    dragger_.setMode(isOrthogonal(mode_, message.wParam));
    message.handled = 1;
    state_ = Idle;  // a gesture that starts again does not lose the capture to itself
    const HWND window = message.hwnd;
    SetCapture(window);
    if (self.gone()) return;
    window_ = window;
    hasCapture_ = window && GetCapture() == window;
    dragger_.anchor(mousePoint(message), WindowDC(window));
    if (self.gone()) return;
    dragger_.getPoints(start, end);
    state_ = Dragging;
}

void MouseDragger::move(TarvMess& message, POINT& start, POINT& end) {
    // Its window may have kept to itself that the capture was taken.
    if (hasCapture_ && GetCapture() != window_) return letGo(Cancelled);
    const Watch self(life_);
    message.handled = 1;
    dragger_.drag(WindowDC(message.hwnd), mousePoint(message));
    if (!self.gone()) dragger_.getPoints(start, end);
}

void MouseDragger::finish(TarvMess& message, POINT& start, POINT& end) {
    const Watch self(life_);
    message.handled = 1;
    letGo(Finished);
    if (!self.gone()) dragger_.getPoints(start, end);
}

void MouseDragger::cancel(TarvMess& message) {
    if (state_ != Dragging) {
        state_ = Cancelled;
        return;
    }
    // Others may have something to cancel too.
    if (message.message != WM_COMMAND) message.handled = 1;
    letGo(Cancelled);
}

void MouseDragger::lose(const TarvMess& message) {
    const bool takesItself =
        message.message == WM_CAPTURECHANGED && reinterpret_cast<HWND>(message.lParam) == window_;
    // The system has its own part of it to do, so the message stays unhandled.
    if (message.hwnd == window_ && !takesItself) letGo(Cancelled);
}

void MouseDragger::letGo(State state) {
    const Watch self(life_);
    const HWND window = std::exchange(window_, nullptr);
    state_ = Idle;  // not Dragging, for the capture's last message
    if (window && GetCapture() == window) ReleaseCapture();
    if (self.gone()) return;
    dragger_.erase(WindowDC(window));
    if (!self.gone()) state_ = state;
}

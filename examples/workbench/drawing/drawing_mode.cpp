// A gesture begins with a press in the active mode and ends with the capture of the mouse.
#include "drawing/drawing_mode.h"

#include "resources/resource.h"
#include "resources/workbench_texts.h"

DrawingMode::DrawingMode(DrawingView& view, DispatchServer& server, int command)
    : DispatchClient(&server), view_(view), command_(command) {}

LRESULT DrawingMode::handleMessage(TarvMess& message) {
    if (gesture_) {
        // Letting the capture go is part of a gesture's end; when it is taken there is no other.
        if (message.message != WM_CAPTURECHANGED)
            drive(message);
        else if (!gesture_->isBusy)
            abandon(message.hwnd);
        return 0;
    }
    const bool isPress = message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONDBLCLK;
    if (isPress && isActive()) start(message);
    return 0;
}

void DrawingMode::start(TarvMess& message) {
    message.handled = 1;
    const Pixel at = pixelOf(message.lParam);
    if (!view_.part().contains(at)) return;  // on a ruler
    std::unique_ptr<Dragger> figure = begin(at);
    if (!figure) return;
    gesture_ = std::make_unique<Gesture>(std::move(figure));
    gesture_->mouse.setAnchorEvent(MouseDragger::OnDown, MouseDragger::LeftButton,
                                   MouseDragger::NoMode);
    // The second press of a double-click is an ordinary press.
    TarvMess press(message.hwnd, WM_LBUTTONDOWN, message.wParam, message.lParam, 0);
    drive(press);
}

void DrawingMode::drive(TarvMess& message) {
    POINT start{}, end{};
    if (message.message >= WM_MOUSEFIRST && message.message <= WM_RBUTTONDBLCLK)
        gesture_->mouseAt = mouseIn(message.lParam);
    gesture_->isBusy = true;
    const MouseDragger::State state = gesture_->mouse.drag(message, start, end);
    gesture_->isBusy = false;
    const ScreenScale screen;
    const Pixel from = screen.toDrawing(start), to = screen.toDrawing(end);
    if (state == MouseDragger::Dragging) {
        if (message.handled) dragged(from, to);
        return;
    }
    gesture_.reset();
    if (state == MouseDragger::Finished) finished(from, to);
    if (state == MouseDragger::Cancelled)
        hint(text(static_cast<unsigned short>(kFirstModeHint + command_ - CMD_SELECT_MODE)));
}

void DrawingMode::abandon(HWND window) {
    TarvMess cancel(window, WM_COMMAND, IDCANCEL, 0, 0);
    drive(cancel);
}

void DrawingMode::hideFigure(HDC dc) const {
    if (gesture_) gesture_->figure->erase(dc);
}

void DrawingMode::showFigure(HDC dc) const {
    if (gesture_) gesture_->figure->drag(dc, gesture_->mouseAt);
}

std::uint32_t DrawingMode::put(Beam beam, unsigned short step) const {
    const std::uint32_t id = view_.shown().put(std::move(beam), step);
    if (id == 0) refuse(kBeamRefused);
    return id;
}

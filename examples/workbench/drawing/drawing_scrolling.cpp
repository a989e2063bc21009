// Looking around in a drawing: the wheel zooms, the middle button and the arrow keys scroll.
#include <cmath>
#include <optional>

#include "drawing/drawing_mode.h"

namespace {

constexpr double kZoomStep = 1.25;
constexpr int kScrollStep = 40;

class Scrolling : public DispatchClient {
  public:
    Scrolling(DrawingView& view, DispatchServer& server) : DispatchClient(&server), view_(view) {}

    LRESULT handleMessage(TarvMess& message) override {
        // The picture stands still under a gesture.
        if (GetCapture() == message.hwnd && !grip_) return 0;
        switch (message.message) {
            case WM_MOUSEWHEEL:
                message.handled = wheel(message);
                break;
            case WM_KEYDOWN:
                message.handled = key(message.wParam);
                break;
            case WM_MBUTTONDOWN:
            case WM_MBUTTONDBLCLK:
                SetCapture(message.hwnd);
                grip_ = pixelOf(message.lParam);
                message.handled = 1;
                break;
            case WM_MOUSEMOVE:
                message.handled = pull(pixelOf(message.lParam));
                break;
            case WM_MBUTTONUP:
                if (!grip_) break;
                ReleaseCapture();
                message.handled = 1;
                break;
            case WM_CAPTURECHANGED:
                grip_.reset();
                break;
            default:
                break;
        }
        return 0;
    }

  private:
    int wheel(const TarvMess& message) {
        POINT at = mouseIn(message.lParam);
        ScreenToClient(message.hwnd, &at);
        const int turned = GET_WHEEL_DELTA_WPARAM(message.wParam);
        view_.zoom(std::pow(kZoomStep, static_cast<double>(turned) / WHEEL_DELTA),
                   ScreenScale().toDrawing(at));
        return 1;
    }

    int pull(Pixel to) {
        if (!grip_) return 0;
        view_.pan(to.x - grip_->x, to.y - grip_->y);
        grip_ = to;
        return 1;
    }

    int key(WPARAM key) {
        const PixelRect part = view_.part();
        const Pixel middle{part.left + part.width() / 2, part.top + part.height() / 2};
        switch (key) {
            case VK_LEFT:
                return view_.pan(kScrollStep, 0), 1;
            case VK_RIGHT:
                return view_.pan(-kScrollStep, 0), 1;
            case VK_UP:
                return view_.pan(0, kScrollStep), 1;
            case VK_DOWN:
                return view_.pan(0, -kScrollStep), 1;
            case VK_PRIOR:
                return view_.pan(0, part.height() * 3 / 4), 1;
            case VK_NEXT:
                return view_.pan(0, -part.height() * 3 / 4), 1;
            case VK_HOME:
                return view_.zoomAll(), 1;
            case VK_ADD:
            case VK_OEM_PLUS:
                return view_.zoom(kZoomStep, middle), 1;
            case VK_SUBTRACT:
            case VK_OEM_MINUS:
                return view_.zoom(1 / kZoomStep, middle), 1;
            default:
                return 0;
        }
    }

    DrawingView& view_;
    std::optional<Pixel> grip_;  // where the picture is held
};

}  // namespace

std::unique_ptr<DispatchClient> scrolling(DrawingView& view, DispatchServer& server) {
    return std::make_unique<Scrolling>(view, server);
}

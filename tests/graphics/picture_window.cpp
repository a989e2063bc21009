#include "picture_window.h"

#include <gtest/gtest.h>

#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;
constexpr int kLeft = 150;
constexpr int kTop = 120;

PictureWindow* theWindow = nullptr;

}  // namespace

PictureWindow::PictureWindow() {
    theWindow = this;
    WNDCLASSA type{};
    type.style = CS_DBLCLKS;
    type.lpfnWndProc = procedure;
    type.hInstance = GetModuleHandleA(nullptr);
    type.lpszClassName = "PictureWindow";
    RegisterClassA(&type);  // once; later calls fail
    window_ =
        CreateWindowExA(WS_EX_TOPMOST, "PictureWindow", "picture", WS_POPUP | WS_VISIBLE, kLeft,
                        kTop, kWidth, kHeight, nullptr, nullptr, type.hInstance, nullptr);
    SetForegroundWindow(window_);
    moveTo(1, 1);
}

PictureWindow::~PictureWindow() {
    // Nothing may stay pressed for the tests that follow.
    mouse_ = nullptr;
    DestroyWindow(window_);
    pumpMessages();
    theWindow = nullptr;
}

LRESULT CALLBACK PictureWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    TarvMess record(window, message, wParam, lParam, 0);
    if (theWindow) return theWindow->handle(record);
    return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT PictureWindow::handle(TarvMess& message) {
    if (message.message == WM_MOUSEMOVE) ++moves;
    if (message.message == WM_COMMAND) command = LOWORD(message.wParam);
    if (message.message == WM_PAINT) paint();
    if (mouse_) {
        const MouseDragger::State now = mouse_->drag(message, start, end);
        if (message.handled || message.message == WM_COMMAND) state = now;
        if (message.handled) return 0;
    }
    return DefWindowProcA(message.hwnd, message.message, message.wParam, message.lParam);
}

/// Bands of colours, so that every figure crosses several.
void PictureWindow::paint() {
    constexpr COLORREF kColours[] = {RGB(255, 255, 255), RGB(0, 0, 0), RGB(200, 40, 90),
                                     RGB(0, 0, 255), RGB(17, 130, 60)};
    PAINTSTRUCT state_;
    const HDC dc = BeginPaint(window_, &state_);
    constexpr int kBand = 23;
    for (int i = 0; i * kBand < kWidth; ++i) {
        const RECT band{i * kBand, 0, (i + 1) * kBand, kHeight};
        const HBRUSH brush = CreateSolidBrush(kColours[i % std::ssize(kColours)]);
        FillRect(dc, &band, brush);
        DeleteObject(brush);
    }
    EndPaint(window_, &state_);
}

void PictureWindow::moveTo(int x, int y) {
    moveMouse(window_, {x, y});
}

void PictureWindow::button(DWORD mouseEvent) {
    mouseButton(mouseEvent);
}

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

void send(const INPUT& event) {
    INPUT copy = event;
    EXPECT_EQ(SendInput(1, &copy, sizeof copy), 1u);
}

}  // namespace

std::vector<POINT> differences(const Picture& a, const Picture& b) {
    std::vector<POINT> points;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x)
            if (a.at(x, y) != b.at(x, y)) points.push_back({x, y});
    return points;
}

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

Picture PictureWindow::picture() const {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC from = GetDC(window_);
    const HDC to = CreateCompatibleDC(from);
    const HBITMAP bitmap = CreateDIBSection(from, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(to, bitmap);
    EXPECT_TRUE(BitBlt(to, 0, 0, kWidth, kHeight, from, 0, 0, SRCCOPY));
    GdiFlush();
    Picture result{kWidth, kHeight, {}};
    const auto* colours = static_cast<const std::uint32_t*>(bits);
    for (int i = 0; i < kWidth * kHeight; ++i) result.pixels.push_back(colours[i] & 0xFFFFFF);
    SelectObject(to, before);
    DeleteObject(bitmap);
    DeleteDC(to);
    ReleaseDC(window_, from);
    return result;
}

void PictureWindow::moveTo(int x, int y) {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    // In parts of 65536 of the screen, rounded up so that rounding down gives the pixel.
    event.mi.dx = ((x + kLeft) * 65536 + width - 1) / width;
    event.mi.dy = ((y + kTop) * 65536 + height - 1) / height;
    send(event);
    pumpMessages();
}

void PictureWindow::button(DWORD mouseEvent) {
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dwFlags = mouseEvent;
    send(event);
    pumpMessages();
}

// The client area is copied into a bitmap whose pixels are memory.
#include "support/picture.h"

#include <gtest/gtest.h>

namespace toolbox::testing {

Picture pictureOf(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    const int width = area.right;
    const int height = area.bottom;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC from = GetDC(window);
    const HDC to = CreateCompatibleDC(from);
    const HBITMAP bitmap = CreateDIBSection(from, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(to, bitmap);
    EXPECT_TRUE(BitBlt(to, 0, 0, width, height, from, 0, 0, SRCCOPY));
    GdiFlush();
    Picture result{width, height, {}};
    const auto* colours = static_cast<const std::uint32_t*>(bits);
    for (int i = 0; i < width * height; ++i) result.pixels.push_back(colours[i] & 0xFFFFFF);
    SelectObject(to, before);
    DeleteObject(bitmap);
    DeleteDC(to);
    ReleaseDC(window, from);
    return result;
}

std::vector<POINT> differences(const Picture& a, const Picture& b) {
    std::vector<POINT> points;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x)
            if (a.at(x, y) != b.at(x, y)) points.push_back({x, y});
    return points;
}

}  // namespace toolbox::testing

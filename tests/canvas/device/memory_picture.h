// A bitmap in memory to draw on, white at first (Windows only).
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

/// Rows of 0x00RRGGBB, from the top.
class MemoryPicture {
  public:
    MemoryPicture(int width, int height) : width_(width), height_(height) {
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(nullptr, &info_, DIB_RGB_COLORS, &bits, nullptr, 0);
        before_ = SelectObject(dc_, bitmap_);
        pixels_ = static_cast<const std::uint32_t*>(bits);
        PatBlt(dc_, 0, 0, width, height, WHITENESS);
    }
    ~MemoryPicture() {
        SelectObject(dc_, before_);
        DeleteObject(bitmap_);
        DeleteDC(dc_);
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] const BITMAPINFOHEADER& header() const { return info_.bmiHeader; }
    [[nodiscard]] std::span<const std::uint32_t> pixels() const {
        GdiFlush();
        return {pixels_, static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)};
    }
    [[nodiscard]] std::uint32_t at(int x, int y) const {
        return pixels()[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                        static_cast<std::size_t>(x)] &
               0xFFFFFF;
    }
    /// The smallest rectangle around what is dark; all zeros when nothing is.
    [[nodiscard]] RECT ink() const {
        constexpr std::uint32_t kDark = 0x80;
        RECT box{width_, height_, 0, 0};
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                if ((at(x, y) & 0xFF) < kDark)
                    box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y),
                           std::max<LONG>(box.right, x + 1), std::max<LONG>(box.bottom, y + 1)};
        return box.right == 0 ? RECT{} : box;
    }

  private:
    int width_;
    int height_;
    BITMAPINFO info_{{sizeof(BITMAPINFOHEADER), width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0},
                     {}};
    HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
    const std::uint32_t* pixels_ = nullptr;
};

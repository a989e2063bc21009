// Pictures of what a window shows, to compare (Windows only).
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace toolbox::testing {

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

/// What a window's client area shows now.
[[nodiscard]] Picture pictureOf(HWND window);

/// Points at which two pictures of the same size differ.
[[nodiscard]] std::vector<POINT> differences(const Picture& a, const Picture& b);

}  // namespace toolbox::testing

#include "screen.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <type_traits>
#include <vector>

#include "other_windows.h"

namespace session {
namespace {

template <auto Close>
struct Closer {
    template <class Handle>
    void operator()(Handle handle) const {
        Close(handle);
    }
};
using MemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, Closer<DeleteDC>>;
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, Closer<DeleteObject>>;

class ScreenDc {
  public:
    ScreenDc() : dc_(GetDC(nullptr)) {}
    ~ScreenDc() { ReleaseDC(nullptr, dc_); }
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    operator HDC() const { return dc_; }

  private:
    HDC dc_;
};

BITMAPINFOHEADER headerFor(LONG width, LONG height) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 24;
    header.biSizeImage = static_cast<DWORD>((width * 3 + 3) / 4 * 4 * height);
    return header;
}

/// Other programs hold the clipboard for moments.
class OpenedClipboard {
  public:
    OpenedClipboard() {
        waitFor("the clipboard", [] { return OpenClipboard(nullptr) != FALSE; });
    }
    ~OpenedClipboard() { CloseClipboard(); }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
};

}  // namespace

void savePicture(const RECT& area, const std::string& file) {
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    const ScreenDc screen;
    const MemoryDc memory(CreateCompatibleDC(screen));
    const Bitmap bitmap(CreateCompatibleBitmap(screen, width, height));
    const HGDIOBJ before = SelectObject(memory.get(), bitmap.get());
    const BOOL copied =
        BitBlt(memory.get(), 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory.get(), before);

    BITMAPINFO info{};
    info.bmiHeader = headerFor(width, height);
    std::vector<char> pixels(info.bmiHeader.biSizeImage);
    if (!copied || !GetDIBits(memory.get(), bitmap.get(), 0, static_cast<UINT>(height),
                              pixels.data(), &info, DIB_RGB_COLORS))
        throw Failure("the screen cannot be read");

    BITMAPFILEHEADER start{};
    start.bfType = 0x4D42;
    start.bfOffBits = sizeof start + sizeof info.bmiHeader;
    start.bfSize = start.bfOffBits + info.bmiHeader.biSizeImage;
    std::ofstream out(std::filesystem::path(wide(file)), std::ios::binary);
    out.write(reinterpret_cast<const char*>(&start), sizeof start);
    out.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
    out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
    if (!out.flush()) throw Failure("cannot be written: " + file);
}

RECT wholeScreen() {
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

void emptyClipboard() {
    const OpenedClipboard opened;
    EmptyClipboard();
}

bool hasClipboardText() {
    return IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
}

std::string clipboardText() {
    const OpenedClipboard opened;
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    const auto* text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
    if (!text) throw Failure("the clipboard does not give its text");
    std::string out = utf8(text);
    GlobalUnlock(data);
    return out;
}

}  // namespace session

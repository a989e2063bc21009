// Pictures are written as bitmap files of 24 bits per pixel, the lowest row first.
#include "screen.h"

#include <filesystem>
#include <fstream>
#include <vector>

#include "other_windows.h"

namespace session {
namespace {

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

template <class Record>
void write(std::ostream& out, const Record& record) {
    out.write(reinterpret_cast<const char*>(&record), sizeof record);
}

}  // namespace

void savePicture(const RECT& area, const std::string& file) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = area.right - area.left;
    info.bmiHeader.biHeight = area.bottom - area.top;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    const LONG stride = (info.bmiHeader.biWidth * 3 + 3) / 4 * 4;
    std::vector<char> pixels(static_cast<std::size_t>(stride * info.bmiHeader.biHeight));

    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap =
        CreateCompatibleBitmap(screen, info.bmiHeader.biWidth, info.bmiHeader.biHeight);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    bool isRead = BitBlt(memory, 0, 0, info.bmiHeader.biWidth, info.bmiHeader.biHeight, screen,
                         area.left, area.top, SRCCOPY) != FALSE;
    SelectObject(memory, before);
    isRead = isRead && GetDIBits(memory, bitmap, 0, static_cast<UINT>(info.bmiHeader.biHeight),
                                 pixels.data(), &info, DIB_RGB_COLORS) != 0;
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);

    BITMAPFILEHEADER start{};
    start.bfType = 0x4D42;
    start.bfOffBits = sizeof start + sizeof info.bmiHeader;
    start.bfSize = start.bfOffBits + static_cast<DWORD>(pixels.size());
    std::ofstream out(std::filesystem::path(wide(file)), std::ios::binary);
    write(out, start);
    write(out, info.bmiHeader);
    out.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
    if (!isRead || !out.flush()) throw Failure("no picture of the screen: " + file);
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

// Texts and fonts of windows.
#include "dialog/controls/window_text_win32.h"

#include <algorithm>

namespace toolbox::controls {
namespace {

constexpr std::size_t kMostCharacters = std::size_t{1} << 26;

/// The clipboard, for as long as it lives.
class Clipboard {
  public:
    explicit Clipboard(HWND window) : isOpen_(OpenClipboard(window)) {}
    ~Clipboard() {
        if (isOpen_) CloseClipboard();
    }
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    [[nodiscard]] HANDLE data() const {
        return isOpen_ ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    }

  private:
    BOOL isOpen_;
};

}  // namespace

std::string bytesOf(std::wstring_view text) {
    constexpr int kMostBytes = 4;
    text = text.substr(0, kMostCharacters);
    if (text.empty()) return {};
    std::string out(kMostBytes * text.size(), '\0');
    out.resize(static_cast<std::size_t>(
        std::max(WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(),
                                     static_cast<int>(text.size()), out.data(),
                                     static_cast<int>(out.size()), "\x01", nullptr),
                 0)));
    return out;
}

std::wstring wideOf(std::string_view text) {
    text = text.substr(0, kMostCharacters);
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    std::wstring out(text.size(), L'\0');
    out.resize(static_cast<std::size_t>(
        std::max(MultiByteToWideChar(CP_ACP, 0, text.data(), length, out.data(), length), 0)));
    return out;
}

std::string windowText(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void setWindowText(HWND window, const std::string& text) {
    if (windowText(window) != text) SetWindowTextA(window, text.c_str());
}

std::string messageText(HWND window, LPARAM text) {
    if (!text) return {};
    if (!IsWindowUnicode(window)) return reinterpret_cast<const char*>(text);
    return bytesOf(reinterpret_cast<const wchar_t*>(text));
}

bool isOwn(HWND window) {
    DWORD process = 0;
    return window && GetWindowThreadProcessId(window, &process) && process == GetCurrentProcessId();
}

std::string clipboardText(HWND window) {
    const Clipboard clipboard(window);
    const HANDLE data = clipboard.data();
    const auto* const text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
    if (!text) return {};
    const std::wstring_view whole(text, GlobalSize(data) / sizeof(wchar_t));
    std::string bytes = bytesOf(whole.substr(0, whole.find(L'\0')));
    GlobalUnlock(data);
    return bytes;
}

FontContext::FontContext(HWND window, HDC context)
    : window_(window), context_(context ? context : GetDC(window)), isOwnContext_(!context) {
    const LRESULT font = SendMessageA(window, WM_GETFONT, 0, 0);
    before_ = SelectObject(context_,
                           font ? reinterpret_cast<HGDIOBJ>(font) : GetStockObject(SYSTEM_FONT));
}

FontContext::~FontContext() {
    SelectObject(context_, before_);
    if (isOwnContext_) ReleaseDC(window_, context_);
}

int FontContext::width(std::string_view text) const {
    SIZE size{};
    GetTextExtentPoint32A(context_, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

int FontContext::height() const {
    TEXTMETRICA metrics{};
    GetTextMetricsA(context_, &metrics);
    return metrics.tmHeight;
}

int screenDpi() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi;
}

int WheelNotches::add(WPARAM wheel) {
    const int delta = static_cast<short>(HIWORD(wheel));
    if ((delta < 0) != (rest_ < 0)) rest_ = 0;
    rest_ += delta;
    const int notches = rest_ / WHEEL_DELTA;
    rest_ %= WHEEL_DELTA;
    return notches;
}

}  // namespace toolbox::controls

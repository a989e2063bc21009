// What the controls ask of windows: their texts, whatever their character set, and their fonts.
#pragma once

#include <string>
#include <string_view>

#include "toolbox/win_types.h"

namespace toolbox::controls {

/// The text in bytes; what the code page does not have is a control character.
[[nodiscard]] std::string bytesOf(std::wstring_view text);
[[nodiscard]] std::wstring wideOf(std::string_view text);

/// The whole text of a window.
[[nodiscard]] std::string windowText(HWND window);
/// Sets it, unless the window has it already.
void setWindowText(HWND window, const std::string& text);

/// The text that a message hands to a window of its character set; null is the empty one.
[[nodiscard]] std::string messageText(HWND window, LPARAM text);

/// Whether the window is one of this process, which alone can be sent addresses.
[[nodiscard]] bool isOwn(HWND window);

/// The text on the clipboard; empty when there is none.
[[nodiscard]] std::string clipboardText(HWND window);

/// Draws and measures with a window's font, for as long as it lives.
class FontContext {
  public:
    /// In a context of the window's own, or in another one.
    explicit FontContext(HWND window, HDC context = nullptr);
    ~FontContext();
    FontContext(const FontContext&) = delete;
    FontContext& operator=(const FontContext&) = delete;

    [[nodiscard]] HDC context() const { return context_; }
    [[nodiscard]] int width(std::string_view text) const;
    [[nodiscard]] int height() const;

  private:
    HWND window_;
    HDC context_;
    bool isOwnContext_;
    HGDIOBJ before_;
};

/// Points per inch of what windows show.
[[nodiscard]] int screenDpi();

/// Takes a mouse wheel's messages and gives whole notches.
class WheelNotches {
  public:
    [[nodiscard]] int add(WPARAM wheel);

  private:
    int rest_ = 0;
};

}  // namespace toolbox::controls

// A window with controls, and what it is told of them.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "support/window_kit.h"
#include "toolbox/controls.h"
#include "toolbox/messages.h"

namespace toolbox::testing {

/// Sends a message whose second parameter may be a pointer.
inline LRESULT tell(HWND window, UINT message, WPARAM word = 0, const void* data = nullptr) {
    return SendMessageA(window, message, word, reinterpret_cast<LPARAM>(data));
}

inline BOOL CALLBACK findTip(HWND window, LPARAM found) {
    if (isOfClass(window, TOOLTIPS_CLASSA) && IsWindowVisible(window))
        *reinterpret_cast<std::string*>(found) = textOf(window);
    return TRUE;
}

/// The text of the tip that can be seen; empty when there is none.
inline std::string tipShown() {
    std::string text;
    EnumThreadWindows(GetCurrentThreadId(), findTip, reinterpret_cast<LPARAM>(&text));
    return text;
}

class ControlFixture : public ::testing::Test {
  protected:
    ControlFixture() {
        GMSG::language = GMSG::English;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
        SetForegroundWindow(window);
        SetCursorPos(5, 5);
        pumpMessages();
    }
    ~ControlFixture() override {
        if (IsWindow(window)) DestroyWindow(window);
        pumpMessages();
        GMSG::language = GMSG::French;
    }

    HWND add(const char* className, DWORD style, int id, int y, int width = 200, int height = 22) {
        const HWND control = CreateWindowExA(
            0, className, "", WS_CHILD | WS_VISIBLE | style, 10, y, width, height, window,
            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        SendMessageA(control, WM_SETFONT,
                     reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), TRUE);
        pumpMessages();
        return control;
    }
    /// Types and lets it have its effect.
    static void type(const std::string& text) {
        typeText(text);
        pumpMessages();
    }
    static void press(WORD key, const std::vector<WORD>& modifiers = {}) {
        pressKey(key, modifiers);
        pumpMessages();
    }
    static void pointAt(HWND control) { moveMouse(control, {10, 8}); }
    static void turnWheel(int delta) {
        INPUT event{};
        event.type = INPUT_MOUSE;
        event.mi.dwFlags = MOUSEEVENTF_WHEEL;
        event.mi.mouseData = static_cast<DWORD>(delta);
        SendInput(1, &event, sizeof event);
        pumpMessages();
    }
    static void setClipboard(const std::string& text) {
        ASSERT_TRUE(pumpUntil([] { return OpenClipboard(nullptr) != 0; }));
        EmptyClipboard();
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
        std::copy_n(text.c_str(), text.size() + 1, static_cast<char*>(GlobalLock(memory)));
        GlobalUnlock(memory);
        SetClipboardData(CF_TEXT, memory);
        CloseClipboard();
    }
    /// The commands so far, "id/notification ", of those that a test names.
    std::string commands() { return std::exchange(told, {}); }

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM word, LPARAM data) {
        auto* const test =
            reinterpret_cast<ControlFixture*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (message == WM_MOUSEWHEEL) ++test->wheels;
        if (message == WM_TIMER && test->onTimer) test->onTimer();
        if (message == WM_COMMAND) {
            test->told += std::to_string(LOWORD(word)) + "/" + std::to_string(HIWORD(word)) + " ";
            if (test->onCommand) test->onCommand(HIWORD(word));
        }
        return DefWindowProcA(window, message, word, data);
    }

    HWND window = CreateWindowExA(0, "STATIC", "Controls", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100,
                                  100, 500, 400, nullptr, nullptr, nullptr, nullptr);
    std::string told;
    std::function<void(int notification)> onCommand;
    std::function<void()> onTimer;
    int wheels = 0;
};

}  // namespace toolbox::testing

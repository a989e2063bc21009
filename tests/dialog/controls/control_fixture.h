// A window with controls, and what it is told of them.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "support/owner_fixture.h"
#include "toolbox/controls.h"

namespace toolbox::testing {

/// Sends a message whose second parameter may be a pointer.
inline LRESULT tell(HWND window, UINT message, WPARAM word = 0, const void* data = nullptr) {
    return SendMessageA(window, message, word, reinterpret_cast<LPARAM>(data));
}

class ControlFixture : public OwnerFixture {
  protected:
    ControlFixture() {
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
        SetForegroundWindow(window);
        SetCursorPos(5, 5);
        pumpMessages();
    }
    ~ControlFixture() override { DestroyWindow(window); }

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
    /// The commands so far, "id/notification ", of those that a test names.
    std::string commands() { return std::exchange(told, {}); }

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM word, LPARAM data) {
        auto* const test =
            reinterpret_cast<ControlFixture*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (message == WM_MOUSEWHEEL) ++test->wheels;
        if (message == WM_COMMAND) {
            test->told += std::to_string(LOWORD(word)) + "/" + std::to_string(HIWORD(word)) + " ";
            if (test->onCommand) test->onCommand(HIWORD(word));
        }
        return DefWindowProcA(window, message, word, data);
    }

    const HWND window = owner;
    std::string told;
    std::function<void(int notification)> onCommand;
    int wheels = 0;
};

}  // namespace toolbox::testing

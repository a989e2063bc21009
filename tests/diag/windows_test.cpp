// Waits, and the words of real windows.
#include <gtest/gtest.h>

#include "support/window_kit.h"
#include "toolbox/processes.h"

namespace {

constexpr UINT kProbe = WM_APP + 1;
int probes = 0;

LRESULT CALLBACK countProbes(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kProbe) {
        ++probes;
        if (wParam) Sleep(static_cast<int>(wParam));
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

struct WindowTest : ::testing::Test {
    WindowTest() {
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(countProbes));
        probes = 0;
    }
    ~WindowTest() override { DestroyWindow(window); }
    HWND window = CreateWindowExA(0, "STATIC", "a probed window", WS_POPUP, 0, 0, 10, 10, nullptr,
                                  nullptr, nullptr, nullptr);
};

TEST_F(WindowTest, SleepHandlesMessagesAndKeepsTheOneToQuit) {
    PostMessageA(window, kProbe, 1, 0);  // sleeps within the sleep
    PostMessageA(window, kProbe, 0, 0);
    for (const int outside : {0, 66, -1, 1000000}) Sleep(outside);
    EXPECT_EQ(probes, 0);
    PostQuitMessage(9);
    Sleep(1);
    EXPECT_EQ(probes, 2);
    MSG message{};
    ASSERT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 9u);
}

TEST_F(WindowTest, IsFoundByAPartOfItsTitle) {
    EXPECT_EQ(FindWin("probed win", nullptr), window);
    EXPECT_EQ(FindWin("probed win", window), nullptr);
}

}  // namespace

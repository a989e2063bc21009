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
        WNDCLASSA type{};
        type.style = CS_DBLCLKS;
        type.lpfnWndProc = countProbes;
        type.cbWndExtra = sizeof(void*);
        type.hInstance = GetModuleHandleA(nullptr);
        type.lpszClassName = "Probed";
        RegisterClassA(&type);
        window = CreateWindowExA(0, "Probed", "a probed window", WS_POPUP, 0, 0, 10, 10, nullptr,
                                 nullptr, type.hInstance, nullptr);
        probes = 0;
    }
    ~WindowTest() override {
        DestroyWindow(window);
        UnregisterClassA("Probed", GetModuleHandleA(nullptr));
    }
    HWND window;
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
    // No timer is left.
    Sleep(1);
    EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
}

TEST_F(WindowTest, KeepsAPointerAndChangesItsClass) {
    EXPECT_EQ(GetWindowPtr(window), nullptr);
    SetWindowPtr(window, this);
    EXPECT_EQ(GetWindowPtr(window), this);

    SetWindowStyle(window, CS_NOCLOSE | CS_HREDRAW, 1);
    SetWindowStyle(window, CS_NOCLOSE | CS_DBLCLKS, 0);
    EXPECT_EQ(GetClassLongPtrA(window, GCL_STYLE), ULONG_PTR{CS_HREDRAW});
    const HICON icon = LoadIconA(nullptr, IDI_HAND);
    SetWindowIcon(window, static_cast<int>(reinterpret_cast<INT_PTR>(icon)));
    EXPECT_EQ(GetClassLongPtrA(window, GCLP_HICON), reinterpret_cast<ULONG_PTR>(icon));
}

TEST_F(WindowTest, IsFoundByAPartOfItsTitle) {
    EXPECT_EQ(FindWin("probed win", nullptr), window);
    EXPECT_EQ(FindWin("Probed win", nullptr), nullptr);
    EXPECT_EQ(FindWin("probed win", window), nullptr);
    EXPECT_EQ(FindWin(nullptr, nullptr), nullptr);
    SetWindowTextA(window, (std::string(77, ' ') + "xyzw").c_str());
    EXPECT_EQ(FindWin("   xyz", nullptr), window);
    EXPECT_EQ(FindWin("xyzw", nullptr), nullptr);  // beyond 80 characters
}

TEST_F(WindowTest, RunsWhileItIsThereAndItsThreads) {
    const DWORD thread = GetCurrentThreadId();
    for (const auto& [app, running] : {std::pair{toolbox::RunningApp{window, thread}, 1},
                                       {{window, thread + 1}, 0},
                                       {{nullptr, thread}, 0}})
        EXPECT_EQ(IsAppRunning(&app), running);
    EXPECT_EQ(IsAppRunning(nullptr), 0);
}

}  // namespace

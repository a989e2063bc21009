// Windows that the frame owns, a palette for one, stay above it when it gets the focus back.
#include "frame_fixture.h"

namespace {

/// Handles messages for as long as a display takes to tell what it did, and longer.
void pumpForAWhile() {
    const ULONGLONG end = GetTickCount64() + 300;
    toolbox::testing::pumpUntil([=] { return GetTickCount64() > end; });
}

TEST_F(FrameTest, StaysBelowItsOwnWindows) {
    open();
    const auto owned = [&](const char* title, int x) {
        return CreateWindowExA(WS_EX_TOOLWINDOW, "STATIC", title,
                               WS_POPUP | WS_CAPTION | WS_VISIBLE, x, 200, 100, 80,
                               frame.getFrame(), nullptr, instance, nullptr);
    };
    owned("below", 200);
    owned("above", 250);
    const HWND dialog = owned("dialog", 400);
    for (int turn = 0; turn < 2; ++turn) {
        SetActiveWindow(dialog);
        pumpForAWhile();
        SetActiveWindow(frame.getFrame());
        if (turn == 1) ShowWindow(dialog, SW_HIDE);  // as a dialog that ends
        pumpForAWhile();
        std::string order;
        for (HWND each = GetTopWindow(nullptr); each; each = GetWindow(each, GW_HWNDNEXT))
            if (IsWindowVisible(each) &&
                (each == frame.getFrame() || GetWindow(each, GW_OWNER) == frame.getFrame()))
                order += toolbox::testing::textOf(each) + " ";
        EXPECT_EQ(order, turn == 0 ? "dialog above below Ponts " : "above below Ponts ");
        EXPECT_EQ(GetActiveWindow(), frame.getFrame());
    }
}

}  // namespace

// Gestures with the real mouse.
#include <gtest/gtest.h>

#include "picture_window.h"

namespace {

struct MouseGestureTest : ::testing::Test {
    MouseGestureTest() {
        window.use(&mouse);
        before = window.picture();
    }
    ~MouseGestureTest() override {
        window.button(MOUSEEVENTF_LEFTUP);
        window.button(MOUSEEVENTF_RIGHTUP);
    }

    void press(int x, int y) {
        window.moveTo(x, y);
        window.button(MOUSEEVENTF_LEFTDOWN);
    }
    void expectPoints(POINT start, POINT end) {
        EXPECT_EQ(xy(window.start), xy(start));
        EXPECT_EQ(xy(window.end), xy(end));
    }
    void expectOver(MouseDragger::State state) {
        EXPECT_EQ(window.state, state);
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_TRUE(window.picture() == before) << "a figure is left";
    }

    PictureWindow window;
    VectDragger dragger{0, nullptr, 0};
    MouseDragger mouse{dragger};
    Picture before;
};

TEST_F(MouseGestureTest, FollowsTheMouseFromDownToUp) {
    const HCURSOR cross = LoadCursorA(nullptr, reinterpret_cast<const char*>(IDC_CROSS));
    dragger.setCursor(cross);
    press(40, 50);
    EXPECT_EQ(GetCursor(), cross);
    EXPECT_EQ(GetCapture(), window.handle());
    window.moveTo(160, 110);
    EXPECT_FALSE(window.picture() == before);
    window.moveTo(-30, -20);  // outside: the capture brings it, signed
    expectPoints({40, 50}, {-30, -20});
    window.moveTo(90, 100);
    window.button(MOUSEEVENTF_LEFTUP);
    expectPoints({40, 50}, {90, 100});
    expectOver(MouseDragger::Finished);
}

TEST_F(MouseGestureTest, IsAbandonedWhenItLosesTheCapture) {
    const HWND stranger =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    for (const bool taken : {false, true}) {
        press(40, 50);
        window.moveTo(160, 110);
        if (taken)
            SetCapture(stranger);
        else
            SendMessageA(window.handle(), WM_CANCELMODE, 0, 0);
        EXPECT_TRUE(window.picture() == before) << "a figure is left";
        SendMessageA(window.handle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(70, 20));
        SendMessageA(window.handle(), WM_LBUTTONUP, 0, MAKELPARAM(70, 20));
        EXPECT_EQ(mouse.getState(), MouseDragger::Idle);
        EXPECT_TRUE(window.picture() == before) << "it goes on";
        EXPECT_EQ(GetCapture(), taken ? stranger : nullptr);
        ReleaseCapture();
        window.button(MOUSEEVENTF_LEFTUP);
    }
    DestroyWindow(stranger);
}

TEST_F(MouseGestureTest, StaysOrthogonalWhenShiftIsReleased) {
    // The keyboard's state may come late from the display; the message carries it.
    SendMessageA(window.handle(), WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(40, 50));
    window.moveTo(160, 110);
    expectPoints({40, 50}, {160, 50});
}

}  // namespace

// Where the windows of a frame go.
#include "frame_fixture.h"

namespace {

RECT placeIn(HWND parent, HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

TEST_F(FrameTest, KeepsRoomForAVisiblePaneAndAStripAtItsBottom) {
    frame.withPane = true;
    open();
    const HWND window = frame.getFrame();
    const HWND pane = FindWindowExA(window, nullptr, "STATIC", "pane");
    ShowWindow(pane, SW_SHOW);
    const HWND strip = CreateWindowExA(0, "STATIC", "strip", WS_CHILD | WS_VISIBLE, 0, 0, 10, 33,
                                       window, nullptr, instance, nullptr);
    frame.setStatusBar(strip);
    RECT whole{}, inner{};
    MoveWindow(window, 20, 20, 600, 400, TRUE);
    GetClientRect(window, &whole);
    GetClientRect(pane, &inner);  // without its border
    const RECT place = placeIn(window, strip), client = placeIn(window, frame.getClient());
    const RECT wanted{0, whole.bottom - 33, whole.right, whole.bottom};
    EXPECT_TRUE(EqualRect(&place, &wanted));
    EXPECT_EQ(client.top, inner.bottom);
    EXPECT_EQ(client.bottom, wanted.top);
    DestroyWindow(strip);
    EXPECT_EQ(frame.getStatusBar(), nullptr);
    EXPECT_EQ(placeIn(window, frame.getClient()).bottom, whole.bottom);
}

}  // namespace

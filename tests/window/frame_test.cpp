// The frame's window, its menus, the commands on documents, and where windows go.
#include "frame_fixture.h"

namespace {

RECT placeIn(HWND parent, HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

TEST_F(FrameTest, AsksItselfThenTheApplicationThenTheDocument) {
    open();
    send(WM_COMMAND, ID_TEST_NEW);
    EXPECT_EQ(taken(), Log{"command 200"});
    const HWND a = addDocument("A").getHWND();
    addDocument("B");

    send(WM_COMMAND, ID_TEST_NEW);
    EXPECT_EQ(taken(), (Log{"command 200 child", "B 273 200"}));
    application.handles = 1;
    send(WM_COMMAND, 4999);
    EXPECT_EQ(taken(), Log{"command 4999 child"});
    send(WM_COMMAND, ID_TEST_TILE);  // the frame's
    EXPECT_EQ(taken(), Log{});
    send(WM_COMMAND, 5000);  // the first entry of the list
    EXPECT_EQ(taken(), Log{});
    EXPECT_EQ(frame.getActiveMDIChild(), a);
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

// The frame's window, its menus, the commands on documents, and where windows go.
#include <tuple>

#include "frame_fixture.h"
#include "support/box_answerer.h"

namespace {

using toolbox::testing::BoxAnswerer;

RECT placeIn(HWND parent, HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::string lastItemOf(HMENU menu) {
    char text[80] = "";
    GetMenuStringA(menu, static_cast<UINT>(GetMenuItemCount(menu) - 1), text, sizeof text,
                   MF_BYPOSITION);
    return text;
}

TEST_F(FrameTest, IsRefusedByTheApplicationWithAWordToTheUser) {
    application.acceptsFrame = 0;
    BoxAnswerer answerer({IDOK});
    EXPECT_EQ(frame.initMainWindow(SW_SHOWNORMAL), 0);
    EXPECT_EQ(answerer.seen().at(0).text, "L'application ne peut pas d\351marrer.");
    EXPECT_EQ(taken().back(), "frameDestroyed");
    EXPECT_EQ(frame.getFrame(), nullptr);
    MSG quit{};
    EXPECT_TRUE(PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST_F(FrameTest, SaysWhenItsWindowCannotBeCreated) {
    MDI::ConstructInfo unregistered = info();
    unregistered.registerClass = 0;
    TestFrame classless(instance, nullptr, unregistered, &application);
    EXPECT_EQ(classless.initMainWindow(SW_SHOWNORMAL), 0);
    EXPECT_EQ(taken(), Log{});
    TestFrame refusing(instance, nullptr, info(), &application);
    refusing.refusesItself = true;
    EXPECT_EQ(refusing.initMainWindow(SW_SHOWNORMAL), 0);
    EXPECT_EQ(refusing.getFrame(), nullptr);
    EXPECT_EQ(taken(), Log{"classRegistered"});
}

TEST_F(FrameTest, ListsDocumentsInTheLastMenuThatHasTheCommand) {
    open();
    addDocument("Pont A");
    addDocument("Pont B");
    EXPECT_EQ(lastItemOf(GetSubMenu(frame.getFrameMenu(), 0)), "&Tile");
    EXPECT_EQ(lastItemOf(GetSubMenu(frame.getFrameMenu(), 1)), "&2 Pont B");

    const HMENU other = LoadMenuA(instance, MAKEINTRESOURCEA(IDM_TEST_OTHER));
    EXPECT_EQ(frame.setMDIMenu(other, ID_TEST_NEW), 1);
    EXPECT_EQ(GetMenu(frame.getFrame()), other);
    EXPECT_EQ(lastItemOf(GetSubMenu(other, 0)), "&2 Pont B");

    EXPECT_EQ(frame.setMDIMenu(nullptr, ID_TEST_NEW), 1);  // the identifier is the frame's own
    EXPECT_EQ(GetMenu(frame.getFrame()), frame.getFrameMenu());
    EXPECT_EQ(lastItemOf(GetSubMenu(frame.getFrameMenu(), 0)), "&Tile");
    EXPECT_EQ(lastItemOf(GetSubMenu(frame.getFrameMenu(), 1)), "&2 Pont B");
    DestroyMenu(other);
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

TEST_F(FrameTest, OffersPrivateMessagesToTheApplicationThenToTheDocument) {
    open();
    EXPECT_EQ(send(0x3E0), 0);
    EXPECT_EQ(taken(), Log{"private 992"});
    addDocument("A");
    for (const UINT outside : {0x3DFu, 0x3E9u}) EXPECT_EQ(send(outside), 0);
    EXPECT_EQ(send(0x3E8, 5), 0);
    EXPECT_EQ(taken(), (Log{"private 1000 child", "A 1000 5"}));
    application.handles = 1;
    EXPECT_EQ(send(0x3E0), 0);
    EXPECT_EQ(taken(), Log{"private 992 child"});
}

TEST_F(FrameTest, MinimizesMaximizesRestoresAndWalksDocuments) {
    open();
    const HWND a = addDocument("A").getHWND();
    const HWND b = addDocument("B").getHWND();
    for (const auto& [command, iconic, zoomed] : {std::tuple{SC_MINIMIZE, TRUE, FALSE},
                                                  {SC_RESTORE, FALSE, FALSE},
                                                  {SC_MAXIMIZE, FALSE, TRUE},
                                                  {SC_RESTORE, FALSE, FALSE}}) {
        EXPECT_EQ(frame.doFrameCommand(b, static_cast<UINT>(command), 0), 1);
        EXPECT_EQ(IsIconic(b), iconic);
        EXPECT_EQ(IsZoomed(b), zoomed);
    }
    // A neighbour is shown in its normal place; one that is shown is not raised.
    for (const bool wasIconic : {true, false}) {
        if (wasIconic) ShowWindow(a, SW_SHOWMINIMIZED);
        SetWindowPos(b, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        ASSERT_EQ(GetWindow(b, GW_HWNDNEXT), a);
        EXPECT_EQ(frame.doFrameCommand(b, SC_NEXTWINDOW, 0), 1);
        EXPECT_FALSE(IsIconic(a));
        EXPECT_EQ(GetTopWindow(frame.getClient()), wasIconic ? a : b);
    }
    EXPECT_EQ(frame.doFrameCommand(b, SC_PREVWINDOW, 0), 1);  // there is none
    EXPECT_EQ(frame.doFrameCommand(b, SC_SIZE, 0), 0);
    EXPECT_EQ(frame.doFrameCommand(b, MAKELONG(6, 1), 1), 0);  // a control's notification
}

TEST_F(FrameTest, TilesInRowsAboveTheIcons) {
    open();
    const HWND a = addDocument("A").getHWND();
    const HWND b = addDocument("B").getHWND();
    const HWND client = frame.getClient();
    RECT area{};
    GetClientRect(client, &area);
    ShowWindow(b, SW_SHOWMAXIMIZED);
    EXPECT_EQ(frame.doFrameCommand(b, 10, 0), 1);
    const LONG half = area.bottom / 2;
    const RECT upper{0, 0, area.right, half}, lower{0, half, area.right, 2 * half};
    const RECT first = placeIn(client, b), second = placeIn(client, a);
    EXPECT_TRUE(EqualRect(&first, &upper)) << "the active one first";
    EXPECT_TRUE(EqualRect(&second, &lower));

    ShowWindow(a, SW_MINIMIZE);
    MoveWindow(a, 300, 5, 10, 10, TRUE);
    frame.doFrameCommand(b, 9, 0);
    EXPECT_EQ(placeIn(client, a).left, 0) << "icons are arranged";
    MDI::tileVertically(client);
    EXPECT_TRUE(IsIconic(a));
    EXPECT_EQ(placeIn(client, b).bottom, placeIn(client, a).top);
    ShowWindow(b, SW_MINIMIZE);  // nothing left to tile
    MDI::tileVertically(client);
    EXPECT_TRUE(IsIconic(b));
}

TEST_F(FrameTest, KeepsRoomForAVisiblePane) {
    frame.withPane = true;
    open();
    const HWND pane = FindWindowExA(frame.getFrame(), nullptr, "STATIC", "pane");
    ASSERT_NE(pane, nullptr);
    for (const bool visible : {false, true}) {
        ShowWindow(pane, visible ? SW_SHOW : SW_HIDE);
        MoveWindow(frame.getFrame(), 20, 20, visible ? 500 : 600, 400, TRUE);
        RECT whole{}, inner{};
        GetClientRect(frame.getFrame(), &whole);
        GetClientRect(pane, &inner);  // without its border
        const RECT expected{0, visible ? inner.bottom : 0, whole.right, whole.bottom};
        const RECT place = placeIn(frame.getFrame(), frame.getClient());
        EXPECT_TRUE(EqualRect(&place, &expected)) << visible;
    }
}

TEST_F(FrameTest, TellsTheApplicationOfMovesAndSystemCommands) {
    open();
    MoveWindow(frame.getFrame(), 33, 44, 600, 500, TRUE);
    EXPECT_EQ(taken(), Log{"moved 0"});
    SetFocus(nullptr);
    send(WM_SYSCOMMAND, SC_MAXIMIZE);
    EXPECT_EQ(GetFocus(), frame.getClient());  // the frame hands the focus on
    EXPECT_EQ(taken().back(), "zoomed");
    send(WM_SYSCOMMAND, SC_RESTORE);
    EXPECT_EQ(taken().back(), "normal");
    send(WM_SYSCOMMAND, SC_MINIMIZE | 2);
    EXPECT_EQ(taken().front(), "normal");
    EXPECT_TRUE(IsIconic(frame.getFrame()));
}

TEST_F(FrameTest, KeepsRoomForAVisibleStripAtItsBottom) {
    frame.withPane = true;
    open();
    const HWND window = frame.getFrame();
    const HWND pane = FindWindowExA(window, nullptr, "STATIC", "pane");
    ShowWindow(pane, SW_SHOW);
    const HWND strip = CreateWindowExA(0, "STATIC", "strip", WS_CHILD | WS_VISIBLE, 0, 0, 10, 33,
                                       window, nullptr, instance, nullptr);
    frame.setStatusBar(strip);
    RECT whole{}, inner{};
    const auto clientBottom = [&] { return placeIn(window, frame.getClient()).bottom; };
    for (const int width : {600, 500}) {
        MoveWindow(window, 20, 20, width, 400, TRUE);
        GetClientRect(window, &whole);
        GetClientRect(pane, &inner);
        const RECT place = placeIn(window, strip), client = placeIn(window, frame.getClient());
        const RECT wanted{0, whole.bottom - 33, whole.right, whole.bottom};
        EXPECT_TRUE(EqualRect(&place, &wanted)) << width;
        EXPECT_EQ(client.top, inner.bottom) << width;
        EXPECT_EQ(client.bottom, wanted.top) << width;
    }
    frame.setStatusBar(nullptr);
    EXPECT_EQ(clientBottom(), whole.bottom);
    frame.setStatusBar(strip);
    EXPECT_EQ(clientBottom(), whole.bottom - 33);
    DestroyWindow(strip);
    EXPECT_EQ(frame.getStatusBar(), nullptr);
    EXPECT_EQ(clientBottom(), whole.bottom);
}

}  // namespace

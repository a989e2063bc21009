// The menu of tag objects: its commands in both languages, and the one that its choice sends.
#include <gtest/gtest.h>

#include <string>

#include "picture_window.h"
#include "toolbox/messages.h"

namespace {

constexpr UINT kGetMenu = 0x01E1;  // of a menu's window: its HMENU

std::string shown;
RECT place;
int ticks;  // since the menu is open

std::string describe(HMENU menu) {
    std::string text;
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        text += std::to_string(static_cast<int>(GetMenuItemID(menu, i))) + ' ';
    char second[64] = "";
    GetMenuStringA(menu, 1, second, sizeof second, MF_BYPOSITION);
    return text + second;
}

/// Reads the open menu and chooses its second item; closes it when that takes seconds.
void CALLBACK chooseSecond(HWND owner, UINT, UINT_PTR, DWORD) {
    const HWND window = FindWindowA("#32768", nullptr);
    if (!window || !IsWindowVisible(window)) return;
    constexpr int kPatience = 500;
    if (++ticks == kPatience) EndMenu();
    if (ticks > 1) return;
    shown = describe(reinterpret_cast<HMENU>(SendMessageA(window, kGetMenu, 0, 0)));
    GetWindowRect(window, &place);
    for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) PostMessageA(owner, WM_KEYDOWN, key, 0);
}

TEST(TagMenu, ShowsItsCommandsAndSendsTheChosenOne) {
    std::string commands;
    using namespace toolbox;
    for (const UINT each :
         {0u + TagEdit, 0u + TagDelete, 0u, 0u + TagAlignLeft, 0u + TagAlignCenter,
          0u + TagAlignRight, 0u, 0u + TagNoBorder, 0u + TagBorder})
        commands += std::to_string(each) + ' ';
    PictureWindow window;
    VoidDragger dragger(nullptr);
    MouseDragger mouse(dragger);
    for (const auto& [language, second] :
         {std::pair{GMSG::French, "&Supprimer"}, std::pair{GMSG::English, "&Delete"}}) {
        GMSG::language = language;
        ticks = 0;
        window.command = 0;
        SetTimer(window.handle(), 1, 10, chooseSecond);
        EXPECT_EQ(mouse.handlePopupMenu(window.handle(), {20, 30}), 1);
        KillTimer(window.handle(), 1);
        toolbox::testing::pumpMessages();
        EXPECT_EQ(shown, commands + second);
        EXPECT_EQ(window.command, static_cast<UINT>(TagDelete));
        POINT corner{20, 30};
        ClientToScreen(window.handle(), &corner);
        EXPECT_EQ(xy({place.left, place.top}), xy(corner));
    }
    GMSG::language = GMSG::French;
}

}  // namespace

// The menu of tag objects: its texts in both languages, and the command that its choice sends.
#include <gtest/gtest.h>

#include <string>

#include "picture_window.h"
#include "support/window_kit.h"
#include "toolbox/messages.h"

namespace {

constexpr UINT kGetMenu = 0x01E1;  // of a menu's window: its HMENU

std::string shown;
RECT place;
int ticks;  // since the menu is open

std::string describe(HMENU menu) {
    std::string text;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        char item[64] = "";
        GetMenuStringA(menu, static_cast<UINT>(i), item, sizeof item, MF_BYPOSITION);
        text += std::to_string(static_cast<int>(GetMenuItemID(menu, i))) + item + '\n';
    }
    return text;
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
    const auto line = [](toolbox::TagCommand command, const char* text) {
        return std::to_string(command) + text + '\n';
    };
    const struct {
        GMSG::Language language;
        const char *edit, *remove, *left, *center, *right, *none, *border;
    } cases[] = {{GMSG::French, "&Modifier...", "&Supprimer", "Aligner \340 &gauche", "&Centrer",
                  "Aligner \340 &droite", "Sa&ns bordure", "Avec &bordure"},
                 {GMSG::English, "&Edit...", "&Delete", "Align &left", "&Center", "Align &right",
                  "&No border", "&Border"}};
    PictureWindow window;
    VoidDragger dragger(nullptr);
    MouseDragger mouse(dragger);
    for (const auto& c : cases) {
        GMSG::language = c.language;
        ticks = 0;
        window.command = 0;
        SetTimer(window.handle(), 1, 10, chooseSecond);
        EXPECT_EQ(mouse.handlePopupMenu(window.handle(), {20, 30}), 1);
        KillTimer(window.handle(), 1);
        toolbox::testing::pumpMessages();
        EXPECT_EQ(shown, line(toolbox::TagEdit, c.edit) + line(toolbox::TagDelete, c.remove) +
                             "0\n" + line(toolbox::TagAlignLeft, c.left) +
                             line(toolbox::TagAlignCenter, c.center) +
                             line(toolbox::TagAlignRight, c.right) + "0\n" +
                             line(toolbox::TagNoBorder, c.none) +
                             line(toolbox::TagBorder, c.border));
        EXPECT_EQ(window.command, static_cast<UINT>(toolbox::TagDelete));
        POINT corner{20, 30};
        ClientToScreen(window.handle(), &corner);
        EXPECT_EQ(xy({place.left, place.top}), xy(corner));
    }
    GMSG::language = GMSG::French;
}

}  // namespace

// The menu of tag objects, in a real window.
#include <gtest/gtest.h>

#include "picture_window.h"

namespace {

/// For a menu that does not take its keys.
void CALLBACK giveUp(HWND, UINT, UINT_PTR, DWORD) {
    EndMenu();
}

TEST(TagMenu, SendsTheCommandThatIsChosen) {
    using namespace toolbox;
    PictureWindow window;
    VoidDragger dragger(nullptr);
    MouseDragger mouse(dragger);
    int place = 0;
    for (const UINT command :
         {0u + TagEdit, 0u + TagDelete, 0u + TagAlignLeft, 0u + TagAlignCenter, 0u + TagAlignRight,
          0u + TagNoBorder, 0u + TagBorder, 0u + TagRoundedBorder, 0u + TagUnderline,
          0u + TagAlignTop, 0u + TagAlignMiddle, 0u + TagAlignBottom, 0u + TagFilled,
          0u + TagLeader, 0u + TagLocked, 0u + TagToFront, 0u + TagToBack}) {
        ++place;
        for (int i = 0; i < place; ++i) PostMessageA(window.handle(), WM_KEYDOWN, VK_DOWN, 0);
        PostMessageA(window.handle(), WM_KEYDOWN, VK_RETURN, 0);
        SetTimer(window.handle(), 1, 5000, giveUp);
        EXPECT_EQ(mouse.handlePopupMenu(window.handle(), {20, 30}), 1);
        KillTimer(window.handle(), 1);
        toolbox::testing::pumpMessages();
        EXPECT_EQ(window.command, command);
    }
}

}  // namespace

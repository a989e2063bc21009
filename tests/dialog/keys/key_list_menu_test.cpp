// The menu of the list of keys, and the widths of its columns from run to run.
#include <utility>

#include "key_list_fixture.h"

namespace {

/// The items of the menu that is open: * for the one of a double-click, - for one that is grey, +
/// for one that is checked.
std::string openItems() {
    const HWND window = FindWindowA("#32768", nullptr);
    const auto menu =
        reinterpret_cast<HMENU>(window ? SendMessageA(window, 0x01E1 /* MN_GETHMENU */, 0, 0) : 0);
    std::string items;
    for (UINT at = 0; menu && static_cast<int>(at) < GetMenuItemCount(menu); ++at) {
        char text[80] = "";
        GetMenuStringA(menu, at, text, sizeof text, MF_BYPOSITION);
        const UINT state = GetMenuState(menu, at, MF_BYPOSITION);
        items += std::string(state & MF_DEFAULT ? "*" : "") + (state & MF_GRAYED ? "-" : "") +
                 (state & MF_CHECKED ? "+" : "") + text + "|";
    }
    return items;
}

TEST_F(KeyList, OffersItsCommandsInAMenu) {
    GMSG::language = GMSG::French;
    open();
    const char* const kItems =
        "*For&mat...|&Description...\tF2|&R\351initialiser|-|+Aff&ich\351e|M&onter|Des&cendre|-|"
        "Copier le &jeton\tCtrl+C|-I&ns\351rer le jeton|";
    RECT row{};
    ListView_GetItemRect(list(), 1, &row, LVIR_LABEL);
    const auto ask = [&](bool byKey) {
        if (byKey) return pressKey(VK_APPS);
        moveMouse(list(), {row.left + 5, row.top + 5});
        mouse_event(MOUSEEVENTF_RIGHTDOWN, 0, 0, 0, 0);  // the list waits for what follows
        mouse_event(MOUSEEVENTF_RIGHTUP, 0, 0, 0, 0);
    };
    SetFocus(list());
    for (const bool byKey : {false, true}) {
        std::string seen;
        DialogScript script;
        script.waitUntil("the menu", [&](HWND) { return !(seen = openItems()).empty(); })
            .run([&](HWND) { pressKey(byKey ? 'C' : 'O'); });
        ask(byKey);
        // Up with the one, down with the other.
        EXPECT_TRUE(pumpFor([&] { return chosen() == (byKey ? Ids{4, 1, 5} : Ids{1, 4, 5}); }));
        EXPECT_EQ(seen, byKey ? std::string(kItems).replace(std::string(kItems).find("M&"), 0, "-")
                              : kItems);
        EXPECT_EQ(selected(), Ids{1});
    }
}

TEST_F(KeyList, KeepsTheWidthsOfItsColumns) {
    const auto width = [&](int column) { return ListView_GetColumnWidth(list(), column); };
    open();
    const int description = width(1), sample = width(4);
    dialog->close(0);
    EXPECT_EQ(folder.read("settings.ini").find("Columns"), std::string::npos) << "not the user's";
    open();
    ListView_SetColumnWidth(list(), 4, sample + 40);
    dialog->close(0);
    open();
    EXPECT_EQ(width(4), sample + 40);
    EXPECT_EQ(width(1), description - 40) << "it takes what the others leave";
    dialog->close(0);
    for (const auto& [kept, expected] : {std::pair{"96 1 2 3 4 5", sample},
                                         {"96 9 9 9 9 -9 9", sample},
                                         {"wide", sample},
                                         {"48 50 60 40 30 70 25", 140}}) {
        GMSG::writeProfile("Columns", "KeyList", RWCString(kept));
        open();
        EXPECT_EQ(width(4), expected) << kept;
        dialog->close(0);
    }
}

}  // namespace

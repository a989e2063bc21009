// The recent files in the menu of a real window, read back after every change.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "support/temp_folder.h"
#include "support/window_kit.h"
#include "toolbox/recent_files.h"

namespace {

using namespace toolbox::testing;
using Items = std::vector<std::string>;

constexpr UINT kQuit = 200;
constexpr UINT kFirst = 300;

class RecentMenu : public ::testing::Test {
  protected:
    RecentMenu() { history_.init(window_, kQuit, kFirst); }
    ~RecentMenu() override { DestroyWindow(window_); }

    /// "File", "Edit", and "Help", which opens no menu.
    static HMENU newBar() {
        const HMENU bar = CreateMenu();
        for (const auto& [title, id, item] :
             {std::tuple{"&File", kQuit, "&Quit"}, {"&Edit", 400u, "Copy"}}) {
            const HMENU menu = CreatePopupMenu();
            AppendMenuA(menu, MF_STRING, id, item);
            AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), title);
        }
        AppendMenuA(bar, MF_STRING, 500, "&Help");
        return bar;
    }
    [[nodiscard]] HMENU menu(int place) const { return GetSubMenu(GetMenu(window_), place); }
    /// The texts of a menu; "-" is a separator.
    [[nodiscard]] Items itemsOf(int place) const {
        Items items;
        for (int i = 0; i < GetMenuItemCount(menu(place)); ++i) {
            char text[100] = "";
            GetMenuStringA(menu(place), static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            const UINT state = GetMenuState(menu(place), static_cast<UINT>(i), MF_BYPOSITION);
            items.emplace_back(state & MF_SEPARATOR ? "-" : text);
        }
        return items;
    }
    void record(const Items& names) {
        for (const std::string& name : names) history_.setLogFile(RWCString(name));
    }

    HWND window_ = CreateWindowA("STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 200,
                                 nullptr, newBar(), nullptr, nullptr);
    HistoricMenuFile history_;
    TempFolder folder_;
};

TEST_F(RecentMenu, ShowsTheNewestFilesAfterOneSeparator) {
    record({"A", "B", "A"});
    EXPECT_EQ(itemsOf(0), (Items{"&Quit", "-", "&1 A", "&2 B"}));
    record({"C:\\essais n\260 7\\pont.dat", "D", "E", "F & G"});
    EXPECT_EQ(itemsOf(0), (Items{"&Quit", "-", "&1 F & G", "&2 E", "&3 D",
                                 "&4 C:\\essais n\260 7\\pont.dat", "&5 A"}));
}

TEST_F(RecentMenu, LeavesWhatAUserAppendedAndWhatTheListNoLongerHas) {
    record({"A", "B"});
    AppendMenuA(menu(0), MF_STRING, 210, "More");
    history_.lire(folder_.write("app.ini", "[Files_opened]\r\nFile_2=P\r\nFile_4=Q\r\n").c_str());
    EXPECT_EQ(itemsOf(0), (Items{"&Quit", "-", "&1 P", "&2 Q", "More"}));
    record({"C"});
    EXPECT_EQ(itemsOf(0), (Items{"&Quit", "-", "&1 C", "&2 P", "More", "&3 Q"}));
}

TEST_F(RecentMenu, FollowsTheWindowToAnotherMenuBarOrNone) {
    record({"A"});
    const HMENU before = GetMenu(window_);
    SetMenu(window_, newBar());
    DestroyMenu(before);
    record({"B"});
    EXPECT_EQ(itemsOf(0), (Items{"&Quit", "-", "&1 B", "&2 A"}));
    SetMenu(window_, nullptr);
    record({"C"});  // which only the list has
}

}  // namespace

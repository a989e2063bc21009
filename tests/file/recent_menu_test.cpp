// The recent files in the menu of a real window, read back after every change.
#include <gtest/gtest.h>

#include <string>
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

    /// "Help", which opens no menu, and "File".
    static HMENU newBar() {
        const HMENU bar = CreateMenu();
        const HMENU file = CreatePopupMenu();
        AppendMenuA(file, MF_STRING, kQuit, "&Quit");
        AppendMenuA(bar, MF_STRING, 500, "&Help");
        AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
        return bar;
    }
    [[nodiscard]] HMENU menu() const { return GetSubMenu(GetMenu(window_), 1); }
    /// The texts of a menu; "-" is a separator.
    [[nodiscard]] Items items() const {
        Items all;
        for (int i = 0; i < GetMenuItemCount(menu()); ++i) {
            char text[100] = "";
            GetMenuStringA(menu(), static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            const UINT state = GetMenuState(menu(), static_cast<UINT>(i), MF_BYPOSITION);
            all.emplace_back(state & MF_SEPARATOR ? "-" : text);
        }
        return all;
    }
    void record(const Items& names) {
        for (const std::string& name : names) history_.setLogFile(RWCString(name));
    }

    HWND window_ = CreateWindowA("STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 200,
                                 nullptr, newBar(), nullptr, nullptr);
    HistoricMenuFile history_;
    TempFolder folder_;
};

TEST_F(RecentMenu, LeavesWhatAUserAppendedAndWhatTheListNoLongerHas) {
    record({"A", "B"});
    AppendMenuA(menu(), MF_STRING, 210, "More");
    history_.lire(folder_.write("app.ini", "[Files_opened]\r\nFile_2=P\r\nFile_4=Q\r\n").c_str());
    EXPECT_EQ(items(), (Items{"&Quit", "-", "&1 P", "&2 Q", "More"}));
    record({"C"});
    EXPECT_EQ(items(), (Items{"&Quit", "-", "&1 C", "&2 P", "More", "&3 Q"}));
}

}  // namespace

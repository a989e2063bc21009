// The frame's menu, its keys, and what its commands start.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <string>

#include "dialogs/common_controls.h"
#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"
#include "toolbox/platform.h"
#include "toolbox/processes.h"

using namespace toolbox::testing;

namespace {

/// Items without a letter, whose letter chooses another one too, or that not every keyboard has.
std::string wrongMnemonics(HMENU menu) {
    std::string seen, wrong;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        std::array<char, 100> text{};
        GetMenuStringA(menu, static_cast<UINT>(i), text.data(), text.size(), MF_BYPOSITION);
        const std::string item = text.data();
        const std::size_t mark = item.find('&');
        const char letter = mark == std::string::npos ? '\0' : item.at(mark + 1);
        const auto capital = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        const bool isFree = letter > 0 && seen.find(capital) == std::string::npos;
        if (!item.empty() && !isFree) wrong += item + "; ";
        seen += capital;
        if (const HMENU submenu = GetSubMenu(menu, i)) wrong += wrongMnemonics(submenu);
    }
    return wrong;
}

TEST(FrameMenu, EveryItemHasALetterOfItsOwn) {
    for (const int id : {IDM_FRAME, IDM_FRAME + 1}) {
        const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id));
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(wrongMnemonics(menu), "") << id;
        DestroyMenu(menu);
    }
}

class MenuCommands : public ::testing::Test {
  protected:
    [[nodiscard]] Document& document() const { return workbench.document(); }
    void putSelectedBeam() const {
        Beam beam;
        beam.name = "A";
        beam.section = "IPE 300";
        document().select({Selection::OneBeam, document().put(beam)});
    }
    OpenWorkbench workbench;
};

TEST_F(MenuCommands, EditingKeysBelongToTheListOfKeysWhileItIsActive) {
    putSelectedBeam();
    workbench.command(CMD_KEY_LIST);
    const HWND dialog = FindWindowA("#32770", "Keys");
    ASSERT_NE(dialog, nullptr);
    const HWND list = GetDlgItem(dialog, IDC_KEYS);
    SetForegroundWindow(dialog);
    SetFocus(list);
    ListView_SetItemState(list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    pressKey(VK_DELETE);
    pressKey(VK_DOWN);  // after it
    EXPECT_TRUE(
        workbench.runUntil([&] { return ListView_GetNextItem(list, -1, LVNI_SELECTED) == 1; }));
    EXPECT_EQ(document().project().beams().size(), 1u);

    char key[80] = "";
    ListView_GetItemText(list, 1, 0, key, sizeof key);
    const std::string token = std::string("$") + key + "$";
    for (const WORD letter : {WORD{'C'}, WORD{VK_INSERT}}) {
        toolbox::platform::current().clipboard->setText("");
        pressKey(letter, {VK_CONTROL});
        const auto copied = [] { return toolbox::platform::current().clipboard->text(); };
        EXPECT_TRUE(workbench.runUntil([&] { return !copied().empty(); }));
        EXPECT_EQ(copied(), token);
    }
    // The others still reach the frame.
    pressKey('3', {VK_CONTROL});
    EXPECT_TRUE(workbench.runUntil(
        [&] { return workbench.workbench().drawingMode() == CMD_POINT_LOAD_MODE; }));

    for (const bool isOpen : {true, false}) {
        if (!isOpen) SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        SetForegroundWindow(workbench.frame());
        pressKey(VK_DELETE);
        EXPECT_TRUE(workbench.runUntil([&] { return document().project().beams().empty(); }));
        putSelectedBeam();
    }
}

TEST_F(MenuCommands, TheErrorLogIsShown) {
    const std::string& log = workbench.workbench().settings().log.str();
    std::ofstream(log) << "an error\n";
    const DialogScript none;
    workbench.command(CMD_OPEN_LOG);
    HWND shown = nullptr;
    EXPECT_TRUE(pumpUntil([&] { return (shown = FindWin("workbench.log", nullptr)) != nullptr; }));
    ASSERT_NE(shown, nullptr);
    PostMessageA(shown, WM_CLOSE, 0, 0);
    EXPECT_TRUE(pumpUntil([&] { return !IsWindow(shown); }));
}

}  // namespace

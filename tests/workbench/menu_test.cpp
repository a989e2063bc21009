// The frame's keys, and what its commands start.
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <string>

#include "common_controls.h"
#include "open_workbench.h"
#include "resource.h"
#include "support/window_kit.h"
#include "toolbox/platform.h"
#include "toolbox/processes.h"

using namespace toolbox::testing;

namespace {

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

    SetForegroundWindow(workbench.frame());
    pressKey(VK_DELETE);
    EXPECT_TRUE(workbench.runUntil([&] { return document().project().beams().empty(); }));
    putSelectedBeam();
    SetForegroundWindow(dialog);
    SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    SetForegroundWindow(workbench.frame());
    pressKey(VK_DELETE);
    EXPECT_TRUE(workbench.runUntil([&] { return document().project().beams().empty(); }));
}

TEST_F(MenuCommands, TheErrorLogIsShown) {
    const std::string& log = workbench.workbench().settings().log.str();
    std::ofstream(log) << "an error\n";
    const DialogScript none;
    workbench.command(CMD_OPEN_LOG);
    HWND shown = nullptr;
    EXPECT_TRUE(pumpUntil([&] { return (shown = FindWin("workbench.log", nullptr)) != nullptr; }));
    ASSERT_NE(shown, nullptr);
    std::string text;
    EXPECT_TRUE(pumpUntil([&] {
        std::array<char, 100> read{};
        if (const HWND edit = FindWindowExA(shown, nullptr, "EDIT", nullptr))
            SendMessageTimeoutA(edit, WM_GETTEXT, read.size(),
                                reinterpret_cast<LPARAM>(read.data()), SMTO_NORMAL, 1000, nullptr);
        text = read.data();
        return text.starts_with("an error");
    })) << text;
    PostMessageA(shown, WM_CLOSE, 0, 0);
    EXPECT_TRUE(pumpUntil([&] { return !IsWindow(shown); }));
}

}  // namespace

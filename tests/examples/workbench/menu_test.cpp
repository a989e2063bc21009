// The frame's keys beside a modeless dialog.
#include <gtest/gtest.h>

#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"

using namespace toolbox::testing;

namespace {

TEST(MenuCommands, EditingKeysBelongToTheListOfKeysWhileItIsActive) {
    const OpenWorkbench workbench;
    Document& document = workbench.document();
    document.select(
        {Selection::OneBeam, document.put(Beam{.name = "A", .section = "IPE 300", .loads = {}})});
    workbench.command(CMD_KEY_LIST);
    const HWND dialog = FindWindowA("#32770", "Keys");
    ASSERT_NE(dialog, nullptr);
    SetForegroundWindow(dialog);
    pressKey(VK_DELETE);
    pressKey('3', {VK_CONTROL});  // others still reach the frame
    EXPECT_TRUE(workbench.runUntil(
        [&] { return workbench.workbench().drawingMode() == CMD_POINT_LOAD_MODE; }));
    EXPECT_EQ(document.project().beams().size(), 1u);

    SetForegroundWindow(workbench.frame());
    pressKey(VK_DELETE);
    EXPECT_TRUE(workbench.runUntil([&] { return document.project().beams().empty(); }));
    pressKey('Z', {VK_CONTROL});
    EXPECT_TRUE(workbench.runUntil([&] { return document.project().beams().size() == 1; }));
    char label[64] = "";
    GetMenuStringA(workbench.workbench().frame().getFrameMenu(), CMD_REDO, label, sizeof label,
                   MF_BYCOMMAND);
    EXPECT_STREQ(label, "&Redo Delete beam\tCtrl+Y");
}

}  // namespace

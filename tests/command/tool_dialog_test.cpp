// Tool dialogs and menus on the screen: real clicks, and what a user sees of the commands.
#include "tool_dialog.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/window_kit.h"
#include "toolbox/command_manager.h"
#include "toolbox/tools.h"

using namespace toolbox::testing;

namespace {

/// What the frame was sent: "1001/0" for a command with its lParam, in order.
std::string commandsSent;
constexpr LRESULT kAnswer = 77;

LRESULT CALLBACK frameProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_COMMAND) return DefWindowProcA(window, message, wParam, lParam);
    commandsSent += std::to_string(wParam) + "/" + std::to_string(lParam) + " ";
    return kAnswer;
}

class ToolDialog : public ::testing::Test {
  protected:
    ToolDialog() {
        commandsSent.clear();
        SetWindowLongPtrA(frame, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(frameProcedure));
        palette.reset(manager->createAndManageToolDlg(1, IDD_PALETTE));
        manager->createAndManageContext(5);
        SetPointer<Tool> tools;
        tools.add(palette.get());
        const GCOMMBase::CommRec table[] = {{IDC_LINE, 0}, {IDC_CIRCLE, 0}};
        EXPECT_EQ(manager->manage(2, table, tools, 5), 1);
        dialog = palette->getHWND();
    }
    ~ToolDialog() override {
        manager.reset();
        DestroyWindow(frame);
    }
    [[nodiscard]] HWND button(int id) const { return GetDlgItem(dialog, id); }
    /// The buttons as a user sees them: '1' pressed, '0' not, in brackets when greyed.
    [[nodiscard]] std::string seen() const {
        std::string all;
        for (const int id : {IDC_LINE, IDC_CIRCLE}) {
            const std::string state = IsDlgButtonChecked(dialog, id) ? "1" : "0";
            all += IsWindowEnabled(button(id)) ? state : "[" + state + "]";
        }
        return all;
    }

    HWND frame = CreateWindowExA(0, "STATIC", "Frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 300,
                                 300, 200, nullptr, nullptr, nullptr, nullptr);
    std::unique_ptr<GCOMMBase> manager =
        std::make_unique<GCOMMBase>(frame, GetModuleHandleA(nullptr));
    std::unique_ptr<ToolDlg> palette;
    HWND dialog = nullptr;
};

TEST_F(ToolDialog, SendsItsClicksToTheFrameAndFollowsTheCommands) {
    EXPECT_FALSE(palette->isVisible()) << "created hidden";
    palette->setVisibleStatus(1, 1);
    EXPECT_TRUE(pumpUntil([&] { return IsWindowVisible(dialog) && GetActiveWindow() == dialog; }));
    pumpMessages();

    clickOn(button(IDC_CIRCLE));
    EXPECT_TRUE(pumpUntil([] { return !commandsSent.empty(); }));
    EXPECT_EQ(commandsSent, "1002/0 ") << "without the control's handle";
    EXPECT_EQ(seen(), "00") << "only the command changes the button";

    (*manager)[IDC_LINE].setCheckStatus(1);
    EXPECT_EQ(seen(), "10");
    (*manager)[IDC_CIRCLE].setCheckStatus(1);
    EXPECT_EQ(seen(), "01");
    (*manager)[IDC_LINE].setEnableStatus(0);
    EXPECT_EQ(seen(), "[0]1");
    commandsSent.clear();
    clickOn(button(IDC_LINE));
    clickOn(button(IDC_CIRCLE));
    EXPECT_TRUE(pumpUntil([] { return !commandsSent.empty(); }));
    EXPECT_EQ(commandsSent, "1002/0 ") << "a greyed button is dead";
}

TEST_F(ToolDialog, LosesItsWindowWithItsManagerAndTheOtherWayRound) {
    EXPECT_EQ(manager->unmanage(palette.get()), 0) << "it shows commands";
    std::unique_ptr<ToolDlg> gone(manager->createAndManageToolDlg(2, IDD_PALETTE));
    const HWND second = gone->getHWND();
    gone.reset();
    EXPECT_FALSE(IsWindow(second));
    EXPECT_EQ(manager->getTool(2), nullptr);

    const HWND own = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDD_PALETTE),
                                        frame, GCOMMBase::getStdToolDlgProc(), 0);
    ToolDlg unowned(3, own);
    manager->manage(&unowned, 0);
    manager.reset();
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(palette->getHWND(), nullptr);
    EXPECT_TRUE(IsWindow(own));
    SendMessageA(GetDlgItem(own, IDC_LINE), BM_CLICK, 0, 0);
    EXPECT_EQ(commandsSent, "") << "there is no frame to send it to";
    DestroyWindow(own);
}

TEST_F(ToolDialog, IsFrozenUntilItWasThawnAsOften) {
    manager->freezeAllToolDlg();
    {
        const toolbox::FrozenTools frozen(*manager);
        EXPECT_EQ(palette->getEnableStatus(), 0);
    }
    EXPECT_TRUE(manager->isAllToolDlgFrozen());
    EXPECT_FALSE(IsWindowEnabled(dialog));
    manager->thawAllToolDlg();
    EXPECT_TRUE(IsWindowEnabled(dialog));
    manager->thawAllToolDlg();
    manager->freezeAllToolDlg();
    EXPECT_FALSE(IsWindowEnabled(dialog)) << "one thaw too many does not count";

    const std::unique_ptr<ToolDlg> late(manager->createAndManageToolDlg(2, IDD_PALETTE));
    EXPECT_EQ(late->getEnableStatus(), 0) << "made while all are frozen";
    const toolbox::FrozenTools ended(*manager);
    manager.reset();  // before its guard
}

TEST_F(ToolDialog, LeavesTicksAndGreysToAMenuToo) {
    const HMENU bar = CreateMenu();
    const HMENU draw = CreatePopupMenu();
    AppendMenuA(draw, MF_STRING, IDC_LINE, "&Line");
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(draw), "&Draw");
    AppendMenuA(bar, MF_STRING, IDC_CIRCLE, "&Circle");
    SetMenu(frame, bar);
    MenuTool menu(9, bar, frame);
    Command &line = (*manager)[IDC_LINE], &circle = (*manager)[IDC_CIRCLE];
    // In a submenu and in the bar.
    const auto are = [&](UINT ofLine, UINT ofCircle) {
        const UINT shown = MF_CHECKED | MF_GRAYED;
        return (GetMenuState(bar, IDC_LINE, MF_BYCOMMAND) & shown) == ofLine &&
               (GetMenuState(bar, IDC_CIRCLE, MF_BYCOMMAND) & shown) == ofCircle;
    };
    line.setCheckStatus(1);
    circle.setEnableStatus(0);
    EXPECT_EQ(menu.add(&line), 1);
    EXPECT_EQ(menu.add(&circle), 1);
    EXPECT_TRUE(are(0, 0));
    EXPECT_EQ(menu.refresh(), 1);
    EXPECT_TRUE(are(MF_CHECKED, MF_GRAYED));
    circle.setEnableStatus(1);
    circle.setCheckStatus(1);
    line.setEnableStatus(0);
    EXPECT_TRUE(are(MF_GRAYED, MF_CHECKED));

    EXPECT_EQ(menu.setCommandCheckStatus(4242, 1), 0) << "no such item";
}

}  // namespace

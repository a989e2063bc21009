// Modeless dialogs and palettes of a frame, with its message loop, its accelerators and real keys.
#include <memory>

#include "dialog_fixture.h"
#include "support/loop_script.h"
#include "toolbox/command_manager.h"

using namespace toolbox::testing;

namespace {

/// Notes the commands that it gets.
struct Frame : MDI {
    Frame() : MDI(GetModuleHandleA(nullptr), nullptr, {.acceleratorId = IDA_FRAME}, nullptr) {}
    LRESULT frameWndProc(TarvMess& message) override {
        if (message.message == WM_COMMAND) commands += std::to_string(LOWORD(message.wParam)) + " ";
        return MDI::frameWndProc(message);
    }
    /// The commands so far.
    std::string taken() { return std::exchange(commands, {}); }

    std::string commands;
};

class FrameDialog : public DialogFixture {
  protected:
    FrameDialog() {
        EXPECT_EQ(frame.initMainWindow(SW_SHOWNORMAL), 1);
        pumpMessages();
        commands = std::make_unique<GCOMMBase>(frame.getFrame(), GetModuleHandleA(nullptr));
    }
    ~FrameDialog() override {
        commands.reset();
        if (frame.getFrame()) DestroyWindow(frame.getFrame());
        pumpMessages();
        UnregisterClassA("MDIFrame", GetModuleHandleA(nullptr));
    }
    /// Two commands, in the tool of a palette.
    void manage(Tool* tool) {
        SetPointer<Tool> tools;
        tools.add(tool);
        const GCOMMBase::CommRec table[] = {{IDC_LINE, 0}, {IDC_CIRCLE, 0}};
        EXPECT_EQ(commands->manage(2, table, tools, -1), 1);
    }

    Frame frame;
    std::unique_ptr<GCOMMBase> commands;
};

TEST_F(FrameDialog, KeepsTheKeysOfItsFieldsAndOfItsHelp) {
    TestDialog dialog;
    LoopScript script(frame);
    script
        .run([&] {
            dialog.open(nullptr);
            EXPECT_EQ(GetWindow(dialog.getHWND(), GW_OWNER), frame.getFrame());
            EXPECT_EQ(frame.registerModeless(dialog.getHWND()), 0) << "it is already";
            typeText("lol");  // L is an accelerator of its own
        })
        .until([&] { return textOf(dialog.getHWND(), IDC_NAME) == "lol"; })
        .run([&] {
            EXPECT_EQ(frame.taken(), "");
            pressKey('S', {VK_CONTROL});
        })
        .until([&] { return frame.commands == "602 "; })
        .run([&] {
            dialog.helps = 0;
            pressKey(VK_F1);
        })
        .until([&] { return frame.commands == "602 603 "; })
        .run([&] {
            dialog.helps = 1;
            pressKey(VK_F1);
            pressKey(VK_ESCAPE);
        })
        .until([&] { return !dialog.isOpen(); })
        .run([&] {
            EXPECT_EQ(frame.taken(), "602 603 ");
            SetActiveWindow(frame.getFrame());
            pressKey('C', {VK_CONTROL});
        })
        .until([&] { return frame.commands == "601 "; });
    script.play();
    EXPECT_EQ(dialog.log, "opened help 1001 help 1001 cancelled destroyed ");
}

/// A palette of two commands with a field of its own.
class Palette : public CToolDialog {
  public:
    Palette() : CToolDialog(IDD_PALETTE) {}
    std::string log;

  protected:
    int command(int control, int notification) override {
        if (notification == BN_CLICKED) log += std::to_string(control) + " ";
        return 0;
    }
    int confirmed() override {
        log += "confirmed ";
        return 1;
    }
};

using ToolDialogTest = FrameDialog;

TEST_F(ToolDialogTest, SendsItsCommandsAndKeepsItsOwnControls) {
    Palette palette;
    EXPECT_EQ(palette.create(*commands, 8), 1);
    EXPECT_EQ(palette.create(*commands, 9), 0);
    manage(palette.getTool());
    const HWND window = palette.getHWND();
    EXPECT_FALSE(IsWindowVisible(window));
    SetActiveWindow(frame.getFrame());
    EXPECT_EQ(palette.show(1), 1);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(GetActiveWindow(), frame.getFrame()) << "the user goes on in the document";

    frame.commands.clear();
    SendMessageA(palette.control(IDC_CIRCLE), BM_CLICK, 0, 0);
    SendMessageA(palette.control(IDC_NOTE), BM_CLICK, 0, 0);
    EXPECT_EQ(frame.taken(), "1007 ");
    EXPECT_EQ(palette.log, "1002 ");
    (*commands)[IDC_LINE].setCheckStatus(1);
    (*commands)[IDC_CIRCLE].setEnableStatus(0);
    EXPECT_EQ(IsDlgButtonChecked(window, IDC_LINE), BST_CHECKED);
    EXPECT_FALSE(IsWindowEnabled(palette.control(IDC_CIRCLE)));
    moveMouse(palette.control(IDC_LINE), {10, 5});
    EXPECT_TRUE(pumpUntil([] { return shownTip() == "Line"; })) << shownTip();

    SendMessageA(window, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(palette.log, "1002 1 confirmed ");
    SetActiveWindow(window);
    SendMessageA(window, WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(GetActiveWindow(), frame.getFrame());
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ(palette.getHWND(), window) << "it is only hidden";
    SetActiveWindow(owner);
    BringWindowToTop(frame.getFrame());
    palette.show(1);
    HWND above = frame.getFrame();
    while (above && above != window) above = GetWindow(above, GW_HWNDPREV);
    EXPECT_EQ(above, window) << "over its frame, which was raised";
}

TEST_F(ToolDialogTest, LeavesAWindowThatItTookOverToItsTool) {
    const std::unique_ptr<ToolDlg> tool(commands->createAndManageToolDlg(8, IDD_PALETTE));
    manage(tool.get());
    {
        Palette palette;
        EXPECT_EQ(palette.attach(tool.get()), 1);
        EXPECT_EQ(palette.attach(tool.get()), 0) << "it has one";
        SendMessageA(palette.control(IDC_NOTE), BM_CLICK, 0, 0);
        EXPECT_EQ(palette.log, "1002 ");
    }
    ASSERT_NE(tool->getHWND(), nullptr);
    frame.commands.clear();
    SendDlgItemMessageA(tool->getHWND(), IDC_LINE, BM_CLICK, 0, 0);
    EXPECT_EQ(frame.taken(), "1006 ");
}

TEST_F(ToolDialogTest, EndsWithItsManagerItsFrameOrByItself) {
    auto palette = std::make_unique<Palette>();
    palette->create(*commands, 8);
    manage(palette->getTool());
    commands.reset();
    EXPECT_EQ(palette->getHWND(), nullptr);
    EXPECT_EQ(palette->getTool(), nullptr);
    EXPECT_EQ(palette->show(1), 0);

    commands = std::make_unique<GCOMMBase>(frame.getFrame(), GetModuleHandleA(nullptr));
    EXPECT_EQ(palette->create(*commands, 8), 1) << "with another manager";
    manage(palette->getTool());
    const HWND window = palette->getHWND();
    palette.reset();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(commands->getTool(8), nullptr);

    Palette last;
    last.create(*commands, 8);
    DestroyWindow(frame.getFrame());
    EXPECT_EQ(last.getHWND(), nullptr);
}

}  // namespace

// Modeless dialogs and palettes of a frame, with its message loop, its accelerators and real keys.
#include <memory>

#include "dialog_fixture.h"
#include "support/loop_script.h"
#include "toolbox/command_manager.h"

using namespace toolbox::testing;

namespace {

/// Notes the commands that the frame gets, and may make something when the frame is shown.
struct Application : MDIApplication {
    void frameDestroyed() override {}
    int frameCreated(HWND window, HINSTANCE) override {
        if (created) created(window);
        return 1;
    }
    void classRegistered(HINSTANCE) override {}
    int command(HWND, WPARAM wParam, LPARAM) override {
        commands += std::to_string(LOWORD(wParam)) + " ";
        return 1;
    }
    int privateMessage(HWND, UINT, WPARAM, LPARAM) override { return 0; }
    void systemCommand(HWND, WPARAM, LPARAM) override {}
    void childActivated(HWND) override {}
    void frameMoved(int) override {}
    void childClosed(HWND) override {}

    std::string commands;
    std::function<void(HWND)> created;
};

class FrameDialog : public DialogFixture {
  protected:
    ~FrameDialog() override {
        if (frame.getFrame()) DestroyWindow(frame.getFrame());
        pumpMessages();
        UnregisterClassA("MDIFrame", GetModuleHandleA(nullptr));
    }
    void open() {
        ASSERT_EQ(frame.initMainWindow(SW_SHOWNORMAL), 1);
        pumpMessages();
    }
    /// The commands so far.
    std::string taken() { return std::exchange(application.commands, {}); }

    Application application;
    MDI frame{GetModuleHandleA(nullptr),
              nullptr,
              {.title = "Frame", .acceleratorId = IDA_FRAME, .firstChildId = 5000},
              &application};
};

TEST_F(FrameDialog, KeepsTheKeysThatEditItsFields) {
    open();
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
            SendMessageA(dialog.control(IDC_NAME), EM_SETSEL, 0, -1);
            pressKey('C', {VK_CONTROL});
            pressKey(VK_TAB);
            pressKey('V', {VK_CONTROL});
        })
        .until([&] { return textOf(dialog.getHWND(), IDC_NOTE) == "lol"; })
        .run([&] {
            pressKey(VK_HOME);
            pressKey(VK_DELETE);
        })
        .until([&] { return textOf(dialog.getHWND(), IDC_NOTE) == "ol"; })
        .run([&] {
            EXPECT_EQ(taken(), "");
            EXPECT_EQ(frame.isAcceleratorFrozen(), 0) << "the others are at work";
            pressKey('S', {VK_CONTROL});
        })
        .until([&] { return application.commands == "602 "; })
        .run([&] { pressKey(VK_ESCAPE); })
        .until([&] { return !dialog.isOpen(); })
        .run([&] {
            EXPECT_EQ(taken(), "602 ");
            SetActiveWindow(frame.getFrame());
            pressKey('C', {VK_CONTROL});
        })
        .until([&] { return application.commands == "601 "; });
    script.play();
}

TEST_F(FrameDialog, AsksTheFrameForHelpThatItHasNot) {
    open();
    TestDialog dialog;
    LoopScript script(frame);
    script
        .run([&] {
            dialog.open(nullptr);
            pressKey(VK_F1);
        })
        .until([&] { return dialog.log == "opened help 1001 "; })
        .run([&] {
            EXPECT_EQ(taken(), "");
            dialog.helps = 0;
            pressKey(VK_F1);
        })
        .until([&] { return application.commands == "603 "; });
    script.play();
    EXPECT_EQ(dialog.log, "opened help 1001 help 1001 ") << "once for each key";
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

class ToolDialogTest : public FrameDialog {
  protected:
    /// Two commands, in the tool of the palette.
    void manage(Tool* tool) {
        SetPointer<Tool> tools;
        tools.add(tool);
        const GCOMMBase::CommRec table[] = {{IDC_LINE, 0}, {IDC_CIRCLE, 0}};
        EXPECT_EQ(manager->manage(2, table, tools, -1), 1);
    }
    void openFrame() {
        open();
        manager = std::make_unique<GCOMMBase>(frame.getFrame(), GetModuleHandleA(nullptr));
    }
    std::unique_ptr<GCOMMBase> manager;
};

TEST_F(ToolDialogTest, SendsItsCommandsAndKeepsItsOwnControls) {
    openFrame();
    for (const bool isAttached : {false, true}) {
        Palette palette;
        std::unique_ptr<ToolDlg> tool;
        if (isAttached) {
            tool.reset(manager->createAndManageToolDlg(8, IDD_PALETTE));
            EXPECT_EQ(palette.attach(tool.get()), 1);
            EXPECT_EQ(palette.attach(tool.get()), 0) << "it has one";
        } else {
            EXPECT_EQ(palette.create(*manager, 8), 1);
            EXPECT_EQ(palette.create(*manager, 9), 0);
        }
        manage(isAttached ? tool.get() : palette.getTool());
        const HWND window = palette.getHWND();
        EXPECT_FALSE(IsWindowVisible(window));
        EXPECT_EQ(GetWindow(window, GW_OWNER), frame.getFrame());
        SetActiveWindow(frame.getFrame());
        EXPECT_EQ(palette.show(1), 1);
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_EQ(GetActiveWindow(), frame.getFrame()) << "the user goes on in the document";

        SendMessageA(palette.control(IDC_CIRCLE), BM_CLICK, 0, 0);
        SendMessageA(palette.control(IDC_NOTE), BM_CLICK, 0, 0);
        EXPECT_EQ(taken(), "1007 ");
        EXPECT_EQ(palette.log, "1002 ");
        (*manager)[IDC_LINE].setCheckStatus(1);
        (*manager)[IDC_CIRCLE].setEnableStatus(0);
        EXPECT_EQ(IsDlgButtonChecked(window, IDC_LINE), BST_CHECKED);
        EXPECT_FALSE(IsWindowEnabled(palette.control(IDC_CIRCLE)));

        SendMessageA(window, WM_COMMAND, IDOK, 0);
        EXPECT_EQ(palette.log, "1002 1 confirmed ");
        SetActiveWindow(window);
        SendMessageA(window, WM_COMMAND, IDCANCEL, 0);
        EXPECT_EQ(GetActiveWindow(), frame.getFrame());
        EXPECT_TRUE(IsWindowVisible(window));
        SendMessageA(window, WM_CLOSE, 0, 0);
        EXPECT_FALSE(IsWindowVisible(window));
        EXPECT_EQ(palette.getHWND(), window) << "it is only hidden";
        for (const int id : {IDC_LINE, IDC_CIRCLE}) {
            Command& command = (*manager)[id];
            manager->unmanage(&command);
        }
    }
}

TEST_F(ToolDialogTest, LeavesAWindowThatItTookOverToItsTool) {
    openFrame();
    const std::unique_ptr<ToolDlg> tool(manager->createAndManageToolDlg(8, IDD_PALETTE));
    manage(tool.get());
    { EXPECT_EQ(Palette().attach(tool.get()), 1); }
    ASSERT_NE(tool->getHWND(), nullptr);
    SendDlgItemMessageA(tool->getHWND(), IDC_LINE, BM_CLICK, 0, 0);
    EXPECT_EQ(taken(), "1006 ");
}

TEST_F(ToolDialogTest, EndsWithItsManagerItsFrameOrByItself) {
    openFrame();
    auto palette = std::make_unique<Palette>();
    palette->create(*manager, 8);
    manage(palette->getTool());
    manager.reset();
    EXPECT_EQ(palette->getHWND(), nullptr);
    EXPECT_EQ(palette->getTool(), nullptr);
    EXPECT_EQ(palette->show(1), 0);

    manager = std::make_unique<GCOMMBase>(frame.getFrame(), GetModuleHandleA(nullptr));
    EXPECT_EQ(palette->create(*manager, 8), 1) << "with another manager";
    manage(palette->getTool());
    const HWND window = palette->getHWND();
    palette.reset();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(manager->getTool(8), nullptr);

    Palette last;
    last.create(*manager, 8);
    DestroyWindow(frame.getFrame());
    EXPECT_EQ(last.getHWND(), nullptr);
}

BOOL CALLBACK takeTip(HWND window, LPARAM text) {
    if (isOfClass(window, "tooltips_class32") && IsWindowVisible(window))
        *reinterpret_cast<std::string*>(text) = textOf(window);
    return TRUE;
}

/// The text of the tip that is shown; empty while there is none.
std::string shownTip() {
    std::string text;
    EnumThreadWindows(GetCurrentThreadId(), takeTip, reinterpret_cast<LPARAM>(&text));
    return text;
}

TEST_F(ToolDialogTest, TipsTellWhatItsCommandsDo) {
    openFrame();
    Palette palette;
    palette.create(*manager, 8);
    manage(palette.getTool());
    palette.show(1);
    pumpMessages();
    moveMouse(palette.control(IDC_LINE), {10, 5});
    EXPECT_TRUE(pumpUntil([] { return shownTip() == "Line"; })) << shownTip();
    moveMouse(palette.control(IDC_CIRCLE), {10, 5});
    EXPECT_TRUE(pumpUntil([] { return shownTip().empty(); })) << "it has no text";
    manager.reset();
}

/// The window is above the other, further up or at the top.
bool isAbove(HWND window, HWND other) {
    for (HWND each = GetWindow(other, GW_HWNDPREV); each; each = GetWindow(each, GW_HWNDPREV))
        if (each == window) return true;
    return false;
}

TEST_F(ToolDialogTest, StandsAboveTheFrameFromTheStart) {
    std::unique_ptr<ToolDlg> tool;
    Palette palette;
    application.created = [&](HWND window) {
        manager = std::make_unique<GCOMMBase>(window, GetModuleHandleA(nullptr));
        tool.reset(manager->createAndManageToolDlg(7, IDD_PALETTE));
        palette.create(*manager, 8);
        tool->setVisibleStatus(1, 0);
        palette.show(1);
    };
    open();
    const auto expectAbove = [&](const char* when) {
        EXPECT_TRUE(isAbove(tool->getHWND(), frame.getFrame())) << when;
        EXPECT_TRUE(isAbove(palette.getHWND(), frame.getFrame())) << when;
    };
    expectAbove("made");
    moveMouse(frame.getFrame(), {400, 300});
    expectAbove("with the pointer on the frame");
    tool->setVisibleStatus(0, 0);
    palette.show(0);
    SetActiveWindow(owner);
    BringWindowToTop(owner);
    SetActiveWindow(frame.getFrame());
    BringWindowToTop(frame.getFrame());
    tool->setVisibleStatus(1, 0);
    palette.show(1);
    expectAbove("shown over a frame that was raised");
    EXPECT_EQ(GetActiveWindow(), frame.getFrame());
    manager.reset();
}

}  // namespace

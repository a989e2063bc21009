// The message loop with a real keyboard: accelerators, system accelerators, modeless dialogs.
#include "frame_fixture.h"
#include "support/loop_script.h"

namespace {

using toolbox::testing::focusedControl;
using toolbox::testing::LoopScript;
using toolbox::testing::pressKey;
using toolbox::testing::textOf;
using toolbox::testing::typeText;

/// A modeless dialog with two fields.
HWND openPalette(HWND owner) {
    return CreateDialogParamA(nullptr, "PALETTE", owner, nullptr, 0);
}

TEST_F(FrameTest, TurnsKeysIntoCommandsUnlessFrozen) {
    open();
    const HWND a = addDocument("A").getHWND();
    addDocument("B");
    const std::string byKey = std::to_string(MAKELONG(ID_TEST_NEW, 1));
    LoopScript script(frame);
    script.run([] { pressKey('N', {VK_CONTROL}); })
        .until([&] {
            return log == Log{"command " + byKey + " child", "B 273 " + byKey};
        })
        .run([&] {
            log.clear();
            frame.freezeAccelerator();
            pressKey('N', {VK_CONTROL});
            pressKey('W', {VK_CONTROL});
            pressKey(VK_F6, {VK_CONTROL});  // the documents' own keys still work
        })
        .until([&] { return frame.getActiveMDIChild() == a; })
        .run([&] {
            EXPECT_EQ(log, Log{});
            frame.thawAccelerator();
            pressKey('W', {VK_CONTROL});  // the frame's command, by key
        })
        .until([&] { return !IsWindow(a); })
        .run([&] {
            log.clear();
            frame.setMDIAccel(nullptr);
            pressKey('N', {VK_CONTROL});
            pressKey(VK_F4, {VK_CONTROL});
        })
        .until([&] {
            return log == Log{"B 16 0", "B deleted"};
        })
        .run([&] {
            log.clear();
            frame.setMDIMenu(nullptr, 0);  // the frame's own accelerators with its own menu
            pressKey('N', {VK_CONTROL});
        })
        .until([&] { return log == Log{"command " + byKey}; });
    script.play();
}

TEST_F(FrameTest, ThawsAtOnceHoweverOftenFrozen) {
    frame.freezeAccelerator();
    frame.freezeAccelerator();
    frame.thawAccelerator();
    EXPECT_EQ(frame.isAcceleratorFrozen(), 0);
    {
        const toolbox::AcceleratorFreeze outer(frame);
        { const toolbox::AcceleratorFreeze inner(frame); }
        EXPECT_EQ(frame.isAcceleratorFrozen(), 1);
    }
    EXPECT_EQ(frame.isAcceleratorFrozen(), 0);
}

TEST_F(FrameTest, GivesRegisteredDialogsTheirKeys) {
    open();
    const HWND palette = openPalette(frame.getFrame());
    ASSERT_NE(palette, nullptr);
    EXPECT_EQ(frame.registerModeless(palette), 1);
    EXPECT_EQ(frame.registerModeless(palette), 0);
    EXPECT_EQ(frame.registerModeless(nullptr), 0);
    LoopScript script(frame);
    script.run([&] { SetFocus(GetDlgItem(palette, IDC_TEST_FIRST)); })
        .run([] { typeText("12\t34"); })
        .until([&] { return textOf(palette, IDC_TEST_SECOND) == "34"; })
        .run([&] {
            EXPECT_EQ(textOf(palette, IDC_TEST_FIRST), "12");
            EXPECT_EQ(frame.unregisterModeless(palette), 1);
            pressKey(VK_TAB);
            typeText("5");
        })
        .until([&] { return textOf(palette, IDC_TEST_SECOND).find('5') != std::string::npos; });
    script.play();
    EXPECT_EQ(focusedControl(), IDC_TEST_SECOND);  // the key was no dialog's key
    EXPECT_EQ(frame.unregisterModeless(palette), 0);
    DestroyWindow(palette);
}

TEST_F(FrameTest, SwitchesDialogsOffAndOnInNestedFashion) {
    open();
    const HWND first = openPalette(frame.getFrame());
    const HWND disabled = openPalette(frame.getFrame());
    EnableWindow(disabled, FALSE);
    frame.registerModeless(first);
    frame.registerModeless(disabled);

    struct Step {
        int on;
        int dispatches;
        BOOL enabled;
    };
    const Step steps[] = {{1, 1, TRUE}, {0, 0, FALSE}, {0, 0, FALSE}, {1, 0, FALSE},
                          {1, 1, TRUE}, {1, 1, TRUE},  {0, 0, FALSE}, {1, 1, TRUE}};
    for (const Step& step : steps) {
        frame.setModelessDispatch(step.on);
        EXPECT_EQ(frame.getModelessDispatch(), step.dispatches);
        EXPECT_EQ(IsWindowEnabled(first), step.enabled);
        EXPECT_FALSE(IsWindowEnabled(disabled));
    }
    try {
        const toolbox::ModelessOff off(frame);
        EXPECT_FALSE(IsWindowEnabled(first));
        throw 1;
    } catch (int) {
    }
    EXPECT_TRUE(IsWindowEnabled(first));
    DestroyWindow(first);
    DestroyWindow(disabled);
}

TEST_F(FrameTest, GivesActivationBackToAModelessDialog) {
    open();
    const HWND palette = openPalette(frame.getFrame());
    SetActiveWindow(palette);
    ASSERT_EQ(GetActiveWindow(), palette);
    for (const int activated : {0, 1}) {
        frame.activations = 0;
        send(WM_ACTIVATEAPP, static_cast<WPARAM>(activated), 0);
        EXPECT_EQ(frame.activations, activated);  // active for a moment
        EXPECT_EQ(GetActiveWindow(), palette);
    }
    DestroyWindow(palette);
}

}  // namespace

// The message loop with a real keyboard: accelerators, system accelerators, modeless dialogs.
#include <functional>

#include "frame_fixture.h"

namespace {

using toolbox::testing::pressKey;
using toolbox::testing::textOf;
using toolbox::testing::typeText;

void CALLBACK leaveLoop(HWND, UINT, UINT_PTR, DWORD) {
    PostQuitMessage(42);
}

/// Runs the frame's own loop until a condition holds; false after some seconds.
bool runUntil(MDI& frame, const std::function<bool()>& condition) {
    const ULONGLONG giveUp = GetTickCount64() + 5000;
    while (!condition() && GetTickCount64() < giveUp) {
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, leaveLoop);
        EXPECT_EQ(frame.run(SW_SHOWNA), 42);
        KillTimer(nullptr, timer);
    }
    return condition();
}

/// A modeless dialog with two fields.
HWND openPalette(HWND owner) {
    return CreateDialogParamA(nullptr, "PALETTE", owner, nullptr, 0);
}

TEST_F(FrameTest, TurnsKeysIntoCommandsUnlessFrozen) {
    open();
    const HWND a = addDocument("A").getHWND();
    addDocument("B");
    const std::string byKey = std::to_string(MAKELONG(ID_TEST_NEW, 1));
    pressKey('N', {VK_CONTROL});
    const Log expected{"command " + byKey + " child", "B 273 " + byKey};
    EXPECT_TRUE(runUntil(frame, [&] { return log == expected; }));
    log.clear();
    frame.freezeAccelerator();
    pressKey('N', {VK_CONTROL});
    pressKey('W', {VK_CONTROL});
    pressKey(VK_F6, {VK_CONTROL});  // the documents' own keys still work
    EXPECT_TRUE(runUntil(frame, [&] { return frame.getActiveMDIChild() == a; }));
    EXPECT_EQ(log, Log{});
    frame.thawAccelerator();
    pressKey('W', {VK_CONTROL});  // the frame's command, by key
    EXPECT_TRUE(runUntil(frame, [&] { return !IsWindow(a); }));
}

TEST_F(FrameTest, GivesRegisteredDialogsTheirKeys) {
    open();
    const HWND palette = openPalette(frame.getFrame());
    EXPECT_EQ(frame.registerModeless(palette), 1);
    SetFocus(GetDlgItem(palette, IDC_TEST_FIRST));
    typeText("12\t34");
    EXPECT_TRUE(runUntil(frame, [&] { return textOf(palette, IDC_TEST_SECOND) == "34"; }));
    EXPECT_EQ(frame.unregisterModeless(palette), 1);
    DestroyWindow(palette);
}

TEST_F(FrameTest, SwitchesDialogsOffAndOnInNestedFashion) {
    open();
    const HWND first = openPalette(frame.getFrame());
    const HWND disabled = openPalette(frame.getFrame());
    EnableWindow(disabled, FALSE);
    frame.registerModeless(first);
    frame.registerModeless(disabled);

    for (const auto& [on, dispatches] :
         {std::pair{1, 1}, {0, 0}, {0, 0}, {1, 0}, {1, 1}, {1, 1}, {0, 0}, {1, 1}}) {
        frame.setModelessDispatch(on);
        EXPECT_EQ(frame.getModelessDispatch(), dispatches);
        EXPECT_EQ(IsWindowEnabled(first), dispatches);
        EXPECT_FALSE(IsWindowEnabled(disabled));
    }
    DestroyWindow(first);
    DestroyWindow(disabled);
}

}  // namespace

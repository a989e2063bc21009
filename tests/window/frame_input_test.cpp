// The message loop with a real keyboard: accelerators, system accelerators, modeless dialogs.
#include "frame_fixture.h"
#include "support/loop_script.h"

namespace {

using toolbox::testing::LoopScript;
using toolbox::testing::pressKey;

/// A modeless dialog with two fields.
HWND openPalette(HWND owner) {
    return CreateDialogParamA(nullptr, "PALETTE", owner, nullptr, 0);
}

TEST_F(FrameTest, TurnsKeysIntoCommandsUnlessFrozen) {
    open();
    const HWND a = addDocument("A").getHWND();
    addDocument("B");
    const std::string byKey = std::to_string(MAKELONG(ID_TEST_NEW, 1));
    const Log expected{"command " + byKey + " child", "B 273 " + byKey};
    LoopScript(frame)
        .run([] { pressKey('N', {VK_CONTROL}); })
        .until([&] { return log == expected; })
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
        .play();
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

// The message loop with a real keyboard: accelerators, and those of the documents.
#include "frame_fixture.h"
#include "support/loop_script.h"

namespace {

using toolbox::testing::LoopScript;
using toolbox::testing::pressKey;

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

}  // namespace

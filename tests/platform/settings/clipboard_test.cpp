// The clipboard between programs (Windows only).
#include <gtest/gtest.h>

#include <future>

#include "toolbox/platform.h"

namespace {

TEST(Clipboard, IsOpenToOtherProgramsAndLeftAloneWhileOneHasIt) {
    auto& clipboard = *toolbox::platform::current().clipboard;
    EXPECT_EQ(clipboard.setText("$LONG$ caf\351"), 0u);
    std::promise<void> tried;
    std::promise<void> held;
    const auto other = std::async(std::launch::async, [&] {
        const HWND window =
            CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
        EXPECT_TRUE(OpenClipboard(window));
        const HANDLE bytes = GetClipboardData(CF_TEXT);
        EXPECT_STREQ(static_cast<const char*>(GlobalLock(bytes)), "$LONG$ caf\351");
        GlobalUnlock(bytes);
        held.set_value();
        tried.get_future().wait();
        CloseClipboard();
        DestroyWindow(window);
    });
    held.get_future().wait();
    EXPECT_EQ(clipboard.setText("after"), ERROR_ACCESS_DENIED);
    tried.set_value();
    other.wait();
    EXPECT_EQ(clipboard.text(), "$LONG$ caf\351");
}

}  // namespace

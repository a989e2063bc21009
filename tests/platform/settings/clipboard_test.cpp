// The clipboard, and between programs (Windows only).
#include <gtest/gtest.h>

#include <future>
#include <string>

#include "toolbox/platform.h"

namespace {

using namespace std::string_literals;

TEST(Clipboard, KeepsBytesUnderANameBesideTheText) {
    auto& clipboard = *toolbox::platform::current().clipboard;
    for (const std::string& bytes : {"\0a\0\377"s, ""s, std::string(100'001, 'q')}) {
        ASSERT_EQ(clipboard.setData("Test format", bytes, "caf\351"), 0u);
        EXPECT_EQ(clipboard.text(), "caf\351");
        EXPECT_TRUE(clipboard.data("Test format") == bytes) << bytes.size();
        EXPECT_EQ(clipboard.data("Other format"), "");
    }
    clipboard.setText("only a text");
    EXPECT_EQ(clipboard.data("Test format"), "");
}

#if defined(_WIN32)
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
#endif

}  // namespace

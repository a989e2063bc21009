#include <gtest/gtest.h>

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

}  // namespace

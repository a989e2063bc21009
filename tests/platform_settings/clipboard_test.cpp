#include <gtest/gtest.h>

#include "toolbox/platform.h"

namespace {

TEST(Clipboard, HoldsTheTextSetLast) {
    toolbox::platform::Clipboard& clipboard = *toolbox::platform::current().clipboard;
    for (const char* text : {"$VOLT$", "", "caf\xE9 \x80"}) {
        EXPECT_EQ(clipboard.setText(text), 0u);
        EXPECT_EQ(clipboard.text(), text);
    }
}

}  // namespace

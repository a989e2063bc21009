// The library's message boxes on a real desktop.
#include <gtest/gtest.h>

#include "support/box_answerer.h"
#include "toolbox/keys.h"
#include "toolbox/text.h"

namespace {

using toolbox::testing::BoxAnswerer;
using toolbox::testing::SeenBox;

struct MessageBoxTest : ::testing::Test {
    MessageBoxTest() {
        GMSG::initStaticVars();
        GMSG::setAppTitle("Pont n\260 7");
    }
    ~MessageBoxTest() override { GMSG::destroyStaticVars(); }
    GMSG service;
};

TEST_F(MessageBoxTest, ShowsIconButtonsAndTextAndReturnsTheAnswer) {
    BoxAnswerer answerer({IDNO});
    EXPECT_EQ(GMSG::errorMsg("%s: %d%%", MB_YESNO | MB_ICONQUESTION, "D\351fini", 50), IDNO);
    ASSERT_EQ(answerer.seen().size(), 1u);
    const SeenBox& box = answerer.seen()[0];
    EXPECT_EQ(box.caption, "Pont n\260 7");
    EXPECT_EQ(box.text, "D\351fini: 50%");
    EXPECT_EQ(box.buttons, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(box.icon, LoadIconA(nullptr, IDI_QUESTION));
    EXPECT_TRUE(box.hasDefaultFocus);
}

TEST(FormatDialogs, AreNotShownWithoutTheirTemplates) {
    // This program has no resources.
    UDKeyData key("VOLT");
    key.setFormat(RealFormat());
    BoxAnswerer answerer({});
    EXPECT_EQ(RealFormat().setFormatDlg(nullptr, key), 0);
}

}  // namespace

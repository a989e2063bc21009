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
    ~MessageBoxTest() override {
        GMSG::setParent(nullptr);
        GMSG::destroyStaticVars();
    }
    GMSG service;
};

TEST_F(MessageBoxTest, ShowsIconButtonsAndTextAndReturnsTheAnswer) {
    const struct {
        unsigned short flags;
        const char* icon;
        std::vector<int> buttons;
        int answer;
    } cases[] = {
        {MB_OK, nullptr, {IDOK}, IDOK},
        {MB_OKCANCEL | MB_ICONSTOP, IDI_HAND, {IDOK, IDCANCEL}, IDCANCEL},
        {MB_YESNO | MB_ICONQUESTION, IDI_QUESTION, {IDYES, IDNO}, IDNO},
        {MB_YESNOCANCEL | MB_ICONEXCLAMATION, IDI_EXCLAMATION, {IDYES, IDNO, IDCANCEL}, IDYES},
        {MB_OK | MB_ICONINFORMATION, IDI_ASTERISK, {IDOK}, IDOK}};
    for (const auto& c : cases) {
        BoxAnswerer answerer({c.answer});
        EXPECT_EQ(GMSG::errorMsg("%s: %d%%", c.flags, "D\351fini", 50), c.answer);
        ASSERT_EQ(answerer.seen().size(), 1u);
        const SeenBox& box = answerer.seen()[0];
        EXPECT_EQ(box.caption, "Pont n\260 7");
        EXPECT_EQ(box.text, "D\351fini: 50%");
        EXPECT_EQ(box.buttons, c.buttons);
        EXPECT_EQ(box.icon, c.icon ? LoadIconA(nullptr, c.icon) : nullptr) << c.flags;
        EXPECT_TRUE(box.hasDefaultFocus);
    }
}

TEST_F(MessageBoxTest, BelongsToItsParentWhileThatLives) {
    const HWND owner = CreateWindowA("STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100,
                                     nullptr, nullptr, nullptr, nullptr);
    GMSG::setParent(owner);
    BoxAnswerer answerer({IDOK, IDOK});
    GMSG::errorMsg("owned", MB_OK);
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);
    EXPECT_EQ(GMSG::isValidParent(), 0);
    GMSG::errorMsg("orphan", MB_OK);
    EXPECT_EQ(answerer.seen().at(0).owner, owner);
    EXPECT_EQ(answerer.seen().at(1).owner, nullptr);
}

TEST(FormatDialogs, AreNotShownWithoutTheirTemplates) {
    // This program has no resources.
    UDKeyData key("VOLT");
    key.setFormat(RealFormat());
    BoxAnswerer answerer({});
    EXPECT_EQ(RealFormat().setFormatDlg(nullptr, key), 0);
}

}  // namespace

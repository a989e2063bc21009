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
    struct Case {
        unsigned short flags;
        const char* icon;
        std::vector<int> buttons;
        int answer;
    };
    const Case cases[] = {
        {MB_OK, nullptr, {IDOK}, IDOK},
        {MB_OKCANCEL | MB_ICONSTOP, IDI_HAND, {IDOK, IDCANCEL}, IDCANCEL},
        {MB_YESNO | MB_ICONQUESTION, IDI_QUESTION, {IDYES, IDNO}, IDNO},
        {MB_YESNOCANCEL | MB_ICONEXCLAMATION, IDI_EXCLAMATION, {IDYES, IDNO, IDCANCEL}, IDYES},
        {MB_OK | MB_ICONINFORMATION, IDI_ASTERISK, {IDOK}, IDOK}};
    for (const Case& c : cases) {
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

/// Wide enough to be a frame, and its own thread's only window.
struct Owner {
    Owner() {
        window = CreateWindowExA(0, "STATIC", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                                 100, nullptr, nullptr, nullptr, nullptr);
    }
    ~Owner() { DestroyWindow(window); }
    HWND window;
};

TEST_F(MessageBoxTest, BelongsToItsParentWhileThatLives) {
    {
        const Owner owner;
        GMSG::setParent(owner.window);
        EXPECT_EQ(GMSG::isValidParent(), 1);
        BoxAnswerer answerer({IDOK});
        GMSG::errorMsg("owned", MB_OK);
        EXPECT_EQ(answerer.seen().at(0).owner, owner.window);
        EXPECT_TRUE(IsWindowEnabled(owner.window));
    }
    EXPECT_EQ(GMSG::isValidParent(), 0);
    BoxAnswerer answerer({IDOK});
    GMSG::errorMsg("orphan", MB_OK);
    EXPECT_EQ(answerer.seen().at(0).owner, nullptr);
}

HWND watched = nullptr;
bool wasEnabled = true;
void CALLBACK noteWhetherEnabled(HWND, UINT, UINT_PTR, DWORD) {
    if (watched && !IsWindowEnabled(watched)) wasEnabled = false;
}

TEST_F(MessageBoxTest, StopsTheWholeTask) {
    // An ownerless box leaves the thread's windows enabled unless it is task-modal.
    const Owner bystander;
    watched = bystander.window;
    wasEnabled = true;
    const UINT_PTR timer = SetTimer(nullptr, 0, 1, noteWhetherEnabled);
    BoxAnswerer answerer({IDOK});
    ShowMsgBox("Title", "Text", MB_OK);
    KillTimer(nullptr, timer);
    watched = nullptr;
    EXPECT_FALSE(wasEnabled);
    EXPECT_TRUE(IsWindowEnabled(bystander.window));
}

TEST_F(MessageBoxTest, TellsOfAMissingText) {
    BoxAnswerer answerer({IDOK});
    EXPECT_STREQ(GetString(nullptr, 54321), "54321");
    const SeenBox& box = answerer.seen().at(0);
    EXPECT_EQ(box.caption, "Fatal error");
    EXPECT_EQ(box.text, "String resource not found\n\nResource ID = 54321");
    EXPECT_EQ(box.icon, LoadIconA(nullptr, IDI_HAND));
}

TEST(FormatDialogs, AreNotShownWithoutTheirTemplates) {
    // This program has no resources.
    UDKeyData key("VOLT");
    key.setFormat(RealFormat());
    BoxAnswerer answerer({});
    EXPECT_EQ(RealFormat().setFormatDlg(nullptr, key), 0);
}

}  // namespace

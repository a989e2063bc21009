// The message service and the controls of a real dialog.
#include "controls_test.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>
#include <tuple>

#include "support/box_answerer.h"
#include "support/window_kit.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox::testing;

INT_PTR CALLBACK nothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

class Controls : public ::testing::Test {
  protected:
    Controls() : dialog_(CreateDialogParamA(nullptr, "CONTROLS", nullptr, nothing, 0)) {
        for (const int combo : {IDC_TEST_COMBO, IDC_TEST_LIST})
            for (const char* item : {"125", "12.50", "acier S235"})
                SendDlgItemMessageA(dialog_, combo, CB_ADDSTRING, 0,
                                    reinterpret_cast<LPARAM>(item));
        ShowWindow(dialog_, SW_SHOW);
        GMSG::initStaticVars();
        GMSG::setParent(dialog_);
        GMSG::setInstance(GetModuleHandleA(nullptr));
    }
    ~Controls() override {
        GMSG::setInstance(nullptr);
        GMSG::setParent(nullptr);
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
        DestroyWindow(dialog_);
    }
    std::string edit() { return textOf(dialog_, IDC_TEST_EDIT); }

    GMSG service_;
    HWND dialog_;
};

TEST_F(Controls, ShowNumbersAsTheyPrint) {
    GMSG::setInt(IDC_TEST_EDIT, INT_MIN);
    EXPECT_EQ(edit(), "-2147483648");
    GMSG::setDouble(IDC_TEST_EDIT, 1.0 / 3, 40);
    EXPECT_EQ(edit().size(), 41u);
    GMSG::setFormatDouble(IDC_TEST_EDIT, 3.14159, IDS_TEST_DISPLAY);
    EXPECT_EQ(edit(), "0003.142 m");
    GMSG::setFormatDouble(IDC_TEST_EDIT, 3.14159, IDS_TEST_REAL_RANGE);
    EXPECT_EQ(edit(), "3.1") << "without a template";
}

TEST_F(Controls, SelectTheItemOfTheText) {
    for (const int combo : {IDC_TEST_COMBO, IDC_TEST_LIST}) {
        const auto id = static_cast<unsigned short>(combo);
        GMSG::setCtrlString(id, "ACIER", 20);
        EXPECT_EQ(SendDlgItemMessageA(dialog_, combo, CB_GETCURSEL, 0, 0), 2);
        GMSG::setDouble(id, 12.5, 2);
        EXPECT_EQ(SendDlgItemMessageA(dialog_, combo, CB_GETCURSEL, 0, 0), 1);
        GMSG::setCtrlString(id, "bois", 20);
    }
    EXPECT_EQ(textOf(dialog_, IDC_TEST_COMBO), "bois");
    EXPECT_EQ(textOf(dialog_, IDC_TEST_LIST), "12.50");
}

TEST_F(Controls, LimitWhatIsTypedButNotWhatIsPut) {
    const HWND field = GetDlgItem(dialog_, IDC_TEST_EDIT);
    SetForegroundWindow(dialog_);
    SetFocus(field);
    ASSERT_TRUE(pumpUntil([&] { return GetFocus() == field; }));
    GMSG::setCtrlString(IDC_TEST_EDIT, RWCString(), 5);
    typeText("abcdef");
    EXPECT_TRUE(pumpUntil([&] { return edit().size() >= 4; }));
    pressKey(VK_HOME);
    EXPECT_TRUE(pumpUntil([&] { return SendMessageA(field, EM_GETSEL, 0, 0) == 0; }));
    EXPECT_EQ(edit(), "abcd");
    GMSG::setCtrlString(IDC_TEST_EDIT, "d\351j\340 long", 5);
    EXPECT_EQ(edit(), "d\351j\340 long");
}

TEST_F(Controls, GiveTheirText) {
    setText(dialog_, IDC_TEST_EDIT, "d\351j\340");
    char small[4] = "GGG";
    EXPECT_EQ(GMSG::getCtrlString(IDC_TEST_EDIT, small, sizeof small), 3);
    EXPECT_STREQ(small, "d\351j");
    RWCString text;
    EXPECT_EQ(GMSG::getCtrlString(IDC_TEST_EDIT, text, 5, "ignored"), 4);
    EXPECT_EQ(text, "d\351j\340");
    GMSG::getCtrlString(IDC_TEST_EDIT, text, 3);
    EXPECT_EQ(text, "d\351");
    EXPECT_EQ(GMSG::getCtrlString(IDC_TEST_EDIT, text, INT_MAX), 4) << "in the room it needs";
    for (const int empty : {IDC_TEST_LABEL, 999}) {
        text = "before";
        EXPECT_EQ(GMSG::getCtrlString(static_cast<unsigned short>(empty), text, 10), 0);
        EXPECT_EQ(text, "");
    }
    EXPECT_EQ(GMSG::getCtrlString(IDC_TEST_LABEL, small, sizeof small), 0);
    EXPECT_STREQ(small, "");
}

TEST_F(Controls, GiveNumbersAndSayWhereTheyAreOutOfRange) {
    const std::tuple<const char*, int, bool> cases[] = {
        {"1", 1, true},
        {" 10 mm", 10, true},
        {"11", 11, false},
        {"", 0, false},
        {"99999999999", INT_MAX, false},
        {"00000000000000000000000000000000000000012", 1, true}};
    for (const auto& [text, value, accepted] : cases) {
        setText(dialog_, IDC_TEST_EDIT, text);
        BoxAnswerer answerer(accepted ? std::vector<int>{} : std::vector{IDOK});
        int number = -1;
        EXPECT_EQ(GMSG::getInt(IDC_TEST_EDIT, number, IDS_TEST_INT_RANGE), accepted) << text;
        EXPECT_EQ(number, value) << text;
    }
    setText(dialog_, IDC_TEST_EDIT, "-6");
    GMSG::language = GMSG::English;
    BoxAnswerer answerer({IDOK, IDOK});
    long number = 0;
    EXPECT_EQ(GMSG::getLong(IDC_TEST_EDIT, number, IDS_TEST_LONG_RANGE), 0);
    EXPECT_EQ(number, -6);
    double wide = 0;
    float narrow = 0;
    setText(dialog_, IDC_TEST_EDIT, "2.3");  // the limit itself
    EXPECT_EQ(GMSG::getDouble(IDC_TEST_EDIT, wide, IDS_TEST_REAL_RANGE), 1);
    EXPECT_EQ(GMSG::getFloat(IDC_TEST_EDIT, narrow, IDS_TEST_REAL_RANGE), 1);
    EXPECT_EQ(wide, 2.3);
    EXPECT_EQ(narrow, 2.3f);
    setText(dialog_, IDC_TEST_EDIT, "2.31");
    char text[4];
    EXPECT_EQ(GMSG::getFloat(IDC_TEST_EDIT, text, sizeof text, IDS_TEST_REAL_RANGE), 0);
    EXPECT_STREQ(text, "2.3");
    const SeenBox& box = answerer.seen().at(0);
    EXPECT_EQ(box.text, "Entre -5 et 2000000000");
    EXPECT_EQ(box.caption, "Error");
    EXPECT_EQ(box.owner, dialog_);
    EXPECT_EQ(box.icon, LoadIconA(nullptr, IDI_QUESTION));
    EXPECT_EQ(answerer.seen().at(1).text, "Entre 0.1 et 2.3");
}

TEST_F(Controls, AreNotCheckedWithoutARange) {
    setText(dialog_, IDC_TEST_EDIT, "1e999");
    double wide = 0;
    EXPECT_EQ(GMSG::getDouble(IDC_TEST_EDIT, wide, 0), 1);
    EXPECT_EQ(wide, HUGE_VAL);
    EXPECT_EQ(GMSG::getDouble(IDC_TEST_EDIT, wide, IDS_TEST_NOTHING), 0);
    char text[] = "before";
    EXPECT_EQ(GMSG::getFloat(IDC_TEST_EDIT, text, sizeof text, 0), 1);
    GMSG::setInstance(nullptr);
    EXPECT_EQ(GMSG::getFloat(IDC_TEST_EDIT, text, sizeof text, IDS_TEST_REAL_RANGE), 1);
    EXPECT_STREQ(text, "before");
    int number = 5;
    EXPECT_EQ(GMSG::getInt(999, number, IDS_TEST_INT_RANGE), 1);
    EXPECT_EQ(number, 0);
    GMSG::setParent(nullptr);
    GMSG::setInt(IDC_TEST_EDIT, 3);
    EXPECT_EQ(edit(), "1e999");
}

}  // namespace

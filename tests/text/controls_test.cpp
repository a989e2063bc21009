// The message service and the controls of a real dialog.
#include "controls_test.h"

#include <gtest/gtest.h>

#include <climits>
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
        DestroyWindow(dialog_);
    }
    std::string edit() { return textOf(dialog_, IDC_TEST_EDIT); }

    GMSG service_;
    HWND dialog_;
};

TEST_F(Controls, ShowNumbersAsTheyPrint) {
    GMSG::setInt(IDC_TEST_EDIT, INT_MIN);
    EXPECT_EQ(edit(), "-2147483648");
    GMSG::setFormatDouble(IDC_TEST_EDIT, 3.14159, IDS_TEST_DISPLAY);
    EXPECT_EQ(edit(), "0003.142 m");
}

TEST_F(Controls, SelectTheItemOfTheText) {
    for (const int combo : {IDC_TEST_COMBO, IDC_TEST_LIST}) {
        const auto id = static_cast<unsigned short>(combo);
        GMSG::setCtrlString(id, "ACIER", 20);
        EXPECT_EQ(SendDlgItemMessageA(dialog_, combo, CB_GETCURSEL, 0, 0), 2);
        GMSG::setCtrlString(id, "bois", 20);
    }
    EXPECT_EQ(textOf(dialog_, IDC_TEST_COMBO), "bois");
    EXPECT_EQ(textOf(dialog_, IDC_TEST_LIST), "acier S235");
}

TEST_F(Controls, GiveTheirText) {
    setText(dialog_, IDC_TEST_EDIT, "d\351j\340");
    char small[4] = "GGG";
    EXPECT_EQ(GMSG::getCtrlString(IDC_TEST_EDIT, small, sizeof small), 3);
    EXPECT_STREQ(small, "d\351j");
    RWCString text;
    EXPECT_EQ(GMSG::getCtrlString(IDC_TEST_EDIT, text, INT_MAX), 4) << "in the room it needs";
    EXPECT_EQ(text, "d\351j\340");
}

TEST_F(Controls, GiveNumbersAndSayWhereTheyAreOutOfRange) {
    const std::tuple<const char*, int, bool> cases[] = {
        {"1", 1, true},
        {" 10 mm", 10, true},
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
    BoxAnswerer answerer({IDOK});
    long number = 0;
    EXPECT_EQ(GMSG::getLong(IDC_TEST_EDIT, number, IDS_TEST_LONG_RANGE), 0);
    float narrow = 0;
    setText(dialog_, IDC_TEST_EDIT, "2.3");  // the limit itself
    EXPECT_EQ(GMSG::getFloat(IDC_TEST_EDIT, narrow, IDS_TEST_REAL_RANGE), 1);
    EXPECT_EQ(narrow, 2.3f);
    EXPECT_EQ(answerer.seen().at(0).text, "Entre -5 et 2000000000");
    EXPECT_EQ(answerer.seen().at(0).owner, dialog_);
}

}  // namespace

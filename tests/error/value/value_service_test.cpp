// The value service in real dialogs.
#include "toolbox/value_service.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/box_answerer.h"
#include "support/window_kit.h"
#include "value_service_test.h"

namespace {

using namespace toolbox::testing;

INT_PTR CALLBACK nothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

HWND opened() {
    const HWND dialog = CreateDialogParamA(nullptr, "VALUES", nullptr, nothing, 0);
    ShowWindow(dialog, SW_SHOW);
    return dialog;
}

class ValueService : public ::testing::Test {
  protected:
    ValueService() {
        GMSG::initStaticVars();
        GMSG::setAppTitle("Ponts");
        GMSG::setInstance(GetModuleHandleA(nullptr));
        SetForegroundWindow(dialog_);
    }
    ~ValueService() override {
        GMSG::setInstance(nullptr);
        GMSG::setParent(nullptr);
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
        DestroyWindow(dialog_);
    }
    /// The control has the focus, and all of its text is selected.
    [[nodiscard]] bool isSelected(int control) const {
        const HWND field = GetDlgItem(dialog_, control);
        const auto selection = static_cast<DWORD>(SendMessageA(field, EM_GETSEL, 0, 0));
        return GetFocus() == field && LOWORD(selection) == 0 &&
               HIWORD(selection) == GetWindowTextLengthA(field);
    }
    std::string value() { return textOf(dialog_, IDC_VALUE); }

    GMSG service_;
    HWND dialog_ = opened();
};

TEST_F(ValueService, WritesAndReadsTheControlsOfItsDialog) {
    SendDlgItemMessageA(dialog_, IDC_LIST, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("S235 JR"));
    Val values(dialog_);
    values.setText(IDC_LIST, "s235");
    EXPECT_EQ(SendDlgItemMessageA(dialog_, IDC_LIST, CB_GETCURSEL, 0, 0), 0);
    values.setText(IDC_VALUE, "poutre 12", 5);
    EXPECT_EQ(SendDlgItemMessageA(dialog_, IDC_VALUE, EM_GETLIMITTEXT, 0, 0), 4);
    RWCString text;
    EXPECT_EQ(values.getText(IDC_VALUE, text), 9);
    EXPECT_EQ(values.getText(IDC_VALUE, text, 7), 6);
    EXPECT_EQ(text, "poutre");
    values.setInteger(IDC_VALUE, -12);
    int number = 0;
    long large = 0;
    EXPECT_EQ(values.getInteger(IDC_VALUE, number), 1);
    EXPECT_EQ(values.getInteger(IDC_VALUE, large), 1);
    EXPECT_EQ(number, -12);
    EXPECT_EQ(large, -12);
    values.setReal(IDC_VALUE, 0.25, 3);
    EXPECT_EQ(value(), ".250");
    values.setFormattedReal(IDC_VALUE, 12.345, IDS_LOAD_RANGE);
    EXPECT_EQ(value(), "12.35");  // the double is above the tie
    values.addUnit(IDC_VALUE, IDS_LOAD_UNIT);
    values.addUnit(IDC_VALUE, "kN/m");
    values.addUnit(IDC_VALUE, "");
    EXPECT_EQ(value(), "12.35 kN/m");
    for (int twice = 0; twice < 2; ++twice) values.addUnit(IDC_LABEL, "kN");
    EXPECT_EQ(textOf(dialog_, IDC_LABEL), "kN");
    double real = 0;
    float single = 0;
    EXPECT_EQ(values.getReal(IDC_VALUE, real, IDS_LOAD_RANGE), 1);
    EXPECT_EQ(values.getReal(IDC_VALUE, single), 1);
    EXPECT_EQ(real, 12.35);
    EXPECT_EQ(single, 12.35f);
    EXPECT_EQ(values.getInteger(999, number), 1) << "no such control";
    EXPECT_EQ(number, 0);
}

TEST_F(ValueService, TellsTheUserAndShowsWhere) {
    Val values(dialog_);
    BoxAnswerer answerer({IDOK, IDOK, IDOK, IDOK, IDOK});
    double load = 0;
    values.setText(IDC_VALUE, "251 kN/m");
    SetFocus(GetDlgItem(dialog_, IDC_OTHER));
    EXPECT_EQ(values.getReal(IDC_VALUE, load, IDS_LOAD_RANGE), 0);
    EXPECT_EQ(load, 251);
    EXPECT_TRUE(isSelected(IDC_VALUE));

    // The sentences are the library's own.
    SetFocus(GetDlgItem(dialog_, IDC_OTHER));
    EXPECT_EQ(values.getReal(IDC_VALUE, load, 0.1, 250), 0);
    EXPECT_TRUE(isSelected(IDC_VALUE));
    EXPECT_EQ(values.getReal(IDC_VALUE, load, 0.1, 251), 1);
    GMSG::language = GMSG::English;
    int count = 0;
    EXPECT_EQ(values.getInteger(IDC_VALUE, count, 1, 250), 0);
    EXPECT_EQ(count, 251);
    float single = 0;
    values.setText(IDC_VALUE, "0.1");
    EXPECT_EQ(values.getReal(IDC_VALUE, single, 0.1, 0.2), 1) << "the limit itself";
    values.setText(IDC_VALUE, "nan");
    EXPECT_EQ(values.getReal(IDC_VALUE, load, -1e300, 1e300), 0);
    SetFocus(GetDlgItem(dialog_, IDC_OTHER));
    EXPECT_EQ(values.refuse(IDC_VALUE, IDS_NOT_A_BEAM, "HEB 200"), 0);
    EXPECT_TRUE(isSelected(IDC_VALUE));

    const char* const texts[] = {
        "La charge va de 0.5 \340 250", "Le nombre doit \352tre compris entre 0.1 et 250.",
        "The number must be between 1 and 250.", "The number must be between -1e+300 and 1e+300.",
        "HEB 200 n'est pas une poutre."};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(answerer.seen().at(i).text, texts[i]);
        EXPECT_EQ(answerer.seen().at(i).owner, dialog_);
    }
    EXPECT_EQ(answerer.seen().at(1).caption, "Ponts");
}

TEST_F(ValueService, GivesTheParentBackWhateverTheOrder) {
    const HWND first = opened();
    const HWND second = opened();
    GMSG::setParent(dialog_);
    {
        auto older = std::make_unique<Val>(first);
        EXPECT_EQ(GMSG::getParent(), first);
        auto younger = std::make_unique<Val>(second);
        EXPECT_EQ(GMSG::getParent(), second);
        older->setText(IDC_VALUE, "first");
        EXPECT_EQ(GMSG::getParent(), second) << "for the call only";
        older.reset();
        EXPECT_EQ(GMSG::getParent(), second);
        younger->setText(IDC_VALUE, "second");
    }
    EXPECT_EQ(GMSG::getParent(), dialog_);
    EXPECT_EQ(textOf(first, IDC_VALUE), "first");
    EXPECT_EQ(textOf(second, IDC_VALUE), "second");
    DestroyWindow(first);
    DestroyWindow(second);
}

TEST_F(ValueService, OutlivesItsDialogAndMayEndWhileItsBoxIsShown) {
    const HWND gone = opened();
    GMSG::setParent(dialog_);
    auto values = std::make_unique<Val>(gone);
    DialogScript script;
    script.run([&](HWND box) {
        values.reset();
        DestroyWindow(gone);
        SendMessageA(box, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(values->refuse(IDC_VALUE, "wrong"), 0);
    EXPECT_EQ(GMSG::getParent(), dialog_);

    Val late(gone);
    int number = 5;
    late.setInteger(IDC_VALUE, 3);
    EXPECT_EQ(late.getInteger(IDC_VALUE, number), 1);
    EXPECT_EQ(number, 0);
}

}  // namespace

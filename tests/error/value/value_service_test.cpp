// The value service in real dialogs.
#include "toolbox/value_service.h"

#include <memory>

#include "support/box_answerer.h"
#include "support/owner_fixture.h"
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

class ValueService : public OwnerFixture {
  protected:
    ValueService() {
        GMSG::language = GMSG::French;
        GMSG::setAppTitle("Ponts");
        GMSG::setInstance(GetModuleHandleA(nullptr));
        SetForegroundWindow(dialog_);
    }
    ~ValueService() override {
        GMSG::setInstance(nullptr);
        GMSG::setParent(nullptr);
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
    EXPECT_EQ(values.getText(IDC_VALUE, text, 7), 6);
    EXPECT_EQ(text, "poutre");
    values.setInteger(IDC_VALUE, -12);
    int number = 0;
    EXPECT_EQ(values.getInteger(IDC_VALUE, number), 1);
    EXPECT_EQ(number, -12);
    EXPECT_EQ(values.getInteger(999, number), 1) << "no such control";
    EXPECT_EQ(number, 0);
    values.setReal(IDC_VALUE, 0.25, 3);
    EXPECT_EQ(value(), ".250");
    values.setFormattedReal(IDC_VALUE, 12.345, IDS_LOAD_RANGE);
    values.addUnit(IDC_VALUE, IDS_LOAD_UNIT);
    values.addUnit(IDC_VALUE, "kN/m");
    EXPECT_EQ(value(), "12.35 kN/m");  // the double is above the tie
    double real = 0;
    EXPECT_EQ(values.getReal(IDC_VALUE, real, IDS_LOAD_RANGE), 1);
    EXPECT_EQ(real, 12.35);
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
    EXPECT_EQ(values.getReal(IDC_VALUE, load, 0.1, 250), 0);
    GMSG::language = GMSG::English;
    int count = 0;
    EXPECT_EQ(values.getInteger(IDC_VALUE, count, 1, 250), 0);
    EXPECT_EQ(count, 251);
    float single = 0;
    values.setText(IDC_VALUE, "0.1");
    EXPECT_EQ(values.getReal(IDC_VALUE, single, 0.1, 0.2), 1) << "the limit itself";
    values.setText(IDC_VALUE, "nan");
    EXPECT_EQ(values.getReal(IDC_VALUE, load, -1e300, 1e300), 0);
    EXPECT_EQ(values.refuse(IDC_VALUE, IDS_NOT_A_BEAM, "HEB 200"), 0);

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
    const HWND other = opened();
    GMSG::setParent(owner);
    auto older = std::make_unique<Val>(dialog_);
    auto younger = std::make_unique<Val>(other);
    older->setText(IDC_VALUE, "first");
    EXPECT_EQ(value(), "first");
    EXPECT_EQ(GMSG::getParent(), other) << "the older one's for the call only";
    older.reset();
    EXPECT_EQ(GMSG::getParent(), other);
    younger.reset();
    EXPECT_EQ(GMSG::getParent(), owner);
    DestroyWindow(other);
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

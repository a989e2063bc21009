// Combo boxes, statics and report lists.
#include "control_fixture.h"
#include "support/picture.h"
#include "support/temp_folder.h"
#include "toolbox/keys.h"

namespace {

using namespace toolbox::testing;

class Combo : public ControlFixture {
  protected:
    HWND make(DWORD kind) {
        box = add("COMBOBOX", kind | WS_VSCROLL, 9, 10, 120, 200);
        EXPECT_EQ(combo.attach(box), 1);
        SetFocus(box);
        return box;
    }
    [[nodiscard]] std::string entries() const {
        std::string all;
        for (WPARAM i = 0; static_cast<LRESULT>(i) < tell(box, CB_GETCOUNT); ++i) {
            char text[200] = "";
            tell(box, CB_GETLBTEXT, i, text);
            all += std::string(text) + ";";
        }
        return all;
    }
    HWND box = nullptr;
    TvComboBox combo;
};

TEST_F(Combo, CompletesWhatIsTypedAtTheEnd) {
    make(CBS_DROPDOWN);
    EXPECT_EQ(combo.fill({"Beam", "Bearing"}), 1);
    const std::pair<const char*, const char*> steps[] = {
        {"be", "beam"}, {"ar", "bearing"}, {"\b", "bear"}, {"\b", "bea"}};
    for (const auto& [keys, text] : steps) {
        type(keys);
        EXPECT_EQ(textOf(box), text) << "nothing comes back after Backspace";
    }
    press(VK_HOME);
    type("b");
    EXPECT_EQ(textOf(box), "bbea") << "not at the end";
}

TEST_F(Combo, LeavesTheWheelToItsParentWhileItIsClosed) {
    make(CBS_DROPDOWNLIST);
    combo.fill({"a", "b", "c"});
    tell(box, CB_SETCURSEL, 1);
    pointAt(box);
    turnWheel(-WHEEL_DELTA);
    EXPECT_EQ(tell(box, CB_GETCURSEL), 1);
    EXPECT_EQ(wheels, 1);
    tell(box, CB_SHOWDROPDOWN, TRUE);
    tell(box, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA));
    EXPECT_EQ(wheels, 1);
}

TEST_F(Combo, RemembersRecentEntries) {
    const TempFolder folder;
    GMSG::setUseRegistry(0);
    GMSG::setDestName((folder / "recent.ini").c_str());
    make(CBS_DROPDOWN);
    combo.setRecent("Steel", "Grade", 2);
    combo.fill({"S235", "S275"});
    EXPECT_EQ(combo.remember(), 0) << "nothing to remember";
    for (const char* text : {"own", "S275", "last"}) {
        SetWindowTextA(box, text);
        EXPECT_EQ(combo.remember(), 1);
    }
    EXPECT_EQ(entries(), "last;S275;S235;");
    DestroyWindow(box);
    make(CBS_DROPDOWNLIST);
    tell(box, CB_ADDSTRING, 0, "S235");  // the application's own way
    combo.setRecent("Steel", "Grade", 2);
    EXPECT_EQ(entries(), "last;S275;S235;") << "from the settings";
    GMSG::setUseRegistry(1);
}

class Static : public ControlFixture {
  protected:
    Static() { EXPECT_EQ(shown.attach(label), 1); }
    /// Presses a key as a dialog's loop handles it.
    void pressInDialog(WORD key) const {
        pressKey(key);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
            if (!IsDialogMessageA(window, &message)) DispatchMessageA(&message);
    }
    HWND label = add("STATIC", WS_TABSTOP, 3, 10, 100);
    TvStatic shown;
};

TEST_F(Static, ShortensAPathAndTipsTheWholeOne) {
    const auto look = [&](const char* path) {
        EXPECT_EQ(shown.setPath(path), 1);
        UpdateWindow(label);
        pumpMessages();
        return pictureOf(label);
    };
    const char* const whole = "C:\\projects\\bridges\\north\\spans\\deck.tvb";
    const Picture wanted = look("C:\\...\\deck.tvb");
    EXPECT_EQ(look(whole), wanted);
    EXPECT_EQ(textOf(label), whole);
    pointAt(label);
    EXPECT_TRUE(pumpUntil([&] { return shownTip() == whole; }));
}

TEST_F(Static, IsALinkForMouseAndKeyboard) {
    int followed = 0;
    EXPECT_EQ(shown.setLink("Terms & rules", [&] { ++followed; }), 1);
    pointAt(label);
    EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND)));
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    EXPECT_EQ(followed, 0);
    mouseButton(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(followed, 1);
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    moveMouse(window, {400, 300});
    mouseButton(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(followed, 1) << "let go elsewhere";
    SetFocus(label);
    for (const WORD key : std::vector<WORD>{VK_RETURN, VK_SPACE, 'X'}) pressInDialog(key);
    EXPECT_EQ(followed, 3);
    shown.setLink("without a handler");
    commands();
    press(VK_RETURN);
    EXPECT_EQ(commands(), "3/0 ");
    shown.setLink("the end", [&] { DestroyWindow(window); });
    press(VK_SPACE);
    EXPECT_EQ(shown.getHWND(), nullptr);
}

TEST_F(Static, ShowsAValueWithItsUnits) {
    RealFormatedValue value;
    value.RealFormat::setFormat(10, 2, Right);
    value = 12.345;
    EXPECT_EQ(shown.setValue(value, "R&D"), 1);
    EXPECT_EQ(textOf(label), "12.35 R&&D") << "no mnemonic";
}

TEST_F(ControlFixture, ListsHaveColumnsTextsAndASelection) {
    TvListView list;
    ASSERT_EQ(list.attach(add(WC_LISTVIEWA, LVS_REPORT, 4, 10, 300, 100)), 1);
    EXPECT_EQ(list.addColumns({{"Name", 80}, {"Value", 40, true}}), 1);
    EXPECT_EQ(list.setText(0, 1, "early"), 0) << "a row begins with its column 0";
    const std::string longText(1000, 'x');
    for (int row = 0; row < 3; ++row) EXPECT_EQ(list.setText(row, 0, longText.c_str()), 1);
    EXPECT_EQ(list.getText(2, 0), longText);
    EXPECT_EQ(list.selectRow(TvListView::kEveryRow), 1);
    EXPECT_EQ(list.selectRow(0, false), 1);
    EXPECT_EQ(list.selectedRows(), (std::vector<int>{1, 2}));
}

}  // namespace

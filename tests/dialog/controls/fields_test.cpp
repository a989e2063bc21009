// Combo boxes, statics and report lists.
#include "control_fixture.h"
#include "support/picture.h"
#include "support/temp_folder.h"
#include "toolbox/keys.h"

namespace {

using namespace toolbox::testing;

class Combo : public ControlFixture {
  protected:
    [[nodiscard]] HWND make(DWORD kind) {
        return add("COMBOBOX", kind | WS_VSCROLL, 9, 10, 120, 200);
    }
    [[nodiscard]] static std::string entries(HWND box) {
        std::string all;
        const LRESULT count = tell(box, CB_GETCOUNT);
        for (WPARAM i = 0; static_cast<LRESULT>(i) < count; ++i) {
            char text[200] = "";
            tell(box, CB_GETLBTEXT, i, text);
            all += std::string(text) + ";";
        }
        return all;
    }
    TvComboBox combo;
};

TEST_F(Combo, CompletesWhatIsTypedAtTheEnd) {
    const HWND box = make(CBS_DROPDOWN);
    ASSERT_EQ(combo.attach(box), 1);
    EXPECT_EQ(combo.fill({"Beam", "Bearing", "Column", "Col"}), 1);
    SetFocus(box);
    type("be");
    EXPECT_EQ(textOf(box), "beam");
    type("ar");
    EXPECT_EQ(textOf(box), "bearing");
    press(VK_BACK);
    EXPECT_EQ(textOf(box), "bear") << "without what was added";
    press(VK_BACK);
    EXPECT_EQ(textOf(box), "bea") << "one character, and nothing comes back";
    press(VK_HOME);
    type("c");
    EXPECT_EQ(textOf(box), "cbea") << "not at the end";
    SetWindowTextA(box, "");
    type("col");
    EXPECT_EQ(textOf(box), "col") << "an entry already";
    combo.setCompletion(0);
    SetWindowTextA(box, "");
    type("b");
    EXPECT_EQ(textOf(box), "b");
}

TEST_F(Combo, IsFilledFromResourcesAndKeepsItsTextAndItsWidth) {
    const HWND box = make(CBS_DROPDOWN);
    ASSERT_EQ(combo.attach(window, 9), 1);
    SetWindowTextA(box, "mine");
    EXPECT_EQ(combo.fill(700), 1);
    EXPECT_EQ(entries(box), "S235;S275;S355 with a long description of the steel;");
    EXPECT_EQ(textOf(box), "mine");
    const LRESULT wide = tell(box, CB_GETDROPPEDWIDTH);
    EXPECT_GT(wide, 200);
    tell(box, CB_ADDSTRING, 0, "the application's own entry, which is the longest of all");
    EXPECT_GT(tell(box, CB_GETDROPPEDWIDTH), wide);
    EXPECT_EQ(combo.fill({"short", std::string(3000, 'm').c_str()}), 1);
    EXPECT_LE(tell(box, CB_GETDROPPEDWIDTH), GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(combo.fill(799), 0) << "no such text";
    EXPECT_EQ(combo.fill(std::vector<CString>()), 1);
    EXPECT_EQ(entries(box), "");
    EXPECT_LT(tell(box, CB_GETDROPPEDWIDTH), 200);
}

TEST_F(Combo, LeavesTheWheelToItsParentWhileItIsClosed) {
    for (const DWORD kind : {CBS_DROPDOWN, CBS_DROPDOWNLIST}) {
        const HWND box = make(kind);
        TvComboBox own;
        ASSERT_EQ(own.attach(box), 1);
        own.fill({"a", "b", "c"});
        tell(box, CB_SETCURSEL, 1);
        SetFocus(box);
        pointAt(box);
        wheels = 0;
        turnWheel(-WHEEL_DELTA);
        EXPECT_EQ(tell(box, CB_GETCURSEL), 1) << kind;
        EXPECT_EQ(wheels, 1) << kind;
        tell(box, CB_SHOWDROPDOWN, TRUE);
        tell(box, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA));
        EXPECT_EQ(wheels, 1) << kind;
        DestroyWindow(box);
    }
}

TEST_F(Combo, RemembersRecentEntries) {
    TempFolder folder;
    const std::string file = folder / "recent.ini";
    GMSG service;
    GMSG::initStaticVars();
    GMSG::setUseRegistry(0);
    GMSG::setDestName(file.c_str());
    HWND box = make(CBS_DROPDOWN);
    combo.attach(box);
    combo.setRecent("Steel", "Grade", 2);
    combo.fill({"S235", "S275"});
    EXPECT_EQ(combo.remember(), 0) << "nothing to remember";
    for (const char* text : {"own", "S275", "last"}) {
        SetWindowTextA(box, text);
        EXPECT_EQ(combo.remember(), 1);
    }
    EXPECT_EQ(entries(box), "last;S275;S235;");
    EXPECT_EQ(textOf(box), "last");
    DestroyWindow(box);
    box = make(CBS_DROPDOWNLIST);
    combo.attach(box);
    for (const char* text : {"S235", "S275"})  // the application's own way
        tell(box, CB_ADDSTRING, 0, text);
    combo.setRecent("Steel", "Grade", 2);
    EXPECT_EQ(entries(box), "last;S275;S235;") << "from the settings";
    tell(box, CB_ADDSTRING, 0, "S460");
    tell(box, CB_SETCURSEL, 3);
    EXPECT_EQ(combo.remember(), 1);
    EXPECT_EQ(entries(box), "S460;last;S275;S235;");
    GMSG::setUseRegistry(1);
    GMSG::destroyStaticVars();
}

struct Keys : UDManager {
    RWCString getProfilePath() override { return "C:\\no\\such.ini"; }
    int getKeyValue(UINT, FormatedValue*) override { return 0; }
};

TEST_F(Combo, OffersKeys) {
    UDManager::initStaticVars();
    Keys keys;
    for (const auto& [id, text] : {std::pair{5u, "Span"}, std::pair{9u, ""}}) {
        UDKeyData data(RWCString("KEY" + std::to_string(id)));
        data.setDescStr(text);
        data.setFormat(NumberFormat());
        EXPECT_EQ(keys.addKey(id, data), 1);
    }
    keys.initUDApp();
    const HWND box = make(CBS_DROPDOWNLIST);
    combo.attach(box);
    EXPECT_EQ(combo.fill(keys), 1);
    EXPECT_EQ(entries(box), "Span;KEY9;");
    EXPECT_EQ(combo.getKey(), 0xFFFFFFFF);
    EXPECT_EQ(combo.setKey(9), 1);
    EXPECT_EQ(combo.getKey(), 9u);
    EXPECT_EQ(textOf(box), "KEY9");
    EXPECT_EQ(combo.setKey(7), 0);
    UDManager::destroyStaticVars();
}

class Static : public ControlFixture {
  protected:
    /// Keys as a dialog's loop handles them.
    void pumpAsDialog() const {
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
            if (IsDialogMessageA(window, &message)) continue;
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    HWND label = add("STATIC", 0, 3, 10, 100);
    TvStatic shown;
};

TEST_F(Static, ShowsAValueWithItsUnits) {
    EXPECT_EQ(shown.attach(label), 1);
    RealFormatedValue value;
    value.RealFormat::setFormat(10, 2, Right);
    value = 12.345;
    EXPECT_EQ(shown.setValue(value, "kN"), 1);
    EXPECT_EQ(textOf(label), "12.35 kN");
    EXPECT_EQ(shown.setValue(value, "R&D"), 1);
    EXPECT_EQ(textOf(label), "12.35 R&&D") << "no mnemonic";
    EXPECT_EQ(shown.setValue(value), 1);
    EXPECT_EQ(textOf(label), "12.35");
    shown.detach();
    EXPECT_EQ(shown.setValue(value), 0);
}

TEST_F(Static, ShortensAPathAndTipsTheWholeOne) {
    shown.attach(label);
    const auto look = [&] {
        UpdateWindow(label);
        pumpMessages();
        return pictureOf(label);
    };
    const std::string whole = "C:\\projects\\bridges\\north\\spans\\deck.tvb";
    EXPECT_EQ(shown.setPath("C:\\...\\deck.tvb"), 1);
    const Picture wanted = look();
    EXPECT_EQ(shown.setPath(whole.c_str()), 1);
    EXPECT_EQ(look(), wanted);
    EXPECT_EQ(textOf(label), whole);
    pointAt(label);
    EXPECT_TRUE(pumpUntil([&] { return tipShown() == whole; }));
    MoveWindow(label, 10, 10, 400, 20, TRUE);
    EXPECT_NE(look(), wanted);
}

TEST_F(Static, IsALinkForMouseAndKeyboard) {
    const HWND before = add("EDIT", WS_TABSTOP, 2, 60);
    SetWindowPos(label, before, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    shown.attach(label);
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
    SetFocus(before);
    pressKey(VK_TAB);
    pumpAsDialog();
    EXPECT_EQ(GetFocus(), label);
    for (const WORD key : std::vector<WORD>{VK_RETURN, VK_SPACE, 'X'}) {
        pressKey(key);
        pumpAsDialog();
    }
    EXPECT_EQ(followed, 3);
    shown.setLink("without a handler");
    commands();
    press(VK_RETURN);
    EXPECT_EQ(commands(), "3/0 ");
    shown.setLink("the end", [&] { DestroyWindow(window); });
    press(VK_SPACE);
    EXPECT_EQ(shown.getHWND(), nullptr);
}

class List : public ControlFixture {};

TEST_F(List, HasColumnsTextsAndASelection) {
    const HWND window32 = add(WC_LISTVIEWA, LVS_REPORT, 4, 10, 300, 100);
    TvListView list;
    ASSERT_EQ(list.attach(window32), 1);
    EXPECT_EQ(list.addColumns({{"Name", 80}, {"Value", 40, true}, {"Remark"}}), 1);
    EXPECT_EQ(list.setText(0, 1, "early"), 0) << "a row begins with its column 0";
    const std::string longText(1000, 'x');
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(list.setText(row, 0, ("row " + std::to_string(row)).c_str()), 1);
        EXPECT_EQ(list.setText(row, 1, longText.c_str()), 1);
    }
    EXPECT_EQ(list.setText(7, 0, "far"), 0);
    EXPECT_EQ(list.getText(2, 0), "row 2");
    EXPECT_EQ(list.getText(2, 1), longText);
    EXPECT_EQ(list.getText(9, 9), "");
    EXPECT_EQ(list.selectedRow(), -1);
    EXPECT_EQ(list.selectRow(1), 1);
    EXPECT_EQ(list.selectedRow(), 1);
    EXPECT_EQ(list.selectRow(TvListView::kEveryRow), 1);
    EXPECT_EQ(list.selectedRows(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(list.selectRow(0, false), 1);
    EXPECT_EQ(list.selectedRow(), 1);
    EXPECT_EQ(list.selectRow(3), 0);
    const int width = ListView_GetColumnWidth(window32, 0);
    EXPECT_GT(width, ListView_GetColumnWidth(window32, 1));
    EXPECT_GT(ListView_GetColumnWidth(window32, 2), 0);
}

}  // namespace

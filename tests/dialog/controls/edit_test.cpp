// Edit fields under real keys, mouse and clipboard.
#include "control_fixture.h"
#include "support/picture.h"
#include "toolbox/numbers.h"
#include "toolbox/text.h"

namespace {

using namespace toolbox::testing;

constexpr UINT kPause = 30;  // ms

class Edit : public ControlFixture {
  protected:
    Edit() {
        width.setLimits(0.5, 40);
        edit.setPause(kPause);
        EXPECT_EQ(edit.attach(window, 7), 1);
        SetFocus(field);
    }
    [[nodiscard]] std::string text() const { return textOf(field); }
    void set(const char* text) {
        SetWindowTextA(field, text);
        SendMessageA(field, EM_SETSEL, 0, -1);
    }
    [[nodiscard]] bool isMarked() const { return !edit.getFault().empty(); }

    HWND field = add("EDIT", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, 7, 10);
    TvDouble width;
    TvEdit edit;
};

TEST_F(Edit, TakesTheCharactersOfANumberByEveryWay) {
    edit.setNumber(width);
    type("1a2.;5x");
    EXPECT_EQ(text(), "12.5");
    EXPECT_EQ(tipShown(), "The character 'x' cannot be entered here.");
    type("0");
    EXPECT_EQ(tipShown(), "");
    const std::function<void()> ways[] = {
        [] { press('V', {VK_CONTROL}); }, [] { press(VK_INSERT, {VK_SHIFT}); },
        [&] { tell(field, WM_PASTE); }, [&] { tell(field, WM_COMMAND, WM_PASTE); }};
    for (const auto& way : ways) {
        for (const auto& [pasted, wanted] :
             {std::pair{"3,25\r\n", "3,25"}, std::pair{"3.25abc", "1"},
              std::pair{"1\240"
                        "250",
                        "1"}}) {
            set("1");
            setClipboard(pasted);
            way();
            EXPECT_EQ(text(), wanted) << pasted;
        }
    }
    set("1");
    tell(field, EM_REPLACESEL, TRUE, "x");  // as what is dropped
    EXPECT_EQ(text(), "1");
    set("program's own");
    EXPECT_EQ(text(), "program's own") << "free";
    EXPECT_FALSE(isMarked());
}

TEST_F(Edit, LeavesOutWhatATextsRuleForbidsAndKeepsTheLimit) {
    edit.setRule(TvString(703));
    type("aB1b");
    EXPECT_EQ(text(), "ab");
    SetWindowTextA(field, "ab");
    SendMessageA(field, EM_SETSEL, 2, 2);
    setClipboard("C-" + std::string(2'000'000, 'q'));
    press('V', {VK_CONTROL});
    EXPECT_EQ(text(), "abqq");
    press('Z', {VK_CONTROL});
    EXPECT_EQ(text(), "ab") << "taken back as one edit";
    set("no");
    EXPECT_EQ(edit.check(), 0);
    EXPECT_TRUE(isMarked());
    edit.removeRule();
    type("ANYTHING 1");
    EXPECT_EQ(text(), "ANYTHING 1");
    EXPECT_FALSE(isMarked());
}

TEST_F(Edit, MarksAWrongEntryAfterAPauseNotBefore) {
    edit.setNumber(width);
    edit.setPause(400);
    type("123");
    EXPECT_FALSE(isMarked()) << "1 on the way to 12 is nobody's fault, 123 is not finished";
    EXPECT_TRUE(pumpUntil([&] { return isMarked(); }));
    EXPECT_NE(edit.getFault().view().find("40"), std::string_view::npos) << edit.getFault();
    press(VK_BACK);
    EXPECT_FALSE(isMarked());
    ::Sleep(500ul);
    pumpMessages();
    EXPECT_FALSE(isMarked()) << "12 is right";
    type("9");
    EXPECT_TRUE(pumpUntil([&] { return isMarked(); }));
    set("5");
    EXPECT_FALSE(isMarked()) << "what the program sets";
}

TEST_F(Edit, ShowsTheReasonAsItsTip) {
    pointAt(field);
    edit.setFault("Too wide");
    EXPECT_TRUE(pumpUntil([] { return tipShown() == "Too wide"; }));
    edit.setFault(CString());
    EXPECT_EQ(tipShown(), "");
}

TEST_F(Edit, KeepsAMarkThatIsSetByWhoIsToldOfTheChange) {
    edit.setNumber(width);
    onCommand = [&](int notification) {
        if (notification == EN_CHANGE) edit.setFault("odd");
    };
    type("1");
    ::Sleep(2 * kPause);
    pumpMessages();
    EXPECT_EQ(edit.getFault(), "odd");
}

TEST_F(Edit, StepsByKeysAndWheel) {
    width.setLimits(0, 40);
    edit.setNumber(width, 0.1);
    set("0");
    for (int i = 0; i < 7; ++i) press(VK_UP);
    EXPECT_EQ(text(), "0.7") << "the bits of a typed one";
    press(VK_NEXT);
    EXPECT_EQ(text(), "0") << "the nearer end";
    press(VK_DOWN);
    EXPECT_EQ(text(), "0");
    set("99");
    press(VK_DOWN);
    EXPECT_EQ(text(), "40") << "from beyond the limits";
    press('Z', {VK_CONTROL});
    EXPECT_EQ(text(), "99");
    set("wrong");
    press(VK_UP);
    EXPECT_EQ(text(), "wrong");

    set("5");
    turnWheel(WHEEL_DELTA);
    EXPECT_EQ(text(), "5") << "the pointer is elsewhere";
    pointAt(field);
    turnWheel(WHEEL_DELTA);
    EXPECT_EQ(text(), "5.1");
    turnWheel(-WHEEL_DELTA / 2);
    EXPECT_EQ(text(), "5.1");
    turnWheel(-WHEEL_DELTA / 2);
    EXPECT_EQ(text(), "5");
    SetFocus(window);
    turnWheel(WHEEL_DELTA);
    EXPECT_EQ(text(), "5") << "without the focus";
    SetFocus(field);
    tell(field, EM_SETREADONLY, TRUE);
    press(VK_UP);
    EXPECT_EQ(text(), "5") << "read only";
}

TEST_F(Edit, TakesAFormulaWhereOneIsAllowed) {
    width.allowFormula(true);
    edit.setNumber(width);
    type("s=3*1.35");
    EXPECT_EQ(text(), "=3*1.35");
    press(VK_UP);
    EXPECT_EQ(text(), "5.05");
}

TEST_F(Edit, ShowsUnitsCueAndMark) {
    const auto right = [&] { return HIWORD(tell(field, EM_GETMARGINS)); };
    const auto look = [&] {
        UpdateWindow(field);
        pumpMessages();
        return pictureOf(field);
    };
    SetFocus(window);
    const int before = right();
    const Picture plain = look();
    edit.setUnits("mm");
    const Picture units = look();
    EXPECT_GT(right(), before);
    EXPECT_FALSE(differences(plain, units).empty());
    for (const POINT& point : differences(plain, units))
        EXPECT_GE(point.x, plain.width - right()) << "in the margin only";
    edit.setFault("wrong");
    EXPECT_FALSE(differences(units, look()).empty());
    edit.setFault(CString());
    EXPECT_EQ(look(), units);
    edit.setCue("thickness");
    EXPECT_NE(look(), units);
    SetWindowTextA(field, " ");
    EXPECT_EQ(look(), units) << "a cue is for an empty field";
    EnableWindow(field, FALSE);
    EXPECT_EQ(text(), " ");
    EnableWindow(field, TRUE);
    SendMessageA(field, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(SYSTEM_FONT)), TRUE);
    EXPECT_GT(right(), before) << "a font resets the margins";
    edit.detach();
    EXPECT_EQ(right(), before);
}

int appCalls = 0;
WNDPROC appBefore = nullptr;
LRESULT CALLBACK appSubclass(HWND window, UINT message, WPARAM word, LPARAM data) {
    if (message == WM_CHAR) ++appCalls;
    return CallWindowProcA(appBefore, window, message, word, data);
}

TEST_F(Edit, LivesBesideOtherSubclasses) {
    edit.setNumber(width);
    TvEdit second;
    EXPECT_EQ(second.attach(field), 1);
    appBefore = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(appSubclass)));
    appCalls = 0;
    type("1x");
    second.detach();
    edit.detach();
    type("x");
    EXPECT_EQ(text(), "1x") << "without the object";
    EXPECT_EQ(appCalls, 3) << "the one that came later goes on";
    EXPECT_EQ(edit.attach(field), 1);
    EXPECT_EQ(TvEdit::find(field), &edit);
    EXPECT_EQ(TvEdit::find(window), nullptr);
    EXPECT_EQ(TvEdit::find(nullptr), nullptr);
    type("y3");
    EXPECT_EQ(text(), "1x3") << "its rule has stayed";
    EXPECT_EQ(edit.attach(window), 0) << "another class";
    EXPECT_EQ(edit.getHWND(), nullptr);
}

TEST_F(Edit, SurvivesWhateverHappensWhenItChanges) {
    const HWND wide = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 10,
                                      60, 100, 22, window, nullptr, nullptr, nullptr);
    auto heap = std::make_unique<TvEdit>();
    heap->attach(wide);
    heap->setNumber(width);
    SetFocus(wide);
    type("1x2");
    EXPECT_EQ(textOf(wide), "12") << "a field of wide characters";
    onCommand = [&](int notification) {
        if (notification == EN_CHANGE) heap.reset();
    };
    press(VK_UP);
    EXPECT_EQ(textOf(wide), "13");
    onCommand = [&](int notification) {
        if (notification == EN_CHANGE && IsWindow(field)) DestroyWindow(field);
    };
    edit.setNumber(width);
    set("1");
    EXPECT_EQ(edit.getHWND(), nullptr);
    edit.setUnits("mm");
    edit.setFault("gone");
    EXPECT_EQ(edit.check(), 1);
    EXPECT_EQ(edit.step(1), 0);
    EXPECT_EQ(edit.attach(window, 7), 0);
}

}  // namespace

// Edit fields under real keys, mouse and clipboard.
#include "control_fixture.h"
#include "support/picture.h"
#include "toolbox/numbers.h"
#include "toolbox/platform.h"
#include "toolbox/text.h"

namespace {

using namespace toolbox::testing;

constexpr UINT kPause = 30;  // ms

class Edit : public ControlFixture {
  protected:
    Edit() {
        width.setLimits(0, 40);
        edit.setPause(kPause);
        EXPECT_EQ(edit.attach(window, 7), 1);
        SetFocus(field);
    }
    [[nodiscard]] std::string text() const { return textOf(field); }
    void set(const char* text) {
        SetWindowTextA(field, text);
        SendMessageA(field, EM_SETSEL, 0, -1);
    }
    void paste(const std::string& text) {
        toolbox::platform::current().clipboard->setText(text.c_str());
        press('V', {VK_CONTROL});
    }
    [[nodiscard]] bool isMarked() const { return !edit.getFault().empty(); }

    HWND field = add("EDIT", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, 7, 10);
    TvDouble width;
    TvEdit edit;
};

TEST_F(Edit, TakesTheCharactersOfItsRuleByEveryWay) {
    edit.setNumber(width);
    type("1a2.;5x");
    EXPECT_EQ(text(), "12.5");
    EXPECT_EQ(shownTip(), "The character 'x' cannot be entered here.");
    type("0");
    EXPECT_EQ(shownTip(), "");
    set("1");
    paste("3.25abc");
    tell(field, WM_COMMAND, WM_PASTE);
    tell(field, EM_REPLACESEL, TRUE, "x");  // as what is dropped
    EXPECT_EQ(text(), "1");
    paste("3,25\r\n");
    EXPECT_EQ(text(), "3,25");
    set("program's own");
    EXPECT_EQ(text(), "program's own") << "free";

    edit.setRule(TvString(703));
    SetWindowTextA(field, "ab");
    SendMessageA(field, EM_SETSEL, 2, 2);
    paste("C-" + std::string(2'000'000, 'q'));
    EXPECT_EQ(text(), "abqq");
    press('Z', {VK_CONTROL});
    EXPECT_EQ(text(), "ab") << "taken back as one edit";
    set("no");
    EXPECT_EQ(edit.check(), 0);
    EXPECT_TRUE(isMarked());
    edit.removeRule();
    type("ANY 1");
    EXPECT_EQ(text(), "ANY 1");
    EXPECT_FALSE(isMarked());
}

TEST_F(Edit, MarksAWrongEntryAfterAPauseNotBefore) {
    edit.setNumber(width);
    edit.setPause(400);
    pointAt(field);
    type("123");
    EXPECT_FALSE(isMarked()) << "1 on the way to 12 is nobody's fault, 123 is not finished";
    EXPECT_TRUE(pumpUntil([&] { return isMarked(); }));
    EXPECT_TRUE(pumpUntil([&] { return shownTip() == edit.getFault().view(); }));
    press(VK_BACK);
    EXPECT_FALSE(isMarked());
    ::Sleep(500ul);
    pumpMessages();
    EXPECT_FALSE(isMarked()) << "12 is right";

    edit.setPause(kPause);
    onCommand = [&](int notification) {
        if (notification == EN_CHANGE) edit.setFault("odd");
    };
    type("1");
    ::Sleep(2 * kPause);
    pumpMessages();
    EXPECT_EQ(edit.getFault(), "odd") << "set by who was told of the change";
    onCommand = nullptr;
    set("5");
    EXPECT_FALSE(isMarked()) << "what the program sets";
}

TEST_F(Edit, StepsByKeysAndWheel) {
    edit.setNumber(width, 0.1);
    const struct {
        const char* text;
        WORD key;
        const char* stepped;
    } cases[] = {{"0.6", VK_UP, "0.7"},  // the bits of a typed one
                 {"0.7", VK_NEXT, "0"},  // the nearer end
                 {"wrong", VK_UP, "wrong"},
                 {"99", VK_DOWN, "40"}};  // from beyond the limits
    for (const auto& c : cases) {
        set(c.text);
        press(c.key);
        EXPECT_EQ(text(), c.stepped);
    }
    press('Z', {VK_CONTROL});
    EXPECT_EQ(text(), "99");

    set("5");
    turnWheel(WHEEL_DELTA);
    EXPECT_EQ(text(), "5") << "the pointer is elsewhere";
    pointAt(field);
    turnWheel(WHEEL_DELTA);
    turnWheel(-WHEEL_DELTA / 2);
    EXPECT_EQ(text(), "5.1");
    tell(field, EM_SETREADONLY, TRUE);
    press(VK_UP);
    EXPECT_EQ(text(), "5.1") << "read only";
}

TEST_F(Edit, ShowsUnitsCueAndMark) {
    const auto right = [&] { return HIWORD(tell(field, EM_GETMARGINS)); };
    const int before = right();
    SetFocus(window);
    Picture seen = pictureOf(field);
    const std::function<void()> changes[] = {[&] { edit.setUnits("mm"); },
                                             [&] { edit.setFault("wrong"); },
                                             [&] { edit.setCue("thickness"); }};
    for (const auto& change : changes) {
        change();
        UpdateWindow(field);
        pumpMessages();
        EXPECT_NE(std::exchange(seen, pictureOf(field)), pictureOf(field)) << &change - changes;
    }
    EXPECT_GT(right(), before) << "room for the units";
    EXPECT_EQ(text(), "");
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
    edit.setFault("gone");
    EXPECT_EQ(edit.check(), 1);
    EXPECT_EQ(edit.step(1), 0);
}

}  // namespace

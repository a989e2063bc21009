// Tips, the status bar and tool bars, under a real pointer.
#include <limits>

#include "control_fixture.h"
#include "support/picture.h"
#include "toolbox/command_manager.h"
#include "toolbox/numbers.h"

namespace {

using namespace toolbox::testing;

constexpr UINT kDelay = 30;  // ms

class Tips : public ControlFixture {
  protected:
    Tips() {
        EXPECT_EQ(tips.attach(window), 1);
        tips.setDelay(kDelay);
    }
    /// The tip that comes; empty when none does.
    std::string waited() {
        const ULONGLONG end = GetTickCount64() + 10 * kDelay + 300;
        pumpUntil([&] { return !tipShown().empty() || GetTickCount64() > end; });
        return tipShown();
    }
    void leave() {
        moveMouse(window, {480, 380});
        EXPECT_TRUE(pumpUntil([&] { return tipShown().empty(); }));
    }
    HWND button = add("BUTTON", 0, 1, 10), disabled = add("BUTTON", WS_DISABLED, 2, 40);
    TvToolTip tips;
};

TEST_F(Tips, AreShownForControlsDisabledOnesAndAreas) {
    int asked = 0;
    EXPECT_EQ(tips.add(button, "first"), 1);
    EXPECT_EQ(tips.add(2, TvTip([&] {
                           ++asked;
                           return CString("a disabled one");
                       })),
              1);
    EXPECT_EQ(tips.addArea(1, {0, 100, 300, 200}, "area"), 1);
    EXPECT_EQ(tips.addArea(2, {0, 150, 300, 200}, "upper\narea"), 1);
    EXPECT_EQ(tips.add(77, "none"), 0);
    EXPECT_EQ(asked, 0);
    const struct {
        HWND over;
        POINT at;
        const char* tip;
    } cases[] = {{button, {5, 5}, "first"},
                 {disabled, {5, 5}, "a disabled one"},
                 {window, {50, 160}, "area"},
                 {window, {400, 50}, ""}};
    for (const auto& c : cases) {
        moveMouse(c.over, c.at);
        EXPECT_EQ(waited(), c.tip);
        leave();
    }
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(tips.removeArea(2), 1);
    moveMouse(window, {50, 160});
    EXPECT_EQ(waited(), "area");
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    mouseButton(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(waited(), "") << "clicked";
}

TEST_F(Tips, MayEndWhateverTheyAreAskedBy) {
    auto own = std::make_unique<TvToolTip>();
    own->attach(window);
    own->setDelay(kDelay);
    bool asked = false;
    own->add(button, TvTip([&] {
                 asked = true;
                 own.reset();
                 DestroyWindow(button);
                 return CString("gone");
             }));
    pointAt(button);
    EXPECT_TRUE(pumpUntil([&] { return asked; }));
    tips.add(disabled, TvTip([&] {
                 DestroyWindow(window);
                 return CString("gone");
             }));
    pointAt(disabled);
    EXPECT_TRUE(pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_EQ(tips.getHWND(), nullptr);
}

class Bars : public ControlFixture {
  protected:
    Bars() {
        EXPECT_EQ(bar.create(window, 50), 1);
        pumpMessages();
    }
    [[nodiscard]] std::string pane(int i) const {
        char text[200] = "";
        tell(bar.getHWND(), SB_GETTEXTA, static_cast<WPARAM>(i), text);
        return text;
    }
    [[nodiscard]] RECT place(int i) const {
        RECT area{};
        tell(bar.getHWND(), SB_GETRECT, static_cast<WPARAM>(i), &area);
        return area;
    }
    void select(UINT item, UINT flags) const {
        tell(window, WM_MENUSELECT, MAKEWPARAM(item, flags));
    }
    TvStatusBar bar;
};

TEST_F(Bars, PanesShareTheBarAndKeepTheirTexts) {
    EXPECT_EQ(bar.setPanes({{.characters = 0},
                            {.characters = 12, .alignment = TvStatusBar::AtRight},
                            {.characters = 5, .alignment = TvStatusBar::Centered}}),
              1);
    EXPECT_EQ(bar.setText(1, "x = 12.5"), 1);
    EXPECT_EQ(bar.setText(0, "one\ttwo\n"), 1);
    EXPECT_EQ(bar.setText(3, "none"), 0);
    EXPECT_EQ(bar.setPanes({}), 0);
    const int fixed = place(1).right - place(1).left;
    const int rest = place(0).right;
    MoveWindow(window, 50, 50, 700, 300, TRUE);
    tell(bar.getHWND(), WM_SIZE);
    EXPECT_EQ(place(1).right - place(1).left, fixed);
    EXPECT_EQ(place(0).right, rest + 200);
    EXPECT_EQ(pane(0), "one two ");
    EXPECT_EQ(pane(1), "\t\tx = 12.5 ");
    EXPECT_EQ(bar.getText(1), "x = 12.5");
}

TEST_F(Bars, ShowsTheHintsOfMenus) {
    bar.setText(0, "Ready");
    select(701, MF_HILITE);
    EXPECT_EQ(pane(0), "Draws a beam");
    select(799, MF_HILITE);
    EXPECT_EQ(pane(0), "Ready") << "no text";
    select(701, MF_HILITE | MF_POPUP);
    EXPECT_EQ(pane(0), "Ready");
    bar.setHints([](UINT command) { return CString("own " + std::to_string(command)); });
    select(701, MF_HILITE);
    EXPECT_EQ(pane(0), "own 701");
    bar.setText(0, "Saved");
    EXPECT_EQ(pane(0), "own 701");
    select(0, 0xFFFF);
    EXPECT_EQ(pane(0), "Saved");
    TvStatusBar::showHintIn(bar.getHWND(), "from afar");
    EXPECT_EQ(pane(0), "from afar");
    TvStatusBar::showHintIn(window, "ignored");

    // A real menu under real keys.
    bar.showHint(CString());
    bar.setHints({});
    SetMenu(window, LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(100)));
    bool seen = false;
    onTimer = [&] {
        seen = seen || pane(0) == "Draws a beam";
        if (seen)
            EndMenu();
        else
            pressKey(VK_DOWN);
    };
    SetTimer(window, 1, 20, nullptr);
    SendMessageA(window, WM_SYSCOMMAND, SC_KEYMENU, 'f');
    KillTimer(window, 1);
    EXPECT_TRUE(seen);
    pumpMessages();
    EXPECT_EQ(pane(0), "Saved");
}

TEST_F(Bars, ShowsProgressInAPane) {
    bar.setPanes({{.characters = 0}, {.characters = 20}});
    for (const double part : {0.25, -1.0, 7.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(bar.setProgress(1, part), 1);
    const HWND progress = FindWindowExA(bar.getHWND(), nullptr, PROGRESS_CLASSA, nullptr);
    ASSERT_NE(progress, nullptr);
    EXPECT_TRUE(IsWindowVisible(progress));
    EXPECT_EQ(tell(progress, PBM_GETPOS), 0);
    bar.setProgress(1, 0.5);
    EXPECT_EQ(tell(progress, PBM_GETPOS), 500);
    EXPECT_EQ(bar.setProgress(2, 0.5), 0);
    bar.endProgress();
    EXPECT_FALSE(IsWindow(progress));
}

TEST_F(Bars, HasAGripUnlessTheFrameIsMaximized) {
    const auto gripped = [&] {
        RECT area{};
        GetWindowRect(bar.getHWND(), &area);
        return SendMessageA(bar.getHWND(), WM_NCHITTEST, 0,
                            MAKELPARAM(area.right - 3, area.bottom - 3)) == HTBOTTOMRIGHT;
    };
    for (const bool maximized : {false, true, false}) {
        ShowWindow(window, maximized ? SW_MAXIMIZE : SW_RESTORE);
        tell(bar.getHWND(), WM_SIZE);
        EXPECT_EQ(gripped(), !maximized);
    }
    DestroyWindow(bar.getHWND());
    EXPECT_EQ(bar.setText(0, "gone"), 0);
    select(701, MF_HILITE);
    EXPECT_EQ(bar.create(window), 1) << "again";
}

class ToolBarTest : public Bars {
  protected:
    ToolBarTest() {
        const GCOMMBase::CommRec table[] = {{701, 0}, {702, 0}};
        EXPECT_EQ(manager.manage(&tool, 0), 0);
        SetPointer<Tool> tools;
        tools.add(&tool);
        EXPECT_EQ(manager.manage(2, table, tools, -1), 1);
    }
    void make(int dpi = 96) {
        ASSERT_EQ(tool.create(window, 60, dpi), 1);
        ASSERT_EQ(tool.setPictures(GetModuleHandleA(nullptr), 100), 1);
        EXPECT_EQ(tool.addButton(701, 0, 701), 1);
        EXPECT_EQ(tool.addSeparator(), 1);
        EXPECT_EQ(tool.addButton(702, 1, 702), 1);
        pumpMessages();
    }
    [[nodiscard]] RECT button(int index) const {
        RECT area{};
        tell(tool.getHWND(), TB_GETITEMRECT, static_cast<WPARAM>(index), &area);
        return area;
    }
    void clickButton(int index) const {
        const RECT area = button(index);
        moveMouse(tool.getHWND(), {(area.left + area.right) / 2, (area.top + area.bottom) / 2});
        mouseButton(MOUSEEVENTF_LEFTDOWN);
        mouseButton(MOUSEEVENTF_LEFTUP);
    }
    [[nodiscard]] std::string states() const {
        std::string all;
        for (const WPARAM id : {701, 702})
            all += std::to_string(tell(tool.getHWND(), TB_GETSTATE, id)) + " ";
        return all;
    }
    GCOMMBase manager{window, GetModuleHandleA(nullptr)};
    TvToolBar tool{1};
};

TEST_F(ToolBarTest, SendsCommandsAndFollowsThem) {
    EXPECT_EQ(tool.refresh(), 0) << "no window";
    make();
    commands();
    clickButton(0);
    EXPECT_EQ(commands(), "701/0 ");
    EXPECT_EQ(states(), "4 4 ") << "only the command changes the button";
    manager[701].setCheckStatus(1);
    manager[702].setEnableStatus(0);
    EXPECT_EQ(states(), "5 0 ");
    clickButton(2);
    EXPECT_EQ(commands(), "") << "a greyed button is dead";
    EXPECT_EQ(tool.setCommandCheckStatus(55, 1), 0);
    EXPECT_EQ(tool.refresh(), 1);
    EXPECT_EQ(tool.isVisible(), 1);
    EXPECT_EQ(tool.setVisibleStatus(0, 0), 1);
    EXPECT_EQ(tool.isVisible(), 0);
}

TEST_F(ToolBarTest, ShowsItsPicturesAtEveryResolution) {
    make(96);
    const int small = button(0).right - button(0).left;
    const Picture before = pictureOf(tool.getHWND());
    TvToolBar large(2);
    ASSERT_EQ(large.create(window, 61, 144), 1);
    ASSERT_EQ(large.setPictures(GetModuleHandleA(nullptr), 100), 1);
    large.addButton(701, 1);
    int width = 0, height = 0;
    ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(tell(large.getHWND(), TB_GETIMAGELIST)),
                          &width, &height);
    EXPECT_EQ(width, 12);
    RECT area{};
    tell(large.getHWND(), TB_GETITEMRECT, 0, &area);
    EXPECT_GT(area.right - area.left, small);
    EXPECT_EQ(tool.setPictures(GetModuleHandleA(nullptr), 101), 0);
    EXPECT_EQ(pictureOf(tool.getHWND()), before);
    const auto count = [&](std::uint32_t colour) {
        return std::count(before.pixels.begin(), before.pixels.end(), colour);
    };
    EXPECT_GT(count(0x000080), 0);
    EXPECT_EQ(count(0xFF00FF), 0) << "transparent";
}

TEST_F(ToolBarTest, TipsItsButtonsWithTheirHints) {
    make();
    tool.setStatusBar(bar.getHWND());
    moveMouse(tool.getHWND(), {button(2).left + 3, button(2).top + 3});
    EXPECT_TRUE(
        pumpUntil([&] { return pane(0) == "Removes what is selected" && tipShown() == "Delete"; }));
    moveMouse(window, {300, 200});
    EXPECT_TRUE(pumpUntil([&] { return pane(0).empty(); }));
}

TEST_F(ToolBarTest, MayEndInAHandlerOfItsClick) {
    make();
    onCommand = [&](int) { DestroyWindow(tool.getHWND()); };
    clickButton(0);
    EXPECT_EQ(tool.getHWND(), nullptr);
    EXPECT_EQ(tool.setCommandCheckStatus(701, 1), 0);
    onCommand = nullptr;
    auto heap = std::make_unique<TvToolBar>(9);
    ASSERT_EQ(heap->create(window), 1);
    heap->addButton(701, 0);
    const HWND left = heap->getHWND();
    onCommand = [&](int) { heap.reset(); };
    commands();
    tell(left, WM_COMMAND, 701, left);
    EXPECT_EQ(heap, nullptr);
    onCommand = nullptr;
    commands();
    tell(left, WM_COMMAND, 701, left);  // nobody is left to ask
    EXPECT_TRUE(IsWindow(left));
}

TEST_F(ControlFixture, LeaksNothing) {
    expectNoHandlesLeft(200, [&] {
        TvStatusBar bar;
        TvToolBar tool(1);
        TvToolTip tips;
        bar.create(window);
        bar.setProgress(0, 0.5);
        tool.create(window);
        tool.setPictures(GetModuleHandleA(nullptr), 100);
        tool.addButton(701, 0, 701);
        const HWND field = add("EDIT", 0, 1, 60), label = add("STATIC", 0, 2, 100);
        TvEdit edit;
        edit.attach(field);
        edit.setNumber(TvLong());
        tell(field, EM_REPLACESEL, TRUE, "x");  // is refused
        edit.setUnits("mm");
        edit.setFault("wrong");
        TvStatic link;
        link.attach(label);
        link.setLink("link");
        tips.attach(window);
        tips.add(field, "tip");
        UpdateWindow(window);
        pumpMessages();
        for (const HWND each : {field, label, bar.getHWND(), tool.getHWND()}) DestroyWindow(each);
    });
}

}  // namespace

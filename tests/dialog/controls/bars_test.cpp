// Tips, the status bar and tool bars, under a real pointer.
#include <limits>

#include "control_fixture.h"
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
        pumpUntil([&] { return !shownTip().empty() || GetTickCount64() > end; });
        return shownTip();
    }
    HWND button = add("BUTTON", 0, 1, 10), disabled = add("BUTTON", WS_DISABLED, 2, 40);
    TvToolTip tips;
};

TEST_F(Tips, AreShownForControlsDisabledOnesAndAreas) {
    EXPECT_EQ(tips.add(button, "first"), 1);
    EXPECT_EQ(tips.add(2, TvTip([] { return CString("a disabled one"); })), 1);
    EXPECT_EQ(tips.addArea(1, {0, 100, 300, 200}, "area"), 1);
    EXPECT_EQ(tips.addArea(2, {0, 150, 300, 200}, "upper\narea"), 1);
    EXPECT_EQ(tips.add(77, "none"), 0);
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
        moveMouse(window, {480, 380});
        EXPECT_TRUE(pumpUntil([&] { return shownTip().empty(); }));
    }
}

TEST_F(Tips, MayEndWhateverTheyAreAskedBy) {
    auto own = std::make_unique<TvToolTip>();
    own->attach(window);
    own->setDelay(kDelay);
    own->add(button, TvTip([&] {
                 own.reset();
                 DestroyWindow(button);
                 return CString("gone");
             }));
    pointAt(button);
    EXPECT_TRUE(pumpUntil([&] { return !own; }));
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
    void select(UINT item, UINT flags) const {
        tell(window, WM_MENUSELECT, MAKEWPARAM(item, flags));
    }
    TvStatusBar bar;
};

TEST_F(Bars, PanesShareTheBarAndKeepTheirTexts) {
    EXPECT_EQ(bar.setPanes({{.characters = 0}, {.characters = 12}, {.characters = 20}}), 1);
    EXPECT_EQ(bar.setText(1, "x = 12.5"), 1);
    EXPECT_EQ(bar.setText(0, "one\ttwo\n"), 1);
    EXPECT_EQ(bar.setText(3, "none"), 0);
    EXPECT_EQ(bar.setPanes({}), 0);
    EXPECT_EQ(pane(0), "one two ");
    EXPECT_EQ(pane(1), "x = 12.5");
    for (const double part : {0.5, -1.0, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(bar.setProgress(2, part), 1);
    const HWND progress = FindWindowExA(bar.getHWND(), nullptr, PROGRESS_CLASSA, nullptr);
    ASSERT_NE(progress, nullptr);
    EXPECT_EQ(tell(progress, PBM_GETPOS), 0);
    bar.setProgress(2, 0.5);
    EXPECT_EQ(tell(progress, PBM_GETPOS), 500);
    bar.endProgress();
    EXPECT_FALSE(IsWindow(progress));
}

TEST_F(Bars, ShowsTheHintsOfMenus) {
    bar.setText(0, "Ready");
    select(799, MF_HILITE);
    EXPECT_EQ(pane(0), "Ready") << "without a text";
    select(701, MF_HILITE);
    EXPECT_EQ(pane(0), "Draws a beam");
    bar.setText(0, "Saved");
    EXPECT_EQ(pane(0), "Draws a beam");
    select(0, 0xFFFF);
    EXPECT_EQ(pane(0), "Saved");
    bar.setHints([](UINT command) { return CString("own " + std::to_string(command)); });
    select(701, MF_HILITE);
    EXPECT_EQ(pane(0), "own 701");
    DestroyWindow(bar.getHWND());
    EXPECT_EQ(bar.setText(0, "gone"), 0);
    select(701, MF_HILITE);
    EXPECT_EQ(bar.create(window), 1) << "again";
}

class ToolBarTest : public Bars {
  protected:
    ToolBarTest() {
        const GCOMMBase::CommRec table[] = {{701, 0}, {702, 0}};
        manager.manage(&tool, 0);
        SetPointer<Tool> tools;
        tools.add(&tool);
        EXPECT_EQ(manager.manage(2, table, tools, -1), 1);
        EXPECT_EQ(tool.refresh(), 0) << "no window";
        EXPECT_EQ(tool.create(window, 60), 1);
        EXPECT_EQ(tool.setPictures(GetModuleHandleA(nullptr), 100), 1);
        EXPECT_EQ(tool.addButton(701, 0, 701), 1);
        EXPECT_EQ(tool.addSeparator(), 1);
        EXPECT_EQ(tool.addButton(702, 1, 702), 1);
        pumpMessages();
        commands();
    }
    void clickButton(int index) const {
        RECT area{};
        tell(tool.getHWND(), TB_GETITEMRECT, static_cast<WPARAM>(index), &area);
        moveMouse(tool.getHWND(), {(area.left + area.right) / 2, (area.top + area.bottom) / 2});
        mouseButton(MOUSEEVENTF_LEFTDOWN);
        mouseButton(MOUSEEVENTF_LEFTUP);
    }
    [[nodiscard]] LRESULT state(WPARAM id) const { return tell(tool.getHWND(), TB_GETSTATE, id); }

    GCOMMBase manager{window, GetModuleHandleA(nullptr)};
    TvToolBar tool{1};
};

TEST_F(ToolBarTest, SendsCommandsAndFollowsThem) {
    clickButton(0);
    EXPECT_EQ(commands(), "701/0 ");
    EXPECT_EQ(state(701), TBSTATE_ENABLED) << "only the command changes the button";
    manager[701].setCheckStatus(1);
    manager[702].setEnableStatus(0);
    EXPECT_EQ(state(701), TBSTATE_ENABLED | TBSTATE_CHECKED);
    EXPECT_EQ(state(702), 0);
    clickButton(2);
    EXPECT_EQ(commands(), "") << "a greyed button is dead";
    EXPECT_EQ(tool.setCommandCheckStatus(55, 1), 0);
}

TEST_F(ToolBarTest, MayEndInAHandlerOfItsClick) {
    onCommand = [&](int) { DestroyWindow(tool.getHWND()); };
    clickButton(0);
    EXPECT_EQ(tool.getHWND(), nullptr);
    EXPECT_EQ(tool.setCommandCheckStatus(701, 1), 0);
    auto heap = std::make_unique<TvToolBar>(9);
    ASSERT_EQ(heap->create(window), 1);
    heap->addButton(701, 0);
    const HWND left = heap->getHWND();
    onCommand = [&](int) { heap.reset(); };
    tell(left, WM_COMMAND, 701, left);
    EXPECT_EQ(heap, nullptr);
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
        edit.setFault("wrong");
        TvStatic link;
        link.attach(label);
        link.setLink("link");
        tips.attach(window);
        tips.add(field, "tip");
        for (const HWND each : {field, label, bar.getHWND(), tool.getHWND()}) DestroyWindow(each);
    });
}

}  // namespace

// Tags under the real mouse and keyboard.
#include <gtest/gtest.h>

#include "tag_window.h"
#include "toolbox/platform.h"

namespace {

using namespace toolbox;
using namespace toolbox::testing;
using Ids = std::vector<TvTagId>;

/// Without the box's own bounds in the way: where the tag lies, in points of the window.
struct Place {
    TvPoint anchor, offset;
    bool operator==(const Place&) const = default;
};

class TagToolTest : public TagWindow {
  protected:
    [[nodiscard]] Place placeOf(TvTagId id) const { return {tag(id).anchor, tag(id).offset}; }
};

TEST_F(TagToolTest, SelectsByClicksAndByTheRubberBand) {
    const TvTagId a = add({50, 50}), b = add({50, 150}), c = add({250, 150});
    click(middle(a));
    EXPECT_EQ(selection(), Ids{a});
    click(middle(b));
    EXPECT_EQ(selection(), Ids{b});
    // The keyboard's state may come late from the display; the message carries it.
    const auto clickWith = [&](TvTagId id, WPARAM keys) {
        const POINT at = middle(id);
        SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON | keys, MAKELPARAM(at.x, at.y));
        SendMessageA(window, WM_LBUTTONUP, keys, MAKELPARAM(at.x, at.y));
    };
    clickWith(c, MK_CONTROL);
    EXPECT_EQ(selection(), (Ids{b, c}));
    clickWith(b, MK_SHIFT);
    EXPECT_EQ(selection(), Ids{c});
    click({400, 300});
    EXPECT_EQ(selection(), Ids{});
    drag({40, 140}, {330, 200});
    EXPECT_EQ(selection(), (Ids{b, c}));
    EXPECT_EQ(stack.undoCount(), 0u);
    tool->setRubberBand(0);
    click({400, 300});
    EXPECT_EQ(selection(), (Ids{b, c})) << "the press is the window's";
}

TEST_F(TagToolTest, MovesTheSelectionTogether) {
    const TvTagId plain = add({50, 50});
    const TvTagId held = add({50, 150}, [](TvTag& tag) {
        tag.leader = true, tag.offset = {20, 9};
    });
    const TvTagId locked = add({250, 150}, [](TvTag& tag) { tag.locked = true; });
    tags->setSelection(Ids{plain, held, locked});
    const Place before = placeOf(locked), heldBefore = placeOf(held);
    drag(middle(plain), {middle(plain).x + 30, middle(plain).y - 12});
    EXPECT_EQ(placeOf(plain), (Place{{40, 181}, {0, 0}}));
    EXPECT_EQ(placeOf(held), (Place{{25, 125}, {50, -3}}));
    EXPECT_EQ(placeOf(locked), before);
    EXPECT_STREQ(stack.undoText(), "Undo Move labels");
    EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(placeOf(held), heldBefore);
    EXPECT_EQ(stack.redo(), 1);
    // Taken by its leader it goes as a whole.
    tags->setSelection({});
    const POINT leader{55, 148};
    ASSERT_EQ(tool->layout()->find({55, 148}, 3).id, held);
    drag(leader, {leader.x + 20, leader.y + 20});
    EXPECT_EQ(placeOf(held), (Place{{35, 115}, {50, -3}}));
}

TEST_F(TagToolTest, KeepsTheAxisWithShiftAndGivesUpWithEscapeOrTheRightButton) {
    const TvTagId id = add({50, 50});
    tags->select(id);
    const Place before = placeOf(id);
    const Picture still = picture();
    const POINT from = middle(id);
    const auto move = [&](WPARAM keys) {
        SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON | keys, MAKELPARAM(from.x + 60, from.y + 9));
    };
    for (const bool byKey : {true, false}) {
        press(from);
        moveMouse(window, {from.x + 60, from.y + 9});
        EXPECT_FALSE(picture() == still);
        InvalidateRect(window, nullptr, FALSE);
        UpdateWindow(window);  // paints over the figure, which is there again
        if (byKey)
            key(VK_ESCAPE);
        else
            mouseButton(MOUSEEVENTF_RIGHTDOWN), mouseButton(MOUSEEVENTF_RIGHTUP);
        EXPECT_TRUE(picture() == still);
        mouseButton(MOUSEEVENTF_LEFTUP);
        ::Sleep(GetDoubleClickTime() + 1);
        EXPECT_EQ(placeOf(id), before);
        EXPECT_EQ(selection(), Ids{id});
        EXPECT_EQ(GetCapture(), nullptr);
    }
    press(from);
    move(0);
    move(MK_SHIFT);
    mouseButton(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(placeOf(id), (Place{{55, 175}, {0, 0}}));
}

TEST_F(TagToolTest, MovesTheAnchorApartAndChangesTheWidthByHandles) {
    const TvTagId id = add({100, 100}, [](TvTag& tag) {
        tag.text = "two words";
        tag.leader = true;
        tag.offset = {40, 30};
    });
    tags->select(id);
    const auto box = tool->layout()->tag(id)->box;
    drag({100, 100}, {80, 120});
    EXPECT_EQ(placeOf(id), (Place{{40, 140}, {60, 10}}));
    EXPECT_EQ(tool->layout()->tag(id)->box, box);
    const auto right = std::lround(box.right), center = std::lround((box.top + box.bottom) / 2);
    drag({right, center}, {right - 15, center});
    EXPECT_NEAR(tag(id).width, box.right - box.left - 15 - 2 * tag(id).margin, 1);
    EXPECT_EQ(tool->layout()->tag(id)->text.windows1252(), "two\nwords");
    EXPECT_STREQ(stack.undoText(), "Undo Edit label");
}

TEST_F(TagToolTest, MovesWalksAndDeletesByKeys) {
    const TvTagId a = add({50, 50}), b = add({50, 150}), c = add({250, 150});
    key(VK_TAB);
    key(VK_TAB);
    EXPECT_EQ(selection(), Ids{b});
    key(VK_TAB, {VK_SHIFT});
    key(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(selection(), Ids{c});
    EXPECT_EQ(tool->revealed, (Ids{a, b, a, c}));
    const Place before = placeOf(c);
    key(VK_RIGHT);
    key(VK_DOWN, {VK_SHIFT});
    EXPECT_EQ(placeOf(c), (Place{{before.anchor.x + 0.5, before.anchor.y - 5}, {0, 0}}));
    EXPECT_EQ(stack.undoCount(), 1u) << "one gesture";
    key('A', {VK_CONTROL});
    key(VK_LEFT);
    EXPECT_EQ(stack.undoCount(), 2u);
    EXPECT_EQ(selection(), (Ids{a, b, c}));
    key(VK_DELETE);
    EXPECT_EQ(tags->count(), 0u);
    EXPECT_STREQ(stack.undoText(), "Undo Delete labels");
    stack.undo();
    EXPECT_EQ(tags->ids(), (Ids{a, b, c}));
    key(VK_ESCAPE);
    EXPECT_EQ(selection(), Ids{});
}

TEST_F(TagToolTest, CopiesAndPastesAsTextAndAsTags) {
    const TvTagId a = add({50, 50}, [](TvTag& tag) { tag.text = "one\ntwo"; });
    const TvTagId b = add({50, 150});
    key('A', {VK_CONTROL});
    key('C', {VK_CONTROL});
    EXPECT_EQ(platform::current().clipboard->text(), "one\r\ntwo\r\nq = 12.5");
    key('V', {VK_CONTROL});
    key('V', {VK_CONTROL});
    ASSERT_EQ(tags->count(), 6u);
    const Ids pasted = selection();
    ASSERT_EQ(pasted.size(), 2u);
    EXPECT_EQ(tag(pasted[0]).text, "one\ntwo");
    EXPECT_EQ(tag(pasted[1]).anchor, (TvPoint{tag(b).anchor.x + 10, tag(b).anchor.y - 10}));
    key('X', {VK_CONTROL});
    EXPECT_EQ(tags->count(), 4u);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(stack.undo(), 1);
    EXPECT_EQ(tags->ids(), (Ids{a, b}));
    // A text of another program, and bytes that are no tags.
    platform::current().clipboard->setText("from elsewhere");
    tool->command(TagPaste);
    EXPECT_EQ(tag(selection().at(0)).text, "from elsewhere");
    platform::current().clipboard->setData("Toolbox labels", "nonsense", "");
    tool->command(TagPaste);
    EXPECT_NE(tool->reported, "");
    EXPECT_EQ(tags->count(), 3u);
}

TEST_F(TagToolTest, CarriesOutTheCommandsOfTheMenu) {
    struct Case {
        std::vector<UINT> commands;
        TvAlign align;
        TvLevel level;
        TvTagBorder border;
    };
    const TvTagId a = add({50, 50}), b = add({50, 150});
    for (const Case& each : {Case{{TagAlignRight, TagAlignBottom, TagNoBorder, TagFilled},
                                  TvAlign::right,
                                  TvLevel::bottom,
                                  TvTagBorder::none},
                             Case{{TagAlignCenter, TagAlignMiddle, TagBorder, TagLeader},
                                  TvAlign::center,
                                  TvLevel::middle,
                                  TvTagBorder::frame},
                             Case{{TagAlignLeft, TagAlignTop, TagRoundedBorder, TagLocked},
                                  TvAlign::left,
                                  TvLevel::top,
                                  TvTagBorder::rounded}}) {
        for (const UINT command : each.commands) {
            tags->setSelection({});
            EXPECT_EQ(tool->state(command), UINT{MF_GRAYED}) << command;
            tags->setSelection(Ids{a, b});
            EXPECT_EQ(tool->state(command) & MF_CHECKED, 0u) << command;
            EXPECT_EQ(tool->command(command), 1);
            EXPECT_EQ(tool->state(command), UINT{MF_CHECKED}) << command;
        }
        EXPECT_EQ(tag(b).align, each.align);
        EXPECT_EQ(tag(b).level, each.level);
        EXPECT_EQ(tag(b).border, each.border);
    }
    EXPECT_TRUE(tag(a).fill.filled && tag(a).leader && tag(a).locked);
    tool->command(TagLocked);
    EXPECT_FALSE(tag(a).locked) << "a switch";
    tags->setSelection(Ids{a});
    tool->command(TagToFront);
    EXPECT_EQ(tags->ids(), (Ids{b, a}));
    tool->command(TagToBack);
    EXPECT_EQ(tags->ids(), (Ids{a, b}));
    EXPECT_EQ(tool->command(TagSelectAll + 1), 0);
}

void CALLBACK endMenu(HWND, UINT, UINT_PTR, DWORD) {
    EndMenu();
}

TEST_F(TagToolTest, ShowsTheMenuOfTheTagUnderTheMouse) {
    const TvTagId a = add({50, 50}), b = add({50, 150});
    tags->select(b);
    PostMessageA(window, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageA(window, WM_KEYDOWN, VK_DOWN, 0);  // the second item: delete
    PostMessageA(window, WM_KEYDOWN, VK_RETURN, 0);
    SetTimer(window, 1, 5000, endMenu);
    POINT at = middle(a);
    ClientToScreen(window, &at);
    SendMessageA(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), MAKELPARAM(at.x, at.y));
    KillTimer(window, 1);
    pumpMessages();
    EXPECT_EQ(tags->ids(), Ids{b});
}

TEST_F(TagToolTest, PlacesNewTags) {
    TvTag pattern;
    pattern.leader = true;
    pattern.offset = {7, 8};
    tool->edits = [](TvTag& tag) {
        tag.text = "typed";
        return 1;
    };
    tool->place(pattern);
    drag({100, 100}, {140, 60});
    ASSERT_EQ(selection().size(), 1u);
    const TvTagId id = selection().front();
    EXPECT_EQ(placeOf(id), (Place{{50, 150}, {40, -40}}));
    EXPECT_EQ(tag(id).text, "typed");
    EXPECT_EQ(tool->isPlacing(), 0);
    pattern.text = "given";
    tool->place(pattern);
    click({200, 100});
    EXPECT_EQ(placeOf(selection().front()), (Place{{100, 150}, {7, 8}}));
    EXPECT_EQ(tool->layout()->tags().size(), 2u);
    tool->place(pattern);
    key(VK_ESCAPE);
    EXPECT_EQ(tool->isPlacing(), 0);
    EXPECT_EQ(tags->count(), 2u);
    // An empty one whose editor is cancelled is none.
    tool->edits = [](TvTag&) { return 0; };
    tool->place(TvTag());
    click({300, 300});
    EXPECT_EQ(tags->count(), 2u);
}

TEST_F(TagToolTest, OpensTheEditorByDoubleClickAndEnter) {
    const TvTagId id = add({50, 50});
    int opened = 0;
    tool->edits = [&](TvTag& tag) {
        tag.text = "edit " + std::to_string(++opened);
        return 1;
    };
    press(middle(id));
    mouseButton(MOUSEEVENTF_LEFTUP);
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    mouseButton(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(tag(id).text, "edit 1");
    key(VK_RETURN);
    EXPECT_EQ(tag(id).text, "edit 2");
    EXPECT_EQ(stack.undoCount(), 2u);
    tool->edits = [](TvTag& tag) {
        tag.width = -1;
        return 1;
    };
    key(VK_RETURN);
    EXPECT_NE(tool->reported, "");
    EXPECT_EQ(tag(id).text, "edit 2");
}

TEST_F(TagToolTest, SurvivesTheEndOfEverythingInEveryCall) {
    const std::vector<std::function<void()>> ends{
        [this] { tool.reset(); }, [this] { tags.reset(); }, [this] { DestroyWindow(window); }};
    for (const auto& end : ends) {
        using Hook = std::function<void()> TestTagTool::*;
        const Hook hooks[] = {&TestTagTool::inPerform, &TestTagTool::inEdit,
                              &TestTagTool::inChanged};
        for (const Hook hook : hooks) {
            for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_KEYDOWN}) {
                tags = std::make_unique<TvTagSet>();
                if (!IsWindow(window)) {
                    window = CreateWindowA("TagWindow", "", WS_POPUP | WS_VISIBLE, 100, 80, kWidth,
                                           kHeight, nullptr, nullptr, nullptr, nullptr);
                    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
                }
                makeTool();
                stack.clear();
                const TvTagId id = add({50, 50});
                if (message == WM_KEYDOWN) tags->select(id);
                tool->edits = [](TvTag& tag) { return tag.text = "edited", 1; };
                const POINT at = middle(id);
                tool.get()->*hook = end;
                SendMessageA(window, message, message == WM_KEYDOWN ? VK_RETURN : MK_LBUTTON,
                             MAKELPARAM(at.x, at.y));
                SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x + 40, at.y + 20));
                SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(at.x + 40, at.y + 20));
                pumpMessages();
                stack.clear();  // its edits are of a set that may be gone
                tool.reset();
            }
        }
    }
}

}  // namespace

// A window with tags that gives all its messages to the tool.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "support/picture.h"
#include "support/window_kit.h"
#include "toolbox/canvas_device.h"
#include "toolbox/messages.h"
#include "toolbox/tag_edits.h"
#include "toolbox/tag_tools.h"

/// Does, once, what the test says in the operation of that name.
class TestTagTool : public TvTagTool {
  public:
    using TvTagTool::TvTagTool;
    std::function<void()> inPerform, inEdit, inChanged;
    std::function<int(TvTag&)> edits = [](TvTag&) { return 0; };
    std::string reported;
    std::vector<TvTagId> revealed;

  protected:
    Edit::Outcome perform(std::unique_ptr<Edit> edit, unsigned gesture) override {
        const auto outcome = TvTagTool::perform(std::move(edit), gesture);
        run(inPerform);
        return outcome;
    }
    int edit(TvTag& tag) override {
        const int result = edits(tag);
        run(inEdit);
        return result;
    }
    void report(const CString& why) override { reported = why.str(); }
    void changed() override {
        TvTagTool::changed();
        run(inChanged);
    }
    void reveal(const TvTagOnPage& tag) override { revealed.push_back(tag.id); }

  private:
    static void run(std::function<void()>& action) {
        if (const auto once = std::exchange(action, nullptr)) once();
    }
};

/// A unit of the drawing is two points of the page, y upwards; a point is a pixel.
class TagWindow : public ::testing::Test {
  protected:
    static constexpr int kWidth = 500, kHeight = 400;

    TagWindow() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
        WNDCLASSA type{};
        type.style = CS_DBLCLKS;
        type.lpfnWndProc = procedure;
        type.lpszClassName = "TagWindow";
        RegisterClassA(&type);  // once; later calls fail
        window = CreateWindowExA(WS_EX_TOPMOST, "TagWindow", "", WS_POPUP | WS_VISIBLE, 100, 80,
                                 kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetForegroundWindow(window);
        makeTool();
        toolbox::testing::moveMouse(window, {1, 1});
    }
    ~TagWindow() override {
        toolbox::testing::mouseButton(MOUSEEVENTF_LEFTUP);
        tool.reset();
        if (IsWindow(window)) DestroyWindow(window);
        toolbox::testing::pumpMessages();
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
    }

    void makeTool() {
        tool = std::make_unique<TestTagTool>(window, *tags, nullptr);
        tool->setUndo(&stack);
        tool->setView(TransMatrix2D().scale(2, -2).translate(0, kHeight), TransMatrix2D());
    }

    /// A tag at a point of the window, with a box of some 50 by 20 below and at the right of it.
    TvTagId add(
        POINT at, const std::function<void(TvTag&)>& say = [](TvTag&) {}) {
        TvTag tag;
        tag.text = "q = 12.5";
        tag.anchor = {at.x / 2.0, (kHeight - at.y) / 2.0};
        tag.border = TvTagBorder::frame;
        say(tag);
        return tags->add(tag);
    }
    [[nodiscard]] const TvTag& tag(TvTagId id) const { return *tags->find(id); }
    /// Of the box as it lies in the window.
    [[nodiscard]] POINT middle(TvTagId id) {
        const auto layout = tool->layout();
        const auto box = layout->tag(id)->box;
        return {std::lround((box.left + box.right) / 2), std::lround((box.top + box.bottom) / 2)};
    }
    [[nodiscard]] std::vector<TvTagId> selection() const { return tags->selection(); }

    // Real input.
    void press(POINT at) {
        toolbox::testing::moveMouse(window, at);
        toolbox::testing::mouseButton(MOUSEEVENTF_LEFTDOWN);
    }
    void drag(POINT from, POINT to) {
        press(from);
        toolbox::testing::moveMouse(window, {(from.x + to.x) / 2, (from.y + to.y) / 2});
        toolbox::testing::moveMouse(window, to);
        toolbox::testing::mouseButton(MOUSEEVENTF_LEFTUP);
    }
    void click(POINT at) {
        press(at);
        toolbox::testing::mouseButton(MOUSEEVENTF_LEFTUP);
        ::Sleep(GetDoubleClickTime() + 1);  // the next one is a first one
    }
    /// A key, and what comes of it.
    void key(WORD code, const std::vector<WORD>& modifiers = {}) {
        keysUp = 0;
        toolbox::testing::pressKey(code, modifiers);
        const auto all = static_cast<int>(1 + modifiers.size());
        EXPECT_TRUE(toolbox::testing::pumpUntil([=, this] { return keysUp >= all; }));
    }
    [[nodiscard]] toolbox::testing::Picture picture() {
        UpdateWindow(window);
        return toolbox::testing::pictureOf(window);
    }

    GMSG service;
    HWND window = nullptr;
    std::unique_ptr<TvTagSet> tags = std::make_unique<TvTagSet>();
    UndoStack stack;
    std::unique_ptr<TestTagTool> tool;
    int keysUp = 0;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const self = reinterpret_cast<TagWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (self && (message == WM_KEYUP || message == WM_SYSKEYUP)) ++self->keysUp;
        if (self && message == WM_PAINT) return self->paint();
        TarvMess record(window, message, wParam, lParam, 0);
        if (self && self->tool && self->tool->handle(record)) return 0;
        return DefWindowProcA(window, message, wParam, lParam);
    }
    LRESULT paint() {
        PAINTSTRUCT paint{};
        const HDC dc = BeginPaint(window, &paint);
        FillRect(dc, &paint.rcPaint, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        if (tool) {
            const auto layout = tool->layout();
            {
                TvDeviceCanvas canvas(dc, {kWidth, kHeight});
                layout->draw(canvas);
            }
            tool->paint(dc);
        }
        EndPaint(window, &paint);
        return 0;
    }
};

// Drawing with the real mouse.
#include "drawing/drawing_view.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "open_workbench.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"
#include "support/picture.h"
#include "support/window_kit.h"
#include "tag_dialog.h"

using namespace toolbox::testing;

namespace {

class DrawingWindow : public ::testing::Test {
  protected:
    // Opening the workbench takes longer than what most tests do with it.
    static void SetUpTestSuite() {
        opened = std::make_unique<OpenWorkbench>();
        view = opened->maximized<DrawingView>(CMD_DRAWING);
        ASSERT_NE(view, nullptr);
    }
    static void TearDownTestSuite() { opened.reset(); }

    DrawingWindow() {
        workbench.document().setProject(Project());
        workbench.command(CMD_SELECT_MODE);
        workbench.command(CMD_ZOOM_ALL);
        const Pixel corner = pixel({0, 0});
        moveMouse(window(), {corner.x, corner.y});
    }
    ~DrawingWindow() override {
        mouseButton(MOUSEEVENTF_LEFTUP);
        mouseButton(MOUSEEVENTF_RIGHTUP);
    }

    [[nodiscard]] HWND window() const { return view->getHWND(); }
    [[nodiscard]] const Project& project() const { return workbench.document().project(); }
    [[nodiscard]] const Beam& beam() const { return project().beams().at(0); }
    [[nodiscard]] Pixel pixel(const Place& place) const {
        return view->layout().plane.toWindow(place);
    }
    [[nodiscard]] Picture picture() const {
        pumpMessages();
        UpdateWindow(window());
        return pictureOf(window());
    }

    void press(Pixel at) const {
        moveMouse(window(), {at.x, at.y});
        mouseButton(MOUSEEVENTF_LEFTDOWN);
    }
    void moveTo(Pixel at) const { moveMouse(window(), {at.x, at.y}); }
    void drag(Pixel from, Pixel to) const {
        press(from);
        moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
        moveTo(to);
        mouseButton(MOUSEEVENTF_LEFTUP);
    }

    /// A beam from (2, 0) to (8, 0) with 12 kN in its middle and a label.
    void putBeam() {
        const std::uint32_t id = workbench.document().put(
            Beam{.name = "P1", .section = "IPE 300", .x = 2, .loads = {{3, 12}}});
        workbench.document().put(
            std::vector{Label{.beam = id, .tag = labelTag("$NAME$ is made of $SECTION$", 4, -2)}},
            kStepArrangeLabels);
        (void)picture();
    }

    /// A pixel of a label's box.
    [[nodiscard]] Pixel inLabel(std::uint32_t id) const {
        (void)picture();
        const TvTagOnPage* const drawn = view->labels().layout()->tag(id);
        if (!drawn) return ADD_FAILURE() << "label " << id, Pixel();
        const PixelRect box = pixelsOf(drawn->box);
        return {box.left + 10, box.top + 5};
    }

    static inline std::unique_ptr<OpenWorkbench> opened;
    static inline DrawingView* view = nullptr;
    const OpenWorkbench& workbench = *opened;
};

TEST_F(DrawingWindow, DrawsABeam) {
    const Picture before = picture();
    workbench.command(CMD_BEAM_MODE);
    press(pixel({8, 1}));
    const Pixel end = pixel({2, 1});
    moveTo({end.x, end.y + 30});
    EXPECT_NE(workbench.hint().find("6.0 m"), std::string::npos) << workbench.hint();
    mouseButton(MOUSEEVENTF_LEFTUP);
    ASSERT_EQ(project().beams().size(), 1u);
    EXPECT_EQ((std::array{beam().x, beam().y, beam().span}), (std::array{2.0, 1.0, 6.0}));
    EXPECT_NE(workbench.document().work().results(0), nullptr) << "a section of the table";
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneBeam, 1}));

    const Picture after = picture();
    const BeamPlace place = view->layout().place(beam());
    for (const POINT& point : differences(before, after))
        ASSERT_TRUE(view->layout().around(beam(), place).grown(10).contains({point.x, point.y}))
            << point.x << ' ' << point.y;
    const int quarter = place.left + place.width() / 4;
    EXPECT_NE(after.at(quarter, place.axis), before.at(quarter, place.axis));
}

TEST_F(DrawingWindow, PutsLoadsOnABeam) {
    putBeam();
    const BeamPlace place = view->layout().place(beam());
    const Pixel at = pixel({3, 0});
    workbench.command(CMD_POINT_LOAD_MODE);
    drag(at, {at.x, place.bottom + static_cast<int>(5 * view->layout().forceScale())});
    drag(at, {at.x + 40, at.y});           // of no length
    drag(pixel({3, 2.5}), pixel({3, 0}));  // on no beam
    EXPECT_EQ(beam().loads, (std::vector{PointLoad{3, 12}, PointLoad{1, -5}}));
    workbench.command(CMD_UNIFORM_LOAD_MODE);
    const int high = static_cast<int>(8 * view->layout().uniformScale());
    drag({at.x, place.axis}, {at.x + 60, place.top - high});
    EXPECT_DOUBLE_EQ(beam().uniform, 8);
}

TEST_F(DrawingWindow, MovesWhatIsDragged) {
    putBeam();
    const Pixel tail =
        view->layout().arrow(beam(), view->layout().place(beam()), beam().loads[0]).tail;
    drag({tail.x, tail.y + 4}, {pixel({7.5, 0}).x, tail.y - 50});
    EXPECT_EQ(beam().loads[0], (PointLoad{5.5, 12}));
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneLoad, 1, 0}));

    drag(pixel({3, 0}), pixel({4, -1.5}));
    EXPECT_EQ((Place{beam().x, beam().y}), (Place{3, -1.5}));
    const auto anchor = [&] { return project().labels()[0].tag.anchor; };
    EXPECT_EQ(anchor(), (TvPoint{5, -3.5})) << "its labels go with it";

    (void)picture();
    const Pixel inside = inLabel(1);
    const double step = view->layout().plane.scale();
    drag(inside, {inside.x + static_cast<int>(step), inside.y});
    const double moved = anchor().x;
    EXPECT_NEAR(moved, 6, 1 / step);
    EXPECT_DOUBLE_EQ(beam().x, 3);

    workbench.command(CMD_UNDO);
    EXPECT_DOUBLE_EQ(anchor().x, 5);
    workbench.command(CMD_UNDO);
    EXPECT_EQ(anchor(), (TvPoint{4, -2})) << "with its beam";
    EXPECT_DOUBLE_EQ(beam().x, 2);
    for (int i = 0; i < 2; ++i) workbench.command(CMD_REDO);
    EXPECT_EQ(anchor().x, moved);
}

TEST_F(DrawingWindow, GivesLabelsToTheLibrarysTool) {
    putBeam();
    workbench.document().put(Beam{.name = "P2", .section = "IPE 80", .x = 2, .y = -3, .loads = {}});
    const auto& labels = project().labels();
    const auto click = [&](Pixel at) { drag(at, at); };

    workbench.command(CMD_LABEL_MODE);
    const auto answer = [](int button) {
        return [button](HWND dialog) {
            PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        };
    };
    DialogScript script;
    script
        .waitUntil(
            "its own beam's values",
            [](HWND dialog) { return textOf(dialog, IDC_TAG_SAMPLE).starts_with("P2: M = "); })
        .run(answer(IDOK));
    click(pixel({4, -4}));
    ASSERT_TRUE(pumpUntil([&] { return labels.size() == 2; }));
    EXPECT_EQ(labels[1].beam, 2u);
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneLabel, 2}));
    EXPECT_EQ(view->labels().layout()->tag(1)->text.windows1252(), "P1 is made of IPE 300");

    workbench.command(CMD_SELECT_MODE);
    click(inLabel(1));
    view->labels().command(toolbox::TagToFront);
    EXPECT_GT(labels[0].rank, labels[1].rank);
    view->labels().command(toolbox::TagRoundedBorder);
    view->labels().command(toolbox::TagSelectAll);
    view->labels().command(toolbox::TagLocked);
    EXPECT_TRUE(labels[0].tag.locked && labels[1].tag.locked);
    workbench.command(CMD_COPY);
    view->labels().command(toolbox::TagPaste);
    EXPECT_EQ(labels.size(), 4u);
    EXPECT_EQ(labels[2].beam, 2u) << "the beam that the copied one is at";
    workbench.command(CMD_DELETE);
    EXPECT_EQ(labels.size(), 2u) << "those that were pasted are selected";
    EXPECT_EQ(workbench.workbench().activeDocument()->steps().undoText(), "Undo Delete labels");
    for (int i = 0; i < 5; ++i) workbench.command(CMD_UNDO);
    EXPECT_EQ(labels.size(), 2u);
    EXPECT_LT(labels[0].rank, labels[1].rank);
    EXPECT_FALSE(labels[1].tag.locked);
    EXPECT_EQ(view->labels().layout()->tags()[1].id, 2u);

    // A rectangle from nothing; what the project cannot hold is refused whole.
    drag(pixel({1, -1.2}), pixel({9, -4.9}));
    view->labels().command(toolbox::TagCut);
    EXPECT_TRUE(labels.empty());
    workbench.command(CMD_UNDO);
    click(inLabel(1));
    script
        .run([&](HWND dialog) {
            SetDlgItemTextA(dialog, IDC_TAG_TEXT, std::string(kLabelMax + 1, 'x').c_str());
            answer(IDOK)(dialog);
        })
        .waitUntil("why", [](HWND box) { return textOf(box, 0xFFFF) == text(kLabelRefused).str(); })
        .run(answer(IDCANCEL));
    workbench.command(CMD_EDIT);
    EXPECT_EQ(labels[0].tag.text, "$NAME$ is made of $SECTION$");
    EXPECT_EQ(view->labels().layout()->tag(1)->tag->text, labels[0].tag.text);
}

TEST_F(DrawingWindow, AClickSelectsAndMovesNothing) {
    putBeam();
    const Project before = project();
    const Pixel at = pixel({3, 0});
    drag(at, {at.x + 2, at.y + 2});
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneBeam, 1}));
    drag(pixel({3, 2.8}), pixel({4, 2.8}));
    EXPECT_TRUE(workbench.document().selection() == Selection());
    EXPECT_TRUE(project() == before);
}

TEST_F(DrawingWindow, AbandonsAGestureWithoutATrace) {
    putBeam();
    workbench.document().select({Selection::OneBeam, 1});
    const Project before = project();
    const Picture clean = picture();
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"Escape", [] { pressKey(VK_ESCAPE); }},
        {"the other button", [] { mouseButton(MOUSEEVENTF_RIGHTDOWN); }},
        {"the capture's loss", [] { ReleaseCapture(); }}};
    double x = 3;  // the second press of a double click is none
    for (const auto& [what, end] : ends) {
        SCOPED_TRACE(what);
        press(pixel({x++, 0}));
        moveTo(pixel({4, 1}));
        EXPECT_FALSE(picture() == clean);
        end();
        EXPECT_TRUE(pumpUntil([] { return GetCapture() == nullptr; }));
        mouseButton(MOUSEEVENTF_RIGHTUP);
        mouseButton(MOUSEEVENTF_LEFTUP);
        EXPECT_TRUE(picture() == clean) << "a figure is left";
        EXPECT_TRUE(project() == before);
    }
}

}  // namespace

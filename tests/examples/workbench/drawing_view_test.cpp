// Drawing with the real mouse.
#include "drawing/drawing_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "open_workbench.h"
#include "resources/resource.h"
#include "support/picture.h"
#include "support/window_kit.h"

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
        Beam made;
        made.name = "P1";
        made.section = "IPE 300";
        made.x = 2;
        made.loads = {{3, 12}};
        const std::uint32_t id = workbench.document().put(made);
        Label label;
        label.beam = id;
        label.x = 4;
        label.y = -2;
        label.text = "$NAME$ is made of $SECTION$";
        workbench.document().put(label);
        (void)picture();
    }

    static inline std::unique_ptr<OpenWorkbench> opened;
    static inline DrawingView* view = nullptr;
    const OpenWorkbench& workbench = *opened;
};

TEST_F(DrawingWindow, DrawsABeam) {
    const Picture before = picture();
    workbench.command(CMD_BEAM_MODE);
    const Pixel start = pixel({2, 1}), end = pixel({8, 1});
    press(start);
    moveTo({end.x, end.y + 30});
    EXPECT_NE(workbench.hint().find("6.0 m"), std::string::npos) << workbench.hint();
    mouseButton(MOUSEEVENTF_LEFTUP);
    ASSERT_EQ(project().beams().size(), 1u);
    EXPECT_DOUBLE_EQ(beam().x, 2);
    EXPECT_DOUBLE_EQ(beam().y, 1);
    EXPECT_DOUBLE_EQ(beam().span, 6);
    EXPECT_EQ(beam().name, "P1");
    EXPECT_NE(workbench.document().results(0), nullptr) << "a section of the table";
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneBeam, 1}));

    const Picture after = picture();
    const BeamPlace place = view->layout().place(beam());
    for (const POINT& point : differences(before, after))
        ASSERT_TRUE(view->layout().around(beam(), place).grown(10).contains({point.x, point.y}))
            << point.x << ' ' << point.y;
    for (const int share : {1, 3})
        EXPECT_NE(after.at(place.left + place.width() * share / 4, place.axis),
                  before.at(place.left + place.width() * share / 4, place.axis));
}

TEST_F(DrawingWindow, PutsLoadsOnABeam) {
    putBeam();
    const BeamPlace place = view->layout().place(beam());
    const Pixel at = pixel({3, 0});
    workbench.command(CMD_POINT_LOAD_MODE);
    drag(at, {at.x, place.bottom + static_cast<int>(5 * view->layout().forceScale())});
    ASSERT_EQ(beam().loads.size(), 2u);
    EXPECT_EQ(beam().loads[1], (PointLoad{1, -5}));
    drag(at, {at.x + 40, at.y});
    drag(pixel({3, 2.5}), pixel({3, 0}));
    EXPECT_EQ(beam().loads.size(), 2u) << "no length, no beam";
    workbench.command(CMD_UNIFORM_LOAD_MODE);
    const int high = static_cast<int>(8 * view->layout().uniformScale());
    drag({at.x, place.axis}, {at.x + 60, place.top - high});
    EXPECT_DOUBLE_EQ(beam().uniform, 8);
}

TEST_F(DrawingWindow, AsksForTheTextOfALabel) {
    putBeam();
    workbench.command(CMD_LABEL_MODE);
    DialogScript script;
    for (const WORD key : {WORD{VK_ESCAPE}, WORD{VK_RETURN}}) {
        script.run([=](HWND dialog) {
            setText(dialog, IDC_LABEL_TEXT, "L = $L$ m");
            pressKey(key);
        });
        drag(pixel({3, -1}), pixel({3, -1}));
        ASSERT_EQ(project().labels().size(), key == VK_ESCAPE ? 1u : 2u);
    }
    EXPECT_EQ(project().labels()[1].text, "L = $L$ m");
    EXPECT_EQ(project().labels()[1].beam, beam().id);
    EXPECT_DOUBLE_EQ(project().labels()[1].y, -1);
}

TEST_F(DrawingWindow, OpensWhatIsClickedTwice) {
    putBeam();
    DialogScript script;
    script.run([&](HWND dialog) {
        EXPECT_EQ(textOf(dialog, IDC_BEAM_NAME), "P1");
        setText(dialog, IDC_BEAM_NAME, "P7");
        pressKey(VK_RETURN);
    });
    moveTo(pixel({6, 0}));
    // At once: handling the first click takes its time.
    for (int i = 0; i < 2; ++i) {
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    }
    EXPECT_TRUE(pumpUntil([&] { return beam().name == "P7"; }));
}

TEST_F(DrawingWindow, PaintsABeamRedBeyondTheElasticLimit) {
    putBeam();
    for (const auto& [section, redder] :
         {std::pair{"IPE 300", -1}, {"IPE 80", 1}, {"no such section", 0}}) {
        Beam shown = beam();
        shown.section = section;
        workbench.document().put(shown);
        const BeamPlace place = view->layout().place(beam());
        const std::uint32_t colour = picture().at(place.left + place.width() / 4, place.axis);
        const auto part = [&](int shift) { return static_cast<int>(colour >> shift & 0xFF); };
        const int more = part(16) - std::max(part(8), part(0));
        EXPECT_EQ((more > 60) - (more < -60), redder) << section;
    }
}

TEST_F(DrawingWindow, MovesWhatIsDragged) {
    putBeam();
    const Pixel tail =
        view->layout().arrow(beam(), view->layout().place(beam()), beam().loads[0]).tail;
    drag({tail.x, tail.y + 4}, {pixel({7.5, 0}).x, tail.y - 50});
    EXPECT_EQ(beam().loads[0], (PointLoad{5.5, 12}));
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneLoad, 1, 0}));

    drag(pixel({3, 0}), pixel({4, -1.5}));
    EXPECT_DOUBLE_EQ(beam().x, 3);
    EXPECT_DOUBLE_EQ(beam().y, -1.5);
    EXPECT_DOUBLE_EQ(project().labels()[0].x, 5) << "its labels go with it";
    EXPECT_DOUBLE_EQ(project().labels()[0].y, -3.5);

    (void)picture();
    const PixelRect* const box = view->boxOf(1);
    ASSERT_NE(box, nullptr);
    const Pixel inside{box->left + 10, box->top + 5};
    drag(inside, {inside.x + pixel({0.5, 0}).x - pixel({0, 0}).x, inside.y});
    EXPECT_DOUBLE_EQ(project().labels()[0].x, 5.5);
    EXPECT_DOUBLE_EQ(beam().x, 3);
}

TEST_F(DrawingWindow, ALoadThatAnEditTookAwayIsSelectedNoMore) {
    putBeam();
    workbench.document().select({Selection::OneLoad, 1, 0});
    Beam bare = beam();
    bare.loads.clear();
    workbench.document().put(bare);
    EXPECT_TRUE(workbench.document().selection() == (Selection{Selection::OneBeam, 1}));
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

TEST_F(DrawingWindow, RefusesWhatAProjectCannotHold) {
    putBeam();
    Beam full = beam();
    full.loads.assign(kLoadsMax, {1, 5});
    workbench.document().put(full);
    const Project before = project();
    struct Case {
        int mode;
        Place from, to;
        const char* told;
    };
    for (const Case& test : {Case{CMD_BEAM_MODE, {2, 1}, {2.3, 1}, "between 0.5 and 60.0 m"},
                             Case{CMD_POINT_LOAD_MODE, {4, 0}, {4, 1}, "at most 10"}}) {
        workbench.command(test.mode);
        DialogScript script;
        script.run([&](HWND box) {
            EXPECT_NE(textOf(box, 0xFFFF).find(test.told), std::string::npos);
            PostMessageA(box, WM_COMMAND, IDOK, 0);
        });
        drag(pixel(test.from), pixel(test.to));
        EXPECT_TRUE(project() == before) << test.told;
    }
}

TEST_F(DrawingWindow, ChangesALabelFromItsMenu) {
    putBeam();
    const PixelRect* const box = view->boxOf(1);
    ASSERT_NE(box, nullptr);
    const Pixel at{box->left + 10, box->top + 5};
    const auto choose = [&](WORD letter) {
        moveTo(at);
        mouseButton(MOUSEEVENTF_RIGHTDOWN);
        // The menu handles messages itself until it is closed: the key is on its way by then.
        mouse_event(MOUSEEVENTF_RIGHTUP, 0, 0, 0, 0);
        pressKey(letter);
        pumpMessages();
    };
    choose('B');
    EXPECT_TRUE(project().labels().at(0).border);
    choose('C');
    EXPECT_EQ(project().labels().at(0).alignment, Label::Center);
    choose('D');
    EXPECT_TRUE(project().labels().empty());
    EXPECT_EQ(project().beams().size(), 1u);
}

TEST_F(DrawingWindow, LooksAroundAndBackAtEverything) {
    putBeam();
    const Pixel at = pixel({4, 1});
    const Place there = view->layout().plane.toPlane(at);
    const double scale = view->layout().plane.scale();
    POINT screen{at.x, at.y};
    ClientToScreen(window(), &screen);
    SendMessageA(window(), WM_MOUSEWHEEL, MAKEWPARAM(0, 3 * WHEEL_DELTA),
                 MAKELPARAM(screen.x, screen.y));
    EXPECT_GT(view->layout().plane.scale(), 1.5 * scale);
    EXPECT_EQ(pixel(there), at);
    moveTo(at);
    mouseButton(MOUSEEVENTF_MIDDLEDOWN);
    moveTo({at.x + 25, at.y - 40});
    mouseButton(MOUSEEVENTF_MIDDLEUP);
    EXPECT_EQ(pixel(there), (Pixel{at.x + 25, at.y - 40}));
    pressKey(VK_RIGHT);
    EXPECT_TRUE(pumpUntil([&] { return pixel(there).x < at.x + 25; }));
    workbench.command(CMD_TABLE);
    workbench.command(CMD_ZOOM_ALL);  // from the table, too
    workbench.command(CMD_DRAWING);
    const BeamPlace place = view->layout().place(beam());
    EXPECT_TRUE(view->part().contains({place.left, place.axis}));
    EXPECT_TRUE(view->part().contains({place.right, place.axis}));
}

}  // namespace

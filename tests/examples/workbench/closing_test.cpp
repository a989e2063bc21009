// How the workbench ends: who is asked, and what keeps it open.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "drawing/drawing_view.h"
#include "frame/view.h"
#include "open_workbench.h"
#include "resources/resource.h"
#include "support/window_kit.h"
#include "table/table_view.h"

using namespace toolbox::testing;

namespace {

class Closing : public ::testing::Test {
  protected:
    [[nodiscard]] Document& document() const { return workbench.document(); }
    LRESULT send(UINT message, WPARAM wParam = 0) const {
        return SendMessageA(workbench.frame(), message, wParam, 0);
    }
    /// What the user would lose.
    void change() const { document().put(Beam{.name = "P1", .section = "IPE 300", .loads = {}}); }
    /// Answers the next question and notes which project it was about.
    void answer(DialogScript& script, int button) {
        script.run([this, button](HWND box) {
            asked.push_back(textOf(box, 0xFFFF));
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
    }
    static std::string questionAbout(const CString& title) {
        return "Save changes to \"" + title.str() + "\"?";
    }

    OpenWorkbench workbench;
    std::vector<std::string> asked;
};

TEST_F(Closing, AsksOnceAboutEachProjectWhenTheSessionEnds) {
    const std::string first = questionAbout(document().title());
    change();
    workbench.command(CMD_NEW);
    workbench.command(CMD_NEW);
    const std::string last = questionAbout(document().title());
    change();
    {
        DialogScript script;
        answer(script, IDCANCEL);
        EXPECT_EQ(send(WM_QUERYENDSESSION), 0);
    }
    EXPECT_EQ(asked, std::vector{last});
    asked.clear();
    DialogScript script;
    answer(script, IDNO);
    answer(script, IDNO);
    EXPECT_EQ(send(WM_QUERYENDSESSION), 1);
    EXPECT_EQ(asked, (std::vector{last, first}));
}

TEST_F(Closing, ANoHoldsUntilTheNextChangeOrUntilTheSessionGoesOn) {
    change();
    workbench.command(CMD_CLOSE_WINDOW);
    DialogScript script;
    answer(script, IDNO);
    EXPECT_TRUE(document().mayClose());
    EXPECT_TRUE(document().mayClose());
    EXPECT_EQ(asked.size(), 1u);
    change();
    answer(script, IDNO);
    EXPECT_EQ(send(WM_QUERYENDSESSION), 1);
    EXPECT_EQ(asked.size(), 2u);
    send(WM_ENDSESSION, 0);
    answer(script, IDCANCEL);
    EXPECT_EQ(send(WM_QUERYENDSESSION), 0);
    EXPECT_EQ(asked.size(), 3u);
}

Document* closed = nullptr;

void CALLBACK closeAndEndMenu(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    while (closed->views.getCount() > 0) closed->views[0]->destroy();
    EndMenu();
}

// The windows of a project go while a dialog, a question or a menu of its own is open.
TEST_F(Closing, OutlivesAProjectThatGoesUnderItsDialogs) {
    const CString file(workbench.folder() / "closed.tbf");
    change();
    ASSERT_TRUE(document().saveAs(file));
    struct Case {
        const char* what;
        int answer;  // 0: there is no dialog
        std::function<void()> opensDialog;
    };
    const Case cases[] = {
        {"the beam's dialog", IDOK, [&] { workbench.command(CMD_EDIT); }},
        {"the label's dialog", IDOK,
         [&] {
             const auto* const drawing = workbench.maximized<DrawingView>(CMD_DRAWING);
             workbench.command(CMD_LABEL_MODE);
             const BeamPlace place = drawing->layout().place(document().project().beams()[0]);
             const LPARAM onBeam = MAKELPARAM(place.left + 20, place.axis);
             const HWND window = drawing->getHWND();
             SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, onBeam);
             SendMessageA(window, WM_LBUTTONUP, 0, onBeam);
         }},
        {"the question of its last window", IDNO,
         [&] {
             change();
             workbench.command(CMD_CLOSE_WINDOW);
             SendMessageA(document().views[0]->getHWND(), WM_CLOSE, 0, 0);
         }},
        {"the table's menu", 0,
         [&] {
             const HWND window = workbench.maximized<TableView>(CMD_TABLE)->getHWND();
             closed = &document();
             SetTimer(nullptr, 0, 10, closeAndEndMenu);
             SendMessageA(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
         }},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        ASSERT_TRUE(workbench.workbench().openFile(file));
        document().select({Selection::OneBeam, 1});
        DialogScript script;
        // Not the drawing tools, which are disabled then.
        const auto isModal = [&](HWND) { return workbench.workbench().isModal(); };
        if (test.answer)
            script.waitUntil(test.what, isModal).run([&](HWND dialog) {
                Document* const shown = workbench.workbench().documentOf(file);
                ASSERT_NE(shown, nullptr);
                while (shown->views.getCount() > 0) shown->views[0]->destroy();
                pumpMessages();
                EXPECT_EQ(workbench.workbench().documentOf(file), shown) << "still in use";
                PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(test.answer), 0);
            });
        test.opensDialog();
        pumpMessages();
        EXPECT_EQ(workbench.workbench().documentOf(file), nullptr);
        workbench.command(CMD_NEW);
        EXPECT_EQ(document().views.getCount(), 2) << "the program goes on";
    }
}

TEST_F(Closing, StopsALongJobAtItsEnd) {
    const std::pair<const char*, std::function<void(DialogScript&)>> ends[] = {
        {"the meter's button",
         [](DialogScript& script) {
             script.run([](HWND meter) { PostMessageA(meter, WM_COMMAND, IDCANCEL, 0); });
         }},
        {"the frame's end",
         [&](DialogScript&) { PostMessageA(workbench.frame(), WM_CLOSE, 0, 0); }},
        {"the loop's end", [](DialogScript&) { PostQuitMessage(0); }}};
    for (const auto& [what, end] : ends) {
        SCOPED_TRACE(what);
        DialogScript script;
        end(script);
        send(WM_COMMAND, CMD_SAMPLE);
        ASSERT_NE(workbench.frame(), nullptr) << "the meter is cancelled, the frame stays";
        EXPECT_EQ(document().work().results(9999), nullptr) << "computed to the end";
        EXPECT_TRUE(workbench.hint().ends_with(" of 10000")) << workbench.hint();
    }
    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

}  // namespace

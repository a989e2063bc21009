// How the workbench ends: who is asked, and what keeps it open.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialogs/common_controls.h"
#include "dialogs/dialogs.h"
#include "drawing/drawing_view.h"
#include "frame/placement.h"
#include "frame/view.h"
#include "meter_dialog.h"
#include "open_workbench.h"
#include "project/project_store.h"
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
    void change() const {
        Beam beam;
        beam.name = "P1";
        beam.section = "IPE 300";
        document().put(beam);
    }
    /// Answers the next question and notes which project it was about.
    void answer(DialogScript& script, int button) {
        script.run([this, button](HWND box) {
            asked.push_back(textOf(box, kTextOfBox));
            PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        });
    }
    static std::string questionAbout(const Document& document) {
        std::string name = document.title().str();
        if (name.ends_with('*')) name.pop_back();
        return "Save changes to \"" + name + "\"?";
    }

    static constexpr int kTextOfBox = 0xFFFF;
    OpenWorkbench workbench;
    std::vector<std::string> asked;
};

TEST_F(Closing, AsksOnceAboutEachProjectWhenTheSessionEnds) {
    change();
    const std::string first = questionAbout(document());
    workbench.command(CMD_NEW);
    workbench.command(CMD_NEW);
    change();
    const std::string last = questionAbout(document());
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

TEST_F(Closing, AsksNothingWhileAnotherWindowShowsTheProject) {
    change();
    ASSERT_EQ(document().views.getCount(), 2);
    const DialogScript none;
    for (const WPARAM closesOne : {WPARAM{SC_CLOSE}, WPARAM{SC_DEFAULT}})
        EXPECT_EQ(SendMessageA(document().views[0]->getHWND(), WM_QUERYENDSESSION, closesOne, 0),
                  1);
    workbench.command(CMD_CLOSE_WINDOW);
    EXPECT_EQ(document().views.getCount(), 1);
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

TEST_F(Closing, WaitsForTheDialogThatIsOpen) {
    change();
    document().select({Selection::OneBeam, document().project().beams()[0].id});
    DialogScript script;
    script.run([&](HWND dialog) {
        setText(dialog, IDC_BEAM_NAME, "P7");
        send(WM_CLOSE);
        EXPECT_EQ(send(WM_QUERYENDSESSION), 0);
        const HWND view = workbench.workbench().frame().getActiveMDIChild();
        SendMessageA(view, WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsWindow(view));
        ASSERT_TRUE(IsWindow(dialog));
        PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    });
    workbench.command(CMD_EDIT);
    ASSERT_NE(workbench.frame(), nullptr);
    EXPECT_EQ(document().project().beams()[0].name, "P7");
}

/// A project that is saved, and closed while a dialog, a box or a menu of its own is open.
class ClosedMeanwhile : public Closing {
  protected:
    ClosedMeanwhile() {
        change();
        EXPECT_TRUE(document().saveAs(file));
        document().select({Selection::OneBeam, 1});
    }
    /// Closes the windows of the project and then the dialog.
    DialogScript::Step closeAnd(int button) {
        return [this, button](HWND dialog) {
            Document* const shown = workbench.workbench().documentOf(file);
            ASSERT_NE(shown, nullptr);
            while (shown->views.getCount() > 0) shown->views[0]->destroy();
            pumpMessages();
            EXPECT_EQ(workbench.workbench().documentOf(file), shown) << "still in use";
            PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
        };
    }
    void expectGone() const {
        pumpMessages();
        EXPECT_EQ(workbench.workbench().documentOf(file), nullptr);
        workbench.command(CMD_NEW);
        EXPECT_EQ(document().views.getCount(), 2) << "the program goes on";
    }
    /// Where the first beam of the active drawing is.
    [[nodiscard]] LPARAM onBeam(const DrawingView& view) const {
        const BeamPlace place = view.layout().place(document().project().beams()[0]);
        return MAKELPARAM(place.left + 20, place.axis);
    }

    const CString file{workbench.folder() / "closed.tbf"};
};

TEST_F(ClosedMeanwhile, UnderTheDialogsOfItsBeamsAndLabels) {
    {
        DialogScript script;
        script.run(closeAnd(IDOK));
        workbench.command(CMD_EDIT);
    }
    expectGone();
    ASSERT_TRUE(workbench.workbench().openFile(file));
    {
        auto* const drawing = workbench.maximized<DrawingView>(CMD_DRAWING);
        ASSERT_NE(drawing, nullptr);
        workbench.command(CMD_LABEL_MODE);
        DialogScript script;
        script.run(closeAnd(IDOK));
        const LPARAM at = onBeam(*drawing);
        const HWND window = drawing->getHWND();
        SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
        SendMessageA(window, WM_LBUTTONUP, 0, at);
    }
    expectGone();
    ASSERT_TRUE(workbench.workbench().openFile(file));
    auto* const table = workbench.maximized<TableView>(CMD_TABLE);
    ASSERT_NE(table, nullptr);
    DialogScript script;
    script.run(closeAnd(IDOK));
    NMITEMACTIVATE note{};
    note.hdr.code = static_cast<UINT>(NM_DBLCLK);
    SendMessageA(table->getHWND(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&note));
    expectGone();
}

TEST_F(ClosedMeanwhile, UnderTheQuestionsAboutIt) {
    change();
    workbench.command(CMD_CLOSE_WINDOW);
    {
        DialogScript script;
        script.run(closeAnd(IDNO));
        SendMessageA(document().views[0]->getHWND(), WM_CLOSE, 0, 0);
    }
    expectGone();
    ASSERT_TRUE(workbench.workbench().openFile(file));
    change();
    {
        DialogScript script;
        script.run(closeAnd(IDYES));
        workbench.command(CMD_CLOSE);
    }
    expectGone();
    EXPECT_EQ(loadProject(file.c_str(), {}).project.beams().size(), 2u) << "it was saved";
}

Document* closed = nullptr;

void CALLBACK closeAndEndMenu(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    while (closed->views.getCount() > 0) closed->views[0]->destroy();
    EndMenu();
}

TEST_F(ClosedMeanwhile, UnderTheMenuOfItsTable) {
    auto* const table = workbench.maximized<TableView>(CMD_TABLE);
    ASSERT_NE(table, nullptr);
    const HWND window = table->getHWND();
    closed = &document();
    SetTimer(nullptr, 0, 10, closeAndEndMenu);
    SendMessageA(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
    expectGone();
}

TEST_F(Closing, TheMeterOfALongJobCanBeCancelled) {
    DialogScript script;
    script
        .waitUntil("progress", [](HWND meter) { return !textOf(meter, IDC_METER_LINE_1).empty(); })
        .run([](HWND meter) { PostMessageA(meter, WM_COMMAND, IDCANCEL, 0); });
    send(WM_COMMAND, CMD_SAMPLE);
    const std::size_t beams = document().project().beams().size();
    EXPECT_EQ(beams, 10000u);
    EXPECT_NE(document().results(0), nullptr);
    EXPECT_EQ(document().results(beams - 1), nullptr) << "computed to the end";
    EXPECT_TRUE(workbench.hint().ends_with(" of 10000")) << workbench.hint();
}

TEST_F(Closing, CancelsTheMeterThatIsUpAndStays) {
    PostMessageA(workbench.frame(), WM_CLOSE, 0, 0);
    send(WM_COMMAND, CMD_SAMPLE);
    ASSERT_NE(workbench.frame(), nullptr);
    const std::size_t beams = document().project().beams().size();
    ASSERT_GT(beams, 0u);
    EXPECT_EQ(document().results(beams - 1), nullptr) << "computed to the end";
    send(WM_CLOSE);
    EXPECT_EQ(workbench.frame(), nullptr) << "the meter is gone";
}

TEST_F(Closing, AMeterLeavesTheQuitMessageToTheLoopOutside) {
    PostQuitMessage(0);
    send(WM_COMMAND, CMD_SAMPLE);
    const std::size_t beams = document().project().beams().size();
    EXPECT_EQ(document().results(beams - 1), nullptr) << "computed to the end";
    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST_F(Closing, ABoxIsAllThatTakesInput) {
    workbench.command(CMD_KEY_LIST);
    const HWND keys = FindWindowA("#32770", "Keys");
    const HWND palette = FindWindowA("#32770", "Drawing tools");
    ASSERT_NE(keys, nullptr);
    ASSERT_NE(palette, nullptr);
    change();
    const auto check = [&](HWND box) {
        EXPECT_FALSE(IsWindowEnabled(keys));
        EXPECT_FALSE(IsWindowEnabled(palette));
        EXPECT_TRUE(workbench.workbench().frame().isAcceleratorFrozen());
        send(WM_CLOSE);  // no second question
        EXPECT_TRUE(IsWindowEnabled(box));
        PostMessageA(box, WM_COMMAND, IDCANCEL, 0);
    };
    DialogScript script;
    script.run(check);
    send(WM_CLOSE);
    EXPECT_TRUE(IsWindowEnabled(keys));
    EXPECT_TRUE(IsWindowEnabled(palette));
    script.run(check);
    send(WM_COMMAND, CMD_ENGLISH);
    EXPECT_TRUE(IsWindowEnabled(keys));
}

TEST_F(Closing, KeepsTheSizeThatAMinimizedFrameComesBackWith) {
    const auto isMaximized = [&] {
        savePlacement(workbench.frame(), "Tried");
        int maximized = -1;
        GMSG::getProfile("Tried", "Maximized", maximized, -1);
        return maximized;
    };
    EXPECT_EQ(isMaximized(), 0);
    ShowWindow(workbench.frame(), SW_SHOWMINIMIZED);
    EXPECT_EQ(isMaximized(), 0);
    ShowWindow(workbench.frame(), SW_SHOWMAXIMIZED);
    EXPECT_EQ(isMaximized(), 1);
    ShowWindow(workbench.frame(), SW_SHOWMINIMIZED);
    EXPECT_EQ(isMaximized(), 1);
}

}  // namespace

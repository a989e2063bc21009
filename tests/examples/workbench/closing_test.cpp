// How the workbench ends: who is asked, and what keeps it open.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dialogs.h"
#include "open_workbench.h"
#include "placement.h"
#include "resource.h"
#include "support/window_kit.h"
#include "view.h"

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
        return "Save " + name + " first?";
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

TEST_F(Closing, ANoIsForgottenWhenTheSessionGoesOn) {
    change();
    workbench.command(CMD_CLOSE_WINDOW);
    DialogScript script;
    answer(script, IDNO);
    answer(script, IDCANCEL);
    EXPECT_EQ(send(WM_QUERYENDSESSION), 1);
    send(WM_ENDSESSION, 0);
    EXPECT_EQ(send(WM_QUERYENDSESSION), 0);
    EXPECT_EQ(asked.size(), 2u);
}

TEST_F(Closing, ANoIsForgottenWithTheNextChange) {
    change();
    DialogScript script;
    answer(script, IDNO);
    answer(script, IDCANCEL);
    EXPECT_TRUE(document().mayClose());
    EXPECT_TRUE(document().mayClose());
    EXPECT_EQ(asked.size(), 1u);
    change();
    EXPECT_FALSE(document().mayClose());
    EXPECT_EQ(asked.size(), 2u);
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
    const HWND palette = FindWindowA("#32770", "Drawing");
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

// Closing documents and the frame: who is asked, who may refuse, who is told.
#include <memory>

#include "frame_fixture.h"

namespace {

TEST_F(FrameTest, ClosesADocumentThatAgreesOnly) {
    open();
    for (const UINT id : {6u, 0xF060u, 0xF160u}) {
        Document& a = addDocument("A");
        const HWND first = a.getHWND(), second = addDocument("B").getHWND();
        const std::string asked = " 17 " + std::to_string(id);
        a.agrees = 0;
        EXPECT_EQ(frame.doFrameCommand(first, id, 0), 1);
        EXPECT_EQ(taken(), Log{"A" + asked});
        EXPECT_EQ(frame.getActiveMDIChild(), first);  // it was activated, and is still there
        a.agrees = 2;
        EXPECT_EQ(frame.doFrameCommand(first, id, 0), 1);
        EXPECT_EQ(frame.getActiveMDIChild(), second);
        EXPECT_EQ(frame.doFrameCommand(second, MAKELONG(id, 1), 0), 1);  // by a key
        EXPECT_EQ(taken(), (Log{"A" + asked, "A deleted", "B" + asked, "B deleted"}));
    }
    EXPECT_EQ(frame.doFrameCommand(nullptr, 6, 0), 1);
}

TEST_F(FrameTest, StaysOpenForOneDocumentAndTellsThoseThatAgreed) {
    open();
    addDocument("A");
    Document& b = addDocument("B");
    addDocument("C");
    b.agrees = 0;  // C is on top and asked first, A never
    EXPECT_EQ(frame.doFrameCommand(frame.getActiveMDIChild(), 1, 0), 1);
    EXPECT_EQ(taken(), (Log{"canClose", "C 17 1", "B 17 1", "C 22 0"}));
    EXPECT_EQ(send(WM_QUERYENDSESSION, 9), 0);
    EXPECT_EQ(taken(), (Log{"C 17 9", "B 17 9", "C 22 0"}));

    b.agrees = 1;
    EXPECT_EQ(send(WM_QUERYENDSESSION, 9), 1);
    EXPECT_EQ(taken(), (Log{"C 17 9", "B 17 9", "A 17 9"}));
}

TEST_F(FrameTest, SurvivesADocumentThatGoesAwayWhenAsked) {
    open();
    addDocument("A");
    addDocument("V").vanishes = true;
    EXPECT_EQ(send(WM_QUERYENDSESSION, 0), 1);
    EXPECT_EQ(taken(), (Log{"V deleted", "A 17 0"}));
}

TEST_F(FrameTest, ClosesWhenAllAgreeAndEndsTheLoop) {
    open();
    addDocument("A");
    for (const int answer : {0, 2, -1}) {
        application.mayClose = answer;
        send(WM_CLOSE);
        EXPECT_EQ(taken(), Log{"canClose"}) << answer;
    }
    application.mayClose = 1;
    send(WM_CLOSE);
    EXPECT_EQ(taken(), (Log{"canClose", "A 17 1", "frameDestroyed", "A deleted"}));
    EXPECT_EQ(frame.getFrame(), nullptr);
    EXPECT_EQ(frame.run(SW_SHOWNORMAL), 0);
    EXPECT_EQ(frame.getActiveMDIChild(), nullptr);
}

TEST_F(FrameTest, LeavesTheApplicationWhenTheSessionEnds) {
    open();
    addDocument("A");
    send(WM_ENDSESSION, 0);
    EXPECT_EQ(taken(), Log{});
    send(WM_ENDSESSION, 1);
    send(WM_ENDSESSION, 1);
    EXPECT_EQ(taken(), Log{"frameDestroyed"});  // once, and no document hears of it
    send(WM_CLOSE);                             // nobody left to ask but the document
    EXPECT_EQ(taken(), (Log{"A 17 1", "A deleted"}));
    EXPECT_EQ(frame.getFrame(), nullptr);
}

TEST_F(FrameTest, TellsOnceThatItIsDestroyedAlsoWhoDestroysItsWindow) {
    open();
    application.action = [&] {
        if (log.size() < 20) DestroyWindow(frame.getFrame());
    };
    send(WM_ENDSESSION, 1);
    EXPECT_EQ(taken(), Log{"frameDestroyed"});
    EXPECT_EQ(frame.getFrame(), nullptr);
}

TEST_F(FrameTest, MayBeDeletedByTheApplicationThatItAsks) {
    const std::pair<UINT, WPARAM> messages[] = {{WM_CLOSE, 0},
                                                {WM_COMMAND, ID_TEST_NEW},
                                                {WM_SYSCOMMAND, SC_MINIMIZE},
                                                {WM_MOVE, 0},
                                                {WM_ENDSESSION, 1}};
    for (const auto& [message, word] : messages) {
        auto dying = std::make_unique<TestFrame>(instance, nullptr, info(), &application);
        ASSERT_EQ(dying->initMainWindow(SW_SHOWNORMAL), 1);
        const HWND window = dying->getFrame();
        application.action = [&] { dying.reset(); };
        SendMessageA(window, message, word, 0);
        application.action = nullptr;
        EXPECT_EQ(dying, nullptr) << message;
        EXPECT_EQ(MDIApplication::getPMDI(), nullptr);
        DestroyWindow(window);
    }
    MDIApplication::setPMDI(&frame);
}

TEST_F(FrameTest, OutlivesItsObjectWithDefaultProcessing) {
    HWND window = nullptr;
    {
        TestFrame orphaning(instance, nullptr, info(), &application);
        ASSERT_EQ(orphaning.initMainWindow(SW_HIDE), 1);
        window = orphaning.getFrame();
    }
    EXPECT_EQ(MDIApplication::getPMDI(), nullptr);
    log.clear();
    SendMessageA(window, WM_COMMAND, ID_TEST_NEW, 0);
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_EQ(taken(), Log{});
}

}  // namespace

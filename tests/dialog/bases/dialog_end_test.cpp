// Dialogs whose object or window goes in the middle of anything.
#include <memory>

#include "dialog_fixture.h"

using namespace toolbox::testing;

namespace {

using DialogEnd = DialogFixture;

struct Moment {
    const char* name;
    int command;  // that leads to it; 0: none is needed
};
constexpr Moment kMoments[] = {{"opened", 0},       {"activated", 0},        {"command 1002", 1002},
                               {"confirmed", IDOK}, {"cancelled", IDCANCEL}, {"destroyed", IDOK}};

/// Leads a dialog that is open to a moment.
void lead(HWND window, const Moment& moment) {
    if (moment.command) SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(moment.command), 0);
}

void expectEnd(HWND owner, const Moment& moment, bool isModal, bool byObject) {
    SCOPED_TRACE(std::string(moment.name) + (isModal ? ", modal" : "") +
                 (byObject ? ", its object" : ", its window"));
    auto dialog = std::make_unique<TestDialog>();
    TestDialog* const plain = dialog.get();
    HWND window = nullptr;
    dialog->inside[moment.name] = [&] {
        window = plain->getHWND();
        if (byObject)
            dialog.reset();
        else
            DestroyWindow(window);
    };
    DialogScript script;
    if (isModal) {
        if (moment.command) script.run([&](HWND top) { lead(top, moment); });
        const int result = plain->run(owner);
        EXPECT_TRUE(byObject || result == 0);
    } else if (const HWND top = plain->open(owner)) {
        lead(top, moment);
    }
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(dialog == nullptr, byObject);
    if (byObject) return;
    EXPECT_EQ(dialog->getHWND(), nullptr);
    EXPECT_NE(dialog->log.find("destroyed"), std::string::npos);
    EXPECT_EQ(dialog->wasMade(), 1);
}

TEST_F(DialogEnd, ComesInEveryOperation) {
    for (const Moment& moment : kMoments)
        for (const bool isModal : {false, true}) {
            expectEnd(owner, moment, isModal, true);
            if (moment.name != std::string("destroyed")) expectEnd(owner, moment, isModal, false);
        }
}

TEST_F(DialogEnd, EndsWhatRunsOverIt) {
    TestDialog outer, inner;
    DialogScript script;
    script
        .run([&](HWND) {
            outer.inside["command 1002"] = [&] {
                EXPECT_EQ(inner.run(outer.getHWND()), 0) << "cancelled";
            };
            PostMessageA(outer.getHWND(), WM_COMMAND, IDC_NOTE, 0);
        })
        .waitUntil("inner", [&](HWND top) { return top == inner.getHWND(); })
        .run([&](HWND) { EXPECT_EQ(outer.close(5), 1); });
    EXPECT_EQ(outer.run(owner), 5);
    EXPECT_EQ(inner.getHWND(), nullptr);
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(DialogEnd, ComesWithItsOwnerAndWithAChildThatIsOne) {
    const HWND child = CreateWindowExA(0, "STATIC", "document", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50,
                                       owner, nullptr, nullptr, nullptr);
    TestDialog ofChild, ofOwner;
    ofChild.open(child);
    ofOwner.open(owner);
    DestroyWindow(child);
    EXPECT_EQ(ofChild.log, "opened destroyed ");
    EXPECT_EQ(ofOwner.isOpen(), 1);

    TestDialog modal;
    DialogScript script;
    script.run([&](HWND) { DestroyWindow(owner); });
    EXPECT_EQ(modal.run(owner), 0);
    EXPECT_EQ(modal.log, "opened destroyed ");
    EXPECT_EQ(ofOwner.log, "opened destroyed ");
    EXPECT_EQ(GMSG::isValidParent(), 0);
}

TEST_F(DialogEnd, DeletesAnObjectThatIsToldSo) {
    int deleted = 0;
    auto* const dialog = new TestDialog;
    dialog->whenDeleted = [&] { ++deleted; };
    dialog->deleteWhenClosed();
    dialog->inside["destroyed"] = [=, this] { dialog->open(owner); };
    DestroyWindow(dialog->open(owner));
    EXPECT_EQ(deleted, 0) << "opened again";
    DestroyWindow(openDialogs().front());
    EXPECT_EQ(deleted, 1);

    auto* const modal = new TestDialog;
    modal->deleteWhenClosed();
    DialogScript script;
    script.run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_EQ(modal->run(owner), 1) << "the result outlives it";
}

TEST_F(DialogEnd, TakesNoHandlesAlong) {
    int turn = 0;
    expectNoHandlesLeft(1000, [&] {
        TestDialog dialog(++turn % 3 ? IDD_PLAIN : IDD_SIZABLE);
        if (turn % 5 == 0) {
            EXPECT_NE(dialog.open(owner), nullptr);
            return;
        }
        dialog.inside["opened"] = [&] { dialog.close(7); };
        EXPECT_EQ(dialog.run(owner), 7);
    });
}

}  // namespace

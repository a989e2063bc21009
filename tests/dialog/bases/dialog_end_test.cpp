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

TEST_F(DialogEnd, ComesByItsObjectInEveryOperation) {
    for (const Moment& moment : kMoments) {
        for (const bool isModal : {false, true}) {
            bool deleted = false;
            auto* const dialog = new TestDialog;
            dialog->whenDeleted = [&] { deleted = true; };
            dialog->inside[moment.name] = [=] { delete dialog; };
            HWND window = nullptr;
            if (isModal) {
                DialogScript script;
                if (moment.command) script.run([&](HWND top) { lead(window = top, moment); });
                dialog->run(owner);
            } else {
                window = dialog->open(owner);
                if (window) lead(window, moment);
            }
            EXPECT_TRUE(deleted) << moment.name << isModal;
            EXPECT_FALSE(IsWindow(window)) << moment.name << isModal;
            EXPECT_TRUE(IsWindowEnabled(owner)) << moment.name << isModal;
        }
    }
}

TEST_F(DialogEnd, ComesByItsWindowInEveryOperation) {
    for (const Moment& moment : kMoments) {
        if (std::string("destroyed") == moment.name) continue;
        for (const bool isModal : {false, true}) {
            TestDialog dialog;
            dialog.inside[moment.name] = [&] { DestroyWindow(dialog.getHWND()); };
            DialogScript script;
            if (isModal) {
                if (moment.command) script.run([&](HWND top) { lead(top, moment); });
                EXPECT_EQ(dialog.run(owner), 0);
            } else if (const HWND window = dialog.open(owner)) {
                lead(window, moment);
            }
            EXPECT_EQ(dialog.getHWND(), nullptr) << moment.name << isModal;
            EXPECT_NE(dialog.log.find("destroyed"), std::string::npos) << moment.name << isModal;
            EXPECT_TRUE(IsWindowEnabled(owner)) << moment.name << isModal;
            EXPECT_EQ(dialog.wasMade(), 1);
        }
    }
}

TEST_F(DialogEnd, ComesByItselfWhenTheDialogIsCloseInOpened) {
    for (const bool isModal : {false, true}) {
        TestDialog dialog;
        dialog.inside["opened"] = [&] { EXPECT_EQ(dialog.close(7), 1); };
        if (isModal)
            EXPECT_EQ(dialog.run(owner), 7);
        else
            EXPECT_EQ(dialog.open(owner), nullptr);
        EXPECT_EQ(dialog.log, "opened destroyed ");
        EXPECT_EQ(dialog.wasMade(), 1);
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
    const auto make = [&] {
        auto* const dialog = new TestDialog;
        dialog->whenDeleted = [&] { ++deleted; };
        dialog->deleteWhenClosed();
        return dialog;
    };
    make()->open(owner);
    EXPECT_EQ(deleted, 0);
    DestroyWindow(openDialogs().front());
    EXPECT_EQ(deleted, 1);

    DialogScript script;
    script.run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_EQ(make()->run(owner), 1) << "the result outlives it";
    EXPECT_EQ(deleted, 2);

    auto* const reopened = make();
    reopened->inside["destroyed"] = [=, this] {
        reopened->inside.clear();
        reopened->open(owner);
    };
    DestroyWindow(reopened->open(owner));
    EXPECT_EQ(deleted, 2);
    EXPECT_EQ(reopened->close(0), 1);
    EXPECT_EQ(deleted, 3);
}

TEST_F(DialogEnd, TakesNoHandlesAlong) {
    int turn = 0;
    expectNoHandlesLeft(1000, [&] {
        TestDialog dialog(++turn % 3 ? IDD_PLAIN : IDD_SIZABLE);
        const bool isShort = turn % 5 != 0;  // it closes itself before it is seen
        if (isShort) dialog.inside["opened"] = [&] { dialog.close(0); };
        if (isShort && turn % 2) {
            EXPECT_EQ(dialog.run(owner), 0);
        } else {
            EXPECT_EQ(dialog.open(owner) == nullptr, isShort);
        }
        EXPECT_EQ(dialog.wasMade(), 1);
    });
}

}  // namespace

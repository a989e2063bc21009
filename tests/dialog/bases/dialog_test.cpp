// Modal and modeless dialogs with real keys: what they call and return, and what they leave of the
// other windows.
#include <tuple>

#include "dialog_fixture.h"

using namespace toolbox::testing;

namespace {

using DialogTest = DialogFixture;

TEST_F(DialogTest, RunsUntilItIsConfirmedOrCancelled) {
    const struct {
        WORD key;
        const char* log;
    } cases[] = {{VK_RETURN, "opened confirmed destroyed "},
                 {VK_ESCAPE, "opened cancelled destroyed "}};
    for (const auto& c : cases)
        for (const bool refuses : {false, true}) {
            TestDialog dialog;
            dialog.confirms = dialog.cancels = !refuses;
            DialogScript script;
            script.run([&](HWND) { pressKey(c.key); });
            if (refuses)
                script.waitUntil("refusal", [&](HWND) { return dialog.log.size() > 10; })
                    .run([&](HWND) { EXPECT_EQ(dialog.close(9), 1); });
            EXPECT_EQ(dialog.run(owner), refuses ? 9 : c.key == VK_RETURN);
            EXPECT_EQ(dialog.log, c.log);
            EXPECT_EQ(dialog.wasMade(), 1);
            EXPECT_EQ(dialog.close(1), 0) << "it is closed";
        }
}

TEST_F(DialogTest, TakesTheInputOfTheOtherWindowsWhileItRuns) {
    TestDialog other, disabled;
    other.open(owner);
    EnableWindow(disabled.open(owner), FALSE);
    GMSG::setParent(owner);
    TestDialog dialog;
    dialog.inside["opened"] = [&] { EXPECT_EQ(GMSG::getParent(), dialog.getHWND()); };
    dialog.inside["confirmed"] = dialog.inside["opened"];
    DialogScript script;
    script.run([&](HWND top) {
        EXPECT_EQ(top, dialog.getHWND());
        EXPECT_EQ(dialog.isModal(), 1);
        EXPECT_FALSE(IsWindowEnabled(owner));
        EXPECT_FALSE(IsWindowEnabled(other.getHWND()));
        EXPECT_EQ(GMSG::getParent(), top);
        pressKey(VK_RETURN);
    });
    EXPECT_EQ(dialog.run(owner), 1);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_TRUE(IsWindowEnabled(other.getHWND()));
    EXPECT_FALSE(IsWindowEnabled(disabled.getHWND())) << "as before";
    EXPECT_NE(GetActiveWindow(), nullptr) << "the activation stays with the program";
    EXPECT_EQ(GMSG::getParent(), owner);

    other.inside["command 1001"] = [&] { EXPECT_EQ(GMSG::getParent(), other.getHWND()); };
    SetDlgItemTextA(other.getHWND(), IDC_NAME, "told of it");
    EXPECT_EQ(GMSG::getParent(), owner) << "of a modeless one only while it works";
}

TEST_F(DialogTest, ReportsWhatCannotBeMade) {
    const HWND gone = makeOwner();
    DestroyWindow(gone);
    const std::tuple<toolbox::ResourceName, HWND, const char*> cases[] = {
        {"NOWHERE", owner, "NOWHERE"}, {IDD_BROKEN, owner, "#501"}, {IDD_PLAIN, gone, "#500"}};
    for (const auto& [name, over, said] : cases) {
        GMSG::setErrorReportingOption(GMSG::ReportInList);
        TestDialog dialog(name);
        EXPECT_EQ(dialog.run(over), 0) << said;
        EXPECT_EQ(dialog.open(over), nullptr) << said;
        EXPECT_EQ(dialog.wasMade(), 0) << said;
        EXPECT_EQ(dialog.log, "") << said;
        EXPECT_EQ(GMSG::getLstErrors().entries(), 2u) << said;
        EXPECT_NE(GMSG::getLastErrorMsg().view().find(said), std::string_view::npos);
        EXPECT_TRUE(IsWindowEnabled(owner));
    }
}

TEST_F(DialogTest, RefusesToBeShownTwice) {
    TestDialog dialog;
    const auto again = [&] {
        EXPECT_EQ(dialog.run(owner), 0);
        EXPECT_EQ(dialog.open(owner), nullptr);
        EXPECT_EQ(dialog.wasMade(), 1);
    };
    for (const char* moment : {"opened", "confirmed"}) dialog.inside[moment] = again;
    const HWND open = dialog.open(owner);
    again();
    EXPECT_EQ(TvDialog::find(open), &dialog);
    SendMessageA(open, WM_COMMAND, IDOK, 0);
    EXPECT_FALSE(IsWindow(open));
    EXPECT_EQ(TvDialog::find(open), nullptr);
    EXPECT_NE(dialog.open(owner), nullptr) << "once more afterwards";
}

TEST_F(DialogTest, StartsInTheFirstControlThatTakesTheFocus) {
    TestDialog dialog;
    dialog.inside["opened"] = [&] { EXPECT_EQ(dialog.enable(IDC_NAME, 0), 1); };
    dialog.open(owner);
    EXPECT_EQ(focusedControl(), IDC_NOTE);
    EXPECT_EQ(dialog.focus(IDOK), 1);
    EXPECT_EQ(dialog.enable(IDOK, 0), 1);
    EXPECT_NE(focusedControl(), IDOK) << "handed on";
    EXPECT_EQ(dialog.focus(4711) + dialog.enable(4711, 1), 0);
}

TEST_F(DialogTest, AnswersMessagesAndHeedsDisabledButtons) {
    TestDialog dialog;
    const HWND window = dialog.open(owner);
    EXPECT_EQ(SendMessageA(window, TestDialog::kOwnMessage, 0, 0), 12);
    NMHDR header{dialog.control(IDC_NAME), IDC_NAME, TestDialog::kQuestion};
    EXPECT_EQ(SendMessageA(window, WM_NOTIFY, IDC_NAME, reinterpret_cast<LPARAM>(&header)), 4711);
    HELPINFO about{};
    about.cbSize = sizeof about;
    about.iContextType = HELPINFO_WINDOW;
    for (const HWND item : {dialog.control(IDC_NOTE), window}) {
        about.hItemHandle = item;
        SendMessageA(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&about));
    }
    for (const int id : {IDOK, IDCANCEL}) {
        dialog.enable(id, 0);
        SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
    }
    dialog.enable(IDOK, 1);
    // An edit field of that number would tell of changes, not of a click.
    SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDOK, EN_CHANGE), 0);
    EXPECT_EQ(dialog.log, "opened notified help 1002 help 0 ");
    SendMessageA(window, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(dialog.isOpen(), 0);
}

}  // namespace

// Modal and modeless dialogs with real keys: what they call and return, and what they leave of the
// other windows.
#include "dialog_fixture.h"

using namespace toolbox::testing;

namespace {

using DialogTest = DialogFixture;

TEST_F(DialogTest, RunsUntilItIsConfirmedOrCancelled) {
    const struct {
        WORD key;
        int confirms, cancels, result;
        const char* log;
    } cases[] = {{VK_RETURN, 1, 1, 1, "opened confirmed destroyed "},
                 {VK_ESCAPE, 1, 1, 0, "opened cancelled destroyed "},
                 {VK_RETURN, 0, 1, 9, "opened confirmed destroyed "},
                 {VK_ESCAPE, 1, 0, 9, "opened cancelled destroyed "}};
    for (const auto& c : cases) {
        TestDialog dialog;
        dialog.confirms = c.confirms;
        dialog.cancels = c.cancels;
        DialogScript script;
        script.run([&](HWND) { pressKey(c.key); });
        if (c.result == 9)
            script
                .waitUntil("refusal",
                           [&](HWND) { return dialog.log.find("ed ", 8) != std::string::npos; })
                .run([&](HWND) { EXPECT_EQ(dialog.close(9), 1); });
        EXPECT_EQ(dialog.run(owner), c.result) << c.log;
        EXPECT_EQ(dialog.log, c.log);
        EXPECT_EQ(dialog.wasMade(), 1);
        EXPECT_EQ(dialog.isOpen(), 0);
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

TEST_F(DialogTest, TakesTheTemplateThatIsMeant) {
    const struct {
        toolbox::ResourceName name;
        GMSG::Language language;
        const char* caption;
    } cases[] = {{IDD_PLAIN, GMSG::French, "Fran\347ais"},  // of Canada: there is no other
                 {IDD_PLAIN, GMSG::English, "English"},
                 {MAKEINTRESOURCEA(IDD_PLAIN), GMSG::English, "English"},
                 {"OLD_KIND", GMSG::French, "Old"},
                 {"old_kind", GMSG::English, "Old"}};
    for (const auto& c : cases) {
        GMSG::language = c.language;
        TestDialog dialog(c.name);
        ASSERT_NE(dialog.open(owner), nullptr) << c.caption;
        EXPECT_EQ(textOf(dialog.getHWND()), c.caption);
        EXPECT_TRUE(IsWindowVisible(dialog.getHWND())) << "be it in the template or not";
    }
}

TEST_F(DialogTest, ReportsWhatCannotBeMade) {
    GMSG::setErrorReportingOption(GMSG::ReportInList);
    const HWND gone =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    DestroyWindow(gone);
    const struct {
        toolbox::ResourceName name;
        HWND over;
        const char* said;
    } cases[] = {{"NOWHERE", owner, "NOWHERE"},
                 {IDD_BROKEN, owner, "#501"},
                 {599, owner, "#599"},
                 {IDD_PLAIN, gone, "#500"}};
    for (const auto& c : cases) {
        GMSG::setErrorReportingOption(GMSG::ReportInList);
        TestDialog dialog(c.name);
        EXPECT_EQ(dialog.run(c.over), 0) << c.said;
        EXPECT_EQ(dialog.open(c.over), nullptr) << c.said;
        EXPECT_EQ(dialog.wasMade(), 0) << c.said;
        EXPECT_EQ(dialog.log, "") << c.said;
        EXPECT_EQ(GMSG::getLstErrors().entries(), 2u) << c.said;
        EXPECT_NE(GMSG::getLastErrorMsg().view().find(c.said), std::string_view::npos);
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
    DialogScript script;
    script.run([&](HWND) { again(); }).run([](HWND) { pressKey(VK_RETURN); });
    EXPECT_EQ(dialog.run(owner), 1);
    const HWND open = dialog.open(owner);
    EXPECT_NE(open, nullptr) << "once more afterwards";
    again();
    EXPECT_EQ(TvDialog::find(open), &dialog);
    EXPECT_EQ(dialog.close(0), 1);
    EXPECT_FALSE(IsWindow(open));
    EXPECT_EQ(TvDialog::find(open), nullptr);
}

TEST_F(DialogTest, GivesItsAnswersToMessages) {
    TestDialog dialog;
    const HWND window = dialog.open(owner);
    EXPECT_EQ(SendMessageA(window, TestDialog::kOwnMessage, 0, 0), 12);
    NMHDR header{dialog.control(IDC_NAME), IDC_NAME, TestDialog::kQuestion};
    EXPECT_EQ(SendMessageA(window, WM_NOTIFY, IDC_NAME, reinterpret_cast<LPARAM>(&header)), 4711);
    header.code = 1;
    EXPECT_EQ(SendMessageA(window, WM_NOTIFY, IDC_NAME, reinterpret_cast<LPARAM>(&header)), 0);
}

TEST_F(DialogTest, StartsInTheRightControl) {
    TestDialog first;
    first.open(owner);
    EXPECT_EQ(focusedControl(), IDC_NAME);

    TestDialog disabled;
    disabled.inside["opened"] = [&] { EXPECT_EQ(disabled.enable(IDC_NAME, 0), 1); };
    disabled.open(owner);
    EXPECT_EQ(focusedControl(), IDC_NOTE) << "the first that takes it";

    TestDialog chosen;
    chosen.inside["opened"] = [&] { EXPECT_EQ(chosen.focus(IDOK), 1); };
    chosen.open(owner);
    EXPECT_EQ(focusedControl(), IDOK);
    EXPECT_EQ(chosen.focus(4711), 0);
    EXPECT_EQ(chosen.enable(4711, 1), 0);
    EXPECT_EQ(chosen.enable(IDOK, 0), 1);
    EXPECT_NE(focusedControl(), IDOK) << "handed on";

    TestDialog radio("OLD_KIND");
    radio.inside["opened"] = [&] {
        CheckRadioButton(radio.getHWND(), IDC_LINE, IDC_CIRCLE, IDC_CIRCLE);
    };
    radio.open(owner);
    EXPECT_EQ(focusedControl(), IDC_CIRCLE);
    EXPECT_EQ(IsDlgButtonChecked(radio.getHWND(), IDC_CIRCLE), BST_CHECKED);
}

TEST_F(DialogTest, HasItsKeysOverAModalDialogToo) {
    TestDialog modal, modeless;
    DialogScript script;
    script.run([&](HWND top) { EXPECT_NE(modeless.open(top), nullptr); })
        .run([](HWND) { typeText("a\tb"); })
        .waitUntil("typed", [&](HWND) { return textOf(modeless.getHWND(), IDC_NOTE) == "b"; })
        .run([](HWND) { pressKey(VK_RETURN); })
        .waitUntil("confirmed", [&](HWND) { return !modeless.isOpen(); })
        .run([&](HWND top) {
            EXPECT_EQ(top, modal.getHWND());
            typeText("c\td");
        })
        .waitUntil("typed", [&](HWND top) { return textOf(top, IDC_NOTE) == "d"; })
        .run([](HWND) { pressKey(VK_ESCAPE); });
    EXPECT_EQ(modal.run(owner), 0);
    EXPECT_EQ(modeless.log, "opened confirmed destroyed ");
}

TEST_F(DialogTest, HeedsDisabledButtons) {
    TestDialog dialog;
    const HWND window = dialog.open(owner);
    for (const int id : {IDOK, IDCANCEL}) {
        dialog.enable(id, 0);
        SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
        EXPECT_EQ(dialog.log, "opened ") << id;
    }
    dialog.enable(IDOK, 1);
    // An edit field of that number would tell of changes, not of a click.
    SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDOK, EN_CHANGE), 0);
    EXPECT_EQ(dialog.isOpen(), 1);
    SendMessageA(window, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(dialog.isOpen(), 0);
}

TEST_F(DialogTest, HelpsWithTheControlThatHasTheFocus) {
    TestDialog dialog;
    DialogScript script;
    script.run([](HWND) { pressKey(VK_F1); })
        .waitUntil("help", [&](HWND) { return dialog.log == "opened help 1001 "; })
        .run([&](HWND window) {
            HELPINFO about{};
            about.cbSize = sizeof about;
            about.iContextType = HELPINFO_WINDOW;
            about.hItemHandle = GetDlgItem(window, IDC_NOTE);
            SendMessageA(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&about));
            about.hItemHandle = window;
            SendMessageA(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&about));
            EXPECT_EQ(dialog.log, "opened help 1001 help 1002 help 0 ");
            pressKey(VK_ESCAPE);
        });
    EXPECT_EQ(dialog.run(owner), 0);
}

}  // namespace

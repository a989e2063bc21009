// Property sheets as a user goes through them.
#include <cstdlib>

#include "sheet_fixture.h"
#include "toolbox/windowing.h"

namespace {

using namespace toolbox::testing;

class Sheets : public SheetFixture {};

std::string tabText(HWND sheet, int tab) {
    char text[64] = "";
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETTABCONTROL, 0, 0)), TCM_GETITEMA,
                 static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
    return text;
}

TEST_F(Sheets, OpenInTheProgramsLanguageOverTheirOwner) {
    for (const auto language : {GMSG::French, GMSG::English}) {
        GMSG::language = language;
        const bool isFrench = language == GMSG::French;
        DialogScript script;
        script
            .run([&](HWND dialog) {
                EXPECT_EQ(dialog, sheet->getHWND());
                EXPECT_EQ(textOf(dialog), "Beam");
                EXPECT_EQ(tabText(dialog, 0), isFrench ? "Port\351e" : "Span");
                EXPECT_EQ(tabText(dialog, 1), "Load");
                EXPECT_EQ(textOf(dialog, IDCANCEL), isFrench ? "Annuler" : "Cancel");
                EXPECT_EQ(textOf(dialog, kApply), isFrench ? "&Appliquer" : "&Apply");
                EXPECT_EQ(sheet->currentPage(), 0);
                EXPECT_EQ(focusedControl(), IDC_SPAN);
                EXPECT_EQ(textOf(sheet->span.getHWND(), IDC_SPAN), "10");
                EXPECT_EQ(sheet->load.getHWND(), nullptr);
                EXPECT_EQ(sheet->isModal(), 1);
                EXPECT_FALSE(IsWindowEnabled(owner));
                RECT own{}, around{};
                GetWindowRect(dialog, &own);
                GetWindowRect(owner, &around);
                EXPECT_LE(std::abs(own.left + own.right - around.left - around.right), 2);
                EXPECT_LE(std::abs(own.top + own.bottom - around.top - around.bottom), 2);
            })
            .run([](HWND) { pressKey(VK_ESCAPE); });
        EXPECT_EQ(sheet->run(owner), 0);
        EXPECT_TRUE(IsWindowEnabled(owner));
        EXPECT_EQ(sheet->getHWND(), nullptr);
        EXPECT_EQ(sheet->wasMade(), 1);
        EXPECT_EQ(sheet->span.log, "opened entered cancelled destroyed ");
        sheet->span.log.clear();
    }
}

TEST_F(Sheets, StoreAllPagesWhenEnterIsPressed) {
    sheet->setStartPage(1);
    DialogScript script;
    script
        .run([&](HWND) {
            EXPECT_EQ(sheet->currentPage(), 1);
            typeText("30");
            pressKey(VK_TAB, {VK_CONTROL});
        })
        .waitUntil("the other page", [&](HWND) { return sheet->currentPage() == 0; })
        .run([&](HWND) {
            EXPECT_EQ(sheet->load.number.value(), 20);
            enter(sheet->span, IDC_SPAN, "11,5");
            pressKey(VK_RETURN);
        });
    EXPECT_EQ(sheet->run(owner), 1);
    EXPECT_EQ(sheet->span.number.value(), 11.5);
    EXPECT_EQ(sheet->load.number.value(), 30);
    EXPECT_EQ(sheet->log, "confirmed destroyed ");
    EXPECT_NE(sheet->load.log.find("exchange confirmed "), std::string::npos) << sheet->load.log;
}

TEST_F(Sheets, ApplyWhatWasTouched) {
    open();
    EXPECT_FALSE(canApply());
    enter(sheet->span, IDC_SPAN, "1e1");
    EXPECT_TRUE(canApply());
    enter(sheet->span, IDC_SPAN, "10");
    EXPECT_FALSE(canApply());
    enter(sheet->span, IDC_SPAN, "1,5e1");
    press(kApply);
    EXPECT_EQ(sheet->span.number.value(), 15);
    EXPECT_EQ(textOf(sheet->span.getHWND(), IDC_SPAN), "15");
    EXPECT_FALSE(canApply());
    EXPECT_EQ(sheet->log, "applied ");

    sheet->span.changed();
    EXPECT_TRUE(canApply());
    EXPECT_EQ(sheet->apply(), 1);
    EXPECT_FALSE(canApply());
    enter(sheet->span, IDC_SPAN, "16");
    press(IDCANCEL);
    EXPECT_EQ(sheet->isOpen(), 0);
    EXPECT_EQ(sheet->span.number.value(), 15);
}

TEST_F(Sheets, GiveOneToWhoAppliedBeforeCancelling) {
    DialogScript script;
    script
        .run([&](HWND) {
            enter(sheet->span, IDC_SPAN, "12");
            press(kApply);
        })
        .run([&](HWND) { press(IDCANCEL); });
    EXPECT_EQ(sheet->run(owner), 1);
}

TEST_F(Sheets, KeepTheUserOnAPageWithAFault) {
    open();
    enter(sheet->span, IDC_SPAN, "101");
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"showPage", [&] { EXPECT_EQ(sheet->showPage(1), 0); }},
        {"OK", [&] { press(IDOK); }},
        {"Apply", [&] { press(kApply); }},
        {"apply", [&] { EXPECT_EQ(sheet->apply(), 0); }}};
    for (const auto& [what, way] : ways) {
        SCOPED_TRACE(what);
        way();
        ASSERT_EQ(sheet->isOpen(), 1);
        EXPECT_EQ(sheet->currentPage(), 0);
        EXPECT_EQ(sheet->span.number.value(), 10);
        EXPECT_EQ(GetFocus(), field(sheet->span, IDC_SPAN));
        const HWND balloon = sheet->span.fields()->balloon();
        ASSERT_NE(balloon, nullptr);
        // The window that moves is the sheet's.
        SetWindowPos(sheet->getHWND(), nullptr, 10, 10, 0, 0, SWP_NOSIZE);
        EXPECT_FALSE(IsWindow(balloon));
        SetWindowPos(sheet->getHWND(), nullptr, 20, 20, 0, 0, SWP_NOSIZE);
    }
    enter(sheet->span, IDC_SPAN, "99");
    EXPECT_EQ(sheet->showPage(1), 1);
    sheet->load.leaves = 0;
    EXPECT_EQ(sheet->showPage(0), 0);
    EXPECT_EQ(sheet->showPage(2), 0);
    EXPECT_EQ(sheet->log, "");
}

TEST_F(Sheets, StoreAllPagesOrNone) {
    open();
    enter(sheet->span, IDC_SPAN, "50");
    EXPECT_EQ(sheet->showPage(1), 1);
    enter(sheet->load, IDC_LOAD, "60");

    // A page that refuses when all are stored.
    sheet->load.inside["confirmed"] = [&] { EXPECT_EQ(sheet->span.number.value(), 50); };
    sheet->span.confirms = 0;
    press(IDOK);
    ASSERT_EQ(sheet->isOpen(), 1);
    EXPECT_EQ(sheet->currentPage(), 0);
    EXPECT_EQ(sheet->span.number.value(), 10);
    EXPECT_EQ(sheet->load.number.value(), 20);

    // A rule between the pages.
    sheet->span.confirms = 1;
    sheet->load.inside["confirmed"] = [&] {
        if (sheet->span.number.value() < sheet->load.number.value())
            sheet->load.fields()->fail(IDC_LOAD, "too much");
    };
    press(kApply);
    EXPECT_EQ(sheet->currentPage(), 1);
    EXPECT_EQ(sheet->span.number.value(), 10);
    EXPECT_EQ(sheet->load.number.value(), 20);
    EXPECT_EQ(GetFocus(), field(sheet->load, IDC_LOAD));
    EXPECT_NE(sheet->load.fields()->balloon(), nullptr);
    EXPECT_TRUE(canApply());
    EXPECT_EQ(sheet->log, "");

    enter(sheet->load, IDC_LOAD, "40");
    press(IDOK);
    EXPECT_EQ(sheet->isOpen(), 0);
    EXPECT_EQ(sheet->span.number.value(), 50);
    EXPECT_EQ(sheet->load.number.value(), 40);
    EXPECT_EQ(sheet->log, "confirmed destroyed ");
}

TEST_F(Sheets, StayOpenWhenAPageRefusesToBeCancelled) {
    open();
    EXPECT_EQ(sheet->showPage(1), 1);
    sheet->span.cancels = 0;
    for (const auto& cancel :
         {std::function<void()>([&] { press(IDCANCEL); }),
          std::function<void()>([&] { SendMessageA(sheet->getHWND(), WM_CLOSE, 0, 0); })}) {
        cancel();
        pumpMessages();
        EXPECT_EQ(sheet->isOpen(), 1);
        EXPECT_EQ(sheet->currentPage(), 0);
    }
    sheet->span.cancels = 1;
    // A field of several lines sends this to its dialog at Escape: it is meant for the sheet.
    SendMessageA(sheet->span.getHWND(), WM_CLOSE, 0, 0);
    pumpMessages();
    EXPECT_EQ(sheet->isOpen(), 0);
}

struct QuietApplication : MDIApplication {
    void frameDestroyed() override {}
    int frameCreated(HWND, HINSTANCE) override { return 1; }
    void classRegistered(HINSTANCE) override {}
    int command(HWND, WPARAM, LPARAM) override { return 0; }
    int privateMessage(HWND, UINT, WPARAM, LPARAM) override { return 0; }
    void systemCommand(HWND, WPARAM, LPARAM) override {}
    void childActivated(HWND) override {}
    void frameMoved(int) override {}
    void childClosed(HWND) override {}
};

TEST_F(Sheets, AreModelessDialogsOfTheFrame) {
    QuietApplication application;
    MDI frame(GetModuleHandleA(nullptr), nullptr, {.title = "Frame"}, &application);
    ASSERT_EQ(frame.initMainWindow(SW_SHOW), 1);
    const HWND window = sheet->open(nullptr);
    EXPECT_EQ(GetWindow(window, GW_OWNER), frame.getFrame());
    EXPECT_TRUE(IsWindowEnabled(frame.getFrame()));
    EXPECT_EQ(frame.registerModeless(window), 0);  // it is already
    DialogScript script;
    script.run([](HWND) { pressKey(VK_TAB, {VK_CONTROL}); })
        .waitUntil("Ctrl+Tab", [&](HWND) { return sheet->currentPage() == 1; })
        .run([](HWND) { pressKey(VK_PRIOR, {VK_CONTROL}); })
        .waitUntil("Ctrl+PgUp", [&](HWND) { return sheet->currentPage() == 0; })
        .run([&](HWND) {
            SetFocus(field(sheet->span, IDC_SPAN));
            pressKey(VK_TAB);
        })
        .waitUntil("Tab", [](HWND) { return focusedControl() == IDC_BUTTON; })
        .run([&](HWND) {
            SetFocus(field(sheet->span, IDC_SPAN));
            typeText("77");
            pressKey(VK_RETURN);
        });
    sheet->inside["destroyed"] = [] { PostQuitMessage(0); };
    frame.run(SW_SHOW);
    EXPECT_EQ(sheet->span.number.value(), 77);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(frame.unregisterModeless(window), 0);
    DestroyWindow(frame.getFrame());
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
}

TEST_F(Sheets, GetTheirKeysFromAnyLoop) {
    open();
    SetFocus(field(sheet->span, IDC_SPAN));
    MSG message{};
    message.hwnd = GetFocus();
    message.message = WM_KEYDOWN;
    message.wParam = VK_TAB;
    EXPECT_EQ(TvDialog::isDialogMessage(message), 0);
    EXPECT_EQ(TvPropertySheet::isDialogMessage(message), 1);
    EXPECT_EQ(focusedControl(), IDC_BUTTON);
    message.hwnd = owner;
    EXPECT_EQ(TvPropertySheet::isDialogMessage(message), 0);
}

}  // namespace

// Property sheets as a user goes through them.
#include "sheet_fixture.h"
#include "support/loop_script.h"
#include "toolbox/windowing.h"

namespace {

using namespace toolbox::testing;

using Sheets = SheetFixture;

TEST_F(Sheets, OpenInTheProgramsLanguageOverTheirOwner) {
    GMSG::language = GMSG::French;
    DialogScript script;
    script
        .run([&](HWND dialog) {
            EXPECT_EQ(dialog, sheet->getHWND());
            EXPECT_EQ(textOf(dialog, kApply), "&Appliquer");
            EXPECT_EQ(textOf(sheet->span.getHWND(), IDC_BUTTON), "Bouton");
            EXPECT_EQ(focusedControl(), IDC_SPAN);
            EXPECT_EQ(sheet->load.getHWND(), nullptr) << "made when it is entered";
            EXPECT_FALSE(IsWindowEnabled(owner));
        })
        .run([](HWND) { pressKey(VK_ESCAPE); });
    EXPECT_EQ(sheet->run(owner), 0);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(sheet->wasMade(), 1);
    EXPECT_EQ(sheet->span.log, "opened entered cancelled destroyed ");
}

TEST_F(Sheets, StoreAllPagesWhenEnterIsPressed) {
    sheet->setStartPage(1);
    DialogScript script;
    script
        .run([&](HWND) {
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
}

TEST_F(Sheets, ApplyWhatWasTouched) {
    open();
    for (const auto& [text, touched] :
         {std::pair{"1e1", true}, std::pair{"10", false}, std::pair{"1,5e1", true}}) {
        enter(sheet->span, IDC_SPAN, text);
        EXPECT_EQ(canApply(), touched) << text;
    }
    press(kApply);
    EXPECT_EQ(sheet->span.number.value(), 15);
    EXPECT_EQ(textOf(sheet->span.getHWND(), IDC_SPAN), "15");
    EXPECT_FALSE(canApply());
    EXPECT_EQ(sheet->log, "applied ");
    sheet->span.changed();
    EXPECT_TRUE(canApply());
    enter(sheet->span, IDC_SPAN, "16");
    press(IDCANCEL);
    EXPECT_EQ(sheet->isOpen(), 0);
    EXPECT_EQ(sheet->span.number.value(), 15);
}

TEST_F(Sheets, GiveOneToWhoAppliedBeforeCancelling) {
    DialogScript script;
    script.run([&](HWND) {
        enter(sheet->span, IDC_SPAN, "12");
        press(kApply);
        press(IDCANCEL);
    });
    EXPECT_EQ(sheet->run(owner), 1);
}

TEST_F(Sheets, KeepTheUserOnAPageWithAFault) {
    open();
    enter(sheet->span, IDC_SPAN, "101");
    const std::function<void()> ways[] = {[&] { EXPECT_EQ(sheet->showPage(1), 0); },
                                          [&] { press(IDOK); },
                                          [&] { EXPECT_EQ(sheet->apply(), 0); }};
    for (const auto& way : ways) {
        SCOPED_TRACE(&way - ways);
        way();
        ASSERT_EQ(sheet->isOpen(), 1);
        EXPECT_EQ(sheet->currentPage(), 0);
        EXPECT_EQ(sheet->span.number.value(), 10);
        EXPECT_EQ(GetFocus(), field(sheet->span, IDC_SPAN));
        EXPECT_NE(sheet->span.fields()->balloon(), nullptr);
    }
    // The window that moves is the sheet's.
    SetWindowPos(sheet->getHWND(), nullptr, 10, 10, 0, 0, SWP_NOSIZE);
    EXPECT_EQ(sheet->span.fields()->balloon(), nullptr);
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
    EXPECT_NE(sheet->load.fields()->balloon(), nullptr);
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
    press(IDCANCEL);
    SendMessageA(sheet->getHWND(), WM_CLOSE, 0, 0);
    EXPECT_EQ(sheet->isOpen(), 1);
    EXPECT_EQ(sheet->currentPage(), 0);
    sheet->span.cancels = 1;
    // A field of several lines sends this to its dialog at Escape: it is meant for the sheet.
    SendMessageA(sheet->span.getHWND(), WM_CLOSE, 0, 0);
    pumpMessages();
    EXPECT_EQ(sheet->isOpen(), 0);
}

TEST_F(Sheets, AreModelessDialogsOfTheFrame) {
    MDI frame(GetModuleHandleA(nullptr), nullptr, {.title = "Frame"}, nullptr);
    ASSERT_EQ(frame.initMainWindow(SW_SHOW), 1);
    const HWND window = sheet->open(nullptr);
    EXPECT_EQ(GetWindow(window, GW_OWNER), frame.getFrame());
    EXPECT_TRUE(IsWindowEnabled(frame.getFrame()));
    EXPECT_EQ(frame.registerModeless(window), 0);  // it is already
    LoopScript script(frame);
    script.run([] { pressKey(VK_TAB, {VK_CONTROL}); })
        .until([&] { return sheet->currentPage() == 1; })
        .run([] { pressKey(VK_PRIOR, {VK_CONTROL}); })
        .until([&] { return sheet->currentPage() == 0; })
        .run([&] {
            SetFocus(field(sheet->span, IDC_SPAN));
            typeText("77");
            pressKey(VK_RETURN);
        })
        .until([&] { return !sheet->isOpen(); });
    script.play();
    EXPECT_EQ(sheet->span.number.value(), 77);
    EXPECT_EQ(frame.unregisterModeless(window), 0);
    DestroyWindow(frame.getFrame());
    pumpMessages();
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

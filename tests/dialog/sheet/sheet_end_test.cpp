// Sheets that end at any moment, that cannot be made, and what they leave behind.
#include "sheet_fixture.h"

namespace {

using namespace toolbox::testing;

class SheetEnds : public SheetFixture {
  protected:
    /// Goes through all operations of the sheet, as far as it lives.
    void goThrough() {
        const auto lives = [&] { return sheet && sheet->isOpen(); };
        if (lives()) SendMessageA(sheet->span.getHWND(), WM_COMMAND, IDC_BUTTON, 0);
        if (lives()) enter(sheet->span, IDC_SPAN, "33");
        if (lives()) sheet->showPage(1);
        if (lives()) sheet->apply();
        if (lives()) press(IDCANCEL);
    }
};

TEST_F(SheetEnds, MayComeInAnyOperation) {
    const char* const operations[] = {"opened",    "entered",   "command", "exchange", "leaving",
                                      "confirmed", "cancelled", "applied", "destroyed"};
    struct Way {
        const char* what;
        std::function<void()> end;
        bool keepsOwner = true;
    };
    const Way ways[] = {{"deleted", [&] { sheet.reset(); }},
                        {"closed", [&] { sheet->close(7); }},
                        {"destroyed", [&] { DestroyWindow(sheet->getHWND()); }},
                        {"owner destroyed", [&] { DestroyWindow(owner); }, false}};
    for (const char* const operation : operations) {
        for (const Way& way : ways) {
            const bool isOpened = operation == std::string("opened");
            if (isOpened && std::string(way.what).find("destroyed") != std::string::npos)
                continue;  // the system is making its window
            const bool whileMade = isOpened || operation == std::string("entered");
            for (const bool modal : {true, false}) {
                SCOPED_TRACE(std::string(operation) + ", " + way.what + (modal ? ", modal" : ""));
                if (!IsWindow(owner))
                    owner = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                            300, 200, nullptr, nullptr, nullptr, nullptr);
                sheet = std::make_unique<TestSheet>();
                bool wasCalled = false;
                const auto end = [&] {
                    if (std::exchange(wasCalled, true)) return;
                    way.end();
                };
                sheet->span.inside[operation] = end;
                sheet->inside[operation] = end;
                if (modal) {
                    DialogScript script;
                    if (!whileMade) script.run([&](HWND) { goThrough(); });
                    sheet->run(owner);
                } else {
                    sheet->open(owner);
                    goThrough();
                }
                pumpMessages();
                EXPECT_TRUE(wasCalled);
                EXPECT_TRUE(openDialogs().empty());
                EXPECT_TRUE(!sheet || !sheet->isOpen());
                if (way.keepsOwner) {
                    EXPECT_TRUE(IsWindowEnabled(owner));
                }
            }
        }
    }
}

TEST_F(SheetEnds, ComeWithAPage) {
    TvPropertySheet two("Two");
    auto page = std::make_unique<TestPage>(IDD_SPAN, IDC_SPAN);
    TestPage other("LOAD_PAGE", IDC_LOAD);
    EXPECT_EQ(two.add(*page), 1);
    EXPECT_EQ(two.add(*page), 0);
    EXPECT_EQ(two.add(other), 1);
    EXPECT_EQ(sheet->add(other), 0);
    const HWND window = two.open(owner);
    EXPECT_EQ(two.add(other), 0);
    page->inside["command"] = [&] { page.reset(); };
    SendMessageA(page->getHWND(), WM_COMMAND, IDC_BUTTON, 0);
    EXPECT_EQ(page, nullptr);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(two.isOpen(), 0);
    EXPECT_NE(two.open(owner), nullptr);  // with the page that is left
    EXPECT_EQ(other.close(3), 1);
    EXPECT_EQ(other.close(3), 0);
}

TEST_F(SheetEnds, GiveWhatCloseWasGiven) {
    DialogScript script;
    script.run([&](HWND) {
        EXPECT_EQ(sheet->run(owner), 0);
        EXPECT_EQ(sheet->open(owner), nullptr);
        EXPECT_EQ(sheet->span.close(42), 1);
    });
    EXPECT_EQ(sheet->run(owner), 42);
    EXPECT_EQ(sheet->span.number.value(), 10);
    sheet->deleteWhenClosed();
    open();
    TvPropertySheet* const last = sheet.release();
    last->close(0);  // deletes it
}

TEST_F(SheetEnds, ComeWithTheProgramsEnd) {
    DialogScript script;
    script.run([&](HWND) { PostQuitMessage(5); });
    EXPECT_EQ(sheet->run(owner), 0);
    MSG message{};
    EXPECT_FALSE(GetMessageA(&message, nullptr, 0, 0));
    EXPECT_EQ(message.wParam, 5u);
}

TEST_F(SheetEnds, AreToldWhenTheSheetCannotBeMade) {
    TvPropertySheet broken("Broken");
    TestPage good(IDD_SPAN, IDC_SPAN);
    TestPage bad("NO_SUCH_PAGE", IDC_SPAN);
    EXPECT_EQ(broken.run(owner), 0);  // no page
    broken.add(good);
    broken.add(bad);
    for (const bool modal : {true, false}) {
        BoxAnswerer answerer({IDOK});
        if (modal) {
            EXPECT_EQ(broken.run(owner), 0);
        } else {
            EXPECT_EQ(broken.open(owner), nullptr);
        }
        ASSERT_EQ(answerer.seen().size(), 1u);
        EXPECT_NE(answerer.seen()[0].text.find("NO_SUCH_PAGE"), std::string::npos);
        EXPECT_EQ(broken.wasMade(), 0);
        EXPECT_TRUE(IsWindowEnabled(owner));
    }
}

TEST_F(SheetEnds, LeaveNothingBehind) {
    const auto once = [&] {
        open();
        sheet->showPage(1);
        enter(sheet->load, IDC_LOAD, "1000");
        press(IDOK);
        EXPECT_NE(sheet->load.fields()->balloon(), nullptr);
        press(IDCANCEL);
        EXPECT_EQ(sheet->isOpen(), 0);
    };
    expectNoHandlesLeft(200, once);
}

}  // namespace

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
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"deleted", [&] { sheet.reset(); }},
        {"closed", [&] { sheet->close(7); }},
        {"destroyed", [&] { DestroyWindow(sheet->getHWND()); }},
        {"owner destroyed", [&] { DestroyWindow(owner); }}};
    for (const std::string operation : operations) {
        for (const auto& [what, end] : ways) {
            if (operation == "opened" && std::string(what).find("destroyed") != std::string::npos)
                continue;  // the system is making its window
            for (const bool modal : {true, false}) {
                SCOPED_TRACE(operation + ", " + what + (modal ? ", modal" : ""));
                if (!IsWindow(owner)) owner = makeOwner();
                sheet = std::make_unique<TestSheet>();
                bool wasCalled = false;
                sheet->span.inside[operation] = [&, &end = end] {
                    if (!std::exchange(wasCalled, true)) end();
                };
                sheet->inside[operation] = sheet->span.inside[operation];
                if (modal) {
                    DialogScript script;
                    if (operation != "opened" && operation != "entered")
                        script.run([&](HWND) { goThrough(); });
                    sheet->run(owner);
                } else {
                    sheet->open(owner);
                    goThrough();
                }
                pumpMessages();
                EXPECT_TRUE(wasCalled);
                EXPECT_TRUE(openDialogs().empty());
                EXPECT_TRUE(!sheet || !sheet->isOpen());
                EXPECT_TRUE(IsWindowEnabled(owner) || !IsWindow(owner));
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
}

TEST_F(SheetEnds, GiveWhatCloseWasGiven) {
    DialogScript script;
    script.run([&](HWND) {
        EXPECT_EQ(sheet->run(owner), 0);
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
    TestPage bad("NO_SUCH_PAGE", IDC_SPAN);
    EXPECT_EQ(broken.run(owner), 0);  // no page
    broken.add(bad);
    BoxAnswerer answerer({IDOK, IDOK});
    EXPECT_EQ(broken.run(owner), 0);
    EXPECT_EQ(broken.open(owner), nullptr);
    ASSERT_EQ(answerer.seen().size(), 2u);
    EXPECT_NE(answerer.seen()[0].text.find("NO_SUCH_PAGE"), std::string::npos);
    EXPECT_EQ(broken.wasMade(), 0);
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(SheetEnds, LeaveNothingBehind) {
    expectNoHandlesLeft(200, [&] {
        open();
        sheet->showPage(1);
        enter(sheet->load, IDC_LOAD, "1000");
        press(IDOK);
        EXPECT_NE(sheet->load.fields()->balloon(), nullptr);
        press(IDCANCEL);
    });
}

}  // namespace

// A sheet of two pages whose operations are told by the test.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "sheet_test.h"
#include "support/box_answerer.h"
#include "support/window_kit.h"
#include "toolbox/exchange.h"
#include "toolbox/messages.h"
#include "toolbox/property_sheets.h"

// After windows.h.
#include <commctrl.h>

constexpr int kApply = 0x3021;  // the button of the system's sheet

using Actions = std::map<std::string, std::function<void()>>;

/// Does what the test put under an operation's name. It may delete the page or the sheet, so it is
/// the last thing that the operation does.
inline void act(const Actions& actions, std::string& log, const std::string& what) {
    log += what + " ";
    const auto found = actions.find(what);
    if (found == actions.end()) return;
    const auto action = found->second;
    action();
}

/// A page with one number from 0 to 100.
class TestPage : public TvPropertyPage {
  public:
    TestPage(const toolbox::ResourceName& name, int control)
        : TvPropertyPage(name), control_(control) {
        number.setLimits(0, 100);
    }

    TvDouble number;
    Actions inside;
    std::string log;
    int confirms = 1, cancels = 1, leaves = 1;

  protected:
    void opened() override { act(inside, log, "opened"); }
    void exchange(TvExchange& fields) override {
        fields.number(control_, number);
        if (fields.isReading()) act(inside, log, "exchange");
    }
    int command(int control, int) override {
        if (control == IDC_BUTTON) act(inside, log, "command");
        return 0;
    }
    int confirmed() override {
        const int answer = confirms;
        act(inside, log, "confirmed");
        return answer;
    }
    int cancelled() override {
        const int answer = cancels;
        act(inside, log, "cancelled");
        return answer;
    }
    void entered() override { act(inside, log, "entered"); }
    int leaving() override {
        const int answer = leaves;
        act(inside, log, "leaving");
        return answer;
    }
    void destroyed() override { act(inside, log, "destroyed"); }

  private:
    int control_;
};

class TestSheet : public TvPropertySheet {
  public:
    TestSheet() : TvPropertySheet("Beam") {
        span.number = 10;
        load.number = 20;
        add(span);
        add(load);
    }

    TestPage span{IDD_SPAN, IDC_SPAN};
    TestPage load{"LOAD_PAGE", IDC_LOAD};
    Actions inside;
    std::string log;

  protected:
    void applied(int closing) override { act(inside, log, closing ? "confirmed" : "applied"); }
    void destroyed() override { act(inside, log, "destroyed"); }
};

class SheetFixture : public ::testing::Test {
  protected:
    SheetFixture() {
        GMSG::initStaticVars();
        GMSG::language = GMSG::English;
    }
    ~SheetFixture() override {
        sheet.reset();
        DestroyWindow(owner);
        toolbox::testing::pumpMessages();
        GMSG::destroyStaticVars();
        GMSG::language = GMSG::French;
    }

    /// The window of a page's control, when the page is made.
    static HWND field(const TvPropertyPage& page, int id) { return GetDlgItem(page.getHWND(), id); }
    void enter(const TvPropertyPage& page, int id, const char* text) const {
        toolbox::testing::setText(page.getHWND(), id, text);
    }
    void press(int button) const { SendMessageA(sheet->getHWND(), WM_COMMAND, button, 0); }
    [[nodiscard]] bool canApply() const {
        return IsWindowEnabled(GetDlgItem(sheet->getHWND(), kApply)) != 0;
    }
    void open() {
        ASSERT_NE(sheet->open(owner), nullptr);
        toolbox::testing::pumpMessages();
    }

    GMSG service;
    HWND owner = CreateWindowExA(0, "STATIC", "Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 200,
                                 500, 400, nullptr, nullptr, nullptr, nullptr);
    std::unique_ptr<TestSheet> sheet = std::make_unique<TestSheet>();
};

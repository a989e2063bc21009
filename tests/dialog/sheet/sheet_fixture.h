// A sheet of two pages whose operations are told by the test.
#pragma once

#include <memory>

#include "sheet_test.h"
#include "support/actions.h"
#include "support/box_answerer.h"
#include "support/owner_fixture.h"
#include "toolbox/exchange.h"
#include "toolbox/property_sheets.h"

// After windows.h.
#include <commctrl.h>

constexpr int kApply = 0x3021;  // the button of the system's sheet

/// A page with one number from 0 to 100.
class TestPage : public TvPropertyPage, public toolbox::testing::Actions {
  public:
    TestPage(const toolbox::ResourceName& name, int control)
        : TvPropertyPage(name), control_(control) {
        number.setLimits(0, 100);
    }

    TvDouble number;
    int confirms = 1, cancels = 1, leaves = 1;

  protected:
    void opened() override { act("opened"); }
    void exchange(TvExchange& fields) override {
        fields.number(control_, number);
        if (fields.isReading()) act("exchange");
    }
    int command(int control, int) override { return control == IDC_BUTTON ? act("command", 0) : 0; }
    int confirmed() override { return act("confirmed", confirms); }
    int cancelled() override { return act("cancelled", cancels); }
    void entered() override { act("entered"); }
    int leaving() override { return act("leaving", leaves); }
    void destroyed() override { act("destroyed"); }

  private:
    int control_;
};

class TestSheet : public TvPropertySheet, public toolbox::testing::Actions {
  public:
    TestSheet() : TvPropertySheet("Beam") {
        span.number = 10;
        load.number = 20;
        add(span);
        add(load);
    }

    TestPage span{IDD_SPAN, IDC_SPAN};
    TestPage load{"LOAD_PAGE", IDC_LOAD};

  protected:
    void applied(int closing) override { act(closing ? "confirmed" : "applied"); }
    void destroyed() override { act("destroyed"); }
};

class SheetFixture : public toolbox::testing::OwnerFixture {
  protected:
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

    std::unique_ptr<TestSheet> sheet = std::make_unique<TestSheet>();
};

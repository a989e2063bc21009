// Entries that are refused: where the user is led, what is said, and that nothing is stored.
#include "exchange_fixture.h"
#include "support/box_answerer.h"
#include "toolbox/controls.h"

namespace {

using namespace toolbox::testing;

class ExchangeFaults : public ExchangeFixture {
  protected:
    ExchangeFaults() {
        name = "beam";
        force = 1.5;
        exchange = [this](TvExchange& all) {
            all.text(IDC_TEXT, name);
            all.number(IDC_NUMBER, force);
            all.check(IDC_CHECK, isChecked);
            all.date(IDC_DATE, date);
            all.choice(IDC_DROPDOWN, colour, 10);
            if (force.value() > 90) all.fail(IDC_TEXT, IDS_ORDER, "a", "b");
        };
        fields->fill(exchange);
    }
    void expectUnchanged() const {
        EXPECT_EQ(name.value(), "beam");
        EXPECT_EQ(force.value(), 1.5);
        EXPECT_FALSE(isChecked);
        EXPECT_EQ(date, TarvDate(2026, 8, 1));
        EXPECT_EQ(colour, "red");
    }
    /// Enters a wrong number and is led to it.
    void makeFault() {
        type(IDC_NUMBER, "101");
        EXPECT_EQ(fields->read(exchange), 0);
        ASSERT_NE(fields->balloon(), nullptr);
    }
    /// The text of the balloon that is shown.
    [[nodiscard]] std::string told() const { return textOf(fields->balloon()); }

    TvString name{IDS_NAME};
    TvDouble force{IDS_FORCE};
    bool isChecked = false;
    TarvDate date{2026, 8, 1};
    CString colour = "red";
    TvExchange::Fields exchange;
};

TEST_F(ExchangeFaults, LeadTheUserToTheFirstOne) {
    const struct {
        int field;
        const char *entry, *sentence;
    } cases[] = {{IDC_NUMBER, "101", "The value must be between -100.00 and 100.00."},
                 {IDC_NUMBER, "", "A number is needed."},
                 {IDC_TEXT, "a/b", "Invalid text."},
                 {IDC_TEXT, "", "Invalid text."},
                 {IDC_TEXT, "a\tb", "The text has a character that cannot be stored."},
                 {IDC_DATE, "13/13/2026", "The calendar has no such day."},
                 {IDC_DROPDOWN, "eleven char", "At most 10 characters are allowed."}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.entry);
        fields->fill(exchange);
        type(c.field, c.entry);
        CheckDlgButton(dialog, IDC_CHECK, BST_CHECKED);
        SetFocus(control(IDOK));
        EXPECT_EQ(c.entry[0] ? fields->read(exchange) : fields->verify(exchange), 0);
        expectUnchanged();
        EXPECT_EQ(fields->faultControl(), c.field);
        const HWND focus = GetFocus();
        EXPECT_TRUE(focus == control(c.field) || GetParent(focus) == control(c.field));
        EXPECT_EQ(HIWORD(SendMessageA(focus, EM_GETSEL, 0, 0)), shown(c.field).size());
        ASSERT_NE(fields->balloon(), nullptr);
        EXPECT_TRUE(IsWindowVisible(fields->balloon()));
        EXPECT_EQ(fields->faultText(), c.sentence);
        EXPECT_EQ(told(), c.sentence);
    }
}

TEST_F(ExchangeFaults, OfRulesBetweenFieldsSeeWhatWasEnteredAndStoreNothing) {
    type(IDC_NUMBER, "95");
    type(IDC_TEXT, "column");
    type(IDC_DROPDOWN, "blue");
    double seen = 0;
    EXPECT_EQ(fields->read([&](TvExchange& all) {
        exchange(all);
        seen = force.value();
    }),
              0);
    EXPECT_EQ(seen, 1.5);  // given back as soon as the rule failed
    expectUnchanged();
    EXPECT_EQ(told(), "a before b");

    // A rule of the dialog that comes when everything is read.
    type(IDC_NUMBER, "50");
    EXPECT_EQ(fields->verify(exchange), 1);
    expectUnchanged();
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(force.value(), 50);
    EXPECT_EQ(fields->fail(IDC_NUMBER, "too much"), 0);
    expectUnchanged();
    EXPECT_EQ(told(), "too much");
    EXPECT_EQ(GetFocus(), control(IDC_NUMBER));
}

TEST_F(ExchangeFaults, OfTextsThatCannotBeStoredWholeAreRefused) {
    SetWindowTextW(control(IDC_TEXT), L"\x3A9");
    EXPECT_EQ(fields->read(exchange), 0);
    EXPECT_EQ(fields->faultControl(), IDC_TEXT);
    SetWindowTextW(control(IDC_TEXT), L"\x20AC\xE9");
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(name.value(), "\200\351");

    const std::string huge(4000, '1');  // an edit field's time grows with the square
    CString any, limited;
    const auto all = [&](TvExchange& each) {
        each.text(IDC_TEXT, any, 0);
        each.text(IDC_VALUE, limited, 100);
    };
    fields->fill(all);
    type(IDC_TEXT, huge);
    EXPECT_EQ(fields->read(all), 1);
    EXPECT_EQ(any.length(), huge.size());
    type(IDC_VALUE, huge);
    EXPECT_EQ(fields->read(all), 0);
    EXPECT_EQ(limited, "");
}

TEST_F(ExchangeFaults, OfFieldsThatAreSwitchedOffAreNotFoundAndToldInABox) {
    type(IDC_NUMBER, "wrong");
    EnableWindow(control(IDC_NUMBER), FALSE);
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(force.value(), 1.5);
    BoxAnswerer answerer({IDOK});
    fields->fail(IDC_NUMBER, "100% wrong");
    EXPECT_EQ(answerer.seen().at(0).text, "100% wrong");
    EXPECT_EQ(answerer.seen().at(0).owner, dialog);
    EXPECT_EQ(fields->balloon(), nullptr);
}

TEST_F(ExchangeFaults, AreCheckedInValuesThatWereNotTouched) {
    force = 200;
    fields->fill(exchange);
    EXPECT_EQ(fields->read(exchange), 0);
    EXPECT_EQ(fields->faultControl(), IDC_NUMBER);
    force = 100.001;  // shown as it would be allowed
    fields->fill(exchange);
    EXPECT_EQ(fields->read(exchange), 0);
}

TEST_F(ExchangeFaults, LoseTheirBalloonWhenTheUserGoesOn) {
    TvEdit edit;
    edit.attach(dialog, IDC_NUMBER);
    const std::function<void()> ways[] = {
        [] { typeText("5"); }, [this] { SetFocus(control(IDC_TEXT)); },
        [this] { SetWindowPos(dialog, nullptr, 50, 60, 0, 0, SWP_NOSIZE); },
        [this] { ShowWindow(control(IDC_NUMBER), SW_HIDE); },
        [this] { fields->fail(IDC_NUMBER, "wrong, too"); }};
    for (const auto& way : ways) {
        SCOPED_TRACE(&way - ways);
        makeFault();
        EXPECT_EQ(edit.getFault(), fields->faultText()) << "marked";
        const HWND balloon = fields->balloon();
        way();
        EXPECT_TRUE(pumpUntil([&] { return !IsWindow(balloon); }));
        ShowWindow(control(IDC_NUMBER), SW_SHOW);
    }
    makeFault();
    DestroyWindow(dialog);
    EXPECT_EQ(fields->balloon(), nullptr);
    EXPECT_EQ(fields->getHWND(), nullptr);
    EXPECT_EQ(fields->read(exchange), 0);
}

TEST_F(ExchangeFaults, EndWithTheirObjectWhereverItGoes) {
    makeFault();
    const HWND balloon = fields->balloon();
    fields.reset();
    EXPECT_FALSE(IsWindow(balloon));
    SetFocus(control(IDC_TEXT));  // nobody watches any more

    const auto deleted = [&](const std::function<void()>& inside) {
        fields = std::make_unique<TvExchange>(dialog);
        fields->fill(exchange);
        type(IDC_NUMBER, "3");
        return fields->read([&](TvExchange& all) {
            all.number(IDC_NUMBER, force);
            inside();
        });
    };
    EXPECT_EQ(deleted([&] { fields.reset(); }), 0);
    force = 1.5;
    EXPECT_EQ(deleted([&] { DestroyWindow(dialog); }), 0);
    EXPECT_EQ(force.value(), 1.5);
}

TEST_F(ExchangeFaults, OfAnExceptionStoreNothing) {
    type(IDC_NUMBER, "3");
    EXPECT_THROW(fields->read([&](TvExchange& all) {
        all.number(IDC_NUMBER, force);
        throw 1;
    }),
                 int);
    EXPECT_EQ(force.value(), 1.5);
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(force.value(), 3);
}

TEST_F(ExchangeFaults, LeaveNothingBehind) {
    expectNoHandlesLeft(200, [&] {
        const HWND window = make();
        TvExchange own(window);
        own.fill(exchange);
        SetDlgItemTextA(window, IDC_NUMBER, "101");
        EXPECT_EQ(own.read(exchange), 0);
        EXPECT_NE(own.balloon(), nullptr);
        DestroyWindow(window);
    });
}

}  // namespace

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
    [[nodiscard]] bool isSelectedWhole(int id) const {
        DWORD from = 1, to = 0;
        const bool combo = isOfClass(control(id), "ComboBox");
        SendMessageA(control(id), combo ? CB_GETEDITSEL : EM_GETSEL,
                     reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return from == 0 && to == shown(id).size();
    }
    /// The text of the balloon that is shown.
    [[nodiscard]] std::string told() const {
        char text[1024] = "";
        TTTOOLINFOA tool{};
        tool.cbSize = TTTOOLINFOA_V2_SIZE;
        tool.lpszText = text;
        EXPECT_TRUE(
            SendMessageA(fields->balloon(), TTM_ENUMTOOLSA, 0, reinterpret_cast<LPARAM>(&tool)));
        return text;
    }

    TvString name{IDS_NAME};
    TvDouble force{IDS_FORCE};
    bool isChecked = false;
    TarvDate date{2026, 8, 1};
    CString colour = "red";
    TvExchange::Fields exchange;
};

TEST_F(ExchangeFaults, LeadTheUserToTheFirstOne) {
    struct Case {
        int field;
        const char *entry, *english, *french;
    };
    const Case cases[] = {
        {IDC_NUMBER, "101", "The value must be between -100.00 and 100.00.", nullptr},
        {IDC_NUMBER, "", "A number is needed.", nullptr},
        {IDC_TEXT, "a/b", "Invalid text.", nullptr},
        {IDC_TEXT, "", "Invalid text.", nullptr},
        {IDC_TEXT, "a\tb", "The text has a character that cannot be stored.",
         "Le texte contient un caract\350re qui ne peut pas \352tre enregistr\351."},
        {IDC_DATE, "1/2/26",
         "Enter a date as month, day and year with four digits, for example "
         "12/31/2026.",
         "Entrez une date dans l'ordre jour, mois et ann\351e en quatre "
         "chiffres\240: 31/12/2026, par exemple."},
        {IDC_DATE, "13/13/2026", "The calendar has no such day.",
         "Ce jour n'existe pas dans le calendrier."},
        {IDC_DROPDOWN, "eleven char", "At most 10 characters are allowed.",
         "Au plus 10 caract\350res sont permis."}};
    for (const Case& c : cases) {
        for (const auto language : {GMSG::English, GMSG::French}) {
            GMSG::language = language;
            SCOPED_TRACE(std::string(c.entry) + (language == GMSG::French ? " French" : ""));
            fields->fill(exchange);
            type(c.field, c.entry);
            CheckDlgButton(dialog, IDC_CHECK, BST_CHECKED);
            SetFocus(control(IDOK));
            EXPECT_EQ(fields->read(exchange), 0);
            expectUnchanged();
            EXPECT_EQ(fields->faultControl(), c.field);
            const HWND focus = GetFocus();
            EXPECT_TRUE(focus == control(c.field) || GetParent(focus) == control(c.field));
            EXPECT_TRUE(isSelectedWhole(c.field));
            ASSERT_NE(fields->balloon(), nullptr);
            EXPECT_TRUE(IsWindowVisible(fields->balloon()));
            const char* const text = language == GMSG::English ? c.english : c.french;
            if (text) {
                EXPECT_EQ(fields->faultText(), text);
            }
            // The tooltip tells the first 80 characters of its text.
            EXPECT_EQ(told(), fields->faultText().str().substr(0, 80));
        }
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
    EXPECT_EQ(fields->faultControl(), IDC_TEXT);
    EXPECT_EQ(told(), "a before b");

    // A rule of the dialog that comes when everything is read.
    type(IDC_NUMBER, "50");
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(force.value(), 50);
    EXPECT_EQ(fields->fail(IDC_NUMBER, "too much"), 0);
    expectUnchanged();
    EXPECT_EQ(told(), "too much");
    EXPECT_EQ(GetFocus(), control(IDC_NUMBER));
}

TEST_F(ExchangeFaults, AreFoundByVerifyWhichStoresNothing) {
    type(IDC_NUMBER, "50");
    EXPECT_EQ(fields->verify(exchange), 1);
    expectUnchanged();
    type(IDC_NUMBER, "1e");
    EXPECT_EQ(fields->verify(exchange), 0);
    EXPECT_EQ(GetFocus(), control(IDC_NUMBER));
}

TEST_F(ExchangeFaults, OfCharactersThatBytesCannotHoldAreRefused) {
    SetWindowTextW(control(IDC_TEXT), L"\x3A9");
    EXPECT_EQ(fields->read(exchange), 0);
    EXPECT_EQ(fields->faultControl(), IDC_TEXT);
    SetWindowTextW(control(IDC_TEXT), L"\x20AC\xE9");
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(name.value(), "\200\351");
}

TEST_F(ExchangeFaults, OfTextsThatAreTooLongAreRefusedWhole) {
    const std::string huge(4000, '1');  // an edit field's time grows with the square
    CString any, limited;
    double number = 1;
    const auto all = [&](TvExchange& each) {
        each.text(IDC_TEXT, any, 0);
        each.text(IDC_VALUE, limited, 100);
        each.number(IDC_NUMBER, number);
    };
    fields->fill(all);
    type(IDC_TEXT, huge);
    EXPECT_EQ(fields->read(all), 1);
    EXPECT_EQ(any.length(), huge.size());
    type(IDC_VALUE, huge);
    EXPECT_EQ(fields->read(all), 0);
    EXPECT_EQ(limited, "");
    type(IDC_VALUE, "");
    type(IDC_NUMBER, huge);
    EXPECT_EQ(fields->read(all), 0);
    EXPECT_EQ(number, 1);
}

TEST_F(ExchangeFaults, AreNotAskedOfFieldsThatAreSwitchedOff) {
    type(IDC_NUMBER, "wrong");
    EnableWindow(control(IDC_NUMBER), FALSE);
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(force.value(), 1.5);
    type(IDC_NUMBER, "3");
    EXPECT_EQ(fields->read(exchange), 1);
    EXPECT_EQ(force.value(), 3);
}

TEST_F(ExchangeFaults, OfFieldsThatTakeNoInputAreToldInABox) {
    for (const int id : {IDC_NUMBER, IDC_NONE}) {
        if (id == IDC_NUMBER) EnableWindow(control(id), FALSE);
        BoxAnswerer answerer({IDOK});
        fields->fail(id, "100% wrong");
        ASSERT_EQ(answerer.seen().size(), 1u);
        EXPECT_EQ(answerer.seen()[0].text, "100% wrong");
        EXPECT_EQ(answerer.seen()[0].owner, dialog);
        EXPECT_EQ(fields->balloon(), nullptr);
    }
    EXPECT_EQ(GMSG::getParent(), nullptr);
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

TEST_F(ExchangeFaults, MarkAnEditOfTheLibrary) {
    TvEdit edit;
    ASSERT_EQ(edit.attach(dialog, IDC_NUMBER), 1);
    makeFault();
    EXPECT_EQ(edit.getFault(), fields->faultText());
    typeText("5");
    EXPECT_TRUE(pumpUntil([&] { return edit.getFault().IsEmpty(); }));
}

// The balloon.

TEST_F(ExchangeFaults, LoseTheirBalloonWhenTheUserGoesOn) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"typing", [] { typeText("5"); }},
        {"deleting", [] { pressKey(VK_DELETE); }},
        {"setting", [this] { type(IDC_NUMBER, "7"); }},
        {"leaving", [this] { SetFocus(control(IDC_TEXT)); }},
        {"moving", [this] { SetWindowPos(dialog, nullptr, 50, 60, 0, 0, SWP_NOSIZE); }},
        {"sizing", [this] { SetWindowPos(dialog, nullptr, 0, 0, 300, 300, SWP_NOMOVE); }},
        {"hiding",
         [this] {
             ShowWindow(dialog, SW_HIDE);
             ShowWindow(dialog, SW_SHOW);
         }},
        {"hiding the field",
         [this] {
             ShowWindow(control(IDC_NUMBER), SW_HIDE);
             ShowWindow(control(IDC_NUMBER), SW_SHOW);
         }},
        {"reading again",
         [this] {
             type(IDC_NUMBER, "7");
             fields->read(exchange);
         }},
        {"hideFault", [this] { fields->hideFault(); }}};
    for (const auto& [what, way] : ways) {
        SCOPED_TRACE(what);
        makeFault();
        const HWND balloon = fields->balloon();
        way();
        EXPECT_TRUE(pumpUntil([&] { return !IsWindow(balloon); }));
        EXPECT_EQ(fields->balloon(), nullptr);
    }
    makeFault();
    DestroyWindow(dialog);
    EXPECT_EQ(fields->balloon(), nullptr);
    EXPECT_EQ(fields->getHWND(), nullptr);
    EXPECT_EQ(fields->read(exchange), 0);
    EXPECT_EQ(fields->isTouched(), 0);
}

TEST_F(ExchangeFaults, KeepTheirBalloonBesideTheField) {
    makeFault();
    pumpMessages();
    RECT field{}, balloon{}, overlap{};
    GetWindowRect(control(IDC_NUMBER), &field);
    GetWindowRect(fields->balloon(), &balloon);
    EXPECT_GE(balloon.top, field.top + (field.bottom - field.top) / 2);
    EXPECT_LT(balloon.top, field.bottom + 10);
    InflateRect(&field, 10, 10);
    EXPECT_TRUE(IntersectRect(&overlap, &field, &balloon));
    const HWND first = fields->balloon();
    makeFault();
    EXPECT_NE(fields->balloon(), first);
    EXPECT_FALSE(IsWindow(first));
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
    const auto once = [&] {
        const HWND window = make();
        TvExchange own(window);
        own.fill(exchange);
        SetDlgItemTextA(window, IDC_NUMBER, "101");
        EXPECT_EQ(own.read(exchange), 0);
        EXPECT_NE(own.balloon(), nullptr);
        DestroyWindow(window);
    };
    expectNoHandlesLeft(200, once);
}

}  // namespace

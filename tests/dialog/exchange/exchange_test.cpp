// Filling and reading fields of every kind.
#include <bit>
#include <cstdint>
#include <limits>
#include <vector>

#include "exchange_fixture.h"
#include "toolbox/diagnostics.h"

namespace {

using namespace toolbox::testing;

/// A variable for each kind of field, and the function that names them.
struct Form {
    TvString name{IDS_NAME};
    CString lines = "one\r\ntwo";
    TvDouble force{IDS_FORCE};
    bool isChecked = true, mayBeDateless = false;
    int three = 2, radio = 1, choice = 2, entry = 0;
    CString typed = "violet", chosen = "Green";
    TarvDate date{2026, 8, 1}, picked{2024, 2, 29};
    RealFormatedValue value;

    Form() {
        name = "beam";
        force = 1. / 3;
        value.setFormat(10, 3, Right);
        value = 2. / 3;
    }
    int exchange(TvExchange& fields) {
        return fields.text(IDC_TEXT, name) + fields.text(IDC_LINES, lines, 0) +
               fields.number(IDC_NUMBER, force) + fields.check(IDC_CHECK, isChecked) +
               fields.check(IDC_THREE, three) + fields.radio(IDC_FIRST, IDC_THIRD, radio) +
               fields.choice(IDC_DROPDOWN, typed, 10) + fields.choice(IDC_CHOICE, chosen) +
               fields.choice(IDC_LIST, entry) + fields.date(IDC_DATE, date, mayBeDateless) +
               fields.date(IDC_PICKER, picked, true) + fields.value(IDC_VALUE, value, "kN");
    }
    static constexpr int kFields = 12;
};

class ExchangeOfFields : public ExchangeFixture {
  protected:
    void fill() {
        EXPECT_EQ(fields->fill([&](TvExchange& all) {
            EXPECT_FALSE(all.isReading());
            EXPECT_EQ(form.exchange(all), Form::kFields);
        }),
                  1);
    }
    void read() {
        EXPECT_EQ(fields->read([&](TvExchange& all) {
            EXPECT_TRUE(all.isReading());
            EXPECT_EQ(form.exchange(all), Form::kFields);
        }),
                  1)
            << fields->faultControl() << ": " << fields->faultText();
    }
    /// Texts, then the states of the buttons and the row of the list.
    [[nodiscard]] std::string everything() const {
        std::string all;
        for (const int id :
             {IDC_TEXT, IDC_LINES, IDC_NUMBER, IDC_DROPDOWN, IDC_CHOICE, IDC_DATE, IDC_VALUE})
            all += shown(id) + "|";
        for (const int id : {IDC_CHECK, IDC_THREE, IDC_FIRST, IDC_SECOND, IDC_THIRD})
            all += std::to_string(IsDlgButtonChecked(dialog, id));
        return all + "|" + std::to_string(send(IDC_LIST, LB_GETCURSEL));
    }

    Form form;
};

TEST_F(ExchangeOfFields, ShowsEveryVariableAndStoresWhatWasEntered) {
    fill();
    EXPECT_EQ(everything(), "beam|one\r\ntwo|0.33|violet|Green|08/01/2026|0.667 kN|12010|0");
    SYSTEMTIME time{};
    EXPECT_EQ(send(IDC_PICKER, DTM_GETSYSTEMTIME, 0, &time), GDT_VALID);
    EXPECT_EQ(time.wDay * 100 + time.wMonth, 2902);

    for (const auto& [id, text] : {std::pair{IDC_TEXT, "column"}, std::pair{IDC_LINES, "a\tb\r\n"},
                                   std::pair{IDC_NUMBER, " 2,5 "}, std::pair{IDC_DROPDOWN, "Green"},
                                   std::pair{IDC_DATE, "2/29/2028"}, std::pair{IDC_VALUE, "7.25"}})
        type(id, text);
    CheckDlgButton(dialog, IDC_CHECK, BST_UNCHECKED);
    CheckDlgButton(dialog, IDC_THREE, BST_CHECKED);
    CheckRadioButton(dialog, IDC_FIRST, IDC_THIRD, IDC_THIRD);
    send(IDC_CHOICE, CB_SETCURSEL, 3);
    send(IDC_LIST, LB_SETCURSEL, 3);
    time.wDay = 28;
    send(IDC_PICKER, DTM_SETSYSTEMTIME, GDT_VALID, &time);
    read();
    EXPECT_EQ(form.picked, TarvDate(2024, 2, 28));
    send(IDC_PICKER, DTM_SETSYSTEMTIME, GDT_NONE, &time);
    read();
    EXPECT_EQ(form.picked, TarvDate(0, 0, 0));
    for (const int id : {IDC_TEXT, IDC_LINES, IDC_NUMBER, IDC_DROPDOWN, IDC_DATE, IDC_VALUE})
        type(id, "");
    fill();
    EXPECT_EQ(everything(), "column|a\tb\r\n|2.50|Green|blue|02/29/2028|7.250 kN|01001|3");
}

TEST_F(ExchangeOfFields, GivesBackWhatWasNotTouched) {
    const CString dirty(std::string("\1a\0b\n", 5) + std::string(100, 'x'));
    form.lines = dirty;
    form.force = std::bit_cast<double>(std::uint64_t{0x3FD5555555555556});
    form.three = 1;
    form.radio = 7;  // beyond the group
    form.chosen = "gone from the list";
    form.entry = 99;
    form.date = TarvDate(2026, 2, 30);
    form.value = std::numeric_limits<double>::quiet_NaN();
    form.mayBeDateless = true;
    fill();
    EXPECT_EQ(fields->isTouched(), 0);
    const auto force = std::bit_cast<std::uint64_t>(form.force.value());
    form.force = 0;  // what a modeless dialog's variable may become meanwhile
    read();
    EXPECT_EQ(form.lines, dirty);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(form.force.value()), force);
    EXPECT_EQ(form.radio, 7);
    EXPECT_EQ(form.chosen, "gone from the list");
    EXPECT_EQ(form.entry, 99);
    EXPECT_EQ(form.date, TarvDate(2026, 2, 30));
    EXPECT_NE(form.value.getValue(), form.value.getValue());
}

TEST_F(ExchangeOfFields, KnowsWhatWasTouched) {
    fill();
    type(IDC_NUMBER, "0.330");
    EXPECT_EQ(fields->isTouched(IDC_NUMBER), 1);
    EXPECT_EQ(fields->isTouched(IDC_TEXT) + fields->isTouched(IDC_NONE), 0);
    EXPECT_EQ(fields->isTouched(), 1);
    type(IDC_NUMBER, "0.33");
    EXPECT_EQ(fields->isTouched(), 0);
}

TEST_F(ExchangeOfFields, LetsNoMoreBeTypedThanTheRuleAllows) {
    CString plain = "longer than six";
    fields->fill([&](TvExchange& all) {
        all.text(IDC_TEXT, form.name);
        all.text(IDC_VALUE, plain, 6);
    });
    for (const auto& [id, kept] : {std::pair{IDC_TEXT, 8u}, std::pair{IDC_VALUE, 15u}}) {
        SetFocus(control(id));
        SendMessageA(control(id), EM_SETSEL, 0, -1);
        typeText(std::string(20, '9'));
        pumpMessages();
        EXPECT_EQ(shown(id), std::string(kept, '9')) << "at least as long as it was";
    }
}

std::vector<std::string> traces;

TEST_F(ExchangeOfFields, TellsTheTraceOfControlsThatTheTemplateLacks) {
    traces.clear();
    CTvTrace::SetCurrentTraceCategoryEnabled(4);
    toolbox::setTraceSink([](unsigned long, const char* text) { traces.emplace_back(text); });
    int number = 7;
    CString text = "kept";
    const auto exchange = [&](TvExchange& all) {
        EXPECT_EQ(all.number(IDC_NONE, number), 0);
        EXPECT_EQ(all.radio(IDC_THIRD, IDC_THIRD + 4, number), 0);  // a combo box is no button
        EXPECT_EQ(all.text(IDC_TEXT, text, 0), 1);
    };
    EXPECT_EQ(fields->fill(exchange), 1);
    type(IDC_TEXT, "new");
    EXPECT_EQ(fields->read(exchange), 1);
    toolbox::setTraceSink(nullptr);
    CTvTrace::SetCurrentTraceCategoryEnabled(0);
    EXPECT_NE(traces.at(0).find("199"), std::string::npos) << traces.at(0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(text, "new");
}

TEST_F(ExchangeOfFields, OutsideOfFillingAndReadingDoesNothing) {
    EXPECT_EQ(form.exchange(*fields), 0);
    EXPECT_EQ(shown(IDC_TEXT), "");
    fields->fill([&](TvExchange& all) {
        EXPECT_EQ(all.read([](TvExchange&) { ADD_FAILURE(); }), 0);
        EXPECT_EQ(all.fill([](TvExchange&) { ADD_FAILURE(); }), 0);
    });
}

}  // namespace

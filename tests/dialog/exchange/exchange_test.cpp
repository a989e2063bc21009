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
    bool isChecked = true;
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
               fields.choice(IDC_LIST, entry) + fields.date(IDC_DATE, date) +
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
    [[nodiscard]] bool isChecked(int id) const {
        return IsDlgButtonChecked(dialog, id) == BST_CHECKED;
    }

    Form form;
};

TEST_F(ExchangeOfFields, ShowsEveryVariable) {
    fill();
    EXPECT_EQ(shown(IDC_TEXT), "beam");
    EXPECT_EQ(shown(IDC_LINES), "one\r\ntwo");
    EXPECT_EQ(shown(IDC_NUMBER), "0.33");
    EXPECT_TRUE(isChecked(IDC_CHECK));
    EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_THREE), UINT{BST_INDETERMINATE});
    EXPECT_TRUE(isChecked(IDC_SECOND) && !isChecked(IDC_FIRST) && !isChecked(IDC_THIRD));
    EXPECT_EQ(shown(IDC_DROPDOWN), "violet");
    EXPECT_EQ(send(IDC_CHOICE, CB_GETCURSEL), 2);  // not "green"
    EXPECT_EQ(send(IDC_LIST, LB_GETCURSEL), 0);
    EXPECT_EQ(shown(IDC_DATE), "08/01/2026");
    SYSTEMTIME time{};
    EXPECT_EQ(send(IDC_PICKER, DTM_GETSYSTEMTIME, 0, &time), GDT_VALID);
    EXPECT_EQ(time.wDay * 100 + time.wMonth, 2902);
    EXPECT_EQ(shown(IDC_VALUE), "0.667 kN");
}

TEST_F(ExchangeOfFields, StoresWhatWasEntered) {
    fill();
    type(IDC_TEXT, "column");
    type(IDC_LINES, "a\tb\r\n");
    type(IDC_NUMBER, " 2,5 ");
    CheckDlgButton(dialog, IDC_CHECK, BST_UNCHECKED);
    CheckDlgButton(dialog, IDC_THREE, BST_CHECKED);
    CheckRadioButton(dialog, IDC_FIRST, IDC_THIRD, IDC_THIRD);
    type(IDC_DROPDOWN, "Green");
    send(IDC_CHOICE, CB_SETCURSEL, 3);
    send(IDC_LIST, LB_SETCURSEL, 3);
    type(IDC_DATE, "2/29/2028");
    SYSTEMTIME time{};
    time.wYear = 1999;
    time.wMonth = 12;
    time.wDay = 31;
    send(IDC_PICKER, DTM_SETSYSTEMTIME, GDT_VALID, &time);
    type(IDC_VALUE, "7.25");
    read();
    EXPECT_EQ(form.name.value(), "column");
    EXPECT_EQ(form.lines, "a\tb\r\n");
    EXPECT_EQ(form.force.value(), 2.5);
    EXPECT_FALSE(form.isChecked);
    EXPECT_EQ(form.three, 1);
    EXPECT_EQ(form.radio, 2);
    EXPECT_EQ(form.typed, "Green");
    EXPECT_EQ(form.chosen, "blue");
    EXPECT_EQ(form.entry, 3);
    EXPECT_EQ(form.date, TarvDate(2028, 2, 29));
    EXPECT_EQ(form.picked, TarvDate(1999, 12, 31));
    EXPECT_EQ(form.value.getValue(), 7.25);
    send(IDC_PICKER, DTM_SETSYSTEMTIME, GDT_NONE, &time);
    read();
    EXPECT_EQ(form.picked, TarvDate(0, 0, 0));
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
    const auto exchange = [&](TvExchange& all) {
        form.exchange(all);
        all.date(IDC_DATE, form.date, true);
    };
    EXPECT_EQ(fields->fill(exchange), 1);
    EXPECT_EQ(send(IDC_CHOICE, CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(send(IDC_LIST, LB_GETCURSEL), LB_ERR);
    const double force = form.force.value();
    form.force = 0;  // what a modeless dialog's variable may become meanwhile
    EXPECT_EQ(fields->read([&](TvExchange& all) {
        all.text(IDC_LINES, form.lines, 3);
        all.number(IDC_NUMBER, form.force);
        all.radio({IDC_FIRST, IDC_SECOND, IDC_THIRD}, form.radio);
        all.choice(IDC_CHOICE, form.chosen);
        all.choice(IDC_LIST, form.entry);
        all.date(IDC_DATE, form.date, true);
        all.value(IDC_VALUE, form.value, "kN");
    }),
              1);
    EXPECT_EQ(form.lines, dirty);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(form.force.value()),
              std::bit_cast<std::uint64_t>(force));
    EXPECT_EQ(form.radio, 7);
    EXPECT_EQ(form.chosen, "gone from the list");
    EXPECT_EQ(form.entry, 99);
    EXPECT_EQ(form.date, TarvDate(2026, 2, 30));
    EXPECT_NE(form.value.getValue(), form.value.getValue());
    EXPECT_EQ(fields->isTouched(), 0);
}

TEST_F(ExchangeOfFields, KnowsWhatWasTouched) {
    EXPECT_EQ(fields->isTouched(), 0);
    fill();
    EXPECT_EQ(fields->isTouched(), 0);
    type(IDC_NUMBER, "0.330");
    EXPECT_EQ(fields->isTouched(IDC_NUMBER), 1);
    EXPECT_EQ(fields->isTouched(IDC_TEXT), 0);
    EXPECT_EQ(fields->isTouched(), 1);
    type(IDC_NUMBER, "0.33");
    EXPECT_EQ(fields->isTouched(), 0);
    CheckRadioButton(dialog, IDC_FIRST, IDC_THIRD, IDC_FIRST);
    EXPECT_EQ(fields->isTouched(IDC_FIRST), 1);
    EXPECT_EQ(fields->isTouched(IDC_NONE), 0);
}

TEST_F(ExchangeOfFields, LetsNoMoreBeTypedThanTheRuleAllows) {
    CString plain = "longer than six";
    fields->fill([&](TvExchange& all) {
        all.text(IDC_TEXT, form.name);
        all.text(IDC_VALUE, plain, 6);
        all.choice(IDC_DROPDOWN, form.typed, 10);
    });
    for (const int id : {IDC_TEXT, IDC_VALUE, IDC_DROPDOWN}) {
        SetFocus(control(id));
        const HWND focus = GetFocus();
        SendMessageA(focus, EM_SETSEL, 0, -1);
        SendMessageA(focus, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>("12345678"));
        typeText(std::string(12, '9'));
        pumpMessages();
    }
    EXPECT_EQ(shown(IDC_TEXT), "12345678");
    EXPECT_EQ(shown(IDC_VALUE), "123456789999999");  // as long as it was
    EXPECT_EQ(shown(IDC_DROPDOWN), "1234567899");
}

TEST_F(ExchangeOfFields, TakesEveryTypeOfNumber) {
    TvShort s;
    TvUShort us;
    TvLong l;
    TvULong ul;
    TvFloat f;
    TvDouble d;
    d.setUnits("kN");
    int i = 5;
    double plain = 0.1;
    const auto through = [&](const char* entry, int field) {
        const auto one = [&](TvExchange& all) {
            const int kinds[] = {0, 1, 2, 3, 4, 5, 6, 7};
            switch (kinds[field]) {
                case 0:
                    all.number(IDC_NUMBER, s);
                    break;
                case 1:
                    all.number(IDC_NUMBER, us);
                    break;
                case 2:
                    all.number(IDC_NUMBER, l);
                    break;
                case 3:
                    all.number(IDC_NUMBER, ul);
                    break;
                case 4:
                    all.number(IDC_NUMBER, f);
                    break;
                case 5:
                    all.number(IDC_NUMBER, d);
                    break;
                case 6:
                    all.number(IDC_NUMBER, i, -10, 10);
                    break;
                default:
                    all.number(IDC_NUMBER, plain, 0, 1, 3);
            }
        };
        EXPECT_EQ(fields->fill(one), 1);
        type(IDC_NUMBER, entry);
        return fields->read(one);
    };
    EXPECT_EQ(through("-32768", 0), 1);
    EXPECT_EQ(through("32768", 0), 0);
    EXPECT_EQ(through("65535", 1), 1);
    EXPECT_EQ(through("-1", 1), 0);
    EXPECT_EQ(through("2147483647", 2), 1);
    EXPECT_EQ(through("2147483648", 2), 0);
    EXPECT_EQ(through("4294967295", 3), 1);
    EXPECT_EQ(through("1e38", 4), 1);
    EXPECT_EQ(through("1e39", 4), 0);
    EXPECT_EQ(through("1,25 kN", 5), 1);
    EXPECT_EQ(through("1.25 mm", 5), 0);
    EXPECT_EQ(through("10", 6), 1);
    EXPECT_EQ(through("11", 6), 0);
    EXPECT_EQ(through("12abc", 6), 0);
    EXPECT_EQ(through("0.5", 7), 1);
    EXPECT_EQ(through("1.5", 7), 0);
    EXPECT_EQ(s.value(), -32768);
    EXPECT_EQ(us.value(), 65535);
    EXPECT_EQ(l.value(), 2147483647L);
    EXPECT_EQ(ul.value(), 4294967295UL);
    EXPECT_EQ(f.value(), 1e38F);
    EXPECT_EQ(d.value(), 1.25);
    EXPECT_EQ(i, 10);
    EXPECT_EQ(plain, 0.5);
}

std::vector<std::string> traces;

TEST_F(ExchangeOfFields, TellsTheTraceOfControlsThatTheTemplateLacks) {
    fill();
    traces.clear();
    CTvTrace::SetCurrentTraceCategoryEnabled(4);
    toolbox::setTraceSink([](unsigned long, const char* text) { traces.emplace_back(text); });
    int number = 7, choice = 1;
    CString text = "kept";
    const auto exchange = [&](TvExchange& all) {
        EXPECT_EQ(all.number(IDC_NONE, number), 0);
        EXPECT_EQ(all.radio(IDC_THIRD, IDC_THIRD + 4, number), 0);  // a combo box is no button
        EXPECT_EQ(all.radio({IDC_FIRST, IDC_NONE}, number), 0);
        EXPECT_EQ(all.choice(IDC_SEVERAL, choice), 0);
        EXPECT_EQ(all.choice(IDC_TEXT, choice), 0);
        EXPECT_EQ(all.text(IDC_TEXT, text, 0), 1);
    };
    EXPECT_EQ(fields->fill(exchange), 1);
    EXPECT_EQ(traces.size(), 5u);
    type(IDC_TEXT, "new");
    EXPECT_EQ(fields->read(exchange), 1);
    toolbox::setTraceSink(nullptr);
    CTvTrace::SetCurrentTraceCategoryEnabled(0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(choice, 1);
    EXPECT_EQ(text, "new");
    EXPECT_NE(traces.at(0).find("199"), std::string::npos) << traces.at(0);
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

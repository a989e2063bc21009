// The fields of each type: what their controls show, and what an entry means.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/trimmed.h"
#include "dialog/exchange/exchange_state.h"
#include "dialog/exchange/field_text.h"
#include "toolbox/numbers.h"

using namespace toolbox::dialog;

namespace {

/// A field whose control shows a text.
template <class Value>
FieldKind<Value> textKind(HWND control) {
    FieldKind<Value> kind;
    kind.entry = [control] { return entryOf(control); };
    return kind;
}

int numberIn(const std::string& entry) {
    int number = 0;
    std::from_chars(entry.data(), entry.data() + entry.size(), number);
    return number;
}

/// A field whose control shows one of several: the entry is its number.
FieldKind<int> indexKind(std::function<int()> chosen, std::function<void(int)> choose, int& value) {
    FieldKind<int> kind;
    kind.entry = [chosen = std::move(chosen)] { return std::to_string(chosen()); };
    kind.show = std::move(choose);
    kind.scan = [](const std::string& entry, int& entered, CString*) {
        entered = numberIn(entry);
        return true;
    };
    kind.store = [&value](int entered) { value = entered; };
    return kind;
}

template <class Text>
FieldKind<CString> limitedText(HWND control, Text& value, int limit) {
    FieldKind<CString> kind = textKind<CString>(control);
    kind.show = [=](const CString& text) {
        showEntry(control, text.str());
        limitEntry(control, limit);
    };
    kind.scan = [=](const std::string& entry, CString& entered, CString* why) {
        if (!canStore(entry, limit, hasSeveralLines(control), why)) return false;
        entered = entry;
        return true;
    };
    kind.store = [&value](const CString& text) { value = text; };
    return kind;
}

/// A number by the rule of a typed one; `store` gets it.
template <class T, class Store>
FieldKind<T> numberKind(HWND control, const TvNumber<T>& rule, Store store) {
    FieldKind<T> kind = textKind<T>(control);
    kind.show = [control, rule](const T& number) {
        showEntry(control, std::string(toolbox::base::trimmed(rule.print(number).view())));
    };
    kind.scan = [rule](const std::string& entry, T& number, CString* why) {
        return rule.scan(CString(withoutUnits(entry, rule.units().view())), number, why);
    };
    kind.check = [rule](const T& number, CString* why) {
        return rule.isValid(why, &number, nullptr);
    };
    kind.store = store;
    return kind;
}

}  // namespace

int TvExchange::text(int id, TvString& value) {
    return State::with(state_, id, [&](State& state, HWND control) {
        FieldKind<CString> kind = limitedText(control, value, value.maxLength());
        kind.scan = [&, control](const std::string& entry, CString& entered, CString* why) {
            const CString text(entry);
            if (!canStore(entry, 0, hasSeveralLines(control), why)) return false;
            if (!value.isValid(why, &text, nullptr)) return false;
            entered = text;
            return true;
        };
        kind.check = [&](const CString& text, CString* why) {
            return value.isValid(why, &text, nullptr);
        };
        return state.exchange(id, value.value(), kind);
    });
}

int TvExchange::text(int id, CString& value, int limit) {
    return State::with(state_, id, [&](State& state, HWND control) {
        return state.exchange(id, value, limitedText(control, value, limit));
    });
}

int TvExchange::text(int id, RWCString& value, int limit) {
    return State::with(state_, id, [&](State& state, HWND control) {
        return state.exchange(id, CString(value), limitedText(control, value, limit));
    });
}

template <class T>
int TvExchange::typedNumber(int id, TvNumber<T>& value) {
    return State::with(state_, id, [&](State& state, HWND control) {
        const auto store = [&value](T number) { value = number; };
        return state.exchange(id, value.value(), numberKind(control, value, store));
    });
}

int TvExchange::number(int id, TvShort& value) {
    return typedNumber(id, value);
}
int TvExchange::number(int id, TvUShort& value) {
    return typedNumber(id, value);
}
int TvExchange::number(int id, TvLong& value) {
    return typedNumber(id, value);
}
int TvExchange::number(int id, TvULong& value) {
    return typedNumber(id, value);
}
int TvExchange::number(int id, TvFloat& value) {
    return typedNumber(id, value);
}
int TvExchange::number(int id, TvDouble& value) {
    return typedNumber(id, value);
}

int TvExchange::number(int id, int& value) {
    return number(id, value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

int TvExchange::number(int id, int& value, int minimum, int maximum) {
    return State::with(state_, id, [&](State& state, HWND control) {
        TvLong rule;
        rule.setLimits(minimum, maximum);
        const auto store = [&value](long number) { value = static_cast<int>(number); };
        return state.exchange(id, long{value}, numberKind(control, rule, store));
    });
}

int TvExchange::number(int id, double& value, int decimals) {
    constexpr double kAny = std::numeric_limits<double>::infinity();
    return number(id, value, -kAny, kAny, decimals);
}

int TvExchange::number(int id, double& value, double minimum, double maximum, int decimals) {
    return State::with(state_, id, [&](State& state, HWND control) {
        TvDouble rule;
        if (std::isfinite(minimum) || std::isfinite(maximum)) rule.setLimits(minimum, maximum);
        constexpr int kWidth = 40;
        if (decimals >= 0) rule.setFormat(kWidth, std::min(decimals, kWidth - 1));
        const auto store = [&value](double number) { value = number; };
        return state.exchange(id, value, numberKind(control, rule, store));
    });
}

int TvExchange::check(int id, int& value) {
    return State::with(state_, id, [&](State& state, HWND control) {
        if (!isButton(control)) return state.tellUnfit(id);
        const auto chosen = [control] {
            return static_cast<int>(SendMessageA(control, BM_GETCHECK, 0, 0));
        };
        const auto choose = [control](int checked) {
            SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(checked), 0);
        };
        return state.exchange(id, value, indexKind(chosen, choose, value));
    });
}

int TvExchange::check(int id, bool& value) {
    return State::with(state_, id, [&](State& state, HWND control) {
        if (!isButton(control)) return state.tellUnfit(id);
        FieldKind<bool> kind;
        kind.entry = [control] {
            const bool checked = SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
            return std::string(checked ? "1" : "0");
        };
        kind.show = [control](bool checked) {
            SendMessageA(control, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
        };
        kind.scan = [](const std::string& entry, bool& entered, CString*) {
            entered = entry == "1";
            return true;
        };
        kind.store = [&value](bool checked) { value = checked; };
        return state.exchange(id, value, kind);
    });
}

int TvExchange::radio(int firstId, int lastId, int& value) {
    std::vector<int> ids;
    for (int id = firstId; id <= lastId; ++id) ids.push_back(id);
    return radioGroup(ids, value);
}

int TvExchange::radio(std::initializer_list<int> ids, int& value) {
    return radioGroup(ids, value);
}

int TvExchange::radioGroup(const std::vector<int>& ids, int& value) {
    const std::shared_ptr<State> state = state_;
    std::vector<HWND> buttons;
    for (const int id : ids) {
        const HWND button = state->controlOf(id);
        if (!button) return 0;
        if (!isRadioButton(button)) return State::tellUnfit(id);
        buttons.push_back(button);
    }
    if (buttons.empty()) return 0;
    const auto chosen = [buttons] { return chosenOf(buttons); };
    const auto choose = [buttons](int number) { chooseOf(buttons, number); };
    return state->exchange(ids.front(), value, indexKind(chosen, choose, value));
}

int TvExchange::choice(int id, int& index) {
    return State::with(state_, id, [&](State& state, HWND control) {
        const ChoiceControl list(control);
        if (!list.isChoice()) return state.tellUnfit(id);
        const auto chosen = [list] { return list.index(); };
        const auto choose = [list](int number) { list.choose(number); };
        return state.exchange(id, index, indexKind(chosen, choose, index));
    });
}

int TvExchange::choice(int id, CString& value, int limit) {
    return State::with(state_, id, [&](State& state, HWND control) {
        const ChoiceControl list(control);
        if (!list.isChoice() || !list.hasTexts()) return state.tellUnfit(id);
        FieldKind<CString> kind = limitedText(control, value, list.hasEditField() ? limit : 0);
        kind.entry = [list] { return list.text(); };
        kind.show = [=](const CString& text) {
            list.chooseText(text.str());
            if (list.hasEditField()) limitEntry(control, limit);
        };
        return state.exchange(id, value, kind);
    });
}

int TvExchange::date(int id, TarvDate& value, bool mayBeEmpty) {
    return State::with(state_, id, [&](State& state, HWND control) {
        FieldKind<TarvDate> kind = textKind<TarvDate>(control);
        kind.show = [control](const TarvDate& date) { showEntry(control, dateText(date).str()); };
        if (isDatePicker(control)) {
            kind.entry = [control] { return sortedDateText(pickedDate(control)).str(); };
            kind.show = [control](const TarvDate& date) { pickDate(control, date); };
        }
        kind.scan = [=](const std::string& entry, TarvDate& entered, CString* why) {
            return scanDate(entry, mayBeEmpty, entered, why);
        };
        kind.check = [=](const TarvDate& date, CString* why) {
            TarvDate same = date;
            return date.isValid() || scanDate({}, mayBeEmpty, same, why);
        };
        kind.store = [&value](const TarvDate& date) { value = date; };
        return state.exchange(id, value, kind);
    });
}

int TvExchange::value(int id, FormatedValue& value, const CString& units) {
    return State::with(state_, id, [&](State& state, HWND control) {
        FieldKind<KeptValue> kind = textKind<KeptValue>(control);
        kind.show = [&, control](const KeptValue&) {
            showEntry(control, valueText(value, units).str());
            limitEntry(control, valueLimit(value));
        };
        kind.scan = [&](const std::string& entry, KeptValue& entered, CString* why) {
            const KeptValue before(value);
            if (!scanValue(entry, units, value, why)) return false;
            entered = KeptValue(value);
            before.restore(value);
            return true;
        };
        kind.store = [&](const KeptValue& kept) { kept.restore(value); };
        return state.exchange(id, KeptValue(value), kind);
    });
}

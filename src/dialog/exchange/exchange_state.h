// What an exchange holds, and how one field goes through it whatever its kind: filled, compared
// with what it was filled with, read, or at fault. Kept alive by the operations that use it, since
// any message to a control may end in the application, which may delete the exchange.
#pragma once

#include <any>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "dialog/exchange/balloon.h"
#include "dialog/exchange/field_controls.h"
#include "toolbox/exchange.h"

namespace toolbox::dialog {

/// A kind of field, for one control and one variable.
template <class Value>
struct FieldKind {
    /// What the control shows, as text.
    std::function<std::string()> entry;
    /// Shows a value.
    std::function<void(const Value&)> show;
    /// Reads an entry; false and a reason when it is none.
    std::function<bool(const std::string& entry, Value& value, CString* why)> scan;
    /// Checks a value that the user did not touch; empty: every one is right.
    std::function<bool(const Value&, CString* why)> check;
    /// Gives the variable a value.
    std::function<void(const Value&)> store;
};

}  // namespace toolbox::dialog

struct TvExchange::State {
    enum class Pass { none, filling, reading };

    explicit State(HWND window) : dialog(window) {}

    /// The control of a field that is to be filled or read; null when there is none, which is told,
    /// or nothing to do.
    [[nodiscard]] HWND controlOf(int id);
    /// Tells that the control cannot hold such a value. 0.
    static int tellUnfit(int id);
    /// Calls `use` with the control, if there is one, while `state` cannot go.
    template <class Use>
    static int with(std::shared_ptr<State> state, int id, const Use& use) {
        const HWND control = state->controlOf(id);
        return control ? use(*state, control) : 0;
    }

    /// Fills or reads a field whose variable has `current`; 1 when that was done.
    template <class Value>
    int exchange(int id, const Value& current, const toolbox::dialog::FieldKind<Value>& kind);

    void begin(Pass next);
    /// The user is led to the fault, if there is one. False when there is, or the dialog went.
    bool endReading();
    void noteFault(int id, const CString& text);
    void showFault();
    void takeBack();
    [[nodiscard]] bool isAlive() const { return !isGone && IsWindow(dialog); }

    struct Filled {
        std::function<std::string()> entry;
        std::string shown;  // the entry after filling
        std::any value;
    };
    /// The field was filled and shows the same as then.
    [[nodiscard]] static bool isUntouched(const Filled& field) {
        return field.entry() == field.shown;
    }

    HWND dialog;
    bool isGone = false;  // the exchange was deleted
    Pass pass = Pass::none;
    std::map<int, Filled> filled;
    std::vector<std::function<void()>> undo;  // gives the variables back what they had
    int faultId = 0;
    CString faultWhy;
    toolbox::dialog::Balloon balloon;

  private:
    template <class Value>
    int fill(int id, const Value& current, const toolbox::dialog::FieldKind<Value>& kind);
    template <class Value>
    bool enter(int id, Value& value, const toolbox::dialog::FieldKind<Value>& kind, CString* why);
};

template <class Value>
int TvExchange::State::exchange(int id, const Value& current,
                                const toolbox::dialog::FieldKind<Value>& kind) {
    if (pass == Pass::filling) return fill(id, current, kind);
    Value value = current;
    CString why;
    if (!enter(id, value, kind, &why)) {
        if (isAlive()) noteFault(id, why);
        return 0;
    }
    if (!isAlive()) return 0;
    undo.push_back([store = kind.store, current] { store(current); });
    kind.store(value);
    return 1;
}

template <class Value>
int TvExchange::State::fill(int id, const Value& current,
                            const toolbox::dialog::FieldKind<Value>& kind) {
    kind.show(current);
    if (!isAlive()) return 0;
    filled[id] = {kind.entry, kind.entry(), current};
    return isAlive();
}

template <class Value>
bool TvExchange::State::enter(int id, Value& value, const toolbox::dialog::FieldKind<Value>& kind,
                              CString* why) {
    const std::string entry = kind.entry();
    const auto found = filled.find(id);
    const Value* const given =
        found == filled.end() ? nullptr : std::any_cast<Value>(&found->second.value);
    if (given && entry == found->second.shown) {
        value = *given;
        return !kind.check || kind.check(value, why);
    }
    if (kind.scan(entry, value, why)) return true;
    // The user cannot change it: what stands in a field that is switched off does not count.
    if (!given || toolbox::dialog::takesInput(GetDlgItem(dialog, id))) return false;
    value = *given;
    return true;
}

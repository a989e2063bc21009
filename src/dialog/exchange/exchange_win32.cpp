// The exchange as a whole: filling, reading, and leading the user to a fault.
#include "dialog/exchange/exchange_state.h"
#include "toolbox/controls.h"
#include "toolbox/diagnostics.h"

using toolbox::dialog::takesInput;

namespace {

void tell(const char* what, int id) {
    constexpr unsigned long kEveryCategory = 0xFFFFFFFF;
    CTvTrace::Trace(kEveryCategory, "exchange: %s %d", what, id);
}

/// The message service's parent for as long as it lives.
class ParentOf {
  public:
    explicit ParentOf(HWND dialog) : before_(GMSG::getParent()) { GMSG::setParent(dialog); }
    ~ParentOf() { GMSG::setParent(before_); }
    ParentOf(const ParentOf&) = delete;
    ParentOf& operator=(const ParentOf&) = delete;

  private:
    HWND before_;
};

}  // namespace

HWND TvExchange::State::controlOf(int id) {
    if (pass == Pass::none || faultId || !isAlive()) return nullptr;
    const HWND control = GetDlgItem(dialog, id);
    if (!control) tell("the template has no control", id);
    return control;
}

int TvExchange::State::tellUnfit(int id) {
    tell("no such value for control", id);
    return 0;
}

void TvExchange::State::begin(Pass next) {
    pass = next;
    undo.clear();
    faultId = 0;
    faultWhy = CString();
    balloon.hide();
}

void TvExchange::State::noteFault(int id, const CString& text) {
    takeBack();
    faultId = id;
    faultWhy = text;
}

void TvExchange::State::takeBack() {
    const auto steps = std::exchange(undo, {});
    if (isGone) return;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) (*step)();
}

bool TvExchange::State::endReading() {
    pass = Pass::none;
    if (!isAlive()) {
        takeBack();
        return false;
    }
    if (!faultId) return true;
    showFault();
    return false;
}

void TvExchange::State::showFault() {
    if (!(GetWindowLongPtrA(dialog, GWL_STYLE) & WS_VISIBLE)) return;
    const HWND control = GetDlgItem(dialog, faultId);
    const CString why = faultWhy;
    if (!control || !takesInput(control)) {
        const ParentOf parent(dialog);
        GMSG::errorMsg("%s", MB_ICONEXCLAMATION, why);
        return;
    }
    // By the dialog manager, which keeps the default button right.
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    if (!isAlive() || !IsWindow(control)) return;
    toolbox::dialog::selectEntry(control);
    if (!isAlive()) return;
    if (TvEdit* const edit = TvEdit::find(control)) edit->setFault(why);
    if (isAlive() && IsWindow(control)) balloon.show(control, why);
}

TvExchange::TvExchange(HWND dialog) : state_(std::make_shared<State>(dialog)) {}

TvExchange::~TvExchange() {
    state_->isGone = true;
    state_->balloon.hide();
}

/// Ends a pass that an exception leaves, too: nothing is stored then.
class TvExchange::Run {
  public:
    Run(State& state, State::Pass pass) : state_(state) { state_.begin(pass); }
    ~Run() {
        if (state_.pass == State::Pass::none) return;
        state_.pass = State::Pass::none;
        state_.takeBack();
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// No exception came.
    void ended() { state_.pass = State::Pass::none; }

  private:
    State& state_;
};

int TvExchange::fill(const Fields& fields) {
    const std::shared_ptr<State> state = state_;
    if (state->pass != State::Pass::none || !state->isAlive()) return 0;
    Run run(*state, State::Pass::filling);
    fields(*this);
    run.ended();
    return state->isAlive();
}

int TvExchange::read(const Fields& fields) {
    const std::shared_ptr<State> state = state_;
    if (state->pass != State::Pass::none || !state->isAlive()) return 0;
    Run run(*state, State::Pass::reading);
    fields(*this);
    run.ended();
    return state->endReading();
}

int TvExchange::verify(const Fields& fields) {
    const std::shared_ptr<State> state = state_;
    if (!read(fields)) return 0;
    state->takeBack();
    return state->isAlive();
}

void TvExchange::takeBack() {
    const std::shared_ptr<State> state = state_;
    if (state->pass == State::Pass::none) state->takeBack();
}

int TvExchange::fail(int id, const CString& text) {
    const std::shared_ptr<State> state = state_;
    if (state->pass == State::Pass::filling || !state->isAlive()) return 0;
    if (state->pass == State::Pass::reading && state->faultId) return 0;
    state->noteFault(id, text);
    if (state->pass == State::Pass::none) state->showFault();
    return 0;
}

bool TvExchange::isReading() const {
    return state_->pass == State::Pass::reading;
}

int TvExchange::isTouched(int id) const {
    const std::shared_ptr<State> state = state_;
    const auto found = state->filled.find(id);
    if (state->pass == State::Pass::filling) return 0;
    return found != state->filled.end() && state->isAlive() && !State::isUntouched(found->second);
}

int TvExchange::isTouched() const {
    const std::shared_ptr<State> state = state_;
    // A control tells of a change before it is known as what fills the field.
    if (!state->isAlive() || state->pass == State::Pass::filling) return 0;
    for (const auto& [id, field] : state->filled)
        if (!State::isUntouched(field)) return 1;
    return 0;
}

int TvExchange::faultControl() const {
    return state_->faultId;
}

CString TvExchange::faultText() const {
    return state_->faultWhy;
}

void TvExchange::showFault() {
    const std::shared_ptr<State> state = state_;
    if (state->faultId && state->isAlive()) state->showFault();
}

void TvExchange::hideFault() {
    state_->balloon.hide();
}

HWND TvExchange::balloon() const {
    return state_->balloon.window();
}

HWND TvExchange::getHWND() const {
    return state_->isAlive() ? state_->dialog : nullptr;
}

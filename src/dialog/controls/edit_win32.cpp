// An edit field: its rule, its mark, its number.
#include <algorithm>

#include "base/trimmed.h"
#include "dialog/controls/edit_state_win32.h"
#include "toolbox/text.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

constexpr int kLongestNumber = 255;

/// Asks a window for the object attached to it.
UINT findMessage() {
    static const UINT message = RegisterWindowMessageA("toolbox.TvEdit");
    return message;
}

}  // namespace

TvEdit::TvEdit() : state_(std::make_unique<State>()) {}

TvEdit::~TvEdit() {
    detach();
}

int TvEdit::accepts(const char* className) const {
    return lstrcmpiA(className, "Edit") == 0;
}

TvEdit* TvEdit::find(HWND control) {
    if (!isOwn(control)) return nullptr;
    return reinterpret_cast<TvEdit*>(SendMessageA(control, findMessage(), 0, 0));
}

void TvEdit::attached() {
    State& state = *state_;
    state.limitBefore = pass(EM_GETLIMITTEXT, 0, 0);
    state.marginBefore = HIWORD(pass(EM_GETMARGINS, 0, 0));
    if (!state.cue.empty()) setCue(CString(state.cue));
    limit();
    layOut();
    state.reason.attach(getHWND());
    state.reason.add(getHWND(), TvTip([this] { return state_->fault; }));
}

void TvEdit::detaching() {
    State& state = *state_;
    KillTimer(getHWND(), state.timer());
    KillTimer(getHWND(), state.noteTimer());
    state.note.hide();
    state.reason.detach();
    state.fault = CString();
    if (!state.drawsCue && !state.cue.empty())  // the system has it
        pass(EM_SETCUEBANNER, FALSE, reinterpret_cast<LPARAM>(L""));
    if (state.longest) pass(EM_LIMITTEXT, static_cast<WPARAM>(state.limitBefore), 0);
    pass(EM_SETMARGINS, EC_RIGHTMARGIN, MAKELPARAM(0, state.marginBefore));
    InvalidateRect(getHWND(), nullptr, TRUE);
}

/// Lets the user type as much as the rule allows, never more than before it.
void TvEdit::limit() {
    const State& state = *state_;
    if (!getHWND()) return;
    const auto before = static_cast<WPARAM>(state.limitBefore);
    const auto longest = static_cast<WPARAM>(state.longest);
    pass(EM_LIMITTEXT, longest > 0 && longest < before ? longest : before, 0);
}

void TvEdit::setRule(const TvString& rule) {
    removeRule();
    State& state = *state_;
    state.rule = EditRule::ofText(rule);
    state.check = [rule](const CString& text, CString* why) {
        return rule.isValid(why, &text, nullptr);
    };
    state.longest = std::max(rule.maxLength(), 0);
    limit();
}

void TvEdit::setNumber(const toolbox::EditNumber& rule, double step) {
    removeRule();
    State& state = *state_;
    state.rule = EditRule::ofNumber(rule.allows, rule.allowsInFormula);
    state.check = rule.check;
    state.move = rule.move;
    state.stepSize = step;
    state.longest = kLongestNumber;
    limit();
}

void TvEdit::removeRule() {
    State& state = *state_;
    state.rule = EditRule();
    state.check = nullptr;
    state.move = nullptr;
    state.longest = 0;
    limit();
    setFault(CString());
}

void TvEdit::setUnits(const CString& units) {
    state_->units = units;
    layOut();
}

const CString& TvEdit::getUnits() const {
    return state_->units;
}

void TvEdit::setCue(const CString& cue) {
    State& state = *state_;
    state.cue = cue;
    if (!getHWND()) return;
    const std::wstring wide = wideOf(cue.view());
    state.drawsCue = !pass(EM_SETCUEBANNER, FALSE, reinterpret_cast<LPARAM>(wide.c_str()));
    InvalidateRect(getHWND(), nullptr, TRUE);
}

void TvEdit::setFault(const CString& why) {
    State& state = *state_;
    ++state.faults;
    if (getHWND()) KillTimer(getHWND(), state.timer());
    if (why == state.fault) return;
    const bool wasMarked = !state.fault.empty();
    state.fault = why;
    state.reason.update();
    if (wasMarked == why.empty()) layOut();
}

const CString& TvEdit::getFault() const {
    return state_->fault;
}

void TvEdit::setPause(unsigned int milliseconds) {
    state_->pause = milliseconds;
}

int TvEdit::check() {
    const auto rule = state_->check;  // which may replace itself
    if (!getHWND() || !rule) return 1;
    const Watch self(life_);
    CString why;
    const bool isRight = rule(CString(windowText(getHWND())), &why);
    if (!self.gone()) setFault(isRight ? CString() : why);
    return isRight;
}

int TvEdit::step(int steps) {
    const auto move = state_->move;
    if (!getHWND() || !move || (GetWindowLongA(getHWND(), GWL_STYLE) & ES_READONLY)) return 0;
    const Watch self(life_);
    CString text(windowText(getHWND()));
    if (!move(text, steps, state_->stepSize) || self.gone() || !getHWND()) return 0;
    // As an edit of the user, who may take it back.
    pass(EM_SETSEL, 0, -1);
    insert(toolbox::base::trimmed(text.view()));
    if (!self.gone() && getHWND()) pass(EM_SETSEL, 0, -1);
    return 1;
}

LRESULT TvEdit::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == findMessage()) return reinterpret_cast<LRESULT>(this);
    switch (message) {
        case WM_TIMER:
            if (wParam == state_->noteTimer()) {
                KillTimer(getHWND(), wParam);
                state_->note.hide();
                return 0;
            }
            if (wParam != state_->timer()) break;
            KillTimer(getHWND(), wParam);
            if (GetWindowTextLengthA(getHWND()) > 0) check();
            return 0;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            return painted(message, wParam, lParam);
        case WM_SIZE:
        case WM_SETFONT:
        case WM_ENABLE:
        case EM_SETREADONLY: {
            const Watch self(life_);
            const LRESULT result = pass(message, wParam, lParam);
            if (!self.gone()) layOut();
            return result;
        }
        case WM_SETFOCUS:
        case WM_KILLFOCUS: {
            const Watch self(life_);
            if (message == WM_KILLFOCUS) state_->note.hide();
            const LRESULT result = pass(message, wParam, lParam);
            if (!self.gone() && state_->drawsCue && !state_->cue.empty())
                InvalidateRect(getHWND(), nullptr, TRUE);
            return result;
        }
        default:
            break;
    }
    return input(message, wParam, lParam);
}

// Tips for what lies in one window. The window is asked to set the cursor wherever the pointer is
// over it or over something inside, which is told to nobody else when that is disabled: from there
// on a timer looks where the pointer is until it has left. So nothing but the one window is
// subclassed.
#include "dialog/controls/control_texts.h"
#include "dialog/controls/tip_window_win32.h"
#include "text/text_resources.h"
#include "toolbox/controls.h"

using toolbox::detail::Watch;

namespace {

constexpr UINT kLook = 50;                 // ms between two looks at the pointer
constexpr ULONGLONG kShortestShow = 5000;  // ms
constexpr ULONGLONG kShowPerCharacter = 70;

}  // namespace

/// What has a tip: a control or an area.
struct TvToolTip::Tipped {
    HWND control = nullptr;
    int area = 0;
    RECT place{};
    TvTip tip;

    [[nodiscard]] bool is(const Tipped& other) const {
        return control == other.control && area == other.area;
    }
};

namespace {

bool isClick(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

/// Whether the pointer, over window `at`, is over this control. What is disabled is found as the
/// window that it lies in, or as itself.
bool isOver(HWND control, HWND at, POINT pointer) {
    if (at == control || IsChild(control, at)) return true;
    RECT place{};
    return !IsWindowEnabled(control) && IsWindowVisible(control) && IsChild(at, control) &&
           GetWindowRect(control, &place) && PtInRect(&place, pointer);
}

/// The pointer with what hangs below its tip.
RECT aroundPointer(POINT pointer) {
    const int height = GetSystemMetrics(SM_CYCURSOR) * 2 / 3;
    return {pointer.x, pointer.y, pointer.x, pointer.y + height};
}

}  // namespace

CString TvTip::text() const {
    if (const auto ask = ask_) return (*ask)();  // the tip may go while it is asked
    return resource_ != 0 ? CString(toolbox::text::loadText(resource_)) : text_;
}

struct TvToolTip::State {
    enum class Phase { none, resting, shown, over };  // over: until the pointer leaves

    [[nodiscard]] UINT_PTR timer() const { return reinterpret_cast<UINT_PTR>(this); }
    [[nodiscard]] const Tipped* at(HWND window) const;
    int put(Tipped added);
    int take(const Tipped& removed);
    void show(HWND window, const CString& text);
    void endHint();

    std::vector<Tipped> all;
    toolbox::controls::TipWindow tip;
    HWND bar = nullptr;
    bool hasHint = false;
    UINT delay = GetDoubleClickTime();
    Phase phase = Phase::none;
    Tipped current;
    ULONGLONG since = 0;  // the pointer rests or the tip is shown
    ULONGLONG wait = 0;   // for how long
    bool looks = false;   // the timer runs
};

/// What the pointer is over; null for nothing.
const TvToolTip::Tipped* TvToolTip::State::at(HWND window) const {
    if (!IsWindowEnabled(GetAncestor(window, GA_ROOT))) return nullptr;  // a dialog is over it
    POINT pointer{};
    GetCursorPos(&pointer);
    const HWND under = WindowFromPoint(pointer);
    if (!under || (under != window && !IsChild(window, under))) return nullptr;
    for (const Tipped& each : all)
        if (each.control && isOver(each.control, under, pointer)) return &each;
    ScreenToClient(window, &pointer);
    for (auto each = all.rbegin(); each != all.rend(); ++each)
        if (!each->control && PtInRect(&each->place, pointer)) return &*each;
    return nullptr;
}

int TvToolTip::State::put(Tipped added) {
    take(added);
    all.push_back(std::move(added));
    return 1;
}

int TvToolTip::State::take(const Tipped& removed) {
    return std::erase_if(all, [&](const Tipped& each) { return each.is(removed); }) > 0;
}

void TvToolTip::State::show(HWND window, const CString& text) {
    phase = Phase::over;
    if (text.empty()) return;
    POINT pointer{};
    GetCursorPos(&pointer);
    if (!tip.show(window, text, aroundPointer(pointer))) return;
    phase = Phase::shown;
    since = GetTickCount64();
    wait = std::max<ULONGLONG>(kShortestShow, kShowPerCharacter * text.length());
}

void TvToolTip::State::endHint() {
    if (hasHint) TvStatusBar::showHintIn(bar, CString());
    hasHint = false;
}

TvToolTip::TvToolTip() : state_(std::make_unique<State>()) {}

TvToolTip::~TvToolTip() {
    detach();
}

int TvToolTip::add(HWND control, const TvTip& tip) {
    if (!getHWND() || !control || (control != getHWND() && !IsChild(getHWND(), control))) return 0;
    return state_->put({control, 0, {}, tip});
}

int TvToolTip::add(int controlId, const TvTip& tip) {
    return add(GetDlgItem(getHWND(), controlId), tip);
}

int TvToolTip::addArea(int area, const RECT& place, const TvTip& tip) {
    return getHWND() ? state_->put({nullptr, area, place, tip}) : 0;
}

int TvToolTip::remove(HWND control) {
    return control ? state_->take({control, 0, {}, {}}) : 0;
}

int TvToolTip::removeArea(int area) {
    return state_->take({nullptr, area, {}, {}});
}

void TvToolTip::setStatusBar(HWND bar) {
    state_->endHint();
    state_->bar = bar;
}

void TvToolTip::setDelay(unsigned int milliseconds) {
    state_->delay = milliseconds;
}

void TvToolTip::hide() {
    state_->tip.hide();
    if (state_->phase != State::Phase::none) state_->phase = State::Phase::over;
}

HWND TvToolTip::getTipWindow() const {
    return state_->tip.window();
}

void TvToolTip::detaching() {
    if (state_->looks) KillTimer(getHWND(), state_->timer());
    state_->looks = false;
    state_->phase = State::Phase::none;
    state_->tip.hide();
    state_->all.clear();
    state_->endHint();
}

LRESULT TvToolTip::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    State& state = *state_;
    switch (message) {
        case WM_TIMER:
            if (wParam != state.timer()) break;
            look();
            return 0;
        case WM_SETCURSOR:
            if (isClick(HIWORD(lParam))) hide();
            [[fallthrough]];
        case WM_MOUSEMOVE:
            if (!state.looks && !state.all.empty())
                state.looks = SetTimer(getHWND(), state.timer(), kLook, nullptr) != 0;
            break;
        default:
            break;
    }
    return pass(message, wParam, lParam);
}

void TvToolTip::update() {
    state_->tip.hide();
    state_->phase = State::Phase::none;
}

/// Looks where the pointer is and how long it has been there.
void TvToolTip::look() {
    State& state = *state_;
    const Tipped* const found = state.at(getHWND());
    const bool isSame = found && state.phase != State::Phase::none && found->is(state.current);
    if (!isSame) {
        moveTo(found);
        return;
    }
    if (GetTickCount64() - state.since < state.wait) return;
    if (state.phase == State::Phase::shown) hide();
    if (state.phase == State::Phase::resting) rested();
}

/// The pointer is over something else; null for nothing. A hint is shown at once.
void TvToolTip::moveTo(const Tipped* found) {
    State& state = *state_;
    const bool wasShown = state.tip.isShown();
    state.tip.hide();
    state.endHint();
    state.phase = State::Phase::none;
    if (!found) {
        KillTimer(getHWND(), state.timer());
        state.looks = false;
        return;
    }
    state.phase = State::Phase::resting;
    state.current = *found;
    state.since = GetTickCount64();
    state.wait = wasShown ? state.delay / 5 : state.delay;
    if (!state.bar) return;
    const Watch self(life_);
    const CString text = TvTip(state.current.tip).text();
    if (self.gone() || state.phase != State::Phase::resting) return;
    const std::string hint = toolbox::controls::tipParts(text.view()).hint;
    if (hint.empty()) return;
    state.hasHint = true;
    TvStatusBar::showHintIn(state.bar, CString(hint));
}

void TvToolTip::rested() {
    State& state = *state_;
    state.phase = State::Phase::over;
    const HWND control = state.current.control;
    const TvEdit* const field = control != getHWND() ? TvEdit::find(control) : nullptr;
    if (field && !field->getFault().empty()) return;  // which shows that itself
    const Watch self(life_);
    const CString text = TvTip(state.current.tip).text();
    if (!self.gone() && state.phase == State::Phase::over && getHWND())
        state.show(getHWND(), CString(toolbox::controls::tipParts(text.view()).tip));
}

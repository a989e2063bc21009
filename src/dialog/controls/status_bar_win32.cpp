// The strip at the bottom of a frame. The hints of the frame's menus are learned from the frame's
// own messages, by a second object attached to that.
#include <algorithm>
#include <cmath>

#include "dialog/controls/control_texts.h"
#include "dialog/controls/pane_widths.h"
#include "dialog/controls/window_text_win32.h"
#include "text/text_resources.h"
#include "toolbox/controls.h"

using namespace toolbox::controls;
using toolbox::detail::Watch;

namespace {

constexpr std::size_t kMostPanes = 64;
constexpr int kWholeProgress = 1000;

/// Shows the hint that its parameter points to.
UINT hintMessage() {
    static const UINT message = RegisterWindowMessageA("toolbox.TvStatusBar.hint");
    return message;
}

std::string onOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

/// The frame, for its menus.
class Menus : public TvControl {
  public:
    explicit Menus(TvStatusBar& bar) : bar_(bar) {}
    ~Menus() override { detach(); }

    std::function<CString(UINT)> hints;

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_MENUSELECT) return pass(message, wParam, lParam);
        const Watch self(life_);
        const LRESULT result = pass(message, wParam, lParam);
        if (!self.gone()) selected(LOWORD(wParam), HIWORD(wParam));
        return result;
    }

  private:
    void selected(UINT item, UINT flags) {
        constexpr UINT kNone = MF_POPUP | MF_SYSMENU | MF_SEPARATOR;
        constexpr UINT kClosed = 0xFFFF;
        const Watch self(life_);
        CString text;
        if (flags != kClosed && !(flags & kNone)) {
            const auto ask = hints;
            text = ask ? ask(item) : CString(toolbox::text::loadText(item));
        }
        if (!self.gone()) bar_.showHint(CString(tipParts(text.view()).hint));
    }

    TvStatusBar& bar_;
};

}  // namespace

struct TvStatusBar::State {
    explicit State(TvStatusBar& bar) : menus(bar) {}

    std::vector<Pane> panes{1};
    std::vector<std::string> texts{1};
    std::string hint;
    Menus menus;
    HWND progress = nullptr;
    int progressPane = 0;
};

TvStatusBar::TvStatusBar() : state_(std::make_unique<State>(*this)) {}

TvStatusBar::~TvStatusBar() {
    detach();
}

int TvStatusBar::accepts(const char* className) const {
    return lstrcmpiA(className, STATUSCLASSNAMEA) == 0;
}

int TvStatusBar::create(HWND frame, int controlId) {
    if (getHWND() || !IsWindow(frame)) return 0;
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const HWND bar = CreateWindowExA(
        0, STATUSCLASSNAMEA, "",
        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | CCS_BOTTOM | SBARS_SIZEGRIP, 0, 0, 0, 0, frame,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)), nullptr, nullptr);
    if (attach(bar)) return 1;
    if (bar) DestroyWindow(bar);
    return 0;
}

void TvStatusBar::attached() {
    state_->menus.attach(GetParent(getHWND()));
    layOut();
}

void TvStatusBar::detaching() {
    state_->menus.detach();
    state_->hint.clear();
    endProgress();
}

int TvStatusBar::setPanes(const std::vector<Pane>& panes) {
    if (!getHWND() || panes.empty() || panes.size() > kMostPanes) return 0;
    endProgress();
    state_->panes = panes;
    state_->texts.assign(panes.size(), std::string());
    layOut();
    return 1;
}

/// Divides the bar and shows the texts in it.
void TvStatusBar::layOut() {
    State& state = *state_;
    RECT area{};
    GetClientRect(getHWND(), &area);
    int borders[3] = {};
    SendMessageA(getHWND(), SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
    std::vector<int> characters;
    for (const Pane& pane : state.panes) characters.push_back(pane.characters);
    const FontContext font(getHWND());
    const int digit = font.width("0");
    const std::vector<int> edges = paneEdges(
        characters, {area.right, digit, 2 * borders[0] + borders[2] + digit, gripWidth()});
    SendMessageA(getHWND(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    for (std::size_t i = 0; i < state.panes.size(); ++i) show(static_cast<int>(i));
    placeProgress();
}

void TvStatusBar::show(int pane) {
    const State& state = *state_;
    const auto at = static_cast<std::size_t>(pane);
    const bool isHint = pane == 0 && !state.hint.empty();
    const Alignment alignment = isHint ? AtLeft : state.panes[at].alignment;
    std::string text = std::string(static_cast<std::size_t>(alignment), '\t') +
                       (isHint ? state.hint : state.texts[at]);
    if (alignment == AtRight) text += ' ';  // off the edge
    SendMessageA(getHWND(), SB_SETTEXTA, static_cast<WPARAM>(pane),
                 reinterpret_cast<LPARAM>(text.c_str()));
}

int TvStatusBar::gripWidth() const {
    const bool hasGrip = GetWindowLongA(getHWND(), GWL_STYLE) & SBARS_SIZEGRIP;
    return hasGrip ? GetSystemMetrics(SM_CXVSCROLL) : 0;
}

bool TvStatusBar::hasPane(int pane) const {
    return getHWND() && pane >= 0 && static_cast<std::size_t>(pane) < state_->panes.size();
}

int TvStatusBar::setText(int pane, const CString& text) {
    if (!hasPane(pane)) return 0;
    std::string& kept = state_->texts[static_cast<std::size_t>(pane)];
    std::string wanted = onOneLine(text.str());
    if (wanted == kept) return 1;  // a text that is shown often does not flicker
    kept = std::move(wanted);
    show(pane);
    return 1;
}

CString TvStatusBar::getText(int pane) const {
    return hasPane(pane) ? CString(state_->texts[static_cast<std::size_t>(pane)]) : CString();
}

void TvStatusBar::showHint(const CString& hint) {
    if (!getHWND()) return;
    std::string wanted = onOneLine(hint.str());
    if (wanted == state_->hint) return;
    state_->hint = std::move(wanted);
    show(0);
}

void TvStatusBar::setHints(std::function<CString(UINT command)> hints) {
    state_->menus.hints = std::move(hints);
}

void TvStatusBar::showHintIn(HWND bar, const CString& hint) {
    if (isOwn(bar)) SendMessageA(bar, hintMessage(), 0, reinterpret_cast<LPARAM>(&hint));
}

int TvStatusBar::setProgress(int pane, double part) {
    if (!hasPane(pane)) return 0;
    State& state = *state_;
    if (!IsWindow(state.progress)) {
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
        InitCommonControlsEx(&classes);
        state.progress = CreateWindowExA(0, PROGRESS_CLASSA, "", WS_CHILD, 0, 0, 0, 0, getHWND(),
                                         nullptr, nullptr, nullptr);
        if (!state.progress) return 0;
        SendMessageA(state.progress, PBM_SETRANGE32, 0, kWholeProgress);
        state.progressPane = -1;
    }
    if (state.progressPane != pane) {
        state.progressPane = pane;
        placeProgress();
        ShowWindow(state.progress, SW_SHOWNA);
    }
    const double known = std::isnan(part) ? 0.0 : std::clamp(part, 0.0, 1.0);
    SendMessageA(state.progress, PBM_SETPOS, static_cast<WPARAM>(known * kWholeProgress), 0);
    UpdateWindow(state.progress);  // who reports progress is busy
    return 1;
}

void TvStatusBar::endProgress() {
    if (IsWindow(state_->progress)) DestroyWindow(state_->progress);
    state_->progress = nullptr;
}

void TvStatusBar::placeProgress() {
    const State& state = *state_;
    if (!IsWindow(state.progress)) return;
    RECT area{};
    SendMessageA(getHWND(), SB_GETRECT, static_cast<WPARAM>(state.progressPane),
                 reinterpret_cast<LPARAM>(&area));
    const bool isLast = state.progressPane + 1 == static_cast<int>(state.panes.size());
    if (isLast) area.right -= gripWidth();
    InflateRect(&area, -GetSystemMetrics(SM_CXEDGE), -GetSystemMetrics(SM_CYEDGE));
    MoveWindow(state.progress, area.left, area.top, std::max<int>(area.right - area.left, 0),
               std::max<int>(area.bottom - area.top, 0), TRUE);
}

LRESULT TvStatusBar::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == hintMessage()) {
        showHint(CString(*reinterpret_cast<const CString*>(lParam)));
        return 0;
    }
    if (message != WM_SIZE && message != WM_SETFONT) return pass(message, wParam, lParam);
    if (message == WM_SIZE) showGrip();
    const Watch self(life_);
    const LRESULT result = pass(message, wParam, lParam);
    if (!self.gone() && getHWND()) layOut();
    return result;
}

/// A maximized frame has no size to grip.
void TvStatusBar::showGrip() {
    const LONG style = GetWindowLongA(getHWND(), GWL_STYLE);
    const bool isMaximized = IsZoomed(GetParent(getHWND()));
    const LONG wanted = isMaximized ? style & ~SBARS_SIZEGRIP : style | SBARS_SIZEGRIP;
    if (wanted == style) return;
    SetWindowLongA(getHWND(), GWL_STYLE, wanted);
    InvalidateRect(getHWND(), nullptr, TRUE);
}

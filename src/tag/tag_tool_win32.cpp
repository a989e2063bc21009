// The tool for tags: its view, what it is told, what it paints.
#include <algorithm>
#include <utility>

#include "tag/tag_tool_state_win32.h"
#include "toolbox/messages.h"
#include "toolbox/platform.h"

using toolbox::detail::Watch;
using toolbox::tag::Handle;

TvTagTool::State::State(TvTagTool& owner, HWND shown, TvTagSet& tags, TokenizerUDManager* values)
    : tool(owner), window(shown), usualKeys(toolbox::tag::keysOfAll(values)) {
    listenTo(&tags);
}

TvTagTool::TvTagTool(HWND window, TvTagSet& tags, TokenizerUDManager* keys)
    : state_(std::make_unique<State>(*this, window, tags, keys)) {}

TvTagTool::~TvTagTool() {
    state_->cancelGesture();
}

void TvTagTool::setView(const TransMatrix2D& toPage, const TransMatrix2D& toWindow) {
    State& state = *state_;
    if (toPage == state.toPage && toWindow == state.toWindow) return;
    const Watch self(state.life);
    state.cancelGesture();
    if (self.gone()) return;
    TransMatrix2D inverse;
    state.toPage = toPage;
    state.toWindow = toWindow;
    state.view = toolbox::tag::PageView(toPage);
    state.isVisible = toPage.inverse(inverse) && toWindow.inverse(state.fromWindow);
    refresh();
}

void TvTagTool::setUndo(UndoStack* stack) {
    state_->stack.listenTo(stack);
}

UndoStack* TvTagTool::getUndo() const {
    return state_->stack.stack();
}

void TvTagTool::setRubberBand(int on) {
    state_->hasRubberBand = on != 0;
}

std::shared_ptr<const TvTagLayout> TvTagTool::layout() {
    State& state = *state_;
    const Watch self(state.life);
    state.makeLayout();
    return self.gone() ? std::make_shared<const TvTagLayout>() : state.layout;
}

void TvTagTool::State::makeLayout() {
    const TvTagSet* const set = tagSet();
    if (layout && (!set || layoutOf == set->changes())) return;
    const Watch self(life);
    const std::uint64_t changes = set ? set->changes() : 0;
    const auto values = [&self, this](TvTagId id, const TvTag& tag) {
        return self.gone() ? nullptr : tool.keysOf(id, tag);
    };
    auto made = set ? std::make_shared<const TvTagLayout>(*set, toPage, TvTagKeys(values))
                    : std::make_shared<const TvTagLayout>();
    if (self.gone()) return;
    layout = std::move(made);
    layoutOf = changes;
}

void TvTagTool::refresh() {
    state_->layout.reset();
    changed();
}

void TvTagTool::State::tagsChanged() {
    const Watch self(life);
    const bool isOld = !tagSet() || layoutOf != tagSet()->changes();
    if (!tagSet()) layout.reset();
    if (isOld) cancelGesture();
    if (!self.gone()) tool.changed();
}

const TvTagOnPage* TvTagTool::State::shown(TvTagId id) {
    const Watch self(life);
    makeLayout();
    return self.gone() ? nullptr : layout->tag(id);
}

const TvTagOnPage* TvTagTool::State::alone() {
    const std::vector<TvTagId> selected = tagSet() ? tagSet()->selection() : std::vector<TvTagId>();
    const TvTagOnPage* const place = shown(selected.size() == 1 ? selected.front() : 0);
    return place;
}

int TvTagTool::State::handleSize() const {
    const HDC screen = GetDC(nullptr);
    const int size = GetDeviceCaps(screen, LOGPIXELSX) / 32;  // 3 at 96 DPI
    ReleaseDC(nullptr, screen);
    return std::max(size, 3);
}

Edit::Outcome TvTagTool::State::perform(std::unique_ptr<TvTagEdit> edit, unsigned kept) {
    const Watch self(life);
    CString why;
    if (!edit->check(&why)) {
        tool.report(why);
        return Edit::Failed;
    }
    const Edit::Outcome outcome = tool.perform(std::move(edit), kept);
    return self.gone() ? Edit::Failed : outcome;
}

TokenizerUDManager* TvTagTool::keysOf(TvTagId id, const TvTag& tag) {
    return state_->usualKeys ? state_->usualKeys(id, tag) : nullptr;
}

Edit::Outcome TvTagTool::perform(std::unique_ptr<Edit> edit, unsigned gesture) {
    UndoStack* const stack = getUndo();
    return stack ? stack->perform(std::move(edit), gesture) : edit->apply();
}

int TvTagTool::edit(TvTag& tag) {
    State& state = *state_;
    const Watch self(state.life);
    TokenizerUDManager* const keys = keysOf(state.edited, tag);
    if (self.gone()) return 0;
    TvTagDialog editor(tag, keys);
    const int confirmed = editor.run(state.window);
    if (self.gone() || !confirmed) return 0;
    tag = editor.getTag();
    return 1;
}

void TvTagTool::report(const CString& why) {
    toolbox::platform::current().prompt->messageBox(state_->window, why, GMSG::getAppTitle(),
                                                    MB_ICONEXCLAMATION | MB_TASKMODAL);
}

void TvTagTool::changed() {
    if (IsWindow(state_->window)) InvalidateRect(state_->window, nullptr, FALSE);
}

void TvTagTool::reveal(const TvTagOnPage&) {}

void TvTagTool::paint(HDC dc) {
    State& state = *state_;
    const Watch self(state.life);
    const TvTagOnPage* const one = state.alone();
    if (self.gone() || !state.tagSet()) return;
    const int saved = SaveDC(dc);
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    const HPEN frame = CreatePen(PS_DOT, 1, GetSysColor(COLOR_HIGHLIGHT));
    SelectObject(dc, frame);
    SetBkMode(dc, TRANSPARENT);
    for (const TvTagId id : state.tagSet()->selection()) {
        const TvTagOnPage* const place = state.layout->tag(id);
        if (!place) continue;
        RECT box = state.inWindow(place->box);
        InflateRect(&box, 2, 2);
        Rectangle(dc, box.left, box.top, box.right, box.bottom);
    }
    if (one) {
        const int half = state.handleSize();
        for (const Handle& handle : toolbox::tag::handlesOf(*one)) {
            const POINT at = state.inWindow(handle.at);
            const RECT square{at.x - half, at.y - half, at.x + half + 1, at.y + half + 1};
            FillRect(dc, &square, GetSysColorBrush(COLOR_HIGHLIGHT));
        }
    }
    RestoreDC(dc, saved);
    DeleteObject(frame);
    state.dragger.redraw(dc);
}

int TvTagTool::handle(TarvMess& message) {
    State& state = *state_;
    if (message.hwnd != state.window || !state.tagSet()) return 0;
    switch (message.message) {
        case WM_KEYDOWN:
        case WM_KEYUP:
            return state.key(message);
        case WM_COMMAND:
            return message.handled = command(LOWORD(message.wParam));
        case WM_INITMENUPOPUP:
            state.showStates(reinterpret_cast<HMENU>(message.wParam));
            return 0;
        default:
            return state.mouse(message);
    }
}

void TvTagTool::place(const TvTag& pattern) {
    State& state = *state_;
    const Watch self(state.life);
    state.cancelGesture();
    if (!self.gone()) state.pattern = pattern;
}

int TvTagTool::isPlacing() const {
    return state_->pattern.has_value();
}

int TvTagTool::cancel() {
    State& state = *state_;
    const Watch self(state.life);
    const bool placed = std::exchange(state.pattern, std::nullopt).has_value();
    return state.cancelGesture() || placed;
}

/// True when there was one. The tool may be gone.
bool TvTagTool::State::cancelGesture() {
    if (gesture.getState() != MouseDragger::Dragging) return false;
    TarvMess escape(window, WM_COMMAND, IDCANCEL, 0, 0);
    gesture.drag(escape, from, to);
    return true;
}

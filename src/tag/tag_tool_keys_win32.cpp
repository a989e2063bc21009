// The keys of the tool for tags.
#include <algorithm>
#include <iterator>

#include "tag/tag_tool_state_win32.h"

using toolbox::detail::Watch;

namespace {

bool isDown(int key) {
    return GetKeyState(key) < 0;
}

}  // namespace

int TvTagTool::State::key(TarvMess& message) {
    const Watch self(life);
    if (gesture.getState() == MouseDragger::Dragging) {
        if (message.wParam == VK_SHIFT) turnAxis();
        if (self.gone() || message.message == WM_KEYUP) return 0;
        if (message.wParam == VK_ESCAPE) tool.cancel();
        return message.handled = 1;  // other keys would change what is dragged
    }
    if (message.message == WM_KEYUP) return 0;
    const bool isArrow = message.wParam >= VK_LEFT && message.wParam <= VK_DOWN;
    if (!isArrow && message.wParam != VK_SHIFT) nudges = 0;
    return message.handled = editKey(message.wParam);
}

/// 1 when the key was one of the tool's.
int TvTagTool::State::editKey(WPARAM key) {
    const bool control = isDown(VK_CONTROL);
    const bool shift = isDown(VK_SHIFT);
    const bool some = !tagSet()->selection().empty();
    switch (key) {
        case VK_ESCAPE:
            if (tool.cancel()) return 1;
            if (some) tagSet()->setSelection({});
            return some;
        case VK_RETURN:
            if (some) tool.command(toolbox::TagEdit);
            return some;
        case VK_TAB:
            return !control && walk(shift);
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            return !control && nudge(key, shift);
        case VK_DELETE:
            if (some) tool.command(shift ? toolbox::TagCut : toolbox::TagDelete);
            return some;
        case VK_INSERT:
            if (control == shift) return 0;
            return tool.command(control ? toolbox::TagCopy : toolbox::TagPaste);
        default:
            break;
    }
    if (!control || shift) return 0;
    switch (key) {
        case 'A':
            return tool.command(toolbox::TagSelectAll);
        case 'C':
            return some && tool.command(toolbox::TagCopy);
        case 'V':
            return tool.command(toolbox::TagPaste);
        case 'X':
            return some && tool.command(toolbox::TagCut);
        default:
            return 0;
    }
}

/// Steps that follow each other are one for the undo stack.
bool TvTagTool::State::nudge(WPARAM key, bool coarse) {
    const std::vector<TvTagId> selected = tagSet()->selection();
    if (selected.empty()) return false;
    const double length = coarse ? 10 : 1;
    const TvPoint step{key == VK_LEFT    ? -length
                       : key == VK_RIGHT ? length
                                         : 0,
                       key == VK_UP     ? -length
                       : key == VK_DOWN ? length
                                        : 0};
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Move);
    bool some = false;
    for (const TvTagId id : selected) {
        const auto tag = tagSet()->find(id);
        if (tag->locked) continue;
        edit->change(id, toolbox::tag::moved(*tag, step, false, view));
        some = true;
    }
    if (!some || !isVisible) {
        MessageBeep(MB_OK);
        return true;
    }
    if (nudges == 0 && stack.stack()) nudges = stack.stack()->newGesture();
    perform(std::move(edit), nudges);
    return true;
}

/// To the next tag that is shown, and round; false when there is none.
bool TvTagTool::State::walk(bool back) {
    const Watch self(life);
    makeLayout();
    if (self.gone() || !tagSet()) return true;
    const auto tags = layout->tags();
    if (tags.empty()) return false;
    const std::vector<TvTagId> selected = tagSet()->selection();
    const auto at = [&](TvTagId id) {
        return std::distance(tags.begin(), std::ranges::find(tags, id, &TvTagOnPage::id));
    };
    const auto count = std::ssize(tags);
    std::ptrdiff_t next = back ? count - 1 : 0;
    if (!selected.empty()) {
        const std::ptrdiff_t now = at(back ? selected.front() : selected.back());
        if (now < count) next = (now + (back ? count - 1 : 1)) % count;
    }
    const TvTagOnPage place = tags[static_cast<std::size_t>(next)];
    tagSet()->setSelection({&place.id, 1});
    if (!self.gone()) tool.reveal(place);
    return true;
}

/// Shift was pressed or released: the figure goes to where the mouse would bring it.
void TvTagTool::State::turnAxis() {
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(window, &at);
    TarvMess move(window, WM_MOUSEMOVE, MK_LBUTTON | (isDown(VK_SHIFT) ? MK_SHIFT : 0u),
                  MAKELPARAM(at.x, at.y), 0);
    follow(move);
}

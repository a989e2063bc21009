// The commands of the menu of tags, and the clipboard.
#include <algorithm>
#include <functional>

#include "tag/tag_tool_state_win32.h"
#include "toolbox/messages.h"
#include "toolbox/platform.h"

using toolbox::detail::Watch;
using namespace toolbox;

namespace {

constexpr const char* kFormat = "Toolbox labels";  // on the clipboard
constexpr unsigned short kNotCopied = 1379;
constexpr double kPasteStep = 10;  // points from what was copied

/// What a command gives to a tag, and whether the tag has it.
struct Property {
    std::function<void(TvTag& tag, bool on)> set;
    std::function<bool(const TvTag& tag)> has;
    bool isSwitch = false;  ///< it is taken away again when all have it
};

template <class T>
Property valued(T TvTag::*field, T value) {
    return {[=](TvTag& tag, bool) { tag.*field = value; },
            [=](const TvTag& tag) { return tag.*field == value; }};
}

Property switched(bool TvTag::*field) {
    return {[=](TvTag& tag, bool on) { tag.*field = on; },
            [=](const TvTag& tag) { return tag.*field; }, true};
}

/// Without functions for what is no property.
Property propertyOf(UINT id) {
    switch (id) {
        case TagAlignLeft:
            return valued(&TvTag::align, TvAlign::left);
        case TagAlignCenter:
            return valued(&TvTag::align, TvAlign::center);
        case TagAlignRight:
            return valued(&TvTag::align, TvAlign::right);
        case TagAlignTop:
            return valued(&TvTag::level, TvLevel::top);
        case TagAlignMiddle:
            return valued(&TvTag::level, TvLevel::middle);
        case TagAlignBottom:
            return valued(&TvTag::level, TvLevel::bottom);
        case TagNoBorder:
            return valued(&TvTag::border, TvTagBorder::none);
        case TagBorder:
            return valued(&TvTag::border, TvTagBorder::frame);
        case TagRoundedBorder:
            return valued(&TvTag::border, TvTagBorder::rounded);
        case TagUnderline:
            return valued(&TvTag::border, TvTagBorder::underline);
        case TagFilled:
            return {[](TvTag& tag, bool on) { tag.fill.filled = on; },
                    [](const TvTag& tag) { return tag.fill.filled; }, true};
        case TagLeader:
            return switched(&TvTag::leader);
        case TagLocked:
            return switched(&TvTag::locked);
        default:
            return {};
    }
}

/// Lines end as other programs want them.
std::string withReturns(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\n' && !result.ends_with('\r')) result += '\r';
        result += c;
    }
    return result;
}

bool allHave(const TvTagSet& set, const Property& property) {
    const std::vector<TvTagId> ids = set.selection();
    return !ids.empty() &&
           std::ranges::all_of(ids, [&](TvTagId id) { return property.has(*set.find(id)); });
}

}  // namespace

int TvTagTool::command(UINT id) {
    if (id < TagEdit || id > TagSelectAll) return 0;
    State& state = *state_;
    if (!state.tagSet() || state.gesture.getState() == MouseDragger::Dragging) return 1;
    state.nudges = 0;
    state.run(id);
    return 1;
}

void TvTagTool::State::run(UINT id) {
    switch (id) {
        case TagEdit:
            return editOne();
        case TagDelete:
            return removeSelected(TvTagEdit::Delete);
        case TagToFront:
        case TagToBack:
            return order(id == TagToFront);
        case TagCut:
        case TagCopy:
            return copy(id == TagCut);
        case TagPaste:
            return paste();
        case TagSelectAll:
            return tagSet()->setSelection(tagSet()->ids());
        default:
            return change(id);
    }
}

UINT TvTagTool::state(UINT id) {
    const TvTagSet* const set = state_->tagSet();
    const std::size_t selected = set ? set->selection().size() : 0;
    const bool isEnabled = id == TagPaste       ? set != nullptr
                           : id == TagSelectAll ? set && set->count() > 0
                           : id == TagEdit      ? selected == 1
                                                : selected > 0;
    const Property property = propertyOf(id);
    const bool isChecked = set && property.has && allHave(*set, property);
    return static_cast<UINT>(isEnabled ? MF_ENABLED : MF_GRAYED) |
           static_cast<UINT>(isChecked ? MF_CHECKED : MF_UNCHECKED);
}

void TvTagTool::State::showStates(HMENU menu) {
    for (UINT id = TagEdit; id <= TagSelectAll; ++id) {
        const UINT shownState = tool.state(id);
        EnableMenuItem(menu, id, MF_BYCOMMAND | (shownState & MF_GRAYED));
        CheckMenuItem(menu, id, MF_BYCOMMAND | (shownState & MF_CHECKED));
    }
}

void TvTagTool::State::editOne() {
    const std::vector<TvTagId> selected = tagSet()->selection();
    if (selected.size() != 1) return;
    const Watch self(life);
    const TvTagId id = selected.front();
    TvTag tag = *tagSet()->find(id);
    edited = id;
    const int changed = tool.edit(tag);
    if (self.gone() || !changed || !tagSet()) return;
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Change);
    edit->change(id, tag);
    perform(std::move(edit));
}

void TvTagTool::State::change(UINT id) {
    const Property property = propertyOf(id);
    const std::vector<TvTagId> selected = tagSet()->selection();
    if (!property.set || selected.empty()) return;
    const bool on = !(property.isSwitch && allHave(*tagSet(), property));
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Change);
    for (const TvTagId each : selected) {
        TvTag tag = *tagSet()->find(each);
        property.set(tag, on);
        edit->change(each, tag);
    }
    perform(std::move(edit));
}

void TvTagTool::State::removeSelected(TvTagEdit::Action action) {
    const std::vector<TvTagId> selected = tagSet()->selection();
    if (selected.empty()) return;
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), action);
    for (const TvTagId id : selected) edit->remove(id);
    perform(std::move(edit));
}

void TvTagTool::State::order(bool front) {
    const std::vector<TvTagId> selected = tagSet()->selection();
    if (selected.empty()) return;
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Order);
    if (front)
        edit->bringToFront(selected);
    else
        edit->sendToBack(selected);
    perform(std::move(edit));
}

void TvTagTool::State::copy(bool cut) {
    const std::vector<TvTagId> selected = tagSet()->selection();
    if (selected.empty()) return;
    const Watch self(life);
    const std::string bytes = tagSet()->copyTags(selected);
    std::string text;
    for (const TvTagId id : selected) {
        const auto tag = tagSet() ? tagSet()->find(id) : nullptr;
        if (!tag) continue;
        if (!text.empty()) text += "\r\n";
        TokenizerUDManager* const keys = tool.keysOf(id, *tag);
        if (self.gone()) return;
        text += withReturns(tvTagText(*tag, keys));
        if (self.gone()) return;
    }
    if (platform::current().clipboard->setData(kFormat, bytes, text.c_str()) != ERROR_SUCCESS) {
        RWCString why;
        GMSG::getString(kNotCopied, why);
        return tool.report(CString(why));
    }
    pasted = cut ? std::string() : bytes;
    timesPasted = 0;
    if (cut && tagSet()) removeSelected(TvTagEdit::Cut);
}

void TvTagTool::State::paste() {
    const std::string bytes = platform::current().clipboard->data(kFormat);
    if (bytes.empty()) return pasteText();
    if (pasted != bytes) {
        pasted = bytes;
        timesPasted = -1;
    }
    const double step = kPasteStep * ++timesPasted;
    TvTagSet read;
    CString why;
    if (!read.pasteTags(bytes, view.stepInDrawing({step, step}), &why)) return tool.report(why);
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Paste);
    for (const TvTagId id : read.ids()) edit->add(*read.find(id));
    perform(std::move(edit));
}

/// A text of another program becomes a tag in the middle of the window.
void TvTagTool::State::pasteText() {
    TvTag tag;
    tag.text = platform::current().clipboard->text();
    if (tag.text.empty() || !isVisible) return;
    RECT area{};
    GetClientRect(window, &area);
    tag.anchor = view.inDrawing(onPage({area.right / 2, area.bottom / 2}));
    auto edit = std::make_unique<TvTagEdit>(*tagSet(), TvTagEdit::Paste);
    edit->add(tag);
    perform(std::move(edit));
}

// Lengths are shown in millimetres, as on the drawing's paper.
#include "tag/editor/tag_entries_win32.h"

#include <string>

#include "dialog/controls/window_text_win32.h"
#include "tag_dialog.h"
#include "toolbox/numbers.h"

namespace toolbox::tag {
namespace {

constexpr double kPointsPerMillimetre = 72 / 25.4;
constexpr int kColumns = 3;
constexpr TvLevel kRows[] = {TvLevel::top, TvLevel::middle, TvLevel::bottom};
// What a canvas takes.
constexpr double kLeastSize = 0.01;
constexpr double kGreatestSize = 10000;
constexpr double kGreatestScale = 1e9;
constexpr double kLeastWidth = 0.1;  // millimetres

int rowOf(TvLevel level) {
    return level == TvLevel::top ? 0 : level == TvLevel::bottom ? 2 : 1;
}

CString textIn(HWND dialog, int control) {
    return CString(controls::windowText(GetDlgItem(dialog, control)));
}

void lookAt(HWND dialog, int control, double& number) {
    TvDouble().scan(textIn(dialog, control), number, nullptr);
}

void lookAt(HWND dialog, int control, bool& checked) {
    if (GetDlgItem(dialog, control)) checked = IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

void lookAt(HWND dialog, int first, int last, int& index) {
    for (int id = first; id <= last; ++id)
        if (IsDlgButtonChecked(dialog, id) == BST_CHECKED) index = id - first;
}

std::string withPlainEnds(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || text.substr(i, 2) != "\r\n") plain += text[i];
    return plain;
}

/// With the line ends of an edit field.
CString withFieldEnds(std::string_view text) {
    std::string ends;
    for (const char c : withPlainEnds(text)) {
        if (c == '\n') ends += '\r';
        ends += c;
    }
    return CString(std::move(ends));
}

}  // namespace

TagEntries::TagEntries(const TvTag& tag)
    : text(withFieldEnds(tag.text)),
      place(kColumns * rowOf(tag.level) + static_cast<int>(tag.align)),
      border(static_cast<int>(tag.border)),
      family(tag.font.family),
      size(tag.font.size),
      width(tag.width / kPointsPerMillimetre),
      minScale(tag.minScale),
      maxScale(tag.maxScale),
      bold(tag.font.bold),
      italic(tag.font.italic),
      filled(tag.fill.filled),
      wrapped(tag.width > 0),
      leader(tag.leader),
      locked(tag.locked) {}

void TagEntries::exchange(TvExchange& fields) {
    fields.text(IDC_TAG_TEXT, text, 0);
    fields.radio(IDC_TAG_ALIGN_TOP_LEFT, IDC_TAG_ALIGN_BOTTOM_RIGHT, place);
    fields.radio(IDC_TAG_BORDER_NONE, IDC_TAG_BORDER_UNDERLINE, border);
    fields.choice(IDC_TAG_FONT, family);
    fields.number(IDC_TAG_SIZE, size, kLeastSize, kGreatestSize);
    fields.check(IDC_TAG_BOLD, bold);
    fields.check(IDC_TAG_ITALIC, italic);
    fields.check(IDC_TAG_FILLED, filled);
    fields.check(IDC_TAG_WRAPPED, wrapped);
    fields.number(IDC_TAG_WIDTH, width, wrapped ? kLeastWidth : 0,
                  TvTag::kMaxSide / kPointsPerMillimetre, 1);
    fields.check(IDC_TAG_LEADER, leader);
    fields.check(IDC_TAG_LOCKED, locked);
    fields.number(IDC_TAG_FROM_SCALE, minScale, 0, kGreatestScale);
    fields.number(IDC_TAG_TO_SCALE, maxScale, 0, kGreatestScale);
}

void TagEntries::look(HWND dialog) {
    text = textIn(dialog, IDC_TAG_TEXT);
    lookAt(dialog, IDC_TAG_ALIGN_TOP_LEFT, IDC_TAG_ALIGN_BOTTOM_RIGHT, place);
    lookAt(dialog, IDC_TAG_BORDER_NONE, IDC_TAG_BORDER_UNDERLINE, border);
    const LRESULT chosen = SendDlgItemMessageA(dialog, IDC_TAG_FONT, CB_GETCURSEL, 0, 0);
    if (GetDlgItem(dialog, IDC_TAG_FONT) && chosen >= 0) family = static_cast<int>(chosen);
    lookAt(dialog, IDC_TAG_SIZE, size);
    lookAt(dialog, IDC_TAG_WIDTH, width);
    lookAt(dialog, IDC_TAG_BOLD, bold);
    lookAt(dialog, IDC_TAG_ITALIC, italic);
    lookAt(dialog, IDC_TAG_FILLED, filled);
    lookAt(dialog, IDC_TAG_WRAPPED, wrapped);
    lookAt(dialog, IDC_TAG_LEADER, leader);
    lookAt(dialog, IDC_TAG_LOCKED, locked);
}

void TagEntries::give(TvTag& tag) const {
    const TagEntries shown(tag);
    if (text != shown.text) tag.text = withPlainEnds(text.view());
    if (place != shown.place && place >= 0) {
        tag.align = static_cast<TvAlign>(place % kColumns);
        tag.level = kRows[place / kColumns];
    }
    if (border >= 0) tag.border = static_cast<TvTagBorder>(border);
    if (family >= 0) tag.font.family = static_cast<TvFont::Family>(family);
    tag.font.size = size;
    tag.font.bold = bold;
    tag.font.italic = italic;
    tag.fill.filled = filled;
    if (!wrapped)
        tag.width = 0;
    else if (width != shown.width || tag.width <= 0)
        tag.width = width * kPointsPerMillimetre;
    tag.minScale = minScale;
    tag.maxScale = maxScale;
    tag.leader = leader;
    tag.locked = locked;
}

}  // namespace toolbox::tag

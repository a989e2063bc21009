// How a text keeps what each of its "$"s is followed by. Each byte is compared while it extends a
// text that still agrees with some word, so a replacement costs at most the longest word besides
// what it inserts.
#include "udkey/token_text.h"

#include <algorithm>
#include <utility>

namespace toolbox::udkey {

namespace {

constexpr std::uint64_t kLabels = std::uint64_t{1} << 63;
constexpr std::uint64_t kStep = std::uint64_t{1} << 32;  ///< between labels that are appended

}  // namespace

TokenText::TokenText(std::string text, std::vector<std::string_view> words)
    : text_(std::move(text)) {
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    words_.reserve(words.size());
    for (const std::string_view word : words) words_.push_back({word, {}});
    appendMarked(&marks_.emplace_back(), text_);
}

const TokenText::Word* TokenText::find(std::string_view word) const {
    const auto at = std::lower_bound(words_.begin(), words_.end(), word,
                                     [](const Word& a, std::string_view b) { return a.text < b; });
    return at != words_.end() && at->text == word ? &*at : nullptr;
}

bool TokenText::canReplace(std::string_view word) const {
    const Word* found = find(word);
    return found && !found->marks.empty() && (*found->marks.begin())->after;
}

void TokenText::replace(std::string_view word, std::string value) {
    Mark& opening = **find(word)->marks.begin();
    Mark& closing = *opening.after;
    Mark* before = opening.before;
    remove(opening);
    remove(closing);
    join(*appendMarked(before, values_.emplace_back(std::move(value))), closing);
}

std::string TokenText::text() const {
    std::string result;
    for (const Mark* mark = &marks_.front(); mark; mark = mark->after) {
        if (mark->before) result += '$';
        for (const Piece* piece = mark->first; piece; piece = piece->next) result += piece->text;
    }
    return result;
}

/// Appends a text to that of a mark, each "$" in it as a new mark; returns the last mark.
TokenText::Mark* TokenText::appendMarked(Mark* mark, std::string_view text) {
    for (;;) {
        const std::size_t dollar = text.find('$');
        append(*mark, text.substr(0, dollar));
        if (dollar == std::string_view::npos) return mark;
        text.remove_prefix(dollar + 1);
        mark = insertAfter(mark);
    }
}

void TokenText::append(Mark& mark, std::string_view text) {
    if (text.empty()) return;
    Piece* piece = &pieces_.emplace_back(Piece{text});
    (mark.last ? mark.last->next : mark.first) = piece;
    mark.last = piece;
    compare(mark, text);
}

/// Narrows the words that agree with a mark's text, which goes on with `text`.
void TokenText::compare(Mark& mark, std::string_view text) {
    for (const char c : text) {
        if (mark.from == mark.to) return;
        const auto next = [&](const Word& word) {  // a word that ends here sorts before the others
            return mark.depth < word.text.size() ? static_cast<unsigned char>(word.text[mark.depth])
                                                 : -1;
        };
        const int wanted = static_cast<unsigned char>(c);
        const auto begin = words_.begin() + static_cast<std::ptrdiff_t>(mark.from);
        const auto end = words_.begin() + static_cast<std::ptrdiff_t>(mark.to);
        const auto from =
            std::partition_point(begin, end, [&](const Word& word) { return next(word) < wanted; });
        const auto to =
            std::partition_point(from, end, [&](const Word& word) { return next(word) == wanted; });
        mark.from = static_cast<std::size_t>(from - words_.begin());
        mark.to = static_cast<std::size_t>(to - words_.begin());
        ++mark.depth;
        if (from != to && from->text.size() == mark.depth) {
            from->marks.insert(&mark);
            mark.words.push_back(mark.from);
        }
    }
}

/// Appends the text of a mark that was removed.
void TokenText::join(Mark& mark, const Mark& removed) {
    if (!removed.first) return;
    (mark.last ? mark.last->next : mark.first) = removed.first;
    mark.last = removed.last;
    for (const Piece* piece = removed.first; piece && mark.from < mark.to; piece = piece->next)
        compare(mark, piece->text);
}

void TokenText::remove(Mark& mark) {
    for (const std::size_t word : mark.words) words_[word].marks.erase(&mark);
    mark.before->after = mark.after;
    if (mark.after) mark.after->before = mark.before;
}

TokenText::Mark* TokenText::insertAfter(Mark* mark) {
    const auto room = [mark] {
        const std::uint64_t end =
            mark->after ? mark->after->label : std::min(kLabels, mark->label + 2 * kStep);
        return end - mark->label;
    };
    if (room() < 2) makeRoomAfter(mark);
    Mark& added = marks_.emplace_back();
    added.label = mark->label + room() / 2;
    added.before = mark;
    added.after = std::exchange(mark->after, &added);
    if (added.after) added.after->before = &added;
    added.to = words_.size();
    return &added;
}

void TokenText::makeRoomAfter(Mark* mark) {
    // A range of twice the size may hold one and a half times the marks: the larger the range, the
    // more room is won for each mark that is moved.
    constexpr double kGrowth = 1.5;
    double most = 1;
    Mark* first = mark;
    Mark* last = mark;
    std::uint64_t count = 1;
    for (unsigned bits = 1; bits <= 63; ++bits) {
        most *= kGrowth;
        const std::uint64_t low = mark->label >> bits << bits;
        const std::uint64_t high = low + ((std::uint64_t{1} << bits) - 1);
        for (; first->before && first->before->label >= low; ++count) first = first->before;
        for (; last->after && last->after->label <= high; ++count) last = last->after;
        const std::uint64_t gap = (std::uint64_t{1} << bits) / count;
        if (gap < 2 || static_cast<double>(count) > most) continue;
        std::uint64_t label = low;
        for (Mark* each = first;; each = each->after, label += gap) {
            each->label = label;
            if (each == last) return;
        }
    }
}

}  // namespace toolbox::udkey

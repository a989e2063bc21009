// A text in which "$" + word is searched and replaced many times, each in logarithmic time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace toolbox::udkey {

/// The text is kept as its "$"s in their order, each with the pieces of text that follow it up to
/// the next. Each word has the set of the "$"s whose text begins with it. A replacement removes two
/// "$"s, adds those of the value, and lengthens the text after the "$" before: what that begins
/// with is only ever added to.
///
/// The "$"s bear labels that rise along the text, so that their order is one comparison. Where a
/// new one finds no label between its neighbours, those around it are spread again, over the
/// smallest range that is not crowded: the known way to keep a list in order at logarithmic cost.
class TokenText {
  public:
    /// `words`, none of them empty and in any order, are borrowed.
    TokenText(std::string text, std::vector<std::string_view> words);
    TokenText(const TokenText&) = delete;
    TokenText& operator=(const TokenText&) = delete;

    /// True for one of the words.
    [[nodiscard]] bool knows(std::string_view word) const { return find(word) != nullptr; }
    /// True when the first "$" + word has a "$" after it.
    [[nodiscard]] bool canReplace(std::string_view word) const;
    /// Replaces the first "$" + word, through the next "$", as canReplace() allowed.
    void replace(std::string_view word, std::string value);
    [[nodiscard]] std::string text() const;

  private:
    struct Piece {
        std::string_view text;  ///< not empty
        Piece* next = nullptr;
    };
    struct Mark {
        std::uint64_t label = 0;
        Mark* before = nullptr;
        Mark* after = nullptr;
        Piece* first = nullptr;
        Piece* last = nullptr;
        // The words, from `from` to before `to`, that agree with the text after the mark in `depth`
        // bytes, which is as far as it was compared; none are left once it differs from all.
        std::size_t from = 0;
        std::size_t to = 0;
        std::size_t depth = 0;
        std::vector<std::size_t> words;  ///< those that the text begins with
    };
    struct ByLabel {
        bool operator()(const Mark* a, const Mark* b) const { return a->label < b->label; }
    };
    struct Word {
        std::string_view text;
        std::set<Mark*, ByLabel> marks;
    };

    [[nodiscard]] const Word* find(std::string_view word) const;
    Mark* appendMarked(Mark* mark, std::string_view text);
    void append(Mark& mark, std::string_view text);
    void compare(Mark& mark, std::string_view text);
    void join(Mark& mark, const Mark& removed);
    void remove(Mark& mark);
    Mark* insertAfter(Mark* mark);
    static void makeRoomAfter(Mark* mark);

    std::vector<Word> words_;  ///< sorted by bytes
    std::string text_;
    std::deque<std::string> values_;
    std::deque<Piece> pieces_;
    std::deque<Mark> marks_;  ///< the first stands for the start of the text
};

}  // namespace toolbox::udkey

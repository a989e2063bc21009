// Replaces the tokens of a template by values.
//
// The rule is that of TokenizerUDManager::getParseString(): for each word of the template that is a
// token, the first "$" + word in the result so far, through the next "$", gives way to the value.
// In a template of the usual shape that place is always the token itself, and one pass from left to
// right gives the same result. Expansion takes that pass as long as it can tell so. From the first
// word on for which it cannot, it searches the result, kept as a TokenText. With n the length of
// the template and its values the cost is n log n, and the longest token's length more for each
// token that is replaced.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "udkey/template_words.h"

namespace toolbox::udkey {

/// The "$"s in the text before the next token, each with the text that follows it: where a search
/// for "$" + word could stop before it gets to the token.
class LeftDollars {
  public:
    /// Notes the "$"s of `out` from `from` on.
    void note(std::string_view out, std::size_t from);
    /// True when the text after one of them, up to the next or to the end of `out`, begins with
    /// the word.
    [[nodiscard]] bool precede(std::string_view word, std::string_view out) const;

  private:
    std::size_t last_ = std::string_view::npos;
    std::set<std::string, std::less<>> closed_;  ///< texts between two of them
};

class Expansion {
  public:
    Expansion(std::string_view text, TokenSource& source)
        : text_(text), words_(text), source_(source) {}

    [[nodiscard]] std::string run();

  private:
    [[nodiscard]] bool replaceInPlace(std::size_t word, const KeyEntry& key);
    void copyTo(std::size_t word);
    [[nodiscard]] std::size_t search(std::size_t firstWord);

    std::string_view text_;
    TemplateWords words_;
    TokenSource& source_;
    // The result so far is out_ and then the text from copied_ on.
    std::string out_;
    std::size_t copied_ = 0;
    std::size_t wordsDone_ = 0;  ///< words that are copied or replaced, with the "$" after them
    LeftDollars dollars_;
};

/// Where the first "$" + word in a text and the next "$" after it stand.
struct TokenPlace {
    std::size_t start = std::string_view::npos;
    std::size_t end = std::string_view::npos;
    [[nodiscard]] bool found() const { return end != std::string_view::npos; }
};
[[nodiscard]] TokenPlace findToken(std::string_view text, std::string_view word);

}  // namespace toolbox::udkey

// Texts as a search compares them: without case and without accents.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace toolbox::keys {

/// Small letters of A to Z for letters with and without accents, "oe", "ae" and "ss" for those that
/// stand for two, a blank for the blank that does not break; other bytes as they are.
[[nodiscard]] std::string folded(std::string_view text);

/// What the user typed to find keys: words, each of which has to be somewhere in a text.
class Words {
  public:
    Words() = default;
    explicit Words(std::string_view typed);
    [[nodiscard]] bool areNone() const { return words_.empty(); }
    /// True for every text when there are none. The text is folded already.
    [[nodiscard]] bool areIn(std::string_view foldedText) const;

  private:
    std::vector<std::string> words_;
};

}  // namespace toolbox::keys

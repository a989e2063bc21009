// A template split at every "$", and what a manager knows of the words between.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolbox/win_types.h"

namespace toolbox::udkey {

class KeyEntry;

/// The words of a template, empty ones included: word i, but for the first, stands after the i-th
/// "$", and all but the last stand before one. The template is borrowed.
class TemplateWords {
  public:
    explicit TemplateWords(std::string_view text);

    [[nodiscard]] std::size_t count() const { return ends_.size(); }
    [[nodiscard]] std::size_t start(std::size_t i) const { return i == 0 ? 0 : ends_[i - 1] + 1; }
    /// Position of the "$" after the word, or the length of the text.
    [[nodiscard]] std::size_t end(std::size_t i) const { return ends_[i]; }
    [[nodiscard]] std::string_view operator[](std::size_t i) const {
        return text_.substr(start(i), end(i) - start(i));
    }
    /// True when a "$" stands on both sides.
    [[nodiscard]] bool isEnclosed(std::size_t i) const { return i > 0 && i + 1 < count(); }

  private:
    std::string_view text_;
    std::vector<std::size_t> ends_;
};

/// Where an expansion finds its tokens and values.
class TokenSource {
  public:
    /// The key of a word that is a valid token, else null.
    virtual const KeyEntry* token(std::string_view word) = 0;
    /// Appends the value of a key that token() gave.
    virtual void appendValue(const KeyEntry& key, std::string& out) = 0;

  protected:
    ~TokenSource() = default;
};

}  // namespace toolbox::udkey

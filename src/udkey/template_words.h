// A template split at every "$", and what a manager knows of the words between.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace toolbox::udkey {

class KeyEntry;

static_assert(std::endian::native == std::endian::little, "the first byte is the lowest");

/// Calls visit(position) for each "$" of a text, in their order. Eight bytes at a time: words and
/// values are too short for a call of memchr() to be worth while.
template <class Visit>
void forEachDollar(std::string_view text, Visit visit) {
    constexpr std::uint64_t kEach = 0x0101010101010101U;
    constexpr std::uint64_t kLow = 0x7F * kEach;
    std::size_t at = 0;
    for (; at + 8 <= text.size(); at += 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + at, 8);
        bytes ^= std::uint64_t{'$'} * kEach;
        // The high bit of each byte that is 0 now.
        std::uint64_t found = ~(((bytes & kLow) + kLow) | bytes | kLow);
        for (; found != 0; found &= found - 1)
            visit(at + static_cast<std::size_t>(std::countr_zero(found)) / 8);
    }
    for (; at < text.size(); ++at)
        if (text[at] == '$') visit(at);
}

/// The words of a template, empty ones included: word i, but for the first, stands after the i-th
/// "$", and all but the last stand before one. The template is borrowed.
class TemplateWords {
  public:
    explicit TemplateWords(std::string_view text) : text_(text) {
        constexpr std::size_t kUsualWord = 8;
        ends_.reserve(text.size() / kUsualWord + 1);
        forEachDollar(text, [this](std::size_t at) { ends_.push_back(at); });
        ends_.push_back(text.size());
    }

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
    /// Appends the value of a key that token() gave. The application runs: afterwards other words
    /// may be tokens.
    virtual void appendValue(const KeyEntry& key, std::string& out) = 0;

  protected:
    ~TokenSource() = default;
};

}  // namespace toolbox::udkey

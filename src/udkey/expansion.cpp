// The pass from left to right, and the search that takes over where it may go wrong.
#include "udkey/expansion.h"

#include <vector>

#include "udkey/token_text.h"

namespace toolbox::udkey {

void LeftDollars::note(std::string_view out, std::size_t from) {
    forEachDollar(out.substr(from), [&](std::size_t found) {
        const std::size_t at = from + found;
        if (last_ != std::string_view::npos) closed_.emplace(out.substr(last_ + 1, at - last_ - 1));
        last_ = at;
    });
}

bool LeftDollars::precede(std::string_view word, std::string_view out) const {
    if (last_ == std::string_view::npos) return false;
    if (out.substr(last_ + 1).starts_with(word)) return true;
    // Texts that begin with the word are not before it in their order, and nothing is between.
    const auto next = closed_.lower_bound(word);
    return next != closed_.end() && next->starts_with(word);
}

TokenPlace findToken(std::string_view text, std::string_view word) {
    for (std::size_t at = text.find('$'); at != std::string_view::npos;
         at = text.find('$', at + 1)) {
        if (text.substr(at + 1).starts_with(word)) return {at, text.find('$', at + 1)};
    }
    return {};
}

std::string Expansion::run() {
    out_.reserve(text_.size());
    for (std::size_t i = 0; i < words_.count(); ++i) {
        const std::string_view word = words_[i];
        const KeyEntry* key = word.empty() ? nullptr : source_.token(word);
        if (!key) continue;
        if (!replaceInPlace(i, *key)) {
            out_ += text_.substr(copied_);
            while (i < words_.count()) i = search(i);
            return std::move(out_);
        }
    }
    out_ += text_.substr(copied_);
    return std::move(out_);
}

/// False, with the result as it was, when the search might find another place.
bool Expansion::replaceInPlace(std::size_t word, const KeyEntry& key) {
    // The "$" before the word may have gone with the token before.
    if (!words_.isEnclosed(word) || word <= wordsDone_) return false;
    copyTo(word);
    if (dollars_.precede(words_[word], out_)) return false;
    const std::size_t from = out_.size();
    source_.appendValue(key, out_);
    dollars_.note(out_, from);
    copied_ = words_.end(word) + 1;
    wordsDone_ = word + 1;
    return true;
}

/// Copies the words before this one, up to its "$". All but the first have a "$" before them.
void Expansion::copyTo(std::size_t word) {
    const std::size_t from = out_.size();
    const std::size_t end = words_.start(word) - 1;
    out_ += text_.substr(copied_, end - copied_);
    if (word - wordsDone_ > 1) dollars_.note(out_, from);
    copied_ = end;
    wordsDone_ = word;
}

/// Goes on with the words from this one on; returns the word from which another search has to.
std::size_t Expansion::search(std::size_t firstWord) {
    const auto keyOf = [this](std::string_view word) {
        return word.empty() ? nullptr : source_.token(word);
    };
    std::vector<std::string_view> tokens;
    for (std::size_t i = firstWord; i < words_.count(); ++i)
        if (keyOf(words_[i])) tokens.push_back(words_[i]);
    TokenText result(std::move(out_), std::move(tokens));

    std::size_t i = firstWord;
    for (; i < words_.count(); ++i) {
        const KeyEntry* key = keyOf(words_[i]);
        if (!key) continue;
        if (!result.knows(words_[i])) break;  // the application made it a token meanwhile
        if (!result.canReplace(words_[i])) {
            i = words_.count();
            break;
        }
        std::string value;
        source_.appendValue(*key, value);
        result.replace(words_[i], std::move(value));
    }
    out_ = result.text();
    return i;
}

}  // namespace toolbox::udkey

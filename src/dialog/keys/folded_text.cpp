// Folding by a table of the letters from 0xC0 on, and the few before them.
#include "dialog/keys/folded_text.h"

#include <algorithm>
#include <array>

namespace toolbox::keys {
namespace {

/// The letters from 0xC0 to 0xFF in small letters; '2' stands for two letters, '.' for no letter.
constexpr std::string_view kLetters =
    "aaaaaa2ceeeeiiiidnooooo.ouuuuyt2"
    "aaaaaa2ceeeeiiiidnooooo.ouuuuyty";
static_assert(kLetters.size() == 0x40);

constexpr unsigned char kFirst = 0xC0;

void appendFolded(std::string& out, unsigned char c) {
    constexpr auto kOthers =
        std::to_array<std::pair<unsigned char, std::string_view>>({{0x83, "f"},
                                                                   {0x8A, "s"},
                                                                   {0x8C, "oe"},
                                                                   {0x8E, "z"},
                                                                   {0x9A, "s"},
                                                                   {0x9C, "oe"},
                                                                   {0x9E, "z"},
                                                                   {0x9F, "y"},
                                                                   {0xA0, " "},
                                                                   {0xC6, "ae"},
                                                                   {0xDF, "ss"},
                                                                   {0xE6, "ae"}});
    if (c >= 'A' && c <= 'Z') {
        out.push_back(static_cast<char>(c - 'A' + 'a'));
        return;
    }
    const char letter = c >= kFirst ? kLetters[static_cast<std::size_t>(c - kFirst)] : '.';
    if (letter != '.' && letter != '2') {
        out.push_back(letter);
        return;
    }
    const auto* const other =
        c < 0x80
            ? kOthers.end()
            : std::ranges::find(kOthers, c, &std::pair<unsigned char, std::string_view>::first);
    if (other != kOthers.end())
        out += other->second;
    else
        out.push_back(static_cast<char>(c));
}

}  // namespace

std::string folded(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) appendFolded(out, static_cast<unsigned char>(c));
    return out;
}

Words::Words(std::string_view typed) {
    const std::string all = folded(typed);
    std::size_t end = 0;
    for (;;) {
        const std::size_t begin = all.find_first_not_of(" \t", end);
        if (begin == std::string::npos) return;
        end = std::min(all.find_first_of(" \t", begin), all.size());
        words_.push_back(all.substr(begin, end - begin));
    }
}

bool Words::areIn(std::string_view foldedText) const {
    return std::ranges::all_of(words_, [&](const std::string& word) {
        return foldedText.find(word) != std::string_view::npos;
    });
}

}  // namespace toolbox::keys

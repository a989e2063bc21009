#include "texts.h"

#include <algorithm>
#include <array>

#include "toolbox/utf8.h"

namespace tbfile {
namespace {

struct Entry {
    std::string_view french;
    std::string_view english;
};

constexpr auto kTexts = std::to_array<Entry>({
#define TBFILE_TEXT(name, french, english) {french, english},
#include "texts.inc"
#undef TBFILE_TEXT
});

Language spoken = Language::english;

}  // namespace

void speak(Language language) {
    spoken = language;
}

std::string say(Text text, Arguments arguments) {
    const Entry& entry = kTexts[static_cast<std::size_t>(text)];
    const std::string model =
        toolbox::toUtf8(spoken == Language::french ? entry.french : entry.english);
    std::string said;
    for (std::size_t i = 0; i < model.size(); ++i) {
        const bool mark =
            model[i] == '%' && i + 1 < model.size() && model[i + 1] >= '1' && model[i + 1] <= '9';
        if (!mark) {
            said += model[i];
            continue;
        }
        const auto number = static_cast<std::size_t>(model[++i] - '1');
        if (number < arguments.size()) said += arguments.begin()[number];
    }
    return said;
}

std::string visible(std::string utf8) {
    constexpr auto isRare = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F || byte == 0xC2;
    };
    if (std::ranges::none_of(utf8, isRare)) return utf8;
    std::string shown;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const auto next = static_cast<unsigned char>(i + 1 < utf8.size() ? utf8[i + 1] : 0);
        const bool two = byte == 0xC2 && next >= 0x80 && next < 0xA0;  // U+0080 to U+009F
        shown += two || byte < 0x20 || byte == 0x7F ? '.' : utf8[i];
        if (two) ++i;
    }
    return shown;
}

std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    // A narrow blank that does not break the line would be right in French; not every terminal
    // shows one.
    const char separator = spoken == Language::french ? ' ' : ',';
    for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, 1, separator);
    return digits;
}

}  // namespace tbfile

// Decodes UTF-8 character by character and makes texts harmless for a terminal.
#include "terminal/characters.h"

#include <algorithm>

#if defined(_WIN32)
#include "toolbox/win_types.h"
#endif

namespace tbfile {
namespace {

/// Line and paragraph separators and what changes the direction of the text.
bool reorders(char32_t code) {
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isPlain(char c) {
    return c >= 0x20 && c < 0x7F;
}

}  // namespace

Character characterAt(std::string_view utf8, std::size_t at) {
    const auto first = static_cast<unsigned char>(utf8[at]);
    if (first < 0x80) return {first, 1};
    const std::size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || at + bytes > utf8.size()) return {};
    char32_t code = first & (0xFFu >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        const auto next = static_cast<unsigned char>(utf8[at + i]);
        if ((next & 0xC0) != 0x80) return {};
        code = code << 6 | (next & 0x3F);
    }
    const bool longer = (bytes == 3 && code < 0x800) || (bytes == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (longer || surrogate || code > 0x10FFFF) return {};
    return {code, bytes};
}

std::string visible(std::string utf8) {
    if (std::ranges::all_of(utf8, isPlain)) return utf8;
    std::string shown;
    for (std::size_t at = 0; at < utf8.size();) {
        const Character character = characterAt(utf8, at);
        if (character.bytes == 0)
            shown += kReplacement;
        else if (isControl(character.code) || reorders(character.code))
            shown += '.';
        else
            shown.append(utf8, at, character.bytes);
        at += std::max<std::size_t>(character.bytes, 1);
    }
    return shown;
}

#if defined(_WIN32)
std::string utf8Of(std::wstring_view utf16) {
    const auto size = static_cast<int>(utf16.size());
    const int bytes =
        ::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, utf8.data(), bytes, nullptr, nullptr);
    return utf8;
}
#endif

}  // namespace tbfile

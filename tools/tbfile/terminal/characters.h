// Characters of UTF-8 text that comes from files, names and arguments, and how it is shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tbfile {

/// What stands for bytes that are not UTF-8.
inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Character {
    char32_t code = 0;
    std::size_t bytes = 0;  ///< 0 where the bytes are not UTF-8
};
/// The character that begins at a position within the text.
[[nodiscard]] Character characterAt(std::string_view utf8, std::size_t at);

/// U+0000 to U+001F and U+007F to U+009F.
[[nodiscard]] inline bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

/// A text as a terminal may have it: '.' in place of every character that would move, color or
/// reorder what is shown; U+FFFD in place of every byte that is not UTF-8.
[[nodiscard]] std::string visible(std::string utf8);

#if defined(_WIN32)
/// Half a surrogate pair gives U+FFFD.
[[nodiscard]] std::string utf8Of(std::wstring_view utf16);
#endif

}  // namespace tbfile

// What both profile stores do to names and values.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "base/trimmed.h"
#include "toolbox/platform.h"

namespace toolbox::platform {

inline constexpr std::string_view kLineBreaks = "\r\n";

/// What does not count at the ends of names and values. Old editors end a file with 0x1A, which
/// Windows drops like a blank.
inline constexpr std::string_view kProfileBlanks = " \t\v\f\r\n\x1A";

[[nodiscard]] inline bool isProfileSection(const char* name) {
    const std::string_view text = name ? name : "";
    return text.find_first_of(kLineBreaks) == std::string_view::npos &&
           text.find_first_not_of(kProfileBlanks) != std::string_view::npos;
}

/// False for names that a profile cannot hold: the line would be read as something else.
[[nodiscard]] inline bool isProfileEntry(const char* name) {
    const std::string_view text = name ? name : "";
    const std::size_t first = text.find_first_not_of(kProfileBlanks);
    return first != std::string_view::npos && text[first] != '[' &&
           text.find_first_of("=\r\n") == std::string_view::npos;
}

/// The text without one pair of quotes around it.
[[nodiscard]] inline std::string_view withoutQuotes(std::string_view text) {
    const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                        (text.front() == '"' || text.front() == '\'');
    return quoted ? text.substr(1, text.size() - 2) : text;
}

/// A default as the system hands it out: without quotes around it and without spaces at its end, of
/// which one alone stays.
[[nodiscard]] inline std::string_view shownDefault(const char* fallback) {
    std::string_view text = fallback ? fallback : "";
    while (text.size() > 1 && text.ends_with(' ')) text.remove_suffix(1);
    return withoutQuotes(text);
}

/// A value as the system hands it out: without the blanks around it, then without such quotes.
[[nodiscard]] inline std::string_view shownValue(std::string_view text) {
    return withoutQuotes(base::trimmed(text, kProfileBlanks));
}

/// Names are equal when their letters A to Z and all other bytes are, but for blanks around them.
[[nodiscard]] inline std::string foldedName(std::string_view name) {
    std::string result(base::trimmed(name, kProfileBlanks));
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return result;
}

inline void copyCut(std::string_view text, char* out, int size) {
    if (size <= 0) return;
    const std::size_t kept = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(out, text.data(), kept);
    out[kept] = '\0';
}

/// A value's line; what follows a line break would become entries of its own.
[[nodiscard]] inline std::string_view profileLine(std::string_view value) {
    return value.substr(0, value.find_first_of(kLineBreaks));
}

}  // namespace toolbox::platform

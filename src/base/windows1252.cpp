// Conversion between Windows-1252 and UTF-8. Only the bytes 0x80 to 0x9F need a table: all others
// have the number of their Unicode character.
#include "base/windows1252.h"

#include <algorithm>
#include <array>

#include "toolbox/utf8.h"

namespace toolbox::base {
namespace {

/// The characters of the bytes 0x80 to 0x9F; all others are their own number.
constexpr auto kSpecial = std::to_array<char16_t>(
    {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
     0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
     0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178});
static_assert(kSpecial.size() == 0x20);

constexpr unsigned kFirstSpecial = 0x80;
constexpr unsigned kAfterSpecial = 0xA0;

}  // namespace

char byteOf1252(char32_t code) noexcept {
    if (code < kFirstSpecial || (code >= kAfterSpecial && code <= 0xFF))
        return static_cast<char>(static_cast<unsigned char>(code));
    const auto found = std::find(kSpecial.begin(), kSpecial.end(), code);
    if (found == kSpecial.end()) return '?';
    return static_cast<char>(kFirstSpecial + static_cast<unsigned>(found - kSpecial.begin()));
}

void appendUtf8(std::string& out, char32_t code) {
    const auto put = [&](char32_t bits) { out += static_cast<char>(bits); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

char32_t takeUtf8(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    char32_t code = length <= 1 ? first : first & (0xFFu >> (length + 1));
    bool valid = length > 0 && length <= text.size();
    for (std::size_t i = 1; valid && i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        valid = (next & 0xC0) == 0x80;
        code = code << 6 | (next & 0x3F);
    }
    constexpr std::array<char32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000};
    valid = valid && code >= kLeast[length] && code <= 0x10FFFF;
    text.remove_prefix(valid ? length : 1);
    return valid ? code : kNotUtf8;
}

std::string utf8From1252(std::string_view bytes) {
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const bool special = byte >= kFirstSpecial && byte < kAfterSpecial;
        appendUtf8(result, special ? char32_t{kSpecial[byte - kFirstSpecial]} : char32_t{byte});
    }
    return result;
}

std::string utf8To1252(std::string_view utf8) {
    std::string result;
    while (!utf8.empty()) result += byteOf1252(takeUtf8(utf8));
    return result;
}

char upper1252(char c) noexcept {
    const auto byte = static_cast<unsigned char>(c);
    if (c >= 'a' && c <= 'z') return static_cast<char>(c - 'a' + 'A');
    if (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7) return static_cast<char>(byte - 0x20);
    if (byte == 0x9A || byte == 0x9C || byte == 0x9E) return static_cast<char>(byte - 0x10);
    if (byte == 0xFF) return static_cast<char>(0x9F);
    return c;
}

}  // namespace toolbox::base

std::string toolbox::toUtf8(std::string_view windows1252) {
    return base::utf8From1252(windows1252);
}

std::string toolbox::fromUtf8(std::string_view utf8) {
    return base::utf8To1252(utf8);
}

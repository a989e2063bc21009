// Windows-1252, the bytes of the library's strings, and Unicode.
#pragma once

#include <string>
#include <string_view>

namespace toolbox::base {

/// The five bytes without a character stand for the control characters of the same number.
[[nodiscard]] std::string utf8From1252(std::string_view bytes);

/// A character that Windows-1252 does not have, and a byte that is not UTF-8, becomes '?'.
[[nodiscard]] std::string utf8To1252(std::string_view utf8);

/// The byte of a character; '?' when Windows-1252 does not have it.
[[nodiscard]] char byteOf1252(char32_t code) noexcept;

/// Appends a code point; surrogates are encoded like any other.
void appendUtf8(std::string& out, char32_t code);

/// Takes the first code point off a text that is not empty. Surrogates are taken like any other;
/// for a byte that is not UTF-8 the result is kNotUtf8 and that byte is taken off.
inline constexpr char32_t kNotUtf8 = 0xFFFFFFFF;
[[nodiscard]] char32_t takeUtf8(std::string_view& text);

/// The upper-case letter of a Windows-1252 letter; other bytes as they are.
[[nodiscard]] char upper1252(char c) noexcept;

}  // namespace toolbox::base

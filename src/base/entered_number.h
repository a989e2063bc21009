// Numbers as people type them: digits, one decimal sign (point or comma), an exponent; a sign
// before and blanks around them. Nothing else is a number, and none is clipped.
#pragma once

#include <cstddef>
#include <string_view>

namespace toolbox::base {

/// Why a text is not such a number, or not one of a type.
enum class EntryFault {
    none,
    empty,         ///< nothing but blanks
    incomplete,    ///< the end where a digit must stand: "-", "1e"
    badCharacter,  ///< what no number has, or not there
    grouping,      ///< something between digits: a blank, an apostrophe, a second decimal sign
    notWhole,      ///< a decimal sign, or decimals by the exponent, in an integer
    twoReadings,   ///< a comma that is a decimal sign to some and separates thousands to others
    tooLarge,      ///< above the type's range
    tooSmall,      ///< below it
    nearZero       ///< not zero, but nearer to it than what the type holds
};

/// A text cut into the parts of a number. All places and counts are in bytes.
struct EntryParts {
    EntryFault fault = EntryFault::none;  ///< empty, incomplete, badCharacter or grouping
    std::size_t position = 0;             ///< of the fault; the text's length for a missing digit
    std::string_view number;              ///< without blanks and a plus sign
    std::size_t sign = std::string_view::npos;  ///< of the decimal sign in the text
    std::size_t wholeDigits = 0;                ///< before the decimal sign
    std::size_t decimals = 0;                   ///< after it
    std::string_view exponent;                  ///< after the 'e', with its sign
};
[[nodiscard]] EntryParts entryParts(std::string_view text);

/// True when the comma at `comma` has one to three digits before it that are not all zero, and
/// exactly three after it.
[[nodiscard]] bool separatesThousands(std::string_view text, std::size_t comma);

/// What reading found, and where.
struct EntryCheck {
    EntryFault fault = EntryFault::none;
    std::size_t position = 0;  ///< of the fault, where it has a place
};

/// Reads a number of a type. `out` changes only when there is no fault. With `oneReading` a comma
/// that could separate thousands is one. Integers take no decimal sign.
///
/// For unsigned char, short, unsigned short, int, unsigned int, long, unsigned long, float, double.
template <class Number>
EntryCheck readEntry(std::string_view text, bool oneReading, Number& out);

}  // namespace toolbox::base

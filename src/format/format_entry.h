// What a user enters for a format, checked before it is one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolbox/formats.h"

namespace toolbox::format {

/// The texts of the fields as they stand. Kinds without decimals ignore theirs.
struct FormatEntry {
    std::string description;
    std::string width;
    std::string decimals;
    Justification justify = Left;
};

enum class EntryField { description, width, decimals };

/// The first field that is not accepted, and the ends of what it may be (0 for the description).
struct EntryFault {
    EntryField field;
    int minimum = 0;
    int maximum = 0;
};

/// The widest column that a user enters: what a screen shows of a table.
inline constexpr int kWidestEntry = 80;
/// The narrowest one of this kind.
[[nodiscard]] int narrowestEntry(const FormatType& format);
/// The most decimals of a real in a column of this width.
[[nodiscard]] constexpr int mostDecimals(int width) {
    return width - 2;
}

/// Sets width, justification and decimals of a format, whose kind says what is accepted; nothing
/// is set when there is a fault. A width or decimals that are still those of `before`, the format
/// that was to be edited, are accepted even beyond the limits, the decimals as long as the width is
/// that of `before`, too. A description is one that reads back from the saved form of keys.
[[nodiscard]] std::optional<EntryFault> enterFormat(const FormatEntry& entry,
                                                    const FormatType& before, FormatType& format);

/// A sample value between the edges of its column: "|  1234.57|". `text` is the sample of strings.
[[nodiscard]] RWCString previewOf(FormatType& format, std::string_view text);
/// Whether that sample prints in full.
[[nodiscard]] bool previewFits(FormatType& format, std::string_view text);

}  // namespace toolbox::format

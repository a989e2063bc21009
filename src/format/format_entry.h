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

/// Sets width, justification and decimals of a format, whose kind says what is accepted; nothing
/// is set when there is a fault. Accepted is what reads back from the saved forms of formats and
/// keys.
[[nodiscard]] std::optional<EntryFault> enterFormat(const FormatEntry& entry, FormatType& format);

/// A sample value between the edges of its column: "|  1234.57|". `text` is the sample of strings.
[[nodiscard]] RWCString previewOf(FormatType& format, std::string_view text);

}  // namespace toolbox::format

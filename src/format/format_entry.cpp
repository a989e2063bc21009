// Checks what a user entered for a format, and prints the sample beside it.
#include "format/format_entry.h"

#include <charconv>

#include "base/trimmed.h"

namespace toolbox::format {
namespace {

constexpr int kSampleInteger = -1234;
constexpr double kSampleReal = 1234.56789;

// The saved form has four columns for each number.
constexpr int kWidest = 9999;

/// A whole number between two limits; blanks around it are ignored.
std::optional<int> numberWithin(std::string_view text, int minimum, int maximum) {
    text = base::trimmed(text);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    if (number < minimum || number > maximum) return {};
    return number;
}

}  // namespace

std::optional<EntryFault> enterFormat(const FormatEntry& entry, FormatType& format) {
    if (entry.description.find('|') != std::string::npos)
        return EntryFault{EntryField::description};
    const int narrowest = format.isReal() ? 2 : 1;
    const auto width = numberWithin(entry.width, narrowest, kWidest);
    if (!width) return EntryFault{EntryField::width, narrowest, kWidest};
    const int mostDecimals = *width - 2;
    if (format.isReal()) {
        const auto decimals = numberWithin(entry.decimals, 0, mostDecimals);
        if (!decimals) return EntryFault{EntryField::decimals, 0, mostDecimals};
        format.setWidth(*width);
        format.setPrecision(*decimals);
    } else {
        format.setWidth(*width);
    }
    format.setJustify(entry.justify);
    return {};
}

RWCString previewOf(FormatType& format, std::string_view text) {
    RWCString field;
    if (format.isReal())
        field = RealFormat(format).getString(kSampleReal);
    else if (format.isNumber())
        field = NumberFormat(format).getString(kSampleInteger);
    else if (format.isString())
        field = StringFormat(format).getString(RWCString(text));
    return RWCString("|") + field + "|";
}

}  // namespace toolbox::format

// Checks what a user entered for a format, and prints the sample beside it.
#include "format/format_entry.h"

#include <charconv>

#include "base/trimmed.h"

namespace toolbox::format {
namespace {

constexpr int kSampleInteger = -1234;
constexpr double kSampleReal = 1234.56789;

/// A whole number; blanks around it are ignored.
std::optional<int> wholeNumber(std::string_view text) {
    text = base::trimmed(text);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

bool isWithin(std::optional<int> number, int minimum, int maximum) {
    return number && *number >= minimum && *number <= maximum;
}

}  // namespace

int narrowestEntry(const FormatType& format) {
    return format.isReal() ? 2 : 1;
}

std::optional<EntryFault> enterFormat(const FormatEntry& entry, const FormatType& before,
                                      FormatType& format) {
    if (entry.description.find('|') != std::string::npos)
        return EntryFault{EntryField::description};
    const auto width = wholeNumber(entry.width);
    const bool keepsWidth = width == before.getWidth();
    const int narrowest = narrowestEntry(format);
    if (!keepsWidth && !isWithin(width, narrowest, kWidestEntry))
        return EntryFault{EntryField::width, narrowest, kWidestEntry};
    if (format.isReal()) {
        const auto decimals = wholeNumber(entry.decimals);
        const bool keepsDecimals = keepsWidth && decimals == before.getPrecision();
        const int most = mostDecimals(*width);
        if (!keepsDecimals && !isWithin(decimals, 0, most))
            return EntryFault{EntryField::decimals, 0, most};
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

bool previewFits(FormatType& format, std::string_view text) {
    if (format.isReal()) return RealFormat(format).fits(kSampleReal);
    if (format.isNumber()) return NumberFormat(format).fits(kSampleInteger);
    return !format.isString() || StringFormat(format).fits(RWCString(text));
}

}  // namespace toolbox::format

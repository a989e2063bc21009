// Numbers at the start of texts, on std::from_chars or its like: no locale, and ends of the range
// where it reports an overflow.
#include "base/number_scan.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/real_chars.h"

namespace toolbox::base {
namespace {

/// Without blanks and a plus sign at the start: neither is for from_chars.
std::string_view numberStart(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool plus = text.starts_with('+') && !text.starts_with("+-");
    return text.substr(plus ? 1 : 0);
}

}  // namespace

long long leadingInteger(std::string_view text) noexcept {
    text = numberStart(text);
    long long number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec !=
        std::errc::result_out_of_range)
        return number;
    using Limits = std::numeric_limits<long long>;
    return text.starts_with('-') ? Limits::min() : Limits::max();
}

double leadingReal(std::string_view text) noexcept {
    text = numberStart(text);
    double number = 0;
    const auto [end, error] = realFromChars(text.data(), text.data() + text.size(), number);
    if (error != std::errc::result_out_of_range) return number;
    // Too large or too small: the exponent says which, and without one the digits before the point.
    std::string_view used(text.data(), static_cast<std::size_t>(end - text.data()));
    const bool negative = used.starts_with('-');
    if (negative) used.remove_prefix(1);
    const std::size_t mark = used.find_first_of("eE");
    const bool small =
        mark == std::string_view::npos
            ? used.substr(0, used.find('.')).find_first_not_of('0') == std::string_view::npos
            : used.substr(mark + 1).starts_with('-');
    const double size = small ? 0.0 : std::numeric_limits<double>::infinity();
    return negative ? -size : size;
}

}  // namespace toolbox::base

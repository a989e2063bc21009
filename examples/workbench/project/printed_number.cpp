// The text is read back and compared with the value within half a unit of its last digit.
#include "project/printed_number.h"

#include <charconv>
#include <cmath>

namespace {

/// What the last digit of a printed number counts.
double unitOf(std::string_view text) {
    const std::size_t point = text.find('.');
    const std::size_t mark = text.find('e');
    const std::size_t end = mark == std::string_view::npos ? text.size() : mark;
    int power = 0;
    if (mark != std::string_view::npos) {
        std::string_view exponent = text.substr(mark + 1);
        if (exponent.starts_with('+')) exponent.remove_prefix(1);
        std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    }
    if (point != std::string_view::npos) power -= static_cast<int>(end - point) - 1;
    return std::pow(10.0, power);
}

}  // namespace

bool standsFor(std::string_view text, double value) {
    double read = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, read);
    if (error != std::errc() || last != end) return false;
    if (std::isnan(value)) return std::isnan(read);
    if (std::isinf(value)) return read == value;
    // Binary numbers miss the middle between two printed ones by a little.
    const double binary = 1e-12 * std::fabs(value);
    return std::fabs(read - value) <= unitOf(text) / 2 * (1 + 1e-9) + binary;
}

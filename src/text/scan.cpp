// Strict reading of one value from a text.
#include <charconv>
#include <cmath>
#include <string_view>

#include "base/trimmed.h"
#include "toolbox/text.h"

namespace {

template <class Number>
bool scanNumber(const CString& text, Number* out) {
    std::string_view digits = toolbox::base::trimmed(text.view());
    if (digits.starts_with('+')) {
        digits.remove_prefix(1);
        if (digits.starts_with('-')) return false;
    }
    const char* end = digits.data() + digits.size();
    Number number{};
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end) return false;
    // The words for infinity and not-a-number are no decimal numbers.
    if constexpr (std::is_floating_point_v<Number>)
        if (!std::isfinite(number)) return false;
    if (out) *out = number;
    return true;
}

template <class String>
bool scanText(const CString& text, String* out) {
    if (out) *out = String(text);
    return true;
}

}  // namespace

bool TvScanfSingle(const CString& text, CString* out) {
    return scanText(text, out);
}
bool TvScanfSingle(const CString& text, RWCString* out) {
    return scanText(text, out);
}
bool TvScanfSingle(const CString& text, RWCollectableString* out) {
    return scanText(text, out);
}
bool TvScanfSingle(const CString& text, unsigned char* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, short* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, int* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, unsigned int* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, long* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, unsigned long* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, float* out) {
    return scanNumber(text, out);
}
bool TvScanfSingle(const CString& text, double* out) {
    return scanNumber(text, out);
}

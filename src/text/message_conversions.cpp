// The message service's small conversions: numbers and booleans to text, stripping and padding.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

#include "base/number_text.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox;

char* fixedText(double x, int decimals, char* out) {
    base::DecimalDigits digits;
    base::decimalDigits(x, decimals, digits);
    if (digits.negative) *out++ = '-';
    for (int i = std::min(digits.point, 0); i < digits.count; ++i) {
        if (i == digits.point) *out++ = '.';
        *out++ = i < 0 ? '0' : digits.text[i];
    }
    return out;
}

char* chosen(bool isTrue, const char* ifTrue, const char* ifFalse, char* buf, int blank) {
    return std::strcpy(buf, blank ? "" : isTrue ? ifTrue : ifFalse);
}

/// Copies needed to bring a text to a width.
std::size_t padding(const RWCString& text, int width) {
    constexpr std::size_t kMost = 1 << 20;
    if (width <= 0 || static_cast<std::size_t>(width) <= text.length()) return 0;
    return std::min(static_cast<std::size_t>(width) - text.length(), kMost);
}

}  // namespace

char* GMSG::ftoa(double x, int decimals, char* buf, int blankIfZero) {
    decimals = std::clamp(decimals, -5, base::kMaxPrecision);
    char* end = buf;
    if (x == 0) {
        constexpr int kDigitsOfZero = 1 + 6;
        if (!blankIfZero) end = base::printGcvt(buf, x, kDigitsOfZero);
    } else if (std::fabs(x) <= 99999.0 && std::fabs(x) >= 0.00001) {
        end = fixedText(x, std::max(decimals, 0), buf);
    } else {
        end = base::printGcvt(buf, x, decimals + 6);
    }
    *end = '\0';
    return buf;
}

char* GMSG::ntoa(long n, char* buf, int blankIfZero) {
    constexpr int kRoom = 21;
    char* end = n == 0 && blankIfZero ? buf : std::to_chars(buf, buf + kRoom, n).ptr;
    *end = '\0';
    return buf;
}

char* GMSG::btoa(int b, char* buf, int blank) {
    return chosen(b != 0, "O", "N", buf, blank);
}
char* GMSG::b2OnOff(int b, char* buf, int blank) {
    return chosen(b != 0, "ON", "OFF", buf, blank);
}
char* GMSG::b2ECHC(int b, char* buf, int blank) {
    return chosen(b != 0, "EC", "HC", buf, blank);
}

char* GMSG::strip(char* s) {
    if (!s) return s;
    const char* first = s + std::strspn(s, " ");
    std::size_t length = std::strlen(first);
    while (length > 0 && first[length - 1] == ' ') --length;
    std::memmove(s, first, length);
    s[length] = '\0';
    return s;
}

void GMSG::padLeft(RWCString& out, char pad, int width) {
    out.str().insert(0, padding(out, width), pad);
}

void GMSG::padRight(RWCString& out, char pad, int width) {
    out.str().append(padding(out, width), pad);
}

void GMSG::padMid(RWCString& out, char pad, int width) {
    const std::size_t extra = padding(out, width);
    out.str().insert(0, extra / 2, pad);
    out.str().append(extra - extra / 2, pad);
}

void GMSG::replicate(RWCString& out, int count) {
    const char first = out[0];
    const bool none = out.empty();
    out = RWCString();
    if (!none) padRight(out, first, count);
}

// One conversion of a template: parsing it and printing a value by it. Every part of a number is
// counted in 64 bits and written through BoundedText, so no width or precision can overflow.
#include "base/template_conversion.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstring>

#include "base/number_text.h"

namespace toolbox::base {

void BoundedText::append(std::string_view text) {
    const std::size_t n = std::min(text.size(), room_ - kept_);
    if (n == 0) return;
    std::memcpy(out_ + kept_, text.data(), n);
    kept_ += n;
}

void BoundedText::fill(char c, std::int64_t count) {
    if (count <= 0 || full()) return;
    const std::uint64_t n =
        std::min<std::uint64_t>(static_cast<std::uint64_t>(count), room_ - kept_);
    std::memset(out_ + kept_, c, static_cast<std::size_t>(n));
    kept_ += static_cast<std::size_t>(n);
}

std::size_t BoundedText::finish() {
    if (out_) out_[kept_] = '\0';
    return kept_;
}

void Conversion::setWidth(int given) {
    width = given;
    if (width < 0) {
        left = true;
        width = -width;
    }
}

namespace {

/// Decimal digits as a number that stops growing at INT_MAX.
std::int64_t readCount(const char*& at) {
    std::int64_t count = 0;
    for (; *at >= '0' && *at <= '9'; ++at)
        count = std::min<std::int64_t>(count * 10 + (*at - '0'), INT_MAX);
    return count;
}

bool readFlag(char c, Conversion& out) {
    switch (c) {
        case '-':
            out.left = true;
            return true;
        case '+':
            out.plus = true;
            return true;
        case ' ':
            out.blank = true;
            return true;
        case '#':
            out.alternate = true;
            return true;
        case '0':
            out.zeros = true;
            return true;
        default:
            return false;
    }
}

struct LengthName {
    std::string_view text;
    ArgumentLength length;
};
// A name precedes the names that it begins with.
constexpr LengthName kLengths[] = {
    {"hh", ArgumentLength::byte},      {"h", ArgumentLength::half},
    {"ll", ArgumentLength::bits64},    {"l", ArgumentLength::longWord},
    {"L", ArgumentLength::longDouble}, {"q", ArgumentLength::bits64},
    {"j", ArgumentLength::bits64},     {"z", ArgumentLength::pointer},
    {"t", ArgumentLength::pointer},    {"I32", ArgumentLength::bits32},
    {"I64", ArgumentLength::bits64},   {"I", ArgumentLength::pointer},
};

void readLength(const char*& at, Conversion& out) {
    for (const LengthName& name : kLengths) {
        if (std::strncmp(at, name.text.data(), name.text.size()) != 0) continue;
        out.length = name.length;
        at += name.text.size();
        return;
    }
}

/// A number ready to be justified: sign or prefix, zeros to insert, digits, zeros after them,
/// exponent.
struct NumberParts {
    std::string_view prefix;
    std::int64_t leadingZeros = 0;
    std::string_view digits;
    std::string_view point;
    std::int64_t trailingZeros = 0;
    std::string_view tail;
    bool mayFillWithZeros = true;
};

void printNumber(BoundedText& out, const Conversion& conversion, NumberParts parts) {
    const auto sized = [](std::string_view text) { return static_cast<std::int64_t>(text.size()); };
    std::int64_t padding = conversion.width - sized(parts.prefix) - parts.leadingZeros -
                           sized(parts.digits) - sized(parts.point) - parts.trailingZeros -
                           sized(parts.tail);
    if (conversion.zeros && !conversion.left && parts.mayFillWithZeros && padding > 0) {
        parts.leadingZeros += padding;
        padding = 0;
    }
    if (!conversion.left) out.fill(' ', padding);
    out.append(parts.prefix);
    out.fill('0', parts.leadingZeros);
    out.append(parts.digits);
    out.append(parts.point);
    out.fill('0', parts.trailingZeros);
    out.append(parts.tail);
    if (conversion.left) out.fill(' ', padding);
}

std::string_view signText(const Conversion& conversion, bool negative) {
    if (negative) return "-";
    if (conversion.plus) return "+";
    return conversion.blank ? " " : "";
}

void toUpper(char* begin, char* end) {
    std::transform(begin, end, begin,
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
}

void printInteger(BoundedText& out, const Conversion& conversion, unsigned long long magnitude,
                  std::string_view sign) {
    const int base = conversion.kind == 'o' ? 8 : std::strchr("xXp", conversion.kind) ? 16 : 10;
    char digits[24];
    char* end = std::to_chars(digits, digits + sizeof digits, magnitude, base).ptr;
    if (conversion.kind == 'X' || conversion.kind == 'p') toUpper(digits, end);
    // Zero printed with no digits asked for is the empty text.
    if (magnitude == 0 && conversion.precision == 0) end = digits;

    NumberParts parts;
    parts.prefix = sign;
    parts.digits = {digits, static_cast<std::size_t>(end - digits)};
    parts.leadingZeros = std::max<std::int64_t>(
        conversion.precision - static_cast<std::int64_t>(parts.digits.size()), 0);
    if (conversion.alternate) {
        if (conversion.kind == 'x' && magnitude != 0) parts.prefix = "0x";
        if (conversion.kind == 'X' && magnitude != 0) parts.prefix = "0X";
        if (conversion.kind == 'o' && parts.leadingZeros == 0 && !parts.digits.starts_with('0'))
            parts.leadingZeros = 1;
    }
    parts.mayFillWithZeros = conversion.precision < 0;
    printNumber(out, conversion, parts);
}

char* realDigits(char* out, const Conversion& conversion, double value, int precision) {
    switch (conversion.kind) {
        case 'f':
        case 'F':
            return printFixed(out, value, precision);
        case 'e':
        case 'E':
            return printExponent(out, value, precision);
        default:
            return printGeneral(out, value, precision, conversion.alternate);
    }
}

void printReal(BoundedText& out, const Conversion& conversion, double value) {
    const std::int64_t asked = conversion.precision < 0 ? 6 : conversion.precision;
    const int precision = static_cast<int>(std::min<std::int64_t>(asked, kMaxPrecision));
    char text[kNumberTextMax];
    char* end = realDigits(text, conversion, value, precision);
    if (conversion.kind <= 'Z') toUpper(text, end);

    std::string_view number(text, static_cast<std::size_t>(end - text));
    const bool negative = number.starts_with('-');
    if (negative) number.remove_prefix(1);

    NumberParts parts;
    parts.prefix = signText(conversion, negative);
    const std::size_t exponent = std::min(number.find_first_of("eE"), number.size());
    parts.digits = number.substr(0, exponent);
    parts.tail = number.substr(exponent);
    parts.mayFillWithZeros = !number.empty() && number[0] >= '0' && number[0] <= '9';
    if (parts.mayFillWithZeros) {
        const bool general = conversion.kind == 'g' || conversion.kind == 'G';
        if (!general || conversion.alternate) parts.trailingZeros = asked - precision;
        // With '#' the point stays though no digit follows it.
        if (conversion.alternate && parts.digits.find('.') == std::string_view::npos)
            parts.point = ".";
    }
    printNumber(out, conversion, parts);
}

void printText(BoundedText& out, const Conversion& conversion, std::string_view text) {
    if (conversion.kind == 's' && conversion.precision >= 0 &&
        static_cast<std::uint64_t>(conversion.precision) < text.size())
        text = text.substr(0, static_cast<std::size_t>(conversion.precision));
    const std::int64_t padding = conversion.width - static_cast<std::int64_t>(text.size());
    if (!conversion.left) out.fill(' ', padding);
    out.append(text);
    if (conversion.left) out.fill(' ', padding);
}

}  // namespace

const char* parseConversion(const char* at, Conversion& out) {
    ++at;
    while (readFlag(*at, out)) ++at;
    if (*at == '*') {
        out.starWidth = true;
        ++at;
    } else {
        out.width = readCount(at);
    }
    if (*at == '.') {
        ++at;
        if (*at == '*') {
            out.starPrecision = true;
            ++at;
        } else {
            out.precision = readCount(at);
        }
    }
    readLength(at, out);
    out.kind = *at;
    return *at ? at + 1 : at;
}

void printConversion(BoundedText& out, const Conversion& conversion, const TemplateValue& value) {
    switch (conversion.kind) {
        case 'd':
        case 'i': {
            const auto number = std::get<long long>(value);
            const auto bits = static_cast<unsigned long long>(number);
            printInteger(out, conversion, number < 0 ? 0 - bits : bits,
                         signText(conversion, number < 0));
            break;
        }
        case 'c': {
            const char c = static_cast<char>(std::get<long long>(value));
            printText(out, conversion, {&c, 1});
            break;
        }
        case 's':
            printText(out, conversion, std::get<std::string_view>(value));
            break;
        case 'p': {
            Conversion address = conversion;
            address.precision = 2 * sizeof(void*);
            printInteger(out, address, std::get<unsigned long long>(value), "");
            break;
        }
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            printInteger(out, conversion, std::get<unsigned long long>(value), "");
            break;
        default:
            printReal(out, conversion, std::get<double>(value));
            break;
    }
}

}  // namespace toolbox::base

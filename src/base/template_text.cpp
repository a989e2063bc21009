// Walks a template and hands each conversion its value. The two sources of values, a va_list and
// typed values, differ in what a conversion that does not suit its argument gives.
#include "base/template_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

#include "base/template_conversion.h"

namespace toolbox::base {
namespace {

/// What kind of argument a conversion takes.
enum class Takes { nothing, signedInteger, unsignedInteger, real, text };

Takes takes(char kind) {
    switch (kind) {
        case 'd':
        case 'i':
        case 'c':
            return Takes::signedInteger;
        case 'u':
        case 'o':
        case 'x':
        case 'X':
        case 'p':
            return Takes::unsignedInteger;
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
            return Takes::real;
        case 's':
            return Takes::text;
        default:
            return Takes::nothing;
    }
}

/// With a precision the text need not be terminated: no byte beyond it is read.
std::string_view pointedText(const char* text, std::int64_t precision) {
    if (!text) return "(null)";
    if (precision < 0) return text;
    const auto most = static_cast<std::size_t>(precision);
    const void* end = std::memchr(text, '\0', most);
    return {text, end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : most};
}

/// Where the values come from, one conversion after the other.
class ArgumentSource {
  public:
    virtual ~ArgumentSource() = default;
    /// The value of a '*'.
    virtual int star() = 0;
    /// The value for a conversion, of the type that it prints; none when there is none left.
    virtual std::optional<TemplateValue> next(const Conversion& conversion) = 0;
    /// Passes over the argument of a conversion that does not print, where it is known to have one.
    virtual void skip(char kind) = 0;
};

class VariadicArguments final : public ArgumentSource {
  public:
    explicit VariadicArguments(std::va_list arguments) { va_copy(list_, arguments); }
    ~VariadicArguments() override { va_end(list_); }
    VariadicArguments(const VariadicArguments&) = delete;
    VariadicArguments& operator=(const VariadicArguments&) = delete;

    int star() override { return va_arg(list_, int); }

    std::optional<TemplateValue> next(const Conversion& conversion) override {
        if (conversion.kind == 'c') return static_cast<long long>(va_arg(list_, int));
        if (conversion.kind == 'p') {
            const void* address = va_arg(list_, void*);
            return static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address));
        }
        switch (takes(conversion.kind)) {
            case Takes::signedInteger:
                return signedInteger(conversion.length);
            case Takes::unsignedInteger:
                return unsignedInteger(conversion.length);
            case Takes::real:
                if (conversion.length == ArgumentLength::longDouble)
                    return static_cast<double>(va_arg(list_, long double));
                return va_arg(list_, double);
            case Takes::text:
                return pointedText(va_arg(list_, const char*), conversion.precision);
            default:
                return {};
        }
    }

    void skip(char kind) override {
        if (kind == 'n' || kind == 'S') va_arg(list_, void*);
        if (kind == 'a' || kind == 'A') va_arg(list_, double);
        if (kind == 'C') va_arg(list_, int);
    }

  private:
    long long signedInteger(ArgumentLength length) {
        switch (length) {
            case ArgumentLength::byte:
                return static_cast<signed char>(va_arg(list_, int));
            case ArgumentLength::half:
                return static_cast<short>(va_arg(list_, int));
            case ArgumentLength::longWord:
                return va_arg(list_, long);
            case ArgumentLength::bits64:
                return va_arg(list_, long long);
            case ArgumentLength::pointer:
                return va_arg(list_, std::ptrdiff_t);
            default:
                return va_arg(list_, int);
        }
    }

    unsigned long long unsignedInteger(ArgumentLength length) {
        switch (length) {
            case ArgumentLength::byte:
                return static_cast<unsigned char>(va_arg(list_, unsigned));
            case ArgumentLength::half:
                return static_cast<unsigned short>(va_arg(list_, unsigned));
            case ArgumentLength::longWord:
                return va_arg(list_, unsigned long);
            case ArgumentLength::bits64:
                return va_arg(list_, unsigned long long);
            case ArgumentLength::pointer:
                return va_arg(list_, std::size_t);
            default:
                return va_arg(list_, unsigned);
        }
    }

    std::va_list list_;
};

template <class Integer>
Integer saturated(double value) {
    using Limits = std::numeric_limits<Integer>;
    if (std::isnan(value)) return 0;
    if (value <= static_cast<double>(Limits::min())) return Limits::min();
    // The largest integer rounds up to a power of two, which no longer fits.
    if (value >= static_cast<double>(Limits::max())) return Limits::max();
    return static_cast<Integer>(value);
}

/// A negative value wraps at the size that the conversion names, or at the next that holds it: how
/// large the caller's variable was is not known here.
unsigned long long wrapped(long long number, ArgumentLength length) {
    const bool inInt = number >= std::numeric_limits<int>::min();
    const bool plain = length == ArgumentLength::plain || length == ArgumentLength::bits32;
    if (number < 0 && plain && inInt) return static_cast<unsigned>(number);
    if (number < 0 && length == ArgumentLength::longWord) return static_cast<unsigned long>(number);
    return static_cast<unsigned long long>(number);
}

long long asSigned(const TemplateValue& value, ArgumentLength length) {
    long long number = 0;
    if (const auto* real = std::get_if<double>(&value))
        number = saturated<long long>(*real);
    else if (const auto* positive = std::get_if<unsigned long long>(&value))
        number = static_cast<long long>(*positive);
    else if (const auto* any = std::get_if<long long>(&value))
        number = *any;
    if (length == ArgumentLength::byte) return static_cast<signed char>(number);
    if (length == ArgumentLength::half) return static_cast<short>(number);
    return number;
}

unsigned long long asUnsigned(const TemplateValue& value, ArgumentLength length) {
    unsigned long long number = 0;
    if (const auto* real = std::get_if<double>(&value))
        number = saturated<unsigned long long>(*real);
    else if (const auto* positive = std::get_if<unsigned long long>(&value))
        number = *positive;
    else if (const auto* any = std::get_if<long long>(&value))
        number = wrapped(*any, length);
    if (length == ArgumentLength::byte) return static_cast<unsigned char>(number);
    if (length == ArgumentLength::half) return static_cast<unsigned short>(number);
    return number;
}

double asReal(const TemplateValue& value) {
    if (const auto* real = std::get_if<double>(&value)) return *real;
    if (const auto* positive = std::get_if<unsigned long long>(&value))
        return static_cast<double>(*positive);
    if (const auto* any = std::get_if<long long>(&value)) return static_cast<double>(*any);
    return 0.0;
}

/// Values of known type, each made to suit the conversion that takes it.
class TypedArguments final : public ArgumentSource {
  public:
    /// A value alone is meant for the first conversion that prints.
    enum class Star { isZero, takesValue };
    TypedArguments(std::span<const TemplateValue> values, Star star)
        : values_(values), star_(star) {}

    int star() override {
        const TemplateValue* value = star_ == Star::takesValue ? take() : nullptr;
        if (!value) return 0;
        const long long number = asSigned(*value, ArgumentLength::plain);
        return static_cast<int>(std::clamp<long long>(number, std::numeric_limits<int>::min(),
                                                      std::numeric_limits<int>::max()));
    }

    std::optional<TemplateValue> next(const Conversion& conversion) override {
        const TemplateValue* value = take();
        if (!value) return {};
        switch (takes(conversion.kind)) {
            case Takes::signedInteger:
                if (conversion.kind == 'c' && isText(*value)) return firstCharacter(*value);
                return asSigned(*value, conversion.length);
            case Takes::unsignedInteger:
                return asUnsigned(*value, conversion.length);
            case Takes::real:
                return asReal(*value);
            case Takes::text:
                return asText(*value, conversion.precision);
            default:
                return {};
        }
    }

    void skip(char kind) override {
        if (star_ == Star::takesValue && std::strchr("nSaAC", kind)) take();
    }

  private:
    const TemplateValue* take() {
        if (values_.empty()) return nullptr;
        const TemplateValue* value = &values_.front();
        values_ = values_.subspan(1);
        return value;
    }

    static bool isText(const TemplateValue& value) {
        return std::holds_alternative<std::string_view>(value) ||
               std::holds_alternative<const char*>(value);
    }

    long long firstCharacter(const TemplateValue& value) {
        const std::string_view text = asText(value, 1);
        return text.empty() ? 0 : text.front();
    }

    std::string_view asText(const TemplateValue& value, std::int64_t precision) {
        if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
        if (const auto* text = std::get_if<const char*>(&value))
            return pointedText(*text, precision);
        const char* natural = std::holds_alternative<double>(value)      ? "%g"
                              : std::holds_alternative<long long>(value) ? "%lld"
                                                                         : "%llu";
        return {number_, printTemplateValue(number_, sizeof number_, natural, value)};
    }

    std::span<const TemplateValue> values_;
    Star star_;
    char number_[32];
};

bool isPrinted(const Conversion& conversion) {
    // Wide text is not known here.
    if (conversion.kind == 's' && conversion.length == ArgumentLength::longWord) return false;
    return takes(conversion.kind) != Takes::nothing;
}

std::size_t print(char* out, std::size_t size, const char* format, ArgumentSource& source) {
    BoundedText text(out, size);
    // Stops when the buffer is full: the cost is bounded by the buffer and the template.
    for (const char* at = format ? format : ""; *at && !text.full();) {
        const char* percent = std::strchr(at, '%');
        if (!percent) {
            text.append(at);
            break;
        }
        text.append({at, static_cast<std::size_t>(percent - at)});
        Conversion conversion;
        at = parseConversion(percent, conversion);
        if (conversion.starWidth) conversion.setWidth(source.star());
        if (conversion.starPrecision) conversion.setPrecision(source.star());
        if (isPrinted(conversion)) {
            if (const auto value = source.next(conversion))
                printConversion(text, conversion, *value);
            continue;
        }
        source.skip(conversion.kind == 's' ? 'S' : conversion.kind);
        if (conversion.kind == '%')
            text.append("%");
        else if (conversion.kind != 'n')
            text.append({percent, static_cast<std::size_t>(at - percent)});
    }
    return text.finish();
}

}  // namespace

std::size_t printTemplateV(char* out, std::size_t size, const char* format,
                           std::va_list arguments) {
    VariadicArguments source(arguments);
    return print(out, size, format, source);
}

std::size_t printTemplate(char* out, std::size_t size, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::size_t kept = printTemplateV(out, size, format, arguments);
    va_end(arguments);
    return kept;
}

std::size_t printTemplateValue(char* out, std::size_t size, const char* format,
                               const TemplateValue& value) {
    TypedArguments source({&value, 1}, TypedArguments::Star::isZero);
    return print(out, size, format, source);
}

std::size_t printTemplateValues(char* out, std::size_t size, const char* format,
                                std::span<const TemplateValue> values) {
    TypedArguments source(values, TypedArguments::Star::takesValue);
    return print(out, size, format, source);
}

}  // namespace toolbox::base

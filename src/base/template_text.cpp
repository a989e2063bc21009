#include "base/template_text.h"

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
                return text(conversion.precision);
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

    /// With a precision the text need not be terminated: no byte beyond it is read.
    std::string_view text(std::int64_t precision) {
        const char* given = va_arg(list_, const char*);
        if (!given) return "(null)";
        if (precision < 0) return given;
        const auto most = static_cast<std::size_t>(precision);
        const void* end = std::memchr(given, '\0', most);
        return {given,
                end ? static_cast<std::size_t>(static_cast<const char*>(end) - given) : most};
    }

    std::va_list list_;
};

/// One value, made to suit the conversion that takes it.
class SingleArgument final : public ArgumentSource {
  public:
    explicit SingleArgument(const TemplateValue& value) : value_(value) {}

    int star() override { return 0; }
    void skip(char) override {}

    std::optional<TemplateValue> next(const Conversion& conversion) override {
        if (taken_) return {};
        taken_ = true;
        switch (takes(conversion.kind)) {
            case Takes::signedInteger:
                return asSigned(conversion);
            case Takes::unsignedInteger:
                return asUnsigned(conversion.length);
            case Takes::real:
                return asReal();
            case Takes::text:
                return asText();
            default:
                return {};
        }
    }

  private:
    template <class Integer>
    static Integer saturated(double value) {
        using Limits = std::numeric_limits<Integer>;
        if (std::isnan(value)) return 0;
        if (value <= static_cast<double>(Limits::min())) return Limits::min();
        // The largest integer rounds up to a power of two, which no longer fits.
        if (value >= static_cast<double>(Limits::max())) return Limits::max();
        return static_cast<Integer>(value);
    }

    long long asSigned(const Conversion& conversion) const {
        long long number = 0;
        if (const auto* text = std::get_if<std::string_view>(&value_)) {
            if (conversion.kind == 'c' && !text->empty()) number = text->front();
        } else if (const auto* real = std::get_if<double>(&value_)) {
            number = saturated<long long>(*real);
        } else if (const auto* positive = std::get_if<unsigned long long>(&value_)) {
            number = static_cast<long long>(*positive);
        } else {
            number = std::get<long long>(value_);
        }
        if (conversion.length == ArgumentLength::byte) return static_cast<signed char>(number);
        if (conversion.length == ArgumentLength::half) return static_cast<short>(number);
        return number;
    }

    unsigned long long asUnsigned(ArgumentLength length) const {
        unsigned long long number = 0;
        if (const auto* real = std::get_if<double>(&value_))
            number = saturated<unsigned long long>(*real);
        else if (const auto* positive = std::get_if<unsigned long long>(&value_))
            number = *positive;
        else if (const auto* any = std::get_if<long long>(&value_))
            number = wrapped(*any, length);
        if (length == ArgumentLength::byte) return static_cast<unsigned char>(number);
        if (length == ArgumentLength::half) return static_cast<unsigned short>(number);
        return number;
    }

    /// A negative value wraps at the size that the conversion names, or at the next that holds it:
    /// how large the caller's variable was is not known here.
    static unsigned long long wrapped(long long number, ArgumentLength length) {
        const bool inInt = number >= std::numeric_limits<int>::min();
        const bool plain = length == ArgumentLength::plain || length == ArgumentLength::bits32;
        if (number < 0 && plain && inInt) return static_cast<unsigned>(number);
        if (number < 0 && length == ArgumentLength::longWord)
            return static_cast<unsigned long>(number);
        return static_cast<unsigned long long>(number);
    }

    double asReal() const {
        if (const auto* real = std::get_if<double>(&value_)) return *real;
        if (const auto* positive = std::get_if<unsigned long long>(&value_))
            return static_cast<double>(*positive);
        if (const auto* any = std::get_if<long long>(&value_)) return static_cast<double>(*any);
        return 0.0;
    }

    std::string_view asText() {
        if (const auto* text = std::get_if<std::string_view>(&value_)) return *text;
        const char* natural = std::holds_alternative<double>(value_)      ? "%g"
                              : std::holds_alternative<long long>(value_) ? "%lld"
                                                                          : "%llu";
        return {number_, printTemplateValue(number_, sizeof number_, natural, value_)};
    }

    const TemplateValue& value_;
    char number_[32];
    bool taken_ = false;
};

bool isPrinted(const Conversion& conversion) {
    // Wide text is not known here.
    if (conversion.kind == 's' && conversion.length == ArgumentLength::longWord) return false;
    return takes(conversion.kind) != Takes::nothing;
}

std::size_t print(char* out, std::size_t size, const char* format, ArgumentSource& source) {
    BoundedText text(out, size);
    // What lies beyond the room is not looked at: cost is bounded by what is kept and the template.
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
    SingleArgument source(value);
    return print(out, size, format, source);
}

}  // namespace toolbox::base

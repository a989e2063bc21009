// Texts, dates and formatted values of fields. Numbers are read by the typed numbers.
#include "dialog/exchange/field_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <optional>
#include <string>

#include "base/trimmed.h"
#include "dialog/exchange/field_texts.h"
#include "toolbox/numbers.h"

namespace toolbox::dialog {
namespace {

bool isRefused(char c, bool severalLines) {
    const auto code = static_cast<unsigned char>(c);
    constexpr unsigned char kDelete = 0x7F;
    if (severalLines && (c == '\t' || c == '\r' || c == '\n')) return false;
    return code < ' ' || code == kDelete;
}

bool isFrench() {
    return GMSG::language == GMSG::French;
}

/// Three numbers with separators between them; how many digits the first one has counts.
struct DateParts {
    std::array<int, 3> numbers{};
    std::array<std::size_t, 3> digits{};
};

std::optional<DateParts> splitDate(std::string_view text) {
    DateParts parts;
    for (std::size_t i = 0; i < parts.numbers.size(); ++i) {
        const std::size_t start = text.find_first_not_of(' ');
        if (i > 0 && start != std::string_view::npos &&
            std::string_view("/-.").find(text[start]) != std::string_view::npos)
            text = base::trimmed(text.substr(start + 1));
        else
            text = base::trimmed(text);
        const char* const end = text.data() + text.size();
        const auto [after, error] = std::from_chars(text.data(), end, parts.numbers[i]);
        if (error != std::errc() || text.front() == '-') return std::nullopt;
        parts.digits[i] = static_cast<std::size_t>(after - text.data());
        text.remove_prefix(parts.digits[i]);
    }
    if (!text.empty()) return std::nullopt;
    return parts;
}

constexpr std::size_t kYearDigits = 4;

/// The date of three numbers; none when no order of them is meant.
std::optional<TarvDate> dateOf(const DateParts& parts) {
    const auto [first, second, third] = parts.numbers;
    if (parts.digits[0] >= kYearDigits) return TarvDate(first, second, third);
    if (parts.digits[2] < kYearDigits) return std::nullopt;
    constexpr int kMost = 99;
    if (first > kMost || second > kMost) return std::nullopt;
    return isFrench() ? TarvDate(third, second, first) : TarvDate(third, first, second);
}

std::string padded(int number, std::size_t width) {
    std::string text = std::to_string(number);
    if (text.size() < width) text.insert(0, width - text.size(), '0');
    return text;
}

bool scanInteger(const CString& text, NumberFormatedValue& value, CString* why) {
    TvLong number;
    number.setLimits(INT_MIN, INT_MAX);
    long entered = 0;
    if (!number.scan(text, entered, why)) return false;
    value.setValue(static_cast<int>(entered));
    return true;
}

bool scanReal(const CString& text, RealFormatedValue& value, CString* why) {
    double entered = 0;
    if (!TvDouble().scan(text, entered, why)) return false;
    value.setValue(entered);
    return true;
}

bool scanString(std::string_view text, StringFormatedValue& value, CString* why) {
    if (!canStore(text, valueLimit(value), false, why)) return false;
    value.setValue(RWCString(text));
    return true;
}

/// What a format prints, or the short text where it has no room for the number.
std::string numberText(const RWCString& byFormat, const CString& shortest) {
    const std::string_view trimmed = base::trimmed(byFormat.view());
    const bool fits = !trimmed.empty() && trimmed.find('e') == std::string_view::npos;
    return std::string(fits ? trimmed : shortest.view());
}

}  // namespace

bool canStore(std::string_view text, int limit, bool severalLines, CString* why) {
    if (limit > 0 && text.size() > static_cast<std::size_t>(limit)) {
        if (why) *why = printed(kTooLong, limit);
        return false;
    }
    if (std::ranges::none_of(text, [&](char c) { return isRefused(c, severalLines); })) return true;
    if (why) *why = printed(kNoSuchCharacter);
    return false;
}

std::string_view withoutUnits(std::string_view text, std::string_view units) {
    if (units.empty()) return text;
    text = base::trimmed(text);
    if (text.ends_with(units)) text.remove_suffix(units.size());
    return base::trimmed(text);
}

CString dateText(const TarvDate& date) {
    if (!date.isValid()) return {};
    const std::string day = padded(date.getDay(), 2);
    const std::string month = padded(date.getMonth(), 2);
    const std::string year = padded(date.getYear(), kYearDigits);
    return (isFrench() ? day + '/' + month : month + '/' + day) + '/' + year;
}

CString sortedDateText(const TarvDate& date) {
    if (!date.isValid()) return {};
    return padded(date.getYear(), kYearDigits) + '-' + padded(date.getMonth(), 2) + '-' +
           padded(date.getDay(), 2);
}

bool scanDate(std::string_view text, bool mayBeEmpty, TarvDate& date, CString* why) {
    text = base::trimmed(text);
    if (text.empty() && mayBeEmpty) {
        date = TarvDate(0, 0, 0);
        return true;
    }
    const std::optional<DateParts> parts = splitDate(text);
    const std::optional<TarvDate> entered = parts ? dateOf(*parts) : std::nullopt;
    if (entered && entered->isValid() && static_cast<long>(*entered) >= 0) {
        date = *entered;
        return true;
    }
    if (why) {
        constexpr int kExample[] = {2026, 12, 31};
        *why = entered
                   ? printed(kNoSuchDay)
                   : printed(kDateOrder, dateText(TarvDate(kExample[0], kExample[1], kExample[2])));
    }
    return false;
}

CString valueText(FormatedValue& value, const CString& units) {
    if (auto* const text = dynamic_cast<StringFormatedValue*>(&value)) return text->getValue();
    std::string shown;
    if (auto* const integer = dynamic_cast<NumberFormatedValue*>(&value))
        shown = numberText(integer->getStringValue(), TvLong().print(integer->getValue()));
    else if (auto* const real = dynamic_cast<RealFormatedValue*>(&value))
        shown = numberText(real->getStringValue(), TvDouble().print(real->getValue()));
    else
        return {};
    return units.empty() ? shown : shown + ' ' + units.str();
}

int valueLimit(FormatedValue& value) {
    const auto* const text = dynamic_cast<StringFormatedValue*>(&value);
    if (!text || text->getWidth() <= 0) return 0;
    return std::max(text->getWidth(), static_cast<int>(text->getValue().length()));
}

bool scanValue(std::string_view text, const CString& units, FormatedValue& value, CString* why) {
    if (auto* const string = dynamic_cast<StringFormatedValue*>(&value))
        return scanString(text, *string, why);
    const CString number(withoutUnits(text, units.view()));
    if (auto* const integer = dynamic_cast<NumberFormatedValue*>(&value))
        return scanInteger(number, *integer, why);
    if (auto* const real = dynamic_cast<RealFormatedValue*>(&value))
        return scanReal(number, *real, why);
    return true;
}

KeptValue::KeptValue(FormatedValue& value) {
    if (const auto* const integer = dynamic_cast<NumberFormatedValue*>(&value))
        integer_ = integer->getValue();
    if (const auto* const real = dynamic_cast<RealFormatedValue*>(&value)) real_ = real->getValue();
    if (const auto* const text = dynamic_cast<StringFormatedValue*>(&value))
        text_ = text->getValue();
}

void KeptValue::restore(FormatedValue& value) const {
    if (auto* const integer = dynamic_cast<NumberFormatedValue*>(&value))
        integer->setValue(integer_);
    if (auto* const real = dynamic_cast<RealFormatedValue*>(&value)) real->setValue(real_);
    if (auto* const text = dynamic_cast<StringFormatedValue*>(&value)) text->setValue(text_);
}

}  // namespace toolbox::dialog

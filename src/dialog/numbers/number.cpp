// Typed numbers: reading a text, judging a number, and the sentences about both.
#include <algorithm>
#include <cmath>
#include <type_traits>

#include "base/entered_number.h"
#include "dialog/numbers/number_formula.h"
#include "dialog/numbers/number_messages.h"
#include "dialog/numbers/number_rules.h"
#include "dialog/numbers/number_step.h"
#include "dialog/numbers/number_text.h"
#include "toolbox/numbers.h"
#include "toolbox/text.h"

namespace {

using namespace toolbox;
using numbers::Sentence;

numbers::NumberLayout layoutOf(const TvNumberRules& rules) {
    return {rules.width(), rules.decimals(), rules.justification()};
}

/// Not in English, where a comma also separates thousands.
bool commaHasOneReading() {
    return GMSG::language == GMSG::French;
}

template <class T>
CString rangeMessage(const base::EntryCheck& check, const CString& text) {
    using Limits = std::numeric_limits<T>;
    return numbers::entryMessage(check, text.view(), numbers::shortestText(Limits::lowest()),
                                 numbers::shortestText(Limits::max()));
}

}  // namespace

bool TvNumberRules::setFormat(int width, int decimals, Justification justification) {
    if (!numbers::isLayout(width, decimals)) return false;
    width_ = width;
    decimals_ = decimals;
    justification_ = justification;
    rules_ |= HasFormat;
    return true;
}

void TvNumberRules::drop() {
    message_.Empty();
    width_ = 0;
    decimals_ = -1;
    justification_ = Right;
    rules_ = 0;
}

template <class T>
bool TvNumber<T>::setToResStr(unsigned int resourceId) {
    if (resourceId == 0) return false;
    const auto supplied = numbers::readRules<T>(resourceId);
    if (supplied.bits == 0) return false;
    setToDefaults();
    message_ = supplied.message;
    if (supplied.bits & HasFormat)
        setFormat(supplied.layout.width, supplied.layout.decimals, supplied.layout.justification);
    if (supplied.bits & Minimum) minimum_ = supplied.minimum;
    if (supplied.bits & Maximum) maximum_ = supplied.maximum;
    if (supplied.bits & HasDefault) defaultValue_ = supplied.defaultValue;
    forbiddenValues_ = supplied.forbidden;
    rules_ = static_cast<unsigned char>(supplied.bits & ~(HasMessage | HasDefault));
    return true;
}

template <class T>
void TvNumber<T>::setToDefaults() {
    const TvNumber none;
    drop();
    minimum_ = none.minimum_;
    maximum_ = none.maximum_;
    defaultValue_ = none.defaultValue_;
    forbiddenValues_.clear();
}

template <class T>
bool TvNumber<T>::setLimits(T minimum, T maximum) {
    if (!(minimum <= maximum)) return false;
    minimum_ = minimum;
    maximum_ = maximum;
    rules_ |= Minimum | Maximum;
    return true;
}

template <class T>
bool TvNumber<T>::isForbidden(T value) const {
    return std::ranges::find(forbiddenValues_, value) != forbiddenValues_.end();
}

template <class T>
unsigned char TvNumber<T>::brokenRules(T value) const {
    int broken = 0;
    if ((rules_ & Minimum) && !(value >= minimum_)) broken |= Minimum;
    if ((rules_ & Maximum) && !(value <= maximum_)) broken |= Maximum;
    if (isForbidden(value)) broken |= ForbiddenValues;
    return static_cast<unsigned char>(broken);
}

/// A number in a message: in the format when that shows it as it is, and with its units.
template <class T>
CString TvNumber<T>::shown(T value) const {
    std::string text = numbers::roundedText(value, layoutOf(*this));
    T read{};
    const bool same =
        base::readEntry(text, false, read).fault == base::EntryFault::none && read == value;
    if (!same) text = numbers::shortestText(value);
    return units().empty() ? CString(text) : CString(text + " " + units().str());
}

template <class T>
CString TvNumber<T>::ruleMessage(T value, unsigned char broken) const {
    const bool below = (rules_ & Minimum) != 0;
    const bool above = (rules_ & Maximum) != 0;
    if (message().empty()) {
        const CString least = shown(minimum_);
        const CString most = shown(maximum_);
        if ((broken & (Minimum | Maximum)) == 0)
            return numbers::sentence(Sentence::forbidden, {shown(value).view()});
        if (below && above)
            return numbers::sentence(Sentence::between, {least.view(), most.view()});
        return below ? numbers::sentence(Sentence::atLeast, {least.view()})
                     : numbers::sentence(Sentence::atMost, {most.view()});
    }
    std::vector<CString> texts;
    if (below) texts.push_back(shown(minimum_));
    if (above) texts.push_back(shown(maximum_));
    for (const T forbidden : forbiddenValues_) texts.push_back(shown(forbidden));
    CArray<TvOutVal, TvOutVal&> arguments;
    for (const CString& text : texts) arguments.Add(TvOutVal(&text, ""));
    CString result;
    TvFormatMessage(result, message(), arguments);
    return result;
}

template <class T>
bool TvNumber<T>::isValid(CString* errorMessage, const T* value, char* failedRules) const {
    const T judged = value ? *value : value_;
    const unsigned char broken = brokenRules(judged);
    if (broken && errorMessage) *errorMessage = ruleMessage(judged, broken);
    if (failedRules) *failedRules = static_cast<char>(broken);
    return broken == 0;
}

template <class T>
bool TvNumber<T>::isValid(RWCString* errorMessage, const T* value, char* failedRules) const {
    CString message;
    const bool valid = isValid(&message, value, failedRules);
    if (!valid && errorMessage) *errorMessage = message;
    return valid;
}

template <class T>
bool TvNumber<T>::isValid(RWCollectableString* errorMessage, const T* value,
                          char* failedRules) const {
    CString message;
    const bool valid = isValid(&message, value, failedRules);
    if (!valid && errorMessage) *errorMessage = message;
    return valid;
}

template <class T>
bool TvNumber<T>::scanNumber(const CString& text, T& value, CString* why) const {
    const base::EntryCheck check = base::readEntry(text.view(), !commaHasOneReading(), value);
    if (check.fault == base::EntryFault::none) return true;
    if (why) *why = rangeMessage<T>(check, text);
    return false;
}

template <class T>
bool TvNumber<T>::scanFormula(const CString& text, T& value, CString* why) const {
    double result = 0;
    if (!numbers::computeFormula(text.view(), !commaHasOneReading(), result, why)) return false;
    base::EntryCheck check;
    if constexpr (std::is_floating_point_v<T>) {
        check = base::readEntry(numbers::resultText(result).view(), false, value);
    } else {
        const double whole = std::round(result);
        // The first double beyond the type, which a conversion of its largest number might be.
        const double beyond = std::ldexp(1.0, std::numeric_limits<T>::digits);
        if (numbers::resultText(whole) != numbers::resultText(result))
            check.fault = base::EntryFault::notWhole;
        else if (whole < static_cast<double>(std::numeric_limits<T>::min()))
            check.fault = base::EntryFault::tooSmall;
        else if (whole >= beyond)
            check.fault = base::EntryFault::tooLarge;
        else
            value = static_cast<T>(whole);
    }
    if (check.fault == base::EntryFault::none) return true;
    if (why) *why = rangeMessage<T>(check, text);
    return false;
}

template <class T>
bool TvNumber<T>::scan(const CString& text, T& value, CString* why) const {
    T entered{};
    const bool formula = allowsFormula() && numbers::isFormula(text.view());
    if (!(formula ? scanFormula(text, entered, why) : scanNumber(text, entered, why))) return false;
    if (!isValid(why, &entered, nullptr)) return false;
    value = entered;
    return true;
}

template <class T>
CString TvNumber<T>::print(T value) const {
    const numbers::NumberLayout layout = layoutOf(*this);
    return numbers::justified(numbers::roundedText(value, layout), layout);
}

template <class T>
T TvNumber<T>::step(T value, int steps, double size) const {
    if (!std::isfinite(static_cast<double>(value)) || !std::isfinite(size)) return value;
    // One more step for each forbidden value that is met, which no two steps share.
    for (std::size_t more = 0; more <= forbiddenValues_.size(); ++more) {
        const auto further = static_cast<long long>(more);
        const long long count = steps < 0 ? steps - further : steps + further;
        const T result = std::clamp(numbers::decimalStep(value, count, size), minimum_, maximum_);
        if (!isForbidden(result)) return result;
        if (steps == 0) break;
    }
    return value;
}

template <class T>
bool TvNumber<T>::couldBecome(const CString& text) const {
    const auto hasShape = [](char c) {
        return static_cast<unsigned char>(c) >= ' ' && c != '\177';
    };
    if (allowsFormula() && numbers::isFormula(text.view()))
        return std::ranges::all_of(text.view(), hasShape);
    const base::EntryParts parts = base::entryParts(text.view());
    if (std::is_integral_v<T> && parts.sign != std::string_view::npos) return false;
    using base::EntryFault;
    return parts.fault == EntryFault::none || parts.fault == EntryFault::empty ||
           parts.fault == EntryFault::incomplete;
}

template <class T>
bool TvNumber<T>::allows(char c) const {
    if (c >= '0' && c <= '9') return true;
    if (c == '.' || c == ',') return allowsFormula() || std::is_floating_point_v<T>;
    if (allowsFormula()) return c >= ' ' && c < '\177';
    return c != '\0' && std::string_view(" +-eE").find(c) != std::string_view::npos;
}

template class TvNumber<short>;
template class TvNumber<unsigned short>;
template class TvNumber<long>;
template class TvNumber<unsigned long>;
template class TvNumber<float>;
template class TvNumber<double>;

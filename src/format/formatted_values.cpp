// Values with their formats. Equality of reals is within a unit of the last decimal.
#include <charconv>
#include <cmath>
#include <limits>

#include "base/real_chars.h"
#include "toolbox/formats.h"

namespace {

/// The unit of the last decimal, the same double on every system: read from its decimal text, since
/// pow() differs between C libraries in the last digit.
double tolerance(int precision) {
    if (precision == 0) return 0.1;
    char text[16] = "1e";
    const char* const end =
        std::to_chars(text + 2, text + sizeof text, -static_cast<long long>(precision)).ptr;
    double unit = precision > 0 ? 0.0 : std::numeric_limits<double>::infinity();
    toolbox::base::realFromChars(text, end,
                                 unit);  // leaves `unit` alone beyond the range of a double
    return unit;
}

}  // namespace

FormatedValue::~FormatedValue() = default;

NumberFormatedValue::NumberFormatedValue() = default;
NumberFormatedValue::NumberFormatedValue(const NumberFormatedValue& other)
    : FormatType(), NumberFormat(other), FormatedValue(), value_(other.value_) {}
NumberFormatedValue::~NumberFormatedValue() = default;

NumberFormatedValue& NumberFormatedValue::operator=(const NumberFormatedValue& other) {
    NumberFormat::operator=(other);
    setValue(other.getValue());
    return *this;
}

NumberFormatedValue& NumberFormatedValue::operator=(int value) {
    setValue(value);
    return *this;
}

int NumberFormatedValue::operator==(const FormatType& other) const {
    return NumberFormat::operator==(other);
}

int NumberFormatedValue::operator==(const NumberFormatedValue& other) const {
    return NumberFormat::operator==(static_cast<const NumberFormat&>(other)) &&
           value_ == other.value_;
}

const char* NumberFormatedValue::getClassName() const {
    return "NumberFormatedValue";
}
int NumberFormatedValue::isA(const FormatType& other) const {
    return other.isNumber();
}
RWCString NumberFormatedValue::getStringValue() {
    return getString(getValue());
}

RealFormatedValue::RealFormatedValue() = default;
RealFormatedValue::RealFormatedValue(const RealFormatedValue& other)
    : FormatType(), RealFormat(other), FormatedValue(), value_(other.value_) {}
RealFormatedValue::~RealFormatedValue() = default;

RealFormatedValue& RealFormatedValue::operator=(const RealFormatedValue& other) {
    RealFormat::operator=(other);
    setValue(other.getValue());
    return *this;
}

RealFormatedValue& RealFormatedValue::operator=(double value) {
    setValue(value);
    return *this;
}

int RealFormatedValue::operator==(const FormatType& other) const {
    return RealFormat::operator==(other);
}

int RealFormatedValue::operator==(const RealFormatedValue& other) const {
    return RealFormat::operator==(static_cast<const RealFormat&>(other)) &&
           std::fabs(value_ - other.value_) < tolerance(getPrecision());
}

const char* RealFormatedValue::getClassName() const {
    return "RealFormatedValue";
}
int RealFormatedValue::isA(const FormatType& other) const {
    return other.isReal();
}
RWCString RealFormatedValue::getStringValue() {
    return getString(getValue());
}

StringFormatedValue::StringFormatedValue() = default;
StringFormatedValue::StringFormatedValue(const StringFormatedValue& other)
    : FormatType(), StringFormat(other), FormatedValue(), value_(other.value_) {}
StringFormatedValue::~StringFormatedValue() = default;

StringFormatedValue& StringFormatedValue::operator=(const StringFormatedValue& other) {
    StringFormat::operator=(other);
    setValue(other.getValue());
    return *this;
}

StringFormatedValue& StringFormatedValue::operator=(const RWCString& value) {
    setValue(value);
    return *this;
}

int StringFormatedValue::operator==(const FormatType& other) const {
    return StringFormat::operator==(other);
}

int StringFormatedValue::operator==(const StringFormatedValue& other) const {
    return StringFormat::operator==(static_cast<const StringFormat&>(other));
}

const char* StringFormatedValue::getClassName() const {
    return "StringFormatedValue";
}
int StringFormatedValue::isA(const FormatType& other) const {
    return other.isString();
}
RWCString StringFormatedValue::getStringValue() {
    return getString(value_);
}

NoFormatedValue::NoFormatedValue() = default;
NoFormatedValue::NoFormatedValue(const NoFormatedValue& other)
    : FormatType(), NoFormatType(other), FormatedValue() {}
NoFormatedValue::~NoFormatedValue() = default;
NoFormatedValue& NoFormatedValue::operator=(const NoFormatedValue&) {
    return *this;
}
int NoFormatedValue::operator==(const FormatType&) const {
    return 1;
}
int NoFormatedValue::isA(const FormatType&) const {
    return 0;
}
RWCString NoFormatedValue::getStringValue() {
    return {};
}

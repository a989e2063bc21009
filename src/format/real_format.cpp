// The format of reals, the kind whose setters check; the layout is in layout.cpp.
#include "format/format_type.h"
#include "format/layout.h"
#include "toolbox/formats.h"

using namespace toolbox::format;

RealFormat::RealFormat() = default;
RealFormat::RealFormat(const RealFormat& other) : FormatType() {
    *this = other;
}
RealFormat::RealFormat(const FormatType& other) {
    RealFormat::setFormat(other);
}
RealFormat::~RealFormat() = default;

RealFormat& RealFormat::operator=(const RealFormat& other) {
    setWidth(other.getWidth());
    setJustify(other.getJustify());
    setPrecision(other.getPrecision());
    return *this;
}

RealFormat& RealFormat::operator=(const FormatType& other) {
    if (!other.isReal()) return *this;
    setWidth(other.getWidth());
    setJustify(other.getJustify());
    setPrecision(other.getPrecision());
    return *this;
}

int RealFormat::operator==(const FormatType& other) const {
    return other.isReal() && getWidth() == other.getWidth() && getJustify() == other.getJustify() &&
           getPrecision() == other.getPrecision();
}

int RealFormat::operator==(const RealFormat& other) const {
    return getWidth() == other.getWidth() && getJustify() == other.getJustify() &&
           getPrecision() == other.getPrecision();
}

int RealFormat::setFormat(const FormatType& other) {
    if (!other.isReal()) return 0;
    return setFormat(other.getWidth(), other.getPrecision(), other.getJustify());
}

int RealFormat::setFormat(int width, int precision, Justification justify) {
    return setWidth(width) && setPrecision(precision) && setJustify(justify);
}

RWCString RealFormat::saveStringFormat() {
    std::string text;
    saveNumber(text, getWidth());
    saveNumber(text, getPrecision());
    saveJustify(text, getJustify());
    return text;
}

int RealFormat::restoreStringFormat(const RWCString& text) {
    SavedTextReader reader(text);
    const auto width = reader.number();
    const auto precision = width ? reader.number() : std::nullopt;
    const auto letter = precision ? reader.letter() : std::nullopt;
    if (!letter) return 0;
    const int widthDone = setWidth(*width);
    const int precisionDone = setPrecision(*precision);
    return restoreJustify(*this, *letter) && widthDone && precisionDone;
}

const char* RealFormat::getClassName() const {
    return "RealFormat";
}
RWCString RealFormat::getFormatName() {
    return "REAL";
}
int RealFormat::isA(const FormatType& other) const {
    return other.isReal();
}
int RealFormat::isString() const {
    return 0;
}
int RealFormat::isReal() const {
    return 1;
}
int RealFormat::isNumber() const {
    return 0;
}
int RealFormat::getWidth() const {
    return width_;
}
Justification RealFormat::getJustify() const {
    return justify_;
}
int RealFormat::getPrecision() const {
    return precision_;
}

int RealFormat::setWidth(int width) {
    if (width < 2) return 0;
    width_ = width;
    return 1;
}

int RealFormat::setJustify(Justification justify) {
    justify_ = justify;
    return 1;
}

int RealFormat::setPrecision(int precision) {
    if (precision >= getWidth() - 1LL) return 0;
    precision_ = precision;
    return 1;
}

RWCString RealFormat::getTypeName(HWND window) const {
    return typeName(window, 1201);
}

RWCString RealFormat::getString(double value) {
    return layOutReal(value, getWidth(), getPrecision(), getJustify());
}

int RealFormat::fits(double value) const {
    return realFits(value, getWidth(), getPrecision());
}

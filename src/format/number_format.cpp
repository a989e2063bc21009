// The format of integers. Any width is accepted; the layout is in layout.cpp.
#include "format/format_type.h"
#include "format/layout.h"
#include "toolbox/formats.h"

using namespace toolbox::format;

NumberFormat::NumberFormat() = default;
NumberFormat::NumberFormat(const NumberFormat& other) : FormatType() {
    *this = other;
}
NumberFormat::NumberFormat(const FormatType& other) {
    NumberFormat::setFormat(other);
}
NumberFormat::~NumberFormat() = default;

NumberFormat& NumberFormat::operator=(const NumberFormat& other) {
    setWidth(other.getWidth());
    setJustify(other.getJustify());
    return *this;
}

NumberFormat& NumberFormat::operator=(const FormatType& other) {
    if (!other.isNumber()) return *this;
    setWidth(other.getWidth());
    setJustify(other.getJustify());
    return *this;
}

int NumberFormat::operator==(const FormatType& other) const {
    return other.isNumber() && getWidth() == other.getWidth() && getJustify() == other.getJustify();
}

int NumberFormat::operator==(const NumberFormat& other) const {
    return getWidth() == other.getWidth() && getJustify() == other.getJustify();
}

int NumberFormat::setFormat(const FormatType& other) {
    if (!other.isNumber()) return 0;
    width_ = other.getWidth();
    justify_ = other.getJustify();
    return 1;
}

int NumberFormat::setFormat(int width, Justification justify) {
    return setWidth(width) && setJustify(justify);
}

RWCString NumberFormat::saveStringFormat() {
    return saveColumn(*this);
}

int NumberFormat::restoreStringFormat(const RWCString& text) {
    return restoreColumn(*this, text);
}

const char* NumberFormat::getClassName() const {
    return "NumberFormat";
}
RWCString NumberFormat::getFormatName() {
    return "NUM";
}
int NumberFormat::isA(const FormatType& other) const {
    return other.isNumber();
}
int NumberFormat::isString() const {
    return 0;
}
int NumberFormat::isReal() const {
    return 0;
}
int NumberFormat::isNumber() const {
    return 1;
}
int NumberFormat::getWidth() const {
    return width_;
}
Justification NumberFormat::getJustify() const {
    return justify_;
}
int NumberFormat::getPrecision() const {
    return 0;
}

int NumberFormat::setWidth(int width) {
    width_ = width;
    return 1;
}

int NumberFormat::setJustify(Justification justify) {
    justify_ = justify;
    return 1;
}

int NumberFormat::setPrecision(int) {
    return 1;
}

RWCString NumberFormat::getTypeName(HWND window) const {
    return typeName(window, 1200);
}

RWCString NumberFormat::getString(int value) const {
    return layOutNumber(value, getWidth(), getJustify());
}

int NumberFormat::fits(int value) const {
    return numberFits(value, getWidth());
}

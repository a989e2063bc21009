// The format of strings. Any width is accepted, no precision is.
#include "format/format_type.h"
#include "format/layout.h"
#include "toolbox/formats.h"

using namespace toolbox::format;

StringFormat::StringFormat() = default;
StringFormat::StringFormat(const StringFormat& other) : FormatType() {
    *this = other;
}
StringFormat::StringFormat(const FormatType& other) {
    StringFormat::setFormat(other);
}
StringFormat::~StringFormat() = default;

StringFormat& StringFormat::operator=(const StringFormat& other) {
    setWidth(other.getWidth());
    setJustify(other.getJustify());
    return *this;
}

StringFormat& StringFormat::operator=(const FormatType& other) {
    if (!other.isString()) return *this;
    setWidth(other.getWidth());
    setJustify(other.getJustify());
    return *this;
}

int StringFormat::operator==(const FormatType& other) const {
    return other.isString() && getWidth() == other.getWidth() && getJustify() == other.getJustify();
}

int StringFormat::operator==(const StringFormat& other) const {
    return getWidth() == other.getWidth() && getJustify() == other.getJustify();
}

int StringFormat::setFormat(const FormatType& other) {
    if (!other.isString()) return 0;
    width_ = other.getWidth();
    justify_ = other.getJustify();
    return 1;
}

int StringFormat::setFormat(int width, Justification justify) {
    return setWidth(width) && setJustify(justify);
}

RWCString StringFormat::saveStringFormat() {
    return saveColumn(*this);
}

int StringFormat::restoreStringFormat(const RWCString& text) {
    return restoreColumn(*this, text);
}

const char* StringFormat::getClassName() const {
    return "StringFormat";
}
RWCString StringFormat::getFormatName() {
    return "STRING";
}
int StringFormat::isA(const FormatType& other) const {
    return other.isString();
}
int StringFormat::isString() const {
    return 1;
}
int StringFormat::isReal() const {
    return 0;
}
int StringFormat::isNumber() const {
    return 0;
}
int StringFormat::getWidth() const {
    return width_;
}
Justification StringFormat::getJustify() const {
    return justify_;
}
int StringFormat::getPrecision() const {
    return 0;
}

int StringFormat::setWidth(int width) {
    width_ = width;
    return 1;
}

int StringFormat::setJustify(Justification justify) {
    justify_ = justify;
    return 1;
}

int StringFormat::setPrecision(int) {
    return 0;
}

RWCString StringFormat::getTypeName(HWND window) const {
    return typeName(window, 1202);
}

RWCString StringFormat::getString(const RWCString& text) const {
    return inField(text.view(), getWidth(), getJustify());
}

int StringFormat::fits(const RWCString& text) const {
    return static_cast<long long>(text.length()) <= getWidth();
}

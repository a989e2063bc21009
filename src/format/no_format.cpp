// The format that stands for "no format": every setting is accepted and none kept.
#include "toolbox/formats.h"

NoFormatType::NoFormatType() = default;
NoFormatType::NoFormatType(const NoFormatType&) : FormatType() {}
NoFormatType::NoFormatType(const FormatType&) {}
NoFormatType::~NoFormatType() = default;
NoFormatType& NoFormatType::operator=(const NoFormatType&) {
    return *this;
}
NoFormatType& NoFormatType::operator=(const FormatType&) {
    return *this;
}
int NoFormatType::operator==(const FormatType&) const {
    return 1;
}

int NoFormatType::setFormat(const FormatType&) {
    return 1;
}
RWCString NoFormatType::saveStringFormat() {
    return {};
}
int NoFormatType::restoreStringFormat(const RWCString&) {
    return 0;
}
const char* NoFormatType::getClassName() const {
    return "NoFormatType";
}
RWCString NoFormatType::getFormatName() {
    return "NONE";
}
int NoFormatType::isA(const FormatType&) const {
    return 0;
}
int NoFormatType::isString() const {
    return 0;
}
int NoFormatType::isReal() const {
    return 0;
}
int NoFormatType::isNumber() const {
    return 0;
}
int NoFormatType::getWidth() const {
    return 0;
}
Justification NoFormatType::getJustify() const {
    return Left;
}
int NoFormatType::getPrecision() const {
    return 0;
}
int NoFormatType::setWidth(int) {
    return 1;
}
int NoFormatType::setJustify(Justification) {
    return 1;
}
int NoFormatType::setPrecision(int) {
    return 1;
}

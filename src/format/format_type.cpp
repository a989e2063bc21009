#include "toolbox/formats.h"

FormatType::~FormatType() = default;

RWCString FormatType::getTypeName(HWND) const {
    return {};
}

FormatedValue::~FormatedValue() = default;

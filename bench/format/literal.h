// The formats done the plain way, rule by rule with the C library: the oracle that the
// library's results are checked against, and what its speed is compared with.
#pragma once

#include <string>

#include "toolbox/formats.h"

namespace literal {

RWCString number(int value, int width, Justification justify);
RWCString real(double value, int width, int precision, Justification justify);

/// Digits of the integer part by the logarithm, which floating point may round up to a whole
/// number.
int digits(double value);

}  // namespace literal

/// Compares the library with the oracle; ends the program with a message at the first difference.
void checkFormats();

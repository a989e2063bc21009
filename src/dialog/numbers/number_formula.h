// Formulas entered where a number is expected.
#pragma once

#include <string_view>

#include "toolbox/strings.h"

namespace toolbox::numbers {

/// True for a text whose first character but blanks is '='.
[[nodiscard]] bool isFormula(std::string_view text);

/// Computes such a text. False, and `why` unless null, when it is no formula, names a cell or has
/// no finite result. With `oneReading` a comma that could separate thousands is refused.
bool computeFormula(std::string_view text, bool oneReading, double& result, CString* why);

/// The text of a result with 15 significant digits.
[[nodiscard]] CString resultText(double result);

}  // namespace toolbox::numbers

// How integers and reals are laid out in a field.
#pragma once

#include "toolbox/formats.h"

namespace toolbox::format {

[[nodiscard]] RWCString layOutNumber(int value, int width, Justification justify);
[[nodiscard]] RWCString layOutReal(double value, int width, int precision, Justification justify);

}  // namespace toolbox::format

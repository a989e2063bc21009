// Steps of numbers in decimal.
#pragma once

namespace toolbox::numbers {

/// `value` and `steps` times `size`, which are finite, each taken as its shortest decimal text; the
/// nearest number of the type, or the nearer end of its range. Integers round ties away from zero.
template <class T>
[[nodiscard]] T decimalStep(T value, long long steps, double size);

}  // namespace toolbox::numbers

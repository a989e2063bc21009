// Reading the rules of a typed number from its resource text.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "dialog/numbers/number_text.h"
#include "toolbox/strings.h"

namespace toolbox::numbers {

/// What a resource text supplies; of the fields only those whose bit is set.
template <class T>
struct SuppliedRules {
    unsigned char bits = 0;  ///< TvNumberRules::Rule
    CString message;
    T minimum{};
    T maximum{};
    T defaultValue{};
    NumberLayout layout;
    std::vector<T> forbidden;
};

/// The rules of resource text `id`. Traces each field that cannot be read and leaves it out. No
/// bits when the text is missing, has no such tag or supplies no rule.
template <class T>
[[nodiscard]] SuppliedRules<T> readRules(unsigned int id);

/// False for a width or decimals that no column has.
[[nodiscard]] bool isLayout(int width, int decimals);

}  // namespace toolbox::numbers

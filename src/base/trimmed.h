// Text without what surrounds it.
#pragma once

#include <algorithm>
#include <string_view>

namespace toolbox::base {

/// Without `blanks`, a character or several, at both ends.
template <class Blanks = char>
[[nodiscard]] std::string_view trimmed(std::string_view text, Blanks blanks = ' ') {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

}  // namespace toolbox::base

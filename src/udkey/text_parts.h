// Small cuts of text that the key family shares.
#pragma once

#include <algorithm>
#include <string_view>

namespace toolbox::udkey {

/// Without the blanks at both ends.
inline std::string_view stripped(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace toolbox::udkey

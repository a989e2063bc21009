// Parts of file names.
#pragma once

#include <string_view>

namespace toolbox {

/// Index of the last '/' or '\'; npos when there is none.
[[nodiscard]] inline std::size_t lastSeparator(std::string_view path) {
    return path.find_last_of("/\\");
}

}  // namespace toolbox

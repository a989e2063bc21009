// Words and padded texts in the bytes of a file.
#pragma once

#include <cstdint>
#include <string_view>

#include "file/block/layout.h"

namespace toolbox {

[[nodiscard]] inline std::uint32_t wordAt(const char* bytes) {
    return base::load<std::uint32_t>(bytes);
}

/// After the first zero of a field there are only zeros.
[[nodiscard]] bool isPadded(std::string_view field);

}  // namespace toolbox

#include "format/field.h"

namespace toolbox::format {

RWCString inField(std::string_view text, int width, Justification justify) {
    if (width <= 0) return {};
    const auto columns = static_cast<std::size_t>(width);
    if (text.size() >= columns) return text.substr(0, columns);
    return writtenInField(static_cast<int>(text.size()), width, justify,
                          [&](char* out) { text.copy(out, text.size()); });
}

}  // namespace toolbox::format

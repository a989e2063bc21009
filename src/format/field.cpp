#include "format/field.h"

namespace toolbox::format {

std::string inField(std::string_view text, int width, Justification justify) {
    if (width <= 0) return {};
    const auto columns = static_cast<std::size_t>(width);
    if (text.size() >= columns) return std::string(text.substr(0, columns));
    std::string field(columns, ' ');
    text.copy(field.data() + (justify == Left ? 0 : columns - text.size()), text.size());
    return field;
}

std::string inField(std::string_view text, std::size_t at, std::size_t zeros, int width,
                    Justification justify) {
    if (zeros == 0) return inField(text, width, justify);
    std::string longer(text);
    longer.insert(at, zeros, '0');
    return inField(longer, width, justify);
}

}  // namespace toolbox::format

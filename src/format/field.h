// Text in a field of a format's width.
#pragma once

#include <cstddef>
#include <string_view>

#include "toolbox/formats.h"

namespace toolbox::format {

/// The text padded with blanks to `width` characters on the side that `justify` leaves free; a
/// longer text is cut to its first `width` characters, to nothing when `width` is negative.
[[nodiscard]] RWCString inField(std::string_view text, int width, Justification justify);

/// A field of `width` blanks that takes a text of `length` characters, which `write` writes to the
/// place it is given. The text is not longer than the field.
template <class Write>
[[nodiscard]] RWCString writtenInField(int length, int width, Justification justify, Write write) {
    RWCString field;
    field.str().assign(static_cast<std::size_t>(width), ' ');
    write(field.str().data() + (justify == Left ? 0 : width - length));
    return field;
}

}  // namespace toolbox::format

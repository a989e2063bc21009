// Widths of characters in the standard fonts.
#pragma once

#include "toolbox/canvas_text.h"

namespace toolbox::canvas {

/// Whether Windows-1252, or the encoding of Symbol, has a character that can be seen, or a space,
/// for the byte.
[[nodiscard]] bool hasCharacter(char byte, bool symbol);

/// In thousandths of the size; 0 without a character.
[[nodiscard]] int widthOf(const TvFont& font, char byte, bool symbol);

}  // namespace toolbox::canvas

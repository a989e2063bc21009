// The characters of the Symbol font.
#pragma once

namespace toolbox::canvas {

/// 0 where the font has no character.
[[nodiscard]] char32_t unicodeOfSymbol(char byte);

/// The byte of a character in the font's encoding; 0 when it has none.
[[nodiscard]] char symbolOf(char32_t code);

}  // namespace toolbox::canvas

// The standard fonts as objects of a PDF file.
#pragma once

#include <cstddef>
#include <string>

#include "toolbox/canvas_text.h"

namespace toolbox::canvas {

/// Text fonts by family, with 1 for bold and 2 for italic added, and Symbol.
inline constexpr std::size_t kPdfFonts = 13;
inline constexpr std::size_t kPdfSymbol = kPdfFonts - 1;

[[nodiscard]] inline std::size_t pdfFont(const TvFont& font, bool symbol) {
    if (symbol) return kPdfSymbol;
    return std::size_t{font.family} * 4 + (font.bold ? 1 : 0) + (font.italic ? 2 : 0);
}

/// The font's dictionary; `descriptor` and `unicode` are numbers of objects. Only Symbol names the
/// latter.
[[nodiscard]] std::string pdfFontObject(std::size_t font, std::size_t descriptor,
                                        std::size_t unicode);
/// Its descriptor, which readers need that have another font in its place.
[[nodiscard]] std::string pdfDescriptor(std::size_t font);
/// What the characters of Symbol are in Unicode, as the contents of a stream.
[[nodiscard]] std::string pdfSymbolUnicode();

}  // namespace toolbox::canvas

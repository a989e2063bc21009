// Facts of the standard fonts from their published metrics files.
#include "canvas/pdf_fonts.h"

#include <array>

#include "canvas/font/symbol.h"
#include "canvas/font/widths.h"
#include "canvas/number_writer.h"

namespace toolbox::canvas {
namespace {

constexpr int kFirst = 32;
constexpr int kLast = 255;

struct Facts {
    const char* name;
    const char* box;  ///< around all characters
    const char* slope;
    const char* ascent;
    const char* descent;
    const char* capitals;
    const char* stem;
    int flags;  ///< 1 fixed widths, 2 serifs, 4 symbolic, 32 not symbolic, 64 italic
};

constexpr std::array<Facts, kPdfFonts> kFacts = {{
    {"Helvetica", "-166 -225 1000 931", "0", "718", "-207", "718", "88", 32},
    {"Helvetica-Bold", "-170 -228 1003 962", "0", "718", "-207", "718", "140", 32},
    {"Helvetica-Oblique", "-170 -225 1116 931", "-12", "718", "-207", "718", "88", 96},
    {"Helvetica-BoldOblique", "-174 -228 1114 962", "-12", "718", "-207", "718", "140", 96},
    {"Times-Roman", "-168 -218 1000 898", "0", "683", "-217", "662", "84", 34},
    {"Times-Bold", "-168 -218 1000 935", "0", "683", "-217", "676", "139", 34},
    {"Times-Italic", "-169 -217 1010 883", "-15.5", "683", "-217", "653", "76", 98},
    {"Times-BoldItalic", "-200 -218 996 921", "-15", "683", "-217", "669", "121", 98},
    {"Courier", "-23 -250 715 805", "0", "629", "-157", "562", "51", 33},
    {"Courier-Bold", "-113 -250 749 801", "0", "629", "-157", "562", "106", 33},
    {"Courier-Oblique", "-27 -250 849 805", "-12", "629", "-157", "562", "51", 97},
    {"Courier-BoldOblique", "-57 -250 869 801", "-12", "629", "-157", "562", "106", 97},
    {"Symbol", "-180 -293 1090 1010", "0", "1010", "-293", "673", "85", 4},
}};

TvFont fontOf(std::size_t font) {
    TvFont result;
    if (font == kPdfSymbol) return result;
    result.family = static_cast<TvFont::Family>(font / 4);
    result.bold = (font & 1) != 0;
    result.italic = (font & 2) != 0;
    return result;
}

void appendWidths(std::string& out, std::size_t font) {
    out += " /FirstChar 32 /LastChar 255 /Widths [";
    for (int code = kFirst; code <= kLast; ++code) {
        const int width = widthOf(fontOf(font), static_cast<char>(code), font == kPdfSymbol);
        appendCount(out, static_cast<std::size_t>(width));
        out += code % 16 == 15 ? '\n' : ' ';
    }
    out.back() = ']';
}

}  // namespace

std::string pdfFontObject(std::size_t font, std::size_t descriptor, std::size_t unicode) {
    std::string out = "<< /Type /Font /Subtype /Type1 /BaseFont /";
    out += kFacts[font].name;
    // Symbol is read in the encoding that it has itself.
    if (font != kPdfSymbol) out += " /Encoding /WinAnsiEncoding";
    appendWidths(out, font);
    out += " /FontDescriptor ";
    appendCount(out, descriptor);
    out += " 0 R";
    if (font == kPdfSymbol) {
        out += " /ToUnicode ";
        appendCount(out, unicode);
        out += " 0 R";
    }
    return out += " >>";
}

std::string pdfDescriptor(std::size_t font) {
    const Facts& facts = kFacts[font];
    std::string out = "<< /Type /FontDescriptor /Flags ";
    appendCount(out, static_cast<std::size_t>(facts.flags));
    const auto add = [&](const char* before, const char* text) { (out += before) += text; };
    add(" /FontName /", facts.name);
    add(" /FontBBox [", facts.box);
    add("] /ItalicAngle ", facts.slope);
    add(" /Ascent ", facts.ascent);
    add(" /Descent ", facts.descent);
    add(" /CapHeight ", facts.capitals);
    add(" /StemV ", facts.stem);
    return out += " >>";
}

std::string pdfSymbolUnicode() {
    constexpr int kInBlock = 100;  // a block holds no more
    std::string out =
        "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
        "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
        "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
        "1 begincodespacerange\n<00> <FF>\nendcodespacerange\n";
    std::string block;
    int count = 0;
    const auto flush = [&] {
        if (count == 0) return;
        appendCount(out, static_cast<std::size_t>(count));
        out += " beginbfchar\n" + block + "endbfchar\n";
        block.clear();
        count = 0;
    };
    for (int code = kFirst; code <= kLast; ++code) {
        const char32_t unicode = unicodeOfSymbol(static_cast<char>(code));
        if (unicode == 0) continue;
        block += '<';
        appendHex(block, static_cast<unsigned>(code), 2);
        block += "> <";
        appendHex(block, unicode, 4);
        block += ">\n";
        if (++count == kInBlock) flush();
    }
    flush();
    return out += "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

}  // namespace toolbox::canvas

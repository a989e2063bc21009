// Pens are geometric, for flat ends; one of a unit is a plain one, which systems draw faster.
// Dashes are lines of their own, so that no pen has any: not every system keeps them in a metafile.
#include "canvas/device/gdi_tools_win32.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace toolbox::canvas {
namespace {

constexpr std::size_t kFontsKept = 32;

[[nodiscard]] COLORREF colorOf(TvColor color) {
    return RGB(color.red, color.green, color.blue);
}

/// A unit at least; not more than pens are ever seen of.
[[nodiscard]] DWORD lengthOf(double units) {
    return static_cast<DWORD>(std::clamp(std::floor(units + 0.5), 1.0, 1e6));
}

/// The family serves systems without the font to choose another.
struct FaceName {
    const char* name;
    BYTE family;
};
constexpr FaceName kFaces[] = {{"Arial", VARIABLE_PITCH | FF_SWISS},
                               {"Times New Roman", VARIABLE_PITCH | FF_ROMAN},
                               {"Courier New", FIXED_PITCH | FF_MODERN},
                               {"Symbol", VARIABLE_PITCH | FF_DONTCARE}};

[[nodiscard]] HFONT makeFont(const GdiFace& face) {
    LOGFONTA font{};
    font.lfHeight = -face.height;  // negative: the size, not the line's height
    font.lfEscapement = font.lfOrientation = face.turn;
    font.lfWeight = face.bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = face.italic;
    font.lfCharSet = face.kind == GdiFace::symbol ? SYMBOL_CHARSET : ANSI_CHARSET;
    font.lfOutPrecision = OUT_TT_PRECIS;
    font.lfPitchAndFamily = kFaces[face.kind].family;
    std::strcpy(font.lfFaceName, kFaces[face.kind].name);
    return CreateFontIndirectA(&font);
}

}  // namespace

bool GdiTools::select(HGDIOBJ object, HGDIOBJ& selected) {
    if (!object) return false;
    if (object == selected) return true;
    const HGDIOBJ before = SelectObject(dc_, object);
    if (!before || before == HGDI_ERROR) return false;
    selected = object;
    return true;
}

HGDIOBJ GdiTools::makePen(const TvPen& pen, bool smooth) const {
    const DWORD width = lengthOf(pen.width * unitsPerPoint_);
    if (width == 1) return CreatePen(PS_SOLID, 1, colorOf(pen.color));
    const LOGBRUSH brush{BS_SOLID, colorOf(pen.color), 0};
    const DWORD joins = smooth ? PS_JOIN_MITER : PS_JOIN_ROUND;
    return ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_FLAT | joins, width, &brush, 0,
                        nullptr);
}

bool GdiTools::usePen(const TvPen* pen, bool smooth) {
    if (!pen) return select(GetStockObject(NULL_PEN), selectedPen_);
    if (pen_ && penKey_ == *pen && smooth_ == smooth) return select(pen_.get(), selectedPen_);
    GdiObject made(makePen(*pen, smooth));
    if (!select(made.get(), selectedPen_)) return false;
    pen_ = std::move(made);
    penKey_ = *pen;
    smooth_ = smooth;
    return true;
}

bool GdiTools::useBrush(const TvBrush* brush) {
    if (!brush) return select(GetStockObject(NULL_BRUSH), selectedBrush_);
    if (brush_ && brushKey_ == brush->color) return select(brush_.get(), selectedBrush_);
    GdiObject made(CreateSolidBrush(colorOf(brush->color)));
    if (!select(made.get(), selectedBrush_)) return false;
    brush_ = std::move(made);
    brushKey_ = brush->color;
    return true;
}

bool GdiTools::useFace(const GdiFace& face) {
    for (const Font& font : fonts_)
        if (font.face == face) return select(font.object.get(), selectedFont_);
    GdiObject made(makeFont(face));
    if (!select(made.get(), selectedFont_)) return false;
    if (fonts_.size() == kFontsKept) fonts_.clear();
    fonts_.push_back({face, std::move(made)});
    return true;
}

bool GdiTools::useTextColor(TvColor color) {
    if (textColor_ == color) return true;
    if (SetTextColor(dc_, colorOf(color)) == CLR_INVALID) return false;
    textColor_ = color;
    return true;
}

bool GdiTools::hasSymbol() {
    if (!hasSymbol_) {
        constexpr int kAnyHeight = 20;
        char name[LF_FACESIZE] = "";
        hasSymbol_ = useFace({GdiFace::symbol, false, false, kAnyHeight, 0}) &&
                     GetTextFaceA(dc_, LF_FACESIZE, name) > 0 &&
                     GetTextCharset(dc_) == SYMBOL_CHARSET && lstrcmpiA(name, "Symbol") == 0;
    }
    return *hasSymbol_;
}

void GdiTools::letGo() {
    SelectObject(dc_, GetStockObject(NULL_PEN));
    SelectObject(dc_, GetStockObject(NULL_BRUSH));
    SelectObject(dc_, GetStockObject(SYSTEM_FONT));
    selectedPen_ = selectedBrush_ = selectedFont_ = nullptr;
    textColor_.reset();
}

}  // namespace toolbox::canvas

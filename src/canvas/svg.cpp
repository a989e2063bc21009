// SVG: one element for each path and for each line of a text. Clippings are nested groups.
#include <cmath>
#include <utility>

#include "base/windows1252.h"
#include "canvas/file_writer.h"
#include "canvas/font/symbol.h"
#include "canvas/number_writer.h"
#include "canvas/steps.h"
#include "toolbox/canvas.h"

using namespace toolbox::canvas;

namespace {

void appendColor(std::string& out, TvColor color) {
    constexpr char kHex[] = "0123456789abcdef";
    out += '#';
    for (const unsigned char part : {color.red, color.green, color.blue}) {
        out += kHex[part >> 4];
        out += kHex[part & 0xF];
    }
}

/// Appends ` name="value"`.
void appendAttribute(std::string& out, const char* name, double value) {
    out += ' ';
    out += name;
    out += "=\"";
    appendNumber(out, value);
    out += '"';
}

void appendColorAttribute(std::string& out, const char* name, TvColor color) {
    out += ' ';
    out += name;
    out += "=\"";
    appendColor(out, color);
    out += '"';
}

void appendEscaped(std::string& out, std::string_view utf8) {
    for (const char c : utf8) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else
            out += c;
    }
}

/// Titles may hold any byte; XML takes no control characters.
std::string withoutControls(std::string_view text) {
    std::string result;
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= ' ' && c != 0x7F) result += c;
    return result;
}

void appendData(std::string& out, const TvPath& path) {
    eachStep(path, [&out](TvPath::Step step, const TvPoint* points) {
        constexpr char kLetters[] = {'M', 'L', 'C', 'Z'};
        out += kLetters[step];
        for (int i = 0; i < pointsOf(step); ++i) appendPoint(out, points[i]);
        if (out.back() == ' ') out.pop_back();
    });
}

void appendPen(std::string& out, const TvPen& pen) {
    appendColorAttribute(out, "stroke", pen.color);
    out += " stroke-width=\"";
    appendPositive(out, pen.width);
    out += '"';
    if (!(pen.dash[0] > 0)) return;
    out += " stroke-dasharray=\"";
    for (const double length : pen.dash) {
        if (!(length > 0)) break;
        appendPositive(out, length);
        out += ' ';
    }
    out.back() = '"';
}

/// Readers without the standard fonts have others of the same widths. Names are not quoted: some
/// readers do not understand quotes in a list.
const char* familyName(const TvFont& font, bool symbol) {
    constexpr const char* kNames[] = {"Helvetica, Arial, Liberation Sans, sans-serif",
                                      "Times, Times New Roman, Liberation Serif, serif",
                                      "Courier, Courier New, Liberation Mono, monospace"};
    return kNames[symbol ? TvFont::Times : font.family];
}

void appendFont(std::string& out, const TvFont& font, bool symbol) {
    out += " font-family=\"";
    out += familyName(font, symbol);
    out += '"';
    if (font.bold) out += symbol ? " font-weight=\"normal\"" : " font-weight=\"bold\"";
    if (font.italic) out += symbol ? " font-style=\"normal\"" : " font-style=\"italic\"";
}

void appendRun(std::string& out, const TvPlacedRun& run) {
    std::string text;
    if (run.symbol) {
        for (const char byte : run.bytes) toolbox::base::appendUtf8(text, unicodeOfSymbol(byte));
    } else {
        text = toolbox::base::utf8From1252(run.bytes);
    }
    appendEscaped(out, text);
}

void appendStand(std::string& out, const TvPlacedRun& run) {
    appendAttribute(out, "x", run.at.x);
    appendAttribute(out, "y", run.at.y);
    appendAttribute(out, "font-size", run.size);
    appendAttribute(out, "textLength", run.width);
    out += " lengthAdjust=\"spacingAndGlyphs\"";
}

/// ` transform="..."` of a text that is drawn at the origin.
void appendTurn(std::string& out, TvPoint at, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    out += " transform=\"matrix(";
    for (const double factor : {c, s, -s, c}) {
        appendNumber(out, factor, kFactorDecimals);
        out += ' ';
    }
    appendPoint(out, at);
    out.back() = ')';
    out += '"';
}

}  // namespace

TvSvg::TvSvg(double width, double height) : TvCanvas(width, height) {}
TvSvg::~TvSvg() = default;

void TvSvg::setTitle(std::string_view title) {
    title_ = title;
}

std::string TvSvg::bytes() const {
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"";
    for (const auto& [name, side] : {std::pair{"width", width()}, std::pair{"height", height()}}) {
        appendAttribute(out, name, side);
        out.insert(out.size() - 1, "pt");
    }
    out += " viewBox=\"0 0 ";
    appendPoint(out, {width(), height()});
    out.back() = '"';
    out += " fill-rule=\"evenodd\" clip-rule=\"evenodd\" stroke-linejoin=\"round\">\n";
    if (!title_.empty()) {
        out += "<title>";
        appendEscaped(out, toolbox::base::utf8From1252(withoutControls(title_)));
        out += "</title>\n";
    }
    out += body_;
    for (std::size_t i = 0; i < clipDepth(); ++i) out += "</g>\n";
    return out += "</svg>\n";
}

int TvSvg::write(const char* fileName, CString* why) const {
    return writeWhole(fileName, bytes(), why);
}

void TvSvg::onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) {
    body_ += "<path d=\"";
    appendData(body_, path);
    body_ += '"';
    if (brush)
        appendColorAttribute(body_, "fill", brush->color);
    else
        body_ += " fill=\"none\"";
    if (pen && pen_ != *pen) {
        pen_ = *pen;
        penText_.clear();
        appendPen(penText_, *pen);
    }
    if (pen) body_ += penText_;
    body_ += "/>\n";
}

void TvSvg::onText(TvPoint at, const TvText& text, const TvFont& font, const TvTextPlace& place) {
    TvTextPlace upright = place;
    upright.angle = 0;
    const bool turned = place.angle != 0;
    const std::vector<TvPlacedRun> runs = tvPlaceText(turned ? TvPoint() : at, text, font, upright);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const bool isLast = i + 1 == runs.size() || runs[i + 1].first;
        const bool isOnly = runs[i].first && isLast;
        if (runs[i].first) {
            body_ += "<text xml:space=\"preserve\"";
            appendFont(body_, font, isOnly && runs[i].symbol);
            appendColorAttribute(body_, "fill", font.color);
            if (turned) appendTurn(body_, at, place.angle);
            if (isOnly) appendStand(body_, runs[i]);
            body_ += '>';
        }
        if (!isOnly) {
            body_ += "<tspan";
            if (runs[i].symbol) appendFont(body_, font, true);
            appendStand(body_, runs[i]);
            body_ += '>';
        }
        appendRun(body_, runs[i]);
        if (!isOnly) body_ += "</tspan>";
        if (isLast) body_ += "</text>\n";
    }
}

void TvSvg::onClip(const TvPath& path) {
    ++clipPaths_;
    body_ += "<clipPath id=\"clip";
    appendCount(body_, clipPaths_);
    body_ += "\"><path d=\"";
    appendData(body_, path);
    body_ += "\"/></clipPath>\n<g clip-path=\"url(#clip";
    appendCount(body_, clipPaths_);
    body_ += ")\">\n";
}

void TvSvg::onUnclip() {
    body_ += "</g>\n";
}

// The operators of a page. Its y points up from the lower left corner, so y is turned round here.
#include "canvas/pdf_page.h"

#include <cmath>

#include "canvas/number_writer.h"
#include "canvas/steps.h"

namespace toolbox::canvas {
namespace {

constexpr std::string_view kRoundJoins = "1 j\n";

void appendColor(std::string& out, TvColor color, const char* operation) {
    for (const unsigned char part : {color.red, color.green, color.blue}) {
        appendNumber(out, part / 255.0);
        out += ' ';
    }
    out += operation;
}

void appendDash(std::string& out, const TvPen& pen) {
    out += '[';
    for (const double length : pen.dash) {
        if (!(length > 0)) break;
        appendPositive(out, length);
        out += ' ';
    }
    if (out.back() == ' ') out.pop_back();
    out += "] 0 d\n";
}

/// Bytes outside ASCII as octal escapes: the page survives what takes it for a text.
void appendString(std::string& out, std::string_view bytes) {
    out += '(';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '(' || c == ')' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte >= ' ' && byte < 0x7F) {
            out += c;
        } else {
            out += '\\';
            for (const int shift : {6, 3, 0}) out += static_cast<char>('0' + (byte >> shift & 7));
        }
    }
    out += ')';
}

}  // namespace

std::string PdfPage::content() const {
    std::string content(kRoundJoins);
    content += content_;
    for (std::size_t i = 0; i < clipDepth(); ++i) content += "Q\n";
    return content;
}

void PdfPage::usePen(const TvPen& pen) {
    if (pen_ == pen) return;
    if (!pen_ || pen_->color != pen.color) appendColor(content_, pen.color, "RG\n");
    if (!pen_ || pen_->width != pen.width) {
        appendPositive(content_, pen.width);
        content_ += " w\n";
    }
    if (!pen_ || pen_->dash != pen.dash) appendDash(content_, pen);
    pen_ = pen;
}

void PdfPage::useFill(TvColor color) {
    if (fill_ == color) return;
    appendColor(content_, color, "rg\n");
    fill_ = color;
}

void PdfPage::addPoint(TvPoint point) {
    appendPoint(content_, {point.x, height() - point.y});
}

void PdfPage::addPath(const TvPath& path) {
    eachStep(path, [this](TvPath::Step step, const TvPoint* points) {
        constexpr char kOperators[] = {'m', 'l', 'c', 'h'};
        for (int i = 0; i < pointsOf(step); ++i) addPoint(points[i]);
        content_ += kOperators[step];
        content_ += '\n';
    });
}

void PdfPage::onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) {
    if (pen) usePen(*pen);
    if (brush) useFill(brush->color);
    addPath(path);
    content_ += !brush ? "S\n" : pen ? "B*\n" : "f*\n";
}

void PdfPage::onText(TvPoint at, const TvText& text, const TvFont& font, const TvTextPlace& place) {
    useFill(font.color);
    const bool turned = place.angle != 0;
    const double c = turned ? std::cos(place.angle) : 1;
    const double s = turned ? std::sin(place.angle) : 0;
    content_ += "BT\n";
    std::size_t used = kPdfFonts;
    double size = 0;
    for (const TvPlacedRun& run : tvPlaceText(at, text, font, place)) {
        const std::size_t wanted = pdfFont(font, run.symbol);
        if (wanted != used || run.size != size) {
            fonts_.set(used = wanted);
            content_ += "/F";
            appendCount(content_, used);
            content_ += ' ';
            appendNumber(content_, size = run.size);
            content_ += " Tf\n";
        }
        for (const double factor : {c, -s, s, c}) {
            appendNumber(content_, factor, kFactorDecimals);
            content_ += ' ';
        }
        addPoint(run.at);
        content_ += "Tm\n";
        appendString(content_, run.bytes);
        content_ += "Tj\n";
    }
    content_ += "ET\n";
}

void PdfPage::onClip(const TvPath& path) {
    content_ += "q\n";
    if (path.empty())
        content_ += "-2 -2 1 1 re\n";  // outside the page: readers differ about nothing at all
    else
        addPath(path);
    content_ += "W* n\n";
}

void PdfPage::onUnclip() {
    content_ += "Q\n";
    pen_.reset();
    fill_.reset();
}

}  // namespace toolbox::canvas

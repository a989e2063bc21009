// Measures, breaks and places texts, line by line and run by run. Widths are summed as whole
// thousandths of the size, so that a sum has no error.
#include <algorithm>
#include <cmath>

#include "canvas/font/widths.h"
#include "toolbox/canvas_text.h"

namespace canvas = toolbox::canvas;

namespace {

constexpr double kScript = 0.6;   // size of raised and lowered letters
constexpr double kRaised = 0.35;  // of the size, up
constexpr double kLowered = 0.1;  // and down
constexpr double kThousandth = 0.001;

double sizeOf(const TvFont& font, int level) {
    return level ? font.size * kScript : font.size;
}

double riseOf(const TvFont& font, int level) {
    return level > 0 ? font.size * kRaised : level < 0 ? -font.size * kLowered : 0;
}

long long thousandths(const TvFont& font, std::string_view bytes, bool symbol) {
    long long sum = 0;
    for (const char byte : bytes) sum += canvas::widthOf(font, byte, symbol);
    return sum;
}

/// The width of a line, or of its start.
class LineSum {
  public:
    void add(const TvFont& font, std::string_view bytes, const TvTextRun& run) {
        (run.level ? script_ : plain_) += thousandths(font, bytes, run.symbol);
    }
    void drop(const LineSum& start) {
        plain_ -= start.plain_;
        script_ -= start.script_;
    }
    [[nodiscard]] double points(const TvFont& font) const {
        return (static_cast<double>(plain_) + static_cast<double>(script_) * kScript) *
               kThousandth * font.size;
    }

  private:
    long long plain_ = 0;
    long long script_ = 0;
};

/// Calls `visit` with each run's part of each line, and whether the part ends its line; empty parts
/// too.
template <class Visit>
void eachPart(const TvText& text, Visit visit) {
    for (const TvTextRun& run : text.runs()) {
        std::string_view rest = run.bytes;
        for (std::size_t end = 0; (end = rest.find('\n')) != std::string_view::npos;) {
            visit(rest.substr(0, end), run, true);
            rest.remove_prefix(end + 1);
        }
        visit(rest, run, false);
    }
}

/// Widths of the lines, at least one.
std::vector<double> lineWidths(const TvText& text, const TvFont& font) {
    std::vector<double> widths;
    LineSum line;
    eachPart(text, [&](std::string_view bytes, const TvTextRun& run, bool endsLine) {
        line.add(font, bytes, run);
        if (!endsLine) return;
        widths.push_back(line.points(font));
        line = LineSum();
    });
    widths.push_back(line.points(font));
    return widths;
}

/// From the text's point down to the first baseline.
double firstBaseline(TvLevel level, double size, std::size_t lines) {
    const double height = static_cast<double>(lines) * TvFont::kLine * size;
    switch (level) {
        case TvLevel::top:
            return TvFont::kAscent * size;
        case TvLevel::middle:
            return TvFont::kAscent * size - height / 2;
        case TvLevel::bottom:
            return TvFont::kAscent * size - height;
        default:
            return 0;
    }
}

double startOfLine(TvAlign align, double width) {
    return align == TvAlign::left ? 0 : align == TvAlign::center ? -width / 2 : -width;
}

/// Turns offsets along and across the text into points of the page.
class Frame {
  public:
    Frame(TvPoint at, double angle)
        : at_(at), cos_(angle == 0 ? 1 : std::cos(angle)), sin_(angle == 0 ? 0 : std::sin(angle)) {}
    [[nodiscard]] TvPoint point(double along, double down) const {
        return {at_.x + cos_ * along - sin_ * down, at_.y + sin_ * along + cos_ * down};
    }

  private:
    TvPoint at_;
    double cos_;
    double sin_;
};

}  // namespace

int TvFont::advance(char byte, bool symbol) const {
    return canvas::widthOf(*this, byte, symbol);
}

TvTextExtent TvFont::measure(const TvText& text) const {
    const std::vector<double> widths = lineWidths(text, *this);
    const auto lines = static_cast<int>(widths.size());
    return {*std::max_element(widths.begin(), widths.end()), lines * kLine * size, lines};
}

TvText TvText::wrapped(const TvFont& font, double width) const {
    TvText result = *this;
    char* blank = nullptr;  // the last one of this line
    LineSum toBlank;        // with that blank, which may hang over the line's end
    LineSum line;
    for (TvTextRun& run : result.runs_) {
        for (char& byte : run.bytes) {
            if (byte == '\n') {
                blank = nullptr;
                line = LineSum();
                continue;
            }
            line.add(font, {&byte, 1}, run);
            if (byte == ' ') {
                blank = &byte;
                toBlank = line;
            } else if (blank && line.points(font) > width) {
                *blank = '\n';
                blank = nullptr;
                line.drop(toBlank);
            }
        }
    }
    return result;
}

std::vector<TvPlacedRun> tvPlaceText(TvPoint at, const TvText& text, const TvFont& font,
                                     const TvTextPlace& place) {
    const std::vector<double> widths = lineWidths(text, font);
    const Frame frame(at, place.angle);
    std::vector<TvPlacedRun> placed;
    placed.reserve(text.runs().size() + widths.size() - 1);
    double down = firstBaseline(place.level, font.size, widths.size());
    double along = startOfLine(place.align, widths[0]);
    std::size_t line = 0;
    bool first = true;
    eachPart(text, [&](std::string_view bytes, const TvTextRun& run, bool endsLine) {
        if (!bytes.empty()) {
            LineSum sum;
            sum.add(font, bytes, run);
            const double width = sum.points(font);
            placed.push_back({bytes, run.symbol, frame.point(along, down - riseOf(font, run.level)),
                              sizeOf(font, run.level), width, first});
            along += width;
            first = false;
        }
        if (endsLine) {
            along = startOfLine(place.align, widths[++line]);
            down += TvFont::kLine * font.size;
            first = true;
        }
    });
    return placed;
}

// Appends elements to a recording.
#include "base/codec.h"
#include "canvas/tape.h"

namespace toolbox::canvas {
namespace {

template <class T>
void add(std::string& bytes, T value) {
    char stored[sizeof value];
    base::store(stored, value);
    bytes.append(stored, sizeof stored);
}

void addByte(std::string& bytes, unsigned value) {
    bytes += static_cast<char>(value);
}

void addCount(std::string& bytes, std::size_t count) {
    add(bytes, static_cast<std::uint32_t>(count));
}

void addColor(std::string& bytes, TvColor color) {
    for (const unsigned char part : {color.red, color.green, color.blue}) addByte(bytes, part);
}

}  // namespace

void TapeWriter::usePen(const TvPen& pen) {
    if (pen_ == pen) return;
    pen_ = pen;
    bytes_ += 'P';
    addColor(bytes_, pen.color);
    add(bytes_, pen.width);
    addByte(bytes_, static_cast<unsigned>(pen.dash.size()));
    for (const double length : pen.dash) add(bytes_, length);
}

void TapeWriter::useBrush(const TvBrush& brush) {
    if (brush_ == brush) return;
    brush_ = brush;
    bytes_ += 'B';
    addColor(bytes_, brush.color);
}

void TapeWriter::useFont(const TvFont& font) {
    if (font_ == font) return;
    font_ = font;
    bytes_ += 'F';
    addByte(bytes_, font.family);
    addByte(bytes_, (font.bold ? 1U : 0U) + (font.italic ? 2U : 0U));
    add(bytes_, font.size);
    addColor(bytes_, font.color);
}

void TapeWriter::addPath(const TvPath& path) {
    static_assert(sizeof(TvPoint) == 2 * sizeof(double) && sizeof(TvPath::Step) == 1,
                  "steps and points lie in memory as they are stored");
    const std::span<const TvPath::Step> steps = path.steps();
    const std::span<const TvPoint> points = path.points();
    addCount(bytes_, steps.size());
    bytes_.append(reinterpret_cast<const char*>(steps.data()), steps.size());
    bytes_.append(reinterpret_cast<const char*>(points.data()), points.size_bytes());
}

void TapeWriter::path(const TvPath& path, const TvPen* pen, const TvBrush* brush) {
    if (pen) usePen(*pen);
    if (brush) useBrush(*brush);
    bytes_ += 'D';
    addByte(bytes_, (pen ? 1U : 0U) + (brush ? 2U : 0U));
    addPath(path);
}

void TapeWriter::clip(const TvPath& path) {
    bytes_ += 'C';
    addPath(path);
}

void TapeWriter::text(TvPoint at, const TvText& text, const TvFont& font,
                      const TvTextPlace& place) {
    useFont(font);
    bytes_ += 'T';
    for (const double value : {at.x, at.y, place.angle}) add(bytes_, value);
    addByte(bytes_, static_cast<unsigned>(place.align));
    addByte(bytes_, static_cast<unsigned>(place.level));
    addCount(bytes_, text.runs().size());
    for (const TvTextRun& run : text.runs()) {
        addByte(bytes_, run.symbol ? 1 : 0);
        addByte(bytes_, static_cast<unsigned>(run.level + 1));
        addCount(bytes_, run.bytes.size());
        bytes_ += run.bytes;
    }
    addCount(bytes_, text.faults().size());
    for (const TvTextFault& fault : text.faults()) {
        addCount(bytes_, fault.place);
        add(bytes_, static_cast<std::uint32_t>(fault.code));
    }
}

}  // namespace toolbox::canvas

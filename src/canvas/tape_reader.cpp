// Reads elements of a recording. Every count is held against the bytes that remain before anything
// is reserved, every value against what a canvas can have drawn.
#include <utility>

#include "base/codec.h"
#include "canvas/styles.h"
#include "canvas/tape.h"

namespace toolbox::canvas {

template <class T>
bool TapeReader::take(T& value) {
    if (bytes_.size() - offset_ < sizeof value) return false;
    value = base::load<T>(bytes_.data() + offset_);
    offset_ += sizeof value;
    return true;
}

bool TapeReader::take(TvColor& color) {
    return take(color.red) && take(color.green) && take(color.blue);
}

bool TapeReader::take(TvPoint& point) {
    return take(point.x) && take(point.y) && isNear(point);
}

bool TapeReader::take(std::string& bytes, std::uint32_t n) {
    if (bytes_.size() - offset_ < n) return false;
    bytes.assign(bytes_.data() + offset_, n);
    offset_ += n;
    return true;
}

bool TapeReader::takeCount(std::uint32_t& count, std::size_t size) {
    return take(count) && count <= (bytes_.size() - offset_) / size;
}

TapeReader::Element TapeReader::next(std::string_view bytes) {
    bytes_ = bytes;
    for (;;) {
        start_ = offset_;
        if (offset_ == bytes_.size()) return depth_ == 0 ? Element::end : Element::bad;
        const char letter = bytes_[offset_++];
        bool sound = false;
        switch (letter) {
            case 'P':
            case 'B':
            case 'F':
                if (!style(letter)) return Element::bad;
                continue;
            case 'D':
                sound = readDrawing();
                break;
            case 'T':
                sound = readText();
                break;
            case 'C':
                sound = readSteps();
                ++depth_;
                break;
            case 'U':
                sound = depth_-- > 0;
                break;
            default:
                break;
        }
        return sound ? static_cast<Element>(letter) : Element::bad;
    }
}

bool TapeReader::style(char letter) {
    return letter == 'P' ? readPen() : letter == 'B' ? readBrush() : readFont();
}

bool TapeReader::readPen() {
    unsigned char lengths = 0;
    if (!take(usedPen_.color) || !take(usedPen_.width) || !take(lengths) ||
        lengths != usedPen_.dash.size())
        return false;
    for (double& length : usedPen_.dash)
        if (!take(length)) return false;
    return hasPen_ = isPen(usedPen_) && usedPen_.width > 0;
}

bool TapeReader::readBrush() {
    usedBrush_.filled = true;
    return hasBrush_ = take(usedBrush_.color);
}

bool TapeReader::readFont() {
    constexpr unsigned kBold = 1;
    constexpr unsigned kItalic = 2;
    unsigned char family = 0;
    unsigned char face = 0;
    if (!take(family) || family > TvFont::Courier || !take(face) || face > kBold + kItalic)
        return false;
    font.family = static_cast<TvFont::Family>(family);
    font.bold = (face & kBold) != 0;
    font.italic = (face & kItalic) != 0;
    return hasFont_ = take(font.size) && take(font.color) && isFont(font);
}

bool TapeReader::readDrawing() {
    constexpr unsigned kOutline = 1;
    constexpr unsigned kFill = 2;
    unsigned char how = 0;
    if (!take(how) || how == 0 || how > kOutline + kFill) return false;
    pen = how & kOutline ? &usedPen_ : nullptr;
    brush = how & kFill ? &usedBrush_ : nullptr;
    return (!pen || hasPen_) && (!brush || hasBrush_) && readSteps() && !path.empty();
}

bool TapeReader::readSteps() {
    path.clear();
    std::uint32_t count = 0;
    if (!takeCount(count, 1)) return false;
    const std::size_t steps = offset_;
    offset_ += count;
    for (std::uint32_t i = 0; i < count; ++i)
        if (!addStep(static_cast<unsigned char>(bytes_[steps + i]))) return false;
    return true;
}

/// False for a step that no path has at this place.
bool TapeReader::addStep(unsigned char step) {
    TvPoint to;
    TvPoint control1;
    TvPoint control2;
    const bool isOpen = !path.empty() && path.steps().back() != TvPath::Close;
    if (step != TvPath::Move && !isOpen) return false;
    switch (step) {
        case TvPath::Move:
            if (!take(to)) return false;
            path.moveTo(to);
            return true;
        case TvPath::Line:
            if (!take(to)) return false;
            path.lineTo(to);
            return true;
        case TvPath::Curve:
            if (!take(control1) || !take(control2) || !take(to)) return false;
            path.curveTo(control1, control2, to);
            return true;
        case TvPath::Close:
            path.close();
            return true;
        default:
            return false;
    }
}

bool TapeReader::readText() {
    unsigned char align = 0;
    unsigned char level = 0;
    if (!take(at) || !take(textPlace.angle) || !take(align) || !take(level)) return false;
    textPlace.align = static_cast<TvAlign>(align);
    textPlace.level = static_cast<TvLevel>(level);
    return hasFont_ && isPlace(textPlace) && readRuns();
}

bool TapeReader::readRuns() {
    constexpr std::size_t kRun = 1 + 1 + 4;
    constexpr std::size_t kFault = 4 + 4;
    std::uint32_t count = 0;
    if (!takeCount(count, kRun) || count == 0) return false;
    std::vector<TvTextRun> runs(count);
    for (TvTextRun& run : runs) {
        unsigned char symbol = 0;
        unsigned char level = 0;
        std::uint32_t length = 0;
        if (!take(symbol) || symbol > 1 || !take(level) || level > 2 || !take(length) ||
            !take(run.bytes, length))
            return false;
        run.symbol = symbol == 1;
        run.level = int{level} - 1;
    }
    if (!takeCount(count, kFault)) return false;
    std::vector<TvTextFault> faults(count);
    for (TvTextFault& fault : faults) {
        std::uint32_t place = 0;
        std::uint32_t code = 0;
        if (!take(place) || !take(code)) return false;
        fault = {place, code};
    }
    return text.assign(std::move(runs), std::move(faults));
}

}  // namespace toolbox::canvas

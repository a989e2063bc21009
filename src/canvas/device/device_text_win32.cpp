// Texts on a device context. The letters of a run are given their distances, the difference of two
// rounded places each: so the error of one letter is not added to that of the next.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "canvas/device/device_win32.h"
#include "canvas/font/symbol.h"
#include "canvas/font/widths.h"

using namespace toolbox::canvas;

namespace {

constexpr double kThousandth = 0.001;
constexpr int kTurn = 3600;  // tenths of degrees
constexpr int kQuarter = 900;
constexpr UINT kWindows1252 = 1252;

[[nodiscard]] int rounded(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

/// As devices count: counter-clockwise, from 0 to 3599.
[[nodiscard]] int tenthsOf(double angle) {
    const int tenths =
        rounded(std::remainder(-angle, 2 * std::numbers::pi) * (kTurn / 2.0) / std::numbers::pi);
    return (tenths + kTurn) % kTurn;
}

[[nodiscard]] bool isVisible(TvPoint point) {
    return std::fabs(point.x) < kDeviceFar && std::fabs(point.y) < kDeviceFar;
}

/// A run's characters in Unicode. The codes of Symbol's own characters lie from F000 on; another
/// font has them elsewhere.
void setLetters(std::vector<wchar_t>& out, const TvPlacedRun& run, bool hasSymbol) {
    constexpr unsigned kSymbols = 0xF000;
    const auto count = static_cast<int>(run.bytes.size());
    out.assign(run.bytes.size(), L'?');
    if (!run.symbol) {
        MultiByteToWideChar(kWindows1252, 0, run.bytes.data(), count, out.data(), count);
        return;
    }
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] =
            static_cast<wchar_t>(hasSymbol ? kSymbols + static_cast<unsigned char>(run.bytes[i])
                                           : unicodeOfSymbol(run.bytes[i]));
}

[[nodiscard]] GdiFace faceOf(const TvFont& font, bool symbol, bool hasSymbol) {
    GdiFace face{static_cast<GdiFace::Kind>(font.family), font.bold, font.italic, 0, 0};
    if (symbol) face = {hasSymbol ? GdiFace::symbol : GdiFace::times, false, false, 0, 0};
    return face;
}

}  // namespace

bool TvDeviceCanvas::Device::drawText(TvPoint at, const TvText& text, const TvFont& font,
                                      const TvTextPlace& place) {
    if (saved_ == 0) return false;
    bool done = tools_.useTextColor(font.color);
    for (const TvPlacedRun& run : tvPlaceText(at, text, font, place))
        done = drawRun(run, font, place.angle) && done;
    return done;
}

bool TvDeviceCanvas::Device::drawRun(const TvPlacedRun& run, const TvFont& font, double angle) {
    if (!isVisible(map_.at(run.at))) return true;
    const Direction along{std::cos(angle) * map_.scaleX, std::sin(angle) * map_.scaleY};
    GdiFace face = faceOf(font, run.symbol, run.symbol && tools_.hasSymbol());
    face.height = std::max(1, rounded(run.size * map_.scaleY));
    face.turn = angle == 0 ? 0 : tenthsOf(std::atan2(along.y, along.x));
    if (!tools_.useFace(face)) return false;

    setLetters(letters_, run, face.kind == GdiFace::symbol);
    setEnds(run, font);
    const bool isWhole = isPicture_ || face.turn % kQuarter == 0;
    return isWhole ? drawWhole(map_.at(run.at), along) : drawLetters(map_.at(run.at), along);
}

void TvDeviceCanvas::Device::setEnds(const TvPlacedRun& run, const TvFont& font) {
    ends_.clear();
    long long sum = 0;
    for (const char byte : run.bytes) {
        sum += widthOf(font, byte, run.symbol);
        ends_.push_back(static_cast<double>(sum) * kThousandth * run.size);
    }
}

/// In one call: the device turns the distances with the font.
bool TvDeviceCanvas::Device::drawWhole(TvPoint start, Direction along) {
    const DevicePoint at = deviceUnit(start);
    const double length = std::hypot(along.x, along.y);
    const double roundedOff = ((start.x - at.x) * along.x + (start.y - at.y) * along.y) / length;
    advances_.clear();
    int before = 0;
    for (const double end : ends_) {
        const int place = rounded(roundedOff + end * length);
        advances_.push_back(place - before);
        before = place;
    }
    return ExtTextOutW(dc_, at.x, at.y, 0, nullptr, letters_.data(),
                       static_cast<UINT>(letters_.size()), advances_.data()) != 0;
}

/// A font turns by whole tenths of degrees, its distances by whole units: each letter has its
/// place.
bool TvDeviceCanvas::Device::drawLetters(TvPoint start, Direction along) {
    bool done = true;
    double distance = 0;
    for (std::size_t i = 0; i < letters_.size(); ++i) {
        const DevicePoint at =
            deviceUnit({start.x + along.x * distance, start.y + along.y * distance});
        done = ExtTextOutW(dc_, at.x, at.y, 0, nullptr, &letters_[i], 1, nullptr) && done;
        distance = ends_[i];
    }
    return done;
}

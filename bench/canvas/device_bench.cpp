// Drawings of 100,000 primitives on a bitmap in memory (Windows only): by plain calls of the system
// with the same pens, fonts and letter distances, on a canvas, and recorded and then played. The
// rounds are interleaved; the least of each counts.
#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <string_view>

#include "canvas/device/memory_picture.h"
#include "toolbox/canvas_device.h"

namespace {

constexpr int kPrimitives = 100'000;
constexpr int kRounds = 7;
constexpr const char* kText = "12.5 kN/m";
constexpr double kScale = 96 / 72.0;

TvPoint pointOf(int i) {
    return {i % 601 + 0.123 * (i % 8), i % 809 + 0.377 * (i % 5)};
}

/// The other end of a line: near, as most lines of drawings are.
TvPoint endOf(int i) {
    const TvPoint p = pointOf(i);
    return {p.x + i % 53 - 26, p.y + i % 47 - 23};
}

POINT pixel(TvPoint p) {
    return {std::lround(p.x * kScale), std::lround(p.y * kScale)};
}

TvColor colorOf(int i) {
    return {static_cast<unsigned char>(i), 0, 0};
}

/// Mostly lines, some shapes, a text for every ten, now and then another pen.
enum class Kind { text, rectangle, polygon, line };

Kind kindOf(int i, bool mixed) {
    return mixed && i % 10 < 3 ? static_cast<Kind>(i % 10) : Kind::line;
}

void drawCanvas(TvCanvas& canvas, bool mixed) {
    canvas.setFont({TvFont::Helvetica, 9});
    for (int i = 0; i < kPrimitives; ++i) {
        const TvPoint p = pointOf(i);
        if (i % 50 == 0) canvas.setPen({colorOf(i), 0.7});
        switch (kindOf(i, mixed)) {
            case Kind::text:
                canvas.text(p, kText);
                break;
            case Kind::rectangle:
                canvas.rectangle({p.x, p.y, p.x + 10, p.y + 5});
                break;
            case Kind::polygon:
                canvas.polygon({p, {p.x + 3, p.y}, {p.x, p.y + 4}});
                break;
            case Kind::line:
                canvas.line(p, endOf(i));
                break;
        }
    }
}

/// The distances of the text's letters on the device.
std::array<INT, std::string_view(kText).size()> distances() {
    std::array<INT, std::string_view(kText).size()> result{};
    const TvFont font{TvFont::Helvetica, 9};
    double end = 0;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto before = std::lround(end);
        end += font.advance(kText[i]) * 0.001 * font.size * kScale;
        result[i] = static_cast<INT>(std::lround(end) - before);
    }
    return result;
}

void drawPlain(HDC dc, bool mixed) {
    const int saved = SaveDC(dc);
    const auto apart = distances();
    const HFONT font = CreateFontA(-12, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                                   CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FF_SWISS, "Arial");
    SelectObject(dc, font);
    SelectObject(dc, GetStockObject(NULL_BRUSH));
    SetBkMode(dc, TRANSPARENT);
    SetTextAlign(dc, TA_BASELINE);
    for (int i = 0; i < kPrimitives; ++i) {
        const TvPoint p = pointOf(i);
        const POINT at = pixel(p);
        if (i % 50 == 0) {
            const HGDIOBJ before = SelectObject(dc, CreatePen(PS_SOLID, 1, RGB(i & 0xFF, 0, 0)));
            if (i > 0) DeleteObject(before);
        }
        switch (kindOf(i, mixed)) {
            case Kind::text:
                ExtTextOutA(dc, at.x, at.y, 0, nullptr, kText, apart.size(), apart.data());
                break;
            case Kind::rectangle: {
                const POINT to = pixel({p.x + 10, p.y + 5});
                const POINT corners[] = {at, {to.x, at.y}, to, {at.x, to.y}};
                Polygon(dc, corners, 4);
                break;
            }
            case Kind::polygon: {
                const POINT corners[] = {at, pixel({p.x + 3, p.y}), pixel({p.x, p.y + 4})};
                Polygon(dc, corners, 3);
                break;
            }
            case Kind::line: {
                const POINT ends[] = {at, pixel(endOf(i))};
                Polyline(dc, ends, 2);
                break;
            }
        }
    }
    const HGDIOBJ pen = GetCurrentObject(dc, OBJ_PEN);
    RestoreDC(dc, saved);
    DeleteObject(pen);
    DeleteObject(font);
}

double milliseconds(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    GdiFlush();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

void measure(const char* name, bool mixed) {
    const MemoryPicture picture(900, 1200);
    const TvDevicePage page{600, 800, kScale, kScale};
    std::array<double, 3> least{};
    least.fill(std::numeric_limits<double>::infinity());
    const std::array<std::function<void()>, 3> ways = {
        [&] { drawPlain(picture.dc(), mixed); },
        [&] {
            TvDeviceCanvas canvas(picture.dc(), page);
            drawCanvas(canvas, mixed);
        },
        [&] {
            TvRecording recording(600, 800);
            drawCanvas(recording, mixed);
            TvDeviceCanvas canvas(picture.dc(), page);
            recording.play(canvas);
        }};
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < ways.size(); ++i)
            least[i] = std::min(least[i], milliseconds(ways[i]));
    std::printf(
        "%s: plain calls %.0f ms, canvas %.0f ms (%.2f), recorded and played %.0f ms (%.2f)\n",
        name, least[0], least[1], least[1] / least[0], least[2], least[2] / least[0]);
}

}  // namespace

int main() {
    measure("lines", false);
    measure("mixed", true);
}

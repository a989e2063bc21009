// A drawing with one of everything, for the tests of what canvases write.
#pragma once

#include <numbers>

#include "toolbox/canvas.h"

inline constexpr double kSampleWidth = 300;
inline constexpr double kSampleHeight = 200;

/// Shapes in solid colours that a picture is checked for, by their places in readers_test.py.
inline void drawSampleShapes(TvCanvas& canvas) {
    canvas.setPen(TvPen::none());
    canvas.setBrush(TvColor{255, 0, 0});
    canvas.rectangle({20, 20, 60, 60});
    canvas.setBrush(TvColor{0, 0, 255});
    canvas.ellipse({100, 40}, 30, 20);
    // A frame: the inner outline is a hole.
    canvas.setBrush(TvColor{0, 128, 0});
    canvas.path(TvPath().rectangle({140, 20, 200, 60}).rectangle({155, 35, 185, 45}));

    canvas.save();
    canvas.clip({220, 20, 250, 60});
    canvas.setBrush(TvColor{255, 160, 0});
    canvas.rectangle({210, 20, 290, 60});
    canvas.restore();

    canvas.setBrush({});
    canvas.setPen({TvColor{128, 0, 128}, 4});
    canvas.polyline({{20, 80}, {60, 100}, {100, 80}});
    canvas.setPen({TvColor{0, 0, 0}, 2, {8, 4}});
    canvas.line({120, 90}, {200, 90});
    canvas.setPen({TvColor{0, 128, 128}, 3});
    canvas.arc({250, 90}, 20, 10, 0, std::numbers::pi);
}

inline void drawSampleTexts(TvCanvas& canvas) {
    canvas.setFont({TvFont::Helvetica, 12});
    canvas.text({20, 130}, "Poutre \351lanc\351e (A&B) <1> \\");
    canvas.setFont({TvFont::Times, 12, false, true, TvColor{0, 0, 160}});
    canvas.text({280, 130}, TvText::fromUtf8("\xCF\x83 \xE2\x89\xA4 235 N/mm\xC2\xB2"),
                {TvAlign::right});
    canvas.setFont({TvFont::Courier, 10, true});
    canvas.text({150, 150}, TvText("M").subscript("Ed").add(" = 10").superscript("6").add(" Nm"),
                {TvAlign::center, TvLevel::middle});
    canvas.setFont({TvFont::Helvetica, 10});
    canvas.text({20, 190}, "turned", {TvAlign::left, TvLevel::baseline, -std::numbers::pi / 6});
    canvas.text({200, 170}, "two\nlines", {TvAlign::left, TvLevel::top});
}

inline void drawSample(TvCanvas& canvas) {
    drawSampleShapes(canvas);
    drawSampleTexts(canvas);
}

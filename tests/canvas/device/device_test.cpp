// Canvases on device contexts, seen by their pixels (Windows only).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "canvas/device/memory_picture.h"
#include "support/window_kit.h"
#include "toolbox/canvas_device.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr TvColor kRed{255, 0, 0};
constexpr std::uint32_t kRedPixel = 0xFF0000;
constexpr std::uint32_t kWhite = 0xFFFFFF;

/// A picture of 200 by 100 pixels, one for each point unless another page is said.
struct DeviceCanvas : testing::Test {
    MemoryPicture picture{200, 100};
    TvDevicePage page{200, 100};
    std::optional<TvDeviceCanvas> canvas;

    void SetUp() override { open(page); }
    void open(const TvDevicePage& other) {
        canvas.reset();
        PatBlt(picture.dc(), 0, 0, picture.width(), picture.height(), WHITENESS);
        canvas.emplace(picture.dc(), other);
        canvas->setPen(TvPen::none());
        canvas->setBrush(kRed);
    }
    /// Colours along a row or a column from a place on, a letter each.
    [[nodiscard]] std::string pixels(int x, int y, int dx, int dy, int count) const {
        std::string letters;
        for (; count > 0; --count, x += dx, y += dy)
            letters += picture.at(x, y) == kRedPixel ? 'r' : picture.at(x, y) == kWhite ? '.' : '?';
        return letters;
    }
};

TEST_F(DeviceCanvas, FillsByTheEvenOddRuleWithinItsClippings) {
    canvas->path(TvPath().rectangle({10, 10, 50, 50}).rectangle({20, 20, 40, 40}));
    EXPECT_EQ(pixels(8, 30, 4, 0, 12), ".rr.....rrr.");
    // Two clippings, of which one is no rectangle; and nothing at all.
    canvas->save();
    canvas->clip(TvPath().polygon(std::vector<TvPoint>{{100, 0}, {200, 100}, {0, 100}}));
    canvas->save();
    canvas->clip({100, 0, 200, 100});
    canvas->rectangle({0, 60, 200, 70});
    EXPECT_EQ(pixels(90, 65, 10, 0, 11), ".rrrrrrr...");
    canvas->restore();
    canvas->rectangle({0, 80, 200, 90});
    EXPECT_EQ(pixels(0, 85, 20, 0, 10), ".rrrrrrrrr");
    canvas->restore();
    canvas->save();
    canvas->clip(TvPath());
    canvas->rectangle({0, 0, 200, 100});
    EXPECT_EQ(pixels(0, 75, 10, 0, 20), "....................");
    canvas->restore();
    canvas->rectangle({0, 74, 200, 76});
    EXPECT_EQ(pixels(0, 75, 40, 0, 5), "rrrrr");
}

TEST_F(DeviceCanvas, DrawsPensInTheirWidthAndThinOnesAPixelWide) {
    struct {
        double width;
        const char* across;  ///< pixels of a vertical line at 20
    } const cases[] = {{1e-6, "....r...."}, {0.5, "....r...."}, {1, "....r...."},
                       {3, "...rrr..."},    {4, "..rrrr..."},   {0, "........."}};
    for (const auto& [width, across] : cases) {
        open(page);
        canvas->setPen({kRed, width});
        canvas->line({20, 10}, {20, 50});
        EXPECT_EQ(pixels(16, 30, 1, 0, 9), across) << width;
    }
    // What is shorter than a pixel is still seen.
    open({200, 100, 0.01, 0.01, 50, 50});
    canvas->setPen({kRed, 1});
    canvas->line({0, 0}, {5, 5});
    EXPECT_EQ(pixels(49, 50, 1, 0, 3), ".r.");
}

TEST_F(DeviceCanvas, DrawsDashes) {
    canvas->setPen({kRed, 2, {4, 2, 2}});  // goes round twice
    canvas->line({10, 50}, {42, 50});
    EXPECT_EQ(pixels(10, 50, 1, 0, 33), "rrrr..rr....rr..rrrr..rr....rr...");
    open({200, 100, 1.25, 1.25});
    canvas->setPen({kRed, 1, {1, 1}});
    canvas->line({4, 40}, {132, 40});
    EXPECT_EQ(pixels(5, 50, 1, 0, 15), "r..r.r..r.r..r.");
    EXPECT_EQ(pixels(150, 50, 1, 0, 15), "r..r.r..r.r..r.");
}

/// Far beyond what a device counts: the direction is kept.
TEST_F(DeviceCanvas, DrawsWhatGoesFarOffThePage) {
    canvas->setPen({kRed, 1});
    canvas->line({-1e9, -5e8}, {1e9, 5e8});
    EXPECT_EQ(pixels(0, 0, 20, 10, 9), "rrrrrrrrr");
    open({200, 100, 1e6, 1e6, 100, 50});
    canvas->polygon({{0, 0}, {1e9, -1e9}, {1e9, 1e9}});
    EXPECT_EQ(pixels(90, 50, 4, 0, 6), "...rrr");
    EXPECT_EQ(pixels(110, 30, 0, 7, 7), "..rrr..");
}

/// Ink of a text, which ends where its last letter does.
TEST_F(DeviceCanvas, PutsTextsWhereTheyAreMeasured) {
    struct {
        double angle;
        TvFont font;
        TvText text;
    } const cases[] = {
        {0, {TvFont::Helvetica, 9.4}, "HillimillimilliH"},
        {-kPi / 2, {TvFont::Times, 9.4, true}, "HlilllilllilllH"},
        {-kPi / 2 * 0.35, {TvFont::Courier, 7.7, false, true}, "HHHHHHHHHHHHHHHH"},
        {0, {TvFont::Times, 10}, TvText("H").add(TvText::fromUtf8("\xCE\xA3\xCE\xA3\xCE\x97"))},
        {kPi / 3, {TvFont::Helvetica, 8}, TvText("H").superscript("HH").subscript("HHHHHH")},
    };
    for (const auto& [angle, font, text] : cases) {
        open({200, 100, 1.7, 1.7, 0.4, 0.3});
        canvas->setFont(font);
        const TvPoint at{angle > 0 ? 20.0 : 12.0, angle < 0 ? 55.0 : 14.0};
        EXPECT_EQ(canvas->text(at, text, {TvAlign::left, TvLevel::baseline, angle}), 1);
        const RECT ink = picture.ink();
        // The box of the text, turned; letters keep a tenth of the size off their ends.
        const double width = canvas->measure(text).width;
        const double least = font.size * 0.1;
        double right = -1e9;
        double bottom = -1e9;
        for (const double across : {-TvFont::kAscent * font.size, TvFont::kDescent * font.size}) {
            for (const double along : {0.0, width}) {
                right = std::max(right, at.x + std::cos(angle) * along - std::sin(angle) * across);
                bottom =
                    std::max(bottom, at.y + std::sin(angle) * along + std::cos(angle) * across);
            }
        }
        const double innerRight = at.x + std::cos(angle) * (width - 3 * least);
        EXPECT_LE(ink.right, right * 1.7 + 1.4) << text.utf8();
        EXPECT_GE(ink.right, innerRight * 1.7 - 1) << text.utf8();
        EXPECT_LE(ink.bottom, bottom * 1.7 + 1.3) << text.utf8();
    }
}

TEST_F(DeviceCanvas, GivesTheContextBackAsItWas) {
    canvas.reset();
    const HDC dc = picture.dc();
    for (const int object : {WHITE_PEN, GRAY_BRUSH, ANSI_FIXED_FONT})
        SelectObject(dc, GetStockObject(object));
    SetTextColor(dc, RGB(1, 2, 3));
    SetTextAlign(dc, TA_RIGHT);
    SetBkMode(dc, OPAQUE);
    SetPolyFillMode(dc, WINDING);
    const auto isAsBefore = [dc] {
        RECT box{};
        GetClipBox(dc, &box);
        return GetCurrentObject(dc, OBJ_PEN) == GetStockObject(WHITE_PEN) &&
               GetCurrentObject(dc, OBJ_BRUSH) == GetStockObject(GRAY_BRUSH) &&
               GetCurrentObject(dc, OBJ_FONT) == GetStockObject(ANSI_FIXED_FONT) &&
               GetTextColor(dc) == RGB(1, 2, 3) && GetTextAlign(dc) == TA_RIGHT &&
               GetBkMode(dc) == OPAQUE && GetPolyFillMode(dc) == WINDING && box.right == 200;
    };
    ASSERT_TRUE(isAsBefore());
    toolbox::testing::expectNoHandlesLeft(5, [&] {
        open(page);
        canvas->setPen({kRed, 2, {3, 1}});
        canvas->ellipse({50, 50}, 20, 10);
        canvas->clip({0, 0, 100, 100});
        canvas->setPen({kRed, 3});
        for (int size = 4; size < 40; ++size) {
            canvas->setFont({TvFont::Times, 1.0 * size, false, false, kRed});
            canvas->text({20, 20}, TvText("a").addUtf8("\xCE\xB1"));
        }
        EXPECT_EQ(canvas->rectangle({1, 1, 9, 9}), 1);
        EXPECT_EQ(canvas->faultCount(), 0U);
        canvas.reset();
        EXPECT_TRUE(isAsBefore());
    });
}

TEST_F(DeviceCanvas, RefusesWhatNoDeviceTakes) {
    const double bad = std::nan("");
    for (const TvDevicePage& other : {TvDevicePage{200, 100, 0, 1}, TvDevicePage{200, 100, 1, bad},
                                      TvDevicePage{200, 100, 1, 1, bad}}) {
        open(other);
        EXPECT_EQ(canvas->rectangle({0, 0, 9, 9}), 0);
        canvas.reset();
        EXPECT_EQ(GetCurrentObject(picture.dc(), OBJ_PEN), GetStockObject(BLACK_PEN));
    }
    open(page);
    canvas->save();
    const HDC gone = CreateCompatibleDC(nullptr);
    TvDeviceCanvas onGone(gone, page);
    TvDeviceCanvas onNothing(nullptr, page);
    DeleteDC(gone);
    for (TvDeviceCanvas* dead : {&onGone, &onNothing}) {
        dead->save();
        EXPECT_EQ(dead->clip({0, 0, 10, 10}), 0);
        EXPECT_EQ(dead->line({0, 0}, {9, 9}), 0);
        EXPECT_EQ(dead->rectangle({0, 0, 9, 9}), 0);
        EXPECT_EQ(dead->text({0, 9}, "a"), 0);
        EXPECT_EQ(dead->restore(), 0);
        EXPECT_EQ(dead->faultCount(), 5U);
        EXPECT_EQ(dead->faults()[4].kind, TvCanvasFault::Device);
        EXPECT_EQ(dead->faults()[4].drawing, 0U);
    }
}

TEST_F(DeviceCanvas, KnowsResolutionsAndSheets) {
    const TvDevicePage twice = TvDevicePage::atResolution(picture.dc(), 300, 150, 2);
    EXPECT_DOUBLE_EQ(twice.scaleX, GetDeviceCaps(picture.dc(), LOGPIXELSX) / 36.0);
    EXPECT_EQ(twice.height, 150);
    const TvDevicePage surface = TvDevicePage::sheet(picture.dc());
    EXPECT_NEAR(surface.width * surface.scaleX, GetDeviceCaps(picture.dc(), HORZRES), 1e-6);
    EXPECT_EQ(surface.originX, 0);
}

}  // namespace

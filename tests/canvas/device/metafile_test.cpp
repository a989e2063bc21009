// Enhanced metafiles, read back and played as other programs do (Windows only).
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "canvas/device/memory_picture.h"
#include "canvas/sample_drawing.h"
#include "support/temp_folder.h"
#include "support/window_kit.h"
#include "toolbox/canvas_device.h"
#include "toolbox/messages.h"

namespace {

constexpr double kMillimetres = 25.4 / 72;  // in a point

ENHMETAHEADER headerOf(HENHMETAFILE file) {
    ENHMETAHEADER header{};
    EXPECT_GT(GetEnhMetaFileHeader(file, sizeof header, &header), 0U);
    return header;
}

/// A frame in hundredths of millimetres, within 1 %.
void expectSize(const RECTL& frame, double width, double height) {
    EXPECT_NEAR(frame.right - frame.left, width * kMillimetres * 100, width * kMillimetres);
    EXPECT_NEAR(frame.bottom - frame.top, height * kMillimetres * 100, height * kMillimetres);
}

/// A black frame along the border of the page, and a thick cross in it.
void drawBorder(TvCanvas& canvas) {
    const double w = canvas.width();
    const double h = canvas.height();
    canvas.setPen(TvPen::none());
    canvas.setBrush(TvColor{});
    canvas.path(TvPath().rectangle({0, 0, w, h}).rectangle({6, 6, w - 6, h - 6}));
    canvas.rectangle({w / 2 - 3, 0, w / 2 + 3, h});
}

TEST(Metafile, PastesInTheSizeOfTheCanvas) {
    for (const auto& [width, height] : {std::pair{360.0, 180.0}, std::pair{36.0, 72.0}}) {
        TvMetafile picture(width, height);
        drawBorder(picture);
        const std::string bytes = picture.bytes();
        const HENHMETAFILE file = SetEnhMetaFileBits(static_cast<UINT>(bytes.size()),
                                                     reinterpret_cast<const BYTE*>(bytes.data()));
        const ENHMETAHEADER header = headerOf(file);
        expectSize(header.rclFrame, width, height);
        for (const int dpi : {96, 144}) {
            // As a program of that resolution gives it its place.
            const auto pixels = [dpi](LONG hundredths) {
                return static_cast<int>(std::lround(hundredths * dpi / 2540.0));
            };
            const int wide = pixels(header.rclFrame.right - header.rclFrame.left);
            const int high = pixels(header.rclFrame.bottom - header.rclFrame.top);
            const MemoryPicture page(wide + 40, high + 40);
            const RECT place{20, 20, 20 + wide, 20 + high};
            EXPECT_TRUE(PlayEnhMetaFile(page.dc(), file, &place));
            const RECT ink = page.ink();
            const double scale = dpi / 72.0;
            EXPECT_NEAR(ink.right - ink.left, width * scale, std::max(1.0, width * scale * 0.01));
            EXPECT_NEAR(ink.bottom - ink.top, height * scale, std::max(1.0, height * scale * 0.01));
            EXPECT_NEAR(ink.left, 20, 1);
            EXPECT_NEAR(ink.top, 20, 1);
            EXPECT_EQ(page.at(20 + wide / 2, 20 + high / 2), 0U);
            EXPECT_EQ(page.at(20 + wide / 4 + 2, 20 + high / 2), 0xFFFFFFU);
        }
        DeleteEnhMetaFile(file);
    }
}

TEST(Metafile, GoesToTheClipboard) {
    TvMetafile picture(kSampleWidth, kSampleHeight);
    drawSample(picture);
    ASSERT_EQ(picture.copy(nullptr), 1);
    ASSERT_TRUE(OpenClipboard(nullptr));
    const auto file = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
    ASSERT_TRUE(file);
    expectSize(headerOf(file).rclFrame, kSampleWidth, kSampleHeight);
    CloseClipboard();

    const HWND other =
        CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ASSERT_TRUE(OpenClipboard(other));
    GMSG::language = GMSG::English;
    CString why;
    EXPECT_EQ(picture.copy(&why), 0);
    EXPECT_STREQ(why, "Copying failed: the clipboard is in use. Try again.");
    CloseClipboard();
    DestroyWindow(other);
}

TEST(Metafile, IsWrittenToAFile) {
    const TempFolder folder;
    TvMetafile picture(kSampleWidth, kSampleHeight);
    drawSample(picture);
    const std::string name = folder / "sample.emf";
    EXPECT_EQ(picture.write(name.c_str(), nullptr), 1);
    const HENHMETAFILE written = GetEnhMetaFileA(name.c_str());
    expectSize(headerOf(written).rclFrame, kSampleWidth, kSampleHeight);
    DeleteEnhMetaFile(written);
    CString why;
    EXPECT_EQ(picture.write((folder / "none/sample.emf").c_str(), &why), 0);
    EXPECT_FALSE(why.IsEmpty());
    toolbox::testing::expectNoHandlesLeft(5, [&] { EXPECT_FALSE(picture.bytes().empty()); });
}

}  // namespace

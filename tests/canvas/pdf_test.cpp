#include <gtest/gtest.h>

#include <numbers>
#include <string>

#include "canvas/pdf_page.h"

namespace {

using toolbox::canvas::PdfPage;

TEST(PdfPage, DrawsFromTheLowerLeftCorner) {
    PdfPage page(100, 200);
    page.setPen({TvColor{255, 0, 51}, 1.5, {3, 1}});
    page.line({10, 20}, {30, 40});
    page.line({10, 20}, {30, 40});  // in the same styles
    page.setBrush(TvColor{0, 0, 255});
    page.setPen({TvColor{255, 0, 51}, 1.5});
    page.polygon({{0, 0}, {1, 0}, {0, 1}});
    page.setPen(TvPen::none());
    page.path(TvPath().moveTo({0, 0}).curveTo({1, 1}, {2, 2}, {3, 3}));
    EXPECT_EQ(page.content(),
              "1 j\n1 0 0.2 RG\n1.5 w\n[3 1] 0 d\n10 180 m\n30 160 l\nS\n"
              "10 180 m\n30 160 l\nS\n"
              "[] 0 d\n0 0 1 rg\n0 200 m\n1 200 l\n0 199 l\nh\nB*\n"
              "0 200 m\n1 199 2 198 3 197 c\nf*\n");
}

TEST(PdfPage, WritesTextsInRunsOfTheStandardFonts) {
    PdfPage page(100, 200);
    page.setFont({TvFont::Times, 10, true});
    page.text({10, 20}, TvText("(\\)\351").addUtf8("\xCF\x83").superscript("2"));
    page.setFont({TvFont::Courier, 8, false, true, TvColor{255, 255, 255}});
    page.text({0, 0}, "up", {TvAlign::left, TvLevel::baseline, -std::numbers::pi / 2});
    EXPECT_EQ(page.content(),
              "1 j\n0 0 0 rg\nBT\n/F5 10 Tf\n1 0 0 1 10 180 Tm\n(\\(\\\\\\)\\351)Tj\n"
              "/F12 10 Tf\n1 0 0 1 23.88 180 Tm\n(s)Tj\n"
              "/F5 6 Tf\n1 0 0 1 29.91 183.5 Tm\n(2)Tj\nET\n"
              "1 1 1 rg\nBT\n/F10 8 Tf\n0 1 -1 0 0 200 Tm\n(up)Tj\nET\n");
}

TEST(PdfPage, SetsStylesAgainAfterAClipping) {
    PdfPage page(100, 200);
    page.save();
    page.clip({0, 0, 10, 10});
    page.line({1, 1}, {2, 2});
    page.restore();
    page.line({1, 1}, {2, 2});
    page.clip(TvPath());
    const std::string line = "0 0 0 RG\n0.5 w\n[] 0 d\n1 199 m\n2 198 l\nS\n";
    EXPECT_EQ(page.content(), "1 j\nq\n0 200 m\n10 200 l\n10 190 l\n0 190 l\nh\nW* n\n" + line +
                                  "Q\n" + line + "q\n-2 -2 1 1 re\nW* n\nQ\n");
}

}  // namespace

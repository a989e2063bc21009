#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <string>

#include "canvas/pdf_page.h"
#include "sample_drawing.h"

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

/// The text of an object, by where the cross-reference table says that it is.
class PdfFile {
  public:
    explicit PdfFile(std::string bytes) : bytes_(std::move(bytes)) {
        const std::size_t start = bytes_.rfind("startxref\n");
        table_ = std::stoul(bytes_.substr(start + 10));
        EXPECT_EQ(bytes_.substr(table_, 7), "xref\n0 ");
        count_ = std::stoul(bytes_.substr(table_ + 7));
    }
    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] std::string object(std::size_t number) const {
        const std::size_t first = bytes_.find('\n', table_ + 5) + 1;
        const std::string entry = bytes_.substr(first + 20 * number, 20);
        EXPECT_EQ(entry.substr(10), " 00000 n \n");
        const std::string head = std::to_string(number) + " 0 obj\n";
        const std::size_t place = std::stoul(entry);
        EXPECT_EQ(bytes_.substr(place, head.size()), head);
        return bytes_.substr(place, bytes_.find("endobj", place) - place);
    }

  private:
    std::string bytes_;
    std::size_t table_ = 0;
    std::size_t count_ = 0;
};

TEST(Pdf, FindsEachObjectByItsTable) {
    TvPdf pdf;
    pdf.setTitle("\351");
    drawSample(pdf.addPage(kSampleWidth, kSampleHeight));
    pdf.addPage(10, 20).text({0, 0}, "a");
    const PdfFile file(pdf.bytes());
    // Catalogue, pages, description; 4 fonts and a map of Symbol; two pages with their contents.
    ASSERT_EQ(file.count(), 1U + 3 + 4 * 2 + 1 + 4);
    std::string all;
    for (std::size_t i = 1; i < file.count(); ++i) all += file.object(i);
    EXPECT_NE(file.object(2).find("/Count 2 /Kids [13 0 R 15 0 R]"), std::string::npos);
    EXPECT_NE(file.object(3).find("<FEFF00E9>"), std::string::npos);
    EXPECT_NE(file.object(15).find("/MediaBox [0 0 10 20] /Contents 16 0 R"), std::string::npos);
    const auto times = [&](const std::string& part) {
        std::size_t n = 0;
        for (std::size_t at = 0; (at = all.find(part, at)) != std::string::npos; ++at) ++n;
        return n;
    };
    EXPECT_EQ(times("/WinAnsiEncoding"), 3U);  // Symbol has its own
    EXPECT_EQ(times("/BaseFont /Symbol /FirstChar"), 1U);
    EXPECT_EQ(times("/ToUnicode"), 1U);
    EXPECT_EQ(times("<73> <03C3>\n"), 1U);
    EXPECT_EQ(times("/Type /Page "), 2U);
    EXPECT_EQ(PdfFile(TvPdf().bytes()).count(), 1U + 5);  // a file needs a page
}

}  // namespace

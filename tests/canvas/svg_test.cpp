#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <numbers>
#include <string>

#include "sample_drawing.h"
#include "support/temp_folder.h"

namespace {

const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100pt\" height=\"50.5pt\" "
    "viewBox=\"0 0 100 50.5\" fill-rule=\"evenodd\" clip-rule=\"evenodd\" "
    "stroke-linejoin=\"round\">\n";

/// The file without its head and end.
std::string body(const TvSvg& svg) {
    const std::string bytes = svg.bytes();
    EXPECT_EQ(bytes.substr(0, kHead.size()), kHead);
    EXPECT_EQ(bytes.substr(bytes.size() - 7), "</svg>\n");
    return bytes.substr(kHead.size(), bytes.size() - kHead.size() - 7);
}

TEST(Svg, WritesPaths) {
    TvSvg svg(100, 50.5);
    svg.setPen({TvColor{255, 0, 16}, 1.25, {3, 1.5}});
    svg.line({0.0004, -0.0004}, {1e9, 2.0 / 3});
    svg.setPen({{}, 1e-9, {1e-9}});
    svg.line({0, 0}, {1, 1});
    svg.setPen(TvPen::none());
    svg.setBrush(TvColor{1, 2, 3});
    svg.polygon({{1, 2}, {3, 4}, {5, 6}});
    svg.path(TvPath().moveTo({0, 0}).curveTo({1, 1}, {2, 2}, {3, 3}));
    EXPECT_EQ(body(svg),
              "<path d=\"M0 0L1000000000 0.667\" fill=\"none\" stroke=\"#ff0010\" "
              "stroke-width=\"1.25\" stroke-dasharray=\"3 1.5\"/>\n"
              "<path d=\"M0 0L1 1\" fill=\"none\" stroke=\"#000000\" "
              "stroke-width=\"0.001\" stroke-dasharray=\"0.001\"/>\n"
              "<path d=\"M1 2L3 4L5 6Z\" fill=\"#010203\"/>\n"
              "<path d=\"M0 0C1 1 2 2 3 3\" fill=\"#010203\"/>\n");
}

TEST(Svg, WritesTextsAtTheirMeasuredWidth) {
    TvSvg svg(100, 50.5);
    svg.text({10, 20}, "a<&>\351", {TvAlign::right});
    svg.setFont({TvFont::Courier, 10, true, true});
    svg.text({0, 0}, TvText("M").add(TvText::fromUtf8("\xCE\xB1")).superscript("2"),
             {TvAlign::left, TvLevel::baseline, std::numbers::pi / 2});
    EXPECT_EQ(
        body(svg),
        "<text xml:space=\"preserve\" font-family=\"Helvetica, Arial, Liberation Sans, "
        "sans-serif\" fill=\"#000000\" x=\"-19.47\" y=\"20\" font-size=\"10\" "
        "textLength=\"29.47\" lengthAdjust=\"spacingAndGlyphs\">a&lt;&amp;&gt;\xC3\xA9</text>\n"
        "<text xml:space=\"preserve\" font-family=\"Courier, Courier New, Liberation Mono, "
        "monospace\" font-weight=\"bold\" font-style=\"italic\" fill=\"#000000\" "
        "transform=\"matrix(0 1 -1 0 0 0)\">"
        "<tspan x=\"0\" y=\"0\" font-size=\"10\" textLength=\"6\" "
        "lengthAdjust=\"spacingAndGlyphs\">M</tspan>"
        "<tspan font-family=\"Times, Times New Roman, Liberation Serif, serif\" "
        "font-weight=\"normal\" font-style=\"normal\" x=\"6\" y=\"0\" font-size=\"10\" "
        "textLength=\"6.31\" lengthAdjust=\"spacingAndGlyphs\">\xCE\xB1</tspan>"
        "<tspan x=\"12.31\" y=\"-3.5\" font-size=\"6\" textLength=\"3.6\" "
        "lengthAdjust=\"spacingAndGlyphs\">2</tspan></text>\n");
}

TEST(Svg, NestsClippingsAndClosesThem) {
    TvSvg svg(100, 50.5);
    svg.setTitle("A & \351\1");
    svg.save();
    svg.clip({0, 0, 1, 1});
    svg.restore();
    svg.clip({0, 0, 2, 2});
    const std::string expected =
        "<title>A &amp; \xC3\xA9</title>\n"
        "<clipPath id=\"clip1\"><path d=\"M0 0L1 0L1 1L0 1Z\"/></clipPath>\n"
        "<g clip-path=\"url(#clip1)\">\n</g>\n"
        "<clipPath id=\"clip2\"><path d=\"M0 0L2 0L2 2L0 2Z\"/></clipPath>\n"
        "<g clip-path=\"url(#clip2)\">\n</g>\n";
    EXPECT_EQ(body(svg), expected);
    EXPECT_EQ(body(svg), expected);  // asking for the bytes changes nothing
}

TEST(Svg, IsWrittenWholeOrNotAtAll) {
    const TempFolder folder;
    const std::string name = folder.write("drawing.svg", "before");
    TvSvg svg(100, 50.5);
    EXPECT_EQ(svg.write(name.c_str(), nullptr), 1);
    EXPECT_EQ(folder.read("drawing.svg"), svg.bytes());
    CString why;
    EXPECT_EQ(svg.write((folder / "none/drawing.svg").c_str(), &why), 0);
    EXPECT_FALSE(why.IsEmpty());
    EXPECT_EQ(svg.write("", nullptr), 0);
}

/// Numbers as a German reads them: 1.234,5.
class CommaPoint : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Drawings, AreTheSameBytesUnderAnyLocale) {
    const auto both = [] {
        TvSvg svg(kSampleWidth, kSampleHeight);
        TvPdf pdf;
        drawSample(svg);
        drawSample(pdf.addPage(kSampleWidth, kSampleHeight));
        return svg.bytes() + pdf.bytes();
    };
    const std::string plain = both();
    const std::locale before =
        std::locale::global(std::locale(std::locale(), new CommaPoint));  // which it owns
    // Those that are installed, too.
    for (const char* name : {"fr_FR.UTF-8", "de_DE.UTF-8", "French_France.1252"})
        if (std::setlocale(LC_ALL, name)) break;
    const std::string other = both();
    std::setlocale(LC_ALL, "C");
    std::locale::global(before);
    EXPECT_EQ(other, plain);
}

}  // namespace

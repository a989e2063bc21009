// One page of a PDF file: the operators that draw it.
#pragma once

#include <bitset>
#include <optional>
#include <string>

#include "canvas/pdf_fonts.h"
#include "toolbox/canvas.h"

namespace toolbox::canvas {

class PdfPage final : public TvCanvas {
  public:
    PdfPage(double width, double height) : TvCanvas(width, height) {}

    /// The contents, whole.
    [[nodiscard]] std::string content() const;
    /// The fonts that its texts have, by pdfFont().
    [[nodiscard]] std::bitset<kPdfFonts> fonts() const { return fonts_; }

  protected:
    void onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) override;
    void onText(TvPoint at, const TvText& text, const TvFont& font,
                const TvTextPlace& place) override;
    void onClip(const TvPath& path) override;
    void onUnclip() override;

  private:
    void usePen(const TvPen& pen);
    void useFill(TvColor color);
    void addPath(const TvPath& path);
    void addPoint(TvPoint point);

    std::string content_;
    std::bitset<kPdfFonts> fonts_;
    // What the reader draws with at this place; none when it is not known.
    std::optional<TvPen> pen_;
    std::optional<TvColor> fill_;
};

}  // namespace toolbox::canvas

// The project is fitted into a sheet; where it could not be read there, into as much more as that
// takes. Then the page is cut down to what is drawn.
#include "drawing/drawing_page.h"

#include <algorithm>

namespace {

/// A4, lying, and the largest side of a page.
constexpr PixelRect kSheet{0, 0, 842, 595};
constexpr int kLargest = 14400;
/// Points a metre.
constexpr double kReadable = 34;

/// What a project takes at a readable size.
PixelRect readablePart(const Project& project) {
    constexpr int kRoom = 200;  // arrows above, texts below
    const toolbox::PlaneRect extent = extentOf(project);
    const auto side = [](double metres) {
        return static_cast<int>(std::min<double>(metres * kReadable + kRoom, kLargest));
    };
    return {0, 0, side(extent.right - extent.left), side(extent.top - extent.bottom)};
}

bool hasEnding(std::string_view file, std::string_view ending) {
    if (file.size() < ending.size()) return false;
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(file.substr(file.size() - ending.size()), ending, {}, lower);
}

}  // namespace

DrawingPage pageOf(const OpenProject& work) {
    DrawingPage page{.layout = DrawingLayout(depthIn(work))};
    page.layout.measureLoads(work.project());
    page.layout.fit(work.project(), kSheet);
    if (page.layout.plane.scale() < kReadable)
        page.layout.fit(work.project(), readablePart(work.project()));
    const Scene all{work, page.layout, {-kLargest, -kLargest, 2 * kLargest, 2 * kLargest}};
    PixelRect drawn = drawnPart(all, layOutLabels(all));
    if (drawn.width() <= 0) drawn = kSheet;
    page.layout.plane.pan(-drawn.left, -drawn.top);
    page.width = std::min(drawn.width(), kLargest);
    page.height = std::min(drawn.height(), kLargest);
    return page;
}

void drawPage(TvCanvas& canvas, const OpenProject& work, const DrawingPage& page) {
    const PixelRect all{0, 0, page.width, page.height};
    Pencil(canvas).fill(all, paints::kPaper);
    const Scene scene{work, page.layout, all};
    drawProject(canvas, scene, layOutLabels(scene));
}

int writeDrawing(const OpenProject& work, const CString& title, const CString& file, CString* why) {
    const DrawingPage page = pageOf(work);
    if (hasEnding(file.view(), ".pdf")) {
        TvPdf pdf;
        pdf.setTitle(title.view());
        drawPage(pdf.addPage(page.width, page.height), work, page);
        return pdf.write(file.c_str(), why);
    }
    TvSvg svg(page.width, page.height);
    svg.setTitle(title.view());
    drawPage(svg, work, page);
    return svg.write(file.c_str(), why);
}

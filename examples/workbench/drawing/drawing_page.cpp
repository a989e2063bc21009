// The project is fitted into a sheet; where it could not be read there, into as much more as that
// takes. Then the page is cut down to what is drawn.
#include "drawing/drawing_page.h"

#include <algorithm>

namespace {

/// A4, lying; the largest side of a page; around what is drawn, for texts beyond the beams' ends.
constexpr PixelRect kSheet{0, 0, 842, 595};
constexpr int kLargest = 14400, kBeside = 50, kAround = 12;
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

/// All that is drawn.
PixelRect drawnPart(const OpenProject& work, const DrawingLayout& layout,
                    const std::vector<LabelPlace>& labels) {
    PixelRect all{kLargest, kLargest, 0, 0};
    const auto include = [&all](const PixelRect& rect) {
        all = {std::min(all.left, rect.left), std::min(all.top, rect.top),
               std::max(all.right, rect.right), std::max(all.bottom, rect.bottom)};
    };
    for (const Beam& beam : work.project().beams()) {
        PixelRect around = layout.around(beam, layout.place(beam));
        around.left -= kBeside;
        around.right += kBeside;
        include(around);
    }
    for (const LabelPlace& label : labels) include(label.box.grown(kAround));
    return all.width() > 0 ? all : kSheet;
}

bool hasEnding(std::string_view file, std::string_view ending) {
    if (file.size() < ending.size()) return false;
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(file.substr(file.size() - ending.size()), ending, {}, lower);
}

}  // namespace

DrawingPage pageOf(const OpenProject& work, ProjectKeys& keys) {
    DrawingPage page{.layout = DrawingLayout(depthIn(work))};
    page.layout.measureLoads(work.project());
    page.layout.fit(work.project(), kSheet);
    if (page.layout.plane.scale() < kReadable)
        page.layout.fit(work.project(), readablePart(work.project()));
    // Labels are as wide as their texts, which a drawing beside the page tells.
    constexpr PixelRect kAll{-kLargest, -kLargest, 2 * kLargest, 2 * kLargest};
    TvRecording trial(kLargest, kLargest);
    const std::vector<LabelPlace> labels = drawProject(trial, {work, keys, page.layout, kAll});
    const PixelRect drawn = drawnPart(work, page.layout, labels);
    page.layout.plane.pan(-drawn.left, -drawn.top);
    page.width = std::min(drawn.width(), kLargest);
    page.height = std::min(drawn.height(), kLargest);
    return page;
}

void drawPage(TvCanvas& canvas, const OpenProject& work, ProjectKeys& keys,
              const DrawingPage& page) {
    const PixelRect all{0, 0, page.width, page.height};
    Pencil(canvas).fill(all, paints::kPaper);
    drawProject(canvas, {work, keys, page.layout, all});
}

int writeDrawing(const OpenProject& work, ProjectKeys& keys, const CString& title,
                 const CString& file, CString* why) {
    const DrawingPage page = pageOf(work, keys);
    if (hasEnding(file.view(), ".pdf")) {
        TvPdf pdf;
        pdf.setTitle(title.view());
        drawPage(pdf.addPage(page.width, page.height), work, keys, page);
        return pdf.write(file.c_str(), why);
    }
    TvSvg svg(page.width, page.height);
    svg.setTitle(title.view());
    drawPage(svg, work, keys, page);
    return svg.write(file.c_str(), why);
}

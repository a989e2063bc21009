// What a device says of its resolution and of its paper.
#include "toolbox/canvas_device.h"

namespace {

constexpr double kPointsPerInch = 72;

/// Pixels for a point.
[[nodiscard]] double scaleOf(HDC dc, int resolution) {
    return GetDeviceCaps(dc, resolution) / kPointsPerInch;
}

}  // namespace

TvDevicePage TvDevicePage::atResolution(HDC dc, double width, double height, double zoom) {
    return {width, height, scaleOf(dc, LOGPIXELSX) * zoom, scaleOf(dc, LOGPIXELSY) * zoom, 0, 0};
}

TvDevicePage TvDevicePage::sheet(HDC printer) {
    const auto pixels = [printer](int ofSheet, int ofSurface) {
        const int size = GetDeviceCaps(printer, ofSheet);
        return static_cast<double>(size > 0 ? size : GetDeviceCaps(printer, ofSurface));
    };
    TvDevicePage page = atResolution(printer, 0, 0);
    page.width = pixels(PHYSICALWIDTH, HORZRES) / page.scaleX;
    page.height = pixels(PHYSICALHEIGHT, VERTRES) / page.scaleY;
    page.originX = -GetDeviceCaps(printer, PHYSICALOFFSETX);
    page.originY = -GetDeviceCaps(printer, PHYSICALOFFSETY);
    return page;
}

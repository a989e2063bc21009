// A device context that draws paths and texts of a page. Windows only.
#pragma once

#include <windows.h>

#include <vector>

#include "canvas/device/device_shape.h"
#include "canvas/device/gdi_tools_win32.h"
#include "toolbox/canvas_device.h"

struct TvDeviceCanvas::Device {
    Device(HDC dc, const TvDevicePage& page);
    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    // False when the context refuses.
    [[nodiscard]] bool drawPath(const TvPath& path, const TvPen* pen, const TvBrush* brush);
    [[nodiscard]] bool drawText(TvPoint at, const TvText& text, const TvFont& font,
                                const TvTextPlace& place);
    [[nodiscard]] bool clip(const TvPath& path);
    [[nodiscard]] bool unclip();

  private:
    [[nodiscard]] bool fill(const TvBrush& brush);
    [[nodiscard]] bool outline(const TvPath& path, const TvPen& pen);
    [[nodiscard]] bool polygons();
    [[nodiscard]] bool clipToShape();

    /// Of a text, in units for a point of the page.
    struct Direction {
        double x;
        double y;
    };
    [[nodiscard]] bool drawRun(const TvPlacedRun& run, const TvFont& font, double angle);
    void setEnds(const TvPlacedRun& run, const TvFont& font);
    [[nodiscard]] bool drawWhole(TvPoint start, Direction along);
    [[nodiscard]] bool drawLetters(TvPoint start, Direction along);

    HDC dc_;
    toolbox::canvas::DeviceMap map_;
    int saved_ = 0;  ///< the context's state before; 0 for a context that cannot be drawn on
    bool isPicture_ = false;  ///< a metafile, whose units are fine
    toolbox::canvas::GdiTools tools_;
    toolbox::canvas::DeviceShape shape_;
    std::vector<int> clips_;  ///< the context's state before each; 0 for one that was refused
    // Of the letters of a run; they keep their memory.
    std::vector<wchar_t> letters_;
    std::vector<double> ends_;  ///< from the run's start, points
    std::vector<INT> advances_;
};

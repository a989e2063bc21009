// Canvases on Windows' device contexts, and enhanced metafiles (Windows only).
//
//     void View::paint(HDC dc) {                       // a window's, or one of a bitmap in memory
//         TvDeviceCanvas canvas(dc, TvDevicePage::atResolution(dc, 300, 150, zoom_));
//         drawing_.play(canvas);                       // a TvRecording, or drawBeam(canvas)
//     }
//     void print(HDC printer) {                        // between StartPage() and EndPage()
//         TvDeviceCanvas canvas(printer, TvDevicePage::sheet(printer));
//         drawBeam(canvas);
//     }
//     TvMetafile picture(300, 150);
//     drawBeam(picture);
//     CString why;
//     if (!picture.copy(&why)) show(why);              // to the clipboard
//
// Texts are in Arial, Times New Roman, Courier New and Symbol. Each letter stands where the widths
// of the canvas put it, to the nearest unit, whatever those of the device's fonts are.
#pragma once

#if !defined(_WIN32)
#error "toolbox/canvas_device.h needs device contexts: it exists on Windows only"
#endif

#include <memory>
#include <string>

#include "toolbox/canvas.h"
#include "toolbox/win_types.h"

/// How a canvas' page lies on a device context, in the units of the context's mapping: pixels,
/// unless another is set there. The units of x and y point right and down. A plain value.
struct TB_API TvDevicePage {
    double width = 595;   ///< of the page, points
    double height = 842;  ///< of the page, points
    double scaleX = 1;    ///< units for a point, along x; more than 0
    double scaleY = 1;    ///< units for a point, along y; more than 0
    double originX = 0;   ///< where the page's upper left corner lies, units
    double originY = 0;   ///< where the page's upper left corner lies, units

    /// A page in its true size, or magnified, at the origin: `dc` says how many pixels an inch has.
    [[nodiscard]] static TvDevicePage atResolution(HDC dc, double width, double height,
                                                   double zoom = 1);
    /// The sheet of paper in a printer, with the borders on which it cannot print. A device without
    /// paper has a sheet of the size of its surface.
    [[nodiscard]] static TvDevicePage sheet(HDC printer);
};

/// A canvas on a device context, which it borrows and gives back in its destructor as it was. What
/// is selected into it, set or clipped meanwhile by others is lost then. Pens are at least a unit
/// wide.
///
/// A drawing operation that the device refuses (no memory, a context that was deleted) returns 0
/// and notes TvCanvasFault::Device. So does every one on a context that there is not, and with a
/// page whose numbers cannot be.
class TB_API TvDeviceCanvas : public TvCanvas {
  public:
    /// Saves the state of `dc`, which has to live as long as the canvas.
    TvDeviceCanvas(HDC dc, const TvDevicePage& page);
    /// Gives it back as it was.
    ~TvDeviceCanvas() override;

  protected:
    void onPath(const TvPath& path, const TvPen* pen, const TvBrush* brush) override;
    void onText(TvPoint at, const TvText& text, const TvFont& font,
                const TvTextPlace& place) override;
    void onClip(const TvPath& path) override;
    void onUnclip() override;

  private:
    struct Device;
    std::unique_ptr<Device> device_;
};

/// A drawing as an enhanced metafile, the picture that other programs paste. Its frame is the
/// canvas, in hundredths of millimetres, whatever the screen is.
class TB_API TvMetafile : public TvRecording {
  public:
    using TvRecording::TvRecording;

    /// The file as it stands; empty when the system refuses to make it, for want of memory.
    [[nodiscard]] std::string bytes() const;
    /// As TvSvg::write().
    int write(const char* fileName, CString* why) const;
    /// Puts the picture on the clipboard in place of what is there. 0 with a sentence in `why`,
    /// unless null, when that failed; the clipboard may be empty then.
    int copy(CString* why) const;
};

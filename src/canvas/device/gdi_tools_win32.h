// The pens, brushes and fonts of a device context: made when first used, and selected when they are
// not already. Windows only.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <vector>

#include "toolbox/canvas.h"

namespace toolbox::canvas {

struct GdiDelete {
    void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using GdiObject = std::unique_ptr<void, GdiDelete>;  ///< owns a pen, brush or font

/// A font as the device has it.
struct GdiFace {
    enum Kind : unsigned char { helvetica, times, courier, symbol };

    Kind kind = helvetica;
    bool bold = false;
    bool italic = false;
    int height = 0;  ///< of the size, units
    int turn = 0;    ///< tenths of degrees, counter-clockwise
    bool operator==(const GdiFace&) const = default;
};

/// What is selected here must be let go, or the context restored, before this ends.
class GdiTools {
  public:
    GdiTools(HDC dc, double unitsPerPoint) : dc_(dc), unitsPerPoint_(unitsPerPoint) {}
    ~GdiTools() = default;
    GdiTools(const GdiTools&) = delete;
    GdiTools& operator=(const GdiTools&) = delete;

    // Null is one that draws nothing. False when the device refuses.

    /// A wide pen turns round corners; with `smooth` it is for the many short lines of a curve,
    /// where the round joins would stick out at the ends.
    [[nodiscard]] bool usePen(const TvPen* pen, bool smooth = false);
    [[nodiscard]] bool useBrush(const TvBrush* brush);
    [[nodiscard]] bool useFace(const GdiFace& face);
    [[nodiscard]] bool useTextColor(TvColor color);
    /// Whether the device has the Symbol font. May select a face.
    [[nodiscard]] bool hasSymbol();

    /// Puts objects of the system in the place of those that are selected. What is selected, and
    /// the colour of texts, are taken for unknown afterwards.
    void letGo();

  private:
    struct Font {
        GdiFace face;
        GdiObject object;
    };
    [[nodiscard]] bool select(HGDIOBJ object, HGDIOBJ& selected);
    [[nodiscard]] HGDIOBJ makePen(const TvPen& pen, bool smooth) const;

    HDC dc_;
    double unitsPerPoint_;
    TvPen penKey_;
    bool smooth_ = false;
    GdiObject pen_;
    TvColor brushKey_;
    GdiObject brush_;
    std::vector<Font> fonts_;
    HGDIOBJ selectedPen_ = nullptr;
    HGDIOBJ selectedBrush_ = nullptr;
    HGDIOBJ selectedFont_ = nullptr;
    std::optional<TvColor> textColor_;
    std::optional<bool> hasSymbol_;
};

}  // namespace toolbox::canvas

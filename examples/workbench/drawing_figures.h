// Draggers of the drawing: figures whose dragged point goes where the project allows it.
#pragma once

#include <functional>

#include "drawing_plane.h"
#include "toolbox/graphics.h"

/// Where the dragged point comes to lie when the mouse is at a pixel.
using Guide = std::function<Pixel(Pixel mouse)>;

/// A line that starts at a given pixel.
class GuidedLine : public VectIniDragger {
  public:
    GuidedLine(Pixel start, HCURSOR cursor, Guide guide);

  protected:
    void modifyDraggedPoint(POINT& point) override;

  private:
    Guide guide_;
};

/// A line of fixed length and direction.
class GuidedStick : public StickDragger {
  public:
    GuidedStick(Pixel stick, HCURSOR cursor, Guide guide);

  protected:
    void modifyDraggedPoint(POINT& point) override;

  private:
    Guide guide_;
};

/// A box of fixed size; `box` is where it is when the dragged point is at (0, 0).
class GuidedBox : public RectDragger {
  public:
    GuidedBox(const PixelRect& box, HCURSOR cursor, Guide guide);

  protected:
    void modifyDraggedPoint(POINT& point) override;
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;

  private:
    PixelRect box_;
    Guide guide_;
};

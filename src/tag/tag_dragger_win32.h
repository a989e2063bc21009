// The dragger of gestures with tags.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "toolbox/graphics.h"

namespace toolbox::tag {

/// Shows where things go while they are dragged. Nothing moves before the mouse has gone as far as
/// the system wants it to; until then, and where nothing has moved, nothing is shown.
class TagDragger : public Dragger {
  public:
    /// What is shown.
    struct Figure {
        std::vector<RECT> boxes;
        std::vector<std::pair<POINT, POINT>> lines;
    };
    /// Of a gesture that leads from a point to another.
    using Shape = std::function<Figure(const POINT& start, const POINT& end)>;

    TagDragger() : Dragger(0, nullptr, 0) {}

    /// For the next gesture. Where it cannot keep an axis, Shift is ignored.
    void setShape(Shape shape, bool keepsAxis);
    /// Draws the figure, when it is shown, where it was painted over.
    void redraw(HDC dc);
    void anchor(const POINT& point, HDC dc) override;
    void setMode(int ortho) override;

  protected:
    void modifyDraggedPoint(POINT& point) override;
    void drawVisible(HDC dc, const POINT& start, const POINT& end) override;
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override;

  private:
    Shape shape_;
    bool keepsAxis_ = true;
    bool moves_ = false;
};

}  // namespace toolbox::tag

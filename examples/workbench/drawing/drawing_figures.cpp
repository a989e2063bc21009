// The library's draggers with a guide that moves the dragged point to where it is allowed to be.
#include "drawing/drawing_figures.h"

#include <utility>

namespace {

template <class Figure>
class Guided : public Figure {
  public:
    template <class... Args>
    explicit Guided(Guide guide, const Args&... args) : Figure(args...), guide_(std::move(guide)) {}

  protected:
    void modifyDraggedPoint(POINT& point) override {
        const Pixel to = guide_({point.x, point.y});
        point = {to.x, to.y};
    }

  private:
    Guide guide_;
};

/// Of one size, rather than between the points of the gesture.
class Box : public RectDragger {
  public:
    Box(const PixelRect& box, HCURSOR cursor) : RectDragger(cursor), box_(box) {}

  protected:
    void drawVisible(HDC dc, const POINT&, const POINT& end) override {
        RectDragger::drawVisible(dc, {end.x + box_.left, end.y + box_.top},
                                 {end.x + box_.right, end.y + box_.bottom});
    }
    void drawInvisible(HDC dc, const POINT& start, const POINT& end) override {
        drawVisible(dc, start, end);
    }

  private:
    PixelRect box_;
};

}  // namespace

std::unique_ptr<Dragger> guidedLine(Pixel start, HCURSOR cursor, Guide guide) {
    auto line = std::make_unique<Guided<VectIniDragger>>(std::move(guide), 0, cursor, 0);
    line->setDims({start.x, start.y});
    return line;
}

std::unique_ptr<Dragger> guidedStick(Pixel stick, HCURSOR cursor, Guide guide) {
    auto line = std::make_unique<Guided<StickDragger>>(std::move(guide), 0, cursor, 0);
    line->setDims({0, 0}, {stick.x, stick.y});
    return line;
}

std::unique_ptr<Dragger> guidedBox(const PixelRect& box, HCURSOR cursor, Guide guide) {
    return std::make_unique<Guided<Box>>(std::move(guide), box, cursor);
}

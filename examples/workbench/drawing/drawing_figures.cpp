// The library's draggers with a guide that moves the dragged point to where it is allowed to be.
#include "drawing/drawing_figures.h"

#include <utility>

#include "drawing/screen_scale.h"

namespace {

template <class Figure>
class Guided : public Figure {
  public:
    template <class... Args>
    explicit Guided(Guide guide, const Args&... args) : Figure(args...), guide_(std::move(guide)) {}

  protected:
    void modifyDraggedPoint(POINT& point) override {
        const ScreenScale screen;
        point = screen.toWindow(guide_(screen.toDrawing(point)));
    }

  private:
    Guide guide_;
};

}  // namespace

std::unique_ptr<Dragger> guidedLine(Pixel start, HCURSOR cursor, Guide guide) {
    auto line = std::make_unique<Guided<VectIniDragger>>(std::move(guide), 0, cursor, 0);
    line->setDims(ScreenScale().toWindow(start));
    return line;
}

std::unique_ptr<Dragger> guidedStick(Pixel stick, HCURSOR cursor, Guide guide) {
    auto line = std::make_unique<Guided<StickDragger>>(std::move(guide), 0, cursor, 0);
    line->setDims({0, 0}, ScreenScale().toWindow(stick));
    return line;
}

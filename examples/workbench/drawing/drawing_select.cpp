// Selecting, moving and opening beams and loads.
#include <algorithm>

#include "drawing/drawing_edits.h"
#include "drawing/drawing_figures.h"
#include "drawing/drawing_mode.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"

namespace {

HCURSOR arrowCursor() {
    return LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
}

class SelectMode : public DrawingMode {
  public:
    SelectMode(DrawingView& view, DispatchServer& server)
        : DrawingMode(view, server, CMD_SELECT_MODE) {}

    LRESULT handleMessage(TarvMess& message) override;

  protected:
    std::unique_ptr<Dragger> begin(Pixel at) override;
    void dragged(Pixel start, Pixel end) override;
    void finished(Pixel start, Pixel end) override;

  private:
    [[nodiscard]] std::unique_ptr<Dragger> beamFigure(Pixel at);
    [[nodiscard]] std::unique_ptr<Dragger> loadFigure(Pixel at);
    void moveLoad(Beam beam, double position) const;
    [[nodiscard]] const Selection& chosen() const { return view().shown().selection(); }
    [[nodiscard]] const DrawingPlane& plane() const { return view().layout().plane; }

    Selection grabbed_;
    Pixel origin_;  // of the figure, before it moved
    bool isMenuButtonDown_ = false;
};

LRESULT SelectMode::handleMessage(TarvMess& message) {
    const bool isIdle = !isDragging() && !GetCapture();
    if (isIdle && message.message == WM_LBUTTONDBLCLK && isActive()) {
        view().shown().select(view().at(pixelOf(message.lParam)));
        if (chosen().kind != Selection::Nothing)
            PostMessageA(Workbench::frame().getFrame(), WM_COMMAND, CMD_EDIT, 0);
        message.handled = 1;
        return 0;
    }
    // The other button belongs to a gesture first, which it abandons.
    if (message.message == WM_RBUTTONDOWN || message.message == WM_RBUTTONDBLCLK)
        isMenuButtonDown_ = isIdle;
    if (message.message == WM_RBUTTONUP) {
        // The menu of labels comes with the system's message for menus.
        message.handled = !std::exchange(isMenuButtonDown_, false);
        const Selection under = view().at(pixelOf(message.lParam));
        if (!message.handled && under.kind != Selection::OneLabel) view().shown().select(under);
        return 0;
    }
    return DrawingMode::handleMessage(message);
}

std::unique_ptr<Dragger> SelectMode::begin(Pixel at) {
    grabbed_ = view().at(at);
    view().shown().select(grabbed_);
    switch (grabbed_.kind) {
        case Selection::OneBeam:
            return beamFigure(at);
        case Selection::OneLoad:
            return loadFigure(at);
        default:
            return nullptr;
    }
}

std::unique_ptr<Dragger> SelectMode::beamFigure(Pixel at) {
    const Beam& beam = *view().project().beam(grabbed_.id);
    const BeamPlace place = view().layout().place(beam);
    origin_ = {place.left, place.axis};
    hint(text(kBeamHint, beam.span, beam.x, beam.y));
    const auto guide = [this, at, from = Place{beam.x, beam.y}](Pixel mouse) {
        return isDrag(at, mouse) ? plane().toWindow(::dragged(plane(), from, at, mouse)) : origin_;
    };
    return guidedStick(Pixel{place.width(), 0}, arrowCursor(), guide);
}

std::unique_ptr<Dragger> SelectMode::loadFigure(Pixel at) {
    const Beam beam = *view().project().beam(grabbed_.id);
    const PointLoad load = beam.loads[grabbed_.load];
    const Arrow arrow = view().layout().arrow(beam, view().layout().place(beam), load);
    origin_ = arrow.tail;
    hint(text(kPointLoadHint, load.force, load.position));
    const auto guide = [this, at, beam](Pixel mouse) {
        if (!isDrag(at, mouse)) return origin_;
        const double position = positionOn(view().layout(), beam, mouse.x);
        return Pixel{plane().toWindow({beam.x + position, beam.y}).x, origin_.y};
    };
    return guidedStick(Pixel{0, arrow.tip.y - arrow.tail.y}, arrowCursor(), guide);
}

void SelectMode::dragged(Pixel, Pixel end) {
    if (end == origin_) return;
    const Place to = plane().snappedPlace(end);
    const Beam* const beam = view().project().beam(grabbed_.id);
    if (grabbed_.kind == Selection::OneLoad && beam && grabbed_.load < beam->loads.size())
        hint(text(kPointLoadHint, beam->loads[grabbed_.load].force,
                  positionOn(view().layout(), *beam, end.x)));
    else
        hint(text(kPlaceHint, to.x, to.y));
}

void SelectMode::finished(Pixel, Pixel end) {
    if (end == origin_) return;
    const Place to = plane().snappedPlace(end);
    const Beam* const beam = view().project().beam(grabbed_.id);
    if (!beam) return;
    if (grabbed_.kind == Selection::OneBeam) {
        if (!view().shown().moveBeam(beam->id, to.x, to.y)) refuse(kBeamRefused);
    } else if (grabbed_.load < beam->loads.size()) {
        moveLoad(*beam, positionOn(view().layout(), *beam, end.x));
    }
}

void SelectMode::moveLoad(Beam beam, double position) const {
    beam.loads[grabbed_.load].position = position;
    put(std::move(beam), kStepMoveLoad);
}

}  // namespace

std::unique_ptr<DrawingMode> selectMode(DrawingView& view, DispatchServer& server) {
    return std::make_unique<SelectMode>(view, server);
}

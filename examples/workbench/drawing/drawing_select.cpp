// Selecting, moving and opening what is drawn.
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
    [[nodiscard]] std::unique_ptr<Dragger> labelFigure(Pixel at);
    void moveLoad(Beam beam, double position) const;
    [[nodiscard]] bool moveLabel(Label label, const Place& to) const;
    [[nodiscard]] const Selection& chosen() const { return view().shown().selection(); }
    [[nodiscard]] const DrawingPlane& plane() const { return view().layout().plane; }
    void openMenu(TarvMess& message);

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
    if (message.message == WM_RBUTTONUP && std::exchange(isMenuButtonDown_, false) && isIdle) {
        openMenu(message);
        return 0;
    }
    return DrawingMode::handleMessage(message);
}

void SelectMode::openMenu(TarvMess& message) {
    const Pixel at = pixelOf(message.lParam);
    message.handled = 1;
    view().shown().select(view().at(at));
    if (chosen().kind != Selection::OneLabel) return;
    VoidDragger none(nullptr);
    MouseDragger(none).handlePopupMenu(message.hwnd, {at.x, at.y});
}

std::unique_ptr<Dragger> SelectMode::begin(Pixel at) {
    grabbed_ = view().at(at);
    view().shown().select(grabbed_);
    switch (grabbed_.kind) {
        case Selection::OneBeam:
            return beamFigure(at);
        case Selection::OneLoad:
            return loadFigure(at);
        case Selection::OneLabel:
            return labelFigure(at);
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

std::unique_ptr<Dragger> SelectMode::labelFigure(Pixel at) {
    const Label& label = *view().project().label(grabbed_.id);
    const TvTagOnPage* const drawn = view().drawnLabel(label.id);
    if (!drawn || label.tag.locked) return nullptr;
    const Place anchor{label.tag.anchor.x, label.tag.anchor.y};
    origin_ = plane().toWindow(anchor);
    const PixelRect now = pixelsOf(drawn->box);
    const PixelRect box{now.left - origin_.x, now.top - origin_.y, now.right - origin_.x,
                        now.bottom - origin_.y};
    const auto guide = [this, at, from = anchor](Pixel mouse) {
        return isDrag(at, mouse) ? plane().toWindow(::dragged(plane(), from, at, mouse)) : origin_;
    };
    return guidedBox(box, arrowCursor(), guide);
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
    const Project& project = view().project();
    const Place to = plane().snappedPlace(end);
    if (grabbed_.kind == Selection::OneLabel) {
        const Label* const label = project.label(grabbed_.id);
        if (label && !moveLabel(*label, to)) refuse(kLabelRefused);
        return;
    }
    const Beam* const beam = project.beam(grabbed_.id);
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

bool SelectMode::moveLabel(Label label, const Place& to) const {
    label.tag.anchor = {to.x, to.y};
    label.tag.unplaced = false;
    return view().shown().put(std::move(label), kStepMoveLabel) != 0;
}

}  // namespace

std::unique_ptr<DrawingMode> selectMode(DrawingView& view, DispatchServer& server) {
    return std::make_unique<SelectMode>(view, server);
}

// The modes that put beams and loads into a drawing.
#include <algorithm>

#include "drawing/drawing_edits.h"
#include "drawing/drawing_figures.h"
#include "drawing/drawing_mode.h"
#include "resources/resource.h"
#include "resources/workbench_texts.h"

namespace {

HCURSOR cross() {
    return LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_CROSS));
}

PixelRect between(Pixel a, Pixel b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

/// Drags from one support to the other.
class BeamMode : public DrawingMode {
  public:
    BeamMode(DrawingView& view, DispatchServer& server)
        : DrawingMode(view, server, CMD_BEAM_MODE) {}

  protected:
    std::unique_ptr<Dragger> begin(Pixel at) override {
        const DrawingPlane& plane = view().layout().plane;
        const auto guide = [&plane](Pixel mouse) {
            return plane.toWindow(plane.snappedPlace(mouse));
        };
        const Pixel start = guide(at);
        return guidedLine(start, cross(), [guide, start](Pixel mouse) {
            return Pixel{guide(mouse).x, start.y};
        });
    }
    void dragged(Pixel start, Pixel end) override {
        const Beam beam = beamBetween(view().layout().plane, start, end);
        hint(text(kBeamHint, beam.span, beam.x, beam.y));
    }
    void finished(Pixel start, Pixel end) override {
        if (!isDrag(start, end)) return;
        Beam beam = beamBetween(view().layout().plane, start, end);
        if (beam.span < kSpanMin || beam.span > kSpanMax)
            return refuse(kSpanRefused, kSpanMin, kSpanMax, beam.span);
        beam.name = freeBeamName(view().project());
        beam.section = view().usualSection();
        if (const std::uint32_t id = put(std::move(beam)))
            view().shown().select({Selection::OneBeam, id});
    }
};

/// Drags the arrow of a load from the beam that it acts on.
class PointLoadMode : public DrawingMode {
  public:
    PointLoadMode(DrawingView& view, DispatchServer& server)
        : DrawingMode(view, server, CMD_POINT_LOAD_MODE) {}

  protected:
    std::unique_ptr<Dragger> begin(Pixel at) override {
        const Beam* const beam = view().beamAt(at);
        if (!beam) return hint(text(kPressOnBeam)), nullptr;
        beam_ = beam->id;
        const double position = positionOn(view().layout(), *beam, at.x);
        const Pixel start = view().layout().plane.toWindow({beam->x + position, beam->y});
        return guidedLine(start, cross(), [start](Pixel mouse) { return Pixel{start.x, mouse.y}; });
    }
    void dragged(Pixel start, Pixel end) override {
        const Beam* const beam = view().project().beam(beam_);
        if (!beam) return;
        hint(text(kPointLoadHint, forceFrom(view().layout(), *beam, end.y),
                  positionOn(view().layout(), *beam, start.x)));
    }
    void finished(Pixel start, Pixel end) override {
        const Beam* const found = view().project().beam(beam_);
        if (!found) return;
        const double force = forceFrom(view().layout(), *found, end.y);
        if (force == 0) return hint(text(kDragTheArrow));
        if (found->loads.size() >= kLoadsMax) return refuse(kTooManyLoads, kLoadsMax);
        Beam beam = *found;
        beam.loads.push_back({positionOn(view().layout(), beam, start.x), force});
        const std::size_t last = beam.loads.size() - 1;
        if (put(std::move(beam), kStepAddLoad))
            view().shown().select({Selection::OneLoad, beam_, last});
    }

  private:
    std::uint32_t beam_ = 0;
};

/// Drags a rectangle over a beam: as far as it reaches, so large is the load.
class UniformLoadMode : public DrawingMode {
  public:
    UniformLoadMode(DrawingView& view, DispatchServer& server)
        : DrawingMode(view, server, CMD_UNIFORM_LOAD_MODE) {}

  protected:
    std::unique_ptr<Dragger> begin(Pixel) override {
        return std::make_unique<RectDragger>(cross());
    }
    void dragged(Pixel start, Pixel end) override {
        const PixelRect rect = between(start, end);
        if (const Beam* beam = beamUnder(view().project(), view().layout(), rect))
            hint(text(kUniformLoadHint, beam->name, uniformFrom(view().layout(), *beam, rect)));
        else
            hint(text(kNoBeamUnder));
    }
    void finished(Pixel start, Pixel end) override {
        if (!isDrag(start, end)) return;
        const PixelRect rect = between(start, end);
        const Beam* const found = beamUnder(view().project(), view().layout(), rect);
        if (!found) return hint(text(kNoBeamUnder));
        Beam beam = *found;
        beam.uniform = uniformFrom(view().layout(), beam, rect);
        if (const std::uint32_t id = put(std::move(beam), kStepLoadUniformly))
            view().shown().select({Selection::OneBeam, id});
    }
};

}  // namespace

std::vector<std::unique_ptr<DrawingMode>> drawingModes(DrawingView& view, DispatchServer& server) {
    std::vector<std::unique_ptr<DrawingMode>> modes;
    modes.push_back(selectMode(view, server));
    modes.push_back(std::make_unique<BeamMode>(view, server));
    modes.push_back(std::make_unique<PointLoadMode>(view, server));
    modes.push_back(std::make_unique<UniformLoadMode>(view, server));
    return modes;
}

// Where everything of a project lies in the window, and what lies under the mouse. Nothing here
// needs a window.
#pragma once

#include <functional>
#include <vector>

#include "drawing/drawing_plane.h"
#include "project/open_project.h"
#include "toolbox/tag_layout.h"

/// A force: its tip touches the beam.
struct Arrow {
    Pixel tail, tip;

    bool operator==(const Arrow&) const = default;
};

/// A beam between its supports. The axis lies in the middle of its depth, `top` and `bottom` are
/// its flanges.
struct BeamPlace {
    int left = 0, right = 0;
    int axis = 0, top = 0, bottom = 0;
    int comb = 0;  ///< the far side of the uniform load: above the top, for uplift under the bottom

    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int middle() const { return left + width() / 2; }
};

class DrawingLayout {
  public:
    /// Depth of a beam's section in mm.
    using DepthOf = std::function<double(const Beam&)>;

    explicit DrawingLayout(DepthOf depth) : depth_(std::move(depth)) {}

    DrawingPlane plane;

    /// Shows all of a project in a part of the window, with its loads and texts where there is
    /// room.
    void fit(const Project& project, const PixelRect& part);

    /// Forces are drawn so that the largest has room: to be called when loads changed.
    void measureLoads(const Project& project);
    // Pixels per kN and per kN/m.
    [[nodiscard]] double forceScale() const;
    [[nodiscard]] double uniformScale() const;

    [[nodiscard]] BeamPlace place(const Beam& beam) const;
    [[nodiscard]] Arrow arrow(const Beam& beam, const BeamPlace& place,
                              const PointLoad& load) const;
    /// Where the arrows of a uniform load stand: at both ends, evenly between. Empty without load.
    [[nodiscard]] std::vector<Arrow> comb(const BeamPlace& place) const;
    /// The lower flange bent by so many mm at midspan, much exaggerated.
    [[nodiscard]] std::vector<TvPoint> deflected(const BeamPlace& place, double deflection) const;
    /// The middle of the line with a beam's name, and its dimension line.
    [[nodiscard]] int nameLine(const BeamPlace& place) const;
    [[nodiscard]] int dimensionLine(const BeamPlace& place) const;
    /// Everything drawn of a beam but what its texts have beyond its ends.
    [[nodiscard]] PixelRect around(const Beam& beam, const BeamPlace& place) const;

  private:
    DepthOf depth_;
    double largestForce_ = 0, largestUniform_ = 0;
};

/// Below a beam's lower flange.
inline constexpr int kSupportHeight = 14;

/// The last drawn beam at a pixel, its uniform load and its supports included; null for none.
[[nodiscard]] const Beam* beamAt(const Project& project, const DrawingLayout& layout, Pixel at);
/// The beam whose axis is nearest to a place; null in an empty project.
[[nodiscard]] const Beam* nearestBeam(const Project& project, const Place& place);
/// The label, else the point load, else the beam at a pixel.
[[nodiscard]] Selection hitTest(const Project& project, const DrawingLayout& layout,
                                const TvTagLayout& labels, Pixel at);

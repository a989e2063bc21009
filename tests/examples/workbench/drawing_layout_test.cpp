// Where a project is drawn, what lies under the mouse, and what gestures make of it.
#include "drawing/drawing_layout.h"

#include <gtest/gtest.h>

#include <utility>

#include "drawing/drawing_edits.h"

namespace {

/// 40 pixels a metre, (0, 0) at (100, 300); sections are 200 mm deep, 8 pixels.
class Drawing : public ::testing::Test {
  protected:
    Drawing() {
        layout.plane = DrawingPlane({0, 0, 1, 0}, {});
        layout.plane.zoom(40 / layout.plane.scale(), {0, 0});
        const Pixel now = layout.plane.toWindow({0, 0});
        layout.plane.pan(100 - now.x, 300 - now.y);
    }

    std::uint32_t add(double x, double y, double span, double uniform = 0,
                      std::vector<PointLoad> loads = {}) {
        const std::uint32_t id = project.put(Beam{.name = freeBeamName(project),
                                                  .section = {},
                                                  .x = x,
                                                  .y = y,
                                                  .span = span,
                                                  .uniform = uniform,
                                                  .loads = std::move(loads)});
        EXPECT_NE(id, 0u);
        layout.measureLoads(project);
        return id;
    }
    [[nodiscard]] const Beam& beam(std::uint32_t id) const { return *project.beam(id); }

    Project project;
    DrawingLayout layout{[](const Beam&) { return 200.0; }};
};

TEST_F(Drawing, FindsWhatIsUnderTheMouse) {
    const std::uint32_t first = add(0, 0, 6, 5, {{2, 10}, {4, -10}});  // x 100 to 340, y 300
    const std::uint32_t second = add(3, 0, 6);                         // over its right half
    TvTagSet tags;
    for (const auto& [tag, left] : {std::pair{7u, 200}, {8u, 250}}) {
        const Place at = layout.plane.toPlane({left, 290});
        tags.insert(tags.count(), tag, labelTag("Moment: 12", at.x, at.y));
    }
    const TvTagLayout labels(tags, layout.plane.matrix(), nullptr);
    struct Case {
        const char* what;
        Pixel at;
        Selection expected;
    };
    const Case cases[] = {{"a beam", {120, 300}, {Selection::OneBeam, first}},
                          {"its uniform load", {150, 285}, {Selection::OneBeam, first}},
                          {"under it", {150, 316}, {}},
                          {"the later of two beams", {330, 300}, {Selection::OneBeam, second}},
                          {"an arrow above the comb", {183, 250}, {Selection::OneLoad, first, 0}},
                          {"an arrow below", {260, 340}, {Selection::OneLoad, first, 1}},
                          {"a label over a beam", {210, 300}, {Selection::OneLabel, 7}},
                          {"the later of two labels", {255, 300}, {Selection::OneLabel, 8}}};
    for (const Case& test : cases)
        EXPECT_TRUE(hitTest(project, layout, labels, test.at) == test.expected) << test.what;

    const std::uint32_t distant = add(0, -5, 6);
    EXPECT_EQ(nearestBeam(project, layout.plane.toPlane({150, 420}))->id, distant);
    EXPECT_EQ(nearestBeam(Project(), {}), nullptr);
}

}  // namespace

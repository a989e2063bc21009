// What a gesture makes of messages and points, apart from any window.
#include <gtest/gtest.h>

#include <climits>

#include "graphics/drag_geometry.h"
#include "graphics/mouse_gesture.h"

namespace toolbox::graphics {

void PrintTo(const Pixel& pixel, std::ostream* out) {
    *out << '(' << pixel.x << ", " << pixel.y << ')';
}

namespace {

TEST(OrthogonalConstraint, TakesTheNearerAxis) {
    const struct {
        Pixel origin, point, constrained;
    } cases[] = {{{0, 0}, {5, 5}, {5, 0}},
                 {{0, 0}, {4, 5}, {0, 5}},
                 {{INT_MIN, 0}, {INT_MAX, INT_MAX}, {INT_MAX, 0}}};
    for (const auto& c : cases) EXPECT_EQ(constrainOrthogonally(c.point, c.origin), c.constrained);
}

TEST(ThetaProjection, PutsThePointOntoTheMirroredEllipse) {
    const struct {
        Pixel point, projected;
    } cases[] = {{{100, 160}, {100, 80}},     {{70, 100}, {50, 100}}, {{100, 100}, {100, 100}},
                 {{103, 104}, {130, 84}},  // 3-4-5: 30 and 16 off the center
                 {{99, 99}, {64, 114}},    // 64.64, 114.14: toward zero
                 {{100, INT_MIN}, {100, 120}}};
    for (const auto& c : cases)
        EXPECT_EQ(projectOntoEllipse(c.point, {{100, 100}, 50, 20}), c.projected)
            << c.point.x << ", " << c.point.y;
    // In double precision the length of (8191, 1) is a little more than 8191 and x would be 99999;
    // in single precision it is 8191.
    EXPECT_EQ(projectOntoEllipse({8191, 1}, {{0, 0}, 100000, 0}), (Pixel{100000, 0}));
}

constexpr std::uint32_t kCancelMode = 0x1F, kCaptureChanged = 0x215, kCommand = 0x111,
                        kMove = 0x200, kLeftDown = 0x201, kLeftUp = 0x202, kLeftDouble = 0x203,
                        kRightDown = 0x204, kRightUp = 0x205, kRightDouble = 0x206;

TEST(MouseGesture, TellsWhatAMessageMeans) {
    using enum GestureStep;
    const struct {
        int button;
        bool onDoubleClick;
        bool dragging;
        std::uint32_t message;
        std::uintptr_t wParam;
        GestureStep step;
    } cases[] = {{0, false, false, kLeftDown, 1 | 4 | 8, anchor},
                 {0, false, false, kMove, 1, none},
                 {0, false, true, kMove, 0, move},
                 {0, false, true, kLeftUp, 0, finish},
                 {0, false, true, kRightDown, 3, cancel},
                 {0, false, false, kCommand, 2, cancel},
                 {0, true, false, kLeftDown, 1, none},
                 {0, true, false, kLeftDouble, 1, anchor},
                 {0, false, true, kCancelMode, 0, lose},
                 {0, false, true, kCaptureChanged, 0, lose},
                 {0, false, false, kCaptureChanged, 0, none},
                 {1, false, false, kRightDown, 2 | 1, none},
                 {1, false, true, kLeftDown, 3, cancel},
                 {1, false, true, kRightUp, 0, finish},
                 {1, true, false, kRightDouble, 2, anchor},
                 {0, false, false, kLeftDown, 1 | 2, none},
                 {0, false, true, kLeftDown, 1, anchor},
                 // An accelerator's, not the Cancel button's.
                 {0, false, true, kCommand, 0x10002, none}};
    for (const auto& c : cases) {
        ParametricButton button;
        ASSERT_TRUE(describeButton(c.button, c.onDoubleClick, button));
        EXPECT_EQ(gestureStep(button, c.dragging, c.message, c.wParam), c.step)
            << c.button << ' ' << c.dragging << ' ' << c.message << ' ' << c.wParam;
    }
}

}  // namespace
}  // namespace toolbox::graphics

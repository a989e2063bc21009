#include "toolbox/transform.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <utility>

namespace {

using Point = SmallVector<double, 2>;

TEST(TransMatrix2D, ActsInTheOrderOfTheCalls) {
    TransMatrix2D view;
    const HomoVector<2> image =
        view.translate(5, 0).rotate(std::numbers::pi / 2) * HomoVector<2>(1, 0);
    EXPECT_NEAR(image[0], 0, 1e-12);
    EXPECT_NEAR(image[1], 6, 1e-12);
    EXPECT_EQ(image[2], 1);
}

TEST(TransMatrix2D, IsUndoneByItsInverse) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-10, 10);
    for (int i = 0; i < 1000; ++i) {
        TransMatrix2D m;
        m.rotate(number(random)).scale(number(random), number(random));
        m.translate(number(random), number(random)).rotate(number(random));
        TransMatrix2D back;
        ASSERT_EQ(m.inverse(back), 1);
        const Point p(number(random), number(random));
        const Point same = back.mapPoint(m.mapPoint(p));
        const double far = std::hypot(back[0][0], back[0][1], std::hypot(back[1][0], back[1][1]));
        ASSERT_NEAR(same[0], p[0], 1e-12 * (1 + far * 500));
        ASSERT_NEAR(same[1], p[1], 1e-12 * (1 + far * 500));
    }
    TransMatrix2D tiny(1e-200, 1e-210, TransMatrix2D::Scale);
    ASSERT_EQ(tiny.inverse(tiny), 1);  // into itself
    EXPECT_DOUBLE_EQ(tiny[1][1], 1e210);
}

TEST(TransMatrix2D, HasNoInverseWhereThePlaneIsLost) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double cases[][9] = {{1, 2, 0, 2, 4, 0, 0, 0, 1},          // on a line
                               {0.1, 0.2, 0, 0.3, 0.6, 0, 0, 0, 1},  // but for rounding
                               {infinity, 0, 0, 0, 1, 0, 0, 0, 1},
                               {1, 0, NAN, 0, 1, 0, 0, 0, 1},
                               {1, 0, 0, 0, 1, 0, 0, 0, 2}};
    for (const auto& entries : cases) {
        TransMatrix2D m;
        for (int i = 0; i < 9; ++i) m[i / 3][i % 3] = entries[i];
        const TransMatrix2D before(3, 4, TransMatrix2D::Scale);
        TransMatrix2D out = before;
        EXPECT_EQ(m.inverse(out), 0) << &entries - cases;
        EXPECT_EQ(out, before);
    }
}

TEST(TransMatrix2D, MapsToTheNearestWholePoint) {
    for (const auto& [x, nearest] :
         {std::pair{2.4, 2}, {2.5, 3}, {-2.5, -3}, {1e10, INT_MAX}, {-1e10, INT_MIN}, {NAN, 0}}) {
        const TransMatrix2D m(x, 0, TransMatrix2D::Translation);
        EXPECT_EQ(m.mapPoint(SmallVector<int, 2>(0, 7)), (SmallVector<int, 2>(nearest, 7)));
    }
}

}  // namespace

// Undoing a transform, and the images of points and rectangles.
#include <algorithm>
#include <cmath>
#include <limits>

#include "toolbox/transform.h"

namespace {

using Point = SmallVector<double, 2>;

/// The power of two that brings the greater of two numbers near 1; 1 for zeros.
double balance(double a, double b) {
    const double greatest = std::max(std::fabs(a), std::fabs(b));
    if (greatest == 0.0) return 1.0;
    // Kept where it is a normal number itself.
    return std::ldexp(1.0, std::clamp(-std::ilogb(greatest), -1000, 1000));
}

bool isFinite(const TransMatrix2D& m) {
    for (std::size_t i = 0; i < 2; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            if (!std::isfinite(m[i][j])) return false;
    return true;
}

int nearestInt(double x) {
    using Limits = std::numeric_limits<int>;
    if (std::isnan(x)) return 0;
    // Both ends are doubles.
    if (x <= Limits::min()) return Limits::min();
    if (x >= Limits::max()) return Limits::max();
    return static_cast<int>(std::round(x));
}

}  // namespace

int TransMatrix2D::inverse(TransMatrix2D& out) const {
    const TransMatrix2D& m = *this;
    if (!isFinite(m) || m[2][0] != 0.0 || m[2][1] != 0.0 || m[2][2] != 1.0) return 0;
    // Rows brought near 1, so that the products below do not leave the range of doubles for a
    // transform that is only very small or very large.
    const double s0 = balance(m[0][0], m[0][1]);
    const double s1 = balance(m[1][0], m[1][1]);
    const double a = m[0][0] * s0;
    const double b = m[0][1] * s0;
    const double c = m[1][0] * s1;
    const double d = m[1][1] * s1;
    const double determinant = a * d - b * c;
    // What rounding alone can leave of a determinant that is 0.
    constexpr double kRounding = 4 * std::numeric_limits<double>::epsilon();
    if (std::fabs(determinant) <= kRounding * (std::fabs(a * d) + std::fabs(b * c))) return 0;

    TransMatrix2D result;
    // Adding 0.0 makes 0 of -0.
    result[0][0] = d / determinant * s0 + 0.0;
    result[0][1] = -b / determinant * s1 + 0.0;
    result[1][0] = -c / determinant * s0 + 0.0;
    result[1][1] = a / determinant * s1 + 0.0;
    for (std::size_t i = 0; i < 2; ++i)
        result[i][2] = -(result[i][0] * m[0][2] + result[i][1] * m[1][2]) + 0.0;
    if (!isFinite(result)) return 0;
    out = result;
    return 1;
}

SmallVector<double, 2> TransMatrix2D::mapPoint(const SmallVector<double, 2>& point) const {
    const HomoVector<2> image = *this * HomoVector<2>(point[0], point[1]);
    return {image[0], image[1]};
}

SmallVector<int, 2> TransMatrix2D::mapPoint(const SmallVector<int, 2>& point) const {
    const Point image = mapPoint(Point(point[0], point[1]));
    return {nearestInt(image[0]), nearestInt(image[1])};
}

toolbox::PlaneRect TransMatrix2D::mapRect(const toolbox::PlaneRect& rect) const {
    const Point first = mapPoint(Point(rect.left, rect.top));
    toolbox::PlaneRect around{first[0], first[1], first[0], first[1]};
    for (const Point corner : {Point(rect.right, rect.top), Point(rect.left, rect.bottom),
                               Point(rect.right, rect.bottom)}) {
        const Point image = mapPoint(corner);
        around.left = std::min(around.left, image[0]);
        around.right = std::max(around.right, image[0]);
        around.top = std::min(around.top, image[1]);
        around.bottom = std::max(around.bottom, image[1]);
    }
    return around;
}

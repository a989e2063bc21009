// Affine transforms of the plane, and the small matrices and vectors that they are made of.
//
// TransMatrix2D is a 3 x 3 matrix that acts on column vectors (x, y, 1). Each operation that
// changes one acts after what it did before, and returns it, so that calls chain in the order in
// which they act:
//     TransMatrix2D view;
//     view.translate(5, 0).rotate(pi / 2);       // moves, then turns about the origin
//     view.mapPoint(SmallVector<double, 2>(1, 0));  // (0, 6)
//
// All are plain values. Elements are reached by index and not checked.
#pragma once

#include <cstddef>

#include "toolbox/export.h"

/// N elements; zeros from the start.
template <class T, std::size_t N>
class SmallVector {
  public:
    constexpr SmallVector() = default;
    constexpr SmallVector(T x, T y) requires(N == 2) : elements_{x, y} {}  ///< these two

    // The element.
    [[nodiscard]] constexpr T& operator[](std::size_t i) { return elements_[i]; }
    [[nodiscard]] constexpr const T& operator[](std::size_t i) const { return elements_[i]; }
    constexpr bool operator==(const SmallVector&) const = default;

  private:
    T elements_[N] = {};
};

/// A point of N dimensions in homogeneous coordinates: N doubles and their weight, 1 from the
/// start.
template <std::size_t N>
class HomoVector : public SmallVector<double, N + 1> {
  public:
    constexpr HomoVector() { (*this)[N] = 1.0; }
    /// These coordinates.
    constexpr HomoVector(double x, double y, double weight = 1.0) requires(N == 2) {
        (*this)[0] = x;
        (*this)[1] = y;
        (*this)[2] = weight;
    }
};

/// Rows x Columns elements, m[row][column]; zeros from the start.
template <class T, std::size_t Rows, std::size_t Columns>
class SmallMatrix {
  public:
    constexpr SmallMatrix() = default;

    // The elements of a row.
    [[nodiscard]] constexpr T* operator[](std::size_t row) { return elements_[row]; }
    [[nodiscard]] constexpr const T* operator[](std::size_t row) const { return elements_[row]; }
    constexpr bool operator==(const SmallMatrix&) const = default;

  private:
    T elements_[Rows][Columns] = {};
};

/// N x N elements; the identity from the start.
template <class T, std::size_t N>
class SmallSquareMatrix : public SmallMatrix<T, N, N> {
  public:
    constexpr SmallSquareMatrix() {
        for (std::size_t i = 0; i < N; ++i) (*this)[i][i] = T(1);
    }
    /// These elements.
    constexpr SmallSquareMatrix(const SmallMatrix<T, N, N>& other) : SmallMatrix<T, N, N>(other) {}
};

namespace toolbox {

/// An upright rectangle of the plane. Which of two opposite sides is the greater is up to its user.
struct PlaneRect {
    // The sides: coordinates along x and y.
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    bool operator==(const PlaneRect&) const = default;
};

}  // namespace toolbox

/// The transform; the identity from the start.
class TB_API TransMatrix2D : public SmallSquareMatrix<double, 3> {
  public:
    /// What two numbers mean; another value leaves the identity.
    enum TMConstructType : int { Scale = 0, Translation = 1 };

    TransMatrix2D() = default;
    /// Rotation by an angle in radians, counter-clockwise where y points up; on a screen, where it
    /// points down, clockwise.
    explicit TransMatrix2D(double angle);
    TransMatrix2D(double a, double b, TMConstructType type);
    // A translation by the vector, whatever the type says: vectors are offsets.
    TransMatrix2D(const SmallVector<double, 2>& offset, TMConstructType type);
    TransMatrix2D(const SmallVector<int, 2>& offset, TMConstructType type);
    // Copies the nine elements. Those of an affine transform have (0, 0, 1) as their third row.
    TransMatrix2D(const SmallSquareMatrix<double, 3>& elements);
    TransMatrix2D(const SmallMatrix<double, 3, 3>& elements);
    TransMatrix2D(const TransMatrix2D&) = default;
    TransMatrix2D& operator=(const TransMatrix2D&) = default;
    virtual ~TransMatrix2D() = default;

    /// The product this x other. Each element is summed from 0.0 in the order of the columns of
    /// this, so that results agree to the last bit everywhere.
    TransMatrix2D operator*(const TransMatrix2D& other) const;
    /// The vector this x v, summed in the same way.
    HomoVector<2> operator*(const HomoVector<2>& v) const;

    /// this := t x this, so t acts after what this did. `t` may be this object.
    TransMatrix2D& apply(const TransMatrix2D& t);
    // apply() of a rotation, a scale about the origin, or a translation.
    TransMatrix2D& rotate(double angle);
    TransMatrix2D& scale(double sx, double sy);
    TransMatrix2D& translate(double tx, double ty);
    TransMatrix2D& translate(const SmallVector<double, 2>& offset);
    TransMatrix2D& translate(const SmallVector<int, 2>& offset);

    // What follows takes the matrix for affine: the third row plays no part.

    /// 1 and the transform that undoes this one in `out` (which may be this object). 0 when none
    /// does: the plane falls onto a line, as far as doubles tell, an element is not finite or the
    /// third row is not (0, 0, 1); `out` is untouched then.
    int inverse(TransMatrix2D& out) const;

    /// Where a point goes.
    [[nodiscard]] SmallVector<double, 2> mapPoint(const SmallVector<double, 2>& point) const;
    /// The nearest whole point, halves away from 0; beyond the range of int its end, 0 for what is
    /// not a number.
    [[nodiscard]] SmallVector<int, 2> mapPoint(const SmallVector<int, 2>& point) const;
    /// The smallest upright rectangle around the images of the corners, its left not above its
    /// right and its top not above its bottom.
    [[nodiscard]] toolbox::PlaneRect mapRect(const toolbox::PlaneRect& rect) const;
};

// Building and composing transforms. A new step is multiplied on the left, so it acts after what is
// there.
#include "toolbox/transform.h"

#include <cmath>

TransMatrix2D::TransMatrix2D(double angle) {
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    (*this)[0][0] = cosine;
    (*this)[0][1] = -sine;
    (*this)[1][0] = sine;
    (*this)[1][1] = cosine;
}

TransMatrix2D::TransMatrix2D(double a, double b, TMConstructType type) {
    if (type == Scale) {
        (*this)[0][0] = a;
        (*this)[1][1] = b;
    } else if (type == Translation) {
        (*this)[0][2] = a;
        (*this)[1][2] = b;
    }
}

TransMatrix2D::TransMatrix2D(const SmallVector<double, 2>& offset, TMConstructType)
    : TransMatrix2D(offset[0], offset[1], Translation) {}

TransMatrix2D::TransMatrix2D(const SmallVector<int, 2>& offset, TMConstructType)
    : TransMatrix2D(offset[0], offset[1], Translation) {}

TransMatrix2D::TransMatrix2D(const SmallSquareMatrix<double, 3>& elements)
    : SmallSquareMatrix(elements) {}

TransMatrix2D::TransMatrix2D(const SmallMatrix<double, 3, 3>& elements)
    : SmallSquareMatrix(elements) {}

TransMatrix2D TransMatrix2D::operator*(const TransMatrix2D& other) const {
    TransMatrix2D product;
    for (std::size_t i = 0; i < 3; ++i) {
        // A row at a time: the compiler does two columns at once.
        double sums[3] = {0.0, 0.0, 0.0};
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t j = 0; j < 3; ++j) sums[j] += (*this)[i][k] * other[k][j];
        for (std::size_t j = 0; j < 3; ++j) product[i][j] = sums[j];
    }
    return product;
}

HomoVector<2> TransMatrix2D::operator*(const HomoVector<2>& v) const {
    const auto row = [&](std::size_t i) {
        double sum = 0.0;
        for (std::size_t k = 0; k < 3; ++k) sum += (*this)[i][k] * v[k];
        return sum;
    };
    return {row(0), row(1), row(2)};
}

TransMatrix2D& TransMatrix2D::apply(const TransMatrix2D& t) {
    return *this = t * *this;
}

TransMatrix2D& TransMatrix2D::rotate(double angle) {
    return apply(TransMatrix2D(angle));
}

TransMatrix2D& TransMatrix2D::scale(double sx, double sy) {
    return apply(TransMatrix2D(sx, sy, Scale));
}

TransMatrix2D& TransMatrix2D::translate(double tx, double ty) {
    return apply(TransMatrix2D(tx, ty, Translation));
}

TransMatrix2D& TransMatrix2D::translate(const SmallVector<double, 2>& offset) {
    return apply(TransMatrix2D(offset, Translation));
}

TransMatrix2D& TransMatrix2D::translate(const SmallVector<int, 2>& offset) {
    return apply(TransMatrix2D(offset, Translation));
}

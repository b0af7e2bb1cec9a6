#include "fit/equations/JacobiEigen.h"

#include <cmath>
#include <numbers>

namespace Quillon {

namespace {

// The angle that takes A(p, q) to zero, tan 2t = 2 A(p, q) / (A(p, p) - A(q, q)); pi/4 for equal diagonal
// elements.
double RotationAngle(const ZeroBasedMatrix<double>& A, long p, long q) {
    const double difference = A(p, p) - A(q, q);
    if (difference == 0.0) return A(p, q) > 0.0 ? std::numbers::pi / 4.0 : -std::numbers::pi / 4.0;
    return 0.5 * std::atan(2.0 * A(p, q) / difference);
}

void RotateRows(ZeroBasedMatrix<double>& A, long p, long q, double c, double s) {
    for (long k = 0; k <= A.ColumnHi(); ++k) {
        const double x = A(p, k);
        const double y = A(q, k);
        A(p, k) = c * x + s * y;
        A(q, k) = c * y - s * x;
    }
}

void RotateColumns(ZeroBasedMatrix<double>& A, long p, long q, double c, double s) {
    for (long k = 0; k <= A.RowHi(); ++k) {
        const double x = A(k, p);
        const double y = A(k, q);
        A(k, p) = c * x + s * y;
        A(k, q) = c * y - s * x;
    }
}

} // namespace

void JacobiEigen(ZeroBasedMatrix<double>& A, ZeroBased<double>& values, ZeroBasedMatrix<double>& vectors) {
    const long last = A.RowHi();
    vectors.Recreate(last, last);
    for (long i = 0; i <= last; ++i)
        vectors(i, i) = 1.0;
    // Convergence is quadratic: ten sweeps are many, a hundred never come about.
    for (int sweep = 0; sweep < 100; ++sweep) {
        bool turned = false;
        for (long p = 0; p < last; ++p)
            for (long q = p + 1; q <= last; ++q) {
                // Below the last bit of the two diagonal elements a rotation changes nothing.
                const double scale = std::sqrt(std::fabs(A(p, p) * A(q, q)));
                if (std::fabs(A(p, q)) <= 1e-16 * scale || A(p, q) == 0.0) continue;
                const double angle = RotationAngle(A, p, q);
                const double c = std::cos(angle);
                const double s = std::sin(angle);
                RotateRows(A, p, q, c, s);
                RotateColumns(A, p, q, c, s);
                RotateColumns(vectors, p, q, c, s);
                turned = true;
            }
        if (!turned) break;
    }
    values.Recreate(last);
    for (long i = 0; i <= last; ++i)
        values[i] = A(i, i);
}

} // namespace Quillon

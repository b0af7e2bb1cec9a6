// Eigenvalues and eigenvectors against closed forms and their own equation.
#include "fit/equations/JacobiEigen.h"

#include "tests/support/RealMatrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace Quillon {
namespace {

constexpr double Epsilon = std::numeric_limits<double>::epsilon();

struct Eigen {
    ZeroBased<double> Values;
    ZeroBasedMatrix<double> Vectors;
    std::vector<double> Sorted() const {
        std::vector<double> sorted(Values.begin(), Values.end());
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }
};

Eigen Decompose(ZeroBasedMatrix<double> A) {
    Eigen e;
    JacobiEigen(A, e.Values, e.Vectors);
    return e;
}

ZeroBasedMatrix<double> Symmetric(long n, const std::function<double(long i, long j)>& element) {
    ZeroBasedMatrix<double> A(n - 1, n - 1);
    for (long i = 0; i < n; ++i)
        for (long j = 0; j < n; ++j)
            A(i, j) = i <= j ? element(i, j) : element(j, i);
    return A;
}

// A v = lambda v for every column, and columns of length 1 at right angles, to rounding.
void ExpectDecomposition(const ZeroBasedMatrix<double>& A, const Eigen& e) {
    const long n = A.RowHi() + 1;
    double size = 0.0;
    for (std::size_t i = 0; i < A.Size(); ++i)
        size = std::max(size, std::fabs(A.Data()[i]));
    const double tolerance = 20 * Epsilon * static_cast<double>(n);
    for (long k = 0; k < n; ++k)
        for (long i = 0; i < n; ++i) {
            Real sum = 0, product = 0;
            for (long j = 0; j < n; ++j) {
                sum += static_cast<Real>(A(i, j)) * e.Vectors(j, k);
                product += static_cast<Real>(e.Vectors(j, i)) * e.Vectors(j, k);
            }
            EXPECT_NEAR(static_cast<double>(sum - static_cast<Real>(e.Values[k]) * e.Vectors(i, k)), 0.0,
                        tolerance * size * std::sqrt(static_cast<double>(n)))
                << i << " " << k;
            EXPECT_NEAR(static_cast<double>(product), i == k ? 1.0 : 0.0, tolerance) << i << " " << k;
        }
}

TEST(JacobiEigen, OneByOne) {
    const Eigen e = Decompose(ZeroBasedMatrix<double>(0, 0, -3.5));
    EXPECT_EQ(e.Values[0], -3.5);
    EXPECT_EQ(e.Vectors(0, 0), 1.0);
}

TEST(JacobiEigen, DiagonalStaysAsItIs) {
    const auto A = Symmetric(4, [](long i, long j) { return i == j ? 3.0 - static_cast<double>(i) : 0.0; });
    const Eigen e = Decompose(A);
    for (long k = 0; k < 4; ++k) {
        EXPECT_EQ(e.Values[k], 3.0 - static_cast<double>(k));
        for (long i = 0; i < 4; ++i)
            EXPECT_EQ(e.Vectors(i, k), i == k ? 1.0 : 0.0);
    }
}

TEST(JacobiEigen, EqualDiagonalTurnsByFortyFiveDegrees) {
    for (const double b : {0.5, -0.5}) {
        const auto A = Symmetric(2, [&](long i, long j) { return i == j ? 2.0 : b; });
        const Eigen e = Decompose(A);
        EXPECT_NEAR(e.Sorted()[0], 1.5, 4 * Epsilon);
        EXPECT_NEAR(e.Sorted()[1], 2.5, 4 * Epsilon);
        for (long i = 0; i < 2; ++i)
            for (long k = 0; k < 2; ++k)
                EXPECT_NEAR(std::fabs(e.Vectors(i, k)), std::sqrt(0.5), 4 * Epsilon);
        ExpectDecomposition(A, e);
    }
}

TEST(JacobiEigen, TwoByTwoByTheQuadraticFormula) {
    const double table[][3] = {{4, 1, 3}, {1, -2, 7}, {1e-8, 3e-5, 2}, {-5, 2, -1}, {0, 3, 0}};
    for (const auto& row : table) {
        const double a = row[0], b = row[1], c = row[2];
        const auto A = Symmetric(2, [&](long i, long j) { return i != j ? b : i == 0 ? a : c; });
        const Eigen e = Decompose(A);
        const Real mean = (static_cast<Real>(a) + c) / 2;
        const Real root = std::hypot((static_cast<Real>(a) - c) / 2, static_cast<Real>(b));
        const double size = static_cast<double>(std::fabs(mean) + root);
        EXPECT_NEAR(e.Sorted()[0], static_cast<double>(mean - root), 4 * Epsilon * size);
        EXPECT_NEAR(e.Sorted()[1], static_cast<double>(mean + root), 4 * Epsilon * size);
        ExpectDecomposition(A, e);
    }
}

// Second differences: eigenvalues 2 - 2 cos(k pi / (n + 1)), eigenvectors sin(i k pi / (n + 1)).
TEST(JacobiEigen, SecondDifferences) {
    for (const long n : {3L, 10L, 62L}) {
        const auto A = Symmetric(n, [](long i, long j) { return i == j ? 2.0 : j - i == 1 ? -1.0 : 0.0; });
        const Eigen e = Decompose(A);
        const std::vector<double> sorted = e.Sorted();
        for (long k = 1; k <= n; ++k) {
            const double angle = std::numbers::pi * static_cast<double>(k) / static_cast<double>(n + 1);
            EXPECT_NEAR(sorted[static_cast<std::size_t>(k - 1)], 2.0 - 2.0 * std::cos(angle), 1e-13);
        }
        for (long column = 0; column < n; ++column) {
            const auto place = std::find(sorted.begin(), sorted.end(), e.Values[column]) - sorted.begin();
            const double angle =
                std::numbers::pi * static_cast<double>(place + 1) / static_cast<double>(n + 1);
            const double length = std::sqrt(2.0 / static_cast<double>(n + 1));
            const double sign = e.Vectors(0, column) > 0.0 ? 1.0 : -1.0;
            for (long i = 0; i < n; ++i)
                EXPECT_NEAR(sign * e.Vectors(i, column),
                            length * std::sin(static_cast<double>(i + 1) * angle), 1e-11);
        }
        ExpectDecomposition(A, e);
    }
}

TEST(JacobiEigen, RepeatedEigenvalues) {
    // All ones: n once, 0 otherwise.
    const auto A = Symmetric(6, [](long, long) { return 1.0; });
    const Eigen e = Decompose(A);
    for (std::size_t k = 0; k < 5; ++k)
        EXPECT_NEAR(e.Sorted()[k], 0.0, 1e-14);
    EXPECT_NEAR(e.Sorted()[5], 6.0, 1e-14);
    ExpectDecomposition(A, e);
    EXPECT_EQ(Decompose(Symmetric(5, [](long, long) { return 0.0; })).Sorted(), std::vector<double>(5, 0.0));
}

TEST(JacobiEigen, RandomMatrices) {
    std::mt19937 random(21);
    std::uniform_real_distribution<double> element(-1.0, 1.0);
    for (const long n : {2L, 3L, 5L, 17L, 40L, 62L}) {
        const auto draw = Symmetric(n, [&](long, long) { return element(random); });
        const auto A = Symmetric(n, [&](long i, long j) { return draw(i, j); });
        const Eigen e = Decompose(A);
        ExpectDecomposition(A, e);
        double trace = 0.0, sum = 0.0;
        for (long i = 0; i < n; ++i) {
            trace += A(i, i);
            sum += e.Values[i];
        }
        EXPECT_NEAR(sum, trace, 1e-13 * static_cast<double>(n));
    }
}

// Error matrices mix parameters of very different sizes: small eigenvalues keep their own relative accuracy.
TEST(JacobiEigen, GradedMatrixKeepsItsSmallEigenvalues) {
    const double scale[] = {1e-6, 1.0, 1e5};
    const auto A = Symmetric(3, [&](long i, long j) { return (i == j ? 1.0 : 0.5) * scale[i] * scale[j]; });
    const Eigen e = Decompose(A);
    // det = scales squared times det of the middle matrix, which is 1/2; the two larger ones are those of the
    // remaining two parameters up to 1e-12.
    const Real a = 1.0L, b = 0.5e5L, c = 1e10L;
    const Real mean = (a + c) / 2, root = std::hypot((a - c) / 2, b);
    const Real large = mean + root, middle = (a * c - b * b) / large;
    const Real small = 1e-12L * 1.0L * 1e10L * 0.5L / (large * middle);
    EXPECT_NEAR(e.Sorted()[2] / static_cast<double>(large), 1.0, 1e-10);
    EXPECT_NEAR(e.Sorted()[1] / static_cast<double>(middle), 1.0, 1e-10);
    EXPECT_NEAR(e.Sorted()[0] / static_cast<double>(small), 1.0, 1e-10);
}

} // namespace
} // namespace Quillon

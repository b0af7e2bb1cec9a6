// Matrix inversion against closed forms, exact rational inverses and an elimination in long double.
#include "fit/equations/MatInv.h"

#include "platform/RuntimeError.h"
#include "platform/VectorWidth.h"
#include "tests/support/RealMatrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace Quillon {
namespace {

using Matrix = ZeroBasedMatrix<double>;

constexpr double DoubleEpsilon = std::numeric_limits<double>::epsilon();

Matrix MatrixOf(const std::vector<std::vector<double>>& rows) {
    const auto n = static_cast<long>(rows.size());
    Matrix A(n - 1, n - 1);
    for (long i = 0; i < n; ++i)
        for (long j = 0; j < n; ++j)
            A(i, j) = rows[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
    return A;
}

void ExpectNear(const Matrix& A, const Matrix& expected, double tolerance) {
    for (long i = 0; i <= expected.RowHi(); ++i)
        for (long j = 0; j <= expected.ColumnHi(); ++j)
            EXPECT_NEAR(A(i, j), expected(i, j), tolerance) << i << ", " << j;
}

// --- an elimination of another kind: Gauss-Jordan with row pivots, in long double ------------------------

struct Inverted {
    RealMatrix Inverse;
    Real Determinant = 1;
};

Inverted InvertByGaussJordan(RealMatrix A) {
    const std::size_t n = A.Rows;
    Inverted result{RealMatrix(n, n), 1};
    RealMatrix& B = result.Inverse;
    for (std::size_t i = 0; i < n; ++i)
        B(i, i) = 1;
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t best = k;
        for (std::size_t i = k + 1; i < n; ++i)
            if (std::fabs(A(i, k)) > std::fabs(A(best, k))) best = i;
        if (best != k) result.Determinant = -result.Determinant;
        for (std::size_t j = 0; j < n; ++j) {
            std::swap(A(k, j), A(best, j));
            std::swap(B(k, j), B(best, j));
        }
        const Real pivot = A(k, k);
        result.Determinant *= pivot;
        for (std::size_t j = 0; j < n; ++j) {
            A(k, j) /= pivot;
            B(k, j) /= pivot;
        }
        for (std::size_t i = 0; i < n; ++i) {
            const Real factor = A(i, k);
            if (i == k || factor == 0) continue;
            for (std::size_t j = 0; j < n; ++j) {
                A(i, j) -= factor * A(k, j);
                B(i, j) -= factor * B(k, j);
            }
        }
    }
    return result;
}

RealMatrix Widened(const Matrix& A) {
    const auto n = static_cast<std::size_t>(A.RowHi() + 1);
    RealMatrix wide(n, n);
    std::copy(A.Data(), A.Data() + A.Size(), wide.Items.begin());
    return wide;
}

Real Norm(const RealMatrix& A) {
    Real largest = 0;
    for (std::size_t i = 0; i < A.Rows; ++i) {
        Real sum = 0;
        for (std::size_t j = 0; j < A.Columns; ++j)
            sum += std::fabs(A(i, j));
        largest = std::max(largest, sum);
    }
    return largest;
}

// Inverts and holds the result against the reference: an elimination in double loses at most its condition
// number times the order in units of the last place.
void ExpectInverse(const Matrix& A) {
    const Inverted reference = InvertByGaussJordan(Widened(A));
    const Real size = Norm(reference.Inverse);
    const Real condition = Norm(Widened(A)) * size;
    Matrix inverse = A;
    ASSERT_EQ(Invert(inverse), 0);
    const Real allowed = size * condition * static_cast<Real>(A.RowHi() + 1) * DoubleEpsilon;
    for (std::size_t i = 0; i < reference.Inverse.Items.size(); ++i)
        ASSERT_LE(std::fabs(inverse.Data()[i] - reference.Inverse.Items[i]), allowed) << i;
}

bool IsPermutation(const ZeroBased<std::int16_t>& perm, long n) {
    std::vector<std::int16_t> sorted(perm.begin(), perm.end());
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::int16_t> numbers(static_cast<std::size_t>(n));
    std::iota(numbers.begin(), numbers.end(), std::int16_t{0});
    return sorted == numbers;
}

// Interchanges that it takes at least to bring a permutation about have this parity.
int Parity(const ZeroBased<std::int16_t>& perm) {
    int inversions = 0;
    for (long i = 0; i <= perm.Hi(); ++i)
        for (long j = i + 1; j <= perm.Hi(); ++j)
            inversions += perm[i] > perm[j];
    return inversions % 2;
}

// --- closed forms ----------------------------------------------------------------------------------------

TEST(Invert, TwoByTwoByTheClosedForm) {
    Matrix A = MatrixOf({{4, 1}, {1, 3}});
    EXPECT_EQ(Invert(A), 0);
    ExpectNear(A, MatrixOf({{3.0 / 11, -1.0 / 11}, {-1.0 / 11, 4.0 / 11}}), 4 * DoubleEpsilon);
}

TEST(Invert, MatrixWithoutSymmetry) {
    Matrix A = MatrixOf({{1, 2, 3}, {0, 1, 4}, {5, 6, 0}});
    EXPECT_EQ(Invert(A), 0);
    ExpectNear(A, MatrixOf({{-24, 18, 5}, {20, -15, -4}, {-5, 4, 1}}), 1e-12);
}

// The second difference matrix of order n: its inverse is min(i, j) (n + 1 - max(i, j)) / (n + 1).
TEST(Invert, SecondDifferencesOfAnyOrder) {
    for (const long n : {2L, 5L, 20L, 62L}) {
        Matrix A(n - 1, n - 1);
        Matrix expected(n - 1, n - 1);
        for (long i = 0; i < n; ++i)
            for (long j = 0; j < n; ++j) {
                A(i, j) = i == j ? 2.0 : std::abs(i - j) == 1 ? -1.0 : 0.0;
                expected(i, j) = static_cast<double>((std::min(i, j) + 1) * (n - std::max(i, j))) /
                                 static_cast<double>(n + 1);
            }
        ASSERT_EQ(Invert(A), 0);
        ExpectNear(A, expected, DoubleEpsilon * static_cast<double>(n * n * n));
    }
}

TEST(Invert, OneByOneIsTheReciprocal) {
    for (const double a : {4.0, -0.125, 1e-200, 3e200}) {
        Matrix A(0, 0, a);
        Decomposition d;
        EXPECT_EQ(Invert(A, d), 0);
        EXPECT_EQ(A(0, 0), 1.0 / a);
        EXPECT_EQ(d.SwapCount, 0);
        EXPECT_EQ(d.Lo, 0);
        EXPECT_EQ(d.Hi, 0);
    }
}

TEST(Invert, NothingIsItsOwnInverse) {
    Matrix A;
    EXPECT_EQ(Invert(A), 0);
    EXPECT_EQ(A.Size(), 0U);
}

TEST(Invert, PermutationIsUndone) {
    // The inverse of a permutation is its transpose, here with every entry scaled by a power of two of its
    // own.
    const long order[] = {3, 0, 4, 1, 2};
    Matrix A(4, 4);
    Matrix expected(4, 4);
    for (long i = 0; i < 5; ++i) {
        const double scale = std::ldexp(1.0, static_cast<int>(12 * i - 20));
        A(i, order[i]) = scale;
        expected(order[i], i) = 1.0 / scale;
    }
    EXPECT_EQ(Invert(A), 0);
    EXPECT_TRUE(A == expected);
}

// Rows are scaled by their sizes before pivots are compared: a row's own scale changes no choice, and powers
// of two pass through every operation without rounding.
TEST(Invert, ScaledRowsScaleTheInverseBitForBit) {
    const Matrix A = MatrixOf({{5, 2, 1}, {-2, 7, 3}, {1, 3.5, 9}});
    Matrix scaled = A;
    const double d[] = {std::ldexp(1.0, -140), 1.0, std::ldexp(1.0, 235)};
    for (long column = 0; column < 3; ++column)
        for (long row = 0; row < 3; ++row)
            scaled(column, row) *= d[row];
    Matrix inverse = A;
    EXPECT_EQ(Invert(inverse), 0);
    EXPECT_EQ(Invert(scaled), 0);
    for (long column = 0; column < 3; ++column)
        for (long row = 0; row < 3; ++row)
            EXPECT_EQ(scaled(column, row) * d[column], inverse(column, row)) << column << row;
}

TEST(Invert, ScaledColumnsScaleTheInverse) {
    const Matrix A = MatrixOf({{5, 2, 1}, {-2, 7, 3}, {1, 3.5, 9}});
    Matrix scaled = A;
    const double d[] = {1e-4, 1.0, 3e3};
    for (long column = 0; column < 3; ++column)
        for (long row = 0; row < 3; ++row)
            scaled(column, row) *= d[column];
    Matrix inverse = A;
    EXPECT_EQ(Invert(inverse), 0);
    EXPECT_EQ(Invert(scaled), 0);
    for (long column = 0; column < 3; ++column)
        for (long row = 0; row < 3; ++row)
            EXPECT_NEAR(scaled(column, row) * d[row], inverse(column, row), 20 * DoubleEpsilon)
                << column << row;
}

double Binomial(int n, int k) {
    double b = 1.0;
    for (int i = 1; i <= k; ++i)
        b = b * (n - k + i) / i; // stays whole
    return b;
}

// The inverse of a Hilbert matrix has whole numbers for elements. The condition numbers are the published
// ones (J. Todd, The condition of the finite segments of the Hilbert matrix, 1954).
TEST(Invert, HilbertMatricesAgainstTheirExactInverses) {
    const double condition[] = {1.0, 19.3, 5.24e2, 1.55e4, 4.77e5, 1.50e7, 4.75e8, 1.53e10};
    for (int n = 1; n <= 8; ++n) {
        Matrix A(n - 1, n - 1);
        Matrix expected(n - 1, n - 1);
        double largest = 0.0;
        for (int i = 1; i <= n; ++i)
            for (int j = 1; j <= n; ++j) {
                A(i - 1, j - 1) = 1.0 / (i + j - 1);
                const double c = Binomial(i + j - 2, i - 1);
                const double sign = (i + j) % 2 ? -1.0 : 1.0;
                expected(i - 1, j - 1) =
                    sign * (i + j - 1) * Binomial(n + i - 1, n - j) * Binomial(n + j - 1, n - i) * c * c;
                largest = std::max(largest, std::fabs(expected(i - 1, j - 1)));
            }
        EXPECT_EQ(Invert(A), 0) << n;
        ExpectNear(A, expected, n * condition[n - 1] * DoubleEpsilon * largest);
    }
}

// --- singular and ill-conditioned ------------------------------------------------------------------------

TEST(Invert, ZeroRowHasNoInverse) {
    // The second subscript counts as the row.
    Matrix A = MatrixOf({{1, 0, 2}, {3, 0, 4}, {5, 0, 7}});
    const Matrix before = A;
    Decomposition d;
    EXPECT_EQ(Invert(A, d), -1);
    EXPECT_EQ(d.Factored, 0);
    EXPECT_TRUE(A == before);
}

TEST(Invert, ZeroColumnHasNoInverse) {
    Matrix A = MatrixOf({{0, 0, 0}, {3, 1, 4}, {5, 9, 7}});
    Decomposition d;
    EXPECT_EQ(Invert(A, d), -1);
    EXPECT_EQ(d.Factored, 0);
}

TEST(Invert, DependentRowsHaveNoInverse) {
    Matrix A = MatrixOf({{4, 2, 8}, {2, 1, 4}, {8, 4, 32}});
    Decomposition d;
    EXPECT_EQ(Invert(A, d), -1);
    EXPECT_EQ(d.Factored, 0);
    Matrix B = MatrixOf({{1, 1}, {1, 1}}); // the last pivot is the one that vanishes
    EXPECT_EQ(Invert(B, d), -1);
    EXPECT_EQ(d.Factored, 0);
}

TEST(Invert, DiagonalOfAnySizesIsWellConditioned) {
    // Pivots are scaled by their rows: a diagonal has pivots of 1 throughout.
    Matrix A = MatrixOf({{1e-30, 0, 0}, {0, 1e20, 0}, {0, 0, 1}});
    EXPECT_EQ(Invert(A), 0);
    EXPECT_EQ(A(0, 0), 1.0 / 1e-30);
    EXPECT_EQ(A(1, 1), 1.0 / 1e20);
}

TEST(Invert, LastPivotThatFallsTooFarIsToldThoughTheInverseIsThere) {
    const double e = std::ldexp(1.0, -40); // 9e-13
    Matrix A = MatrixOf({{1, 1}, {1, 1 + e}});
    Decomposition d;
    EXPECT_EQ(Invert(A, d), -1);
    EXPECT_EQ(d.Factored, -1);
    const double rounding = 8 * DoubleEpsilon / e;
    for (const double element : {A(1, 1), -A(0, 1), -A(1, 0), A(0, 0)})
        EXPECT_NEAR(element * e, 1.0, rounding);
}

TEST(Invert, LastPivotThatFallsLessIsFine) {
    const double e = std::ldexp(1.0, -34); // 6e-11
    Matrix A = MatrixOf({{1, 1}, {1, 1 + e}});
    EXPECT_EQ(Invert(A), 0);
    EXPECT_NEAR(A(1, 1) * e, 1.0, 8 * DoubleEpsilon / e);
}

// 1 everywhere and e more at all places of the diagonal but the first. Its pivots are about 1/3, e/3 and e/6;
// its inverse is (1 + 2/e, -1/e, -1/e), (-1/e, 1/e, 0), (-1/e, 0, 1/e).
Matrix NearlyFlat(double e) {
    return MatrixOf({{1, 1, 1}, {1, 1 + e, 1}, {1, 1, 1 + e}});
}

void ExpectInverseOfNearlyFlat(const Matrix& A, long first, double e) {
    const double expected[3][3] = {{2 + e, -1, -1}, {-1, 1, 0}, {-1, 0, 1}};
    for (long i = 0; i < 3; ++i)
        for (long j = 0; j < 3; ++j)
            EXPECT_NEAR(A(first + i, first + j) * e, expected[i][j], 20 * DoubleEpsilon / e) << i << j;
}

TEST(Invert, FallFromTheFirstStageToTheSecondIsNotLookedAt) {
    const double e = std::ldexp(1.0, -40);
    Matrix A = NearlyFlat(e);
    EXPECT_EQ(Invert(A), 0);
    ExpectInverseOfNearlyFlat(A, 0, e);
}

TEST(Invert, FallToTheThirdStageIsToldThoughTheInverseIsThere) {
    const double e = std::ldexp(1.0, -40);
    const Matrix flat = NearlyFlat(e);
    Matrix A(3, 3);
    A(0, 0) = 4.0; // a stage in front, with a pivot of 1
    for (long i = 0; i < 3; ++i)
        for (long j = 0; j < 3; ++j)
            A(i + 1, j + 1) = flat(i, j);
    Decomposition d;
    EXPECT_EQ(Invert(A, d), -1);
    EXPECT_EQ(d.Factored, -1);
    EXPECT_EQ(A(0, 0), 0.25);
    ExpectInverseOfNearlyFlat(A, 1, e);
}

TEST(Invert, UnequalRangesGiveNoInverseAndNoError) {
    Matrix A(1, 2);
    A(0, 0) = A(1, 1) = 2.0;
    const Matrix before = A;
    Decomposition d;
    EXPECT_EQ(Invert(A, d), 0);
    EXPECT_EQ(d.Factored, 0);
    EXPECT_TRUE(A == before);
    EXPECT_EQ(Factor(A).Code, Decomposed);
}

TEST(Invert, NumbersBeyondTheRangeAreOverflow) {
    const auto expectOverflow = [](Matrix A) {
        try {
            Invert(A);
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Text, "Overflow");
        }
    };
    expectOverflow(Matrix(0, 0, 4e-320));
    expectOverflow(MatrixOf({{1e308, 1e308}, {1e308, -1e308}})); // the row size
    expectOverflow(Matrix(0, 0, std::numeric_limits<double>::infinity()));
    expectOverflow(Matrix(1, 1, std::numeric_limits<double>::quiet_NaN()));
    // Rows of such different sizes that a multiplier has no room.
    expectOverflow(MatrixOf({{1e-200, 1e200}, {0, 1e200}}));
}

// --- random matrices -------------------------------------------------------------------------------------

TEST(Invert, RandomMatricesAgainstGaussJordan) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> element(-1.0, 1.0);
    for (const long n : {1L, 2L, 3L, 4L, 7L, 12L, 25L, 40L, 62L})
        for (int repeat = 0; repeat < 4; ++repeat) {
            Matrix A(n - 1, n - 1);
            for (std::size_t i = 0; i < A.Size(); ++i)
                A.Data()[i] = element(random);
            SCOPED_TRACE(n);
            ExpectInverse(A);
        }
}

// --- the same by loops over one element at a time, where nothing is moved but numbers of rows and columns

struct PlainElimination {
    Matrix A;
    std::vector<long> Row, Column; // in the order of the pivots
    std::vector<double> Size;      // of the rows

    explicit PlainElimination(const Matrix& matrix) : A(matrix) {
        for (long i = 0; i <= A.RowHi(); ++i) {
            Row.push_back(i);
            Column.push_back(i);
            double sum = 0.0;
            for (long j = 0; j <= A.RowHi(); ++j)
                sum += std::fabs(A(j, i));
            Size.push_back(sum);
        }
    }
    double& At(std::size_t i, std::size_t j) { return A(Column[j], Row[i]); }

    void BringUp(std::size_t k) {
        double best = 0.0;
        std::size_t row = k, column = k;
        for (std::size_t i = k; i < Row.size(); ++i)
            for (std::size_t j = k; j < Row.size(); ++j)
                if (const double v = std::fabs(At(i, j)) / Size[static_cast<std::size_t>(Row[i])]; v > best) {
                    best = v;
                    row = i;
                    column = j;
                }
        std::swap(Row[k], Row[row]);
        std::swap(Column[k], Column[column]);
    }
    void Run() {
        for (std::size_t k = 0; k + 1 < Row.size(); ++k) {
            BringUp(k);
            for (std::size_t i = k + 1; i < Row.size(); ++i) {
                At(i, k) = -At(i, k) / At(k, k);
                for (std::size_t j = k + 1; j < Row.size(); ++j)
                    At(i, j) += At(i, k) * At(k, j);
            }
        }
    }
    std::vector<double> Solved(std::size_t unit) {
        std::vector<double> b(Row.size(), 0.0);
        b[unit] = 1.0;
        for (std::size_t k = 0; k + 1 < Row.size(); ++k)
            for (std::size_t i = k + 1; i < Row.size(); ++i)
                b[i] += At(i, k) * b[k];
        for (std::size_t k = Row.size(); k-- > 0;) {
            for (std::size_t j = k + 1; j < Row.size(); ++j)
                b[k] -= At(k, j) * b[j];
            b[k] /= At(k, k);
        }
        return b;
    }
};

void ExpectBitsOfPlainLoops(const Matrix& A) {
    PlainElimination plain(A);
    plain.Run();
    Matrix inverse = A;
    Decomposition d;
    Invert(inverse, d);
    for (std::size_t p = 0; p < plain.Row.size(); ++p) {
        ASSERT_EQ(d.RowPerm[static_cast<long>(p)], plain.Row[p]);
        ASSERT_EQ(d.ColPerm[static_cast<long>(p)], plain.Column[p]);
        const std::vector<double> x = plain.Solved(p);
        for (std::size_t j = 0; j < x.size(); ++j)
            ASSERT_EQ(inverse(plain.Row[p], plain.Column[j]), x[j]) << p << " " << j;
    }
    Matrix factored = A;
    Factor(factored);
    EXPECT_TRUE(factored == plain.A);
}

// On the narrowest and the widest registers, of orders that fill them and orders that do not; whole numbers
// give ties between pivots.
TEST(Invert, HasThePivotsAndTheBitsOfPlainLoopsOnEveryRoad) {
    std::mt19937 random(17);
    std::normal_distribution<double> element;
    const VectorWidth before = VectorsInUse;
    for (const VectorWidth width : {VectorWidth::Narrow, WidestVectors()})
        for (const long n : {1L, 2L, 3L, 4L, 5L, 8L, 11L, 22L, 39L})
            for (const bool whole : {false, true}) {
                Matrix A(n - 1, n - 1);
                for (long i = 0; i < n; ++i)
                    for (long j = 0; j < n; ++j) {
                        const double v = element(random) * std::exp(0.2 * static_cast<double>(i));
                        A(i, j) = whole ? std::round(3.0 * element(random)) + (i == j ? 5.0 : 0.0) : v;
                    }
                VectorsInUse = width;
                SCOPED_TRACE(n);
                ExpectBitsOfPlainLoops(A);
            }
    VectorsInUse = before;
}

TEST(Invert, RandomNormalMatricesOfUnequalScales) {
    std::mt19937 random(12);
    std::normal_distribution<double> element;
    for (const long n : {2L, 8L, 30L, 62L}) {
        std::vector<std::vector<double>> J(static_cast<std::size_t>(2 * n),
                                           std::vector<double>(static_cast<std::size_t>(n)));
        for (auto& row : J)
            for (std::size_t k = 0; k < row.size(); ++k)
                row[k] = element(random) * std::exp(0.1 * static_cast<double>(k));
        Matrix A(n - 1, n - 1);
        for (const auto& row : J)
            for (long i = 0; i < n; ++i)
                for (long j = 0; j < n; ++j)
                    A(i, j) += row[static_cast<std::size_t>(i)] * row[static_cast<std::size_t>(j)];
        SCOPED_TRACE(n);
        ExpectInverse(A);
    }
}

// The product of the pivots is the determinant but for its sign, which the interchanges tell.
TEST(Factor, OrderOfRowsAndColumnsIsAPermutationWithTheRightSign) {
    std::mt19937 random(13);
    std::uniform_real_distribution<double> element(-1.0, 1.0);
    for (const long n : {2L, 3L, 6L, 15L, 62L}) {
        Matrix A(n - 1, n - 1);
        for (std::size_t i = 0; i < A.Size(); ++i)
            A.Data()[i] = element(random);
        const Real determinant = InvertByGaussJordan(Widened(A)).Determinant;
        const Decomposition d = Factor(A);
        ASSERT_EQ(d.Code, Decomposed);
        EXPECT_EQ(d.Factored, -1);
        EXPECT_TRUE(IsPermutation(d.RowPerm, n));
        EXPECT_TRUE(IsPermutation(d.ColPerm, n));
        EXPECT_LE(d.SwapCount, 2 * (n - 1));
        EXPECT_EQ(d.SwapCount % 2, (Parity(d.RowPerm) + Parity(d.ColPerm)) % 2);
        Real product = d.SwapCount % 2 ? -1 : 1;
        for (long k = 0; k < n; ++k)
            product *= A(d.ColPerm[k], d.RowPerm[k]);
        EXPECT_NEAR(static_cast<double>(product / determinant), 1.0, 1e-11);
    }
}

TEST(Factor, TiesKeepThePivotFoundFirst) {
    // All candidates are equal at the first stage; the first row and column stay where they are.
    Matrix A = MatrixOf({{1, 1, 1}, {1, -1, 1}, {1, 1, -1}});
    const Decomposition d = Factor(A);
    EXPECT_EQ(d.Code, Decomposed);
    EXPECT_EQ(d.RowPerm[0], 0);
    EXPECT_EQ(d.ColPerm[0], 0);
}

TEST(Factor, PivotIsTheLargestShareOfItsRow) {
    // 3 of 4 in the second row beats 100 of 160 in the first. The first subscript is the column.
    Matrix A = MatrixOf({{100, 3}, {60, 1}});
    const Decomposition d = Factor(A);
    EXPECT_EQ(d.Code, Decomposed);
    EXPECT_EQ(d.RowPerm[0], 1);
    EXPECT_EQ(d.ColPerm[0], 0);
    EXPECT_EQ(d.SwapCount, 1);
}

TEST(Solve, GivesTheSolutionForARightHandSide) {
    // Row i reads A(0, i) x0 + A(1, i) x1 + A(2, i) x2 = b_i.
    Matrix A = MatrixOf({{2, 4, -2}, {1, -6, 7}, {1, 0, 2}});
    ZeroBased<double> x(2);
    x[0] = 1.5;
    x[1] = -2.0;
    x[2] = 0.25;
    ZeroBased<double> b(2);
    for (long i = 0; i < 3; ++i)
        for (long j = 0; j < 3; ++j)
            b[i] += A(j, i) * x[j];
    const Decomposition d = Factor(A);
    ASSERT_EQ(d.Code, Decomposed);
    ZeroBased<double> solution(2);
    Solve(d, b, A, solution);
    for (long i = 0; i < 3; ++i)
        EXPECT_NEAR(solution[i], x[i], 1e-13);
}

} // namespace
} // namespace Quillon

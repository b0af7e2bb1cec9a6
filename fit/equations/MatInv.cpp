#include "fit/equations/MatInv.h"

#include "platform/Four.h"
#include "platform/Narrow.h"
#include "platform/VectorWidth.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace Quillon {

namespace {

// Scaled pivots of two neighbouring stages that differ by more count as ill-conditioning: of the 16 digits of
// a double the elimination has then lost 11, and squares of derivatives that are themselves differences of
// six good digits hold no more than the rest.
constexpr double StageRatio = 1e-11;

double Finite(double value) {
    if (!std::isfinite(value)) RaiseError(ErrorText::Overflow);
    return value;
}

struct Pivot {
    double Best = 0.0;
    long Row = 0, Column = 0;
};

// Elements in the order of the pivots: row i is the matrix's RowPerm[i], place j in it ColPerm[j], side by
// side in memory. A row ends in zeros, so that registers of four may reach beyond its end.
struct Ordered {
    long Order = 0, Stride = 0;
    std::vector<double> Items;

    explicit Ordered(long order)
        : Order(order), Stride(order + VectorLength), Items(static_cast<std::size_t>(order * Stride)) {}
    double* Row(long i) { return Items.data() + i * Stride; }
    const double* Row(long i) const { return Items.data() + i * Stride; }
};

// Size(i) = sum over j of |A(j, i)|, by which pivots are scaled. False when a row is all zero.
bool MeasureRows(const Ordered& m, ZeroBased<double>& size) {
    for (long i = 0; i < m.Order; ++i) {
        for (long j = 0; j < m.Order; ++j)
            size[i] += std::fabs(m.Row(i)[j]);
        if (Finite(size[i]) == 0.0) return false;
    }
    return true;
}

// The largest of the first n numbers from a row on, each without its sign and over size, which keeps the
// order of a row's pivots as rounded quotients have it. A quotient that is not finite is an overflow.
double LargestQuotient(const double* row, long n, double size) {
    Four largest{};
    FourBits infinite{};
    OnVectors([&] {
        Four best{};
        FourBits marks{};
        for (long j = 0; j < n; j += VectorLength) {
            Four quotient;
            Load(quotient, row + j);
            TakeSign(quotient);
            quotient = quotient / size;
            MarkInfinite(marks, quotient);
            best = quotient > best ? quotient : best;
        }
        largest = best;
        infinite = marks;
    });
    if (AnyMark(infinite)) RaiseError(ErrorText::Overflow);
    return std::max(std::max(largest[0], largest[1]), std::max(largest[2], largest[3]));
}

// Complete search: rows outer, columns inner, ties keep the first found.
Pivot SearchPivot(const Decomposition& d, const Ordered& m, const ZeroBased<double>& size, long k) {
    Pivot p;
    for (long i = k; i < m.Order; ++i) {
        const double* row = m.Row(i);
        const double rowSize = size[d.RowPerm[i]];
        const double largest = LargestQuotient(row + k, m.Order - k, rowSize);
        if (!(largest > p.Best)) continue;
        long j = k;
        while (std::fabs(row[j]) / rowSize != largest)
            ++j;
        p = {largest, i, j};
    }
    return p;
}

void InterchangeRows(Decomposition& d, Ordered& m, long k, long with) {
    if (k == with) return;
    std::swap(d.RowPerm[k], d.RowPerm[with]);
    std::swap_ranges(m.Row(k), m.Row(k) + m.Order, m.Row(with));
    ++d.SwapCount;
}

void InterchangeColumns(Decomposition& d, Ordered& m, long k, long with) {
    if (k == with) return;
    std::swap(d.ColPerm[k], d.ColPerm[with]);
    for (long i = 0; i < m.Order; ++i)
        std::swap(m.Row(i)[k], m.Row(i)[with]);
    ++d.SwapCount;
}

// to[j] = to[j] + factor * from[j] for n numbers, and for zeros behind them that stay zeros.
[[gnu::always_inline]] inline void AddMultiple(double* to, const double* from, double factor, long n) {
    for (long j = 0; j < n; j += VectorLength) {
        Four sum, other;
        Load(sum, to + j);
        Load(other, from + j);
        sum += factor * other;
        Store(to + j, sum);
    }
}

// The rows below the pivot less their multiples of its row; the multipliers stay in the pivot's column.
void Eliminate(Ordered& m, long k) {
    const double* pivot = m.Row(k);
    OnVectors([&] {
        for (long i = k + 1; i < m.Order; ++i) {
            double* row = m.Row(i);
            row[k] = Finite(-row[k] / pivot[k]);
            AddMultiple(row + k + 1, pivot + k + 1, row[k], m.Order - k - 1);
        }
    });
}

// (code + 5) mod 200 - 5: 199 becomes -1, 0 stays.
InverseCode ResultOf(FactorCode code) {
    return static_cast<InverseCode>((code + 5) % 200 - 5);
}

Decomposition Prepared(const ZeroBasedMatrix<double>& A) {
    Decomposition d;
    d.Lo = ToInt16(A.Low());
    d.Hi = ToInt16(A.RowHi());
    d.Factored = -1;
    d.RowPerm.Recreate(d.Hi);
    d.ColPerm.Recreate(d.Hi);
    for (long i = d.Lo; i <= d.Hi; ++i)
        d.RowPerm[i] = d.ColPerm[i] = ToInt16(i);
    return d;
}

// Element i, j in the order of d from the matrix, and back.
Ordered Taken(const ZeroBasedMatrix<double>& A, const Decomposition& d) {
    Ordered m(d.Hi + 1L);
    for (long i = 0; i < m.Order; ++i)
        for (long j = 0; j < m.Order; ++j)
            m.Row(i)[j] = A(d.ColPerm[j], d.RowPerm[i]);
    return m;
}
void PutBack(ZeroBasedMatrix<double>& A, const Ordered& m, const Decomposition& d) {
    for (long i = 0; i < m.Order; ++i)
        for (long j = 0; j < m.Order; ++j)
            A(d.ColPerm[j], d.RowPerm[i]) = m.Row(i)[j];
}

// All stages; false after a pivot of zero.
bool RunStages(Decomposition& d, Ordered& m) {
    ZeroBased<double> size(d.Hi);
    if (!MeasureRows(m, size)) return false;
    double previous = 0.0;
    for (long k = 0; k < d.Hi; ++k) {
        const Pivot p = SearchPivot(d, m, size, k);
        if (p.Best == 0.0) return false;
        // The first stage has none before it, and the second is not looked at. [decision: neighbour-pivots]
        if (k > 1 && previous * StageRatio > p.Best) d.Code = BadPivot;
        previous = p.Best;
        InterchangeRows(d, m, k, p.Row);
        InterchangeColumns(d, m, k, p.Column);
        Eliminate(m, k);
    }
    const double last = Finite(m.Row(d.Hi)[d.Hi]);
    if (last == 0.0) return false;
    if (previous * StageRatio > std::fabs(last) / size[d.RowPerm[d.Hi]]) d.Code = BadPivot;
    return true;
}

void FactorOrdered(Decomposition& d, Ordered& m) {
    if (RunStages(d, m)) return;
    d.Factored = 0;
    d.Code = BadPivot;
}

// Forward for all unit vectors at once, row by row: row i of B becomes that of the inverse of the lower
// triangle. Left of the diagonal each vector has gone through the stages from its own place on, before that
// it is zero.
void ForwardAll(Ordered& B, const Ordered& m) {
    OnVectors([&] {
        for (long i = 0; i < m.Order; ++i) {
            B.Row(i)[i] = 1.0;
            for (long k = 0; k < i; ++k)
                AddMultiple(B.Row(i), B.Row(k), m.Row(i)[k], k + 1);
        }
    });
}

// Backward, in place.
void BackwardAll(Ordered& B, const Ordered& m) {
    OnVectors([&] {
        for (long k = m.Order - 1; k >= 0; --k) {
            for (long j = k + 1; j < m.Order; ++j)
                AddMultiple(B.Row(k), B.Row(j), -m.Row(k)[j], m.Order);
            for (long i = 0; i < m.Order; ++i)
                B.Row(k)[i] = Finite(B.Row(k)[i] / m.Row(k)[k]);
        }
    });
}

// Column k of the inverse solves A X = unit vector k. What a sum adds, and when, is what Solve does for each
// vector by itself.
void PutInverse(ZeroBasedMatrix<double>& A, const Ordered& m, const Decomposition& d) {
    Ordered B(m.Order);
    ForwardAll(B, m);
    BackwardAll(B, m);
    for (long i = 0; i < m.Order; ++i)
        for (long j = 0; j < m.Order; ++j)
            A(d.RowPerm[j], d.ColPerm[i]) = B.Row(i)[j];
}

// B(q) += multiplier(q, k) B(k) in the order of the stages (Forsythe and Moler, section 9).
void Forward(const Decomposition& d, ZeroBased<double>& B, const ZeroBasedMatrix<double>& A) {
    for (long k = d.Lo; k < d.Hi; ++k) {
        const long c = d.ColPerm[k];
        const long r = d.RowPerm[k];
        if (B[r] == 0.0) continue; // most of a unit vector
        for (long i = k + 1; i <= d.Hi; ++i) {
            const long q = d.RowPerm[i];
            B[q] = B[q] + A(c, q) * B[r];
        }
    }
}

// X(k) = (B(k) - sum over j > k of U(k, j) X(j)) / U(k, k) (Forsythe and Moler, section 9).
void Backward(const Decomposition& d, const ZeroBased<double>& B, const ZeroBasedMatrix<double>& A,
              ZeroBased<double>& X) {
    for (long k = d.Hi; k >= d.Lo; --k) {
        const long c = d.ColPerm[k];
        const long r = d.RowPerm[k];
        X[c] = B[r];
        for (long j = k + 1; j <= d.Hi; ++j) {
            const long e = d.ColPerm[j];
            X[c] = X[c] - A(e, r) * X[e];
        }
        X[c] = Finite(X[c] / A(c, r));
    }
}

bool IsSquare(const ZeroBasedMatrix<double>& A) {
    return A.RowHi() == A.ColumnHi();
}

} // namespace

Decomposition Factor(ZeroBasedMatrix<double>& A) {
    if (!IsSquare(A)) return {};
    Decomposition d = Prepared(A);
    if (d.Hi < d.Lo) return d; // nothing to decompose
    Ordered m = Taken(A, d);
    FactorOrdered(d, m);
    PutBack(A, m, d);
    return d;
}

void Solve(const Decomposition& d, ZeroBased<double>& B, const ZeroBasedMatrix<double>& A,
           ZeroBased<double>& X) {
    Forward(d, B, A);
    Backward(d, B, A, X);
}

InverseCode Invert(ZeroBasedMatrix<double>& A, Decomposition& d) {
    d = {};
    if (!IsSquare(A)) return Inverted;
    d = Prepared(A);
    if (d.Hi < d.Lo) return Inverted;
    Ordered m = Taken(A, d);
    FactorOrdered(d, m);
    PutBack(A, m, d);
    if (d.Factored) PutInverse(A, m, d);
    return ResultOf(d.Code);
}

InverseCode Invert(ZeroBasedMatrix<double>& A) {
    Decomposition d;
    return Invert(A, d);
}

} // namespace Quillon

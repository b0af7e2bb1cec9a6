#include "fit/MatInv.h"

#include "platform/Narrow.h"

#include <cmath>
#include <utility>

namespace Quillon {

namespace {

constexpr std::int16_t IllConditioned = 199;
constexpr double StageRatio = 1e-11; // of the scaled pivots of two neighbouring stages

Decomposition State;

double Finite(double value) {
    if (!std::isfinite(value)) RaiseError(ErrorText::Overflow);
    return value;
}

struct Pivot {
    double Best = 0.0;
    long Row = 0, Column = 0;
};

// The row sizes by which pivots are scaled. False when a row is all zero.
bool MeasureRows(const ZeroBasedMatrix<double>& A, ZeroBased<double>& size) {
    const long lo = State.Lo;
    const long hi = State.Hi;
    for (long i = lo; i <= hi; ++i) {
        State.RowPerm[i] = State.ColPerm[i] = ToInt16(i);
        for (long j = lo; j <= hi; ++j)
            size[i] += std::fabs(A(j, i));
        if (Finite(size[i]) == 0.0) return false;
    }
    return true;
}

// Complete search: rows outer, columns inner, ties keep the first found.
Pivot SearchPivot(const ZeroBasedMatrix<double>& A, const ZeroBased<double>& size, long k) {
    Pivot p;
    for (long i = k; i <= State.Hi; ++i) {
        const long r = State.RowPerm[i];
        for (long j = k; j <= State.Hi; ++j) {
            const double v = Finite(std::fabs(A(State.ColPerm[j], r)) / size[r]);
            if (v > p.Best) p = {v, i, j};
        }
    }
    return p;
}

void Interchange(ZeroBased<std::int16_t>& perm, long k, long with) {
    if (perm[k] == perm[with]) return;
    std::swap(perm[k], perm[with]);
    ++State.SwapCount;
}

void Eliminate(ZeroBasedMatrix<double>& A, long k) {
    const long r = State.RowPerm[k];
    const long c = State.ColPerm[k];
    for (long i = k + 1; i <= State.Hi; ++i) {
        const long q = State.RowPerm[i];
        A(c, q) = Finite(-A(c, q) / A(c, r));
        for (long j = k + 1; j <= State.Hi; ++j) {
            const long d = State.ColPerm[j];
            A(d, q) = A(d, q) + A(c, q) * A(d, r);
        }
    }
}

// 199 becomes -1, 0 stays.
std::int16_t Result(std::int16_t code) {
    return static_cast<std::int16_t>((code + 5) % 200 - 5);
}

std::int16_t Fail() {
    State.Factored = 0;
    return IllConditioned;
}

} // namespace

const Decomposition& LastDecomposition() {
    return State;
}

std::int16_t Factor(ZeroBasedMatrix<double>& A) {
    State = Decomposition{};
    if (A.RowHi() != A.ColumnHi()) return 0;
    const long hi = A.RowHi();
    State.Lo = ToInt16(A.Low());
    State.Hi = ToInt16(hi);
    State.Factored = -1;
    State.RowPerm.Recreate(hi);
    State.ColPerm.Recreate(hi);
    if (hi < State.Lo) return 0; // nothing to decompose
    ZeroBased<double> size(hi);
    if (!MeasureRows(A, size)) return Fail();

    std::int16_t code = 0;
    double previous = 0.0;
    for (long k = State.Lo; k < hi; ++k) {
        const Pivot p = SearchPivot(A, size, k);
        if (p.Best == 0.0) return Fail();
        // [decision: neighbour-pivots]
        if (k > 1 && previous * StageRatio > p.Best) code = IllConditioned;
        previous = p.Best;
        Interchange(State.RowPerm, k, p.Row);
        Interchange(State.ColPerm, k, p.Column);
        Eliminate(A, k);
    }
    const long r = State.RowPerm[hi];
    const double last = Finite(A(State.ColPerm[hi], r));
    if (last == 0.0) return Fail();
    if (previous * StageRatio > std::fabs(last) / size[r]) code = IllConditioned;
    return code;
}

std::int16_t Solve(ZeroBased<double>& B, const ZeroBasedMatrix<double>& A, ZeroBased<double>& X) {
    for (long k = State.Lo; k < State.Hi; ++k) {
        const long c = State.ColPerm[k];
        const long r = State.RowPerm[k];
        if (B[r] == 0.0) continue; // most of a unit vector
        for (long i = k + 1; i <= State.Hi; ++i) {
            const long q = State.RowPerm[i];
            B[q] = B[q] + A(c, q) * B[r];
        }
    }
    for (long k = State.Hi; k >= State.Lo; --k) {
        const long c = State.ColPerm[k];
        const long r = State.RowPerm[k];
        X[c] = B[r];
        for (long j = k + 1; j <= State.Hi; ++j) {
            const long d = State.ColPerm[j];
            X[c] = X[c] - A(d, r) * X[d];
        }
        X[c] = Finite(X[c] / A(c, r));
    }
    return 0;
}

std::int16_t Invert(ZeroBasedMatrix<double>& A) {
    const long hi = A.RowHi();
    const long lo = A.Low();
    const std::int16_t code = Factor(A);
    if (State.Factored) {
        ZeroBasedMatrix<double> inverse(hi, hi);
        ZeroBased<double> B(hi);
        ZeroBased<double> X(hi);
        for (long k = lo; k <= hi; ++k) {
            B[k] = 1.0;
            if (Solve(B, A, X) != 0) return Result(code);
            for (long i = lo; i <= hi; ++i) {
                inverse(k, i) = X[i];
                B[i] = 0.0;
            }
        }
        A = inverse;
    }
    return Result(code);
}

} // namespace Quillon

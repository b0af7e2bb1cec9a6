#include "fit/equations/MatInv.h"

#include "platform/Narrow.h"

#include <cmath>
#include <utility>

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

// Size(i) = sum over j of |A(j, i)|, by which pivots are scaled. False when a row is all zero.
bool MeasureRows(Decomposition& d, const ZeroBasedMatrix<double>& A, ZeroBased<double>& size) {
    for (long i = d.Lo; i <= d.Hi; ++i) {
        d.RowPerm[i] = d.ColPerm[i] = ToInt16(i);
        for (long j = d.Lo; j <= d.Hi; ++j)
            size[i] += std::fabs(A(j, i));
        if (Finite(size[i]) == 0.0) return false;
    }
    return true;
}

// Complete search: rows outer, columns inner, ties keep the first found.
Pivot SearchPivot(const Decomposition& d, const ZeroBasedMatrix<double>& A, const ZeroBased<double>& size,
                  long k) {
    Pivot p;
    for (long i = k; i <= d.Hi; ++i) {
        const long r = d.RowPerm[i];
        for (long j = k; j <= d.Hi; ++j) {
            const double v = Finite(std::fabs(A(d.ColPerm[j], r)) / size[r]);
            if (v > p.Best) p = {v, i, j};
        }
    }
    return p;
}

void Interchange(Decomposition& d, ZeroBased<std::int16_t>& perm, long k, long with) {
    if (perm[k] == perm[with]) return;
    std::swap(perm[k], perm[with]);
    ++d.SwapCount;
}

// The rows below the pivot less their multiples of its row; A(c, q) keeps the multiplier.
void Eliminate(const Decomposition& d, ZeroBasedMatrix<double>& A, long k) {
    const long r = d.RowPerm[k];
    const long c = d.ColPerm[k];
    for (long i = k + 1; i <= d.Hi; ++i) {
        const long q = d.RowPerm[i];
        A(c, q) = Finite(-A(c, q) / A(c, r));
        for (long j = k + 1; j <= d.Hi; ++j) {
            const long e = d.ColPerm[j];
            A(e, q) = A(e, q) + A(c, q) * A(e, r);
        }
    }
}

// (code + 5) mod 200 - 5: 199 becomes -1, 0 stays.
InverseCode ResultOf(FactorCode code) {
    return static_cast<InverseCode>((code + 5) % 200 - 5);
}

Decomposition& Fail(Decomposition& d) {
    d.Factored = 0;
    d.Code = BadPivot;
    return d;
}

Decomposition Prepared(const ZeroBasedMatrix<double>& A) {
    Decomposition d;
    d.Lo = ToInt16(A.Low());
    d.Hi = ToInt16(A.RowHi());
    d.Factored = -1;
    d.RowPerm.Recreate(d.Hi);
    d.ColPerm.Recreate(d.Hi);
    return d;
}

} // namespace

Decomposition Factor(ZeroBasedMatrix<double>& A) {
    if (A.RowHi() != A.ColumnHi()) return {};
    Decomposition d = Prepared(A);
    if (d.Hi < d.Lo) return d; // nothing to decompose
    ZeroBased<double> size(d.Hi);
    if (!MeasureRows(d, A, size)) return Fail(d);

    double previous = 0.0;
    for (long k = d.Lo; k < d.Hi; ++k) {
        const Pivot p = SearchPivot(d, A, size, k);
        if (p.Best == 0.0) return Fail(d);
        // The first stage has none before it, and the second is not looked at. [decision: neighbour-pivots]
        if (k > 1 && previous * StageRatio > p.Best) d.Code = BadPivot;
        previous = p.Best;
        Interchange(d, d.RowPerm, k, p.Row);
        Interchange(d, d.ColPerm, k, p.Column);
        Eliminate(d, A, k);
    }
    const long r = d.RowPerm[d.Hi];
    const double last = Finite(A(d.ColPerm[d.Hi], r));
    if (last == 0.0) return Fail(d);
    if (previous * StageRatio > std::fabs(last) / size[r]) d.Code = BadPivot;
    return d;
}

// Forward: B(q) += multiplier(q, k) B(k) in the order of the stages; backward: X(k) = (B(k) - sum over j > k
// of U(k, j) X(j)) / U(k, k) (Forsythe and Moler, section 9).
void Solve(const Decomposition& d, ZeroBased<double>& B, const ZeroBasedMatrix<double>& A,
           ZeroBased<double>& X) {
    for (long k = d.Lo; k < d.Hi; ++k) {
        const long c = d.ColPerm[k];
        const long r = d.RowPerm[k];
        if (B[r] == 0.0) continue; // most of a unit vector
        for (long i = k + 1; i <= d.Hi; ++i) {
            const long q = d.RowPerm[i];
            B[q] = B[q] + A(c, q) * B[r];
        }
    }
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

InverseCode Invert(ZeroBasedMatrix<double>& A, Decomposition& d) {
    const long hi = A.RowHi();
    d = Factor(A);
    if (d.Factored) {
        // Column k of the inverse solves A X = unit vector k.
        ZeroBasedMatrix<double> inverse(hi, hi);
        ZeroBased<double> B(hi);
        ZeroBased<double> X(hi);
        for (long k = A.Low(); k <= hi; ++k) {
            B[k] = 1.0;
            Solve(d, B, A, X);
            for (long i = A.Low(); i <= hi; ++i) {
                inverse(k, i) = X[i];
                B[i] = 0.0;
            }
        }
        A = inverse;
    }
    return ResultOf(d.Code);
}

InverseCode Invert(ZeroBasedMatrix<double>& A) {
    Decomposition d;
    return Invert(A, d);
}

} // namespace Quillon

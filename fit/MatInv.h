#pragma once
// Matrix inversion by triangular decomposition with complete pivoting and implicit row scaling.
//
// Invert is what the fit uses; Factor and Solve are its halves. In a matrix the second subscript counts as
// the row and the first as the column, which makes no difference for the symmetric ones of a fit. The
// subscripts run over Lo..Hi, taken from the matrix (zero-based here). Everything is double precision. A
// singular or ill-conditioned matrix is told by the result code; numbers that leave the range of a double
// are the RuntimeError "Overflow".

#include "platform/Arrays.h"

#include <cstdint>

namespace Quillon {

// Inverts A in place. 0: done. -1: singular (A is then the half-done decomposition) or ill-conditioned (A
// then holds the inverse as far as it goes): two pivots one stage apart differ by more than 1e11.
std::int16_t Invert(ZeroBasedMatrix<double>& A);

// Decomposes A in place; the multipliers stay below the pivots. Result 0, or 199 for a zero or a tiny pivot.
std::int16_t Factor(ZeroBasedMatrix<double>& A);

// Solves A X = B after Factor. B is used up.
std::int16_t Solve(ZeroBased<double>& B, const ZeroBasedMatrix<double>& A, ZeroBased<double>& X);

// What the latest Factor left: whether it came to its end, the order of rows and columns, interchanges.
struct Decomposition {
    std::int16_t Lo = 0;
    std::int16_t Hi = -1;
    std::int16_t Factored = 0; // flag
    std::int16_t SwapCount = 0;
    ZeroBased<std::int16_t> RowPerm;
    ZeroBased<std::int16_t> ColPerm;
};
const Decomposition& LastDecomposition();

} // namespace Quillon

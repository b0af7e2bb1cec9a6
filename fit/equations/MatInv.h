#pragma once
// Matrix inversion by triangular decomposition with complete pivoting and implicit row scaling.
//
// Invert is what the fit uses; Factor and Solve are its halves. In a matrix the second subscript counts as
// the row and the first as the column, which makes no difference for the symmetric ones of a fit. The
// subscripts run over Lo..Hi, taken from the matrix (zero-based here). Everything is double precision. A
// singular or ill-conditioned matrix is told by the result; numbers that leave the range of a double
// are the RuntimeError "Overflow". Nothing is kept between calls.
//
// The method: J. H. Wilkinson, "Error analysis of direct methods of matrix inversion", J. ACM 8 (1961) 281:
// complete pivoting; G. E. Forsythe, C. B. Moler, Computer Solution of Linear Algebraic Systems (1967),
// sections 9 to 13: decomposition in place, scaling of rows that is looked at and not carried out.

#include "platform/Arrays.h"

#include <cstdint>

namespace Quillon {

// How a decomposition ended. The numbers are those by which Invert's result is formed.
enum FactorCode : std::int16_t {
    Decomposed = 0,
    BadPivot = 199 // a pivot of zero (nothing to go on with), or one that fell too far (gone on with)
};

// How an inversion ended.
enum InverseCode : std::int16_t { Inverted = 0, NotInverted = -1 };

// What Factor gives beside the matrix: how it ended, the order of rows and columns, interchanges. Factored is
// a flag: set when all pivots were found, be some of them too small to be trusted.
struct Decomposition {
    FactorCode Code = Decomposed;
    std::int16_t Factored = 0;
    std::int16_t Lo = 0;
    std::int16_t Hi = -1;
    std::int16_t SwapCount = 0;
    ZeroBased<std::int16_t> RowPerm;
    ZeroBased<std::int16_t> ColPerm;
};

// Inverts A in place. NotInverted: singular (A is then the half-done decomposition) or ill-conditioned (A
// then holds the inverse as far as it goes): two pivots one stage apart differ by more than 1e11. A matrix
// that is not square is left as it is, without an error. The second form gives the decomposition as well.
InverseCode Invert(ZeroBasedMatrix<double>& A);
InverseCode Invert(ZeroBasedMatrix<double>& A, Decomposition& decomposition);

// Decomposes A in place; the multipliers stay below the pivots.
Decomposition Factor(ZeroBasedMatrix<double>& A);

// Solves A X = B with what Factor left in A and gave as d. B is used up.
void Solve(const Decomposition& d, ZeroBased<double>& B, const ZeroBasedMatrix<double>& A,
           ZeroBased<double>& X);

} // namespace Quillon

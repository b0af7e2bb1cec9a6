#pragma once
// Eigenvalues and eigenvectors of a symmetric matrix, by cyclic Jacobi rotations (G. H. Golub, C. F. Van
// Loan, Matrix Computations, section on Jacobi methods).

#include "platform/Arrays.h"

namespace Quillon {

// Column k of vectors belongs to values(k), in no order. Square, double precision; A is used up.
void JacobiEigen(ZeroBasedMatrix<double>& A, ZeroBased<double>& values, ZeroBasedMatrix<double>& vectors);

} // namespace Quillon

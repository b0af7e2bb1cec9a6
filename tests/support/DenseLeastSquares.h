#pragma once
// Nonlinear least squares in long double, for tests: Levenberg-Marquardt steps from a dense Householder QR
// of the Jacobian, never from the normal equations, run until the step is lost in rounding.

#include "tests/support/RealMatrix.h"

#include <functional>

namespace Quillon {

// One evaluation at p: the residuals (data minus model) and the derivatives of the model, a row for each
// point, a column for each parameter. False where the model does not exist.
using LeastSquaresFunction =
    std::function<bool(const RealVector& p, RealVector& residual, RealMatrix& derivative)>;

struct LeastSquaresEnd {
    bool Converged = false;
    int Iterations = 0;
    RealVector P;
    Real SumSq = 0;
    RealMatrix Covariance; // (J^T J)^-1 at the end; times SumSq / degrees of freedom: that of P
    Real Slope = 0;        // |J^T r| in the metric of the covariance, over the root of SumSq
};

// The minimum of the sum of squares near start.
LeastSquaresEnd MinimiseSumSq(const LeastSquaresFunction& function, const RealVector& start);

// Where plain Gauss-Newton comes to rest: derivative^T residual = 0. With inexact derivatives that is not
// the minimum of the sum of squares.
LeastSquaresEnd GaussNewtonRest(const LeastSquaresFunction& function, const RealVector& start);

// The x that minimises |A x - b|^2 by Householder QR. inverse, when given, receives (A^T A)^-1. A column
// without any new direction is a std::domain_error.
RealVector SolveDense(RealMatrix A, RealVector b, RealMatrix* inverse = nullptr);

} // namespace Quillon

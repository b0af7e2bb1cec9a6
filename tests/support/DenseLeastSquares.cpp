#include "tests/support/DenseLeastSquares.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Quillon {
namespace {

Real SumOfSquares(const RealVector& v) {
    Real sum = 0;
    for (const Real each : v)
        sum += each * each;
    return sum;
}

// Reflects columns k.. of A and b so that column k is zero below its diagonal.
void Reflect(RealMatrix& A, RealVector& b, std::size_t k) {
    Real norm = 0;
    for (std::size_t i = k; i < A.Rows; ++i)
        norm += A(i, k) * A(i, k);
    norm = std::sqrt(norm);
    if (norm == 0) throw std::domain_error("a column without a new direction");
    const Real alpha = A(k, k) > 0 ? -norm : norm;
    RealVector v(A.Rows - k);
    for (std::size_t i = k; i < A.Rows; ++i)
        v[i - k] = A(i, k);
    v[0] -= alpha;
    const Real half = SumOfSquares(v) / 2;
    const auto apply = [&](auto element) {
        Real dot = 0;
        for (std::size_t i = 0; i < v.size(); ++i)
            dot += v[i] * element(k + i);
        for (std::size_t i = 0; i < v.size(); ++i)
            element(k + i) -= dot / half * v[i];
    };
    for (std::size_t j = k; j < A.Columns; ++j)
        apply([&](std::size_t i) -> Real& { return A(i, j); });
    apply([&](std::size_t i) -> Real& { return b[i]; });
}

// x with R x = b for the upper triangle R of A.
RealVector BackSubstitute(const RealMatrix& A, const RealVector& b) {
    RealVector x(A.Columns);
    for (std::size_t i = A.Columns; i-- > 0;) {
        Real sum = b[i];
        for (std::size_t j = i + 1; j < A.Columns; ++j)
            sum -= A(i, j) * x[j];
        x[i] = sum / A(i, i);
    }
    return x;
}

// R^-1 R^-T: the columns of R^-1 are found one by one.
RealMatrix InverseOfSquare(const RealMatrix& A) {
    const std::size_t n = A.Columns;
    RealMatrix inverseR(n, n), result(n, n);
    for (std::size_t j = 0; j < n; ++j) {
        RealVector unit(n);
        unit[j] = 1;
        const RealVector x = BackSubstitute(A, unit);
        for (std::size_t i = 0; i < n; ++i)
            inverseR(i, j) = x[i];
    }
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j)
            for (std::size_t k = 0; k < n; ++k)
                result(i, j) += inverseR(i, k) * inverseR(j, k);
    return result;
}

RealVector ColumnNorms(const RealMatrix& A) {
    RealVector norms(A.Columns);
    for (std::size_t i = 0; i < A.Rows; ++i)
        for (std::size_t j = 0; j < A.Columns; ++j)
            norms[j] += A(i, j) * A(i, j);
    for (Real& n : norms)
        n = std::sqrt(n);
    return norms;
}

// The step that minimises |derivative d - residual|^2 + lambda sum (norm_j d_j)^2.
RealVector DampedStep(const RealMatrix& derivative, const RealVector& residual, Real lambda) {
    if (lambda == 0) return SolveDense(derivative, residual);
    const std::size_t n = derivative.Columns;
    RealMatrix A(derivative.Rows + n, n);
    std::copy(derivative.Items.begin(), derivative.Items.end(), A.Items.begin());
    const RealVector norms = ColumnNorms(derivative);
    for (std::size_t j = 0; j < n; ++j)
        A(derivative.Rows + j, j) = std::sqrt(lambda) * norms[j];
    RealVector b = residual;
    b.resize(derivative.Rows + n);
    return SolveDense(std::move(A), std::move(b));
}

// The length of a step in units of the residuals: |derivative d|.
Real StepLength(const RealMatrix& derivative, const RealVector& d) {
    Real sum = 0;
    for (std::size_t i = 0; i < derivative.Rows; ++i) {
        Real dot = 0;
        for (std::size_t j = 0; j < derivative.Columns; ++j)
            dot += derivative(i, j) * d[j];
        sum += dot * dot;
    }
    return std::sqrt(sum);
}

bool LostInRounding(const RealVector& p, const RealVector& d) {
    for (std::size_t j = 0; j < p.size(); ++j)
        if (std::abs(d[j]) > 1e-17L * (std::abs(p[j]) + 1e-6L)) return false;
    return true;
}

RealVector Sum(const RealVector& p, const RealVector& d) {
    RealVector s = p;
    for (std::size_t j = 0; j < s.size(); ++j)
        s[j] += d[j];
    return s;
}

void Finish(LeastSquaresEnd& end, const RealVector& residual, const RealMatrix& derivative) {
    end.SumSq = SumOfSquares(residual);
    const RealVector d = SolveDense(derivative, residual, &end.Covariance);
    end.Slope = end.SumSq > 0 ? StepLength(derivative, d) / std::sqrt(end.SumSq) : 0;
}

constexpr int MostIterations = 1000;
constexpr Real SmallSlope = 1e-13L; // the minimum is then met to 1e-26 of the sum of squares

} // namespace

RealVector SolveDense(RealMatrix A, RealVector b, RealMatrix* inverse) {
    if (A.Rows < A.Columns) throw std::domain_error("fewer rows than columns");
    // Columns are brought to length 1 first, so that "no new direction" means the same for all of them.
    const RealVector norms = ColumnNorms(A);
    for (std::size_t i = 0; i < A.Rows; ++i)
        for (std::size_t j = 0; j < A.Columns; ++j)
            A(i, j) = norms[j] > 0 ? A(i, j) / norms[j] : 0;
    for (std::size_t k = 0; k < A.Columns; ++k) {
        Reflect(A, b, k);
        if (std::abs(A(k, k)) < 1e-16L) throw std::domain_error("a column without a new direction");
    }
    RealVector x = BackSubstitute(A, b);
    for (std::size_t j = 0; j < A.Columns; ++j)
        x[j] /= norms[j];
    if (inverse != nullptr) {
        *inverse = InverseOfSquare(A);
        for (std::size_t i = 0; i < A.Columns; ++i)
            for (std::size_t j = 0; j < A.Columns; ++j)
                (*inverse)(i, j) /= norms[i] * norms[j];
    }
    return x;
}

LeastSquaresEnd MinimiseSumSq(const LeastSquaresFunction& function, const RealVector& start) {
    LeastSquaresEnd end;
    end.P = start;
    RealVector residual, trialResidual;
    RealMatrix derivative, trialDerivative;
    if (!function(start, residual, derivative)) return end;
    Real lambda = 1e-3L;
    while (end.Iterations < MostIterations && !end.Converged) {
        ++end.Iterations;
        const Real before = SumOfSquares(residual);
        const RealVector newton = SolveDense(derivative, residual);
        end.Converged =
            StepLength(derivative, newton) <= SmallSlope * std::sqrt(before) || LostInRounding(end.P, newton);
        if (end.Converged) {
            // One last full step takes what the limit has left.
            if (function(Sum(end.P, newton), trialResidual, trialDerivative)) {
                end.P = Sum(end.P, newton);
                std::swap(residual, trialResidual);
                std::swap(derivative, trialDerivative);
            }
            break;
        }
        const RealVector step = DampedStep(derivative, residual, lambda);
        const RealVector trial = Sum(end.P, step);
        const bool exists = function(trial, trialResidual, trialDerivative);
        // Next to the minimum two sums differ by less than their rounding; a step counts as good there.
        if (exists && SumOfSquares(trialResidual) <= before * (1 + 1e-17L)) {
            end.P = trial;
            std::swap(residual, trialResidual);
            std::swap(derivative, trialDerivative);
            lambda = lambda < 1e-12L ? 0 : lambda / 10;
        } else {
            lambda = lambda == 0 ? 1e-9L : lambda * 10;
            if (lambda > 1e20L) break;
        }
    }
    Finish(end, residual, derivative);
    return end;
}

LeastSquaresEnd GaussNewtonRest(const LeastSquaresFunction& function, const RealVector& start) {
    LeastSquaresEnd end;
    end.P = start;
    RealVector residual;
    RealMatrix derivative;
    while (end.Iterations < MostIterations && function(end.P, residual, derivative)) {
        ++end.Iterations;
        const RealVector step = SolveDense(derivative, residual);
        end.Converged = StepLength(derivative, step) <= SmallSlope * std::sqrt(SumOfSquares(residual)) ||
                        LostInRounding(end.P, step);
        if (end.Converged) break;
        end.P = Sum(end.P, step);
    }
    if (end.Converged) Finish(end, residual, derivative);
    return end;
}

} // namespace Quillon

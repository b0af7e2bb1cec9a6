#pragma once
// The normal equations as a value, and what they tell beyond the step: how far the sum of squares can still
// fall, and the inverse where there is none.
//
// With D the derivatives of the fitted values by the fitted parameters and r the residuals, Matrix is D^T D
// and Vector is D^T r, by free position, double precision. A step p changes the sum of squares of the
// linearised function by -2 p . Vector + p . Matrix p; the step of Gauss and Newton, p = Matrix^-1 Vector,
// lowers it by p . Vector (P. R. Bevington, Data Reduction and Error Analysis, 1969, section 11-5).

#include "workspace/records/Counts.h"

namespace Quillon {

struct NormalEquations {
    ZeroBasedMatrix<double> Matrix;
    PerFree<double> Vector;
};

// The parameters that a step may move: all fitted ones, or concentrations and zero offsets alone, by which
// each set answers to the parameters that all of them share.
enum class MovedParms { All, Concentrations };

// Those that AccumulateSums has left in the workspace; before InvertNormalMatrix.
NormalEquations TakeNormalEquations();

// The step p of (Matrix + damping * identity) p = Vector (K. Levenberg, Quarterly of Applied Mathematics 2
// (1944) 164). With bounds in force (Work.BoundsActive), a parameter of Work.Parms that stands at its bound
// and whose element points outward takes no part: the problem is solved without it, and its element is 0.
// Without an inverse at that damping, the smallest larger one that gives one is taken. Elements that are not
// finite are left as they are.
// Of other parameters than those wanted the elements are 0 as well.
PerFree<double> DampedStep(const NormalEquations& equations, double damping,
                           MovedParms parms = MovedParms::All);

// Singles, rounded parameters among them, do not know a signal better than by this share of it.
inline constexpr double RoundingOfSingles = 1e-6;

// (RoundingOfSingles of the largest signal)^2, the least variance of a point that counts as noise.
double LeastVariance();

// The largest element of the diagonal, the measure of dampings; 0 for none.
double LargestDiagonal(const NormalEquations& equations);

// d = p . Vector / s^2 with p the undamped step and s^2 = Work.SumSq / (NumPts - NumFree), or
// (1e-6 of the largest signal)^2 where that is more: the decrease of the sum of squares that the equations
// still promise, in shares of what a degree of freedom contributes. At a minimum it is nearly 0. Infinite
// where it has no value.
double ExpectedDecrease(const NormalEquations& equations, MovedParms parms = MovedParms::All);

// The same where the undamped step of all parameters is known already, from the inverse: one product, unless
// a bound blocks an element of it.
double ExpectedDecreaseOf(const NormalEquations& equations, const PerFree<double>& step);

// The inverse of Matrix as far as the data determine it: that at the smallest damping which has one, with
// rows and columns of zeros for the parameters whose variance hangs on the damping.
ZeroBasedMatrix<double> DeterminedInverse(const NormalEquations& equations);

} // namespace Quillon

#pragma once
// The F distribution, for the ratio of sums of squares that bounds a confidence region.
//
// FProbability is the upper tail Q(F | n1, n2) = I_x(n2/2, n1/2) at x = n2 / (n2 + n1 F), with I the
// regularised incomplete beta function; FInverse is its inverse in F. Arguments and results are single
// precision but for FTail, the work inside is double. Abramowitz & Stegun, Handbook of Mathematical
// Functions, 26.5, 26.6.

#include <functional>

namespace Quillon {

// The value F with upper tail probability alpha (0..1, ends excluded) for n1 and n2 degrees of freedom (1
// and above). A RuntimeError where no such value exists.
float FInverse(float alpha, float n1, float n2);

// The upper tail probability of F (0 and above).
float FProbability(float f, float n1, float n2);

// The same in double precision, which holds tails down to 1e-308: 0 below.
double FTail(double f, double n1, double n2);

// The regularised incomplete beta function I_x(a, b), 0 <= x <= 1, a and b positive.
float BetaIncomplete(float a, float b, float x);

// Its continued fraction, without the front factor (A&S 26.5.8).
double BetaFraction(double a, double b, double x);

// ln Gamma(x) for positive x by the six-coefficient Lanczos series.
double LogGamma(double x);

// True when both are negative or neither is.
bool SameSign(float a, float b);

// Brackets a root of g from a guess and closes in on it by Brent's method (R. P. Brent, Algorithms for
// Minimization without Derivatives, 1973) in single precision: tolerance |b| * 6e-8 + 2.5e-5 on half of the
// interval. g may set stop to leave at once; the answer is then 0. A bracket that cannot be found is a
// RuntimeError.
float FindRoot(const std::function<float(float)>& g, float guess, const bool& stop);

} // namespace Quillon

#pragma once
// Exponentials and powers of the fitted function, one or many at a time.
//
// The exponential of the system's library hangs on the processor and on the library's version in its last
// bit, and it comes one at a time. This one consists of additions, products and shifts alone, none of them
// fused, in one order: its bits are the same on every machine, by itself and in any column. It errs by less
// than 1 unit in the last place. Beyond the range of a double it is 0 or infinity, below the smallest normal
// number it is rounded once as any other, and what is not a number stays none.
//
// The method: u = k ln 2 + r with |r| <= ln 2 / 2, ln 2 in two parts of which the first one times k is exact
// (W. J. Cody and W. Waite, Software Manual for the Elementary Functions, Prentice-Hall 1980, chapter 6);
// exp r by its power series up to r^13 / 13!, whose rest is below 5e-18; times 2^k.

namespace Quillon {

double Exponential(double u);

// out[i] = Exponential(x[i] * slope + intercept) for the first n points, the same bits. out and x do not
// overlap.
void Exponentials(double* out, const float* x, long n, double slope, double intercept);
void Exponentials(double* out, const double* x, long n, double slope, double intercept);

// a^n = exp(n ln a) for a >= 0 and any n. ln a has the error of a unit in its last place, so that the power
// errs by up to 2 (1 + |n ln a|) such units. The logarithm is that of a = 2^k (1 + f), by the series of
// ln((1 + s) / (1 - s)) in s = f / (2 + f).
double RealPower(double a, double n);

// out[i] = RealPower(a[i], n) for the first count numbers, the same bits. out and a do not overlap.
void RealPowers(double* out, const double* a, long count, double n);

} // namespace Quillon

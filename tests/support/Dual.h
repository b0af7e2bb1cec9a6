#pragma once
// A number with its derivatives by eleven parameters: forward differentiation in long double. The eight
// global slots come first, then the three of the point's own set.

#include "tests/support/RealMatrix.h"

#include <array>
#include <cmath>

namespace Quillon {

struct Dual {
    static constexpr std::size_t Count = 11;
    Real V = 0;
    std::array<Real, Count> D{};

    Dual() = default;
    Dual(Real value) : V(value) {} // a constant; implicit on purpose, so that formulas read as written
};

// A parameter: its derivative by itself is 1.
inline Dual Variable(Real value, std::size_t place) {
    Dual v(value);
    v.D[place] = 1;
    return v;
}

// v with each derivative multiplied by slope: the chain rule for a function of one argument.
inline Dual Chained(Real value, Real slope, const Dual& argument) {
    Dual result(value);
    for (std::size_t i = 0; i < Dual::Count; ++i)
        result.D[i] = slope * argument.D[i];
    return result;
}

inline Dual operator+(const Dual& a, const Dual& b) {
    Dual result(a.V + b.V);
    for (std::size_t i = 0; i < Dual::Count; ++i)
        result.D[i] = a.D[i] + b.D[i];
    return result;
}

inline Dual operator-(const Dual& a, const Dual& b) {
    Dual result(a.V - b.V);
    for (std::size_t i = 0; i < Dual::Count; ++i)
        result.D[i] = a.D[i] - b.D[i];
    return result;
}

inline Dual operator*(const Dual& a, const Dual& b) {
    Dual result(a.V * b.V);
    for (std::size_t i = 0; i < Dual::Count; ++i)
        result.D[i] = a.D[i] * b.V + a.V * b.D[i];
    return result;
}

inline Dual operator/(const Dual& a, const Dual& b) {
    const Real quotient = a.V / b.V;
    Dual result(quotient);
    for (std::size_t i = 0; i < Dual::Count; ++i)
        result.D[i] = (a.D[i] - quotient * b.D[i]) / b.V;
    return result;
}

inline Dual Exp(const Dual& a) {
    const Real e = std::exp(a.V);
    return Chained(e, e, a);
}
inline Dual Log(const Dual& a) {
    return Chained(std::log(a.V), 1 / a.V, a);
}

// The same names for plain numbers, so that a formula is written once for both.
inline Real Exp(Real a) {
    return std::exp(a);
}
inline Real Log(Real a) {
    return std::log(a);
}
inline Real ValueOf(Real a) {
    return a;
}
inline Real ValueOf(const Dual& a) {
    return a.V;
}

} // namespace Quillon

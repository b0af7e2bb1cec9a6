#include "models/function/Exponential.h"

#include "platform/VectorWidth.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace Quillon {

namespace {

constexpr double LogOfE = 0x1.71547652b82fep+0; // base 2
// ln 2: the first part has 32 bits, so that its product with any k is exact.
constexpr double Ln2Upper = 0x1.62e42feep-1;
constexpr double Ln2Lower = 0x1.a39ef35793c76p-33;
// Added to a number it leaves the nearest whole one in the last places.
constexpr double Rounder = 0x1.8p52;
// Within it neither 2^k nor the result leaves the normal numbers.
constexpr double PlainRange = 708.0;

// exp u = Mantissa 2^k, with k in the last bits of Shifted.
struct Parts {
    double Mantissa, Shifted;
};

// (exp r - 1 - r) / r^2, the pairs of its terms side by side, so that few wait for one another.
[[gnu::always_inline]] inline double SeriesFromSquare(double r) {
    const double r2 = r * r;
    const double r4 = r2 * r2;
    const double t0 = 1.0 / 2 + r * (1.0 / 6);
    const double t2 = 1.0 / 24 + r * (1.0 / 120);
    const double t4 = 1.0 / 720 + r * (1.0 / 5040);
    const double t6 = 1.0 / 40320 + r * (1.0 / 362880);
    const double t8 = 1.0 / 3628800 + r * (1.0 / 39916800);
    const double t10 = 1.0 / 479001600 + r * (1.0 / 6227020800);
    return (t0 + r2 * t2) + r4 * ((t4 + r2 * t6) + r4 * (t8 + r2 * t10));
}

[[gnu::always_inline]] inline Parts PartsOf(double u) {
    const double shifted = u * LogOfE + Rounder;
    const double k = shifted - Rounder;
    const double r = (u - k * Ln2Upper) - k * Ln2Lower;
    const double sum = 1.0 + r;
    const double lost = r - (sum - 1.0); // by the rounding of the sum, exactly
    return {sum + (lost + r * r * SeriesFromSquare(r)), shifted};
}

// 2^k, put together from its bits.
[[gnu::always_inline]] inline double PowerOfTwo(double shifted) {
    return std::bit_cast<double>((std::bit_cast<std::uint64_t>(shifted) << 52) +
                                 std::bit_cast<std::uint64_t>(1.0));
}

[[gnu::always_inline]] inline double InPlainRange(double u) {
    const Parts parts = PartsOf(u);
    return parts.Mantissa * PowerOfTwo(parts.Shifted);
}

double BeyondPlainRange(double u) {
    if (u > 710.0) return std::numeric_limits<double>::infinity();
    if (u < -746.0) return 0.0;
    const Parts parts = PartsOf(u);
    return std::ldexp(parts.Mantissa, static_cast<int>(parts.Shifted - Rounder));
}

// With the sign of a number below 0 for an argument beyond the plain range. Not a number is none such: it
// goes the plain way and stays what it is.
[[gnu::always_inline]] inline std::uint64_t RoomLeft(double u) {
    return std::bit_cast<std::uint64_t>(PlainRange - std::fabs(u));
}
[[gnu::always_inline]] inline bool IsBeyond(std::uint64_t room) {
    return room >> 63 != 0;
}

template <class X>
void ExponentialsOf(double* __restrict out, const X* __restrict x, long n, double slope, double intercept) {
    std::uint64_t room = 0;
    OnVectors([&] {
        std::uint64_t any = 0;
        for (long i = 0; i < n; ++i) {
            const double u = static_cast<double>(x[i]) * slope + intercept;
            out[i] = InPlainRange(u);
            any |= RoomLeft(u);
        }
        room = any;
    });
    if (!IsBeyond(room)) return;
    for (long i = 0; i < n; ++i)
        out[i] = Exponential(static_cast<double>(x[i]) * slope + intercept);
}

// --- powers

constexpr double SmallestNormal = std::numeric_limits<double>::min();
constexpr std::uint64_t BitsOfOne = std::bit_cast<std::uint64_t>(1.0);
constexpr std::uint64_t BitsOfRootHalf = std::bit_cast<std::uint64_t>(0x1.6a09e667f3bcdp-1);

// 2 (s^2 / 3 + s^4 / 5 + ... + s^20 / 21), the rest of ln((1 + s) / (1 - s)) / s behind its first term. For
// |s| < 0.172 what follows is below 2e-18.
[[gnu::always_inline]] inline double RestOfLog(double s) {
    const double z = s * s;
    const double z2 = z * z;
    const double z4 = z2 * z2;
    const double t1 = 2.0 / 3 + z * (2.0 / 5);
    const double t3 = 2.0 / 7 + z * (2.0 / 9);
    const double t5 = 2.0 / 11 + z * (2.0 / 13);
    const double t7 = 2.0 / 15 + z * (2.0 / 17);
    const double t9 = 2.0 / 19 + z * (2.0 / 21);
    return z * ((t1 + z2 * t3) + z4 * ((t5 + z2 * t7) + z4 * t9));
}

// ln a of a positive normal number: a = 2^k (1 + f) with 1 + f from root 1/2 to root 2, and with s f = 2 f -
// 4 s the logarithm of 1 + f is f - (f^2 / 2 - s (f^2 / 2 + rest)).
[[gnu::always_inline]] inline double LogOfNormal(double a) {
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(a);
    const std::uint64_t biased = (bits + (BitsOfOne - BitsOfRootHalf)) >> 52;
    // The number k + 1023 in the last places of 2^52.
    const double k = std::bit_cast<double>(biased | std::bit_cast<std::uint64_t>(0x1p52)) - (0x1p52 + 1023.0);
    const double f = std::bit_cast<double>(bits - (biased << 52) + BitsOfOne) - 1.0;
    const double s = f / (2.0 + f);
    const double half = 0.5 * (f * f);
    return k * Ln2Upper - ((half - (s * (half + RestOfLog(s)) + k * Ln2Lower)) - f);
}

// The same sign for a number that is not a positive normal one, told by its exponent.
[[gnu::always_inline]] inline std::uint64_t RoomOfNormal(double a) {
    constexpr std::uint64_t One = std::uint64_t{1} << 52; // of the exponent
    const std::uint64_t bits = std::bit_cast<std::uint64_t>(a);
    return bits | (bits + One) | (bits - One);
}

double Logarithm(double a) {
    if (a >= SmallestNormal && a < std::numeric_limits<double>::infinity()) return LogOfNormal(a);
    if (a > 0.0 && a < SmallestNormal) return LogOfNormal(a * 0x1p54) - 54.0 * (Ln2Upper + Ln2Lower);
    if (a == 0.0) return -std::numeric_limits<double>::infinity();
    return a > 0.0 ? a : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

double Exponential(double u) {
    if (std::fabs(u) > PlainRange) return BeyondPlainRange(u);
    return InPlainRange(u);
}

void Exponentials(double* out, const float* x, long n, double slope, double intercept) {
    ExponentialsOf(out, x, n, slope, intercept);
}
void Exponentials(double* out, const double* x, long n, double slope, double intercept) {
    ExponentialsOf(out, x, n, slope, intercept);
}

double RealPower(double a, double n) {
    if (n == 0.0) return 1.0;
    return Exponential(n * Logarithm(a));
}

void RealPowers(double* __restrict out, const double* __restrict a, long count, double n) {
    std::uint64_t room = 0;
    OnVectors([&] {
        std::uint64_t any = 0;
        for (long i = 0; i < count; ++i) {
            const double u = n * LogOfNormal(a[i]);
            out[i] = InPlainRange(u);
            any |= RoomLeft(u) | RoomOfNormal(a[i]);
        }
        room = any;
    });
    if (!IsBeyond(room) && n != 0.0) return;
    for (long i = 0; i < count; ++i)
        out[i] = RealPower(a[i], n);
}

} // namespace Quillon

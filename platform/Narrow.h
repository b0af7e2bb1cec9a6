#pragma once
// Conversions to the stored widths. A value that does not fit is the run-time error "Overflow", never a
// wrapped count and never an infinity. Rounding is to nearest, ties to even, whatever the value's type.

#include "platform/RuntimeError.h"

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

namespace Quillon {

// Both raise "Overflow" where To cannot hold the value; one that is no number is refused by RoundTo as well.
namespace Detail {
template <std::integral To, std::floating_point From> To RoundTo(From value) {
    const From r = std::nearbyint(value); // the default rounding mode is to nearest, ties to even
    if (!(r >= static_cast<From>(std::numeric_limits<To>::min()) &&
          r <= static_cast<From>(std::numeric_limits<To>::max())))
        RaiseError(ErrorText::Overflow);
    return static_cast<To>(r);
}
template <std::integral To, std::integral From> To FitTo(From value) {
    if (!std::in_range<To>(value)) RaiseError(ErrorText::Overflow);
    return static_cast<To>(value);
}
} // namespace Detail

// To a stored 16-bit integer, -32768 .. 32767; a double is rounded first, so that 32767.5 is too large.
template <std::integral From> std::int16_t ToInt16(From value) {
    return Detail::FitTo<std::int16_t>(value);
}
inline std::int16_t ToInt16(double value) {
    return Detail::RoundTo<std::int16_t>(value);
}

// To a stored 32-bit integer, in the same way.
template <std::integral From> std::int32_t ToInt32(From value) {
    return Detail::FitTo<std::int32_t>(value);
}
inline std::int32_t ToInt32(double value) {
    return Detail::RoundTo<std::int32_t>(value);
}

// To a stored single, rounded to the nearest one: some seven digits remain. Infinite results and values that
// are no number are refused as well; what is too small for a single becomes 0 or a subnormal one.
inline float ToSingle(double value) {
    const float s = static_cast<float>(value);
    if (!std::isfinite(s)) RaiseError(ErrorText::Overflow);
    return s;
}

// The quotient in double precision; a divisor of exactly 0 is the run-time error "Division by zero".
inline double Divide(double dividend, double divisor) {
    if (divisor == 0.0) RaiseError(ErrorText::DivisionByZero);
    return dividend / divisor;
}

// The natural logarithm; an argument of 0 or below is "Invalid procedure call or argument".
inline double Ln(double value) {
    if (!(value > 0.0)) RaiseError(ErrorText::BadArgument);
    return std::log(value);
}

// The square root; a negative argument is "Invalid procedure call or argument".
inline double Sqrt(double value) {
    if (!(value >= 0.0)) RaiseError(ErrorText::BadArgument);
    return std::sqrt(value);
}

// The stored truth values of a 16-bit flag, as saved fits have them. Counts and codes are no flags, even
// where they hold 0 and 1 alone.
inline constexpr std::int16_t FlagTrue = -1;
inline constexpr std::int16_t FlagFalse = 0;
inline constexpr std::int16_t Flag(bool value) {
    return value ? FlagTrue : FlagFalse;
}

} // namespace Quillon

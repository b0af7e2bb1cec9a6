#pragma once
// The decimal digits of a number, for those who write numbers: taken once from the double, then rounded and
// placed as text, so that no second rounding in binary gets between.

#include <string>

namespace Quillon {

// 0.Digits * 10^Point. The first digit is never "0" and neither is the last; zero has no digits and Point 0.
struct DecimalDigits {
    std::string Digits;
    long Point = 0;

    bool IsZero() const { return Digits.empty(); }

    // The digit that stands for 10^power; '0' outside the digits that there are.
    char At(long power) const {
        const long i = Point - 1 - power;
        return i < 0 || i >= static_cast<long>(Digits.size()) ? '0' : Digits[static_cast<std::size_t>(i)];
    }

    // How many digits stand behind the decimal mark.
    long Decimals() const {
        const long behind = static_cast<long>(Digits.size()) - Point;
        return IsZero() || behind < 0 ? 0 : behind;
    }
};

// The digits of the size of a number, without its sign, at that many significant digits (1 or more). A value
// that is not finite is the run-time error "Overflow".
DecimalDigits DigitsOf(double value, int significant);

// Keeps the first count digits and rounds the rest into them, half away from zero. A count below 0 leaves
// zero.
void RoundHalfAway(DecimalDigits& number, long count);

} // namespace Quillon

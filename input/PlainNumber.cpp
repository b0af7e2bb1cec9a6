#include "input/PlainNumber.h"

#include <cstdint>

namespace Quillon {

namespace {

constexpr std::uint64_t LargestWhole = std::uint64_t{1} << 53U; // all whole numbers up to it are doubles
constexpr long MostDigits = 19;                                 // that 64 bits take without a check of each
constexpr int MostPower = 22;                                   // 5^22 is below 2^53
constexpr double PowersOfTen[MostPower + 1] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                               1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// What follows is part of the one function that calls it: places and sums stay in registers.

// Appends the digits at the place to a whole number; the place behind them.
[[gnu::always_inline]] inline const char* TakeDigits(const char* at, const char* end, std::uint64_t& whole) {
    for (; at < end; ++at) {
        const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
        if (digit > 9U) break;
        whole = 10 * whole + digit;
    }
    return at;
}

[[gnu::always_inline]] inline const char* TakeSign(const char* at, const char* end, bool& minus) {
    minus = at < end && *at == '-';
    return at < end && (*at == '-' || *at == '+') ? at + 1 : at;
}

// Adds the exponent at the place, if one stands there, to a power of ten; the place behind it, or nothing for
// an odd one.
[[gnu::always_inline]] inline const char* TakeExponent(const char* at, const char* end, long& power) {
    if (at >= end || (*at != 'E' && *at != 'e')) return at;
    bool minus = false;
    const char* const first = TakeSign(at + 1, end, minus);
    std::uint64_t exponent = 0;
    const char* const behind = TakeDigits(first, end, exponent);
    power += minus ? -static_cast<long>(exponent) : static_cast<long>(exponent);
    return behind - first >= 1 && behind - first <= 3 ? behind : nullptr;
}

} // namespace

bool TakePlainNumber(const char*& at, const char* end, double& value) {
    bool minus = false;
    const char* const first = TakeSign(at, end, minus);
    std::uint64_t whole = 0;
    const char* place = TakeDigits(first, end, whole);
    long digits = place - first;
    long power = 0;
    if (place < end && *place == '.') {
        const char* const behind = TakeDigits(place + 1, end, whole);
        power = place + 1 - behind;
        digits -= power;
        place = behind;
    }
    if (digits < 1 || digits > MostDigits) return false;
    place = TakeExponent(place, end, power);
    if (!place || whole > LargestWhole || power < -MostPower || power > MostPower) return false;
    const auto exact = static_cast<double>(whole);
    const double size = power < 0 ? exact / PowersOfTen[-power] : exact * PowersOfTen[power];
    value = minus ? -size : size;
    at = place;
    return true;
}

} // namespace Quillon

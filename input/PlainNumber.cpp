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

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Appends the digits at the place to a whole number; how many there were.
long TakeDigits(const char*& at, const char* end, std::uint64_t& whole) {
    const char* const first = at;
    for (; at < end && IsDigit(*at); ++at)
        whole = 10 * whole + static_cast<std::uint64_t>(*at - '0');
    return at - first;
}

bool TakeMinus(const char*& at, const char* end) {
    if (at >= end || (*at != '-' && *at != '+')) return false;
    return *at++ == '-';
}

// Adds the exponent at the place to a power of ten, if one stands there; false for an odd one.
bool TakeExponent(const char*& at, const char* end, long& power) {
    if (at >= end || (*at != 'E' && *at != 'e')) return true;
    ++at;
    const bool minus = TakeMinus(at, end);
    std::uint64_t exponent = 0;
    const long digits = TakeDigits(at, end, exponent);
    power += minus ? -static_cast<long>(exponent) : static_cast<long>(exponent);
    return digits >= 1 && digits <= 3;
}

} // namespace

bool TakePlainNumber(const char*& at, const char* end, double& value) {
    const char* place = at;
    const bool minus = TakeMinus(place, end);
    std::uint64_t whole = 0;
    long digits = TakeDigits(place, end, whole);
    long power = 0;
    if (place < end && *place == '.') {
        ++place;
        power = -TakeDigits(place, end, whole);
        digits -= power;
    }
    if (digits < 1 || digits > MostDigits || !TakeExponent(place, end, power)) return false;
    if (whole > LargestWhole || power < -MostPower || power > MostPower) return false;
    const auto exact = static_cast<double>(whole);
    const double size = power < 0 ? exact / PowersOfTen[-power] : exact * PowersOfTen[power];
    value = minus ? -size : size;
    at = place;
    return true;
}

} // namespace Quillon

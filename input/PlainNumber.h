#pragma once
// The fast road for ordinary numbers of large files.

namespace Quillon {

// Takes a number off the front of [at, end) and moves at behind it. Ordinary is: an optional sign, digits
// with at most one point, an optional exponent of "E" or "e" with an optional sign and one to three digits; a
// whole number of digits that a double holds exactly, and a power of ten within 10^22, which a double holds
// as well: then one multiplication or division gives the nearest double (W. Clinger, How to read floating
// point numbers accurately, PLDI 1990). The value has the bits that NumericPrefix (input/NUMINPUT.h) gives.
//
// False for everything else, with at where it was: the exact road knows what that means. What stands behind
// the number is the caller's to judge: "1.5D3" is 1500 there, and 1.5 with "D3" behind it here.
bool TakePlainNumber(const char*& at, const char* end, double& value);

} // namespace Quillon

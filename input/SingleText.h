#pragma once
// Numbers as text without a picture.

#include <string>

namespace Quillon {

// A number without a picture: up to seven significant digits for a single ("0.05", "16777220"), up to fifteen
// for a double, trailing zeros dropped. Written plainly while the whole part has at most one digit more than
// that and no more decimals are needed than that; otherwise as mantissa and exponent of two digits or more
// ("1.5E+10", "1E-11", "1.234567E-03"). A value that is not finite is the run-time error "Overflow".
std::string SingleText(float value);
std::string DoubleText(double value);

} // namespace Quillon

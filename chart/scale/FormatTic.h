#pragma once
// The numbers at the tics.

#include <string>

namespace Quillon {

// A value of an axis as text: decimals digits behind the system's decimal mark (at most 6), in plain (format
// 1) or exponential form (format 2). While Chart.Log10Axis is set the value is a logarithm and the text is
// that of the number itself. A plain number of 2^31 or more is written in exponential form all the same. The
// digits come from whole-number arithmetic: 1.999 with two decimals is "2.00", -0.004 is "0.00". A value that
// is infinite or no number is "".
std::string FormatTic(double value, int decimals, int format);

} // namespace Quillon

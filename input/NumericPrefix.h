#pragma once
// Numbers from files: the longest part of a text that is one.

#include <cstddef>
#include <string_view>

namespace Quillon {

// The value of the longest numeric prefix: leading blanks and tabs skipped, an optional sign, digits with at
// most one point, an optional exponent of "E" or "D" in either case with an optional sign ("1E" is 1). 0
// where there is no number. Rounded correctly to double, whatever the locale; below its range 0, beyond it
// the run-time error "Overflow". used, when given, receives the number of characters that belong to the
// prefix, blanks in front included, 0 where there is no number; it is set before the error too.
double NumericPrefix(std::string_view text, std::size_t* used = nullptr);

} // namespace Quillon

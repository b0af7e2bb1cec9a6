#pragma once
// Numbers as text after a number picture.

#include <string>
#include <string_view>

namespace Quillon {

// A number as text after a picture: see docs/number-pictures.md. The decimal mark is always ".". An empty
// picture gives DoubleText. A value that is not finite is the run-time error "Overflow".
std::string FormatNumber(double value, std::string_view picture);

} // namespace Quillon

#pragma once
// A stored single as reports write it.

#include "input/FormatNumber.h"

namespace Quillon {

// value in a number picture, "0.0000" for example. What reports tell is stored as singles, pictures round
// doubles.
inline std::string Pictured(float value, const char* picture) {
    return FormatNumber(static_cast<double>(value), picture);
}

} // namespace Quillon

#pragma once
// --vbar, --buffer, --equilibrium-time: the calculators, as one table.
//
//     quantity,value,unit,source
//
// a row for each number. What one of them gives the next one takes: mass and v-bar of the protein, density
// and viscosity of the buffer, unless they are named.

#include "batch/options/CalculatorOptions.h"

#include <string>

namespace Quillon {

// The table as CSV. What is out of range, a letter that is none and a file that cannot be read are a
// RuntimeError with one line.
std::string Calculations(const CalculatorOptions& options);

} // namespace Quillon

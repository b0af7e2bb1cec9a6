#pragma once
// What a logarithm among the parameters means, in numbers that a person thinks in.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// Of an association constant or a concentration at its present value:
//
//     ln K 10.34 = 3.1E4 L/mol, Kd 32 uM
//     ln c -10.98 = 17 uM
//
// In signal or weight units of display a constant is told in these, and in moles behind it where a molar
// coefficient is given. "" for slots that hold no logarithm.
std::string LogMeaning(SlotNo slot);

// A concentration in mol/L with two digits and the prefix that suits it: "17 uM".
std::string MolarText(double molesPerLitre);

} // namespace Quillon

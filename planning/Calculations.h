#pragma once
// The calculators together: what a protein, a buffer and a column come to, as one table in which each takes
// what the ones before give. Shown by the form (planning/CalculatorForm.h) and written by the command line.

#include "planning/approach/EquilibriumTime.h"
#include "planning/solution/Buffer.h"
#include "planning/solution/Sequence.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// What is wanted; a part that is empty is not.
struct CalculationInput {
    std::string Chain;              // letters, or the name of a file with them or in FASTA
    std::optional<long> Disulfides; // none: all cysteines are paired
    std::string Buffer;             // as ReadSolutes takes it
    double Celsius = 20.0;
    // Fills in speed and radii, and what is named besides, over what protein and buffer have given: mass 0
    // without a protein, density and viscosity of water without a buffer.
    std::function<void(ApproachInput&)> Approach;
    std::array<const char*, 3> PartNames{"Protein", "Buffer",
                                         "Time to equilibrium"}; // before a failure's words
};

// A line of the table.
struct CalculatedNumber {
    std::string Quantity; // "mass": as other programs read it
    std::string Caption;  // "molar mass"
    double Value = 0.0;
    std::string Unit;
    std::string Source; // where it comes from; "" of what was only counted
};

struct Calculation {
    std::vector<CalculatedNumber> Numbers;
    std::optional<ProteinValues> Protein;
    std::optional<BufferValues> Buffer;
    std::optional<ApproachTimes> Times;
};

// Failures are RuntimeErrors in words with the name of the part in front; files are read through the seam.
Calculation Calculate(const CalculationInput& input);

// A value as it is shown: seven digits at most.
std::string NumberText(const CalculatedNumber& number);

} // namespace Quillon

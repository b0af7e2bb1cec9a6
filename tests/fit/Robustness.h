#pragma once
// How surely a fit ends at the minimum: fits of simulated experiments from starting values that are far off,
// each judged against a dense search in long double. Shared by the test and by the program that makes the
// whole table.

#include "tests/support/ModelCases.h"
#include "tests/support/ReferenceFit.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Quillon {

// The experiments of the table: every model ideal, and non-ideal (both signs) and with separate constants
// where it allows that.
std::vector<std::string> RobustnessCases();

// A case with fresh noise, in Work, at its true parameters.
void LoadRobustnessCase(const ModelCase& theCase, std::uint64_t seed);

// From the truth in Work to a start that is far off: fitted logarithms of constants by a uniform +-reach,
// masses, stoichiometries and virial coefficients by a factor of 0.7 to 1.4, zero offsets at 0,
// concentrations as the program guesses them. At most 200 iterations.
void StartFarOff(double reach, std::uint64_t seed);

// Scans of a protein (9.3 kDa) and a DNA that binds it (23.9 kDa, A) at three speeds: five cells at 260 nm,
// or three at 230 and 260 nm, 15 or 18 sets. Free protein to free DNA from 1:10 to 2:1, ln K from 12.5
// to 15.5 (K in L/mol), noise 0.003, all by the seed. In Work at the true parameters; constants and
// concentrations are fitted, masses and offsets held. With shared, the second wavelength has the
// concentrations of the first.
struct Mixture {
    std::int16_t Model = 8; // 8, 9 or 11
    int Wavelengths = 1;    // 1 or 2
    bool Shared = false;
};
void LoadMixture(const Mixture& mixture, std::uint64_t seed);

// From the truth in Work to what a user starts from who knows the masses alone: constants as the program has
// them, concentrations as it guesses them, 200 iterations.
void StartFromDefaults();

// Where a fit stands at its end.
enum class Stand {
    Minimum,      // its sum within 1e-3 of that of the dense search from the truth
    OtherMinimum, // at another one: the dense search from there gains less than 1e-3
    FalseStop,    // called converged, and no minimum
    Told          // no minimum, and the program says so
};
const char* StandName(Stand stand);

// least: the sum of squares of the dense search from the truth.
Stand StandOfFit(double least);

} // namespace Quillon

#pragma once
// How well the fit met the loadings that constrain it: what the form of the match and the report both show.

#include "workspace/records/Counts.h"

#include <cstddef>
#include <string>

namespace Quillon {

// True when a loading of species A (0) or B (1) of a row constrains the fit.
bool LoadingConstrains(std::size_t species, RowNo row);

// A loading and what came of it, as shown. What the fit found is empty where the loading does not constrain.
struct LoadingMatch {
    std::string Specified;  // in the unit that LoadingFactor leads to
    std::string Tolerance;  // percent, without the sign
    std::string Found;      // as Specified
    std::string Difference; // of found and specified over specified
    std::string Share;      // of the sum of squares: the squared residual of the loading's pseudo-point
    double Fraction = 0.0;  // that share as a number
};

// The loading of species A (0) or B (1) of a set of the fit. Fails as LoadingFactor.
LoadingMatch MatchOfLoading(std::size_t species, SetNo set);

// "Fraction of total fit variance from all concentration constraints = 26.00%".
std::string ShareOfLoadings(double fraction);

} // namespace Quillon

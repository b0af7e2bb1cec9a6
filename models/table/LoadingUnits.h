#pragma once
// How the loadings of concentration constraints are shown. They are held as mean signals of their set; where
// a coefficient of absorbance data leads from there to the unit in force they are shown in that unit, in all
// other units as the signals that they are.

#include "workspace/records/Counts.h"

#include <cstddef>
#include <string>

namespace Quillon {

// Shown value over signal, for species A (0) or B (1) of a row. A coefficient, path or ratio of 0 is the
// run-time error "Division by zero".
double LoadingFactor(std::size_t species, RowNo row);

// Number picture of a shown loading.
const char* LoadingPicture();

// The unit of the numbers that are shown. Of interference data these are the signals themselves, so that it
// is fringes whatever unit is in force; the report says so. [decision: loadings-in-fringes]
const char* LoadingUnit();

// A head with the unit in force in place of the one that caption ends with.
std::string LoadingHead(const std::string& caption);

// A tolerance, held as a fraction, in percent.
std::string ToleranceText(float tolerance);

// True when the model has a species B, whose constraints are then shown.
bool ShowsLoadingB();

} // namespace Quillon

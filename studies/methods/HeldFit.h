#pragma once
// Fits with some parameters held at values of choice: what profiles and maps are made of.

#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

// Work, in which a fit stands, is prepared for fits whose sums are compared with each other: their iteration
// goes on until hardly anything is left to be gained.
void FitFinely();

// Holds these fitted slots from now on. False when no other parameter is fitted.
bool HoldSlots(const std::vector<long>& slots);

struct HeldEnd {
    bool Ended = false;     // false after a cancel
    bool Converged = false; // at a minimum of the others
    double SumSq = 0.0;     // the lowest one met; infinite where the function has no value
};

// Fits the parameters that are still fitted from Work.Parms, with damped steps where it needs them; where
// none is (others false), the sum of squares alone. The parameters of the end are left in Work.Parms.
HeldEnd FitOthers(bool others);

} // namespace Quillon

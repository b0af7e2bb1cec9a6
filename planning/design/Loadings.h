#pragma once
// How much of each component a set of the fit holds at the current parameters, and concentrations for wanted
// amounts.

#include "workspace/records/Counts.h"

namespace Quillon {

// Means over the true points of a set of all units of A and of all units of B, free and bound: molar for
// models with complexes, else in signal units of the set. The inactive monomer of model 6, which does not
// exchange, counts as B.
struct SetAmounts {
    double A = 0.0, B = 0.0;
};
SetAmounts AmountsIn(SetNo set);

// Moves ln c of A, and of B where the model has it, so that a set holds these amounts: Newton's method in
// logarithms. A RuntimeError where none do. Tied concentrations stay, since those that they follow move.
void MoveToAmounts(SetNo set, const SetAmounts& wanted);

} // namespace Quillon

#pragma once
// The non-ideal monomer: c1 = a exp(e ct) with ct the total weight concentration and e the non-ideality
// factor. With e above 0 there are two roots or none, and the smaller one is the physical one.

#include "models/function/FitFrame.h"

namespace Quillon {

// The solution at a point, oligomers times the signal factor fA.
struct NonIdealPoint {
    double Monomer{}; // c1
    double SignalN{}; // fA * cN
    double SignalM{}; // fA * cM
};

// Solves at a point with the ideal monomer a. At the first point of a set the measured signal gives the
// start, later the solution before (kept in the frame). Where no root exists, the total at which the equation
// comes closest to being met stands, whatever the start was.
NonIdealPoint SolveNonIdeal(FitFrame& frame, double a, double measured, bool newSet);

} // namespace Quillon

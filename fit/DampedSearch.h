#pragma once
// A search for a minimum with damped steps, which goes where the step of Gauss and Newton breaks off:
// Levenberg's method (K. Levenberg, Quarterly of Applied Mathematics 2 (1944) 164).

namespace Quillon {

// The damped search by itself, from the present Parms, put back into their bounds. It leaves the best place
// that it has met in Parms and SumSq, never a worse one than the start; a sum that is not finite or a fitted
// value beyond the range of a single is a worse one. Work.Outcome is not touched.
enum class DampedWay {
    Guided, // concentrations first where the guesses are far above the data, and steps that are corrected
    Plain   // Levenberg's method and nothing else
};
enum class DampedEnd {
    Minimum,      // hardly any decrease is promised any more
    NoStep,       // no step helps, however short
    TooManySteps, // 150 were not enough
    NoStart,      // the function has no value at the start
    Cancelled     // Work.AbortFit
};
DampedEnd SearchDamped(DampedWay way);

// The same by Levenberg's method with concentrations and zero offsets alone: what all sets share stays.
DampedEnd SearchConcentrations();

} // namespace Quillon

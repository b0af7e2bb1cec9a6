#pragma once
// Where a fit failed in arithmetic, in words: the data set, the radius and the parameter that it came from.

#include <string>

namespace Quillon {

// Why the fit that has just ended with FitEnd::MathError has no numbers, at the latest trial in Work.Parms:
//
//     The fitted value of data set 2 at 6.9120 cm is beyond any number, most likely by Ln c(A,mon), set 2
//     = 95.2. The change of the fitted value of data set 2 at 6.9120 cm with MW A is beyond any number. The
//     measured value of data set 2 at 6.9120 cm is no number. MW A = 0 leaves no step for its derivative. The
//     step of Ln K(1>M) is beyond any number. There are no more points (5) than fitted parameters (5).
//
// or what the data do not determine, where it is the inverse that has no numbers; empty where nothing is
// found. The parameter is the one that has to go back least of the way to where it stood before the step
// (Work.ParmsSave) for that point to have a value again; before the first step, of the way to nothing: a
// factor of one, a mass, an offset or a virial coefficient of zero. Values in the units of display; points
// count over the whole fit where there is no radius. Takes a pass or two; Work is as before.
std::string FaultText();

// The sentence of a fault of the model at the present parameters, and FaultText as its second paragraph,
// where the model is evaluated for itself and no fit runs.
std::string ModelFaultText();

} // namespace Quillon

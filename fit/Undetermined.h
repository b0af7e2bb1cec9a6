#pragma once
// How well the data determine the fitted parameters: the error of each, and by name and in words what they do
// not determine, the combination of parameters along which the sum of squares hardly changes.
//
// That is the eigenvector of the normal matrix with the smallest eigenvalue (the longest axis of the error
// ellipsoid; P. E. Gill, W. Murray, M. H. Wright, Practical Optimization, 1981, section 8.2.2); its elements
// above a third of the largest are named.

#include "fit/equations/NormalEquations.h"

#include <string>
#include <vector>

namespace Quillon {

// "The data do not determine Ln K(1>M) together with Ln c(A,mon), set 3. Hold one of them.", of one parameter
// "The data do not determine Ln K(1>M). Hold it.", and where the fitted values do not hang on them at all
// "No point depends on Ln K(1>M). Hold it." Empty where there is nothing to name.
std::string UndeterminedText(const NormalEquations& equations);

// The same sentence of a combination of free positions, by its elements.
std::string CombinationText(const PerFree<double>& elements);

// Before a fit, at the present Parms: the free positions that move no point, in rising order; with such a one
// the fit is singular. Empty when every fitted parameter moves some point, and where the function has no
// value. Costs a few points, all of them only where there is something to name.
std::vector<FreePos> PlacesWithoutEffect();

// "No point depends on Ln c(B,mon), set 3. Hold it.", for one such position or more.
std::string WithoutEffectText(const std::vector<FreePos>& places);

// True when the inverse at the solution stands for all free positions; without it there are no errors.
bool HasInverse();

// True when a finished fit says nothing of the parameter at a free position: it has no error (a zero on the
// diagonal of the inverse, or no inverse at all), or one larger than the value, which of a logarithm is an
// error above 1. A zero offset has no size that it could be compared with.
bool HasNoError(FreePos place);
bool IsUndetermined(FreePos place);

// True when a slot is fitted and the fit that stands gives it an error: there is an inverse, and it says
// something of the parameter.
bool HasError(SlotNo slot);

// The standard error of free position a in internal scale: sqrt(|NormMatrix(a,a)|) * RmsResidual.
double StandardError(FreePos freePosition);

// The error of free position a in user units: the wider of the two sides, since most parameters are
// logarithms.
float DisplayedError(FreePos freePosition);

// The parameters that stand at a bound and press against it, in words: "MW A presses against its upper
// bound." Empty without any.
std::string PressingText();

} // namespace Quillon

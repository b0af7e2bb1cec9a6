#pragma once
// Another model for the analysis that stands, and where its fit starts.

#include "studies/methods/ModelVariant.h"
#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

// Makes Work, in which the user's analysis stands, that of another model: masses and stoichiometries, zero
// offsets and the constants that both have keep their values and are held where they are held; what the
// other model alone has is fitted or held as the model says. Nothing of a former fit is left. Work itself for
// the model that it has.
//
// Gives what has to be known of it, "" for most: that the mass of B stands at the value for one that nobody
// has set. A RuntimeError where the coefficients make no such model.
std::string TakeUpVariant(const ModelVariant& variant);

// The fitted parameters of Work as the fit of a model that is contained in it has them. Constants that it
// does not have start where the species they stand for just show in the signal, cooperativity at 1, a second
// virial coefficient at 0.
void StartFromFit(const Workspace& contained);

// The other start: constants as they stand, concentrations read off the data; why they were not, or "".
std::string StartFromGuesses();

} // namespace Quillon

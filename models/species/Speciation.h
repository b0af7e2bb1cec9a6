#pragma once
// How a sample of the fitted model is made up at any total concentration: the species that mass action gives
// for the monomers that were loaded.
//
// At free monomers a and b each species is c_k = f_k a^p_k b^q_k, with the model's constants in f_k. The free
// monomers of a loading (T_A, T_B) fulfil
//
//     sum p_k c_k = T_A,   sum q_k c_k = T_B
//
// (C. Tanford, Physical Chemistry of Macromolecules, Wiley 1961, chapter 8). In ln a and ln b both sums are
// the gradient of a convex function, so that there is one solution. Newton's rule in the logarithms of both
// sums finds it, b for each a within the search for a. The virial coefficient of a non-ideal fit is left out.
//
// Totals of a model with two kinds of monomers are molar, the others are in the units of display, where
// signals and weights of a species are those of its monomers.

#include "models/species/SpeciesAtPoint.h"
#include "workspace/records/Counts.h"

#include <vector>

namespace Quillon {

// Monomers in all species together, of the two components of a model. B is what its second component holds:
// B, or the inactive monomer; 0 in a model with one.
struct LoadedMonomers {
    double A = 0.0, B = 0.0;
    double Sum() const { return A + B; }
};

// The unit of totals for the model in force.
SpeciesUnit SpeciationUnit();

// What the mean of a set's true points holds, as the fit has it: as near as the data come to what was loaded.
LoadedMonomers MeanMonomers(SetNo set);

// The part of all monomers that each species has at a loading above 0, in order of SpeciesOfModel; they add
// up to 1.
std::vector<double> Populations(const LoadedMonomers& loaded);

// The populations along a dilution: totals from a hundredth of the lowest mean of the sets to a hundred times
// the highest one, evenly in their logarithm, with the components in the proportion that the sets have
// together.
struct SpeciationCurve {
    double ShareOfB = 0.0;                  // of the monomers
    std::vector<double> Totals;             // rising
    std::vector<std::vector<double>> Parts; // by species, then by total
};
SpeciationCurve ComputeSpeciation();

} // namespace Quillon

#pragma once
// The species of the model against the fit's x: their concentrations with the total, or each one's part.
//
// Concentrations are in the units in force, signals without the zero offset. In molar units the total counts
// monomers, sum of n_i c_i; parts are those of the plain sum of what is shown and add up to 1. In the graph
// of all sets the colour tells the species and the dash the set, and the legend names each of them once.

#include "graphs/kinds/AllSets.h"

namespace Quillon {

enum class SpeciesGraph { Concentration, Fraction };

// Builds the graph of one set, or of AllSets, without showing its window; false when the chart refused
// it. mg/mL for a model with two kinds of monomers, and values beyond singles, are a RuntimeError.
bool MakeSpeciesGraph(SpeciesGraph kind, SetNo set);

// The commands: build and show. The set-wise ones ask for the set by PickSet.
void GraphSpecies();
void GraphSpeciesFraction();
void GraphSpeciesSet();
void GraphSpeciesFractionSet();

} // namespace Quillon

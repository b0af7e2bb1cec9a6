#pragma once
// The populations of the species against the total concentration, over a logarithmic axis
// (models/species/Speciation.h).

namespace Quillon {

// Builds the graph without showing its window; false when the chart refused it. A model without species, or
// sets without a concentration, are a RuntimeError.
bool MakeSpeciationGraph();

// The command: build and show.
void GraphSpeciation();

} // namespace Quillon

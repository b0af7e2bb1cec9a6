#pragma once
// How much of each species the model puts into a cell between two radii, on average.
//
// The mean is the plain one over the radius,
//
//     (1 / (Ro - Ri)) * integral of c(r^2/2 - r0^2/2) dr from Ri to Ro
//
// without the weight by r that the sector shape of a cell would ask for. It is taken over round(w / 0.001)
// equal steps of the width w, each by Simpson's rule: the plain mean of the steps' ends would count both ends
// of the cell in full, which is some parts in a thousand for a steep species. Outside of the fitting range
// the model is extrapolated.

#include "workspace/records/Counts.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// A row of the table of integrated concentrations: a total or a species. A unit that the model has no
// coefficient for is empty.
struct IntegratedRow {
    std::string Label;
    std::optional<double> Signal; // in the set's own signal units
    std::optional<double> Weight; // mg/mL
    std::optional<double> Molar;
    std::optional<double> Share; // of a species: its part of the total, 0 to 1, in the unit asked for
};

struct IntegratedSet {
    std::vector<IntegratedRow> Rows; // the totals, then the species in order of SpeciesOfModel
    // All monomers A of a model without B, whatever they are part of, in molar; empty in other models.
    std::optional<double> MonomerMolar;
};

enum class SpeciesUnit; // models/species/SpeciesAtPoint.h

// Makes sure that there is something to be integrated between two radii in cm; the RuntimeErrors of a width
// below.
void CheckCellWidth(float inner, float outer);

// The mean concentrations of a set between two radii in cm, at the current Work.Parms; shares are taken in
// unit. A RuntimeError in words: a width that rounds to no step ("Division by zero") or is that of no cell, a
// model that is beyond the range of numbers between the radii, or that has no non-ideal solution there.
IntegratedSet IntegrateCell(SetNo set, float inner, float outer, SpeciesUnit unit);

} // namespace Quillon

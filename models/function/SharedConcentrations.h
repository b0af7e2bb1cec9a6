#pragma once
// Sets that see the same molecules share their concentrations: a second wavelength of one cell and speed.
//
// A set that follows another one (its leader) has no ln c of its own. Since both see the same solution, their
// concentrations agree at every radius; with X = r0^2/2 at the reference radius of a set's range,
//
//     ln c(follower) = ln c(leader) + sigma(follower) (X(follower) - X(leader))
//
// for A with sigma_A and for B with sigma_B of the follower. Concentrations are in signal units of the first
// set, in which equal concentrations are equal numbers at any wavelength (extinction ratios). Where the slot
// of ln c(B) holds an association constant, only A is shared.

#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

// The set whose concentrations this one shares; NoSet for a set that has its own. A link to a row outside the
// fit, to the set itself or to a set that follows another one counts for none.
SetNo LeaderOf(SetNo set);

// The slot that stands for ln c(A), for ln c(B) of a set: its own or its leader's.
SlotNo LeadSlotA(SetNo set);
SlotNo LeadSlotB(SetNo set);

// r0^2/2 at the reference radius of a row's fitting range, cm^2: the mean of the two ends in r^2/2.
double ReferenceX(RowNo row);

// Writes the concentrations of followers into Work.Parms, to be shown and saved; the fitted function does not
// read them there. A RuntimeError where the model's coefficients make no frame.
void ApplyConcentrationLinks();

// One line for each follower: "Ln c of set 2 was held = to that of set 1, at the same radius".
std::vector<std::string> ConcentrationLinkLines();

// A tie between sets of the fit.
struct ConcentrationTie {
    SetNo Follower, Leader;
    bool operator==(const ConcentrationTie&) const = default;
};

// The ties that the scans themselves suggest: the same cell and channel, speeds within 1%, wavelengths 5 nm
// or more apart. The lowest set of such a group leads. The cell is the digit that ends the name of the scan,
// in the names of newer instruments ("run7-s0001-c2-n0003.ra1") their field c. The folder is the same, but
// that it may name the wavelength ("run7/280nm").
std::vector<ConcentrationTie> ProposedTies();

} // namespace Quillon

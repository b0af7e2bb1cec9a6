#pragma once
// Apparent masses read off the data: the slope of ln of the signal over r^2/2, set by set. For one ideal
// species it is sigma; for several it lies between that of the lightest and that of the heaviest.
//
//     d ln c / d(r^2/2) = sigma
//
// (T. Svedberg and K. O. Pedersen, The Ultracentrifuge, Clarendon Press 1940, part I.)

#include "workspace/records/Counts.h"

#include <optional>
#include <vector>

namespace Quillon {

// The slope of a set, brought to the speed and temperature of the first set: what slot 0 holds. Signals have
// the present zero offset of the set taken off; those that are not above 0 then are passed over, and each
// weighs by its square, since the noise of a logarithm is that of the signal over the signal. Nothing with
// fewer than five signals, and where the signal does not rise outward.
std::optional<double> ApparentSigma(SetNo set);

// The sets that have one, and what to begin a fit with: for a model of one species their median, else the
// lowest, since a species by itself is never heavier than the mixtures with its own complexes. Nothing
// without any.
struct SigmaOfSet {
    SetNo Set;
    double Sigma = 0.0;
};
struct MassEstimate {
    std::vector<SigmaOfSet> Sets;
    double Sigma = 0.0; // 1/cm^2, of the first set
};
std::optional<MassEstimate> EstimateMass();

} // namespace Quillon

#pragma once
// Each set's concentrations by themselves, while what all sets share stays.
//
// Given the constants, a set is a small problem of its own, and one with two species may have two minima
// (more of A than of B, or the other way round): a fit of many sets is caught when one of them is. So several
// proportions are tried for each set, each by a search over the points and the parameters of that set alone,
// which costs a small share of a pass over all. Sets that share their concentrations, or a fitted zero
// offset, are tried together.

#include "workspace/records/Counts.h"

namespace Quillon {

// Which sets are tried: all, or those alone that stand a little above the noise (fit/Misfit.h). A set that is
// caught does not always stand out, and hardly ever goes unnoticed among those.
enum class TriedSets { All, Doubtful };

// from with the best concentrations and zero offsets that are found for each set. Models of one species have
// one proportion. from itself where the sum of squares falls by less than a thousandth. Leaves Work as it
// was, but for Work.AbortFit after a cancel.
PerSlot<float> BestOfEachSet(const PerSlot<float>& from, TriedSets sets = TriedSets::All);

} // namespace Quillon

#pragma once
// What the two kinds of constraints do to a fit: concentration constraints answer for their pseudo-points,
// zero offset links copy shared offsets.
//
// A concentration constraint is one more point in the sum of squares: its residual is Y (c - mean) / t, with
// c the loading, t the tolerance as a fraction, Y the signal at the outer end of the range and mean the
// model's mean signal over the true points of the set. The means are summed up while the true points pass
// by, once for each stepped parameter, so that the derivative of a pseudo-point costs no pass of its own.

#include "workspace/records/Counts.h"

namespace Quillon {

// The fitted value of a pseudo-point: the mean signal that the model gave over the set's true points,
// scaled to the point's weight, for the entry of FitFrame's DerivParm. Clears that entry's sums on the way.
double ConstraintValue(SetNo set, long point);

// Starts the sums of a set: those of a set without constraints, which nobody has asked for, are forgotten.
void ClearConstraintSums();

// Forgets the sums and the last pseudo-point; run at the start of each pass over all points.
void ResetConstraintSums();

// The running sums of the signal of all A units and all B units at the parameters stepped by slot
// derivParm (NoSlot: unstepped).
double& ConstraintSumA(SlotNo derivParm);
double& ConstraintSumB(SlotNo derivParm);

// Copies each tied zero offset from the set that it follows. Does nothing without offset constraints, nor in
// a model whose sets hold constants in the slots of their offsets.
void ApplyOffsetLinks();

} // namespace Quillon

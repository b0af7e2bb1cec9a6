#pragma once
// What an association constant means, in words for reports: a row for each model.

#include "workspace/records/Counts.h"

namespace Quillon {

// What the constant of a global slot means in a model: which reaction, and whether it counts sites; "" where
// the model has no constant there. A set's own constant means what the common one does (SlotRule::Common).
const char* ConstantConvention(int model, SlotNo slot);

} // namespace Quillon

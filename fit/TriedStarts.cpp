#include "fit/TriedStarts.h"

#include "fit/equations/Bounds.h"
#include "models/Guesses.h"
#include "models/function/Constraints.h"
#include "models/function/SharedConcentrations.h"
#include "workspace/records/Roads.h"

#include <cmath>

namespace Quillon {

void GuessAmounts(double proportion) {
    const std::int16_t model = Work.Model;
    Work.Model = 7; // whose guesses are half of the signal each
    InitialGuesses(false);
    Work.Model = model;
    const double ratio = proportion * static_cast<double>(Work.ExtB / Work.ExtA);
    for (const SetNo set : EachSet())
        Work.Parms[SlotB(set)] += static_cast<float>(std::log(ratio));
}

void KeepHeld(const PerSlot<float>& start) {
    for (const SlotNo slot : EachSlot())
        if (!IsFitted(slot)) Work.Parms[slot] = start[slot];
    EnforceBounds();
    ApplyOffsetLinks();
    ApplyConcentrationLinks();
}

} // namespace Quillon

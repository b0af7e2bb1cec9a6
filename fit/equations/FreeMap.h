#pragma once
// Which parameters are fitted: from a choice for each parameter to FreeMap, FreeIndex and NumFree.

#include "workspace/records/Counts.h"

#include <cstdint>
#include <vector>

namespace Quillon {

// The state of a parameter's mark "Fit this parameter?".
inline constexpr std::int16_t FitCheckNo = 0;
inline constexpr std::int16_t FitCheckYes = 1;
inline constexpr std::int16_t FitCheckGrey = 2; // tied to another one; not to be chosen

struct FitChoice {
    SlotNo Slot;
    std::int16_t Check = FitCheckNo;
};

// A choice for each slot below NumParms that the model uses, in the order of the slots, as FreeMap has it.
std::vector<FitChoice> FitChoices();

// Numbers the fitted parameters in the order of the choices and re-creates NormMatrix, NormVector and
// Increment for them. Choices that are all grey change nothing. False when none is to be fitted; everything
// is then as before, and the caller has something to tell.
bool AssignFreePositions(const std::vector<FitChoice>& choices);

// What is told then.
inline constexpr const char* NothingToFitText =
    "There is nothing to do!  You must fit at least one parameter";

} // namespace Quillon

#pragma once
// The lines of [parameters] against the slots of the model: before the guesses, and in place of the dialog.

#include "batch/job/JobFile.h"

#include <vector>

namespace Quillon {

// A line of the job with its slot.
struct ListedParm {
    const JobParameter* Line{};
    SlotNo Slot;
};

// Finds the slot of each line by number or by the name shown (ParmName, with or without the unit behind it;
// exactly as shown or else in any case) among those that the model uses. An unknown name, a slot that the
// model does not use, a tied zero offset and a slot that stands twice are errors of the job.
std::vector<ListedParm> FindListedParms(const Job& job);

// A job that leaves nothing to fit is an error, known before anything is asked or computed.
void CheckAnythingIsFitted(const Job& job, const std::vector<ListedParm>& listed);

// Takes the listed masses, stoichiometries and constants over: the guesses depend on them. With separate
// constants the global slot, which the guesses read, takes the first one listed for a set.
void TakeListedConstants(const Job& job, const std::vector<ListedParm>& listed);

// Takes all listed values over, and nothing else.
void TakeListedValues(const Job& job, const std::vector<ListedParm>& listed);

// What the guesses dialog is for: takes all listed values and bounds over, asks about a value outside its
// bounds, and sets what is fitted.
void TakeListedParms(const Job& job, const std::vector<ListedParm>& listed);

} // namespace Quillon

#pragma once
// What is to be said of single parameters and single data sets once a fit has ended: a few words beside a
// number that should not be read without them. Windows, reports, tables and results files all say the same.

#include "workspace/records/Counts.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// How well one set is fitted: its readings alone, without the weight that it has in the fit. Statistics are
// unset where no fitted values stand or the set has no readings.
struct SetQuality {
    long Points = 0;             // readings
    std::optional<double> Rms;   // root mean square of the residuals, signal units
    std::optional<double> Mean;  // of the residuals data - fit, signal units
    std::optional<double> RunsZ; // of the runs test over the set alone; unset of fewer than two readings
};
SetQuality QualityOfSet(SetNo set);

// Of all sets at once, for those who go through them: a note on one set compares it with all others.
PerSet<SetQuality> QualityOfSets();

// What is to be said of a slot beside its value and error, in a few words: not determined, at a bound, an
// error larger than the value, a limit that was not found, and of masses, stoichiometries and constants a
// correlation above Work.VeryHighCorrelation with what they go together with most ("correlated 0.999 with Ln
// K(1>N)"). Several are separated
// by "; ". Empty for most, for slots that are not fitted, and before a fit has ended with results.
std::string ParameterNote(SlotNo slot);

// "fitted", "held" or "tied".
const char* SlotState(SlotNo slot);

// What is to be said of a set: a mean residual that its scatter does not explain, with what would take it up
// ("mean residual +0.004: fit its zero offset?"); residuals whose signs follow each other as chance does
// not have them do; an rms of twice that of the other sets. Several are separated by "; ". Empty for
// most, and where no fitted values stand.
std::string SetNote(SetNo set);
std::string SetNote(SetNo set, const PerSet<SetQuality>& qualities); // with those of QualityOfSets

// All of them, parameters first: "MW A mon: error larger than the value", "Set 3: mean residual +0.004: ...".
std::vector<std::string> NoteLines();

} // namespace Quillon

#include "fit/GuessesDialog.h"

#include "fit/GetGuess.h"

#include "platform/Platform.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {
bool ValuesOnly = false;
} // namespace

bool GuessesValuesOnly() {
    return ValuesOnly;
}

void GuessesDialog(bool valuesOnly) {
    Work.ParmsSave.Recreate(Work.NumParms - 1);
    for (const SlotNo slot : EachSlot())
        Work.ParmsSave[slot] = Work.Parms[slot];
    const float keptLimit = Work.ConvergenceLimit;

    ValuesOnly = valuesOnly;
    LoadGetGuess();
    Host.ShowModal(GetGuessName);
    ValuesOnly = false;

    if (!Work.AbortFit) return;
    for (const SlotNo slot : EachSlot())
        Work.Parms[slot] = Work.ParmsSave[slot];
    Work.ConvergenceLimit = keptLimit;
}

} // namespace Quillon

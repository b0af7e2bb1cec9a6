#include "fit/GuessesDialog.h"

#include "fit/GetGuess.h"

#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {
bool ValuesOnly = false;
} // namespace

bool GuessesValuesOnly() {
    return ValuesOnly;
}

void GuessesDialog(bool valuesOnly) {
    Work.ParmsSave.Recreate(Work.NumParms - 1);
    for (long slot = 0; slot < Work.NumParms; ++slot)
        Work.ParmsSave[slot] = Work.Parms[slot];
    const float keptLimit = Work.ConvergenceLimit;

    ValuesOnly = valuesOnly;
    LoadGetGuess();
    Host.ShowModal(GetGuessName);
    ValuesOnly = false;

    if (!Work.AbortFit) return;
    for (long slot = 0; slot < Work.NumParms; ++slot)
        Work.Parms[slot] = Work.ParmsSave[slot];
    Work.ConvergenceLimit = keptLimit;
}

} // namespace Quillon

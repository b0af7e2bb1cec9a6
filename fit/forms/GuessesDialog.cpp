#include "fit/forms/GuessesDialog.h"

#include "fit/forms/GetGuess.h"
#include "models/forms/NumberBox.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {
bool ValuesOnly = false;
} // namespace

bool GuessesValuesOnly() {
    return ValuesOnly;
}

bool TakeFitChoices(const std::vector<FitChoice>& choices) {
    if (AssignFreePositions(choices)) return true;
    Host.Beep();
    Tell(NothingToFitText, Work.ProgramName, BoxIcon::Question);
    return false;
}

DialogAnswer GuessesDialog(bool valuesOnly) {
    Work.ParmsSave.Recreate(Work.NumParms - 1);
    for (const SlotNo slot : EachSlot())
        Work.ParmsSave[slot] = Work.Parms[slot];
    const float keptLimit = Work.ConvergenceLimit;

    ValuesOnly = valuesOnly;
    LoadGetGuess();
    Host.ShowModal(GetGuessName);
    ValuesOnly = false;

    ForgetTakenBack();
    if (GetGuess.Answer == DialogAnswer::Ok) return DialogAnswer::Ok;
    for (const SlotNo slot : EachSlot())
        Work.Parms[slot] = Work.ParmsSave[slot];
    Work.ConvergenceLimit = keptLimit;
    return DialogAnswer::Cancel;
}

} // namespace Quillon

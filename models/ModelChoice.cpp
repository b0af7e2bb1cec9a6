#include "models/ModelChoice.h"

#include "models/Catalogue.h"
#include "models/ParmScale.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

constexpr const char* BoxTitle = "Select Model";

// Models 4, 5 and 9 with separate constants give the zero offsets up; links between offsets have to go, or
// the separate constants.
bool SettleOffsetLinks() {
    if (!(Work.ConstraintFlags & OffsetBit)) return true;
    Host.Beep();
    const bool removeLinks =
        AskYesNo("You cannot have baseline constraints with a model that doesn't use zero offsets!  Do you "
                 "want me to remove the baseline constraints (YES) or return to a common association "
                 "constant for all data sets (NO)?",
                 Work.ProgramName);
    if (removeLinks) {
        Work.ConstraintFlags = static_cast<std::int16_t>(Work.ConstraintFlags & ~OffsetBit);
        for (auto& link : Work.OffsetLink)
            link = 0; // the next preparation of the fit data would take them up again
    } else {
        Work.SeparateK = FlagFalse;
    }
    return true;
}

} // namespace

bool CheckModelChoice() {
    if (Work.NonIdeal && Work.Model >= 6) {
        Work.NonIdeal = FlagFalse;
        Host.Beep();
        Tell("Sorry, non-ideality is not allowed for models involving two types of monomers", BoxTitle,
             BoxIcon::Warning);
        return false;
    }
    if (!Work.SeparateK) return true;
    if (!ModelAllowsSeparateK(Work.Model)) {
        Work.SeparateK = FlagFalse;
        Host.Beep();
        Tell("Separate binding constants are not allowed for your model choice", BoxTitle, BoxIcon::Warning);
        return false;
    }
    if (Work.Model == 4 || Work.Model == 5 || Work.Model == 9) return SettleOffsetLinks();
    return true;
}

void AnnounceHeteroModel(std::int16_t oldModel) {
    if (Work.Model < 8 || Work.Model == oldModel) return;
    if (Work.ConcUnits == 1 || Work.ConcUnits == 4) {
        Tell("Please note that for this model you CANNOT use mg/mL units", BoxTitle, BoxIcon::Information);
        Work.ConcUnits = Work.ConcUnits == 1 ? 0 : 3;
        RefreshUnits();
        return;
    }
    Tell("Please note that for this model you MUST enter the correct molar extinction or refractivity "
         "coefficients for species A and B on the Units form.  Once this is done, you may use Molar or "
         "Absorbance/Fringe units (but Molar are recommended since in Absorbance units equal intrinsic "
         "binding constants do not imply equal binding energies.",
         BoxTitle, BoxIcon::Information);
}

void AdoptModel(std::int16_t oldModel, std::int16_t oldSeparateK, std::int16_t oldNumParms, bool chosen) {
    FillModelNames();
    if (chosen) {
        for (long i = 0; i < oldNumParms; ++i)
            Work.FreeMap[i] = 0;
        if (!Work.SeparateK)
            for (long s = 1; s <= Work.MaxSets; ++s)
                Work.FreeMap[SlotOffset(s)] = SlotHeld;
    }
    Work.NumParms = ToInt16(3 * Work.NumSets + 8);
    Work.FitTitle = ModelFitTitle();
    if (Work.SeparateK && !oldSeparateK)
        for (long s = 1; s <= Work.MaxSets; ++s) {
            Work.Parms[SlotB(s)] = Work.Parms[2];
            if (Work.Model >= 4) Work.Parms[SlotOffset(s)] = Work.Parms[4];
        }
    if (Work.Model != oldModel || Work.SeparateK != oldSeparateK) CarryBoundsToModel(oldModel, oldSeparateK);
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    if (chosen) ApplyModelFlags();
}

void SelectModel(bool showDialog) {
    const std::int16_t oldModel = Work.Model;
    const std::int16_t oldSeparateK = Work.SeparateK;
    const std::int16_t oldNonIdeal = Work.NonIdeal;
    const std::int16_t oldNumParms = Work.NumParms;
    FillModelNames();
    if (showDialog) {
        Work.ModelChosen = FlagFalse;
        do {
            Host.ShowModal("ModelForm");
            if (Work.AbortFit) {
                Work.Model = oldModel;
                Work.SeparateK = oldSeparateK;
                Work.NonIdeal = oldNonIdeal;
                Work.ModelChosen = FlagTrue;
                return;
            }
        } while (!CheckModelChoice());
        AnnounceHeteroModel(oldModel);
    }
    AdoptModel(oldModel, oldSeparateK, oldNumParms, showDialog);
    if (showDialog) Work.ModelChosen = FlagTrue;
}

} // namespace Quillon

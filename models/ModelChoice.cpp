#include "models/ModelChoice.h"

#include "models/ModelFlags.h"
#include "models/forms/ModelForm.h"
#include "models/table/Catalogue.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/Platform.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

constexpr const char* BoxTitle = "Select Model";

// An option that the model does not have goes off, which is told.
bool Refuse(std::int16_t& option, const char* message) {
    option = FlagFalse;
    Host.Beep();
    Tell(message, BoxTitle, BoxIcon::Warning);
    return false;
}

// The links of the sets go too, since the next preparation of the fit data would take them up again. Rows
// outside the fit, which the question was not about, keep theirs.
void RemoveOffsetLinks() {
    Work.ConstraintFlags = static_cast<std::int16_t>(Work.ConstraintFlags & ~OffsetBit);
    for (const SetNo set : EachSet())
        Work.OffsetLink[RowOf(set)] = 0;
}

// Slots of the sets that have become constants start from the common ones.
void SeedSeparateConstants() {
    for (const SlotNo slot : AllSlots()) {
        const SlotRule& rule = RuleOfSlot(slot);
        const bool ofSet = PartOfSlot(slot) != SlotPart::Global;
        if (ofSet && rule.Holds == Quantity::Constant) Work.Parms[slot] = Work.Parms[rule.Common];
    }
}

// All slots are fitted, but for zero offsets, which are fitted on demand.
void FreeAllSlots() {
    for (std::int16_t& flag : Work.FreeMap)
        flag = 0;
    if (Work.SeparateK) return;
    for (SetNo set(1); set <= SetNo(Work.MaxSets); ++set)
        Work.FreeMap[SlotOffset(set)] = SlotHeld;
}

// Models 4, 5, 8 and 9 with separate constants give the zero offsets up; a link would tie the constants of
// two sets instead. The links have to go, or the separate constants.
void SettleOffsetLinks() {
    if (!(Work.ConstraintFlags & OffsetBit)) return;
    Host.Beep();
    const bool removeLinks =
        AskYesNo("You cannot have baseline constraints with a model that doesn't use zero offsets!  Do you "
                 "want me to remove the baseline constraints (YES) or return to a common association "
                 "constant for all data sets (NO)?",
                 Work.ProgramName);
    if (removeLinks)
        RemoveOffsetLinks();
    else
        Work.SeparateK = FlagFalse;
}

} // namespace

bool CheckModelChoice() {
    if (Work.NonIdeal && !ModelAllowsNonIdeal(Work.Model))
        return Refuse(Work.NonIdeal,
                      "Sorry, non-ideality is not allowed for models involving two types of monomers");
    if (!Work.SeparateK) return true;
    if (!ModelAllowsSeparateK(Work.Model))
        return Refuse(Work.SeparateK, "Separate binding constants are not allowed for your model choice");
    if (OffsetSlotHoldsConstant(Work.Model, true)) SettleOffsetLinks();
    return true;
}

void AnnounceHeteroModel(std::int16_t oldModel) {
    if (!TraitsOfModel().Hetero || Work.Model == oldModel) return;
    if (Work.ConcUnits == ConcUnit::Weight || Work.ConcUnits == ConcUnit::FringeWeight) {
        Tell("Please note that for this model you CANNOT use mg/mL units", BoxTitle, BoxIcon::Information);
        BuildParmScale(); // of the new model, in the units in which its bounds stand
        Work.ConcUnits = Work.ConcUnits == ConcUnit::Weight ? ConcUnit::Absorbance : ConcUnit::Fringes;
        RefreshUnits();
        return;
    }
    Tell("Please note that for this model you MUST enter the correct molar extinction or refractivity "
         "coefficients for species A and B on the Units form.  Once this is done, you may use Molar or "
         "Absorbance/Fringe units (but Molar are recommended since in Absorbance units equal intrinsic "
         "binding constants do not imply equal binding energies.",
         BoxTitle, BoxIcon::Information);
}

void AdoptModel(std::int16_t oldSeparateK, bool chosen) {
    FillModelNames();
    if (chosen) FreeAllSlots();
    Work.NumParms = ToInt16(NumSlots(Work.NumSets));
    Work.FitTitle = ModelFitTitle();
    if (Work.SeparateK && !oldSeparateK) SeedSeparateConstants();
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    if (chosen) ApplyModelFlags();
}

namespace {

// Until a model with its options holds, or the user cancels.
DialogAnswer AskModel() {
    do {
        LoadModelForm();
        Host.ShowModal(ModelFormName);
        if (ModelForm.Answer == DialogAnswer::Cancel) return DialogAnswer::Cancel;
    } while (!CheckModelChoice());
    return DialogAnswer::Ok;
}

void TakeChosenModel(const Workspace& before) {
    if (Work.Model != before.Model || Work.SeparateK != before.SeparateK)
        CarryBoundsToModel(before.Model, before.SeparateK);
    AnnounceHeteroModel(before.Model);
    AdoptModel(before.SeparateK, true);
}

} // namespace

DialogAnswer SelectModel(bool showDialog) {
    FillModelNames();
    if (!showDialog) {
        AdoptModel(Work.SeparateK, false);
        return DialogAnswer::Ok;
    }
    const Workspace before = Work;
    Work.ModelChosen = FlagFalse;
    if (AskModel() == DialogAnswer::Cancel) {
        Work = before;
        return DialogAnswer::Cancel;
    }
    try {
        TakeChosenModel(before);
    } catch (const RuntimeError&) {
        Work = before;
        throw;
    }
    Work.ModelChosen = FlagTrue;
    return DialogAnswer::Ok;
}

} // namespace Quillon

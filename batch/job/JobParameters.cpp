#include "batch/job/JobParameters.h"

#include "batch/job/JobText.h"
#include "fit/equations/FreeMap.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/GuessesDialog.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/Letters.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <charconv>

namespace Quillon {

namespace {

template <class Test> SlotNo FindSlot(Test&& fits) {
    for (const SlotNo slot : EachSlot())
        if (IsInUse(slot) && (fits(Work.ParmName[slot]) || fits(ParmCaption(slot)))) return slot;
    return NoSlot;
}

// Some names of a model differ in nothing but the case of a letter, so that the exact one comes first.
SlotNo SlotByName(const std::string& name) {
    const SlotNo exact = FindSlot([&](const std::string& shown) { return shown == name; });
    if (exact != NoSlot) return exact;
    const std::string small = SmallLetters(name);
    return FindSlot([&](const std::string& shown) { return SmallLetters(shown) == small; });
}

// The same for a name in other units of display, or with a mass named as a model with more or fewer species
// names it.
SlotNo SlotInOtherUnits(const std::string& name) {
    const Workspace before = Work;
    SlotNo slot = NoSlot;
    for (std::int16_t mass = MassUnit::Sigma; slot == NoSlot && mass <= MassUnit::Molar; ++mass)
        for (std::int16_t conc = ConcUnit::Absorbance; slot == NoSlot && conc <= ConcUnit::FringeMole;
             ++conc) {
            Work.MassUnits = mass;
            Work.ConcUnits = conc;
            BuildParmNames();
            slot = SlotByName(name);
            const std::size_t mon = name.rfind(" mon");
            if (slot == NoSlot)
                slot = SlotByName(mon == std::string::npos ? name + " mon" : name.substr(0, mon));
        }
    Work = before;
    return slot;
}

// The names in use, those of the sets once for all of them: "Sigma A mon, N, Ln K(1>N), Ln c(A,mon),
// set 1..3".
std::string NamesInUse() {
    std::string names;
    for (SlotNo slot(0); slot <= SlotOffset(SetNo(1)); ++slot) {
        if (!IsInUse(slot)) continue;
        names += (names.empty() ? "" : "; ") + Work.ParmName[slot];
        if (SetOfSlot(slot) > NoSet && Work.NumSets > 1) names += " to " + std::to_string(Work.NumSets);
    }
    return names;
}

std::string NoSuchName(const std::string& name) {
    const SlotNo slot = SlotInOtherUnits(name);
    return "this model has no parameter of that name" +
           (slot == NoSlot ? "" : "; in the units of the job it is called " + Work.ParmName[slot]) +
           "; the names are: " + NamesInUse();
}

SlotNo SlotOfLine(const Job& job, const JobParameter& line) {
    int number = 0;
    const char* const end = line.Name.data() + line.Name.size();
    const auto [stop, failure] = std::from_chars(line.Name.data(), end, number);
    if (stop != end) {
        const SlotNo slot = SlotByName(line.Name);
        if (slot == NoSlot) FailParameter(job, line, NoSuchName(line.Name));
        return slot;
    }
    if (failure != std::errc{} || number < 0 || number >= Work.NumParms)
        FailParameter(job, line, "the slots of this fit are 0 to " + std::to_string(Work.NumParms - 1));
    if (!IsInUse(SlotNo(number))) FailParameter(job, line, "this model does not use the slot");
    return SlotNo(number);
}

// Masses, stoichiometries, constants and the virial coefficient, common or of a set.
bool IsConstant(SlotNo slot) {
    return PartOfSlot(slot) == SlotPart::Global || RuleOfSlot(slot).Holds == Quantity::Constant;
}

bool IsStoichiometry(SlotNo slot) {
    return RuleOfSlot(slot).Holds == Quantity::Stoichiometry;
}

// Values that the program would take for "not set yet", or that no logarithm can be taken of.
void CheckValue(const Job& job, const JobParameter& line, SlotNo slot) {
    if (!line.Value) return;
    if (IsStoichiometry(slot) && !(*line.Value > 0.0F)) FailParameter(job, line, "has to be above 0");
    if (RuleOfSlot(slot).Holds == Quantity::Mass && *line.Value == 0.0F)
        FailParameter(job, line, "cannot be 0");
}

// Stoichiometries first: the scale of the constants hangs on them.
template <class Wanted>
void TakeValues(const Job& job, const std::vector<ListedParm>& listed, Wanted&& wanted) {
    for (const bool stoichiometries : {true, false}) {
        for (const auto& [line, slot] : listed) {
            if (!line->Value || !wanted(slot) || IsStoichiometry(slot) != stoichiometries) continue;
            try {
                Work.Parms[slot] = line->Internal ? *line->Value : ToInternal(slot, *line->Value);
            } catch (const RuntimeError& error) {
                FailParameter(job, *line, error.Text);
            }
        }
        BuildParmScale();
    }
}

void SeedCommonConstants(const std::vector<ListedParm>& listed) {
    for (auto entry = listed.rbegin(); entry != listed.rend(); ++entry)
        if (const SlotNo common = RuleOfSlot(entry->Slot).Common; entry->Line->Value && common != NoSlot)
            Work.Parms[common] = Work.Parms[entry->Slot];
}

void TakeBounds(const ListedParm& listed) {
    if (listed.Line->Lower) Work.Bounds[0][listed.Slot] = *listed.Line->Lower;
    if (listed.Line->Upper) Work.Bounds[1][listed.Slot] = *listed.Line->Upper;
}

void MarkChoices(std::vector<FitChoice>& choices, const std::vector<ListedParm>& listed) {
    for (const auto& [line, slot] : listed) {
        if (line->Choice == JobParameter::Mark::ByModel) continue;
        const auto choice = std::find_if(choices.begin(), choices.end(),
                                         [s = slot](const FitChoice& c) { return c.Slot == s; });
        if (choice != choices.end())
            choice->Check = line->Choice == JobParameter::Mark::Fit ? FitCheckYes : FitCheckNo;
    }
}

} // namespace

std::vector<ListedParm> FindListedParms(const Job& job) {
    std::vector<ListedParm> listed;
    for (const JobParameter& line : job.Parameters) {
        const SlotNo slot = SlotOfLine(job, line);
        if (Work.FreeMap[slot] == SlotTied)
            FailParameter(job, line,
                          PartOfSlot(slot) == SlotPart::Offset
                              ? "this zero offset is tied to that of another set"
                              : "this concentration is tied to that of another set");
        CheckValue(job, line, slot);
        for (const ListedParm& other : listed)
            if (other.Slot == slot)
                FailParameter(job, line, "stands twice, first in line " + std::to_string(other.Line->Line));
        listed.push_back({&line, slot});
    }
    return listed;
}

void CheckAnythingIsFitted(const Job& job, const std::vector<ListedParm>& listed) {
    std::vector<FitChoice> choices = FitChoices();
    MarkChoices(choices, listed);
    const bool any = std::any_of(choices.begin(), choices.end(),
                                 [](const FitChoice& c) { return c.Check == FitCheckYes; });
    if (!any) FailJob(job, "parameters", "", "all parameters are held, at least one has to be fitted");
}

void TakeListedConstants(const Job& job, const std::vector<ListedParm>& listed) {
    TakeValues(job, listed, IsConstant);
    SeedCommonConstants(listed);
}

void TakeListedValues(const Job& job, const std::vector<ListedParm>& listed) {
    TakeValues(job, listed, [](SlotNo) { return true; });
}

void TakeListedParms(const Job& job, const std::vector<ListedParm>& listed) {
    TakeValues(job, listed, [](SlotNo) { return true; });
    for (const ListedParm& entry : listed) {
        TakeBounds(entry);
        if (entry.Line->Value && !entry.Line->Internal)
            AcceptAgainstBounds(entry.Slot, *entry.Line->Value); // the answer is Yes
    }
    std::vector<FitChoice> choices = FitChoices();
    MarkChoices(choices, listed);
    if (!TakeFitChoices(choices)) GetGuess.Answer = DialogAnswer::Cancel;
}

} // namespace Quillon

#include "models/table/ParmNames.h"

#include "input/NUMINPUT.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

struct UnitWords {
    const char *OneToN, *OneToM, *Mixed, *Concentration, *Signal;
};
constexpr UnitWords WordsByUnits[] = {
    // by ConcUnit
    {"AU^1-N", "AU^1-M", "per AU", "AU", "AU"},
    {"(mL/mg)^N-1", "(mL/mg)^M-1", "mL/mg", "mg/mL", "mg/mL"},
    {"(l/mol)^N-1", "(l/mol)^M-1", "l/mol", "mol/l", "AU"},
    {"fringes^1-N", "fringes^1-M", "per fringe", "fringes", "fringes"},
    {"(mL/mg)^N-1", "(mL/mg)^M-1", "mL/mg", "mg/mL", "fringes"},
    {"(l/mol)^N-1", "(l/mol)^M-1", "l/mol", "mol/l", "fringes"},
};

const UnitWords& WordsInForce() {
    const bool known = Work.ConcUnits >= ConcUnit::Absorbance && Work.ConcUnits <= ConcUnit::FringeMole;
    return WordsByUnits[known ? Work.ConcUnits : std::int16_t{ConcUnit::Absorbance}];
}

const char* WordOf(SlotUnit unit) {
    const UnitWords& words = WordsInForce();
    switch (unit) {
    case SlotUnit::Mass:
        return MassInKiloDalton() ? "kDa" : "";
    case SlotUnit::OneToN:
        return words.OneToN;
    case SlotUnit::OneToM:
        return words.OneToM;
    case SlotUnit::Mixed:
        return words.Mixed;
    case SlotUnit::Concentration:
        return words.Concentration;
    case SlotUnit::Signal:
        return words.Signal;
    case SlotUnit::Nothing:
        break;
    }
    return "";
}

const char* MassQuantity() {
    switch (Work.MassUnits) {
    case MassUnit::Buoyant:
        return "Mb ";
    case MassUnit::Molar:
        return "MW ";
    default:
        return "Sigma ";
    }
}

std::string NameOf(const SlotRule& rule, SlotNo slot) {
    if (rule.Holds == Quantity::Mass) return std::string(MassQuantity()) + rule.Name;
    return SetOfSlot(slot) == NoSet ? rule.Name : rule.Name + std::to_string(SetOfSlot(slot).Number);
}

const char* PictureOf(Quantity holds) {
    switch (holds) {
    case Quantity::Mass:
        return MassInKiloDalton() ? "#0.0000" : "#0.00000";
    case Quantity::Virial:
        return "0.0000E+00"; // may have any size
    case Quantity::Offset:
        return "#0.00000";
    default:
        return "#0.0000"; // logarithms and stoichiometries
    }
}

} // namespace

void BuildParmNames() {
    Work.ParmName.Recreate(Work.MaxParms - 1);
    Work.ParmTitle.Recreate(Work.MaxParms - 1);
    for (const SlotNo slot : AllSlots()) {
        const SlotRule& rule = RuleOfSlot(slot);
        Work.ParmName[slot] = NameOf(rule, slot);
        Work.ParmTitle[slot] = WordOf(rule.Unit);
    }
}

void BuildParmFormats() {
    Work.ParmFormat.Recreate(Work.MaxParms - 1, PictureOf(Quantity::Constant));
    for (const SlotNo slot : AllSlots())
        Work.ParmFormat[slot] = PictureOf(RuleOfSlot(slot).Holds);
}

std::string ParmCaption(SlotNo slot, const char* between) {
    const std::string& unit = Work.ParmTitle[slot];
    return Work.ParmName[slot] + (unit.empty() ? "" : between + ("(" + unit + ")"));
}

std::string ParmText(SlotNo slot, float displayed) {
    return FormatNumber(static_cast<double>(displayed), Work.ParmFormat[slot]);
}

std::string ParmText(SlotNo slot) {
    return ParmText(slot, ToUserUnits(slot, Work.Parms[slot]));
}

} // namespace Quillon

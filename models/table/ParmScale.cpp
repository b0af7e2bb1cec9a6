#include "models/table/ParmScale.h"

#include "input/NUMINPUT.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

constexpr double GasConstant = 83144710.0;                 // erg per mole and kelvin
constexpr double ReferenceRT = 24373871736.5;              // the same at 293.15 K
constexpr double ReferenceOmega = 62831.8530717958 / 30.0; // 20,000 rpm

// What a scan of the first set says, or the reference state without data.
struct FirstSet {
    double Path, RatioA, RatioB, RT, Omega;
};

FirstSet ReadFirstSet() {
    if (!Work.DataChosen || Work.NumSets < 1 || RowOf(SetNo(1)) < RowNo(1)) {
        Work.CellPath[1] = 1.2F;
        return {static_cast<double>(Work.CellPath[1]), static_cast<double>(Work.ExtinctionRatio[0][1]),
                static_cast<double>(Work.ExtinctionRatio[1][1]), ReferenceRT, ReferenceOmega};
    }
    const RowNo row = RowOf(SetNo(1));
    const double kelvin = static_cast<double>(Work.ScanTemperature[row]) + 273.15;
    const double omega = static_cast<double>(Work.ScanRPM[row]) * 3.14159265358979 / 30.0;
    return {static_cast<double>(Work.CellPath[row]), static_cast<double>(Work.ExtinctionRatio[0][row]),
            static_cast<double>(Work.ExtinctionRatio[1][row]), GasConstant * kelvin, omega};
}

// The values that the rules of scale stand for, in the units in force; 1 leaves a factor as it is.
struct Scales {
    float MassA = 1.0F, MassB = 1.0F;
    float OneToN = 0.0F, OneToM = 0.0F, Mixed = 0.0F;
    float SignalA = 0.0F, SignalB = 0.0F;
};

// M = sigma R T / (w^2 (1 - vbar rho)), in kDa; a buoyant mass has no bracket.
void ScaleMasses(Scales& scales, const FirstSet& first) {
    const double w2 = first.Omega * first.Omega;
    const double density = static_cast<double>(Work.SolventDensity);
    const auto molar = [&](float vbar) {
        return ToSingle(Divide(first.RT, w2 * (1.0 - density * static_cast<double>(vbar)) * 1000.0));
    };
    if (Work.MassUnits == MassUnit::Molar) {
        scales.MassA = molar(Work.VbarA);
        scales.MassB = molar(Work.VbarB);
    } else if (Work.MassUnits == MassUnit::Buoyant) {
        scales.MassA = scales.MassB = ToSingle(Divide(first.RT, w2 * 1000.0));
    }
}

// U_A and U_B, from signal to the unit of display; 1 in signal units, where there is nothing to convert.
struct UnitFactors {
    double A = 1.0, B = 1.0;
};

UnitFactors FactorsOf(const FirstSet& first) {
    const auto pair = [](float a, float b, double scaleA, double scaleB) {
        return UnitFactors{static_cast<double>(a) * scaleA, static_cast<double>(b) * scaleB};
    };
    switch (Work.ConcUnits) {
    case ConcUnit::Weight:
        return pair(Work.AbsorpA, Work.AbsorpB, first.RatioA * first.Path, first.RatioB * first.Path);
    case ConcUnit::Mole:
        return pair(Work.ExtA, Work.ExtB, first.RatioA * first.Path, first.RatioB * first.Path);
    case ConcUnit::FringeWeight:
        return pair(Work.FringeMassA, Work.FringeMassB, first.Path, first.Path);
    case ConcUnit::FringeMole:
        return pair(Work.RefrA, Work.RefrB, first.Path, first.Path);
    default:
        return {};
    }
}

void ScaleConstants(Scales& scales, const FirstSet& first, const UnitFactors& u) {
    const int units = Work.ConcUnits;
    const double n = static_cast<double>(Work.Parms[1]);
    const double m = static_cast<double>(Work.Parms[3]);
    if (units == ConcUnit::Absorbance || units == ConcUnit::Fringes) {
        // [decision: fringe-constants]
        scales.Mixed = ToSingle(-Ln(static_cast<double>(Work.ExtA) * first.RatioA *
                                    static_cast<double>(Work.ExtB) * first.RatioB * first.Path * first.Path));
        return;
    }
    const bool molar = ConcInMoles();
    scales.OneToN = ToSingle((n - 1.0) * Ln(u.A) - (molar ? Ln(n) : 0.0));
    // [decision: second-oligomer-by-b]
    // In mg/mL of interference data the second oligomer goes by the coefficient of species B.
    scales.OneToM =
        ToSingle((m - 1.0) * Ln(units == ConcUnit::FringeWeight ? u.B : u.A) - (molar ? Ln(m) : 0.0));
}

Scales ScalesInForce() {
    Scales scales;
    const FirstSet first = ReadFirstSet();
    ScaleMasses(scales, first);
    const UnitFactors u = FactorsOf(first);
    ScaleConstants(scales, first, u);
    scales.SignalA = ToSingle(-Ln(u.A));
    scales.SignalB = ToSingle(-Ln(u.B));
    return scales;
}

float ScaleOf(SlotScale rule, const Scales& scales) {
    switch (rule) {
    case SlotScale::MassA:
        return scales.MassA;
    case SlotScale::MassB:
        return scales.MassB;
    case SlotScale::OneToN:
        return scales.OneToN;
    case SlotScale::OneToM:
        return scales.OneToM;
    case SlotScale::Mixed:
        return scales.Mixed;
    case SlotScale::SignalA:
        return scales.SignalA;
    case SlotScale::SignalB:
        return scales.SignalB;
    case SlotScale::Zero:
        return 0.0F;
    case SlotScale::One:
        break;
    }
    return 1.0F;
}

// --- words and pictures ------------------------------------------------------------------------------------

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

bool MassInKiloDalton() {
    return Work.MassUnits != MassUnit::Sigma;
}

bool IsAdditiveSlot(SlotNo slot) {
    return IsAdditive(RuleOfSlot(slot).Holds);
}

bool ConcInMoles() {
    return Work.ConcUnits == ConcUnit::Mole || Work.ConcUnits == ConcUnit::FringeMole;
}

float ToUserUnits(SlotNo slot, float internal) {
    const double p = static_cast<double>(internal);
    const double scale = static_cast<double>(Work.ParmScale[slot]);
    return ToSingle(IsAdditiveSlot(slot) ? p + scale : p * scale);
}

float ToInternal(SlotNo slot, float displayed) {
    const double v = static_cast<double>(displayed);
    const double scale = static_cast<double>(Work.ParmScale[slot]);
    return ToSingle(IsAdditiveSlot(slot) ? v - scale : Divide(v, scale));
}

void FillStandardParms() {
    for (const SlotNo slot : EachGlobalSlot()) {
        const float standard = RuleOfSlot(slot).Standard;
        if (standard != 0.0F && Work.Parms[slot] == 0.0F) Work.Parms[slot] = standard;
    }
}

void BuildParmScale() {
    FillStandardParms();
    Work.ParmScale.Recreate(Work.MaxParms - 1, 1.0F);
    const Scales scales = ScalesInForce();
    for (const SlotNo slot : AllSlots())
        Work.ParmScale[slot] = ScaleOf(RuleOfSlot(slot).Scale, scales);
}

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

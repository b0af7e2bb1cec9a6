#include "models/ParmScale.h"

#include "models/Catalogue.h"
#include "workspace/records/Workspace.h"

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
    if (!Work.DataChosen || Work.NumSets < 1 || Work.SetRow[1] < 1) {
        Work.CellPath[1] = 1.2F;
        return {static_cast<double>(Work.CellPath[1]), static_cast<double>(Work.ExtinctionRatio[0][1]),
                static_cast<double>(Work.ExtinctionRatio[1][1]), ReferenceRT, ReferenceOmega};
    }
    const long row = Work.SetRow[1];
    const double kelvin = static_cast<double>(Work.ScanTemperature[row]) + 273.15;
    const double omega = static_cast<double>(Work.ScanRPM[row]) * 3.14159265358979 / 30.0;
    return {static_cast<double>(Work.CellPath[row]), static_cast<double>(Work.ExtinctionRatio[0][row]),
            static_cast<double>(Work.ExtinctionRatio[1][row]), GasConstant * kelvin, omega};
}

void FillDefaults() {
    const auto orElse = [](long slot, float value) {
        if (Work.Parms[slot] == 0.0F) Work.Parms[slot] = value;
    };
    orElse(0, 1.5F);
    orElse(1, 2.0F);
    orElse(3, 2.0F);
    orElse(5, 3.0F);
    Work.ParmScale.Recreate(Work.MaxParms - 1, 1.0F);
}

void ScaleMasses(const FirstSet& first) {
    auto& scale = Work.ParmScale;
    const double w2 = first.Omega * first.Omega;
    const double density = static_cast<double>(Work.SolventDensity);
    const auto molar = [&](float vbar) {
        return ToSingle(Divide(first.RT, w2 * (1.0 - density * static_cast<double>(vbar)) * 1000.0));
    };
    if (Work.MassUnits == 2) {
        scale[0] = molar(Work.VbarA);
        scale[5] = molar(Work.VbarB);
    } else if (Work.MassUnits == 1) {
        scale[0] = scale[5] = ToSingle(Divide(first.RT, w2 * 1000.0));
    }
}

// The factors from signal to the unit of display for species A and B; 1 in signal units, where there is
// nothing to convert.
struct UnitFactors {
    double A = 1.0, B = 1.0;
};

UnitFactors FactorsOf(const FirstSet& first) {
    const auto pair = [](float a, float b, double scaleA, double scaleB) {
        return UnitFactors{static_cast<double>(a) * scaleA, static_cast<double>(b) * scaleB};
    };
    switch (Work.ConcUnits) {
    case 1:
        return pair(Work.AbsorpA, Work.AbsorpB, first.RatioA * first.Path, first.RatioB * first.Path);
    case 2:
        return pair(Work.ExtA, Work.ExtB, first.RatioA * first.Path, first.RatioB * first.Path);
    case 4:
        return pair(Work.FringeMassA, Work.FringeMassB, first.Path, first.Path);
    case 5:
        return pair(Work.RefrA, Work.RefrB, first.Path, first.Path);
    default:
        return {};
    }
}

void ScaleConstants(const FirstSet& first, const UnitFactors& u) {
    auto& scale = Work.ParmScale;
    const int units = Work.ConcUnits;
    const double n = static_cast<double>(Work.Parms[1]);
    const double m = static_cast<double>(Work.Parms[3]);
    if (units == 0 || units == 3) {
        scale[2] = scale[4] = 0.0F;
        // [decision: fringe-constants]
        scale[6] = ToSingle(-Ln(static_cast<double>(Work.ExtA) * first.RatioA *
                                static_cast<double>(Work.ExtB) * first.RatioB * first.Path * first.Path));
        return;
    }
    const bool molar = units == 2 || units == 5;
    scale[2] = ToSingle((n - 1.0) * Ln(u.A) - (molar ? Ln(n) : 0.0));
    // [decision: second-oligomer-by-b]
    // In mg/mL of interference data the second oligomer goes by the coefficient of species B.
    scale[4] = ToSingle((m - 1.0) * Ln(units == 4 ? u.B : u.A) - (molar ? Ln(m) : 0.0));
    scale[6] = 0.0F;
}

void ScaleSets(const UnitFactors& u) {
    auto& scale = Work.ParmScale;
    const int model = Work.Model;
    const float addendA = ToSingle(-Ln(u.A));
    const float addendB = ToSingle(-Ln(u.B));
    const bool separateK = Work.SeparateK != 0;
    for (long s = 1; s <= Work.MaxSets; ++s) {
        scale[SlotA(s)] = addendA;
        scale[SlotB(s)] = model == 6 ? addendA : addendB; // the inactive monomer is A
        if (!separateK) continue;
        if (model >= 2 && model <= 6) scale[SlotB(s)] = scale[2];
        if (model == 4 || model == 5) scale[SlotOffset(s)] = scale[4];
        if (model == 8 || model == 9) scale[SlotOffset(s)] = scale[6];
    }
}

void ScaleByModel() {
    auto& scale = Work.ParmScale;
    const int model = Work.Model;
    if (model > 9) scale[7] = scale[6];
    if (model > 13) scale[2] = scale[6];
    if (model == 11 || model == 21) scale[7] = 0.0F;
    if (model == 14) scale[2] = 0.0F; // a cooperativity constant has no unit
}

} // namespace

bool MassInKiloDalton() {
    return Work.MassUnits != 0;
}

bool IsAdditiveSlot(long slot) {
    if (slot == 2 || slot == 4 || slot == 6) return true;
    if (slot == 7) return Work.Model > 9;
    if (slot < 7) return false;
    if ((slot - 7) % 3 != 0) return true;
    return OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
}

float ToUserUnits(long slot, float internal) {
    const double p = static_cast<double>(internal);
    const double scale = static_cast<double>(Work.ParmScale[slot]);
    return ToSingle(IsAdditiveSlot(slot) ? p + scale : p * scale);
}

float ToInternal(long slot, float displayed) {
    const double v = static_cast<double>(displayed);
    const double scale = static_cast<double>(Work.ParmScale[slot]);
    return ToSingle(IsAdditiveSlot(slot) ? v - scale : Divide(v, scale));
}

void BuildParmScale() {
    FillDefaults();
    const FirstSet first = ReadFirstSet();
    ScaleMasses(first);
    const UnitFactors u = FactorsOf(first);
    ScaleConstants(first, u);
    ScaleSets(u);
    ScaleByModel();
}

} // namespace Quillon

#include "reporting/values/DerivedConstants.h"

#include "fit/Confidence.h"
#include "fit/Undetermined.h"
#include "input/NUMINPUT.h"
#include "models/table/ConstantConvention.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <utility>

namespace Quillon {

namespace {

constexpr double GasConstant = 8.31446261815324e-3; // kJ per mole and kelvin (CODATA 2018, exact)
constexpr double Ln10 = 2.302585092994046;

// --- what a slot's constant is ---------------------------------------------------------------------------

enum class ConstantKind {
    None,        // nothing that the model reads
    OneToN,      // of signals, N monomers
    OneToM,      //
    SignalDimer, // of signals of B
    Molar,
    Factor // without a unit
};

ConstantKind KindOf(const SlotRule& rule) {
    if (rule.Holds != Quantity::Constant) return ConstantKind::None;
    if (rule.Scale == SlotScale::Zero) return ConstantKind::Factor;
    switch (rule.Unit) {
    case SlotUnit::OneToN:
        return ConstantKind::OneToN;
    case SlotUnit::OneToM:
        return ConstantKind::OneToM;
    case SlotUnit::Mixed:
        return rule.Scale == SlotScale::OneToN ? ConstantKind::SignalDimer : ConstantKind::Molar;
    default:
        return ConstantKind::None; // what stands in place of separate constants
    }
}

constexpr SlotNo SlotOfN(1), SlotOfM(3);

// --- molar coefficients ----------------------------------------------------------------------------------

bool GoesByFringes() {
    return Work.ConcUnits > ConcUnit::Mole;
}
float MolarCoefficient(bool b, const Workspace& of) {
    if (GoesByFringes()) return b ? of.RefrB : of.RefrA;
    return b ? of.ExtB : of.ExtA;
}

// ln of the signal of 1 mol/L in the cell of the first set.
double LnSignalOfMolar(bool b) {
    const RowNo first = RowOf(SetNo(1));
    const double ratio = GoesByFringes() ? 1.0 : static_cast<double>(Work.ExtinctionRatio[b ? 1 : 0][first]);
    return Ln(static_cast<double>(MolarCoefficient(b, Work)) * ratio *
              static_cast<double>(Work.CellPath[first]));
}

std::string ReasonAgainst(ConstantKind kind) {
    if (kind == ConstantKind::Factor) return "";
    const bool needsA = kind != ConstantKind::SignalDimer;
    const bool needsB = kind == ConstantKind::SignalDimer || kind == ConstantKind::Molar;
    const bool lacksA = needsA && !MolarCoefficientIsGiven(false);
    const bool lacksB = needsB && !MolarCoefficientIsGiven(true);
    if (!lacksA && !lacksB) return "";
    const std::string what = GoesByFringes() ? "molar dn/dc" : "molar extinction coefficient";
    if (!needsB) return "no " + what + " is given";
    return "no " + what + " is given of " + (lacksA && lacksB ? "A and B" : lacksA ? "A" : "B");
}

// --- values and limits -----------------------------------------------------------------------------------

// A constant in molar terms, and how it moves with the stoichiometry.
struct MolarConstant {
    ConstantKind Kind = ConstantKind::None;
    SlotNo Constant, Stoichiometry;
    double LnK = 0.0, Bonds = 1.0;
    double ByStoichiometry = 0.0; // d ln K / d N
};

MolarConstant InMoles(SlotNo slot, ConstantKind kind) {
    MolarConstant k{kind, slot, SlotNo(0), static_cast<double>(Work.Parms[slot])};
    if (kind == ConstantKind::Factor) k.Bonds = 0.0;
    if (kind == ConstantKind::SignalDimer) k.LnK += LnSignalOfMolar(true) - std::log(2.0);
    if (kind != ConstantKind::OneToN && kind != ConstantKind::OneToM) return k;
    k.Stoichiometry = kind == ConstantKind::OneToN ? SlotOfN : SlotOfM;
    const double n = static_cast<double>(Work.Parms[k.Stoichiometry]);
    const double u = LnSignalOfMolar(false);
    k.Bonds = n - 1.0;
    k.LnK += k.Bonds * u - Ln(n);
    k.ByStoichiometry = u - 1.0 / n;
    return k;
}

bool HasFittedStoichiometry(const MolarConstant& k) {
    return k.Stoichiometry != SlotNo(0) && IsFitted(k.Stoichiometry);
}

// ln of Kd^(1/bonds).
double LnRoot(const MolarConstant& k) {
    return -k.LnK / k.Bonds;
}

ConstantTerms TermsOf(const MolarConstant& k, double lnK, double lnRoot) {
    ConstantTerms terms{lnK, lnK / Ln10, std::exp(-lnK), std::nullopt, -GasConstant * MeanKelvin() * lnK};
    if (k.Bonds > 0.0) terms.KdRoot = std::exp(lnRoot);
    return terms;
}

// [decision: each-its-own-limit]
// The same numbers, each from the side of ln K that makes it the lower (or upper) one.
ConstantTerms LimitOf(const MolarConstant& k, double lnKThisSide, double lnKOtherSide, double lnRoot) {
    ConstantTerms terms = TermsOf(k, lnKThisSide, lnRoot);
    const ConstantTerms other = TermsOf(k, lnKOtherSide, lnRoot);
    terms.Kd = other.Kd;
    terms.DeltaG = other.DeltaG;
    return terms;
}

double Covariance(FreePos a, FreePos b) {
    const double rms = static_cast<double>(Work.RmsResidual);
    return Work.NormMatrix(a.Number, b.Number) * rms * rms;
}

// The standard error of a function of ln K and N with these derivatives.
double PropagatedError(const MolarConstant& k, double byLnK, double byN) {
    const FreePos a = FreePosOf(k.Constant);
    double variance = byLnK * byLnK * Covariance(a, a);
    if (HasFittedStoichiometry(k)) {
        const FreePos n = FreePosOf(k.Stoichiometry);
        variance += byN * byN * Covariance(n, n) + 2.0 * byLnK * byN * Covariance(a, n);
    }
    return std::sqrt(std::fabs(variance));
}

void AddErrors(const MolarConstant& k, DerivedConstant& derived) {
    const double error = PropagatedError(k, 1.0, k.ByStoichiometry);
    double rootError = 0.0;
    if (k.Bonds > 0.0) {
        const double byN = -(k.ByStoichiometry * k.Bonds - k.LnK) / (k.Bonds * k.Bonds);
        rootError = PropagatedError(k, -1.0 / k.Bonds, byN);
    }
    derived.Lower = LimitOf(k, k.LnK - error, k.LnK + error, LnRoot(k) - rootError);
    derived.Upper = LimitOf(k, k.LnK + error, k.LnK - error, LnRoot(k) + rootError);
}

// ln K at a limit of the search, in molar terms.
double SearchedLimit(const MolarConstant& k, std::size_t side) {
    const FreePos place = FreePosOf(k.Constant);
    const double internal = static_cast<double>(Work.ParmLimits[side][place]);
    return k.LnK + internal - static_cast<double>(Work.Parms[k.Constant]);
}

void AddSearchedLimits(const MolarConstant& k, DerivedConstant& derived) {
    const double lower = SearchedLimit(k, 0);
    const double upper = SearchedLimit(k, 1);
    derived.Lower = LimitOf(k, lower, upper, -upper / k.Bonds);
    derived.Upper = LimitOf(k, upper, lower, -lower / k.Bonds);
}

void AddLimits(const MolarConstant& k, DerivedConstant& derived) {
    if (!Work.FitDone || !IsFitted(k.Constant)) return;
    const long place = FreePosOf(k.Constant).Number;
    if (Work.LimitsDone && !HasFittedStoichiometry(k)) {
        if (LimitFound(FreePos(place), false) && LimitFound(FreePos(place), true))
            AddSearchedLimits(k, derived);
        return;
    }
    if (HasError(k.Constant) && (!HasFittedStoichiometry(k) || HasError(k.Stoichiometry)))
        AddErrors(k, derived);
}

std::string UnitOf(double bonds) {
    if (bonds == 0.0) return "";
    if (bonds == 1.0) return "mol/L";
    return "(mol/L)^" + SingleText(ToSingle(bonds));
}

DerivedConstant Derive(SlotNo slot, ConstantKind kind) {
    DerivedConstant derived;
    const SlotNo common = RuleOfSlot(slot).Common;
    derived.Slot = slot.Number;
    derived.Name = Work.ParmName[slot];
    derived.Convention = ConstantConvention(Work.Model, common != NoSlot ? common : slot);
    derived.Reason = ReasonAgainst(kind);
    if (!derived.Reason.empty()) return derived;
    try {
        const MolarConstant k = InMoles(slot, kind);
        derived.Bonds = k.Bonds;
        derived.Unit = UnitOf(k.Bonds);
        derived.Value = TermsOf(k, k.LnK, LnRoot(k));
        AddLimits(k, derived);
    } catch (const RuntimeError& error) {
        derived.Reason = error.Text; // a path or ratio of 0
    }
    return derived;
}

// --- words -----------------------------------------------------------------------------------------------

std::string Shown(double value, const char* picture) {
    return std::isfinite(value) ? FormatNumber(value, picture) : "out of range";
}

// "1.235E-06 [1.100E-06, 1.371E-06]"
template <class Term> std::string Limited(const DerivedConstant& k, Term&& term, const char* picture) {
    std::string text = Shown(term(*k.Value), picture);
    if (k.Lower && k.Upper)
        text += " [" + Shown(term(*k.Lower), picture) + ", " + Shown(term(*k.Upper), picture) + "]";
    return text;
}

// One number a line: with its limits each is as wide as the list of parameters in the window of results.
void AddLinesOf(const DerivedConstant& k, std::vector<std::string>& lines) {
    const auto add = [&](const std::string& name, auto&& term, const char* picture, const char* unit) {
        lines.push_back("      " + name + " = " + Limited(k, term, picture) + unit);
    };
    lines.push_back("    " + k.Name + ": " + k.Convention);
    if (k.Value->KdRoot)
        add(
            k.Bonds == 1.0 ? "Kd" : "Kd^(1/bonds)",
            [](const ConstantTerms& t) { return t.KdRoot.value_or(0.0); }, "0.000E-00", " mol/L");
    add(
        "log10 K", [](const ConstantTerms& t) { return t.Log10K; }, "#0.000", "");
    add(
        "Delta G", [](const ConstantTerms& t) { return t.DeltaG; }, "#0.00", " kJ/mol");
}

} // namespace

bool MolarCoefficientIsGiven(bool ofB) {
    // [decision: standard-is-not-given]
    const float coefficient = MolarCoefficient(ofB, Work);
    return coefficient > 0.0F && (ConcInMoles() || coefficient != MolarCoefficient(ofB, Workspace{}));
}

double MeanKelvin() {
    double sum = 0.0;
    for (const SetNo set : EachSet())
        sum += static_cast<double>(Work.ScanTemperature[RowOf(set)]);
    return 273.15 + (Work.NumSets > 0 ? sum / Work.NumSets : 20.0);
}

std::optional<DerivedConstant> DerivedConstantOf(SlotNo slot) {
    const ConstantKind kind = KindOf(RuleOfSlot(slot));
    if (kind == ConstantKind::None) return std::nullopt;
    return Derive(slot, kind);
}

std::vector<DerivedConstant> DerivedConstants() {
    std::vector<DerivedConstant> all;
    for (const SlotNo slot : EachSlot()) {
        const ConstantKind kind = KindOf(RuleOfSlot(slot));
        const bool used = Work.FreeMap[slot] >= 0 || Work.FreeMap[slot] == SlotHeld;
        if (used && kind != ConstantKind::None) all.push_back(Derive(slot, kind));
    }
    return all;
}

std::vector<std::string> DerivedLines() {
    std::vector<std::string> lines;
    for (const DerivedConstant& k : DerivedConstants()) {
        if (k.Value) AddLinesOf(k, lines);
    }
    if (lines.empty()) return lines;
    const std::string heads[] = {"Association constants in mol/L at " +
                                     FormatNumber(MeanKelvin() - 273.15, "#0.0") + " degrees C,",
                                 Work.LimitsDone != 0 ? "with confidence limits:" : "with standard errors:"};
    lines.insert(lines.begin(), std::begin(heads), std::end(heads));
    return lines;
}

} // namespace Quillon

#include "models/species/SpeciesAtPoint.h"

#include "models/function/NonIdeal.h"
#include "models/function/Species.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <limits>

namespace Quillon {

namespace {

SignalProduct ProductOf(SpeciesKind kind) {
    switch (kind) {
    case SpeciesKind::MonomerA:
        return SignalProduct::A;
    case SpeciesKind::InactiveA:
    case SpeciesKind::MonomerB:
        return SignalProduct::B;
    case SpeciesKind::OligomerN:
        return SignalProduct::PowerN;
    case SpeciesKind::OligomerM:
        return SignalProduct::PowerM;
    case SpeciesKind::ABB:
        return SignalProduct::ABB;
    case SpeciesKind::AAB:
        return SignalProduct::AAB;
    case SpeciesKind::ABBA:
        return SignalProduct::AABB;
    case SpeciesKind::DimerB:
        return SignalProduct::BB;
    default:
        return SignalProduct::AB;
    }
}

// The signal of a species over its product, as the fitted function has it. The reserved models have no term
// but that of monomer A.
double SignalFactor(const FitFrame& f, const SpeciesFactors& s, SpeciesKind kind, bool hasB) {
    switch (kind) {
    case SpeciesKind::MonomerA:
        return s.A;
    case SpeciesKind::InactiveA:
    case SpeciesKind::MonomerB:
        return hasB ? s.B : 0.0;
    case SpeciesKind::OligomerN:
        return s.A * s.N;
    case SpeciesKind::OligomerM:
        return s.A * s.M;
    case SpeciesKind::AB:
        return s.AB;
    case SpeciesKind::FirstAB:
        return f.gAB * f.cFirstAB;
    case SpeciesKind::OtherAB:
        return f.gAB * f.cOtherAB;
    case SpeciesKind::ABB:
        return s.ABB;
    case SpeciesKind::AAB:
        return s.AAB;
    case SpeciesKind::ABBA:
        return s.ABBA;
    default:
        return s.BB;
    }
}

// Whose coefficients turn signals into concentrations. Units of signals alone do not say it, as long as the
// model needs no coefficient; the scans then do.
bool ByRefractivity() {
    const bool open = Work.ConcUnits == ConcUnit::Absorbance && !TraitsOfModel().Hetero;
    return Work.ConcUnits > ConcUnit::Mole || (open && Work.InterferenceData);
}

// The monomer signals of a run of points and the powers of A's.
struct Monomers {
    std::vector<double> A, B, N, M;
};

// True when c satisfies c = a exp(e ct). The passes of the solution end at 1e-7.
bool Solves(const FitFrame& f, double a, const NonIdealPoint& c) {
    const double total = c.Monomer + (c.SignalN + c.SignalM) / f.ScaleA;
    return std::fabs(a * Exponential(f.BFactor * total) - c.Monomer) <= 1e-5 * c.Monomer;
}

// Puts the non-ideal monomer in the place of the ideal one.
bool SolveMonomers(SpeciesPlan& plan, std::vector<double>& monomers) {
    bool solved = true;
    FitFrame& f = plan.Frame;
    for (double& a : monomers) {
        const double idealSignal = f.Offset + f.ScaleA * a;
        const NonIdealPoint c = SolveNonIdeal(f, a, idealSignal, !plan.Begun);
        plan.Begun = true;
        solved = Solves(f, a, c) && solved;
        a = c.Monomer;
    }
    return solved;
}

bool HasProduct(const SpeciesPlan& plan, SignalProduct product) {
    for (std::size_t k = 0; k < static_cast<std::size_t>(plan.Count); ++k)
        if (plan.Product[k] == product) return true;
    return false;
}

void Fill(std::vector<double>& out, std::span<const double> x, double sigma, double ln) {
    out.resize(x.size());
    Exponentials(out.data(), x.data(), static_cast<long>(x.size()), sigma, ln);
}

void FillPower(std::vector<double>& out, const std::vector<double>& a, double power) {
    out.resize(a.size());
    MonomerPowers(out.data(), a.data(), static_cast<long>(a.size()), power);
}

bool FillMonomers(SpeciesPlan& plan, std::span<const double> x, Monomers& m) {
    const FitFrame& f = plan.Frame;
    Fill(m.A, x, f.SigmaA, f.LnA);
    const bool solved = !plan.NonIdeal || SolveMonomers(plan, m.A);
    if (HasProduct(plan, SignalProduct::B)) Fill(m.B, x, f.SigmaB, f.LnB);
    if (HasProduct(plan, SignalProduct::PowerN)) FillPower(m.N, m.A, f.PowerN);
    if (HasProduct(plan, SignalProduct::PowerM)) FillPower(m.M, m.A, f.PowerM);
    return solved;
}

template <class Product> void Multiply(std::vector<double>& out, std::size_t n, double factor, Product&& at) {
    out.resize(n);
    double* const values = out.data();
    OnVectors([&] {
        for (std::size_t i = 0; i < n; ++i)
            values[i] = factor * at(i);
    });
}

void FillColumn(std::vector<double>& out, const Monomers& m, SignalProduct product, double factor) {
    const std::size_t n = m.A.size();
    const double* a = m.A.data();
    const double* b = m.B.data();
    switch (product) {
    case SignalProduct::A:
        return Multiply(out, n, factor, [a](std::size_t i) { return a[i]; });
    case SignalProduct::B:
        return Multiply(out, n, factor, [b](std::size_t i) { return b[i]; });
    case SignalProduct::PowerN:
        return Multiply(out, n, factor, [from = m.N.data()](std::size_t i) { return from[i]; });
    case SignalProduct::PowerM:
        return Multiply(out, n, factor, [from = m.M.data()](std::size_t i) { return from[i]; });
    case SignalProduct::AB:
        return Multiply(out, n, factor, [a, b](std::size_t i) { return a[i] * b[i]; });
    case SignalProduct::ABB:
        return Multiply(out, n, factor, [a, b](std::size_t i) { return a[i] * b[i] * b[i]; });
    case SignalProduct::BB:
        return Multiply(out, n, factor, [b](std::size_t i) { return b[i] * b[i]; });
    case SignalProduct::AAB:
        return Multiply(out, n, factor, [a, b](std::size_t i) { return a[i] * b[i] * a[i]; });
    case SignalProduct::AABB:
        return Multiply(out, n, factor, [a, b](std::size_t i) { return (a[i] * b[i]) * (a[i] * b[i]); });
    }
}

std::vector<double> TrueX(SetNo set) {
    const long first = FirstPointOf(set);
    const long last = LastTruePointOf(set);
    if (last < first) return {};
    const float* x = Work.PtX.Data();
    return {x + (first - 1), x + last};
}

void PlanFactors(SpeciesPlan& plan, SpeciesUnit unit, const SpeciesFactors& factors, bool hasB) {
    for (const ListedSpecies& each : SpeciesOfModel(Work.Model)) {
        const auto k = static_cast<std::size_t>(plan.Count++);
        plan.Kind[k] = each.Kind;
        plan.Product[k] = ProductOf(each.Kind);
        plan.Factor[k] = Divide(SignalFactor(plan.Frame, factors, each.Kind, hasB),
                                SignalOfUnit(each.Kind, unit, plan.Frame.CurRow));
    }
}

} // namespace

SpeciesUnit UnitInForce() {
    switch (Work.ConcUnits) {
    case ConcUnit::Weight:
    case ConcUnit::FringeWeight:
        return SpeciesUnit::Weight;
    case ConcUnit::Mole:
    case ConcUnit::FringeMole:
        return SpeciesUnit::Molar;
    default:
        return SpeciesUnit::Signal;
    }
}

bool SpeciesHaveUnit(SpeciesUnit unit) {
    return unit != SpeciesUnit::Weight || !TraitsOfModel().TwoSpecies;
}

double SignalOfUnit(SpeciesKind kind, SpeciesUnit unit, RowNo row) {
    if (unit == SpeciesUnit::Signal) return 1.0;
    const bool fringes = ByRefractivity();
    const double path = static_cast<double>(Work.CellPath[row]);
    const double ratioA = static_cast<double>(Work.ExtinctionRatio[0][row]);
    const double ratioB = static_cast<double>(Work.ExtinctionRatio[1][row]);
    if (unit == SpeciesUnit::Weight)
        return static_cast<double>(fringes ? Work.FringeMassA : Work.AbsorpA) * ratioA * path;
    const double eA = static_cast<double>(fringes ? Work.RefrA : Work.ExtA);
    const double eB = static_cast<double>(fringes ? Work.RefrB : Work.ExtB);
    const MonomerCount n = MonomersIn(kind);
    return (n.A * eA * ratioA + n.B * eB * ratioB) * path;
}

SpeciesPlan PlanSpecies(SetNo set, SpeciesUnit unit) {
    if (!SpeciesHaveUnit(unit))
        RaiseError("species of a model with two kinds of monomers have no concentration in mg/mL; choose "
                   "signal or molar units");
    SpeciesPlan plan;
    LoadFrame(plan.Frame, set);
    plan.NonIdeal = Work.NonIdeal != 0 && ModelAllowsNonIdeal(Work.Model);
    WithFamily(FamilyOf(Work.Model), [&](auto family) {
        PlanFactors(plan, unit, FactorsOf<family.Value>(plan.Frame), HasB(family.Value));
    });
    return plan;
}

bool EvaluateSpecies(SpeciesPlan& plan, std::span<const double> x, SpeciesColumns& values) {
    Monomers m;
    const bool solved = FillMonomers(plan, x, m);
    values.resize(static_cast<std::size_t>(plan.Count));
    for (std::size_t k = 0; k < values.size(); ++k)
        if (plan.Factor[k] == 0.0)
            values[k].assign(x.size(), 0.0); // whatever its product
        else
            FillColumn(values[k], m, plan.Product[k], plan.Factor[k]);
    return solved;
}

SpeciesColumns SpeciesOfSet(SetNo set, SpeciesUnit unit) {
    SpeciesPlan plan = PlanSpecies(set, unit);
    const std::vector<double> x = TrueX(set);
    SpeciesColumns values;
    EvaluateSpecies(plan, x, values);
    constexpr auto Largest = static_cast<double>(std::numeric_limits<float>::max());
    bool fits = true;
    for (const std::vector<double>& column : values)
        for (const double v : column)
            fits &= std::fabs(v) <= Largest;
    if (!fits) RaiseError(ErrorText::Overflow);
    return values;
}

std::vector<float> SpeciesAtPoint(long point) {
    SpeciesPlan plan = PlanSpecies(SetOfPoint(point), UnitInForce());
    const double x = static_cast<double>(Work.PtX[point]);
    SpeciesColumns values;
    EvaluateSpecies(plan, {&x, 1}, values);
    std::vector<float> singles;
    for (const std::vector<double>& column : values)
        singles.push_back(ToSingle(column[0]));
    return singles;
}

} // namespace Quillon

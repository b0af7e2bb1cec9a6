#include "models/BlockFunction.h"

#include "models/Catalogue.h"
#include "models/Constraints.h"
#include "models/FitFunction.h"
#include "models/Species.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace Quillon {

namespace {

using Values = std::array<double, BlockPoints>;

// The monomer signals of a block and the powers of A's.
struct Monomers {
    Values A, B, N, M;
};
// Which of them a frame computes for itself; the others are those of the base.
struct View {
    const double *A, *B, *N, *M;
};

Monomers Own, Moved; // at the base parameters, at stepped ones
Values Shifted;      // the function at stepped parameters

bool AllFinite(const double* v, long n) {
    std::uint64_t bad = 0;
    for (long i = 0; i < n; ++i)
        bad |= ((std::bit_cast<std::uint64_t>(v[i]) >> 52) & 0x7FF) == 0x7FF;
    return bad == 0;
}

void Exponentials(double* out, const float* x, long n, double sigma, double ln) {
    for (long i = 0; i < n; ++i)
        out[i] = std::exp(static_cast<double>(x[i]) * sigma + ln);
}

template <int N> void FixedPowers(double* out, const double* a, long n) {
    for (long i = 0; i < n; ++i)
        out[i] = IntegralPower(a[i], N);
}

void Powers(double* out, const double* a, long n, double power) {
    if (power == 2.0) return FixedPowers<2>(out, a, n);
    if (power == 3.0) return FixedPowers<3>(out, a, n);
    if (power == 4.0) return FixedPowers<4>(out, a, n);
    for (long i = 0; i < n; ++i)
        out[i] = MonomerPower(a[i], power);
}

// All four at the base parameters.
template <ModelFamily F> View BaseMonomers(const FitFrame& f, const float* x, long n) {
    Exponentials(Own.A.data(), x, n, f.SigmaA, f.LnA);
    if constexpr (HasB(F)) Exponentials(Own.B.data(), x, n, f.SigmaB, f.LnB);
    if constexpr (HasPowerN(F)) Powers(Own.N.data(), Own.A.data(), n, f.PowerN);
    if constexpr (HasPowerM(F)) Powers(Own.M.data(), Own.A.data(), n, f.PowerM);
    return {Own.A.data(), Own.B.data(), Own.N.data(), Own.M.data()};
}

// Those that the step has moved afresh, the others from the base.
template <ModelFamily F>
View SteppedMonomers(const FitFrame& f, const FitFrame& base, const View& own, const float* x, long n) {
    View v = own;
    const bool movedA = f.SigmaA != base.SigmaA || f.LnA != base.LnA;
    if (movedA) {
        Exponentials(Moved.A.data(), x, n, f.SigmaA, f.LnA);
        v.A = Moved.A.data();
    }
    if constexpr (HasB(F))
        if (f.SigmaB != base.SigmaB || f.LnB != base.LnB) {
            Exponentials(Moved.B.data(), x, n, f.SigmaB, f.LnB);
            v.B = Moved.B.data();
        }
    if constexpr (HasPowerN(F))
        if (movedA || f.PowerN != base.PowerN) {
            Powers(Moved.N.data(), v.A, n, f.PowerN);
            v.N = Moved.N.data();
        }
    if constexpr (HasPowerM(F))
        if (movedA || f.PowerM != base.PowerM) {
            Powers(Moved.M.data(), v.A, n, f.PowerM);
            v.M = Moved.M.data();
        }
    return v;
}

// The signals of a block and, with constraints in force, their sums under the entry of slot.
template <ModelFamily F> void Signals(double* out, const FitFrame& f, const View& v, long n, long slot) {
    const SpeciesFactors s = FactorsOf<F>(f);
    for (long i = 0; i < n; ++i)
        out[i] = SignalAt<F>(s, v.A[i], v.B[i], v.N[i], v.M[i]);
    if (!f.ConstraintsOn) return;
    double& sumA = ConstraintSumA(slot);
    double& sumB = ConstraintSumB(slot);
    for (long i = 0; i < n; ++i) {
        const UnitSignals u = UnitsAt<F>(s, v.A[i], v.B[i], v.N[i], v.M[i]);
        sumA += u.A;
        sumB += u.B;
    }
}

void Quotients(double* column, const double* stepped, const double* value, long n, double h) {
    for (long i = 0; i < n; ++i)
        column[i] = (stepped[i] - value[i]) / h;
}

template <ModelFamily F> bool IdealBlock(PointBlock& block, const SetPlan& plan) {
    const long n = block.Count;
    const float* x = Work.PtX.Data() + (block.First - 1);
    double* value = block.Value.data();
    const View own = BaseMonomers<F>(plan.Base, x, n);
    Signals<F>(value, plan.Base, own, n, -1);
    if (!AllFinite(value, n)) return false;
    for (int c = 0; c < plan.Count; ++c) {
        const auto k = static_cast<std::size_t>(c);
        double* column = block.Column[k].data();
        if (plan.Constant[k]) {
            std::fill_n(column, n, 1.0);
            continue;
        }
        const FitFrame& f = plan.Frames[k];
        const View v = SteppedMonomers<F>(f, plan.Base, own, x, n);
        Signals<F>(Shifted.data(), f, v, n, plan.Slot[k]);
        if (!AllFinite(Shifted.data(), n)) return false;
        Quotients(column, Shifted.data(), value, n, plan.Step[k]);
    }
    return true;
}

// Pseudo-points, and points of the non-ideal solution, which starts each point from the one before.
void PointByPoint(PointBlock& block, const SetPlan& plan) {
    for (long i = 0; i < block.Count; ++i) {
        const long p = block.First + i;
        const auto place = static_cast<std::size_t>(i);
        block.Value[place] = FitFunction(p);
        if (plan.Count > 0 && !Work.AbortFit) CalcDerivs(p, block.Value[place]);
        if (Work.AbortFit) return;
        for (std::size_t c = 0; c < static_cast<std::size_t>(plan.Count); ++c)
            block.Column[c][place] = Work.Deriv[plan.FreePosition[c]];
    }
}

void PlanColumn(SetPlan& plan, long slot, SlotDeriv kind) {
    const auto k = static_cast<std::size_t>(plan.Count++);
    plan.Slot[k] = ToInt16(slot);
    plan.FreePosition[k] = Work.FreeMap[slot];
    plan.Constant[k] = kind == SlotDeriv::One;
    if (kind != SlotDeriv::Numeric) return;
    const double h = DerivStep(slot);
    if (h == 0.0) RaiseError(ErrorText::DivisionByZero);
    float& parm = Work.Parms[slot];
    const float saved = parm;
    parm = ToSingle(static_cast<double>(saved) + h);
    plan.Step[k] = h;
    StepFrame(plan.Frames[k], plan.Base, slot);
    parm = saved;
}

// The fitted slots whose derivative at true points of the set is not zero, by free position.
void PlanColumns(SetPlan& plan) {
    for (long a = 0; a < Work.NumFree; ++a) {
        const std::int16_t slot = Work.FreeIndex[a];
        const SlotDeriv kind = DerivKind(slot, plan.Set, false);
        if (kind != SlotDeriv::Zero) PlanColumn(plan, slot, kind);
    }
}

} // namespace

void PlanSet(SetPlan& plan, long set, bool withDerivs) {
    plan.Set = set;
    plan.Count = 0;
    try {
        LoadFrame(plan.Base, set);
    } catch (const RuntimeError&) {
        return TellFunctionError(); // as the function itself would have told it at the set's first point
    }
    if (withDerivs) PlanColumns(plan);
}

void EvaluateBlock(PointBlock& block, const SetPlan& plan, long first, long count) {
    block.First = first;
    block.Count = count;
    const bool nonIdeal = Work.NonIdeal && ModelAllowsNonIdeal(Work.Model);
    if (nonIdeal || Work.PtX[first] == PointMarker) return PointByPoint(block, plan);
    bool fine = false;
    WithFamily(FamilyOf(Work.Model), [&](auto family) { fine = IdealBlock<family.Value>(block, plan); });
    if (!fine) TellFunctionError();
}

} // namespace Quillon

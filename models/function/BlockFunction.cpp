#include "models/function/BlockFunction.h"

#include "models/function/Constraints.h"
#include "models/function/Exponential.h"
#include "models/function/FitFunction.h"
#include "models/function/Species.h"
#include "models/table/Catalogue.h"
#include "platform/RuntimeError.h"
#include "platform/VectorWidth.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

namespace Quillon {

namespace {

using Values = std::array<double, BlockPoints>;

// Powers of A's monomer signal that are no products of it, where a model has such.
struct OddPowers {
    Values N, M;
};
// The monomer signals of a block and the powers of A's.
struct View {
    const double *A, *B, *N, *M;
};

thread_local Values OwnA, OwnB, MovedA, MovedB;
thread_local OddPowers Own, Moved; // at the base parameters, at stepped ones

bool AllFinite(const double* v, long n) {
    std::uint64_t bad = 0;
    for (long i = 0; i < n; ++i)
        bad |= ((std::bit_cast<std::uint64_t>(v[i]) >> 52) & 0x7FF) == 0x7FF;
    return bad == 0;
}

// --- the store of exponentials ---------------------------------------------------------------------------
// The sums of an iteration begin at the parameters of the last trial of the step before: its exponentials
// are those that the sums need. Kept for all points, for as long as the points stay what they are.

struct StoredSignal {
    double Sigma = 0.0, Ln = 0.0; // the arguments
    long From = 0, To = -1;       // the points that stand in the store for them
};
struct SignalStore {
    std::vector<double> Values; // by point number
    std::array<StoredSignal, StandardMaxSets + 1> OfSet;
};
thread_local bool StoreInUse = false;
thread_local SignalStore StoreA, StoreB;

// The exponentials of a run of points: from the store, through the store, or into spare.
const double* BaseSignal(SignalStore& store, Values& spare, SetNo set, long first, long n, double sigma,
                         double ln) {
    const float* x = Work.PtX.Data() + (first - 1);
    if (!StoreInUse) {
        Exponentials(spare.data(), x, n, sigma, ln);
        return spare.data();
    }
    StoredSignal& held = store.OfSet[static_cast<std::size_t>(set.Number)];
    double* values = store.Values.data() + first;
    const bool same = held.Sigma == sigma && held.Ln == ln;
    if (same && first >= held.From && first + n - 1 <= held.To) return values;
    if (!same || first != held.To + 1) held = {sigma, ln, first, first - 1};
    Exponentials(values, x, n, sigma, ln);
    held.To = first + n - 1;
    return values;
}

// --- signals ---------------------------------------------------------------------------------------------

// True where a^N and a^M are plain squares of what stands beside them, as in monomer - dimer - tetramer.
template <ModelFamily F> bool PowersAreSquares(const FitFrame& f) {
    return HasPowerN(F) && f.PowerN == 2.0 && (!HasPowerM(F) || f.PowerM == 4.0);
}

template <ModelFamily F> void FillPowers(OddPowers& out, View& v, const FitFrame& f, long n) {
    if constexpr (HasPowerN(F)) MonomerPowers(out.N.data(), v.A, n, f.PowerN);
    if constexpr (HasPowerM(F)) MonomerPowers(out.M.data(), v.A, n, f.PowerM);
    v.N = out.N.data();
    v.M = out.M.data();
}

template <ModelFamily F> View BaseMonomers(const FitFrame& f, long first, long n) {
    View v{};
    v.A = BaseSignal(StoreA, OwnA, f.CurSet, first, n, f.SigmaA, f.LnA);
    v.B = OwnB.data();
    if constexpr (HasB(F)) v.B = BaseSignal(StoreB, OwnB, f.CurSet, first, n, f.SigmaB, f.LnB);
    v.N = Own.N.data();
    v.M = Own.M.data();
    if constexpr (HasPowerN(F))
        if (!PowersAreSquares<F>(f)) FillPowers<F>(Own, v, f, n);
    return v;
}

// Those that the step has moved afresh, the others from the base.
template <ModelFamily F>
View SteppedMonomers(const FitFrame& f, const FitFrame& base, const View& own, long first, long n) {
    const float* x = Work.PtX.Data() + (first - 1);
    View v = own;
    const bool movedA = f.SigmaA != base.SigmaA || f.LnA != base.LnA;
    if (movedA) {
        Exponentials(MovedA.data(), x, n, f.SigmaA, f.LnA);
        v.A = MovedA.data();
    }
    if constexpr (HasB(F))
        if (f.SigmaB != base.SigmaB || f.LnB != base.LnB) {
            Exponentials(MovedB.data(), x, n, f.SigmaB, f.LnB);
            v.B = MovedB.data();
        }
    if constexpr (HasPowerN(F)) {
        const bool movedPower = f.PowerN != base.PowerN || f.PowerM != base.PowerM;
        if ((movedA || movedPower) && !PowersAreSquares<F>(f)) FillPowers<F>(Moved, v, f, n);
    }
    return v;
}

// Calls use(i, an, am) for each point.
template <ModelFamily F, bool Squares, class Use> void ForPoints(const View& v, long n, Use&& use) {
    OnVectors([&] {
        for (long i = 0; i < n; ++i) {
            if constexpr (!HasPowerN(F)) {
                use(i, 0.0, 0.0);
            } else if constexpr (Squares) {
                const double square = v.A[i] * v.A[i];
                use(i, square, square * square);
            } else {
                use(i, v.N[i], v.M[i]);
            }
        }
    });
}

// With constraints in force, the sums of the units under the entry of slot.
template <ModelFamily F, bool Squares>
void SumUnits(const FitFrame& f, const SpeciesFactors& s, const View& v, long n, SlotNo slot) {
    if (!f.ConstraintsOn) return;
    double& sumA = ConstraintSumA(slot);
    double& sumB = ConstraintSumB(slot);
    ForPoints<F, Squares>(v, n, [&](long i, double an, double am) {
        const UnitSignals u = UnitsAt<F>(s, v.A[i], v.B[i], an, am);
        sumA += u.A;
        sumB += u.B;
    });
}

template <ModelFamily F, bool Squares> void Signals(double* out, const FitFrame& f, const View& v, long n) {
    const SpeciesFactors s = FactorsOf<F>(f);
    ForPoints<F, Squares>(
        v, n, [&](long i, double an, double am) { out[i] = SignalAt<F>(s, v.A[i], v.B[i], an, am); });
    SumUnits<F, Squares>(f, s, v, n, NoSlot);
}

template <ModelFamily F, bool Squares>
void Quotients(double* column, const double* value, const FitFrame& f, const View& v, long n, double h,
               SlotNo slot) {
    const SpeciesFactors s = FactorsOf<F>(f);
    ForPoints<F, Squares>(v, n, [&](long i, double an, double am) {
        column[i] = (SignalAt<F>(s, v.A[i], v.B[i], an, am) - value[i]) / h;
    });
    SumUnits<F, Squares>(f, s, v, n, slot);
}

template <ModelFamily F> void IdealBlock(PointBlock& block, const SetPlan& plan) {
    const long n = block.Count;
    double* value = block.Value.data();
    const View own = BaseMonomers<F>(plan.Base, block.First, n);
    if (PowersAreSquares<F>(plan.Base))
        Signals<F, true>(value, plan.Base, own, n);
    else
        Signals<F, false>(value, plan.Base, own, n);
    for (std::size_t k = 0; k < static_cast<std::size_t>(plan.Count); ++k) {
        double* column = block.Column[k].data();
        if (plan.Constant[k]) {
            std::fill_n(column, n, 1.0);
            continue;
        }
        const FitFrame& f = plan.Frames[k];
        View v = SteppedMonomers<F>(f, plan.Base, own, block.First, n);
        const bool squares = PowersAreSquares<F>(f);
        if (squares)
            Quotients<F, true>(column, value, f, v, n, plan.Step[k], plan.Slot[k]);
        else
            Quotients<F, false>(column, value, f, v, n, plan.Step[k], plan.Slot[k]);
    }
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

void PlanColumn(SetPlan& plan, Workspace& w, FreePos position, SlotNo slot, SlotDeriv kind) {
    const auto k = static_cast<std::size_t>(plan.Count++);
    plan.Slot[k] = slot;
    plan.FreePosition[k] = position;
    plan.Constant[k] = kind == SlotDeriv::One;
    if (kind != SlotDeriv::Numeric) return;
    const double h = DerivStep(slot);
    if (h == 0.0) RaiseError(ErrorText::DivisionByZero);
    float& parm = w.Parms[slot];
    const float saved = parm;
    parm = ToSingle(static_cast<double>(saved) + h);
    plan.Step[k] = h;
    StepFrame(plan.Frames[k], plan.Base, slot);
    parm = saved;
}

// The fitted slots whose derivative at true points of the set is not zero, by free position.
void PlanColumns(SetPlan& plan) {
    Workspace& w = Work; // the thread's own is looked up once
    const SetLeads leads = LeadsOf(plan.Set, plan.Base.LeadA, plan.Base.LeadB);
    for (const FreePos position : EachFree()) {
        const SlotNo slot(w.FreeIndex[position]);
        const SlotDeriv kind = DerivKind(slot, leads, false);
        if (kind != SlotDeriv::Zero) PlanColumn(plan, w, position, slot, kind);
    }
}

} // namespace

void PlanSet(SetPlan& plan, SetNo set, bool withDerivs) {
    plan.Set = set;
    plan.Count = 0;
    try {
        LoadFrame(plan.Base, set);
    } catch (const RuntimeError& error) {
        return NoteFunctionError(
            error.Text); // as the function itself would have noted it at the set's first point
    }
    if (plan.Base.ConstraintsOn) ClearConstraintSums();
    if (withDerivs) PlanColumns(plan);
}

void EvaluateBlock(PointBlock& block, const SetPlan& plan, long first, long count) {
    block.First = first;
    block.Count = count;
    const bool nonIdeal = Work.NonIdeal && ModelAllowsNonIdeal(Work.Model);
    if (nonIdeal || Work.PtX[first] == PointMarker) return PointByPoint(block, plan);
    WithFamily(FamilyOf(Work.Model), [&](auto family) { IdealBlock<family.Value>(block, plan); });
}

bool BlockIsFinite(const PointBlock& block, const SetPlan& plan) {
    if (!AllFinite(block.Value.data(), block.Count)) return false;
    for (std::size_t k = 0; k < static_cast<std::size_t>(plan.Count); ++k)
        if (!AllFinite(block.Column[k].data(), block.Count)) return false;
    return true;
}

void StoreSignals(bool inUse) {
    StoreInUse = inUse;
    for (SignalStore* store : {&StoreA, &StoreB}) {
        *store = SignalStore{};
        if (inUse) store->Values.resize(static_cast<std::size_t>(Work.NumPts) + 1);
    }
}

} // namespace Quillon

// The passes over all points: normal equations, sum of squares.
#include "fit/Sums.h"
#include "fit/FitProgress.h"
#include "fit/equations/NoiseWeights.h"
#include "fit/equations/Products.h"
#include "models/SEDEQ3.h"
#include "platform/Platform.h"
#include "platform/VectorWidth.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// What a pass works in. One for each thread, so that fits on several do not meet.
struct PassScratch {
    SetPlan Plan;
    PointBlock Block;
    double Weight = 1.0; // of the set's residuals
    std::array<double, BlockPoints> Residual;
    ProductSums Sums;
};
static_assert(BlockPoints <= ProductPoints && BlockColumns <= ProductColumns);

PassScratch& Scratch() {
    thread_local PassScratch scratch;
    return scratch;
}

void PrepareSums() {
    const long last = Work.NumFree - 1;
    Work.PtFit.Resize(Work.NumPts);
    Work.NormVector.Recreate(last);
    Work.NormMatrix.Recreate(last, last);
    Work.SumSq = 0.0;
}

// Above this the sum of squares is looked into: a fitted value may have left the range of a single, whose
// square is 1e77, and does not hide below the sum of a few thousand smaller ones.
constexpr double SuspiciousSum = 1e70;

// Fitted values and residuals, then the sum of squares, point after point. Nearly all fits weigh all sets
// alike: their pass has no product for it.
template <bool Weighed> void AddSquares(PassScratch& s) {
    const long n = s.Block.Count;
    Workspace& w = Work; // the thread's own is looked up once
    float* fit = w.PtFit.Data() + (s.Block.First - 1);
    const float* y = w.PtY.Data() + (s.Block.First - 1);
    const double* value = s.Block.Value.data();
    double* residual = s.Residual.data();
    const double weight = s.Weight;
    OnVectors([=] {
        for (long i = 0; i < n; ++i) {
            double r = static_cast<double>(y[i]) - value[i];
            if constexpr (Weighed) r *= weight;
            fit[i] = static_cast<float>(value[i]);
            residual[i] = r;
        }
    });
    double sum = w.SumSq;
    for (long i = 0; i < n; ++i)
        sum += residual[i] * residual[i];
    w.SumSq = sum;
}

// Notes a fault of the function in its own words; any other number out of range is an overflow of the sums.
void LookForFault(const PassScratch& s) {
    if (!BlockIsFinite(s.Block, s.Plan)) return NoteFunctionError(ErrorText::Overflow);
    for (long i = 0; i < s.Block.Count; ++i)
        if (!std::isfinite(Work.PtFit[s.Block.First + i])) RaiseError(ErrorText::Overflow);
    if (!std::isfinite(Work.SumSq)) RaiseError(ErrorText::Overflow);
}

ProductOperands OperandsOf(const PassScratch& s) {
    ProductOperands operands;
    operands.Count = s.Plan.Count;
    operands.Points = s.Block.Count;
    for (std::size_t c = 0; c < static_cast<std::size_t>(s.Plan.Count); ++c)
        operands.Column[c] = s.Block.Column[c].data();
    operands.Last = s.Residual.data();
    return operands;
}

// Calls with(sum of the block, element of the workspace) for each sum that the set adds to.
template <class Use> void ForSums(PassScratch& s, Use&& with) {
    Workspace& w = Work; // the thread's own is looked up once
    const auto count = static_cast<std::size_t>(s.Plan.Count);
    for (std::size_t a = 0; a < count; ++a) {
        const FreePos row = s.Plan.FreePosition[a];
        with(s.Sums[count][a], w.NormVector[row]);
        for (std::size_t b = 0; b <= a; ++b)
            with(s.Sums[a][b], w.NormMatrix(row, s.Plan.FreePosition[b]));
    }
}

bool DiagonalIsFinite(const PassScratch& s) {
    for (std::size_t a = 0; a < static_cast<std::size_t>(s.Plan.Count); ++a)
        if (!std::isfinite(s.Sums[a][a])) return false;
    return true;
}

// The block's share of the normal equations, D^T D and D^T r with D the derivatives of the fitted values by
// the parameters and r the residuals (Bevington, section 11-5). While the diagonal is finite, so is
// everything else: no product of two columns sums up to more than the columns with themselves. Pairs with a
// derivative that is zero by construction would add nothing but zeros, which leave a sum that started at 0 as
// it is.
void AddNormalEquations(PassScratch& s) {
    ForSums(s, [](double& sum, const double& element) { sum = element; });
    AddProducts(s.Sums, OperandsOf(s));
    ForSums(s, [](const double& sum, double& element) { element = sum; });
    if (DiagonalIsFinite(s)) return;
    LookForFault(s);
    if (!Work.AbortFit) RaiseError(ErrorText::Overflow);
}

// The derivatives have the weight of the residuals.
void WeighColumns(PassScratch& s) {
    if (s.Weight == 1.0) return;
    for (int c = 0; c < s.Plan.Count; ++c)
        for (long i = 0; i < s.Block.Count; ++i)
            s.Block.Column[static_cast<std::size_t>(c)][static_cast<std::size_t>(i)] *= s.Weight;
}

void AddBlock(PassScratch& s, bool withDerivs) {
    if (s.Weight == 1.0)
        AddSquares<false>(s);
    else
        AddSquares<true>(s);
    if (withDerivs) WeighColumns(s);
    if (!(Work.SumSq < SuspiciousSum)) LookForFault(s);
    if (withDerivs && !Work.AbortFit) AddNormalEquations(s);
}

// The points of one set from first on, and how many of them are true points.
struct SetRun {
    long First, TrueLast, Last;
};
// The last point of the set that begins at first: where the table of data sets says, as far as the points do.
long LastOfSet(const Workspace& w, long first) {
    const std::int16_t set = w.PtSet[first];
    const long told = set >= 1 && set <= w.SetPts.Hi() ? first + w.SetPts[SetNo(set)] - 1 : first;
    long last = told > first && told <= w.NumPts && w.PtSet[told] == set ? told : first;
    while (last < w.NumPts && w.PtSet[last + 1] == set)
        ++last;
    return last;
}
SetRun RunFrom(long first) {
    const Workspace& w = Work; // the thread's own is looked up once
    const long last = LastOfSet(w, first);
    long trueLast = last;
    while (trueLast >= first && w.PtX[trueLast] == PointMarker)
        --trueLast;
    return {first, trueLast, last};
}

// Points until the queue is served next, p itself included, when it is served before the points with
// (point - from) divisible by the interval.
long PointsToYield(long p, long from) {
    if (Work.YieldInterval == 0) RaiseError(ErrorText::DivisionByZero);
    const long interval = std::abs(static_cast<long>(Work.YieldInterval));
    const long since = (p - from) % interval;
    if (since == 0) Host.ServeEvents();
    return interval - since;
}

void PassOverSet(PassScratch& s, const SetRun& run, bool withDerivs) {
    const Workspace& w = Work; // the thread's own is looked up once
    PlanSet(s.Plan, SetOfPoint(run.First), withDerivs);
    s.Weight = NoiseWeight(SetOfPoint(run.First));
    for (long p = run.First; p <= run.Last; p += s.Block.Count) {
        if (w.AbortFit) return;
        const long toYield = PointsToYield(p, withDerivs ? 1 : 0);
        if (w.AbortFit) return;
        const long here = p <= run.TrueLast ? run.TrueLast - p + 1 : 1;
        EvaluateBlock(s.Block, s.Plan, p, std::min({here, toYield, BlockPoints}));
        if (w.AbortFit) return;
        AddBlock(s, withDerivs);
    }
}

void PassOverPoints(bool withDerivs) {
    PassScratch& scratch = Scratch();
    for (long p = 1; p <= Work.NumPts;) {
        const SetRun run = RunFrom(p);
        PassOverSet(scratch, run, withDerivs);
        if (Work.AbortFit) return;
        p = run.Last + 1;
    }
}

void PassPlainly() {
    for (long p = 1; p <= Work.NumPts; ++p) {
        if (Work.AbortFit) return;
        if ((p - 1) % Work.YieldInterval == 0) Host.ServeEvents();
        const double y = FitFunction(p);
        if (Work.AbortFit) return;
        Work.PtFit[p] = ToSingle(y);
        const double weight = NoiseWeight(SetOfPoint(p));
        const double r = weight * (static_cast<double>(Work.PtY[p]) - y);
        Work.SumSq += r * r;
        CalcDerivs(p, y);
        if (weight != 1.0)
            for (const FreePos a : EachFree())
                Work.Deriv[a] *= weight;
        for (const FreePos a : EachFree()) {
            Work.NormVector[a] += r * Work.Deriv[a];
            for (FreePos b(0); b <= a; ++b)
                Work.NormMatrix(a, b) += Work.Deriv[a] * Work.Deriv[b];
            if (!std::isfinite(Work.NormMatrix(a, a))) RaiseError(ErrorText::Overflow);
        }
    }
}

// Runs a pass with FitValid down meanwhile; an arithmetic or run-time error concludes the fit.
template <class Pass> void GuardedPass(Pass&& pass) {
    Work.FitValid = FlagFalse;
    ResetConstraintSums();
    try {
        pass();
    } catch (const RuntimeError& error) {
        Work.Outcome = {FitEnd::MathError, "Math Error during sums over data points, aborting fit",
                        error.Text + "."};
        StopAsFailed();
    }
    if (Work.AbortFit)
        ResetConstraintSums();
    else
        Work.FitValid = FlagTrue;
}

void CopyLowerTriangle() {
    ZeroBasedMatrix<double>& matrix = Work.NormMatrix;
    for (const FreePos a : EachFree())
        for (FreePos b(0); b < a; ++b)
            matrix(b, a) = matrix(a, b);
}

} // namespace

void AccumulateSums() {
    PrepareSums();
    ReportPhase(FitPhase::Sums);
    GuardedPass([] { PassOverPoints(true); });
    if (!Work.AbortFit) CopyLowerTriangle();
}

void AccumulateSumsPlainly() {
    PrepareSums();
    GuardedPass([] { PassPlainly(); });
    if (!Work.AbortFit) CopyLowerTriangle();
}

void CalcSumSq() {
    Work.PtFit.Resize(Work.NumPts);
    Work.SumSq = 0.0;
    GuardedPass([] { PassOverPoints(false); });
}

void CalcResiduals() {
    Workspace& w = Work; // the thread's own is looked up once
    w.PtResid.Recreate(w.NumPts);
    for (long p = 1; p <= w.NumPts; ++p)
        w.PtResid[p] = w.PtY[p] - w.PtFit[p];
}

} // namespace Quillon

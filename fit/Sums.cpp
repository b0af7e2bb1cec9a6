// The passes over all points: normal equations, sum of squares.
#include "fit/FitMon.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

SetPlan Plan;
PointBlock Block;
std::array<double, BlockPoints> Residual;

void PrepareSums() {
    const long last = Work.NumFree - 1;
    Work.PtFit.Recreate(Work.NumPts);
    Work.NormVector.Recreate(last);
    Work.NormMatrix.Recreate(last, last);
    Work.SumSq = 0.0;
}

// One row of the normal equations: sum[j] += x * columns[j], point after point, so that each sum grows in the
// order of the points whatever else is done beside it.
template <int Width>
void AddProducts(const double* x, const std::array<const double*, 4>& columns, long n, double* const* sums) {
    std::array<double, Width> sum;
    for (std::size_t j = 0; j < Width; ++j)
        sum[j] = *sums[j];
    for (long i = 0; i < n; ++i)
        for (std::size_t j = 0; j < Width; ++j)
            sum[j] += x[i] * columns[j][i];
    for (std::size_t j = 0; j < Width; ++j)
        *sums[j] = sum[j];
}

// Products of x with the plan's first count columns into target(column).
template <class Target> void AddRow(const double* x, int count, long n, Target&& target) {
    for (int first = 0; first < count; first += 4) {
        std::array<const double*, 4> columns{};
        std::array<double*, 4> sums{};
        const int width = std::min(4, count - first);
        for (int j = 0; j < width; ++j) {
            columns[static_cast<std::size_t>(j)] = Block.Column[static_cast<std::size_t>(first + j)].data();
            sums[static_cast<std::size_t>(j)] = &target(static_cast<std::size_t>(first + j));
        }
        switch (width) {
        case 4:
            AddProducts<4>(x, columns, n, sums.data());
            break;
        case 3:
            AddProducts<3>(x, columns, n, sums.data());
            break;
        case 2:
            AddProducts<2>(x, columns, n, sums.data());
            break;
        default:
            AddProducts<1>(x, columns, n, sums.data());
            break;
        }
    }
}

// Above this the sum of squares is looked into: a fitted value may have left the range of a single.
constexpr double SuspiciousSum = 1e70;

// Fitted values, residuals and the sum of squares, point after point.
void AddSquares() {
    const long n = Block.Count;
    float* fit = Work.PtFit.Data() + (Block.First - 1);
    const float* y = Work.PtY.Data() + (Block.First - 1);
    double sum = Work.SumSq;
    for (long i = 0; i < n; ++i) {
        const double value = Block.Value[static_cast<std::size_t>(i)];
        const double r = static_cast<double>(y[i]) - value;
        fit[i] = static_cast<float>(value);
        Residual[static_cast<std::size_t>(i)] = r;
        sum += r * r;
    }
    Work.SumSq = sum;
}

// Tells a fault of the function in its own words; any other number out of range is an overflow of the sums.
void LookForFault() {
    if (!BlockIsFinite(Block, Plan)) return TellFunctionError();
    for (long i = 0; i < Block.Count; ++i)
        if (!std::isfinite(Work.PtFit[Block.First + i])) RaiseError(ErrorText::Overflow);
    if (!std::isfinite(Work.SumSq)) RaiseError(ErrorText::Overflow);
}

// The block's share of the normal equations. While the diagonal is finite, so is everything else: no product
// of two columns sums up to more than the columns with themselves. Pairs with a derivative that is zero by
// construction would add nothing but zeros, which leave a sum that started at 0 as it is.
void AddNormalEquations() {
    const long n = Block.Count;
    AddRow(Residual.data(), Plan.Count, n,
           [](std::size_t c) -> double& { return Work.NormVector[Plan.FreePosition[c]]; });
    for (int a = 0; a < Plan.Count; ++a) {
        const long row = Plan.FreePosition[static_cast<std::size_t>(a)];
        AddRow(Block.Column[static_cast<std::size_t>(a)].data(), a + 1, n,
               [row](std::size_t c) -> double& { return Work.NormMatrix(row, Plan.FreePosition[c]); });
        if (std::isfinite(Work.NormMatrix(row, row))) continue;
        LookForFault();
        if (!Work.AbortFit) RaiseError(ErrorText::Overflow);
        return;
    }
}

void AddBlock(bool withDerivs) {
    AddSquares();
    if (!(Work.SumSq < SuspiciousSum)) LookForFault();
    if (withDerivs && !Work.AbortFit) AddNormalEquations();
}

// The points of one set from first on, and how many of them are true points.
struct SetRun {
    long First, TrueLast, Last;
};
SetRun RunFrom(long first) {
    long last = first;
    while (last < Work.NumPts && Work.PtSet[last + 1] == Work.PtSet[first])
        ++last;
    long trueLast = last;
    while (trueLast >= first && Work.PtX[trueLast] == PointMarker)
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

void PassOverSet(const SetRun& run, bool withDerivs) {
    PlanSet(Plan, Work.PtSet[run.First], withDerivs);
    for (long p = run.First; p <= run.Last; p += Block.Count) {
        if (Work.AbortFit) return;
        const long toYield = PointsToYield(p, withDerivs ? 1 : 0);
        if (Work.AbortFit) return;
        const long here = p <= run.TrueLast ? run.TrueLast - p + 1 : 1;
        EvaluateBlock(Block, Plan, p, std::min({here, toYield, BlockPoints}));
        if (Work.AbortFit) return;
        AddBlock(withDerivs);
    }
}

void PassOverPoints(bool withDerivs) {
    for (long p = 1; p <= Work.NumPts;) {
        const SetRun run = RunFrom(p);
        PassOverSet(run, withDerivs);
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
        const double r = static_cast<double>(Work.PtY[p]) - y;
        Work.SumSq += r * r;
        CalcDerivs(p, y);
        for (long a = 0; a < Work.NumFree; ++a) {
            Work.NormVector[a] += r * Work.Deriv[a];
            for (long b = 0; b <= a; ++b)
                Work.NormMatrix(a, b) += Work.Deriv[a] * Work.Deriv[b];
            if (!std::isfinite(Work.NormMatrix(a, a))) RaiseError(ErrorText::Overflow);
        }
    }
}

// Runs a pass with FitValid down meanwhile; an arithmetic or run-time error is told and ends the fit.
template <class Pass> void GuardedPass(Pass&& pass) {
    Work.FitValid = FlagFalse;
    ResetConstraintSums();
    try {
        pass();
    } catch (const RuntimeError&) {
        Tell("Math Error during sums over data points, aborting fit", Work.ProgramName, BoxIcon::Stop);
        Work.AbortFit = Work.FunctionFailed = FlagTrue;
    }
    if (Work.AbortFit)
        ResetConstraintSums();
    else
        Work.FitValid = FlagTrue;
}

void CopyLowerTriangle() {
    for (long a = 1; a < Work.NumFree; ++a)
        for (long b = 0; b < a; ++b)
            Work.NormMatrix(b, a) = Work.NormMatrix(a, b);
}

} // namespace

void AccumulateSums() {
    PrepareSums();
    MonitorStatus("Accumulating Sums");
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

} // namespace Quillon

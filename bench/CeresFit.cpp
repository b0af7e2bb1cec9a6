// quillon-fit with its solver exchanged for Ceres when it is linked: the same command line, job, scans,
// guesses and outputs, and the same normal matrix at the end for the errors. What the process benchmark
// compares against. For model 4 and 8 with sets of equal size, everything but the masses of model 8 fitted.
#include "bench/PeerCeres.h"
#include "bench/Problem.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "models/function/FitFunction.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

#include <cmath>

namespace Quillon::Bench {

// Stands in for RunFit: the linker binds it to the calls (--wrap).
bool FitWithCeres(const FitProgress& progress) __asm__("__wrap__ZN7Quillon6RunFitERKNS_11FitProgressE");

namespace {

constexpr float Nothing = -80.0F; // a logarithm whose exponential does not count

// The model's signal at a point, with the parameters that are given in place of its own.
double SignalAt(long point, float lnA, float lnB, float lnK) {
    const long set = Work.PtSet[point];
    Work.Parms[6] = lnK;
    Work.Parms[SlotA(set)] = lnA;
    Work.Parms[SlotB(set)] = lnB;
    Work.Parms[SlotOffset(set)] = 0.0F;
    ResetFitFunction();
    return FitFunction(point);
}

// The factors of a, b and a b in a set's signal: the function is linear in them.
void ReadFactors(Problem& p) {
    const auto parms = Work.Parms;
    for (long s = 1, point = 1; s <= p.Sets; ++s, point += p.PointsPerSet) {
        const double x = static_cast<double>(Work.PtX[point]) * p.SigmaScale[static_cast<std::size_t>(s - 1)];
        const double a = SignalAt(point, 0.0F, Nothing, Nothing);
        const double b = SignalAt(point, Nothing, 0.0F, Nothing);
        const double all = SignalAt(point, 0.0F, 0.0F, 0.0F);
        p.ScaleA.push_back(a / std::exp(x * p.SigmaA));
        p.ScaleB.push_back(b / std::exp(x * p.SigmaB));
        p.SignalAB.push_back((all - a - b) / std::exp(x * (p.SigmaA + p.SigmaB)));
    }
    Work.Parms = parms;
    ResetFitFunction();
}

std::vector<std::int16_t> FittedSlots() {
    std::vector<std::int16_t> slots;
    for (long i = 0; i < Work.NumFree; ++i)
        slots.push_back(Work.FreeIndex[i]);
    return slots;
}

Problem ProblemOfWorkspace() {
    Problem p;
    if (Work.Model != 4 && Work.Model != 8) RaiseError("model 4 or 8 alone");
    p.Kind = Work.Model == 4 ? Association::DimerTetramer : Association::Complex;
    p.Sets = Work.NumSets;
    p.PointsPerSet = Work.SetPts[1];
    p.Globals = Work.Model == 4 ? 3 : 1;
    p.PerSet = Work.Model == 4 ? 2 : 3;
    if (Work.NumPts != p.Points() || Work.NumFree != p.Parameters())
        RaiseError("sets of equal size with all of the model fitted alone");
    p.SigmaA = static_cast<double>(Work.Parms[0]);
    p.SigmaB = static_cast<double>(Work.Parms[5]);
    for (long s = 1; s <= p.Sets; ++s)
        p.SigmaScale.push_back(static_cast<double>(Work.SetSigmaScale[s]));
    p.X.assign(&Work.PtX[1], &Work.PtX[1] + Work.NumPts);
    p.Y.assign(&Work.PtY[1], &Work.PtY[1] + Work.NumPts);
    if (Work.Model == 8) ReadFactors(p);
    for (const std::int16_t slot : FittedSlots())
        p.Start.push_back(static_cast<double>(Work.Parms[slot]));
    return p;
}

} // namespace

bool FitWithCeres(const FitProgress&) {
    Work.AtBound.Recreate(Work.NumFree);
    const Problem p = ProblemOfWorkspace();
    const Solution found = RunCeresAnalytic(p, "dogleg"); // from raw guesses half the steps of the others
    for (std::size_t i = 0; i < found.Parameters.size(); ++i)
        Work.Parms[Work.FreeIndex[static_cast<long>(i)]] = static_cast<float>(found.Parameters[i]);
    Work.Iteration = ToInt16(found.Iterations);
    ResetFitFunction();
    AccumulateSums();
    InvertNormalMatrix();
    Work.RmsResidual = static_cast<float>(std::sqrt(Work.SumSq / (Work.NumPts - Work.NumFree)));
    BuildParmScale();
    Work.Outcome = {FitEnd::Converged, ""};
    Work.FitDone = FlagTrue;
    return true;
}

} // namespace Quillon::Bench

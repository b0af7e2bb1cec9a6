#include "studies/methods/ProfileBase.h"

#include "fit/GNLLSQ.h"
#include "models/function/FitFunction.h"
#include "studies/methods/Copies.h"
#include "studies/methods/HeldFit.h"

namespace Quillon {

namespace {

constexpr int MostMinima = 5; // a minimum below a minimum below a minimum

// Down from Work.Parms with everything fitted that the user has fitted.
std::optional<ProfileBase> BaseFromHere() {
    FitFinely();
    const PerSlot<float> start = Work.Parms;
    const HeldEnd end = FitOthers(true);
    if (!end.Ended) return std::nullopt;
    if (!end.Converged) { // the fit that stands is as good as it gets
        Work.Parms = start;
        ResetFitFunction();
        CalcSumSq();
    }
    return ProfileBase{Work, Work.SumSq, Work.NumPts - Work.NumFree};
}

// The base of the user's own fit, or of a better place. Where there is none broken is why, "" after a cancel.
std::optional<ProfileBase> FindBase(const PerSlot<float>* place, std::string& broken) {
    std::optional<ProfileBase> base;
    const CopiesEnd end = RunOnCopies(1, 1,
                                      [&](long) {
                                          if (place) Work.Parms = *place;
                                          base = BaseFromHere();
                                      },
                                      {});
    broken = end.Reason;
    return base;
}

// The fit of a base as one that the user may take.
Workspace BetterFit(const ProfileBase& base) {
    Workspace fit = base.Fit;
    fit.ConvergenceLimit = Work.ConvergenceLimit;
    fit.MaxIterations = Work.MaxIterations;
    return fit;
}

} // namespace

double SumClearlyBelow(double minimumSumSq, long freedom) {
    constexpr double Rest = 0.05; // of a degree of freedom's share
    return minimumSumSq * (1.0 - Rest / static_cast<double>(freedom));
}

bool IsLower(const ProfileBase& base, double sumSq) {
    return sumSq < SumClearlyBelow(base.SumSq, base.Freedom);
}

std::optional<ProfileBase> WithBestBase(std::optional<Workspace>& better, std::string& broken,
                                        const StudyFromBase& study) {
    std::optional<ProfileBase> base = FindBase(nullptr, broken);
    if (base && base->SumSq < Work.SumSq * (1.0 - 1.0 / static_cast<double>(base->Freedom)))
        better = BetterFit(*base);
    std::string unreached; // a place that leads nowhere leaves the base that there is
    for (int i = 0; base && i < MostMinima; ++i) {
        const std::optional<PerSlot<float>> lower = study(*base, i + 1 == MostMinima);
        if (!lower) break;
        const std::optional<ProfileBase> next = FindBase(&*lower, unreached);
        if (!next || !IsLower(*base, next->SumSq)) break;
        base = next;
        better = BetterFit(*base);
    }
    return base;
}

} // namespace Quillon

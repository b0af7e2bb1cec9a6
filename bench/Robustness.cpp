// The tables of docs/robustness.md: fits from starting values that are far off, plain and with the damped
// search behind them, and where they end.
//
//     robustness [--seeds N] [--case NAME] [--mixtures N] [--restarts N] [-v]
#include "tests/fit/Robustness.h"
#include "fit/GNLLSQ.h"
#include "platform/QuietPlatform.h"
#include "studies/methods/OtherMinima.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <utility>

namespace Quillon {
namespace {

// Of the processor: other programs that run beside this one do not count.
double Seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

bool Verbose = false;
long Restarts = 0; // behind each fit of the table of models

// Where the fits of a row of the table have ended.
struct Tally {
    int Runs = 0, Plain = 0, Minimum = 0, Other = 0, False = 0, Told = 0;
    int Restarted = 0; // at the minimum with restarts
    int Rescues = 0;
    double NearTime = 0.0;   // of plain fits of the same problem from an ordinary start, for each rescue
    double RescueTime = 0.0; // of the search behind the first fit
    double LookTime = 0.0;   // of the look for a lower minimum behind fits that converged
    double LookNearTime = 0.0;

    void Add(const Tally& t) {
        Runs += t.Runs, Plain += t.Plain, Minimum += t.Minimum, Other += t.Other, False += t.False;
        Told += t.Told, Restarted += t.Restarted, Rescues += t.Rescues, NearTime += t.NearTime,
            RescueTime += t.RescueTime, LookTime += t.LookTime, LookNearTime += t.LookNearTime;
    }
    void Count(Stand stand) {
        ++(stand == Stand::Minimum        ? Minimum
           : stand == Stand::OtherMinimum ? Other
           : stand == Stand::FalseStop    ? False
                                          : Told);
    }
};

void PrintHead() {
    std::printf("| | runs | minimum, plain | minimum | %% | another minimum | told to be none | "
                "\"converged\" elsewhere | cost | look |\n|---|---|---|---|---|---|---|---|---|---|\n");
}

void PrintRow(const char* name, const Tally& t) {
    std::printf("| %s | %d | %d | %d | %.1f | %d | %d | %d | ", name, t.Runs, t.Plain, t.Minimum,
                100.0 * t.Minimum / t.Runs, t.Other, t.Told, t.False);
    for (const auto& [time, near] : {std::pair{t.RescueTime, t.NearTime}, {t.LookTime, t.LookNearTime}})
        near > 0.0 ? std::printf("%.2f |", time / near) : std::printf("|");
    std::printf("\n");
    if (Restarts > 0)
        std::printf("    with %ld restarts %d at the minimum, %.2f%%\n", Restarts, t.Restarted,
                    100.0 * t.Restarted / t.Runs);
    std::fflush(stdout);
}

double TimeOf(const auto& work) {
    const double start = Seconds();
    work();
    return Seconds() - start;
}

// The fit from the start in Work, and the damped search behind it where it says that it is no minimum.
void FitAndCount(double least, double nearTime, Tally& t, const char* name) {
    const PerSlot<float> start = Work.Parms;
    ++t.Runs;
    RunFit();
    const FitOutcome first = Work.Outcome;
    if (StandOfFit(least) == Stand::Minimum) ++t.Plain;
    if (first.End != FitEnd::Converged) {
        ClearCancel();
        const double took = TimeOf([&] { RescueFit(start); });
        if (nearTime > 0.0) ++t.Rescues, t.NearTime += nearTime, t.RescueTime += took;
    }
    if (Work.Outcome.End == FitEnd::Converged) {
        std::optional<Workspace> lower;
        const double took = TimeOf([&] { lower = FindLowerMinimum(start); });
        if (lower) Work = *lower;
        if (nearTime > 0.0) t.LookNearTime += nearTime, t.LookTime += took;
    }
    const Stand stand = StandOfFit(least);
    t.Count(stand);
    if (Verbose && stand != Stand::Minimum)
        std::printf("    %s: first '%s', then %s '%s' %s, sum over least %.6g\n", name,
                    first.Sentence.c_str(), StandName(stand), Work.Outcome.Sentence.c_str(),
                    Work.Outcome.Reason.c_str(), Work.SumSq / least);
}

// The fit that stands and restarts around its start: whether the lowest minimum is that of the truth.
void RestartAndCount(const PerSlot<float>& start, double least, std::uint64_t seed, Tally& t,
                     const char* name) {
    if (Restarts == 0) return;
    ClearCancel();
    Work.StartParms = start;
    const MinimaMet met = SearchOtherMinima({Restarts, seed}, [](long) {});
    const bool reached = !met.Minima.empty() && met.Minima.front().Fit.SumSq <= 1.001 * least;
    if (reached) ++t.Restarted;
    if (Verbose && !reached) std::printf("    %s: missed with restarts\n", name);
}

// What a plain fit of the same problem costs from an ordinary start, ln K off by up to 1; 0 where it does not
// converge. Work is as before.
double TimeOfPlainFit(std::uint64_t seed) {
    const Workspace kept = Work;
    StartFarOff(1.0, seed);
    const double took = TimeOf([] { RunFit(); });
    const bool converged = Work.Outcome.End == FitEnd::Converged;
    Work = kept;
    return converged ? took : 0.0;
}

Tally FarOff(const std::string& name, double reach, int seeds) {
    Tally t;
    for (int seed = 1; seed <= seeds; ++seed) {
        const auto s = static_cast<std::uint64_t>(seed);
        LoadRobustnessCase(ModelCaseNamed(name), s);
        const double least = static_cast<double>(FitReference(Work).End.SumSq);
        const double nearTime = TimeOfPlainFit(s);
        StartFarOff(reach, s * 1000 + static_cast<std::uint64_t>(reach));
        const PerSlot<float> start = Work.Parms;
        FitAndCount(least, nearTime, t, name.c_str());
        RestartAndCount(start, least, s, t, name.c_str());
    }
    return t;
}

void TableOfModels(const std::string& only, int seeds) {
    for (const double reach : {3.0, 6.0}) {
        std::printf("\nln K off by +-%.0f\n\n", reach);
        PrintHead();
        Tally all;
        for (const std::string& name : RobustnessCases()) {
            if (!only.empty() && name != only) continue;
            const Tally t = FarOff(name, reach, seeds);
            PrintRow(name.c_str(), t);
            all.Add(t);
        }
        PrintRow("**all**", all);
    }
}

// The lowest sum of a mixture: that of the fit which starts at the truth.
double LeastOfMixture() {
    const Workspace kept = Work;
    RunFit();
    if (Work.Outcome.End != FitEnd::Converged) RescueFit(kept.Parms);
    const double least = Work.SumSq;
    Work = kept;
    return least;
}

void TableOfMixtures(int draws) {
    for (const Mixture& m : {Mixture{8, 1}, Mixture{8, 2}, Mixture{8, 2, true}, Mixture{9, 1}, Mixture{9, 2},
                             Mixture{9, 2, true}, Mixture{11, 1}, Mixture{11, 2}, Mixture{11, 2, true}}) {
        Tally t;
        std::vector<double> errors, off;
        const std::string name = "model " + std::to_string(m.Model) + ", " + std::to_string(m.Wavelengths) +
                                 (m.Wavelengths == 1 ? " wavelength" : " wavelengths") +
                                 (m.Shared ? ", shared" : "");
        for (int draw = 1; draw <= draws; ++draw) {
            LoadMixture(m, static_cast<std::uint64_t>(draw));
            const double least = LeastOfMixture();
            const double nearTime = TimeOfPlainFit(static_cast<std::uint64_t>(draw));
            const float truth = Work.Parms[6];
            StartFromDefaults();
            FitAndCount(least, nearTime, t, name.c_str());
            if (Work.Outcome.End != FitEnd::Converged) continue;
            const double variance = std::fabs(Work.NormMatrix(Work.FreeMap[6], Work.FreeMap[6]));
            if (variance > 0.0) errors.push_back(std::sqrt(variance) * static_cast<double>(Work.RmsResidual));
            off.push_back(std::fabs(static_cast<double>(Work.Parms[6] - truth)));
        }
        PrintRow(name.c_str(), t);
        std::sort(errors.begin(), errors.end());
        std::sort(off.begin(), off.end());
        if (!errors.empty())
            std::printf("    median error of ln K %.3g, median distance from the truth %.3g\n",
                        errors[errors.size() / 2], off[off.size() / 2]);
    }
}

void Quiet() {
    InstallPlatform(QuietPlatform());
}

} // namespace
} // namespace Quillon

int main(int argc, char** argv) {
    using namespace Quillon;
    int seeds = 10, mixtures = 100;
    std::string only;
    for (int i = 1; i < argc; ++i) {
        const auto is = [&](const char* option) { return i + 1 < argc && !std::strcmp(argv[i], option); };
        if (is("--seeds"))
            seeds = std::atoi(argv[++i]);
        else if (is("--mixtures"))
            mixtures = std::atoi(argv[++i]);
        else if (is("--restarts"))
            Restarts = std::atol(argv[++i]);
        else if (is("--case"))
            only = argv[++i];
        else if (!std::strcmp(argv[i], "-v"))
            Verbose = true;
    }
    Quiet();
    if (seeds > 0) TableOfModels(only, seeds);
    if (mixtures > 0) {
        std::printf("\nMixtures of a protein and a DNA from default guesses\n\n");
        PrintHead();
        TableOfMixtures(mixtures);
    }
}

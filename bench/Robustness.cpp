// The table of docs/robustness.md: for every case, fits from starting values that are far off, plain, with
// the damped search and with restarts, and where they end.
//
//     robustness [--seeds N] [--case NAME]
#include "Robustness.h"

#include "fit/GNLLSQ.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

namespace Quillon {
namespace {

double Seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Tally {
    int Runs = 0, Plain = 0, Rescued = 0, Other = 0, False = 0, Told = 0, Changed = 0;
    double PlainTime = 0, RescueTime = 0;
    int Rescues = 0;
};

bool Verbose = false;

void RunOne(const ModelCase& c, double reach, std::uint64_t seed, Tally& t) {
    LoadRobustnessCase(c, seed);
    double least = 0;
    {
        const Workspace truth = Work;
        least = static_cast<double>(FitReference(truth).End.SumSq);
    }
    StartFarOff(reach, seed * 1000 + static_cast<std::uint64_t>(reach));
    const PerSlot<float> start = Work.Parms;
    ++t.Runs;
    double t0 = Seconds();
    RunFit();
    t.PlainTime += Seconds() - t0;
    const FitOutcome first = Work.Outcome;
    const Stand plain = StandOfFit(least);
    if (plain == Stand::Minimum) ++t.Plain;
    if (Work.Outcome.End != FitEnd::Converged) {
        Work.AbortFit = FlagFalse;
        t0 = Seconds();
        RescueFit(start);
        t.RescueTime += Seconds() - t0;
        ++t.Rescues;
    }
    const Stand stand = StandOfFit(least);
    if (stand == Stand::Minimum) ++t.Rescued;
    if (stand == Stand::OtherMinimum) ++t.Other;
    if (stand == Stand::FalseStop) ++t.False;
    if (stand == Stand::Told) ++t.Told;
    if (Verbose && stand != Stand::Minimum)
        std::printf("   %s reach %.0f seed %d: first '%s' d=%.3g, then %s '%s' d=%.3g, sum/least %.6g  %s\n",
                    c.Name.c_str(), reach, static_cast<int>(seed), first.Sentence.c_str(),
                    first.ExpectedDecrease.value_or(-1), StandName(stand), Work.Outcome.Sentence.c_str(),
                    Work.Outcome.ExpectedDecrease.value_or(-1), Work.SumSq / least,
                    Work.Outcome.Reason.c_str());
}

void Quiet() {
    Platform quiet;
    quiet.MessageBoxAnswer = [](const BoxRequest& r) {
        return r.Buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
    };
    quiet.ReadFile = [](const std::string&) { return std::string{}; };
    quiet.WriteFile = [](const std::string&, const std::string&) {};
    quiet.FileExists = quiet.DirectoryExists = [](const std::string&) { return false; };
    quiet.Clock = [] { return ClockTime{}; };
    quiet.Uniform = [] { return 0.5F; };
    InstallPlatform(quiet);
}

} // namespace
} // namespace Quillon

int main(int argc, char** argv) {
    using namespace Quillon;
    int seeds = 10;
    std::string only;
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--seeds"))
            seeds = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--case"))
            only = argv[++i];
        else if (!std::strcmp(argv[i], "-v"))
            Verbose = true;
    }
    Quiet();
    for (const double reach : {3.0, 6.0}) {
        Tally all;
        for (const std::string& name : RobustnessCases()) {
            if (!only.empty() && name != only) continue;
            Tally t;
            for (int s = 1; s <= seeds; ++s)
                RunOne(ModelCaseNamed(name), reach, static_cast<std::uint64_t>(s), t);
            std::printf("%-24s +-%.0f runs %d plain %d rescued %d other %d false %d told %d  plain %.1f ms "
                        "rescue %.1f ms\n",
                        name.c_str(), reach, t.Runs, t.Plain, t.Rescued, t.Other, t.False, t.Told,
                        1e3 * t.PlainTime / t.Runs, t.Rescues ? 1e3 * t.RescueTime / t.Rescues : 0.0);
            std::fflush(stdout);
            all.Runs += t.Runs;
            all.Plain += t.Plain;
            all.Rescued += t.Rescued;
            all.Other += t.Other;
            all.False += t.False;
            all.Told += t.Told;
        }
        std::printf("ALL +-%.0f: runs %d plain %d (%.1f%%) rescued %d (%.1f%%) other %d false %d told %d\n\n",
                    reach, all.Runs, all.Plain, 100.0 * all.Plain / all.Runs, all.Rescued,
                    100.0 * all.Rescued / all.Runs, all.Other, all.False, all.Told);
    }
}

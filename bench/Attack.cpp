// An attack on the word "converged": random experiments of every model and option, fitted from random starts
// as a job does it, each end held against a dense search in long double: from the truth, or from where the
// program's own fit from the truth has ended, which takes a quarter of the time.
//
//     attack [--seconds N] [--seed N] [--case PREFIX] [--right] [--own] [-v]
//
// --seconds are those of its own processor time. Ended early (SIGTERM, SIGINT) it finishes the experiment and
// tells its counts. --right starts at the truth, for the remarks on fits that are right. --own holds the ends
// against the program's own fit from the truth alone: a hundred times as many experiments.
#include "fit/GNLLSQ.h"
#include "fit/Misfit.h"
#include "fit/equations/NormalEquations.h"
#include "platform/QuietPlatform.h"
#include "tests/fit/Robustness.h"
#include "tests/support/ReferenceModel.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <optional>
#include <string>

namespace Quillon {
namespace {

struct Choice {
    double Seconds = 60.0;
    std::uint64_t Seed = 1;
    std::string Case;
    bool Right = false;
    bool Own = false;
    bool Verbose = false;
};
Choice Chosen;

volatile std::sig_atomic_t Ended = 0;

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC);
}

double Between(NoiseSource& random, double low, double high) {
    return low + (high - low) * random.Uniform();
}

// --- the experiment

void MoveTruth(ModelCase& c, NoiseSource& random) {
    for (double* lnK : {&c.LnK2, &c.LnK4, &c.LnK6})
        if (*lnK != 0.0) *lnK += Between(random, -1.0, 1.0);
    c.MassA *= Between(random, 0.7, 1.3);
    c.MassB *= Between(random, 0.7, 1.3);
    for (SimulatedSet& set : c.Sets) {
        set.OuterSignal *= Between(random, 0.3, 1.5);
        set.ShareB *= std::exp(Between(random, -1.5, 1.5));
        set.Points =
            std::min(set.Points, static_cast<int>(Between(random, 25.0, 50.0))); // the dense search is slow
        set.LnK1 += c.SeparateK ? Between(random, -0.5, 0.5) : 0.0;
    }
}

// Fewer parameters, fewer sets, another noise, loadings that are known.
void MoveDesign(ModelCase& c, NoiseSource& random) {
    constexpr double Noises[] = {0.0, 0.001, 0.003, 0.006, 0.01};
    c.Noise = Noises[random.Bits() % 5];
    if (c.Fitted.size() > 1 && random.Uniform() < 0.3)
        c.Fitted.erase(c.Fitted.begin() + static_cast<long>(random.Bits() % c.Fitted.size()));
    if (random.Uniform() < 0.3) c.FitOffsets = !c.FitOffsets && c.Name.find("SeparateK") == std::string::npos;
    if (random.Uniform() < 0.3 && c.Name.find("Linked") == std::string::npos) c.Sets.resize(3);
    if (random.Uniform() < 0.2) c.Sets[0].ToleranceA = static_cast<float>(Between(random, 0.01, 0.1));
    if (random.Uniform() < 0.3)
        for (SimulatedSet& set : c.Sets)
            set.RatioA = set.RatioB = 1.0F; // one wavelength
}

std::optional<std::string> Load(std::uint64_t number) {
    NoiseSource random(number);
    const auto& cases = ModelCases();
    ModelCase c = cases[random.Bits() % cases.size()];
    if (!c.Name.starts_with(Chosen.Case)) return std::nullopt;
    MoveTruth(c, random);
    MoveDesign(c, random);
    try {
        LoadRobustnessCase(c, number);
    } catch (const std::exception&) {
        return std::nullopt; // no such experiment
    }
    return c.Name + " noise " + std::to_string(c.Noise).substr(0, 5);
}

// --- the fit, as a job does it

void Fit() {
    const PerSlot<float> start = Work.Parms;
    RunFit();
    if (Work.Outcome.End != FitEnd::Converged) {
        ClearCancel();
        RescueFit(start);
    }
    if (Work.Outcome.End != FitEnd::Converged) return;
    if (const std::optional<Workspace> lower = FindLowerMinimum(start)) Work = *lower;
}

double Freedom() {
    return std::max(1.0, static_cast<double>(Work.NumPts - Work.NumFree));
}

// --- the verdict

Real Product(const RealMatrix& columns, std::size_t a, const auto& other) {
    Real sum = 0;
    for (std::size_t i = 0; i < columns.Rows; ++i)
        sum += columns(i, a) * other(i);
    return sum;
}

// The decrease that the normal equations of exact derivatives promise at the end in Work, in shares: where
// the dense search goes down to another minimum, this tells whether the end was one.
double ExactDecrease() {
    const ReferencePass pass = EvaluateReference(Work, ReferenceParms(Work));
    const long last = Work.NumFree - 1;
    NormalEquations equations{ZeroBasedMatrix<double>(last, last), PerFree<double>(last)};
    for (const FreePos a : EachFree()) {
        const auto column = static_cast<std::size_t>(a.Number);
        equations.Vector[a] =
            static_cast<double>(Product(pass.Jacobian, column, [&](auto i) { return pass.Residual[i]; }));
        for (const FreePos b : EachFree())
            equations.Matrix(a, b) = static_cast<double>(Product(pass.Jacobian, column, [&](auto i) {
                return pass.Jacobian(i, static_cast<std::size_t>(b.Number));
            }));
    }
    return ExpectedDecrease(equations);
}

struct Tally {
    std::map<std::string, long> Ends;
    void Count(const std::string& end) { ++Ends[end]; }
};

void Judge(const std::string& name, std::uint64_t number, double least, Tally& tally) {
    if (Work.Outcome.End != FitEnd::Converged) return tally.Count("told");
    const double share = std::max(least / Freedom(), LeastVariance());
    const double floor = LeastVariance() * Freedom(); // what singles know
    const double ratio = std::max(Work.SumSq, floor) / std::max(least, floor);
    const bool remark = !MisfitText().empty();
    if (ratio <= 1.001 && (ratio >= 0.999 || Chosen.Own))
        return tally.Count(remark ? "minimum, with a remark" : "minimum");
    const Stand stand = Chosen.Own ? Stand::OtherMinimum : StandOfFit(least);
    const double above = (Work.SumSq - least) / share;
    std::string end = stand == Stand::FalseStop ? "FALSE STOP" : "another minimum";
    end += remark         ? ", with a remark"
           : ratio < 1.0  ? ", below the one from the truth"
           : ratio > 1.1  ? ", a tenth and more above, SILENT"
           : above > 10.0 ? ", more than ten shares above"
                          : ", within ten shares";
    if (!Work.Outcome.Reason.empty()) end += ", undetermined";
    tally.Count(end);
    if (Chosen.Verbose || stand == Stand::FalseStop || (!remark && ratio > 1.1))
        std::printf("  %llu %s: ratio %.4f, %.1f shares, d %.3g, %s%s %s\n",
                    static_cast<unsigned long long>(number), name.c_str(), ratio, above,
                    Work.Outcome.ExpectedDecrease.value_or(-1.0), Work.Outcome.Rescued ? "rescued, " : "",
                    end.c_str(), Work.Outcome.Reason.c_str());
    if (stand == Stand::FalseStop) std::printf("    d of exact derivatives %.3g\n", ExactDecrease());
    std::fflush(stdout);
}

// The lowest sum that is known of the experiment in Work, at the truth, where Work stays.
std::optional<double> LeastSum() {
    const Workspace truth = Work;
    RunFit();
    const bool converged = Work.Outcome.End == FitEnd::Converged;
    std::optional<double> least;
    if (Chosen.Own && converged) least = Work.SumSq;
    if (!converged) Work = truth;
    try {
        if (!Chosen.Own)
            if (const ReferenceFit reference = FitReference(Work); reference.End.Converged)
                least = static_cast<double>(reference.End.SumSq);
    } catch (const std::exception&) {
        // The truth, or the way from there, has no value in long double: no reference.
    }
    Work = truth;
    return least;
}

void Attack(std::uint64_t number, Tally& tally) {
    const std::optional<std::string> name = Load(number);
    if (!name) return;
    const std::optional<double> least = LeastSum();
    if (!least) return tally.Count("no reference");
    if (!Chosen.Right) StartFarOff(number % 2 == 0 ? 3.0 : 6.0, number);
    Work.MaxIterations = 200;
    Fit();
    Judge(*name, number, *least, tally);
}

void Quiet() {
    InstallPlatform(QuietPlatform());
}

void TakeOptions(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const auto is = [&](const char* option) { return i + 1 < argc && !std::strcmp(argv[i], option); };
        if (is("--seconds"))
            Chosen.Seconds = std::atof(argv[++i]);
        else if (is("--seed"))
            Chosen.Seed = std::strtoull(argv[++i], nullptr, 10);
        else if (is("--case"))
            Chosen.Case = argv[++i];
        else if (!std::strcmp(argv[i], "--right"))
            Chosen.Right = true;
        else if (!std::strcmp(argv[i], "--own"))
            Chosen.Own = true;
        else if (!std::strcmp(argv[i], "-v"))
            Chosen.Verbose = true;
    }
}

} // namespace
} // namespace Quillon

int main(int argc, char** argv) {
    using namespace Quillon;
    TakeOptions(argc, argv);
    Quiet();
    std::signal(SIGTERM, [](int) { Ended = 1; });
    std::signal(SIGINT, [](int) { Ended = 1; });
    Tally tally;
    std::uint64_t number = Chosen.Seed;
    for (; ProcessorSeconds() < Chosen.Seconds && !Ended; ++number)
        Attack(number, tally);
    std::printf("seeds %llu to %llu, %.0f s of processor time\n",
                static_cast<unsigned long long>(Chosen.Seed), static_cast<unsigned long long>(number - 1),
                ProcessorSeconds());
    for (const auto& [end, count] : tally.Ends)
        std::printf("%6ld %s\n", count, end.c_str());
}

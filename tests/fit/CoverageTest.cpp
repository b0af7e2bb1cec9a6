// How often the stated errors and limits cover the truth, over many draws of noise.
//
// QUILLON_DRAWS in the environment sets the number of draws.
#include "SyntheticFit.h"
#include "fit/Confidence.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "tests/support/DenseLeastSquares.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ReferenceModel.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace Quillon {
namespace {

int Draws() {
    if (const char* wanted = std::getenv("QUILLON_DRAWS")) return std::max(1, std::atoi(wanted));
#if defined(QUILLON_SANITIZE)
    return 30;
#else
    return 200;
#endif
}

// --- the binomial test
// ---------------------------------------------------------------------------------------------

struct Acceptance {
    int Least, Most;
};

// The counts of n draws that a share of p gives, but for one case in a thousand on either side.
Acceptance AcceptedCounts(int n, double p) {
    constexpr double Tail = 1e-3;
    std::vector<double> probability(static_cast<std::size_t>(n) + 1);
    for (int k = 0; k <= n; ++k)
        probability[static_cast<std::size_t>(k)] =
            std::exp(std::lgamma(n + 1.0) - std::lgamma(k + 1.0) - std::lgamma(n - k + 1.0) +
                     k * std::log(p) + (n - k) * std::log1p(-p));
    Acceptance a{0, n};
    for (double sum = probability.front(); sum < Tail; sum += probability[static_cast<std::size_t>(a.Least)])
        ++a.Least;
    for (double sum = probability.back(); sum < Tail; sum += probability[static_cast<std::size_t>(a.Most)])
        --a.Most;
    return a;
}

TEST(AcceptedCounts, MeetTablesOfTheBinomial) {
    // For n = 10, p = 1/2: P(0) = 1/1024 is below a thousandth, P(0) + P(1) = 11/1024 is not.
    EXPECT_EQ(AcceptedCounts(10, 0.5).Least, 1);
    EXPECT_EQ(AcceptedCounts(10, 0.5).Most, 9);
    // Wide counts are 3.09 standard deviations wide on either side.
    const Acceptance wide = AcceptedCounts(10000, 0.683);
    const double sigma = std::sqrt(10000 * 0.683 * 0.317);
    EXPECT_NEAR(wide.Least, 6830 - 3.09 * sigma, 3.0);
    EXPECT_NEAR(wide.Most, 6830 + 3.09 * sigma, 3.0);
}

// --- the experiment
// ------------------------------------------------------------------------------------------------

struct Tally {
    int Linear = 0, Rigorous = 0;
    double Width = 0.0; // half the distance of the limits over the linear error, summed
};

struct Coverage {
    int Done = 0;
    int Joint = 0; // the truth lies within the joint region of all parameters
    std::vector<Tally> OfParm;
};

// The linear errors by the stated forward differences over those by exact derivatives, at the truth.
std::vector<double> BiasOfErrors(const Workspace& w, const RealVector& truth) {
    const ReferencePass pass = EvaluateReference(w, truth);
    RealMatrix exact, stepped;
    SolveDense(pass.Jacobian, pass.Residual, &exact);
    SolveDense(ReferenceForwardDifferences(w, truth, StepStorage::Exact), pass.Residual, &stepped);
    std::vector<double> bias;
    for (std::size_t k = 0; k < exact.Rows; ++k)
        bias.push_back(static_cast<double>(std::sqrt(stepped(k, k) / exact(k, k))));
    return bias;
}

void CountDraw(Coverage& coverage, const RealVector& truth) {
    const Real atTruth = EvaluateReference(Work, truth).SumSq;
    coverage.Joint += atTruth <= Real(Work.ConfidenceRatio) * Real(Work.SumSq);
    for (long a = 0; a < Work.NumFree; ++a) {
        const long slot = Work.FreeIndex[a];
        const auto p = static_cast<double>(truth[static_cast<std::size_t>(slot)]);
        const double error =
            std::sqrt(std::fabs(Work.NormMatrix(a, a))) * static_cast<double>(Work.RmsResidual);
        const double lower = static_cast<double>(Work.ParmLimits[0][a]);
        const double upper = static_cast<double>(Work.ParmLimits[1][a]);
        Tally& tally = coverage.OfParm[static_cast<std::size_t>(a)];
        tally.Linear += std::fabs(static_cast<double>(Work.Parms[slot]) - p) <= error;
        tally.Rigorous += lower <= p && p <= upper;
        tally.Width += 0.5 * (upper - lower) / error;
    }
}

Coverage FitManyDraws(const Workspace& simulated, const RealVector& truth, const ModelCase& theCase,
                      int draws) {
    const std::uint64_t seed = 100000 * static_cast<std::uint64_t>(theCase.Model);
    Coverage coverage;
    coverage.OfParm.resize(static_cast<std::size_t>(simulated.NumFree));
    for (int draw = 0; draw < draws; ++draw) {
        Work = simulated;
        DrawNoise(Work, truth, theCase.Noise, seed + static_cast<std::uint64_t>(draw));
        MoveAwayFromTruth();
        if (!RunFit()) continue;
        ConfidenceSearch(nullptr);
        if (!Work.LimitsDone) continue;
        ++coverage.Done;
        CountDraw(coverage, truth);
    }
    return coverage;
}

double Percent(int count, int of) {
    return 100.0 * count / of;
}

class CoverageOf : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(Models, CoverageOf, testing::Values("Model01", "Model02", "Model08"),
                         [](const auto& each) { return each.param; });

TEST_P(CoverageOf, StatedErrorsCoverTheTruthAsOftenAsTheyClaim) {
    Script outside;
    outside.AnswerAllMessages(BoxAnswer::Ok);
    const ModelCase& theCase = ModelCaseNamed(GetParam());
    Workspace simulated = SimulatedWorkspace(theCase);
    simulated.MonitorMode = 0;
    Work = simulated;
    BuildParmNames();
    BuildParmScale();
    SetDefaultBounds();
    simulated = Work;
    const RealVector truth = ReferenceParms(simulated);
    const std::vector<double> bias = BiasOfErrors(simulated, truth);
    const Coverage coverage = FitManyDraws(simulated, truth, theCase, Draws());
    const int n = coverage.Done;
    ASSERT_EQ(n, Draws()) << "every draw has to converge";

    std::printf("%s, %d draws of noise, %d points, %d parameters\n", GetParam().c_str(), n, simulated.NumPts,
                simulated.NumFree);
    std::printf("  joint region of all parameters %5.1f%% (68.3%%)\n", Percent(coverage.Joint, n));
    std::printf("  %-22s %8s %8s %8s %9s %7s\n", "parameter", "claimed", "bias", "linear", "rigorous",
                "width");
    const Acceptance joint = AcceptedCounts(n, static_cast<double>(simulated.ConfidenceLevel));
    EXPECT_GE(coverage.Joint, joint.Least);
    EXPECT_LE(coverage.Joint, joint.Most);
    for (std::size_t k = 0; k < coverage.OfParm.size(); ++k) {
        // A standard error that is short or long by a factor covers as a normal deviate of that size.
        const double claimed = std::erf(bias[k] * std::sqrt(0.5));
        const Acceptance accepted = AcceptedCounts(n, claimed);
        const Tally& tally = coverage.OfParm[k];
        const std::string name = Work.ParmName[Work.FreeIndex[static_cast<long>(k)]];
        std::printf("  %-22s %7.1f%% %8.3f %7.1f%% %8.1f%% %7.2f\n", name.c_str(), 100.0 * claimed, bias[k],
                    Percent(tally.Linear, n), Percent(tally.Rigorous, n), tally.Width / n);
        EXPECT_GE(tally.Linear, accepted.Least) << name;
        EXPECT_LE(tally.Linear, accepted.Most) << name;
        EXPECT_GE(tally.Rigorous, tally.Linear) << name;
    }
}

} // namespace
} // namespace Quillon

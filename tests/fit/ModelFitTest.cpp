// Fits of simulated experiments: every model, plain and with every option, with constraints and tied offsets.
// The program has to find the truth within its own error estimates, and the minimum that a dense solver in
// long double finds.
#include "SyntheticFit.h"
#include "fit/GNLLSQ.h"
#include "models/SEDEQ3.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ReferenceFit.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace Quillon {
namespace {

std::vector<std::string> CaseNames() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases())
        names.push_back(c.Name);
    return names;
}

class ModelFit : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override {
        Work = SimulatedWorkspace(ModelCaseNamed(GetParam()));
        Work.MonitorMode = 0;
        BuildParmScale();
        SetDefaultBounds();
        Truth = ReferenceParms(Work);
        MoveAwayFromTruth();
    }
    Script Outside;
    RealVector Truth;
};
INSTANTIATE_TEST_SUITE_P(All, ModelFit, testing::ValuesIn(CaseNames()),
                         [](const auto& each) { return each.param; });

TEST_P(ModelFit, FindsTheTruthWithinItsErrors) {
    ASSERT_TRUE(RunFit()) << Work.Outcome.Sentence;
    EXPECT_LT(Work.Iteration, 20);
    for (long a = 0; a < Work.NumFree; ++a) {
        const long slot = Work.FreeIndex[a];
        const double error =
            std::sqrt(std::fabs(Work.NormMatrix(a, a))) * static_cast<double>(Work.RmsResidual);
        const double off = static_cast<double>(Work.Parms[slot] - Truth[static_cast<std::size_t>(slot)]);
        EXPECT_LT(std::fabs(off), 4.0 * error) << "slot " << slot;
    }
    // The noise comes out as it went in. Its estimate scatters by 1/sqrt(2 df).
    const double freedom = Work.NumPts - Work.NumFree;
    const double noise = ModelCaseNamed(GetParam()).Noise;
    if (Work.ConstraintFlags & ConcentrationBit) return; // pseudo-points at the truth scatter less
    EXPECT_NEAR(static_cast<double>(Work.RmsResidual) / noise, 1.0, 4.0 / std::sqrt(2.0 * freedom));
}

TEST_P(ModelFit, MeetsTheMinimumOfTheDenseSolver) {
    Work.ConvergenceLimit = 1e-5F;
    Work.MaxIterations = 200;
    ASSERT_TRUE(RunFit()) << Work.Outcome.Sentence;
    const ReferenceFit minimum = FitReference(Work);
    ASSERT_TRUE(minimum.End.Converged);
    // Where the stated forward differences bring an iteration to rest instead of the minimum.
    const ReferenceFit rest = FitWithForwardDifferences(Work, minimum.Parms);
    ASSERT_TRUE(rest.End.Converged);
    const double least = static_cast<double>(minimum.End.SumSq);
    const double shift = static_cast<double>(rest.End.SumSq - minimum.End.SumSq);
    EXPECT_GE(Work.SumSq, least * (1.0 - 1e-9));
    EXPECT_LE(Work.SumSq, least * (1.0 + 1e-7) + shift)
        << "shift " << shift / least << ", off " << Work.SumSq / least - 1;
    const double again = static_cast<double>(EvaluateReference(Work, ReferenceParms(Work)).SumSq);
    EXPECT_NEAR(Work.SumSq / again, 1.0, 1e-6);
}

} // namespace
} // namespace Quillon

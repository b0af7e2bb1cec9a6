// Jobs for all 22 models and their options: what quillon-fit finds is the minimum that the same least
// squares problem has in long double.
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ReferenceFit.h"

#include <gtest/gtest.h>

namespace Quillon {

// For the names of the tests that fail.
void PrintTo(const ModelCase& theCase, std::ostream* out) {
    *out << theCase.Name;
}

namespace {

class ModelJobs : public testing::TestWithParam<ModelCase> {};

std::string CaseName(const testing::TestParamInfo<ModelCase>& info) {
    return info.param.Name;
}

// The fit stops when a step changes the sum by less than 5% of one degree of freedom's share, which for 300
// points and more is below 2e-4 of it. Forward differences let it rest a little beside the minimum.
constexpr double Slack = 5e-4;

TEST_P(ModelJobs, FindTheMinimum) {
    Script script;
    ModelCase theCase = GetParam();
    theCase.FirstRowRatioA = theCase.FirstRowRatioB = 1.0F; // a job says nothing of rows without a set
    const Workspace truth = SimulatedWorkspace(theCase);
    std::string text = JobTextOf(truth, script) + ParameterTextOf(truth);
    text.insert(text.find('\n') + 1, "guesses = no\n");
    const std::string job = script.MakeFile("fit.job", text);
    const ProgramEnd end = RunInside({job, "--quiet", "--results", "-"});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const JsonValue results = ReadJson(end.Out);
    EXPECT_TRUE(results["converged"].Flag);
    const auto lowest = static_cast<double>(FitReference(truth).End.SumSq);
    const double found = results["sum_of_squares"].Number;
    EXPECT_GE(found, lowest * (1.0 - 1e-6)); // PtY and Parms are singles in both
    const auto rest = static_cast<double>(FitWithForwardDifferences(truth, ReferenceParms(truth)).End.SumSq);
    EXPECT_LE(found, rest * (1.0 + Slack));
    EXPECT_EQ(results["degrees_of_freedom"].Number, truth.NumPts - truth.NumFree);
    EXPECT_EQ(static_cast<int>(results["correlations"]["slots"].Items.size()), truth.NumFree);
}

// All but two that come to rest elsewhere, by the coarseness of the stated differences: heavy loadings make a
// valley so narrow that full steps lead out of it, and with separate constants a tied offset does not count
// for the one that it follows.
std::vector<ModelCase> CasesThatReachTheMinimum() {
    std::vector<ModelCase> cases;
    for (const ModelCase& theCase : ModelCases())
        if (theCase.Name != "Model02Constrained" && theCase.Name != "Model03SeparateKLinked")
            cases.push_back(theCase);
    return cases;
}

INSTANTIATE_TEST_SUITE_P(All, ModelJobs, testing::ValuesIn(CasesThatReachTheMinimum()), CaseName);

} // namespace
} // namespace Quillon

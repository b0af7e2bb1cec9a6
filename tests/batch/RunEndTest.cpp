// Runs that end without a fit, runs that take long, and what the console says meanwhile.
#include "batch/console/BatchPlatform.h"
#include "batch/console/ConsoleText.h"
#include "batch/job/JobFile.h"
#include "batch/job/RunJob.h"
#include "batch/outputs/ResultsJson.h"
#include "platform/Platform.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ModelCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// A job of two sets of so many points, with lines of [fit] in front and of [parameters] behind.
std::string SmallJob(Script& script, const std::string& fit, const std::string& parameters = "",
                     int points = 40) {
    std::string text = JobTextOf(SimulatedWorkspace(SmallCase(points)), script);
    text.insert(text.find('\n') + 1, fit);
    return script.MakeFile("fit.job", text + parameters);
}

// A limit that is 0 in single precision once it is shared out over the degrees of freedom: never reached.
// With as many points as a set holds the iterations do not run out before the interrupt comes.
const std::string Endless = "convergence-limit = 1e-45\nmax-iterations = 32767\n";
constexpr int ManyPoints = 1800;

TEST(BatchRunEnd, NoConvergenceIsStatus2WithResultsAlone) {
    Script script;
    const std::string job = SmallJob(script, "max-iterations = 1\n");
    const std::string folder = script.Directory();
    const ProgramEnd end = RunInside(
        {job, "--results", folder + "/r.json", "--report", folder + "/r.txt", "--points", folder + "/p.csv"});
    EXPECT_EQ(end.Status, 2);
    EXPECT_EQ(LinesOf(end.Err).back(), "Convergence failed after 1 iterations");
    EXPECT_FALSE(fs::exists(folder + "/r.txt"));
    EXPECT_FALSE(fs::exists(folder + "/p.csv"));
    const JsonValue results = ReadJson(ReadWholeFile(folder + "/r.json"));
    EXPECT_FALSE(results["converged"].Flag);
    EXPECT_EQ(results["message"].Text, "Convergence failed after 1 iterations");
    EXPECT_EQ(results["iterations"].Number, 1.0);
    EXPECT_GT(results["sum_of_squares"].Number, 0.0); // of the last step
    for (const char* none : {"rms_residual", "runs_z", "correlations"})
        EXPECT_TRUE(results[none].IsNull()) << none;
    EXPECT_TRUE(results["confidence"]["ratio"].IsNull());
    for (const JsonValue& parameter : results["parameters"].Items)
        EXPECT_TRUE(parameter["error"].IsNull());
}

TEST(BatchRunEnd, ReportThatDoesNotExistIsNotPrinted) {
    Script script;
    const ProgramEnd end = RunInside({SmallJob(script, "max-iterations = 1\n")});
    EXPECT_EQ(end.Status, 2);
    EXPECT_EQ(end.Out, "");
}

TEST(BatchRunEnd, ArithmeticFailureIsStatus2) {
    Script script;
    const std::string job = SmallJob(script, "guesses = no\n", "[parameters]\n0 = 1e4 hold\n");
    const ProgramEnd end = RunInside({job, "--results", "-"});
    EXPECT_EQ(end.Status, 2);
    const std::string message = "Math error during function evaluation, aborting fit";
    const std::string told = LinesOf(end.Err).back();
    EXPECT_TRUE(told.starts_with(message + ": The fitted value of data set 1 at ")) << told;
    EXPECT_NE(told.find(" cm is beyond any number, most likely by Sigma A mon = 10000"), std::string::npos)
        << told;
    const JsonValue results = ReadJson(end.Out);
    EXPECT_FALSE(results["converged"].Flag);
    EXPECT_EQ(results["message"].Text, told);
    EXPECT_TRUE(results["sum_of_squares"].IsNull());
    EXPECT_TRUE(results["sets"][0]["rms"].IsNull());
}

TEST(BatchRunEnd, SingularMatrixIsStatus2) {
    Script script;
    // Without any dimer in sight its constant cannot be determined: all derivatives by it vanish.
    const std::string job = SmallJob(script, "guesses = no\n",
                                     "[parameters]\n0 = 1 fit\n2 = -1000 fit lower -2000\n8 = -1\n11 = -1\n");
    const ProgramEnd end = RunInside({job, "--results", "-"});
    EXPECT_EQ(end.Status, 2);
    const JsonValue results = ReadJson(end.Out);
    EXPECT_EQ(results["message"].Text,
              "Singular Matrix - Fit Aborted: No point depends on Ln K(1>N). Hold it.");
    EXPECT_TRUE(results["check"]["expected_decrease"].IsNull());
    EXPECT_FALSE(results["check"]["minimum"].Flag);
    EXPECT_FALSE(results["rescued"].Flag);
    EXPECT_NE(end.Err.find("No point depends on Ln K(1>N). Hold it."), std::string::npos) << "before the fit";
}

TEST(BatchRunEnd, InterruptStopsAFit) {
    Script script;
    SmallJob(script, Endless, "", ManyPoints);
    ProgramStart start;
    start.Directory = script.Directory();
    start.Arguments = {"fit.job", "--results", "r.json", "--report", "r.txt"};
    start.InterruptAfter = "Do you want new guesses";
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 2);
    EXPECT_EQ(LinesOf(end.Err).back(), "The fit was cancelled");
    const JsonValue results = ReadJson(ReadWholeFile(script.Directory() + "/r.json"));
    EXPECT_FALSE(results["converged"].Flag);
    EXPECT_EQ(results["message"].Text, "The fit was cancelled");
    EXPECT_LT(results["iterations"].Number, 32767.0);
    EXPECT_FALSE(fs::exists(script.Directory() + "/r.txt"));
}

TEST(BatchRunEnd, InterruptStopsTheSearchForLimitsAndLeavesTheFit) {
    Script script;
    const std::string path = SmallJob(script, "confidence-limits = yes\n");
    InstallBatchPlatform();
    Console.WriteLine = [](const std::string&) {};
    WatchInterrupt();
    Host.ServeEvents = [serve = Host.ServeEvents] {
        if (Work.FitDone && !Interrupted()) std::raise(SIGINT); // the fit is over, the search has begun
        serve();
    };
    const RunEnd end = RunJob(ParseJob(ReadWholeFile(path), path));
    EXPECT_TRUE(end.Converged);
    EXPECT_FALSE(end.Complete);
    EXPECT_EQ(end.Message, "The search for confidence limits was cancelled");
    EXPECT_EQ(Work.LimitsDone, 0);
    const JsonValue results = ReadJson(ResultsJson(end.Message));
    EXPECT_TRUE(results["converged"].Flag);
    EXPECT_FALSE(results["confidence"]["searched"].Flag);
    EXPECT_TRUE(results["parameters"][0]["lower"].IsNull());
    EXPECT_GT(results["parameters"][0]["error"].Number, 0.0);
    EXPECT_EQ(results.Members.count("reasons"), 0U);
    Work.ConfidenceLevel = 1.5F; // of which there is no ratio
    const JsonValue without = ReadJson(ResultsJson(end.Message));
    EXPECT_TRUE(without["confidence"]["ratio"].IsNull());
    EXPECT_EQ(without["reasons"]["confidence.ratio"].Text, ErrorText::BadArgument)
        << "the reason was dropped";
}

TEST(BatchRunEnd, LongWorkTellsItsProgress) {
    Script script;
    SmallJob(script, Endless, "", ManyPoints);
    ProgramStart start;
    start.Directory = script.Directory();
    start.Arguments = {"fit.job"};
    start.InterruptAfter = "\niteration ";
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 2);
    const std::vector<std::string> lines = LinesOf(end.Err);
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [](const std::string& l) { return l.starts_with("iteration "); });
    ASSERT_NE(line, lines.end());
    EXPECT_NE(line->find("  sum of squares "), std::string::npos) << *line;
    EXPECT_NE(line->find("  Alpha "), std::string::npos) << *line;
}

TEST(BatchRunEnd, ShortWorkTellsNone) {
    Script script;
    ProgramStart start;
    start.Arguments = {SmallJob(script, "confidence-limits = yes\n")};
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 0);
    EXPECT_EQ(end.Err, "Do you want new guesses for the concentrations? Answer: Yes\n"
                       "Do you also want the baseline offsets reset to zero? Answer: No\n");
}

TEST(BatchRunEnd, QuietKeepsFailuresAndNothingElse) {
    Script script;
    EXPECT_EQ(RunInside({SmallJob(script, ""), "--quiet"}).Err, "");
    const ProgramEnd failed = RunInside({SmallJob(script, "max-iterations = 1\n"), "--quiet"});
    EXPECT_EQ(failed.Status, 2);
    EXPECT_EQ(failed.Err, "Convergence failed after 1 iterations\n");
    const ProgramEnd bad = RunInside({SmallJob(script, "modle = 1\n"), "--quiet"});
    EXPECT_EQ(bad.Status, 1);
    EXPECT_EQ(LinesOf(bad.Err).size(), 1U);
}

TEST(BatchRunEnd, AnInterruptIsToldOnAQuietConsoleToo) {
    Script script;
    const std::string path = SmallJob(script, "");
    InstallBatchPlatform();
    Console.Quiet = true;
    std::vector<std::string> lines;
    Console.WriteLine = [&](const std::string& line) { lines.push_back(line); };
    WatchInterrupt();
    std::raise(SIGINT);
    EXPECT_FALSE(RunJob(ParseJob(ReadWholeFile(path), path)).Converged);
    EXPECT_EQ(lines, std::vector<std::string>{"The fit was cancelled"});
}

TEST(BatchRunEnd, NobodyIsSentToAForm) {
    Script script;
    ModelCase mixed = ModelCaseNamed("Model09");
    mixed.Sets[0].ToleranceA = 0.02F;
    const std::string text = JobTextOf(SimulatedWorkspace(mixed), script);
    const ProgramEnd end = RunInside({script.MakeFile("fit.job", text), "--results", "-"});
    EXPECT_NE(
        end.Err.find("MUST set correct values for the molar extinction coefficients of species A and B in "
                     "[constants]."),
        std::string::npos)
        << end.Err;
    EXPECT_EQ(end.Err.find("form."), std::string::npos) << end.Err;
    EXPECT_EQ(ConsoleText("A on the Units form. B on the Units form, C"),
              "A in [constants]. B in [constants], C");
    EXPECT_EQ(ConsoleText("Search for Other Minima."), "restarts = 6 in [fit] searches for others.");
}

TEST(BatchRunEnd, AQuestionForATextIsToldWithItsAnswer) {
    InstallBatchPlatform();
    std::vector<std::string> lines;
    Console.WriteLine = [&](const std::string& line) { lines.push_back(line); };
    EXPECT_TRUE(Host.AskText({"How many?", "Quillon", "3"}).Cancelled);
    EXPECT_EQ(Host.MessageBoxAnswer({"Go on?", "Quillon", BoxIcon::Question, BoxButtons::YesNoCancel}),
              BoxAnswer::Cancel);
    EXPECT_EQ(lines, (std::vector<std::string>{"How many? Answer: Cancel", "Go on? Answer: Cancel"}));
}

// A program under the address sanitizer does not even load in so little memory.
#if !defined(QUILLON_SANITIZE)
TEST(BatchRunEnd, TooLittleMemoryIsToldWithTheJob) {
    Script script;
    script.MakeFile("fit.job", ReadWholeFile(SmallJob(script, "")) + std::string(30000000, '\n'));
    ProgramStart start;
    start.Directory = script.Directory();
    start.Arguments = {"fit.job"};
    start.LargestData = 24 * 1024 * 1024;
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_EQ(end.Err, "fit.job: Out of memory\n");
}
#endif

TEST(BatchRunEnd, GuessesAreNotTakenWhenTheJobForbidsThem) {
    Script script;
    // One iteration and no more, so that what comes out is near where it began.
    const std::string fit = "guesses = no\nmax-iterations = 1\n";
    const std::string parameters = "[parameters]\n8 = -3.25 hold\n";
    const ProgramEnd end = RunInside({SmallJob(script, fit, parameters), "--results", "-"});
    const JsonValue results = ReadJson(end.Out);
    EXPECT_EQ(results["parameters"][3]["slot"].Number, 8.0);
    EXPECT_EQ(results["parameters"][3]["value"].Number, -3.25);
    EXPECT_EQ(results["parameters"][3]["state"].Text, "held");
}

TEST(BatchRunEnd, ValueOutsideItsBoundsIsToldAndTaken) {
    Script script;
    const ProgramEnd end = RunInside(
        {SmallJob(script, "", "[parameters]\nZero Offset, set 1 = 0.13 hold lower -0.1 upper 0.125\n"),
         "--results", "-"});
    const std::vector<std::string> lines = LinesOf(end.Err);
    EXPECT_NE(
        std::find(lines.begin(), lines.end(),
                  "The value of Zero Offset, set 1 is above the current upper bound of 0.12500.  Do you want "
                  "to use the new value anyway? Answer: Yes"),
        lines.end())
        << end.Err;
    EXPECT_EQ(static_cast<float>(ReadJson(end.Out)["parameters"][4]["value"].Number), 0.13F);
}

TEST(BatchRunEnd, ABoundHoldsAFittedParameter) {
    Script script;
    const ProgramEnd end =
        RunInside({SmallJob(script, "rescue = no\n", "[parameters]\n0 = 0.5 fit lower 0.1 upper 0.6\n"),
                   "--results", "-"});
    const JsonValue mass = ReadJson(end.Out)["parameters"][0];
    EXPECT_LE(mass["value"].Number, 0.6001);
    EXPECT_EQ(mass["at_bound"].Number, 1.0) << end.Err; // sigma of the data is about 0.7
}

TEST(BatchRunEnd, StoichiometryOtherThanTwoMakesItTheGeneralModel) {
    Script script;
    const ProgramEnd end = RunInside({SmallJob(script, "", "[parameters]\nN = 3 hold\n"), "--results", "-"});
    const JsonValue results = ReadJson(end.Out);
    EXPECT_EQ(results["model"]["number"].Number, 3.0);
    EXPECT_EQ(results["model"]["name"].Text, "monomer - N-mer");
    EXPECT_EQ(results["parameters"][1]["value"].Number, 3.0);
}

TEST(BatchRunEnd, EighteenLargeSetsTakeLessThan12MiB) {
    Script script;
    ModelCase large = SmallCase(1500);
    while (large.Sets.size() < 18)
        large.Sets.push_back(large.Sets[large.Sets.size() % 2]);
    script.MakeFile("fit.job", JobTextOf(SimulatedWorkspace(large), script));
    ProgramStart start;
    start.Directory = script.Directory();
    start.Arguments = {"fit.job", "--results", "r.json", "--points", "p.csv", "--report", "r.txt"};
#if !defined(QUILLON_SANITIZE)
    start.LargestData = 8 * 1024 * 1024; // code, libraries and stack take less than 4 MiB
#endif
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 0) << end.Err;
}

} // namespace
} // namespace Quillon

// Restarts of a job.
#include "batch/job/Restarts.h"
#include "batch/console/BatchPlatform.h"
#include "batch/job/JobFile.h"
#include "batch/job/RunJob.h"
#include "platform/Platform.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ReferenceFit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>

namespace Quillon {
namespace {

// The job of a simulated case with lines of [fit] in front and of [parameters] behind.
std::string CaseJob(Script& script, const Workspace& truth, const std::string& fit,
                    const std::string& parameters) {
    std::string text = JobTextOf(truth, script);
    text.insert(text.find('\n') + 1, fit);
    return script.MakeFile("fit.job", text + parameters);
}

std::string TwinJob(Script& script, const std::string& fit) {
    const Workspace truth = SimulatedWorkspace(ModelCaseNamed("Model10"));
    return CaseJob(script, truth, fit, ParameterTextOf(truth));
}

TEST(BatchRestarts, TellTheMinimaInTheResults) {
    Script script;
    const std::string job = TwinJob(script, "restarts = 12\nseed = 1\n");
    const ProgramEnd end = RunInside({job, "--results", "-"});
    EXPECT_EQ(end.Status, 0) << end.Err;
    const JsonValue results = ReadJson(end.Out);
    const JsonValue& starts = results["starts"];
    double fits = starts["failed"].Number;
    double sum = 0.0;
    for (const JsonValue& minimum : starts["minima"].Items) {
        EXPECT_GE(minimum["sum_of_squares"].Number, sum); // lowest first
        sum = minimum["sum_of_squares"].Number;
        fits += minimum["count"].Number;
        EXPECT_EQ(minimum["parameters"].Names, (std::vector<std::string>{"6", "7"}));
    }
    EXPECT_EQ(fits, 13.0); // the first one counted
    ASSERT_GE(starts["minima"].Items.size(), 2U);
    const JsonValue& one = starts["minima"][0]["parameters"];
    const JsonValue& twin = starts["minima"][1]["parameters"];
    EXPECT_NEAR(one["6"].Number, twin["7"].Number, 1e-3);
    EXPECT_NEAR(one["7"].Number, twin["6"].Number, 1e-3);
    EXPECT_NE(end.Err.find("restarts: "), std::string::npos);
}

// A twin is as good, and no better: the first fit stays as it is.
TEST(BatchRestarts, LeaveAFitThatIsTheLowestBitForBit) {
    Script script;
    const JsonValue plain = ReadJson(RunInside({TwinJob(script, ""), "--results", "-"}).Out);
    const JsonValue searched = ReadJson(RunInside({TwinJob(script, "restarts = 6\n"), "--results", "-"}).Out);
    EXPECT_EQ(plain["sum_of_squares"].Number, searched["sum_of_squares"].Number);
    EXPECT_EQ(plain["iterations"].Number, searched["iterations"].Number);
    for (std::size_t i = 0; i < plain["parameters"].Items.size(); ++i)
        EXPECT_EQ(plain["parameters"][i]["internal"].Number, searched["parameters"][i]["internal"].Number);
    EXPECT_EQ(plain.Members.count("starts"), 0U);
}

TEST(BatchRestarts, AreTheSameForAnyNumberOfThreads) {
    Script script;
    const std::string job = TwinJob(script, "restarts = 5\nseed = 3\n");
    const std::string one = RunInside({job, "--results", "-", "--threads", "1"}).Out;
    EXPECT_EQ(RunInside({job, "--results", "-", "--threads", "3"}).Out, one);
    EXPECT_NE(one.find("\"starts\""), std::string::npos);
}

// The lines of parameters with one moved from its true value.
std::string Moved(const std::string& lines, int slot, double by) {
    const std::string head = "\n" + std::to_string(slot) + " = ";
    const std::size_t value = lines.find(head) + head.size();
    const std::size_t end = lines.find(' ', value);
    const double moved = std::stod(lines.substr(value, end - value)) + by;
    return lines.substr(0, value) + std::to_string(moved) + lines.substr(end);
}

// Constants six away from the truth in both directions: where the fit itself ends does not matter.
TEST(BatchRestarts, LeadToTheLowestMinimum) {
    Script script;
    const Workspace truth = SimulatedWorkspace(ModelCaseNamed("Model04"));
    const double least = static_cast<double>(FitReference(truth).End.SumSq);
    const std::string parameters = Moved(Moved(ParameterTextOf(truth), 2, 6.0), 4, -6.0);
    const std::string job = CaseJob(script, truth, "max-iterations = 200\nrestarts = 6\n", parameters);
    const ProgramEnd end = RunInside({job, "--results", "-"});
    EXPECT_EQ(end.Status, 0) << end.Err;
    EXPECT_NEAR(ReadJson(end.Out)["sum_of_squares"].Number / least, 1.0, 1e-3);
}

TEST(BatchRestarts, ACancelLeavesTheFit) {
    Script script;
    const std::string path = TwinJob(script, "restarts = 6\n");
    InstallBatchPlatform();
    Console.WriteLine = [](const std::string&) {};
    WatchInterrupt();
    Host.RunPieces = [](long, const auto& piece, const auto& watch) {
        piece(0);
        std::raise(SIGINT);
        watch(1);
        piece(1);
    };
    const RunEnd end = RunJob(ParseJob(ReadWholeFile(path), path));
    EXPECT_TRUE(end.Converged);
    EXPECT_FALSE(end.Complete);
    EXPECT_EQ(end.Message, RestartsCancelledText);
    ASSERT_TRUE(end.Starts.has_value());
    EXPECT_EQ(end.Starts->Ended, 1);
    EXPECT_NE(Work.FitDone, 0);
}

TEST(BatchRestarts, RefuseCountsThatAreNone) {
    Script script;
    for (const char* line : {"restarts = -1\n", "restarts = 1001\n", "restarts = few\n", "seed = -1\n"}) {
        const ProgramEnd end = RunInside({TwinJob(script, line)});
        EXPECT_EQ(end.Status, 1) << line;
    }
    for (const char* threads : {"0", "-1", "x", "1025", ""})
        EXPECT_EQ(RunInside({TwinJob(script, ""), std::string("--threads=") + threads}).Status, 1) << threads;
}

} // namespace
} // namespace Quillon

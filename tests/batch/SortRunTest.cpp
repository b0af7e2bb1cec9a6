// From a run to a finished fit by the command line.
#include "input/Csv.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/MadeRun.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

ProgramEnd RunIn(const Script& script, std::vector<std::string> arguments) {
    ProgramStart start;
    start.Directory = script.Directory();
    start.Arguments = std::move(arguments);
    return RunProgram(start);
}

// 7 cells, 3 speeds, 3 wavelengths, 10 scans each.
RunPlan WholeRun() {
    RunPlan plan;
    plan.Cells = {1, 2, 3, 4, 5, 6, 7};
    plan.Wavelengths = {230, 260, 280};
    plan.Wander = 1;
    plan.Points = 90;
    return plan;
}

TEST(SortRun, AnArchiveOf630ScansGoesToAGlobalFitByTwoCommandLines) {
    Script script;
    const std::vector<MadeScan> made = MakeRun(WholeRun());
    ASSERT_EQ(made.size(), 630U);
    script.MakeFile("run.tar.gz", ArchiveOf(EntriesOf(made), "tar.gz"));
    const ProgramEnd sorted = RunIn(script, {"--sort", "run.tar.gz", "--cells", "1,2", "--ratios",
                                             "230=1,260=0.5,280=0.3333333", "--job", "run.job"});
    ASSERT_EQ(sorted.Status, 0) << sorted.Err;
    EXPECT_EQ(ParseCsv(sorted.Out).size(), 181U); // the head and two cells
    EXPECT_EQ(
        std::distance(fs::directory_iterator(script.Directory() + "/run-scans"), fs::directory_iterator()),
        18);
    const ProgramEnd fitted = RunIn(script, {"run.job", "--results", "-"});
    ASSERT_EQ(fitted.Status, 0) << fitted.Err;
    const JsonValue results = ReadJson(fitted.Out);
    EXPECT_EQ(results["sets"].Items.size(), 18U);
    // sigma = M (1 - vbar rho) omega^2 / (R T) at 10000 rpm, of 40 kDa as the run was made.
    const double omega = 10000.0 * 3.14159265358979 / 30.0;
    const double sigma = 40e3 * (1.0 - 0.735 * 1.004) * omega * omega / (8.3144710e7 * 293.15);
    EXPECT_NEAR(results["parameters"][0]["value"].Number, sigma, 0.05 * sigma);
}

TEST(SortRun, MoreThan18SetsAreRefusedWithTheirCounts) {
    Script script;
    fs::create_directory(script.Directory() + "/run");
    RunPlan plan = WholeRun();
    plan.Cells = {1, 2, 3};
    plan.ScansPerStage = 2;
    WriteRun(MakeRun(plan), script.Directory() + "/run");
    const ProgramEnd end = RunIn(script, {"--sort", "run", "--job", "run.job"});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("27 sets are more than the 18 of an analysis"), std::string::npos) << end.Err;
    EXPECT_NE(end.Err.find("cell 1: 9, cell 2: 9, cell 3: 9"), std::string::npos) << end.Err;
    EXPECT_FALSE(fs::exists(script.Directory() + "/run.job"));
}

TEST(SortRun, AWavelengthWithoutARatioIsACommentAndSharesNothing) {
    Script script;
    fs::create_directory(script.Directory() + "/run");
    RunPlan plan = WholeRun();
    plan.Cells = {3};
    plan.Speeds = {10000};
    plan.ScansPerStage = 3;
    WriteRun(MakeRun(plan), script.Directory() + "/run");
    const ProgramEnd end = RunIn(script, {"--sort", "run", "--job", "run.job", "--ratios", "260=0.5:0.6"});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const std::string job = ReadWholeFile(script.Directory() + "/run.job");
    EXPECT_NE(job.find("extinction-ratio-a = 0.5\nextinction-ratio-b = 0.6\nconcentrations-of = 1\n"),
              std::string::npos)
        << job;
    EXPECT_NE(job.find("; extinction-ratio-a = 1\n; extinction-ratio-b = 1\n"), std::string::npos) << job;
    EXPECT_EQ(job.find("concentrations-of", job.find("[set 3]")), std::string::npos) << job;
    EXPECT_NE(end.Err.find("no extinction ratio is given for 28"), std::string::npos) << end.Err;
}

TEST(SortRun, AGraphThatCouldNotBeDrawnLeftAJobBehind) {
    Script script;
    fs::create_directory(script.Directory() + "/run");
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {10000};
    WriteRun(MakeRun(plan), script.Directory() + "/run");
    ProgramEnd end = RunIn(script, {"--sort", "run", "--job", "run.job", "--graph", "approach:9=a.csv"});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("the run has 1 group\n"), std::string::npos) << end.Err;
    EXPECT_FALSE(fs::exists(script.Directory() + "/run.job"));
    end = RunIn(script, {"--sort", "run", "--job", "one.csv", "--graph", "approach:1=./one.csv"});
    EXPECT_EQ(end.Err, "quillon-fit: --job and --graph approach:1 name the same file (quillon-fit --help "
                       "tells more)\n");
}

// The next try was refused: there was something of that name.
TEST(SortRun, AJobThatCouldNotBeWrittenLeftTheScansOfTheArchiveBehind) {
    Script script;
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {10000};
    plan.Points = 90;
    script.MakeFile("run.tar.gz", ArchiveOf(EntriesOf(MakeRun(plan)), "tar.gz"));
    ProgramStart start;
    start.Directory = script.Directory();
    start.Arguments = {"--sort", "run.tar.gz", "--job", "run.job", "--quiet"};
    start.LargestFile = 100;
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("Disk full"), std::string::npos) << end.Err;
    EXPECT_FALSE(fs::exists(script.Directory() + "/run-scans"));
    start.LargestFile = 0;
    EXPECT_EQ(RunProgram(start).Status, 0);
    EXPECT_TRUE(fs::exists(script.Directory() + "/run.job"));
}

TEST(SortRun, AJobOfMeansTakesTheLastScansThatAgree) {
    Script script;
    fs::create_directory(script.Directory() + "/run");
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {10000, 14000};
    WriteRun(MakeRun(plan), script.Directory() + "/run");
    const ProgramEnd sorted = RunIn(script, {"--sort", "run", "--average", "--job", "run.job"});
    ASSERT_EQ(sorted.Status, 0) << sorted.Err;
    std::size_t equal = 0;
    for (const CsvCells& row : ParseCsv(sorted.Out))
        if (row[14] == "1" && row[12] == "yes") ++equal;
    ASSERT_GT(equal, 2U);
    const JsonValue results = ReadJson(RunIn(script, {"run.job", "--results", "-", "--quiet"}).Out);
    ASSERT_EQ(results["sets"].Items.size(), 2U);
    EXPECT_EQ(results["sets"][0]["scans_averaged"].Number, static_cast<double>(equal));
    EXPECT_NEAR(results["sets"][0]["rms_between"].Number, plan.Noise, 0.3 * plan.Noise);
    EXPECT_EQ(RunIn(script, {"--sort", "run", "--average"}).Status, 1) << "there is no job";
}

TEST(SortRun, TheJobBesideItHoldsTheRadiiAlone) {
    Script script;
    fs::create_directory(script.Directory() + "/run");
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {10000};
    WriteRun(MakeRun(plan), script.Directory() + "/run");
    script.MakeFile("radii.job", "[approach]\ninner = 6.9\nouter = 7.1\n");
    script.MakeFile("other.job", "[approach]\ninner = 6.9\n[fit]\nmodel = 2\n");
    EXPECT_EQ(RunIn(script, {"--sort", "run", "radii.job"}).Status, 0);
    const ProgramEnd end = RunIn(script, {"--sort", "run", "other.job"});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("a job beside --sort has the section [approach] alone"), std::string::npos)
        << end.Err;
    EXPECT_EQ(RunIn(script, {"--cells", "1"}).Status, 1);
    EXPECT_EQ(RunIn(script, {"--sort", "run", "--report", "-"}).Status, 1);
    EXPECT_EQ(RunIn(script, {"--sort", "run", "--graph", "approach:1=a.svg"}).Status, 0);
    EXPECT_TRUE(fs::exists(script.Directory() + "/a.svg"));
    EXPECT_EQ(RunIn(script, {"--sort", "run", "--graph", "approach:2=b.svg"}).Status, 1);
}

} // namespace
} // namespace Quillon

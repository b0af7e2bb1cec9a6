// Studies behind the fit of a job: what is written, and what is refused.
#include "batch/Studies.h"
#include "batch/RunOutputs.h"
#include "batch/console/BatchPlatform.h"
#include "batch/job/RunJob.h"
#include "files/ReadWhole.h"
#include "platform/Platform.h"
#include "reporting/values/Correlation.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>

namespace Quillon {
namespace {

std::string StudyJob(Script& script, const std::string& sections, const char* name = "Model02") {
    const Workspace truth = SimulatedWorkspace(ModelCaseNamed(name));
    return script.MakeFile("fit.job", JobTextOf(truth, script) + ParameterTextOf(truth) + sections);
}

std::vector<std::string> FieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

TEST(BatchCompare, WritesTheTable) {
    Script script;
    const std::string job = StudyJob(script, "[compare]\nmodels = 1, 2, 2+nonideal\n");
    const ProgramEnd csv = RunInside({job, "--compare", "-"});
    ASSERT_EQ(csv.Status, 0) << csv.Err;
    const std::vector<std::string> lines = LinesOf(csv.Out);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], "model,name,options,free,degrees_of_freedom,sum_of_squares,rms,runs_z,reference,F,p,"
                        "delta_aicc,delta_bic,weight,converged,minimum,notes");
    for (const std::string& line : lines)
        EXPECT_EQ(FieldsOf(line).size(), 17U) << line;
    EXPECT_EQ(FieldsOf(lines[1])[8], ""); // nothing is contained in a single species
    EXPECT_EQ(FieldsOf(lines[1])[9], "");
    EXPECT_EQ(FieldsOf(lines[2])[8], "1");
    EXPECT_EQ(FieldsOf(lines[3])[8], "2");
    EXPECT_EQ(FieldsOf(lines[3])[2], "nonideal");
    EXPECT_EQ(FieldsOf(lines[2])[14], "yes");

    const std::string path = script.Directory() + "/c.json";
    ASSERT_EQ(RunInside({job, "--compare", path}).Status, 0);
    const JsonValue models = ReadJson(ReadWholeFile(path))["models"];
    ASSERT_EQ(models.Items.size(), 3U);
    double weights = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        weights += models[i]["weight"].Number;
        EXPECT_EQ(models[i]["sum_of_squares"].Number, std::stod(FieldsOf(lines[i + 1])[5]));
    }
    EXPECT_NEAR(weights, 1.0, 1e-12);
}

// The row of the job's own model is the job's fit.
TEST(BatchCompare, HasTheFitOfTheJobAmongItsRows) {
    Script script;
    const std::string job = StudyJob(script, "[compare]\nmodels = 1,2\n");
    const std::string path = script.Directory() + "/c.json";
    const ProgramEnd end = RunInside({job, "--compare", path, "--results", "-"});
    ASSERT_EQ(end.Status, 0) << end.Err;
    EXPECT_EQ(ReadJson(ReadWholeFile(path))["models"][1]["sum_of_squares"].Number,
              ReadJson(end.Out)["sum_of_squares"].Number);
}

TEST(BatchCompare, IsTheSameForAnyNumberOfThreads) {
    Script script;
    const std::string job = StudyJob(script, "[compare]\nmodels = 1,2,3,4,1+nonideal\n");
    const std::string one = RunInside({job, "--compare", "-", "--threads", "1"}).Out;
    EXPECT_EQ(RunInside({job, "--compare", "-", "--threads", "2"}).Out, one);
    EXPECT_EQ(RunInside({job, "--compare", "-", "--threads", "16"}).Out, one);
    EXPECT_GT(one.size(), 200U);
}

TEST(BatchCompare, NeedsItsSection) {
    Script script;
    const ProgramEnd end = RunInside({StudyJob(script, ""), "--compare", "-"});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("[compare] models: --compare needs the models that it fits"), std::string::npos)
        << end.Err;
    const ProgramEnd bad = RunInside({StudyJob(script, "[compare]\nmodels = 1, 8+nonideal\n")});
    EXPECT_EQ(bad.Status, 1);
    EXPECT_NE(bad.Err.find("[compare] models: model 8 has no option nonideal"), std::string::npos) << bad.Err;
    EXPECT_EQ(RunInside({StudyJob(script, "[compare]\nmodels = 1\n"), "--compare", "c.txt"}).Status, 1);
}

// The job's own fit runs out of iterations: the comparison is written all the same.
TEST(BatchCompare, IsWrittenThoughTheFitFailed) {
    Script script;
    std::string text = ReadWholeFile(StudyJob(script, "[compare]\nmodels = 1,2\n"));
    text.insert(text.find("[fit]\n") + 6, "max-iterations = 1\nrescue = no\n");
    const std::string path = script.Directory() + "/c.csv";
    const ProgramEnd end = RunInside({script.MakeFile("short.job", text), "--compare", path});
    EXPECT_EQ(end.Status, 2) << end.Err;
    EXPECT_EQ(LinesOf(ReadWholeFile(path)).size(), 3U);
}

TEST(BatchProfile, WritesTableAndRecord) {
    Script script;
    const std::string job = StudyJob(script, "[profile]\nlevel = 0.683, 0.9\nsteps = 7\n");
    const std::string json = script.Directory() + "/p.json";
    const ProgramEnd end = RunInside({job, "--profile", "2=-", "--profile", "2=" + json});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const std::vector<std::string> lines = LinesOf(end.Out);
    ASSERT_EQ(lines.size(), 8U);
    EXPECT_EQ(lines[0], "slot,name,value,sum_of_squares,ratio,converged");
    const JsonValue record = ReadJson(ReadWholeFile(json));
    EXPECT_EQ(record["slot"].Number, 2.0);
    ASSERT_EQ(record["levels"].Items.size(), 2U);
    EXPECT_EQ(record["levels"][1]["level"].Number, 0.9);
    EXPECT_LT(record["levels"][1]["lower"].Number, record["levels"][0]["lower"].Number);
    EXPECT_GT(record["levels"][1]["upper"].Number, record["levels"][0]["upper"].Number);
    ASSERT_EQ(record["points"].Items.size(), 7U);
    double former = -1e9;
    for (std::size_t i = 0; i < 7; ++i) {
        const JsonValue& point = record["points"][i];
        EXPECT_GT(point["value"].Number, former);
        former = point["value"].Number;
        EXPECT_EQ(std::stod(FieldsOf(lines[i + 1])[2]), former);
        EXPECT_NEAR(point["ratio"].Number,
                    point["sum_of_squares"].Number / record["minimum"]["sum_of_squares"].Number, 1e-9);
    }
}

TEST(BatchProfile, OfTwoIsAMap) {
    Script script;
    const std::string job = StudyJob(script, "[profile]\nsteps = 3\n");
    const ProgramEnd end = RunInside({job, "--profile", "0,2=-"});
    ASSERT_EQ(end.Status, 0) << end.Err;
    ASSERT_EQ(LinesOf(end.Out).size(), 10U);
    EXPECT_EQ(LinesOf(end.Out)[0], "slot_1,slot_2,value_1,value_2,sum_of_squares,ratio,converged");
}

TEST(BatchProfile, IsDrawnByTheEnding) {
    Script script;
    const std::string job = StudyJob(script, "[profile]\nsteps = 5\n");
    const std::string curve = script.Directory() + "/p.svg", map = script.Directory() + "/m.svg";
    const ProgramEnd end = RunInside({job, "--profile", "2=" + curve, "--profile", "0,2=" + map});
    ASSERT_EQ(end.Status, 0) << end.Err;
    EXPECT_NE(ReadWholeFile(curve).find("Sum of Squares over the Lowest"), std::string::npos);
    for (const std::string& picture : {curve, map})
        EXPECT_NE(ReadWholeFile(picture).find("95.0%"), std::string::npos) << "its legend names the levels";
}

TEST(BatchProfile, RefusesWhatIsNoFittedParameter) {
    Script script;
    const std::string job = StudyJob(script, "");
    for (const char* text : {"2", "x=p.csv", "2,2=p.csv", "-1=p.csv", "2=p.txt", "2=", "=p.csv"})
        EXPECT_EQ(RunInside({job, "--profile", text}).Status, 1) << text;
    const std::string results = script.Directory() + "/r.json";
    const ProgramEnd held = RunInside({job, "--profile", "5=p.csv", "--results", results});
    EXPECT_EQ(held.Status, 1);
    EXPECT_TRUE(ReadJson(ReadWholeFile(results))["converged"].Flag) << "the fit was lost with the profile";
    EXPECT_NE(held.Err.find("--profile 5: slot 5 is no fitted parameter"), std::string::npos) << held.Err;
    EXPECT_EQ(RunInside({StudyJob(script, "[profile]\nsteps = 2\n")}).Status, 1);
    EXPECT_EQ(RunInside({StudyJob(script, "[profile]\nlevel = 0.5,\n")}).Status, 1);
}

// One that broke off has no file: the next one's values would stand under its name.
TEST(BatchProfile, OneThatBrokeOffLeftItsFileToTheNextOne) {
    Script script;
    const std::string first = script.Directory() + "/p0.csv", second = script.Directory() + "/p2.csv";
    const Options options = ParseOptions({"a.job", "--profile", "0=" + first, "--profile", "2=" + second});
    RunEnd end;
    Profile profile;
    profile.Slot = 2;
    profile.Name = "Ln K(1>N)";
    end.Studies.Profiles = {profile};
    WriteOutputs(options, end);
    EXPECT_FALSE(IsFile(first));
    EXPECT_TRUE(IsFile(second));
}

TEST(BatchResampling, GoesIntoResultsReportAndDraws) {
    Script script;
    const std::string job = StudyJob(script, "[resampling]\nkind = residuals\nlevel = 0.9\n");
    const std::string draws = script.Directory() + "/draws.csv", report = script.Directory() + "/r.txt";
    const std::string correlations = script.Directory() + "/c.csv";
    const ProgramEnd end = RunInside({job, "--resample", "40", "--draws", draws, "--results", "-", "--report",
                                      report, "--correlations", correlations});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const JsonValue results = ReadJson(end.Out);
    const JsonValue& resampling = results["resampling"];
    EXPECT_EQ(resampling["kind"].Text, "residuals");
    EXPECT_EQ(resampling["count"].Number, 40.0);
    EXPECT_EQ(resampling["seed"].Number, 1.0);
    EXPECT_EQ(resampling["level"].Number, 0.9);
    const std::size_t fitted = results["correlations"]["slots"].Items.size();
    ASSERT_EQ(resampling["parameters"].Items.size(), fitted);
    ASSERT_EQ(resampling["correlations"]["matrix"].Items.size(), fitted);
    EXPECT_EQ(resampling["block_lengths"].Items.size(), results["sets"].Items.size());

    // Mean and quantiles are those of the fits that are listed.
    const std::vector<std::string> lines = LinesOf(ReadWholeFile(draws));
    ASSERT_EQ(lines.size(), 41U);
    EXPECT_TRUE(lines[0].starts_with("draw,converged,sum_of_squares,slot_0,slot_2,slot_8")) << lines[0];
    std::vector<double> masses;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::vector<std::string> fields = FieldsOf(lines[i]);
        ASSERT_EQ(fields.size(), 3 + fitted);
        EXPECT_EQ(fields[0], std::to_string(i));
        if (fields[1] == "yes") masses.push_back(std::stod(fields[3]));
    }
    EXPECT_EQ(static_cast<double>(masses.size()), 40.0 - resampling["failed"].Number);
    double mean = 0.0;
    for (const double mass : masses)
        mean += mass / static_cast<double>(masses.size());
    EXPECT_NEAR(resampling["parameters"][0]["mean"].Number, mean, 1e-9 * mean);
    EXPECT_LT(resampling["parameters"][0]["lower"].Number, resampling["parameters"][0]["median"].Number);
    const std::string told = ReadWholeFile(report);
    EXPECT_NE(told.find("40 fits to resampled data (residuals in blocks of "), std::string::npos);
    // Those of the results, in the report and as a whole table.
    const std::vector<std::string> table = LinesOf(ReadWholeFile(correlations));
    ASSERT_EQ(table.size(), 1 + fitted + 3) << "what is derived from the constant stands behind";
    EXPECT_TRUE(table[0].starts_with("slot,name,slot_0,slot_2,slot_8")) << table[0];
    const double r = resampling["correlations"]["matrix"][1][0].Number;
    EXPECT_EQ(std::stod(FieldsOf(table[1])[3]), r);
    EXPECT_EQ(std::stod(FieldsOf(table[2])[2]), r);
    EXPECT_EQ(std::stod(FieldsOf(table[2])[3]), 1.0);
    EXPECT_NE(told.find(CoefficientText(r), told.find("40 fits to resampled data")), std::string::npos);
}

// Of one constant: log10 K and Delta G go with it, whatever the fit.
TEST(BatchResampling, HasDerivedQuantities) {
    Script script;
    const ProgramEnd end = RunInside({StudyJob(script, ""), "--resample", "10", "--results", "-"});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const JsonValue results = ReadJson(end.Out);
    const JsonValue& resampling = results["resampling"];
    const JsonValue& derived = resampling["derived"];
    ASSERT_EQ(derived.Items.size(), 3U);
    const JsonValue& slots = resampling["correlations"]["slots"];
    ASSERT_EQ(slots[1].Number, 2.0);
    for (const JsonValue& quantity : derived.Items)
        ASSERT_EQ(quantity["correlations"].Items.size(), slots.Items.size());
    // log10 K and Delta G are straight lines of ln K, up and down; Kd falls with it.
    EXPECT_NEAR(derived[0]["correlations"][1].Number, 1.0, 1e-5);
    EXPECT_LT(derived[1]["correlations"][1].Number, -0.8);
    EXPECT_NEAR(derived[2]["correlations"][1].Number, -1.0, 1e-5);
    EXPECT_EQ(derived[0]["quantity"].Text, "log10_k");
    EXPECT_EQ(derived[1]["quantity"].Text, "kd");
    const double kelvin =
        -derived[2]["median"].Number / (0.008314463 * derived[0]["median"].Number * std::log(10.0));
    EXPECT_NEAR(kelvin, 293.15, 0.1);
}

TEST(BatchResampling, IsDrawnAsHistogramsAndStandsInTheHtmlReport) {
    Script script;
    const std::string job = StudyJob(script, "");
    const std::string page = script.Directory() + "/r.html", bars = script.Directory() + "/bars.dat";
    const std::string kd = script.Directory() + "/kd.svg";
    const ProgramEnd end = RunInside({job, "--resample", "30", "--report", page, "--graph",
                                      "histogram:2=" + bars, "--graph", "histogram:2,kd=" + kd});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const std::string text = ReadWholeFile(page);
    EXPECT_NE(text.find("<h2>Resampling</h2>"), std::string::npos);
    EXPECT_NE(text.find("<caption>30 fits to resampled data (parametric, seed 1)</caption>"),
              std::string::npos);
    EXPECT_NE(ReadWholeFile(kd).find("<svg"), std::string::npos);
    EXPECT_NE(ReadWholeFile(bars), "");
    const ProgramEnd held =
        RunInside({job, "--resample", "3", "--graph", "histogram:3=" + bars, "--results", "-"});
    EXPECT_EQ(held.Status, 1);
    EXPECT_NE(held.Err.find("--graph histogram:3: slot 3 is no fitted parameter"), std::string::npos)
        << held.Err;
}

TEST(BatchResampling, IsTheSameForAnyNumberOfThreads) {
    Script script;
    const std::string job = StudyJob(script, "");
    const std::string one = RunInside({job, "--resample=8", "--results", "-", "--threads", "1"}).Out;
    EXPECT_EQ(RunInside({job, "--resample=8", "--results", "-", "--threads", "2"}).Out, one);
    EXPECT_EQ(RunInside({job, "--resample=8", "--results", "-", "--threads", "16"}).Out, one);
    EXPECT_NE(one.find("\"resampling\""), std::string::npos);
}

TEST(BatchResampling, RefusesWhatMakesNoSense) {
    Script script;
    const std::string job = StudyJob(script, "");
    for (const char* count : {"0", "-1", "x", "", "100001"})
        EXPECT_EQ(RunInside({job, std::string("--resample=") + count}).Status, 1) << count;
    EXPECT_EQ(RunInside({job, "--draws", "d.csv"}).Status, 1);
    EXPECT_EQ(RunInside({job, "--correlations", "c.csv"}).Status, 1);
    EXPECT_EQ(RunInside({StudyJob(script, "[resampling]\nlevel = 1\n")}).Status, 1);
    EXPECT_EQ(RunInside({StudyJob(script, "[resampling]\nkind = some\n")}).Status, 1);
}

// Ctrl-C behind the second fit of each study: the fit stands, and nothing of the study is written.
TEST(BatchStudies, AnInterruptLeavesTheFitAndNoHalfOfAStudy) {
    Script script;
    const std::string path = StudyJob(script, "[compare]\nmodels = 1, 2, 3\n");
    const std::vector<std::pair<std::vector<std::string>, std::string>> studies{
        {{"--compare", "c.csv"}, "The comparison was cancelled"},
        {{"--profile", "2=p.csv"}, "The profile was cancelled"},
        {{"--profile", "0,2=m.csv"}, "The profile was cancelled"},
        {{"--resample", "20"}, "The resampling was cancelled"}};
    for (const auto& [given, message] : studies) {
        InstallBatchPlatform();
        Console.WriteLine = [](const std::string&) {};
        WatchInterrupt();
        const Job job = ParseJob(ReadWholeFile(path), path);
        RunEnd end = RunJob(job);
        ASSERT_TRUE(end.Converged) << end.Message;
        const Workspace fit = Work;
        Host.RunPieces = [raised = false](long count, const auto& piece, const auto& watch) mutable {
            for (long number = 0; number < count; ++number) {
                if (!raised && number == count / 2)
                    raised = std::raise(SIGINT) == 0; // a second one ends the program
                piece(number);
                watch(number + 1);
            }
        };
        std::vector<std::string> arguments{path};
        arguments.insert(arguments.end(), given.begin(), given.end());
        RunStudies(ParseOptions(arguments), &job, end);
        EXPECT_FALSE(end.Complete) << message;
        EXPECT_EQ(end.Message, message);
        EXPECT_FALSE(end.Studies.Compared || end.Studies.Resampled) << message;
        EXPECT_TRUE(end.Studies.Profiles.empty()) << message;
        EXPECT_TRUE(Work == fit) << message;
    }
}

} // namespace
} // namespace Quillon

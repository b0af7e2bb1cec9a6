// Sets weighted by their noise, against the same fit with the better set taken several times.
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

// The job of a small case with "noise = ..." lines of its sets and a line of [fit]; "" none.
std::string NoiseJob(Script& script, const std::string& fit, const std::string& first,
                     const std::string& second) {
    std::string text = JobTextOf(SimulatedWorkspace(SmallCase()), script);
    if (!second.empty()) text += "noise = " + second + "\n"; // the last section is that of set 2
    if (!first.empty()) text.insert(text.find("[set 2]"), "noise = " + first + "\n");
    if (!fit.empty()) text.insert(text.find('\n') + 1, fit + "\n");
    return script.MakeFile("noise.job", text);
}

std::string ResultsOf(const std::string& job) {
    const ProgramEnd end = RunInside({job, "--results", "-", "--quiet"});
    EXPECT_EQ(end.Status, 0) << end.Err;
    return end.Out;
}

// Without the noise that the sets tell.
std::string WithoutNoise(std::string text) {
    for (const char* shown : {"\"noise\": 0.002, ", "\"noise\": null, "})
        for (std::size_t at = text.find(shown); at != std::string::npos; at = text.find(shown))
            text.erase(at, std::string(shown).size());
    return text;
}

TEST(NoiseJob, EqualNoiseChangesNoBit) {
    Script script;
    const std::string plain = ResultsOf(NoiseJob(script, "", "", ""));
    const std::string equal = ResultsOf(NoiseJob(script, "", "0.002", "0.002"));
    EXPECT_EQ(WithoutNoise(equal), WithoutNoise(plain));
    EXPECT_NE(equal, plain);
}

// Half of the noise is four times the weight: the same sums as with the set standing there four times, each
// time with concentrations of its own, which find the same place.
TEST(NoiseJob, HalfTheNoiseCountsAsFourSets) {
    Script script;
    const JsonValue weighted = ReadJson(
        ResultsOf(NoiseJob(script, "convergence-limit = 1e-4\nmax-iterations = 200", "0.004", "0.002")));
    std::string text = JobTextOf(SimulatedWorkspace(SmallCase()), script);
    text.insert(text.find('\n') + 1, "convergence-limit = 1e-4\nmax-iterations = 200\n");
    const std::string second = text.substr(text.find("[set 2]") + 7);
    for (const char* head : {"[set 3]", "[set 4]", "[set 5]"})
        text += head + second;
    const JsonValue repeated = ReadJson(ResultsOf(script.MakeFile("repeated.job", text)));
    const double sum = repeated["sum_of_squares"].Number;
    EXPECT_NEAR(weighted["sum_of_squares"].Number / sum, 1.0, 1e-5);
    const JsonValue plain = ReadJson(ResultsOf(NoiseJob(script, "", "", "")));
    for (const std::size_t place : {0U, 2U}) { // mass and constant
        const JsonValue& one = weighted["parameters"][place];
        const JsonValue& other = repeated["parameters"][place];
        const double error = one["error"].Number;
        EXPECT_EQ(one["slot"].Number, other["slot"].Number);
        EXPECT_NEAR(one["value"].Number, other["value"].Number, 0.02 * error);
        EXPECT_GT(std::abs(plain["parameters"][place]["value"].Number - one["value"].Number), 0.05 * error)
            << "the case has to tell the two apart";
    }
}

TEST(NoiseJob, FromAFirstFitTakesTheRmsOfEachSet) {
    Script script;
    const JsonValue first = ReadJson(ResultsOf(NoiseJob(script, "", "", "")));
    const JsonValue second = ReadJson(ResultsOf(NoiseJob(script, "noise = from-fit", "", "")));
    for (std::size_t set = 0; set < 2; ++set)
        EXPECT_NEAR(second["sets"][set]["noise"].Number, first["sets"][set]["rms"].Number, 1e-9);
    EXPECT_TRUE(first["sets"][0]["noise"].IsNull());
    EXPECT_TRUE(second["converged"].Flag);
}

TEST(NoiseJob, SomeSetsAloneAreRefused) {
    Script script;
    ProgramEnd end = RunInside({NoiseJob(script, "", "0.004", ""), "--results", "-"});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("[set 2] noise: is missing, though set 1 has one"), std::string::npos) << end.Err;
    end = RunInside({NoiseJob(script, "noise = from-fit", "0.004", "0.004"), "--results", "-"});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("noise: [fit] takes the noise from a fit"), std::string::npos) << end.Err;
}

TEST(NoiseJob, SavedFitsKeepIt) {
    Script script;
    const std::string saved = script.Directory() + "/n.quil";
    const std::string job = NoiseJob(script, "", "0.004", "0.002");
    const ProgramEnd end = RunInside({job, "--save", saved, "--results", script.Directory() + "/n.json"});
    ASSERT_EQ(end.Status, 0) << end.Err;
    const JsonValue before = ReadJson(ReadWholeFile(script.Directory() + "/n.json"));
    const JsonValue again = ReadJson(ResultsOf(saved));
    EXPECT_EQ(again["sum_of_squares"].Number, before["sum_of_squares"].Number);
    EXPECT_EQ(again["sets"][1]["noise"].Number, before["sets"][1]["noise"].Number);
    EXPECT_EQ(again["sets"][1]["sha256"].Text, before["sets"][1]["sha256"].Text);
    const ProgramEnd refit = RunInside({saved, "--refit", "--results", "-", "--quiet"});
    EXPECT_NEAR(ReadJson(refit.Out)["sum_of_squares"].Number / before["sum_of_squares"].Number, 1.0, 1e-4);
}

} // namespace
} // namespace Quillon

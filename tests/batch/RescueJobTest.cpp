// Jobs whose fit does not end at a minimum by itself: the key rescue, what results and report say of it.
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

const char* const Examples[] = {"single-species", "monomer-dimer", "ab-complex", "interference"};

// An example's folder in a place of the test's own, and its job with something changed.
class RescueJob : public testing::Test {
protected:
    std::string Take(const std::string& example) {
        Folder = Script_.Directory() + "/" + example;
        fs::copy(std::string(QUILLON_SOURCE) + "/examples/" + example, Folder,
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        return ReadWholeFile(Folder + "/" + example + ".job");
    }
    static std::string With(std::string job, const std::string& text, const std::string& instead) {
        const auto at = job.find(text);
        EXPECT_NE(at, std::string::npos) << text;
        return job.replace(at, text.size(), instead);
    }
    ProgramEnd Run(const std::string& job) const {
        WriteWholeFile(Folder + "/t.job", job);
        return RunInside({Folder + "/t.job", "--results", Folder + "/r.json", "--report", Folder + "/r.txt"});
    }
    JsonValue Results() const { return ReadJson(ReadWholeFile(Folder + "/r.json")); }
    std::string Report() const { return ReadWholeFile(Folder + "/r.txt"); }

    Script Script_;
    std::string Folder;
};

TEST_F(RescueJob, AConstantThatIsFarOffEndsAtTheSameMinimum) {
    const std::string job = Take("ab-complex");
    ASSERT_EQ(Run(job).Status, 0);
    const JsonValue near = Results();
    EXPECT_FALSE(near["rescued"].Flag);
    const std::string far = With(job, "6 = 12 fit", "6 = 4 fit");

    ASSERT_EQ(Run(far).Status, 0);
    const JsonValue found = Results();
    EXPECT_TRUE(found["converged"].Flag);
    EXPECT_TRUE(found["rescued"].Flag);
    EXPECT_TRUE(found["check"]["minimum"].Flag);
    EXPECT_LT(found["check"]["expected_decrease"].Number, 1.0);
    EXPECT_EQ(found["message"].Text, "");
    EXPECT_NEAR(found["sum_of_squares"].Number / near["sum_of_squares"].Number, 1.0, 1e-6);
    EXPECT_NE(Report().find("minimum found by a search with damped steps"), std::string::npos);

    const ProgramEnd plain = Run(With(far, "[fit]\n", "[fit]\nrescue = no\n"));
    EXPECT_EQ(plain.Status, 2);
    EXPECT_FALSE(Results()["rescued"].Flag);
    EXPECT_TRUE(Results()["message"].Text.starts_with(
        "Math Error during sums over data points, aborting fit: The fitted value of data set "))
        << Results()["message"].Text;
}

// A limit that takes any change of the sum for convergence stops the iteration where it stands.
TEST_F(RescueJob, AStopOnTheWayHasItsNumbersAndStatus2) {
    const std::string job = With(Take("monomer-dimer"), "[fit]\n", "[fit]\nconvergence-limit = 1000\n");
    const ProgramEnd plain = Run(With(job, "[fit]\n", "[fit]\nrescue = no\n"));
    EXPECT_EQ(plain.Status, 2);
    const std::string told = "Stopped short of a minimum: ";
    EXPECT_TRUE(LinesOf(plain.Err).back().starts_with(told)) << plain.Err;
    const JsonValue stopped = Results();
    EXPECT_FALSE(stopped["converged"].Flag);
    EXPECT_FALSE(stopped["check"]["minimum"].Flag);
    EXPECT_GT(stopped["check"]["expected_decrease"].Number, 1.0);
    EXPECT_TRUE(stopped["message"].Text.starts_with(told));
    EXPECT_GT(stopped["rms_residual"].Number, 0.0);
    EXPECT_NE(Report().find("    Warning -- Stopped short of a minimum: "), std::string::npos);

    ASSERT_EQ(Run(job).Status, 0);
    EXPECT_TRUE(Results()["rescued"].Flag);
    EXPECT_LT(Results()["sum_of_squares"].Number, 0.01 * stopped["sum_of_squares"].Number);
}

// One species fitted to a monomer and its dimer: the curve was far from the data, and nothing told.
TEST_F(RescueJob, AWrongModelIsRemarkedOnAndNoFailure) {
    const std::string job = Take("monomer-dimer");
    const std::string remark = "The fit leaves more than the noise of the data";
    const ProgramEnd right = Run(job);
    EXPECT_EQ(right.Status, 0);
    EXPECT_EQ(right.Err.find(remark), std::string::npos) << right.Err;
    EXPECT_TRUE(Results()["remark"].IsNull());

    const ProgramEnd wrong = Run(With(job, "model = 2", "model = 1"));
    EXPECT_EQ(wrong.Status, 0);
    EXPECT_NE(wrong.Err.find(remark), std::string::npos) << wrong.Err;
    EXPECT_NE(wrong.Err.find("restarts = 6 in [fit] searches for others."), std::string::npos) << wrong.Err;
    EXPECT_TRUE(Results()["converged"].Flag);
    EXPECT_TRUE(Results()["remark"].Text.starts_with(remark));
    EXPECT_NE(Report().find("    Warning -- The fit leaves more than the noise of the"), std::string::npos);
}

TEST_F(RescueJob, TheExamplesAreTheSameToTheByteWithAndWithoutIt) {
    for (const char* example : Examples) {
        const std::string job = Take(example);
        ASSERT_EQ(Run(job).Status, 0) << example;
        const std::string results = ReadWholeFile(Folder + "/r.json");
        const std::string report = Report();
        ASSERT_EQ(Run(With(job, "[fit]\n", "[fit]\nrescue = no\n")).Status, 0) << example;
        EXPECT_EQ(ReadWholeFile(Folder + "/r.json"), results) << example;
        EXPECT_EQ(Report(), report) << example;
    }
}

} // namespace
} // namespace Quillon

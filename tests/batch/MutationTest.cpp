// Mutated jobs by the thousand: whatever stands in a job, the program ends with one of its three statuses,
// says why in one line when it is the job's fault, and leaves no half-written output.
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

using Random = std::mt19937;

std::size_t Below(Random& random, std::size_t limit) {
    return limit == 0 ? 0 : random() % limit;
}

// What a user may put in the place of a word, and what nobody would.
const std::vector<std::string>& Words() {
    static const std::vector<std::string> words = {
        "0",  "-1",    "1e30",   "-1e30",        "1e-30",        "nan",   "22",      "8",
        "11", "5",     "yes",    "no",           "hold",         "fit",   "lower",   "upper",
        "*",  "molar", "weight", "signal",       "set 3",        "[fit]", "[set 2]", "=",
        ";",  "\"",    "\xff\n", "interference", "6.9",          "7.0",   "A",       "D",
        "2",  "6",     "1e-7",   "1000000",      "[parameters]", "\r",    ".",       "18"};
    return words;
}

void ReplaceWord(Random& random, std::string& text) {
    const std::size_t at = Below(random, text.size());
    const std::size_t start = text.find_last_of(" =\n", at);
    const std::size_t end = text.find_first_of(" \n", at);
    const std::size_t from = start == std::string::npos ? 0 : start + 1;
    const std::size_t to = end == std::string::npos ? text.size() : end;
    if (to >= from) text.replace(from, to - from, Words()[Below(random, Words().size())]);
}

void MoveLine(Random& random, std::string& text, bool copy) {
    std::vector<std::string> lines = LinesOf(text);
    if (lines.empty()) return;
    const std::size_t from = Below(random, lines.size());
    const std::string line = lines[from];
    if (!copy) lines.erase(lines.begin() + static_cast<long>(from));
    lines.insert(lines.begin() + static_cast<long>(Below(random, lines.size() + 1)), line);
    text.clear();
    for (const std::string& each : lines)
        text += each + "\n";
}

void Mutate(Random& random, std::string& text) {
    switch (random() % 6) {
    case 0:
        if (!text.empty()) text[Below(random, text.size())] = static_cast<char>(random());
        break;
    case 1:
        text.insert(Below(random, text.size() + 1), 1, static_cast<char>(random() % 96 + 32));
        break;
    case 2:
        text.erase(Below(random, text.size()), Below(random, 20));
        break;
    case 3:
        MoveLine(random, text, random() % 2 == 0);
        break;
    default:
        ReplaceWord(random, text);
    }
}

struct MutatedRuns {
    Script TheScript;
    std::string Good;
    std::string Results = TheScript.Directory() + "/r.json";
    std::string Points = TheScript.Directory() + "/p.csv";
    int Runs = 0;
    int Statuses[3] = {0, 0, 0};

    MutatedRuns() {
        ModelCase small = SmallCase(12);
        small.Sets[1].ToleranceA = 0.02F;
        const Workspace truth = SimulatedWorkspace(small);
        Good = JobTextOf(truth, TheScript);
        Good.insert(Good.find('\n') + 1, "max-iterations = 40\n");
        Good += "offset-of = 1\nchannel = A\nbaseline = set1.txt\n[parameters]\n0 = 0.7 fit\n"
                "Ln K(1>N) = 1 fit lower -5 upper 15\n8 = * hold\nZero Offset, set 1 = 0.01 fit\n";
    }

    void Run(const std::string& text) {
        const std::string path = TheScript.MakeFile("fit.job", text);
        // Files are brought to the disk, which takes longer than the fit; most runs are without them.
        const bool files = ++Runs % 16 == 0;
        const ProgramEnd end = files ? RunWithFiles(path) : RunInside({path, "--quiet", "--results", "-"});
        ASSERT_TRUE(end.Status >= 0 && end.Status <= 2) << end.Status;
        ++Statuses[end.Status];
        if (end.Status == 1) {
            EXPECT_TRUE(LinesOf(end.Err).back().starts_with(path + ":")) << end.Err;
            EXPECT_EQ(end.Out, "");
        } else {
            const std::string results = files ? ReadWholeFile(Results) : end.Out;
            EXPECT_NO_THROW(EXPECT_EQ(ReadJson(results)["converged"].Flag, end.Status == 0));
        }
    }

    ProgramEnd RunWithFiles(const std::string& path) {
        fs::remove(Results);
        fs::remove(Points);
        const ProgramEnd end = RunInside({path, "--quiet", "--results", Results, "--points", Points});
        EXPECT_EQ(fs::exists(Results), end.Status != 1);
        EXPECT_EQ(fs::exists(Points), end.Status == 0);
        return end;
    }
};

TEST(BatchMutations, OfWordsBytesAndLines) {
    MutatedRuns runs;
    Random random(20);
    for (int i = 0; i < 6000 && !testing::Test::HasFailure(); ++i) {
        std::string text = runs.Good;
        // The channel lies outside the scan: half of the jobs are without it. With the scan of another set
        // for a baseline next to nothing is left to be fitted: half of those are without it, and so end well.
        if (i % 2 == 0) text.erase(text.find("channel"), 12);
        if (i % 4 == 0) text.erase(text.find("baseline"), 20);
        if (i % 4 == 2) text.replace(text.find("max-iterations = 40"), 19, "max-iterations = 1\nrescue = no");
        // Most mutations end in a line that is told; now and then the job stands as it is.
        for (std::size_t n = i % 10 == 0 ? 0 : 1 + Below(random, 3); n > 0; --n)
            Mutate(random, text);
        SCOPED_TRACE(text);
        runs.Run(text);
    }
    for (const int count : runs.Statuses) // all kinds of ends have come
        EXPECT_GT(count, 10);
}

TEST(BatchMutations, EveryTruncation) {
    MutatedRuns runs;
    std::string text = runs.Good;
    text.erase(text.find("channel"), 12);
    for (; !text.empty() && !testing::Test::HasFailure(); text.pop_back())
        runs.Run(text);
}

} // namespace
} // namespace Quillon

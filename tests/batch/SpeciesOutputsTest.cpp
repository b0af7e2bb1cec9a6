// Species, masses, integration and simulation on the command line.
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"
#include "tests/support/ReferenceModel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Cells(const std::string& line, char mark) {
    std::vector<std::string> cells;
    std::string cell;
    for (const char c : line + mark) {
        if (c != mark) {
            cell += c;
            continue;
        }
        cells.push_back(cell);
        cell.clear();
    }
    return cells;
}

class SpeciesOutputs : public testing::Test {
protected:
    Script TheScript;
    Workspace Truth;
    std::string Job;

    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }
    std::string Text(const std::string& name) const { return ReadWholeFile(Path(name)); }
    void Prepare(const ModelCase& theCase, const std::string& more = "") {
        Truth = SimulatedWorkspace(theCase);
        Job = TheScript.MakeFile("case.job", JobTextOf(Truth, TheScript) + ParameterTextOf(Truth) + more);
    }
    // A run that has to end well.
    void Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), Job);
        arguments.push_back("--quiet");
        const ProgramEnd end = RunInside(arguments);
        ASSERT_EQ(end.Status, 0) << end.Err;
    }
    // What a run that fails says.
    std::string Failure(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), Job);
        const ProgramEnd end = RunInside(arguments);
        EXPECT_EQ(end.Status, 1);
        return end.Err;
    }
};

TEST_F(SpeciesOutputs, GraphsOfSpeciesAddUpToTheFunction) {
    Prepare(SmallCase());
    Run({"--graph", "species=" + Path("s.dat"), "--graph", "species-fraction:2=" + Path("f.dat"), "--graph",
         "function=" + Path("y.dat"), "--results", Path("r.json")});
    const std::vector<std::string> species = LinesOf(Text("s.dat")), curve = LinesOf(Text("y.dat"));
    const JsonValue results = ReadJson(Text("r.json"));
    double offset = 0.0;
    for (const JsonValue& parameter : results["parameters"].Items)
        if (parameter["name"].Text == "Zero Offset, set 2") offset = parameter["value"].Number;
    const std::vector<std::string> row = Cells(species.at(20), '\t'), y = Cells(curve.at(20), '\t');
    ASSERT_GE(row.size(), 12U); // monomer, dimer, total of two sets: x and y each
    const auto number = [](const std::string& text) { return std::stod(text); };
    EXPECT_NEAR(number(row[7]) + number(row[9]), number(row[11]), 1e-5);
    EXPECT_NEAR(number(row[11]) + offset, number(y[3]), 1e-5);
    const std::vector<std::string> parts = Cells(LinesOf(Text("f.dat")).at(20), '\t');
    EXPECT_NEAR(number(parts[1]) + number(parts[3]), 1.0, 1e-5);
}

TEST_F(SpeciesOutputs, MassesTakeTheirOptions) {
    Prepare(SmallCase(60));
    Run({"--graph", "mass-r=" + Path("m.dat"), "--graph", "mass-c:1=" + Path("c.svg"), "--mass-points", "12",
         "--mass-of", "fit"});
    // 60 points in windows of 12 give 49 masses.
    std::size_t lines = 0;
    for (const std::string& line : LinesOf(Text("m.dat")))
        lines += !line.empty() && (std::isdigit(static_cast<unsigned char>(line[0])) || line[0] == '-');
    EXPECT_EQ(lines, 49U);
    EXPECT_NE(Text("c.svg").find("Weight-Average"), std::string::npos);
    EXPECT_NE(Failure({"--graph", "mass-r=" + Path("n.dat"), "--mass-points", "61", "--save", Path("n.quil"),
                       "--graph", "data=" + Path("d.csv")})
                  .find("no data set has 61 points, the length of the window"),
              std::string::npos);
    EXPECT_FALSE(fs::exists(Path("n.dat")));
    EXPECT_TRUE(fs::exists(Path("n.quil")) && fs::exists(Path("d.csv"))) << "the fit was lost with a graph";
    EXPECT_NE(Failure({"--graph", "mass-c=" + Path("n.dat"), "--mass-species", "B"})
                  .find("--mass-species B: the model has no species B"),
              std::string::npos);
    EXPECT_NE(Failure({"--mass-points", "9"}).find("--mass-points needs a number from 10 on, not '9'"),
              std::string::npos);
    EXPECT_NE(Failure({"--mass-of", "both"}).find("--mass-of is data or fit, not 'both'"), std::string::npos);
}

TEST_F(SpeciesOutputs, IntegrationIsATableOfAllSets) {
    Prepare(SmallCase());
    Run({"--integrate", Path("cell.csv"), "--cell", "6.9,7.1"});
    const std::vector<std::string> lines = LinesOf(Text("cell.csv"));
    ASSERT_EQ(lines.size(), 1U + 2U * 3U);
    EXPECT_EQ(lines[0], "set,label,inner_cm,outer_cm,species,signal,mg_per_ml,molar,share");
    for (std::size_t set = 0; set < 2; ++set) {
        double signal = 0.0, share = 0.0;
        for (std::size_t k = 2; k <= 3; ++k) {
            const std::vector<std::string> cells = Cells(lines[3 * set + k], ',');
            ASSERT_EQ(cells.size(), 9U);
            signal += std::stod(cells[5]);
            share += std::stod(cells[8]);
        }
        const std::vector<std::string> total = Cells(lines[3 * set + 1], ',');
        EXPECT_EQ(total[0], std::to_string(set + 1));
        EXPECT_EQ(total[2] + "|" + total[3] + "|" + total[4], "6.9|7.1|Total");
        EXPECT_NEAR(std::stod(total[5]), signal, 1e-12 * signal);
        EXPECT_NEAR(share, 1.0, 1e-12);
        EXPECT_EQ(total[8], "1");
    }
    for (const char* cell : {"7", "7,6", "6.5,6.5", "a,b", "-1,7"})
        EXPECT_NE(Failure({"--integrate", Path("x.csv"), "--cell", cell}).find("--cell"), std::string::npos);
    EXPECT_NE(Failure({"--integrate", Path("x.csv"), "--cell", "6.5,6.5001"})
                  .find("--cell 6.5,6.5001: Division by zero"),
              std::string::npos);
    EXPECT_FALSE(fs::exists(Path("x.csv")));
}

TEST_F(SpeciesOutputs, SimulatedScansAreTheModelAndFitBack) {
    Prepare(SmallCase());
    Run({"--simulate", Path("out")});
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(Path("out")))
        names.push_back(entry.path().filename().string());
    EXPECT_EQ(names.size(), 3U);
    ASSERT_TRUE(fs::exists(Path("out/simulated.job")));
    Job = Path("out/simulated.job");
    Run({"--points", Path("p.csv"), "--results", Path("r.json"), "--report", Path("r.txt")});
    // Every point is the reference model at the truth, to the digits of singles.
    const RealVector expected = ReferenceValues(Truth, ReferenceParms(Truth));
    const std::vector<std::string> lines = LinesOf(Text("p.csv"));
    ASSERT_EQ(static_cast<long>(lines.size()), Truth.NumPts + 1);
    for (std::size_t p = 1; p < lines.size(); ++p)
        EXPECT_NEAR(std::stod(Cells(lines[p], ',')[5]), static_cast<double>(expected[p - 1]), 2e-6);
    // The fit starts at the truth and stays there.
    const JsonValue results = ReadJson(Text("r.json"));
    EXPECT_LT(results["rms_residual"].Number, 1e-5);
    for (const JsonValue& parameter : results["parameters"].Items) {
        const auto slot = static_cast<long>(parameter["slot"].Number);
        EXPECT_NEAR(parameter["internal"].Number, Truth.Parms[slot], 2e-4) << slot;
    }
}

TEST_F(SpeciesOutputs, SimulatedScansWereCutByTheRangeOfTheJobAgain) {
    Prepare(SmallCase(120));
    std::string text = Text("case.job");
    for (std::size_t at = text.find("inner = "); at != std::string::npos; at = text.find("inner = ", at)) {
        const std::size_t end = text.find('\n', text.find("outer = ", at));
        text.replace(at, end - at, "range = auto");
    }
    Job = TheScript.MakeFile("auto.job", text);
    Run({"--simulate", Path("out")});
    const std::string job = Text("out/simulated.job");
    EXPECT_EQ(job.find("range"), std::string::npos) << job;
    long points = 0;
    for (const auto& entry : fs::directory_iterator(Path("out")))
        if (entry.path().extension() != ".job")
            points += static_cast<long>(LinesOf(ReadWholeFile(entry.path().string())).size()) - 2;
    ASSERT_GT(points, 100);
    Job = Path("out/simulated.job");
    Run({"--points", Path("p.csv")});
    EXPECT_EQ(static_cast<long>(LinesOf(Text("p.csv")).size()), points + 1);
}

TEST_F(SpeciesOutputs, NoiseFollowsTheSeed) {
    const auto bytes = [&](const std::string& folder, const std::string& section) {
        Prepare(SmallCase(), section);
        Run({"--simulate", Path(folder)});
        std::string all;
        for (const char* row : {"s01", "s02"})
            for (const auto& entry : fs::directory_iterator(Path(folder)))
                if (entry.path().filename().string().starts_with(row))
                    all += ReadWholeFile(entry.path().string());
        return all;
    };
    const std::string none = bytes("a", "");
    const std::string one = bytes("b", "[simulation]\nnoise = 0.005\n");
    EXPECT_NE(none, one);
    EXPECT_EQ(one, bytes("c", "[simulation]\nnoise = 0.005\nseed = 1\n"));
    EXPECT_NE(one, bytes("d", "[simulation]\nnoise = 0.005\nseed = 2\n"));
    EXPECT_NE(Text("d/simulated.job").find("\n; noise 0.005, seed 2\n"), std::string::npos)
        << "the noise had digits that nobody wrote";
}

TEST_F(SpeciesOutputs, SimulatedScansScatterByTheNoiseOfTheJob) {
    const auto values = [&](const std::string& folder, const std::string& section) {
        Prepare(SmallCase(), section);
        Run({"--simulate", Path(folder)});
        std::vector<double> all;
        for (const char* row : {"s01", "s02"})
            for (const auto& entry : fs::directory_iterator(Path(folder))) {
                if (!entry.path().filename().string().starts_with(row)) continue;
                std::istringstream text(ReadWholeFile(entry.path().string()));
                std::string line;
                std::getline(text, line);
                std::getline(text, line);
                for (double radius = 0.0, value = 0.0; text >> radius >> value;)
                    all.push_back(value);
            }
        fs::remove_all(Path(folder));
        return all;
    };
    constexpr double Noise = 0.004;
    const std::vector<double> truth = values("none", "");
    ASSERT_EQ(static_cast<long>(truth.size()), Truth.NumPts);
    double sum = 0.0, squares = 0.0;
    long count = 0;
    for (int seed = 1; seed <= 100; ++seed) { // two scans each
        const std::vector<double> noisy =
            values("noisy", "[simulation]\nnoise = 0.004\nseed = " + std::to_string(seed) + "\n");
        ASSERT_EQ(noisy.size(), truth.size());
        for (std::size_t i = 0; i < truth.size(); ++i) {
            const double deviate = (noisy[i] - truth[i]) / Noise;
            sum += deviate;
            squares += deviate * deviate;
            ++count;
        }
    }
    // The sum has the variance n; the squares are a chi-square of n degrees of freedom: one case in a
    // thousand.
    const auto n = static_cast<double>(count);
    EXPECT_NEAR(sum, 0.0, 3.3 * std::sqrt(n));
    EXPECT_NEAR(squares, n, 3.3 * std::sqrt(2.0 * n));
}

TEST_F(SpeciesOutputs, SimulationNeedsEveryParameter) {
    Prepare(SmallCase());
    std::string text = Text("case.job");
    const std::size_t line = text.find("\n8 = ");
    ASSERT_NE(line, std::string::npos);
    text.erase(line + 1, text.find('\n', line + 1) - line);
    Job = TheScript.MakeFile("less.job", text);
    EXPECT_NE(Failure({"--simulate", Path("out")})
                  .find("a simulation needs a value for every parameter; without "
                        "one: Ln c(A,mon), set 1"),
              std::string::npos);
    EXPECT_FALSE(fs::exists(Path("out")));
}

TEST_F(SpeciesOutputs, SimulationOverwritesNothing) {
    Prepare(SmallCase());
    fs::create_directory(Path("full"));
    TheScript.MakeFile("full/notes.txt", "mine");
    EXPECT_NE(
        Failure({"--simulate", Path("full")}).find("the folder is not empty, and nothing is overwritten"),
        std::string::npos);
    EXPECT_EQ(Text("full/notes.txt"), "mine");
    EXPECT_NE(Failure({"--simulate", Path("full/notes.txt")}).find("there is a file of that name"),
              std::string::npos);
    EXPECT_NE(Failure({"--simulate", Path("no/where")}).find("Path not found"), std::string::npos);
    EXPECT_NE(Failure({"--simulate", Path("out"), "--report", Path("r.txt")})
                  .find("--simulate fits nothing: --report does not go with it"),
              std::string::npos);
    EXPECT_NE(Failure({"--simulate"}).find("no folder behind --simulate"), std::string::npos);
    fs::create_directory(Path("empty"));
    Run({"--simulate", Path("empty")});
    EXPECT_TRUE(fs::exists(Path("empty/simulated.job")));
}

TEST_F(SpeciesOutputs, AFullDiskLeavesNothingHalf) {
    Prepare(SmallCase(400));
    ProgramStart start;
    start.Arguments = {Job, "--simulate", Path("out")};
    start.LargestFile = 4000; // less than a scan
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("Disk full"), std::string::npos) << end.Err;
    EXPECT_FALSE(fs::exists(Path("out")));
}

TEST_F(SpeciesOutputs, AModelThatFailsInArithmeticWritesNothing) {
    Prepare(SmallCase());
    std::string text = Text("case.job");
    const std::size_t line = text.find("\n8 = ");
    text.replace(line + 1, text.find('\n', line + 1) - line - 1, "8 = 3000");
    Job = TheScript.MakeFile("wild.job", text);
    const ProgramEnd end = RunInside({Job, "--simulate", Path("out")});
    EXPECT_EQ(end.Status, 2);
    EXPECT_NE(
        end.Err.find("Math error during function evaluation, aborting fit: The fitted value of data set"),
        std::string::npos)
        << end.Err;
    EXPECT_FALSE(fs::exists(Path("out")));
}

} // namespace
} // namespace Quillon

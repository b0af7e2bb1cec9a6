// The example scans: made again byte for byte, true to the physics that they claim, and fitted to their
// truth.
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <sys/wait.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

const std::string Source = QUILLON_SOURCE;

// Runs a command with its output going to files of the script's directory; gives the exit status.
int RunCommand(const Script& script, const std::string& command) {
    const std::string out = script.Directory() + "/out", err = script.Directory() + "/err";
    const int status = std::system((command + " >\"" + out + "\" 2>\"" + err + "\"").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string Quoted(const std::string& path) {
    return "\"" + path + "\"";
}

int Simulate(const Script& script, const std::string& truth, const std::string& directory,
             const std::string& option = "") {
    return RunCommand(script, Quoted(QUILLON_SIMULATE) + " " + Quoted(truth) + " " + Quoted(directory) + " " +
                                  option);
}

struct Point {
    double Radius, Value;
};
std::vector<Point> PointsOf(const std::string& path, double inner, double outer) {
    std::istringstream in(ReadWholeFile(path));
    std::string line;
    std::getline(in, line);
    std::getline(in, line);
    std::vector<Point> points;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        Point p{};
        words >> p.Radius >> p.Value;
        if (p.Radius >= inner && p.Radius <= outer) points.push_back(p);
    }
    return points;
}

const char* const Folders[] = {"single-species", "monomer-dimer", "ab-complex", "interference"};

TEST(Examples, AreMadeAgainByteForByte) {
    for (const std::string folder : Folders) {
        Script script;
        const std::string committed = Source + "/examples/" + folder;
        ASSERT_EQ(Simulate(script, committed + "/truth.txt", script.Directory()), 0);
        int scans = 0;
        for (const fs::directory_entry& each : fs::directory_iterator(committed)) {
            const std::string ending = each.path().extension().string();
            if (ending == ".txt" || ending == ".job") continue;
            ++scans;
            const std::string again = script.Directory() + "/" + each.path().filename().string();
            ASSERT_TRUE(fs::exists(again)) << each.path() << " stands in no truth file";
            EXPECT_EQ(ReadWholeFile(each.path().string()), ReadWholeFile(again)) << each.path();
        }
        EXPECT_GE(scans, 3);
    }
}

TEST(Examples, LookLikeScansOfTheInstrument) {
    const std::string absorbance = ReadWholeFile(Source + "/examples/monomer-dimer/00020.RA2");
    EXPECT_EQ(absorbance.find("\r\nR 2 20.0 10000 0079200 8.6853E10 280 32\r\n   5.7000  "),
              absorbance.find("\r\n"));
    const std::string fringes = ReadWholeFile(Source + "/examples/interference/00020.IP1");
    EXPECT_EQ(fringes.rfind("cm/pixel:  0.00080000000, ", 0), 0U);
    EXPECT_NE(fringes.find("\r\nP 1 20.0 10000 "), std::string::npos);
    // Every line ends with CR LF, and numbers stand in their columns.
    for (const std::string* bytes : {&absorbance, &fringes}) {
        EXPECT_EQ(std::count(bytes->begin(), bytes->end(), '\n'),
                  std::count(bytes->begin(), bytes->end(), '\r'));
        std::istringstream in(*bytes);
        std::string line;
        for (int number = 1; std::getline(in, line); ++number)
            if (number > 2) {
                EXPECT_EQ(line.size(), bytes == &absorbance ? 41U : 25U) << number;
            }
    }
}

TEST(Examples, SignalsAreInTheRangeOfTheOptics) {
    for (const auto& [file, inner, outer] : {std::tuple{"single-species/00036.RA1", 6.79, 7.14},
                                             {"monomer-dimer/00044.RA2", 5.87, 6.12},
                                             {"ab-complex/00030.RA1", 6.76, 7.14}}) {
        const std::vector<Point> points = PointsOf(Source + "/examples/" + file, inner, outer);
        const auto less = [](const Point& a, const Point& b) { return a.Value < b.Value; };
        EXPECT_GT(points.size(), 50U) << file;
        EXPECT_LT(std::max_element(points.begin(), points.end(), less)->Value, 1.3) << file;
        EXPECT_GT(std::max_element(points.begin(), points.end(), less)->Value, 0.8) << file;
        EXPECT_GT(std::min_element(points.begin(), points.end(), less)->Value, 0.0) << file;
    }
}

// Without noise ln(signal - offset) of a single species is a straight line in r^2/2 whose slope is sigma, and
// the sector holds what was loaded.
TEST(Examples, SingleSpeciesFollowsItsEquation) {
    Script script;
    ASSERT_EQ(
        Simulate(script, Source + "/examples/interference/truth.txt", script.Directory(), "--noise-free"), 0);
    const std::tuple<const char*, double, double> scans[] = {
        {"00020.IP1", 10000, 0.35}, {"00040.IP1", 14000, -0.42}, {"00060.IP1", 20000, 0.18}};
    for (const auto& [file, rpm, offset] : scans) {
        const double stretch = 1e-11 * rpm * rpm, inner = 6.78 + stretch, outer = 7.15 + stretch;
        const std::vector<Point> points =
            PointsOf(script.Directory() + "/" + file, inner + 1e-4, outer - 1e-4);
        const double omega = rpm * 3.14159265358979 / 30;
        const double sigma = 30000 * (1 - 0.735 * 1.003994) * omega * omega / (8.3144710e7 * 293.15);
        const Point &a = points.front(), &b = points.back();
        const double slope = std::log((b.Value - offset) / (a.Value - offset)) /
                             ((b.Radius * b.Radius - a.Radius * a.Radius) / 2);
        EXPECT_NEAR(slope, sigma, 2e-5 * sigma) << file;
        double amount = 0; // trapezes over r dr, from wall to wall
        for (std::size_t i = 1; i < points.size(); ++i)
            amount += (points[i].Radius * points[i].Radius - points[i - 1].Radius * points[i - 1].Radius) /
                      2 * ((points[i].Value + points[i - 1].Value) / 2 - offset);
        amount += (a.Radius * a.Radius - inner * inner) / 2 * (a.Value - offset) +
                  (outer * outer - b.Radius * b.Radius) / 2 * (b.Value - offset);
        const double mean = amount / ((outer * outer - inner * inner) / 2);
        EXPECT_NEAR(mean, 2.0e-5 * 82680 * 1.2, 2e-3) << file;
    }
}

TEST(Examples, SimulatorTellsWhatIsWrong) {
    Script script;
    const std::string& directory = script.Directory();
    EXPECT_EQ(Simulate(script, directory + "/none.txt", directory), 1);
    EXPECT_NE(ReadWholeFile(directory + "/err").find("none.txt: cannot be read"), std::string::npos);
    const std::string truth = ReadWholeFile(Source + "/examples/single-species/truth.txt");
    const auto changed = [&](const std::string& from, const std::string& to) {
        std::string text = truth;
        text.replace(text.find(from), from.size(), to);
        return Simulate(script, script.MakeFile("truth.txt", text), directory);
    };
    EXPECT_EQ(changed("mass = 45.0", "mass = heavy"), 1);
    EXPECT_EQ(ReadWholeFile(directory + "/err"),
              "quillon-simulate: [component A]: mass: \"heavy\" is no number\n");
    EXPECT_EQ(changed("vbar = 0.735", ""), 1);
    EXPECT_NE(ReadWholeFile(directory + "/err").find("[component A]: vbar is missing"), std::string::npos);
    EXPECT_EQ(changed("columns = A", "columns = Z"), 1);
    EXPECT_NE(ReadWholeFile(directory + "/err").find("there is no section [column Z]"), std::string::npos);
    EXPECT_EQ(changed("[component A]", "component A"), 1);
    EXPECT_NE(ReadWholeFile(directory + "/err").find("truth.txt:10: neither a section nor"),
              std::string::npos);
    EXPECT_EQ(Simulate(script, Source + "/examples/single-species/truth.txt", directory + "/none"), 1);
    EXPECT_EQ(RunCommand(script, Quoted(QUILLON_SIMULATE)), 1);
    EXPECT_EQ(RunCommand(script, Quoted(QUILLON_SIMULATE) + " --help"), 0);
    EXPECT_EQ(ReadWholeFile(directory + "/out").rfind("usage: ", 0), 0U);
}

// --- the jobs return the truth
// --------------------------------------------------------------------------------

struct Estimate {
    double Value, Error;
};
Estimate EstimateOf(const std::string& results, const std::string& name) {
    const auto at = results.find("\"name\": \"" + name + "\"");
    if (at == std::string::npos) return {NAN, NAN};
    const auto number = [&](const char* key) {
        return std::atof(results.c_str() + results.find(key, at) + std::string(key).size());
    };
    return {number("\"value\": "), number("\"error\": ")};
}

struct Expectation {
    const char *Folder, *Name;
    double Truth, LargestError;
};
const Expectation Expectations[] = {
    {"single-species", "MW A mon", 45.0, 0.5},
    {"single-species", "Zero Offset, set 1", 0.006, 0.003},
    {"monomer-dimer", "Ln K(1>N)", 11.9, 0.1},
    {"monomer-dimer", "Zero Offset, set 1", 0.004, 0.003},
    {"monomer-dimer", "Zero Offset, set 2", 0.009, 0.003},
    {"monomer-dimer", "Zero Offset, set 3", -0.003, 0.003},
    {"ab-complex", "Ln K(A+B)", 13.1, 0.1},
    {"ab-complex", "Zero Offset, set 1", 0.005, 0.003},
    {"ab-complex", "Zero Offset, set 3", -0.004, 0.003},
    {"interference", "MW A mon", 30.0, 0.1},
    {"interference", "Zero Offset, set 1", 0.35, 0.01},
    {"interference", "Zero Offset, set 2", -0.42, 0.01},
    {"interference", "Zero Offset, set 3", 0.18, 0.01},
};

TEST(Examples, FitsReturnTheTruthWithinTheirErrors) {
    for (const std::string folder : Folders) {
        Script script;
        const std::string job = Source + "/examples/" + folder + "/" + folder + ".job";
        const std::string results = script.Directory() + "/results.json";
        ASSERT_EQ(RunCommand(script, Quoted(QUILLON_FIT) + " " + Quoted(job) + " --quiet --results " +
                                         Quoted(results)),
                  0)
            << ReadWholeFile(script.Directory() + "/err");
        const std::string text = ReadWholeFile(results);
        for (const Expectation& each : Expectations) {
            if (folder != each.Folder) continue;
            const Estimate found = EstimateOf(text, each.Name);
            EXPECT_GT(found.Error, 0) << folder << ": " << each.Name;
            EXPECT_LT(found.Error, each.LargestError) << folder << ": " << each.Name;
            EXPECT_LT(std::abs(found.Value - each.Truth), 3.5 * found.Error)
                << folder << ": " << each.Name << " " << found.Value;
        }
    }
}

// --- the simulator of the examples and the program's own, which share no code
// ----------------------------------------------------------------

// The column y of a table of points.
std::vector<double> MeasuredValues(const std::string& csv) {
    std::istringstream lines(csv);
    std::vector<double> values;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        std::size_t at = 0;
        for (int comma = 0; comma < 5; ++comma)
            at = line.find(',', at) + 1;
        values.push_back(std::atof(line.c_str() + at));
    }
    return values;
}

// Every parameter of a result with its value, as a job lists them.
std::string ListedValues(const std::string& results) {
    std::string list = "\n[parameters]\n";
    const std::string mark = "{\"slot\": ";
    const auto end = results.find("\n  ]", results.find("\"parameters\": ["));
    for (auto at = results.find(mark); at < end; at = results.find(mark, at + 1)) {
        const std::string entry = results.substr(at, results.find('}', at) - at);
        if (entry.find("\"state\": \"tied\"") != std::string::npos) continue;
        const auto value = entry.find("\"value\": ") + 9;
        list += entry.substr(mark.size(), entry.find(',') - mark.size()) + " = " +
                entry.substr(value, entry.find(',', value) - value) + "\n";
    }
    return list;
}

TEST(Examples, AreWhatTheProgramSimulatesAtTheirTruth) {
    for (const std::string folder : Folders) {
        Script script;
        const std::string examples = Source + "/examples/" + folder;
        const std::string& here = script.Directory();
        ASSERT_EQ(Simulate(script, examples + "/truth.txt", here, "--noise-free"), 0);
        std::string job = ReadWholeFile(examples + "/" + folder + ".job");
        job.replace(job.find("[fit]\n"), 6, "[fit]\nconvergence-limit = 1e-5\nmax-iterations = 200\n");
        const auto run = [&](const std::string& path, const std::string& options) {
            EXPECT_EQ(RunCommand(script, Quoted(QUILLON_FIT) + " " + Quoted(path) + " --quiet " + options), 0)
                << folder << ": " << ReadWholeFile(here + "/err");
        };
        run(script.MakeFile("free.job", job),
            "--results " + Quoted(here + "/free.json") + " --points " + Quoted(here + "/free.csv"));
        const std::string results = ReadWholeFile(here + "/free.json");
        for (const Expectation& each : Expectations)
            if (folder == each.Folder) {
                EXPECT_NEAR(EstimateOf(results, each.Name).Value, each.Truth, 1e-3) << folder << each.Name;
            }
        const std::string sets = job.substr(0, job.find("[parameters]"));
        run(script.MakeFile("listed.job", sets + ListedValues(results)),
            "--simulate " + Quoted(here + "/simulated"));
        run(here + "/simulated/simulated.job", "--points " + Quoted(here + "/own.csv"));
        const std::vector<double> theirs = MeasuredValues(ReadWholeFile(here + "/free.csv"));
        const std::vector<double> own = MeasuredValues(ReadWholeFile(here + "/own.csv"));
        ASSERT_EQ(theirs.size(), own.size()) << folder;
        ASSERT_GT(theirs.size(), 200U);
        for (std::size_t i = 0; i < own.size(); ++i) // scans are written to four decimals
            ASSERT_NEAR(own[i], theirs[i], 6.5e-5) << folder << " point " << i + 1;
    }
}

} // namespace
} // namespace Quillon

// What is wrong with a job's files: exit status 1, one line on standard error that names the job, the key and
// the reason, and no output. The built program, as a user runs it.
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// A directory with a good job of two sets, fit.job, to spoil.
struct GoodJob {
    Script TheScript;
    Workspace Truth = SimulatedWorkspace(SmallCase());
    std::string Text = JobTextOf(Truth, TheScript);

    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }

    // Runs the job with all outputs asked for.
    ProgramEnd Run(const std::string& text, bool unprivileged = false) {
        TheScript.MakeFile("fit.job", text);
        ProgramStart start;
        start.Arguments = {"fit.job", "--report", "r.txt", "--results=r.json", "--points", "p.csv"};
        start.Directory = TheScript.Directory();
        start.Unprivileged = unprivileged;
        return RunProgram(start);
    }

    // The line that a spoilt job gives, after checking that nothing else has happened.
    std::string LineOf(const std::string& text, bool unprivileged = false) {
        const ProgramEnd end = Run(text, unprivileged);
        EXPECT_EQ(end.Status, 1);
        EXPECT_EQ(end.Out, "");
        for (const char* output : {"r.txt", "r.json", "p.csv"})
            EXPECT_FALSE(fs::exists(Path(output))) << output;
        const std::vector<std::string> lines = LinesOf(end.Err);
        EXPECT_EQ(lines.size(), 1U) << end.Err;
        return lines.empty() ? "" : lines[0];
    }

    // The same with the scan of set 2 replaced.
    std::string LineOfScan(const std::string& bytes) {
        TheScript.MakeFile("set2.txt", bytes);
        return LineOf(Text);
    }
};

// The line about set 2's scan; the key stands in this line of the job.
std::string ScanLine(const GoodJob& job, const std::string& reason) {
    const std::size_t at = job.Text.find("file = set2.txt");
    const auto line = std::count(job.Text.begin(), job.Text.begin() + static_cast<long>(at), '\n') + 1;
    return "fit.job:" + std::to_string(line) + ": [set 2] file: set2.txt: " + reason;
}

const std::string Unreadable = "Error during file read, possible invalid data in file";

TEST(BatchBadInput, TheGoodJobIsGood) {
    GoodJob job;
    const ProgramEnd end = job.Run(job.Text);
    EXPECT_EQ(end.Status, 0) << end.Err;
    EXPECT_TRUE(fs::exists(job.Path("r.txt")));
    EXPECT_TRUE(fs::exists(job.Path("r.json")));
    EXPECT_TRUE(fs::exists(job.Path("p.csv")));
}

TEST(BatchBadInput, JobFileItself) {
    GoodJob job;
    const auto line = [&](const std::string& name, bool unprivileged = false) {
        ProgramStart start;
        start.Arguments = {name};
        start.Directory = job.TheScript.Directory();
        start.Unprivileged = unprivileged;
        const ProgramEnd end = RunProgram(start);
        EXPECT_EQ(end.Status, 1);
        EXPECT_EQ(end.Out, "");
        return end.Err;
    };
    EXPECT_EQ(line("none.job"), "none.job: File not found\n");
    EXPECT_EQ(line("."), ".: it is a directory\n");
    job.TheScript.MakeFile("empty.job", "");
    EXPECT_EQ(line("empty.job"), "empty.job: [set 1]: is missing: a fit needs at least one data set\n");
    job.TheScript.MakeFile("binary.job", std::string("\x7f"
                                                     "ELF\0\0\0\n",
                                                     8));
    EXPECT_EQ(line("binary.job"), "binary.job:1: this is no text file\n");
    fs::permissions(job.TheScript.MakeFile("locked.job", job.Text), fs::perms::none);
    EXPECT_EQ(line("locked.job", true), "locked.job: Permission denied\n");
}

TEST(BatchBadInput, CommandLine) {
    ProgramStart start;
    start.Arguments = {"--refti"};
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_EQ(end.Err, "quillon-fit: unknown option '--refti' (quillon-fit --help tells more)\n");
    start.Arguments = {"--help"};
    EXPECT_EQ(RunProgram(start).Status, 0);
    start.Arguments = {"--version"};
    EXPECT_EQ(RunProgram(start).Out, "quillon-fit, Quillon 4.0.0\n");
}

TEST(BatchBadInput, UnknownKeyNoNumberCrossedRangeNineteenSets) {
    GoodJob job;
    EXPECT_EQ(job.LineOf("[fit]\nmodle = 2\n" + job.Text), "fit.job:2: [fit] modle: unknown key");
    EXPECT_EQ(job.LineOf("[constants]\ndensity = 1.0O4\n"),
              "fit.job:2: [constants] density: '1.0O4' is no number");
    EXPECT_EQ(job.LineOf("[set 1]\nfile = set1.txt\ninner = 7\nouter = 6\n"),
              "fit.job:3: [set 1] inner: lies beyond outer");
    std::string many;
    for (int set = 1; set <= 19; ++set)
        many += "[set " + std::to_string(set) + "]\nfile = set1.txt\n";
    EXPECT_EQ(job.LineOf(many), "fit.job:37: [set 19]: '19' is not within 1 to 18");
}

TEST(BatchBadInput, MissingScan) {
    GoodJob job;
    fs::remove(job.Path("set2.txt"));
    EXPECT_EQ(job.LineOf(job.Text), ScanLine(job, "File not found"));
}

TEST(BatchBadInput, DirectoryAsScan) {
    GoodJob job;
    fs::remove(job.Path("set2.txt"));
    fs::create_directory(job.Path("set2.txt"));
    const std::string line = job.LineOf(job.Text);
    EXPECT_TRUE(line.starts_with(ScanLine(job, ""))) << line;
}

TEST(BatchBadInput, UnreadableScan) {
    GoodJob job;
    fs::permissions(job.Path("set2.txt"), fs::perms::none);
    fs::permissions(job.TheScript.Directory(), fs::perms::all); // outputs could be written there
    EXPECT_EQ(job.LineOf(job.Text, true), ScanLine(job, "Permission denied"));
}

TEST(BatchBadInput, EmptyAndBinaryScans) {
    GoodJob job;
    EXPECT_EQ(job.LineOfScan(""), ScanLine(job, Unreadable + ": the file is empty"));
    EXPECT_EQ(job.LineOfScan("comment\n"),
              ScanLine(job, Unreadable + ": the file ends before its parameter line"));
    std::string binary = "\x89PNG\r\n\x1a\n";
    for (int i = 0; i < 5000; ++i)
        binary += static_cast<char>(i * 37 + i / 251);
    const std::string line = job.LineOfScan(binary);
    EXPECT_TRUE(line.starts_with(ScanLine(job, Unreadable + ": line "))) << line;
    EXPECT_EQ(job.LineOfScan(std::string(100000, '\0')),
              ScanLine(job, Unreadable + ": the file ends before its parameter line"));
}

TEST(BatchBadInput, ScanWithoutPoints) {
    GoodJob job;
    EXPECT_EQ(job.LineOfScan("comment\nR 1 20.0 15000 0001000 1.0E10 280 10\n"),
              ScanLine(job, Unreadable + ": the file ends before its first point"));
}

TEST(BatchBadInput, ALineThatIsNoPointIsQuotedWithItsNumber) {
    GoodJob job;
    const std::string header = "comment\nR 1 20.0 15000 0001000 1.0E10 280 10\n";
    EXPECT_EQ(job.LineOfScan(header + "6.7 0.5\n6.8\n"),
              ScanLine(job, Unreadable + ": line 4, '6.8': a radius without a value"));
    EXPECT_EQ(job.LineOfScan(header + "6,7 0,5\n"),
              ScanLine(job, Unreadable +
                                ": line 3, '6,7 0,5': a decimal comma; numbers in a scan have a decimal "
                                "point"));
}

std::string ScanOf(const std::string& header, int points) {
    std::string text = "comment\n" + header + "\n";
    for (int i = 0; i < points; ++i)
        text += std::to_string(6.7 + 0.0002 * i) + " 0.5 0\n";
    return text;
}

TEST(BatchBadInput, ScanOfTooManyPoints) {
    GoodJob job;
    const std::string header = "R 1 20.0 15000 0001000 1.0E10 280 10";
    EXPECT_EQ(job.LineOfScan(ScanOf(header, 2048)),
              ScanLine(job, "the scan holds more than 2047 points; max-points-per-set in [fit] allows more"));
    EXPECT_NE(job.Run("[fit]\nmax-points-per-set = 2049\n" + job.Text.substr(job.Text.find('\n') + 1)).Status,
              1);
    job.TheScript.MakeFile("set2.txt", ScanOf(header, 2047)); // the largest one is read
    EXPECT_NE(job.Run(job.Text).Status, 1);
}

TEST(BatchBadInput, HeadersThatCannotBeFitted) {
    GoodJob job;
    EXPECT_EQ(job.LineOfScan(ScanOf("R 1 20.0 00000 0001000 1.0E10 280 10", 50)),
              ScanLine(job, "the header holds no rotor speed"));
    EXPECT_EQ(job.LineOfScan(ScanOf("R 1 00.0 15000 0001000 1.0E10 280 10", 50)),
              ScanLine(job, "the header holds a temperature of 0, which cannot be related to other sets"));
    EXPECT_EQ(job.LineOfScan(ScanOf("R 1 -300 15000 0001000 1.0E10 280 10", 50)),
              ScanLine(job, "the temperature is below absolute zero"));
    EXPECT_EQ(job.LineOfScan("c\nR 1 20.0 15000 0001000 1.0E10 280 10\n6.7 1 0\n1e9 1 0\n6.8 1 0\n"),
              ScanLine(job, Unreadable + ": line 4, '1e9 1 0': 1E+09 is no radius in cm"));
    EXPECT_EQ(job.LineOfScan("c\nR 1 20.0 3000 0001000 1.0E10 6.5 10\n190.0 1 0\n191.0 1 0\n"),
              ScanLine(job, Unreadable +
                                ": line 3, '190.0 1 0': 190 is no radius in cm; this is a wavelength "
                                "scan"));
}

TEST(BatchBadInput, RangesAndChannelsWithoutPoints) {
    GoodJob job;
    const std::string one = "[set 1]\nfile = set1.txt\n"; // 6.69 to 7.16 cm
    EXPECT_EQ(job.LineOf(one + "inner = 7.5\n").substr(0, 60),
              std::string("fit.job:3: [set 1] inner: the scan has no points from 7.5 to ").substr(0, 60));
    EXPECT_EQ(job.LineOf(one + "outer = 5\n").substr(0, 52),
              "fit.job:3: [set 1] outer: the scan has no points fro");
    EXPECT_EQ(job.LineOf(one + "inner = 6.90001\nouter = 6.90002\n"),
              "fit.job:3: [set 1] inner: the scan has no points from 6.90001 to 6.90002 cm");
    // Channel A of a six-channel centerpiece, 5.8 to 6.35 cm at rest, moved by 1e-11 cm per rpm squared.
    EXPECT_EQ(job.LineOf(one + "channel = A\n"),
              "fit.job:3: [set 1] channel: the scan has no points in channel A, 5.80225 to 6.35225 cm");
}

TEST(BatchBadInput, AProposedRangeIsToldAndTakesNoLimits) {
    GoodJob job;
    const std::string one = "[set 1]\nfile = set1.txt\nrange = auto\n";
    EXPECT_EQ(job.LineOf(one + "inner = 6.8\n"),
              "fit.job:3: [set 1] range: is proposed by the program, so that there is no inner or outer");
    EXPECT_EQ(job.LineOf("[set 1]\nfile = set1.txt\nrange = all\n"),
              "fit.job:3: [set 1] range: 'all' is not auto");
    const ProgramEnd end = job.Run(one);
    EXPECT_NE(end.Status, 1);
    EXPECT_TRUE(end.Err.find("fit.job:3: [set 1] range: proposed: ") != std::string::npos) << end.Err;
}

TEST(BatchBadInput, ARangeThatTakesInMoreThanTheSolutionIsWarnedOf) {
    GoodJob job;
    std::string scan = ScanOf("R 1 20.0 15000 0001000 1.0E10 280 10", 60);
    for (int i = 0; i < 60; ++i) { // a slope, for steps of the same size
        const std::size_t at = scan.find(" 0.5 0");
        scan.replace(at, 6, " " + std::to_string(0.5 + 0.001 * i) + " 0");
    }
    job.TheScript.MakeFile("smooth.txt", scan);
    const std::size_t spike = scan.find("0.530000");
    job.TheScript.MakeFile("spike.txt", scan.replace(spike, 8, "0.930000"));
    const auto told = [&](const std::string& keys) {
        return job.Run("[fit]\nguesses = no\n[set 1]\n" + keys).Err;
    };
    EXPECT_TRUE(
        told("file = smooth.txt\n")
            .starts_with("fit.job:3: [set 1] inner: no fitting range is chosen, so that the whole scan "
                         "is fitted, meniscus and bottom"));
    EXPECT_TRUE(told("file = smooth.txt\nouter = 7\n").find("[set 1]") == std::string::npos);
    EXPECT_TRUE(told("file = spike.txt\ninner = 6.7\n")
                    .starts_with("fit.job:5: [set 1] inner: the fitting range 6.7000 to 6.7118 cm holds "
                                 "jumps, the first at 6.7058 cm"));
}

TEST(BatchBadInput, TemperaturesThatChangeAMassAreWarnedOfAndScaledAbsolutelyWhenAskedTo) {
    GoodJob job;
    job.TheScript.MakeFile("warm.txt", ScanOf("R 1 20.0 15000 0001000 1.0E10 280 10", 60));
    job.TheScript.MakeFile("cold.txt", ScanOf("R 1 10.0 15000 0001000 1.0E10 280 10", 60));
    const auto told = [&](const std::string& constants) { // in this process, for a look at the scales
        const std::string path =
            job.TheScript.MakeFile("fit.job", "[fit]\nguesses = no\n[constants]\n" + constants +
                                                  "density = 1\n[set 1]\nfile = warm.txt\ninner = 6.7\n[set "
                                                  "2]\nfile = cold.txt\ninner = 6.7\n");
        return RunInside({path, "--results", job.Path("r.json")}).Err;
    };
    const std::string warning = "[set 2] file: the temperature is 10 degrees and that of the first set 20: ";
    EXPECT_NE(told("").find(warning), std::string::npos) << told("");
    EXPECT_NE(told("").find("with temperature-scale = kelvin in [constants] sigma"), std::string::npos);
    EXPECT_NEAR(Work.SetSigmaScale[2], 2.0F, 1e-6F);
    EXPECT_EQ(told("temperature-scale = Kelvin\n").find(warning), std::string::npos);
    EXPECT_NEAR(Work.SetSigmaScale[2], 293.15F / 283.15F, 1e-6F);
    EXPECT_NE(told("temperature-scale = fahrenheit\n").find("fit.job:4: [constants] temperature-scale: "),
              std::string::npos);
}

TEST(BatchBadInput, Baselines) {
    GoodJob job;
    const std::string one = "[set 1]\nfile = set1.txt\nbaseline = base.txt\n";
    EXPECT_EQ(job.LineOf(one), "fit.job:3: [set 1] baseline: base.txt: File not found");
    job.TheScript.MakeFile("base.txt", "");
    EXPECT_EQ(job.LineOf(one), "fit.job:3: [set 1] baseline: base.txt: Error during baseline read, possible "
                               "invalid data in file: the file is empty");
}

// They were zeros in silence, and nothing behind the fit told of them.
TEST(BatchBadInput, ReadingsOfABaselineThatAreNoNumbers) {
    GoodJob job;
    job.TheScript.MakeFile("base.txt",
                           "blank\r\nR 1 20.0 3000 0000060 1E9 280 32\r\n5.8 0\r\n6.5 nan\r\n7.4 0\r\n");
    const ProgramEnd end = job.Run("[set 1]\nfile = set1.txt\nbaseline = base.txt\n");
    EXPECT_NE(end.Err.find("fit.job:3: [set 1] baseline: "), std::string::npos) << end.Err;
    const std::string words = "'6.5 nan': a reading that is no number counts as 0";
    EXPECT_NE(end.Err.find(words), std::string::npos) << end.Err;
    const JsonValue results = ReadJson(ReadWholeFile(job.Path("r.json")));
    const JsonValue& set = results["sets"][0];
    EXPECT_NE(set["baseline_remark"].Text.find(words), std::string::npos);
    EXPECT_TRUE(set["remark"].IsNull());
}

TEST(BatchBadInput, Parameters) {
    GoodJob job;
    const int line = static_cast<int>(std::count(job.Text.begin(), job.Text.end(), '\n')) + 2;
    const auto parameterLine = [&](const std::string& text) {
        const std::string told = job.LineOf(job.Text + "[parameters]\n" + text + "\n");
        const std::string place = "fit.job:" + std::to_string(line) + ": [parameters] ";
        EXPECT_TRUE(told.starts_with(place)) << told;
        return told.substr(std::min(told.size(), place.size()));
    };
    const std::string names = "Sigma A mon; N; Ln K(1>N); Ln c(A,mon), set 1 to 2; Zero Offset, set 1 to 2";
    EXPECT_EQ(parameterLine("Ln K(1>M) = 1"),
              "Ln K(1>M): this model has no parameter of that name; the names are: " + names);
    EXPECT_EQ(parameterLine("Zero Offset, set 3 = 0"),
              "Zero Offset, set 3: this model has no parameter of that name; the names are: " + names);
    EXPECT_EQ(parameterLine("MW A = 1"), "MW A: this model has no parameter of that name; in the units "
                                         "of the job it is called Sigma A mon; the names are: " +
                                             names);
    EXPECT_EQ(parameterLine("N = 0"), "N: has to be above 0");
    EXPECT_EQ(parameterLine("N = -2"), "N: has to be above 0");
    EXPECT_EQ(parameterLine("0 = 0 fit"), "0: cannot be 0");
    EXPECT_EQ(parameterLine("6 = 1"), "6: this model does not use the slot");
    EXPECT_EQ(parameterLine("14 = 1"), "14: the slots of this fit are 0 to 13");
    EXPECT_EQ(parameterLine("-1 = 1"), "-1: the slots of this fit are 0 to 13");
    EXPECT_EQ(parameterLine("99999999999 = 1"), "99999999999: the slots of this fit are 0 to 13");
}

TEST(BatchBadInput, ParameterTwiceTiedOrNothingToFit) {
    GoodJob job;
    const auto line = [&](const std::string& text) {
        const std::string told = job.LineOf(text);
        return told.substr(std::min(told.size(), told.find(" [")));
    };
    EXPECT_EQ(line(job.Text + "[parameters]\n2 = 1\nLn K(1>N) = 1\n"),
              " [parameters] Ln K(1>N): stands twice, first in line " +
                  std::to_string(std::count(job.Text.begin(), job.Text.end(), '\n') + 2));
    EXPECT_EQ(line(job.Text + "offset-of = 1\n[parameters]\nZero Offset, set 2 = 0\n"),
              " [parameters] Zero Offset, set 2: this zero offset is tied to that of another set");
    EXPECT_EQ(line(job.Text + "[parameters]\n0 = 1.2 hold\n2 = * hold\n8 = * hold\n11 = * hold\n"),
              " [parameters]: all parameters are held, at least one has to be fitted");
}

TEST(BatchBadInput, OutputsThatCannotBeWritten) {
    GoodJob job;
    job.TheScript.MakeFile("fit.job", job.Text);
    ProgramStart start;
    start.Directory = job.TheScript.Directory();
    start.Arguments = {"fit.job", "--report", "none/r.txt"};
    EXPECT_EQ(RunProgram(start).Err,
              "none/r.txt: Path not found\n"); // before the fit: no question stands there
    start.Unprivileged = true;                 // the directory is another's
    start.Arguments = {"fit.job", "--report", "r.txt"};
    EXPECT_EQ(RunProgram(start).Err, ::getuid() == 0 ? "r.txt: Permission denied\n" : "");
    start.Unprivileged = false;
    start.Arguments = {"fit.job", "--results", "."};
    EXPECT_EQ(RunProgram(start).Err, ".: it is a directory\n");
    start.Arguments = {"fit.job", "--quiet", "--points", "/dev/full"};
    const ProgramEnd full = RunProgram(start);
    EXPECT_EQ(full.Status, 1);
    EXPECT_EQ(LinesOf(full.Err).back(), "/dev/full: Disk full");
}

TEST(BatchBadInput, ADiskThatFillsLeavesTheFormerFile) {
    GoodJob job;
    job.TheScript.MakeFile("fit.job", job.Text);
    job.TheScript.MakeFile("p.csv", "former");
    ProgramStart start;
    start.Directory = job.TheScript.Directory();
    start.Arguments = {"fit.job", "--points", "p.csv"};
    start.LargestFile = 1000; // the points take more
    const ProgramEnd end = RunProgram(start);
    EXPECT_EQ(end.Status, 1);
    EXPECT_EQ(LinesOf(end.Err).back(), "p.csv: Disk full");
    EXPECT_EQ(ReadWholeFile(job.Path("p.csv")), "former");
    for (const auto& entry : fs::directory_iterator(job.TheScript.Directory()))
        EXPECT_FALSE(entry.path().filename().string().starts_with(".quillon")) << entry.path();
}

} // namespace
} // namespace Quillon

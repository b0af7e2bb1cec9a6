// Tables of fits: what each row gives is what it gives alone, whatever stands beside it.
#include "batch/table/RowWorkers.h"
#include "input/Csv.h"
#include "tests/batch/JobCase.h"
#include "tests/batch/JsonReader.h"
#include "tests/batch/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace Quillon {
namespace {

TEST(Csv, QuotedCellsKeepTheirCommasQuotesAndLines) {
    const std::vector<CsvCells> lines = ParseCsv("a,\"b,\"\"c\"\"\",\r\n\r\n\"two\nlines\",x,y\n");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], (CsvCells{"a", "b,\"c\"", ""}));
    EXPECT_EQ(lines[1], (CsvCells{"two\nlines", "x", "y"}));
    for (const CsvCells& line : lines)
        EXPECT_EQ(ParseCsv(CsvLine(line)), std::vector<CsvCells>{line});
    EXPECT_THROW(ParseCsv("a\n\"b"), RuntimeError);
    EXPECT_EQ(ParseCsv("a,b").back(), (CsvCells{"a", "b"})) << "without an end of line";
}

TEST(RowWorkers, GiveTheSameForAnyNumberOfProcesses) {
    const auto piece = [](long n) { return "piece " + std::to_string(n * n); };
    const auto watch = [](long) {};
    const std::vector<std::string> one = RunInProcesses(1, 7, piece, watch);
    for (const int processes : {2, 3, 20})
        EXPECT_EQ(RunInProcesses(processes, 7, piece, watch), one);
}

TEST(RowWorkers, AProcessThatDiesTakesNoOtherRowWithIt) {
    long told = 0;
    const std::vector<std::string> results = RunInProcesses(
        3, 3,
        [](long n) -> std::string {
            if (n == 1) std::_Exit(3);
            return "done";
        },
        [&](long done) { told = done; });
    EXPECT_EQ(results, (std::vector<std::string>{"done", "", "done"}));
    EXPECT_EQ(told, 2);
}

// Of two processes one runs the pieces 0, 2, 4, 6, and dies twice.
TEST(RowWorkers, ADeadProcessLeftTheRowsBehindItsLastOneUndone) {
    long told = 0;
    const std::vector<std::string> results = RunInProcesses(
        2, 8,
        [](long n) -> std::string {
            if (n == 0 || n == 4) std::_Exit(3);
            return "done";
        },
        [&](long done) { told = done; });
    EXPECT_EQ(results, (std::vector<std::string>{"", "done", "done", "done", "", "done", "done", "done"}));
    EXPECT_EQ(told, 6);
}

// A recipe over two loadings of a small experiment, with starts that differ.
class Tables : public testing::Test {
protected:
    Script TheScript;

    std::string Path(const std::string& name) const { return TheScript.Directory() + "/" + name; }

    void SetUp() override {
        std::string text = JobTextOf(SimulatedWorkspace(SmallCase()), TheScript);
        const std::string fixed = "file = set2.txt";
        text.replace(text.find(fixed), fixed.size(), "file = {SECOND}");
        TheScript.MakeFile("recipe.job", text + "[parameters]\nN = 2 hold\nLn K(1>N) = {START} fit\n");
        TheScript.MakeFile("rows.csv", "SECOND,START,NOTE\n"
                                       "set2.txt,0.5,plain\n"
                                       "missing.txt,0.5,\"no, not there\"\n"
                                       "set1.txt,0.8,\n"
                                       "set2.txt\n"
                                       "set2.txt,1.0,last\n");
    }

    ProgramEnd Run(std::vector<std::string> options) const {
        std::vector<std::string> arguments{Path("recipe.job"), "--table", Path("rows.csv"), "--quiet"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunInside(arguments);
    }

    std::vector<CsvCells> Summary(const std::vector<std::string>& options) const {
        const ProgramEnd end = Run(options);
        EXPECT_EQ(end.Status, 2) << end.Err;
        return ParseCsv(end.Out);
    }
};

TEST_F(Tables, EachRowHasItsLine) {
    const std::vector<CsvCells> lines = Summary({"--threads", "1"});
    ASSERT_EQ(lines.size(), 6U);
    const CsvCells heads{"row",
                         "SECOND",
                         "START",
                         "NOTE",
                         "status",
                         "reason",
                         "converged",
                         "minimum",
                         "sum_of_squares",
                         "rms",
                         "degrees_of_freedom",
                         "runs_z",
                         "Sigma A mon",
                         "Sigma A mon error",
                         "N",
                         "N error",
                         "Ln K(1>N)",
                         "Ln K(1>N) error"};
    EXPECT_EQ(lines[0], heads);
    for (std::size_t row = 1; row <= 5; ++row)
        EXPECT_EQ(lines[row][0], std::to_string(row));
    EXPECT_EQ(lines[1][4], "0");
    EXPECT_EQ(lines[1][6], "yes");
    EXPECT_EQ(lines[2][4], "1");
    EXPECT_NE(lines[2][5].find("missing.txt: File not found"), std::string::npos) << lines[2][5];
    EXPECT_EQ(lines[2][3], "no, not there") << "columns that nothing names are carried along";
    EXPECT_EQ(lines[4][5], "the row has 1 cell, the table 3 columns");
    EXPECT_EQ(lines[5][4], "0");
}

TEST_F(Tables, ARowIsWhatItIsAlone) {
    const std::vector<CsvCells> lines = Summary({"--threads", "1", "--results", Path("{NOTE}{START}.json")});
    std::string text = ReadWholeFile(Path("recipe.job"));
    for (const auto& [name, cell] : {std::pair{"{SECOND}", "set2.txt"}, std::pair{"{START}", "0.5"}})
        text.replace(text.find(name), std::string(name).size(), cell);
    const std::string job = TheScript.MakeFile("alone.job", text);
    const ProgramEnd end = RunInside({job, "--results", "-", "--quiet"});
    std::string ofRow = ReadWholeFile(Path("plain0.5.json"));
    EXPECT_EQ(ofRow, end.Out);
    const JsonValue results = ReadJson(ofRow);
    EXPECT_EQ(std::stod(lines[1][8]), results["sum_of_squares"].Number);
    EXPECT_EQ(std::stod(lines[1][12]), results["parameters"][0]["value"].Number);
    EXPECT_EQ(std::stod(lines[1][13]), results["parameters"][0]["error"].Number);
    EXPECT_FALSE(std::filesystem::exists(Path("no, not there0.5.json")));
}

TEST_F(Tables, PartsMergeToTheBytesOfOneRun) {
    const std::string whole = Run({"--threads", "1"}).Out;
    EXPECT_EQ(Run({"--threads", "3"}).Out, whole) << "for any number of processes";
    Run({"--rows", "1-2", "--summary", Path("a.csv")});
    Run({"--rows", "3-5", "--summary", Path("b.csv")});
    EXPECT_EQ(RunInside({"--merge", Path("ab.csv"), Path("b.csv"), Path("a.csv")}).Status, 0);
    EXPECT_EQ(ReadWholeFile(Path("ab.csv")), whole);
    ProgramEnd end = RunInside({"--merge", Path("x.csv"), Path("b.csv")});
    EXPECT_EQ(end.Status, 1);
    EXPECT_NE(end.Err.find("row 1 is missing"), std::string::npos) << end.Err;
    end = RunInside({"--merge", Path("x.csv"), Path("a.csv"), Path("a.csv")});
    EXPECT_NE(end.Err.find("row 1 stands twice"), std::string::npos) << end.Err;
    end = RunInside({"--merge", Path("x.csv"), Path("rows.csv")});
    EXPECT_NE(end.Err.find("rows.csv: this is no summary of a table"), std::string::npos) << end.Err;
    EXPECT_FALSE(std::filesystem::exists(Path("x.csv")));
    EXPECT_NE(RunInside({"--merge", Path("a.csv"), Path("b.csv"), Path("a.csv")}).Err.find("its part"),
              std::string::npos);
}

TEST_F(Tables, WhatIsWrongWithTheRecipeIsToldBeforeAnyFit) {
    const auto told = [&](const std::vector<std::string>& options, const std::string& words) {
        const ProgramEnd end = Run(options);
        EXPECT_EQ(end.Status, 1);
        EXPECT_NE(end.Err.find(words), std::string::npos) << end.Err;
        EXPECT_EQ(end.Out, "");
    };
    told({"--results", Path("{NOWHERE}.json")}, "{NOWHERE} is no column of");
    told({"--results", Path("same.json")}, "rows 1 and 2 would both write");
    told({"--points", Path("{SECOND}{START}.csv"), "--summary", Path("set2.txt0.5.csv")},
         "row 1 would write over");
    told({"--rows", "4-9"}, "--rows ends with 9, the table has 5");
    const std::string table = ReadWholeFile(Path("rows.csv"));
    TheScript.MakeFile("rows.csv", "SECOND,START,N\nset2.txt,1,1\n");
    told({}, "the column N is one of the summary as well");
    TheScript.MakeFile("rows.csv", "SECOND,BEGIN\nset2.txt,1\n");
    told({}, "{START} is no column of");
    TheScript.MakeFile("rows.csv", table);
    TheScript.MakeFile("recipe.job", JobTextOf(SimulatedWorkspace(SmallCase()), TheScript));
    told({}, "names no column of");
}

TEST_F(Tables, ASummaryOnAFullDiskWasLost) {
    const std::string command = "(ulimit -f 0; exec " + std::string(QUILLON_FIT) + " " + Path("recipe.job") +
                                " --table " + Path("rows.csv") + " --quiet --rows 2-2 --summary " +
                                Path("s.csv") + " 2>&1) | cat > " + Path("told");
    ASSERT_EQ(WEXITSTATUS(std::system(command.c_str())), 0);
    const std::string told = ReadWholeFile(Path("told"));
    EXPECT_NE(told.find("s.csv: Disk full; the summary has gone to standard output"), std::string::npos)
        << told;
    EXPECT_NE(told.find("\n2,missing.txt,0.5,"), std::string::npos) << told;
}

TEST_F(Tables, AScanThatAnotherRowReadsWasWrittenOver) {
    const auto told = [&](const std::vector<std::string>& options, const std::string& words) {
        const std::string before = ReadWholeFile(Path("other.txt"));
        const ProgramEnd end = Run(options);
        EXPECT_EQ(end.Status, 1);
        EXPECT_NE(end.Err.find(words), std::string::npos) << end.Err;
        EXPECT_EQ(ReadWholeFile(Path("other.txt")), before);
    };
    std::filesystem::copy_file(Path("set2.txt"), Path("other.txt"));
    TheScript.MakeFile("rows.csv", "SECOND,START,OUT\nset2.txt,0.5,other.txt\nother.txt,0.5,p.csv\n");
    told({"--points", Path("{OUT}")}, "row 1 would write over " + Path("other.txt") + ", which row 2 reads");
    told({"--summary", Path("other.txt")},
         "--summary would write over " + Path("other.txt") + ", which row 2 reads");
    TheScript.MakeFile("rows.csv", "SECOND,START,OUT\nset2.txt,0.5,p.csv\nother.txt,0.5,./p.csv\n");
    told({"--points", Path("{OUT}")}, "rows 1 and 2 would both write");
    TheScript.MakeFile("rows.csv", "SECOND,START,OUT\nset2.txt,0.5,recipe.job\n");
    told({"--points", Path("{OUT}")}, "row 1 would write over " + Path("recipe.job"));
}

// The starting values of the first fit, read off the data, are in the job that it writes.
TEST(WrittenJob, GivesTheSameFitBitForBit) {
    Script script;
    std::string text = JobTextOf(SimulatedWorkspace(SmallCase()), script);
    text += "loading-a = 0.4\ntolerance-a = 3\n";
    text.insert(text.find('\n') + 1, "confidence-limits = yes\nmass-units = molar\n");
    const std::string first =
        script.MakeFile("first.job", text + "[parameters]\nZero Offset, set 1 = 0.001 fit\n");
    const std::string again = script.Directory() + "/again.job";
    const ProgramEnd one = RunInside({first, "--results", "-", "--write-job", again, "--quiet"});
    ASSERT_EQ(one.Status, 0) << one.Err;
    EXPECT_NE(ReadWholeFile(again).find("file = \"set1.txt\""), std::string::npos) << ReadWholeFile(again);
    const ProgramEnd two = RunInside({again, "--results", "-", "--quiet"});
    EXPECT_EQ(two.Status, 0) << two.Err;
    EXPECT_EQ(two.Out, one.Out);
}

// Of a saved fit the fitted values are the start: nothing is left to be gained.
TEST(WrittenJob, OfASavedFitStartsFromItsValues) {
    Script script;
    const std::string text = JobTextOf(SimulatedWorkspace(SmallCase()), script);
    const std::string saved = script.Directory() + "/fit.quil", again = script.Directory() + "/again.job";
    const ProgramEnd one =
        RunInside({script.MakeFile("first.job", text), "--results", "-", "--save", saved, "--quiet"});
    ASSERT_EQ(one.Status, 0) << one.Err;
    ASSERT_EQ(RunInside({saved, "--write-job", again, "--quiet"}).Status, 0);
    const ProgramEnd two = RunInside({again, "--results", "-", "--quiet"});
    ASSERT_EQ(two.Status, 0) << two.Err;
    const JsonValue before = ReadJson(one.Out), after = ReadJson(two.Out);
    EXPECT_NEAR(after["sum_of_squares"].Number / before["sum_of_squares"].Number, 1.0, 1e-4);
    EXPECT_LT(after["iterations"].Number, before["iterations"].Number);
}

TEST(WrittenJob, TakesUpRestartsAndNoise) {
    Script script;
    std::string text = JobTextOf(SimulatedWorkspace(SmallCase()), script);
    text.insert(text.find('\n') + 1, "restarts = 3\nseed = 5\nnoise = from-fit\n");
    const std::string again = script.Directory() + "/again.job";
    const ProgramEnd one =
        RunInside({script.MakeFile("first.job", text), "--results", "-", "--write-job", again, "--quiet"});
    ASSERT_EQ(one.Status, 0) << one.Err;
    const ProgramEnd two = RunInside({again, "--results", "-", "--quiet"});
    EXPECT_EQ(two.Out, one.Out);
}

} // namespace
} // namespace Quillon

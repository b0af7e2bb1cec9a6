// The form that runs a table of fits, without a window and without the program.
#include "commands/studies/TableForm.h"

#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

class TableForms : public testing::Test {
protected:
    Script TheScript;
    std::vector<std::string> Started;
    int Stops = 0;

    void SetUp() override {
        TableForm = TableFormRecord{};
        TableRunner.Start = [this](const std::string& program, const std::vector<std::string>& arguments) {
            Started = arguments;
            Started.insert(Started.begin(), program);
            return true;
        };
        TableRunner.Stop = [this] { ++Stops; };
        Host.ProgramDirectory = [] { return "/usr/bin"; };
        LoadTableForm();
    }
    void TearDown() override { TableRunner = TableProgram{}; }

    void Choose() {
        TheScript.ExpectFile("Quillon - Job of a Table", "/data/recipe.job");
        TheScript.ExpectFile("Quillon - Table of Fits", "/data/cells.csv");
        TableFormFileButton(TableFile::Job);
        TableFormFileButton(TableFile::Table);
    }
};

TEST_F(TableForms, RunsWhenAllFilesAreChosen) {
    EXPECT_FALSE(TableForm.RunButton.Enabled);
    Choose();
    EXPECT_EQ(TableForm.Summary.Path.Text, "/data/cells-summary.csv") << "proposed beside the table";
    EXPECT_TRUE(TableForm.RunButton.Enabled);
    TableFormRunButton();
    EXPECT_EQ(Started, (std::vector<std::string>{"/usr/bin/quillon-fit", "/data/recipe.job", "--table",
                                                 "/data/cells.csv", "--summary", "/data/cells-summary.csv"}));
    EXPECT_TRUE(TableForm.StopButton.Enabled);
    EXPECT_FALSE(TableForm.RunButton.Enabled);
    EXPECT_FALSE(TableForm.Job.Button.Enabled);
}

TEST_F(TableForms, ShowsWhatIsTold) {
    Choose();
    TableFormRunButton();
    TableFormTold("10 of 40 rows");
    EXPECT_EQ(TableForm.Fraction, 0.25);
    EXPECT_EQ(TableForm.Progress.Text, "10 of 40 rows");
    TableFormTold("row 11: a.RA1: File not found");
    TableFormTold("x of 3 rows");
    EXPECT_EQ(TableForm.Lines, (std::vector<std::string>{"row 11: a.RA1: File not found", "x of 3 rows"}));
    TableFormEnded(2);
    EXPECT_EQ(TableForm.Progress.Text,
              "Rows have failed; the summary says which and why: /data/cells-summary.csv");
    EXPECT_TRUE(TableForm.RunButton.Enabled);
    TableFormRunButton();
    EXPECT_TRUE(TableForm.Lines.empty()) << "of the run before";
    TableFormEnded(1);
    EXPECT_EQ(TableForm.Progress.Text, "No summary was written.");
}

// The two questions of every fit hid the rows that had failed; an answer that is not routine is told.
TEST_F(TableForms, LeavesTheRoutineOfEveryFitOut) {
    TableFormTold("row 7: Do you want new guesses for the concentrations? Answer: Yes");
    TableFormTold("row 7: Do you also want the baseline offsets reset to zero? Answer: No");
    EXPECT_TRUE(TableForm.Lines.empty());
    TableFormTold("row 8: Do you want to use the new value anyway? Answer: Yes");
    EXPECT_EQ(TableForm.Lines.size(), 1U);
}

TEST_F(TableForms, ClosingStopsFirst) {
    Choose();
    TableFormRunButton();
    TableFormCloseButton();
    EXPECT_EQ(Stops, 1);
    EXPECT_TRUE(TableForm.State.Shown);
    TableFormEnded(-1);
    TableFormCloseButton();
    EXPECT_FALSE(TableForm.State.Shown);
    LoadTableForm();
    EXPECT_EQ(TableForm.Job.Path.Text, "/data/recipe.job") << "kept for the next time";
}

TEST_F(TableForms, AnotherTableWouldHaveBeenWrittenOverTheSummaryOfTheFormerOne) {
    const auto choose = [this](TableFile file, const std::string& path) {
        TheScript.ExpectFile(
            file == TableFile::Table ? "Quillon - Table of Fits" : "Quillon - Summary of a Table", path);
        TableFormFileButton(file);
        return TableForm.Summary.Path.Text;
    };
    Choose();
    EXPECT_EQ(choose(TableFile::Table, "/data/dimers.csv"), "/data/dimers-summary.csv");
    EXPECT_EQ(choose(TableFile::Summary, "/data/mine.csv"), "/data/mine.csv");
    EXPECT_EQ(choose(TableFile::Table, "/data/cells.csv"), "/data/mine.csv") << "named for this table";
    TableFormRunButton();
    TableFormEnded(0);
    EXPECT_EQ(choose(TableFile::Table, "/data/cells.csv"), "/data/mine.csv") << "the same table";
    EXPECT_EQ(choose(TableFile::Table, "/data/dimers.csv"), "/data/dimers-summary.csv");

    choose(TableFile::Summary, "/data/mine.csv");
    LoadTableForm();
    EXPECT_EQ(choose(TableFile::Table, "/other/cells.csv"), "/other/cells-summary.csv") << "opened again";
}

TEST_F(TableForms, AProgramThatIsNotThereIsSaid) {
    Choose();
    TableRunner.Start = [](const std::string&, const std::vector<std::string>&) { return false; };
    TableFormRunButton();
    EXPECT_EQ(TableForm.Progress.Text, "/usr/bin/quillon-fit cannot be started.");
    EXPECT_FALSE(TableForm.Running);
}

} // namespace
} // namespace Quillon

// What a paper takes from a fit, by mouse: tables, job, curve, document, weights, a table of fits; and the
// whole example of the manual, from the scans on.
#include "chart/hand/Charts.h"
#include "commands/Analmenu.h"
#include "commands/export/ReportPreview.h"
#include "commands/studies/TableForm.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/NoiseForm.h"
#include "fit/forms/WaitForm.h"
#include "forms/shell/Binding.h"
#include "graphs/FigureForm.h"
#include "models/forms/BaseForm.h"
#include "models/forms/ModelForm.h"
#include "models/forms/UnitsForm.h"
#include "reporting/Results.h"
#include "reporting/values/Correlation.h"
#include "scandata/forms/FileForm.h"
#include "studies/StudyForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

namespace Quillon {
namespace {

struct PaperByMouse : testing::Test {
    Player player;
    PaperByMouse() {
        WriteScans(player.Directory());
        UseFinishedFit();
        for (long row = 1; row <= 3; ++row)
            Work.ScanDirectory[row] = player.Directory();
        Work.ExtA = 40000.0F;
        Work.StartParms = Work.Parms;
        SetMenuStatus();
        RefreshForms();
    }
    std::string In(const std::string& name) const { return player.Directory() + "/" + name; }
};

TEST_F(PaperByMouse, TablesJobCurveAndDocument) {
    player.GiveFile(In("methods.csv"));
    player.ClickMenu("ExportMethods");
    EXPECT_NE(ReadWholeFile(In("methods.csv")).find("00003.RA1"), std::string::npos);

    player.ClickMenu("GraphSpeciation");
    ASSERT_TRUE(Player::Window(ChartsName)->isVisible());
    Player::Window(ChartsName)->close();

    player.Expect(ResultsName, [&] {
        EXPECT_NE(Results.ParmsFit.Text.find("Kd = "), std::string::npos) << Results.ParmsFit.Text;
        player.Expect(ReportPreviewName, [&] {
            player.GiveFile(In("report.html"));
            Player::Click(ReportPreview.SaveHtml);
            Player::Click(ReportPreview.CloseButton);
        });
        Player::Click(Results.Command1);
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("ReviewFit");
    const std::string html = ReadWholeFile(In("report.html"));
    EXPECT_NE(html.find("<svg"), std::string::npos);
    EXPECT_NE(html.find("Delta G"), std::string::npos);
}

TEST_F(PaperByMouse, ComparisonResamplingAndFigure) {
    const Workspace own = Work;
    player.Expect(StudyFormName, [] {
        Player::TabTo(StudyForm.Inputs[0].Box);
        Player::Type("1, 2");
        Player::Click(StudyForm.RunButton);
        ASSERT_EQ(StudyForm.Rows.size(), 2U);
        EXPECT_EQ(StudyForm.Rows[1][0], "2 (yours)");
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("CompareModels");
    player.Expect(StudyFormName, [] {
        Player::TabTo(StudyForm.Inputs[0].Box);
        Player::Type("20");
        Player::Click(StudyForm.RunButton);
        EXPECT_NE(StudyForm.Progress.Text.find("20 fits to resampled data"), std::string::npos)
            << StudyForm.Progress.Text;
        EXPECT_FALSE(StudyForm.Rows.empty());
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("ResampleFit");
    EXPECT_TRUE(Work.Parms == own.Parms);
    player.Expect(FigureFormName, [&] {
        Player::Click(FigureForm.OneColumnOption);
        player.GiveFile(In("figure.svg"));
        Player::Click(FigureForm.SaveButton);
        Player::Click(FigureForm.CloseButton);
    });
    player.ClickMenu("GraphFigure");
    EXPECT_NE(ReadWholeFile(In("figure.svg")).find("<svg"), std::string::npos);
}

TEST_F(PaperByMouse, WeightsFromTheFit) {
    player.Expect(NoiseFormName, [] {
        Player::Click(NoiseForm.FromFitButton);
        Player::Click(NoiseForm.OkButton);
    });
    player.ClickMenu("SetNoise");
    EXPECT_GT(Work.SetNoise[1], 0.0F);
    EXPECT_TRUE(MainItem("SetNoise").Checked);
}

// The job of the fit becomes a recipe, which the program beside this one runs.
TEST_F(PaperByMouse, ATableOfFits) {
    player.GiveFile(In("fit.job"));
    player.ClickMenu("SaveJob");
    std::string job = ReadWholeFile(In("fit.job"));
    EXPECT_NE(job.find("file = \"00001.RA1\""), std::string::npos) << job;
    const std::string limit = "max-iterations = " + std::to_string(Work.MaxIterations);
    job.replace(job.find(limit), limit.size(), "max-iterations = {MOST}");
    Host.WriteFile(In("recipe.job"), job);
    Host.WriteFile(In("rows.csv"), "MOST\n40\n50\n");
    player.Expect(TableFormName, [&] {
        player.GiveFile(In("recipe.job"));
        Player::Click(TableForm.Job.Button);
        player.GiveFile(In("rows.csv"));
        Player::Click(TableForm.Table.Button);
        Player::Click(TableForm.RunButton);
        for (int i = 0; i < 3000 && TableForm.Running; ++i)
            QTest::qWait(10);
        EXPECT_FALSE(TableForm.Running);
        EXPECT_EQ(TableForm.Progress.Text, "All rows are done. The summary is " + In("rows-summary.csv"))
            << (TableForm.Lines.empty() ? "" : TableForm.Lines.back());
        Player::Click(TableForm.CloseButton);
    });
    player.ClickMenu("RunTable");
    const std::string summary = ReadWholeFile(In("rows-summary.csv"));
    EXPECT_TRUE(summary.starts_with("row,MOST,status,")) << summary;
    EXPECT_NE(summary.find("\n2,50,0,,yes,yes,"), std::string::npos) << summary;
}

// --- the example of docs/manual/paper.md, click by click -------------------------------------------------

struct ExampleByMouse : testing::Test {
    Player player;
    const std::string Scans = player.Directory() + "/monomer-dimer";
    ExampleByMouse() {
        Work.MonitorMode = Monitor::None; // of a fit of milliseconds it is seen by chance
        Copy("monomer-dimer", {"00020.RA2", "00033.RA2", "00044.RA2"});
        Copy("recipe", {"scans.job", "scans.csv"});
    }
    void Copy(const std::string& folder, const std::vector<std::string>& names) const {
        std::filesystem::create_directories(In(folder));
        for (const std::string& name : names)
            std::filesystem::copy_file(QUILLON_SOURCE "/examples/" + folder + "/" + name,
                                       In(folder) + "/" + name);
    }
    std::string In(const std::string& name) const { return player.Directory() + "/" + name; }
    std::string Written(const std::string& name) const { return ReadWholeFile(In(name)); }

    static void Replace(const Control& field, const char* text) {
        Player::Click(field);
        Player::Press(Qt::Key_A, Qt::ControlModifier);
        Player::Type(text);
    }
    void SeeGraph(const char* item) {
        player.ClickMenu(item);
        ASSERT_TRUE(Player::Window(ChartsName)->isVisible()) << item;
        Player::Window(ChartsName)->close();
        Player::Serve();
    }

    void ReadScansAndUnits();
    void ChooseModelAndOffsets();
    void FitWithLimits();
    void Study();
    void RunRecipe();
    void WriteForThePaper();
};

void ExampleByMouse::ReadScansAndUnits() {
    player.GiveFiles({Scans + "/00020.RA2", Scans + "/00033.RA2", Scans + "/00044.RA2"});
    player.Expect(FileFormName, [] {
        for (int i = 0; i < 2000 && FileForm.Timer1; ++i)
            QTest::qWait(1);
        Player::Serve();
        EXPECT_EQ(FileForm.ChannelBox[2].Text, "C");
        Player::Click(FileForm.OkButton);
    });
    player.ClickMenu("ReadData");
    ASSERT_EQ(Work.NumSets, 9);
    player.Expect(UnitsFormName, [] {
        Player::Click(UnitsForm.TrueMass);
        Player::Click(UnitsForm.Molar);
        Replace(UnitsForm.VBarInput[0], "0.735");
        Replace(UnitsForm.DensityInput[0], "1.003994");
        Replace(UnitsForm.ExtinctionInput[0], "30000");
        Player::Click(UnitsForm.OkButton);
    });
    player.ClickMenu("DefineUnits");
    EXPECT_EQ(Work.MassUnits, MassUnit::Molar);
    EXPECT_EQ(Work.ConcUnits, ConcUnit::Mole);
    EXPECT_EQ(Work.ExtA, 30000.0F);
}

void ExampleByMouse::ChooseModelAndOffsets() {
    player.Expect(ModelFormName, [] {
        Player::Click(ModelForm.ModelRow[1]);
        Player::Click(ModelForm.OkButton);
    });
    player.ClickMenu("DoModelSet");
    player.Expect(BaseFormName, [] {
        const char* const leaders[] = {"1", "2", "3"};
        for (std::size_t set = 3; set < 9; ++set) { // from 0; the same channel at another speed
            Player::TabTo(BaseForm.Boxes.LinkNum[set]);
            Player::Type(leaders[set % 3]);
        }
        Player::Click(BaseForm.OkButton);
    });
    player.ClickMenu("SetBaseConstraint");
    EXPECT_TRUE(MainItem("SetBaseConstraint").Checked);
}

// The mass of the sequence is held.
void HoldTheMass() {
    for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row)
        if (GetGuess.GuessRows[row] == SlotNo(0)) {
            ExampleByMouse::Replace(GetGuess.Guess[row], "32.0");
            if (GetGuess.FitCheck[row].Value != 0) Player::Click(GetGuess.FitCheck[row]);
            EXPECT_EQ(GetGuess.FitCheck[row].Value, 0);
        }
    Player::Click(GetGuess.OkButton);
}

void ExampleByMouse::FitWithLimits() {
    player.ExpectMessage("Do you want new guesses for the concentrations?", "Yes");
    player.ExpectMessage("Do you also want the baseline offsets reset to zero?", "No");
    player.Expect(GetGuessName, HoldTheMass);
    player.Expect(ResultsName, [this] {
        player.Expect(WaitFormName, [] {});
        Player::Click(Results.ComputeConfidence);
        EXPECT_EQ(Work.LimitsDone, FlagTrue);
        for (const char* word : {"Kd = ", "log10 K = ", "Delta G = "})
            EXPECT_NE(Results.ParmsFit.Text.find(word), std::string::npos) << word;
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("FitData");
    ASSERT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    EXPECT_EQ(Work.NumFree, 1 + 9 + 3); // the constant, a concentration each, an offset a channel
}

void ExampleByMouse::Study() {
    SeeGraph("GraphResiduals");
    player.Expect(StudyFormName, [] {
        Replace(StudyForm.Inputs[0].Box, "1, 2, 3, 4");
        Player::Click(StudyForm.RunButton);
        ASSERT_EQ(StudyForm.Rows.size(), 4U);
        EXPECT_EQ(StudyForm.Rows[1][0], "2 (yours)");
        EXPECT_LT(std::stod(StudyForm.Rows[0][12]), 0.01) << "no monomer alone";
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("CompareModels");
    player.Expect(StudyFormName, [this] {
        Replace(StudyForm.Inputs[3].Box, "9");
        Player::Click(StudyForm.RunButton);
        EXPECT_EQ(StudyForm.Rows.size(), 9U);
        player.Expect(ChartsName, [] { Player::Window(ChartsName)->close(); });
        Player::Click(StudyForm.GraphButton);
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("ProfileParameter");
    player.Expect(StudyFormName, [this] {
        Replace(StudyForm.Inputs[0].Box, "40");
        Player::Click(StudyForm.RunButton);
        EXPECT_TRUE(StudyForm.Progress.Text.starts_with("40 fits to resampled data"));
        player.Expect(CorrelationName, [] { Player::Click(Correlation.OkButton); });
        Player::Click(StudyForm.CorrelationsButton);
        Player::Click(StudyForm.CloseButton);
    });
    player.ClickMenu("ResampleFit");
    SeeGraph("GraphSpeciation");
}

void ExampleByMouse::RunRecipe() {
    player.GiveFile(In("fit.job"));
    player.ClickMenu("SaveJob");
    EXPECT_NE(Written("fit.job").find("channel = C"), std::string::npos);
    player.Expect(TableFormName, [this] {
        player.GiveFile(In("recipe/scans.job"));
        Player::Click(TableForm.Job.Button);
        player.GiveFile(In("recipe/scans.csv"));
        Player::Click(TableForm.Table.Button);
        Player::Click(TableForm.RunButton);
        for (int i = 0; i < 3000 && TableForm.Running; ++i)
            QTest::qWait(10);
        EXPECT_TRUE(TableForm.Progress.Text.starts_with("All rows are done."));
        Player::Click(TableForm.CloseButton);
    });
    player.ClickMenu("RunTable");
    EXPECT_NE(Written("recipe/scans-summary.csv").find("\n6,00033.RA2,C,"), std::string::npos);
}

void ExampleByMouse::WriteForThePaper() {
    player.Expect(FigureFormName, [this] {
        Player::Click(FigureForm.OneColumnOption);
        player.GiveFile(In("figure.svg"));
        Player::Click(FigureForm.SaveButton);
        Player::Click(FigureForm.CloseButton);
    });
    player.ClickMenu("GraphFigure");
    player.GiveFile(In("methods.tex"));
    player.ClickMenu("ExportMethods");
    player.Expect(ResultsName, [this] {
        player.Expect(ReportPreviewName, [this] {
            player.GiveFile(In("final.html"));
            Player::Click(ReportPreview.SaveHtml);
            Player::Click(ReportPreview.CloseButton);
        });
        Player::Click(Results.Command1);
        Player::Click(Results.OkButton);
    });
    player.ClickMenu("ReviewFit");
    player.GiveFile(In("final.quil"));
    player.ClickMenu("DoFitSave");
}

// What the manual says to click was clicked by no test in one go, and the document knew of no study.
TEST_F(ExampleByMouse, FromTheScansToThePaper) {
    ReadScansAndUnits();
    ChooseModelAndOffsets();
    FitWithLimits();
    if (HasFatalFailure()) return;
    Study();
    RunRecipe();
    WriteForThePaper();
    EXPECT_NE(Written("figure.svg").find("<svg"), std::string::npos);
    EXPECT_NE(Written("methods.tex").find("\\begin{table"), std::string::npos);
    EXPECT_FALSE(Written("final.quil").empty());
    const std::string html = Written("final.html");
    for (const char* word : {"<svg", "Delta G", "SHA-256", "<h2>Comparison of models</h2>", "<h2>Profile of ",
                             "<h2>Resampling</h2>", "40 fits to resampled data", "(correlations)"})
        EXPECT_NE(html.find(word), std::string::npos) << word;
}

} // namespace
} // namespace Quillon

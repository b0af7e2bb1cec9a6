// What a paper takes from a fit that stands, by mouse: tables, job, curve, document, weights, a table of
// fits.
#include "chart/hand/Charts.h"
#include "commands/Analmenu.h"
#include "commands/export/ReportPreview.h"
#include "commands/studies/TableForm.h"
#include "fit/forms/NoiseForm.h"
#include "forms/shell/Binding.h"
#include "graphs/FigureForm.h"
#include "reporting/Results.h"
#include "studies/StudyForm.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <QTest>

#include <gtest/gtest.h>

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

} // namespace
} // namespace Quillon

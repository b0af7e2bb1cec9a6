// A saved fit opened months later: graphs, results, correlations and report come out as they did on the day
// of the fit, from the file alone.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "commands/fitting/FitCommand.h"
#include "fit/equations/FreeMap.h"
#include "fit/forms/GetGuess.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/PickSet.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "models/table/Catalogue.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ParmScale.h"
#include "persistence/Filelist.h"
#include "reporting/Report.h"
#include "reporting/Results.h"
#include "reporting/values/Correlation.h"
#include "tests/support/ModelCases.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

using Lines = std::vector<std::string>;

void Append(Lines& all, const Lines& more) {
    all.insert(all.end(), more.begin(), more.end());
}

// Everything that the program shows of a fit, as text.
Lines ShownOf(RecordingSurface& screen) {
    Lines all;
    const auto graph = [&](void (*show)(), const char* name) {
        screen.Clear();
        Chart = ChartModule{};
        Charts = ChartsForm{};
        SetScreenSurface(screen.Surface());
        show();
        EXPECT_GT(screen.Items.size(), 20U) << name; // a frame, tics, data
        all.push_back(name);
        Append(all, screen.Lines());
    };
    graph(GraphData, "data");
    graph(GraphFunc, "function");
    graph(GraphOverlay, "overlay");
    graph(GraphResiduals, "residuals");
    graph(GraphResidualsY, "residuals against fit");
    graph(GraphResidualsR, "residuals against radius");
    graph(GraphOverlaySet, "overlay of a set");
    graph(GraphResidualsRSet, "residuals of a set");
    FillResults();
    for (const Control* control :
         {&Results.SumSqValue, &Results.DegFreedom, &Results.RmsValue, &Results.ZScore, &Results.ParmsFit,
          &Results.ParmsConst, &Results.ConstraintText, &Results.Message, &Results.Label3})
        all.push_back((control->Visible ? "" : "hidden: ") + control->Text);
    FillCorrelation();
    Append(all, Correlation.Names);
    for (const auto& row : Correlation.Cells)
        for (const CorrelationCell& cell : row)
            all.push_back(cell.Text);
    all.push_back(ReportText());
    return all;
}

class ReopenedFits : public testing::TestWithParam<const char*> {
protected:
    ReopenedFits() {
        Host.ShowModal = [](const std::string& form) {
            if (form == GetGuessName) AssignFreePositions(FitChoices());
            if (form == PickSetName) {
                PickSetRow(SetNo(2));
                PickSetOkButton();
            }
        };
    }
    ~ReopenedFits() override { RemoveScreenSurface(); }

    void Fit() {
        StartQuillon("");
        const Workspace start = Work;
        Work = SimulatedWorkspace(ModelCaseNamed(GetParam()));
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        Work.MonitorMode = 0;
        Work.LastModel = Work.Model;
        Work.LastNonIdeal = Work.NonIdeal;
        Work.LastSeparateK = Work.SeparateK;
        Work.ModelName = start.ModelName;
        for (long row = 1; row <= Work.MaxSets; ++row)
            if (Work.ScanPoints[row] > 0) Work.ScanComment[row] = "sample " + std::to_string(row);
        BuildParmNames();
        BuildParmFormats();
        BuildParmScale();
        SetDefaultBounds();
        FitDataCommand();
        ASSERT_EQ(Work.FitDone, FlagTrue);
        SetMenuStatus();
    }
    Script TheScript;
    RecordingSurface Screen;
};

INSTANTIATE_TEST_SUITE_P(OfEachKind, ReopenedFits,
                         testing::Values("Model02", "Model08SeparateK", "Model10Constrained", "Model02Linked",
                                         "Model10Interference", "Model02EighteenSets"),
                         [](const auto& kind) { return std::string(kind.param); });

TEST_P(ReopenedFits, ShowWhatTheyShowedWithNoScanAtHand) {
    Fit();
    const std::string path = TheScript.Directory() + "/months ago.quil";
    TheScript.ExpectFile("Quillon - Save Fit Data & Parameters", path);
    RunMainCommand("DoFitSave");
    const Lines shown = ShownOf(Screen);
    const std::string bytes = ReadWholeFile(path);

    StartQuillon(""); // another day
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_FALSE(MainItem("DoFitSave").Enabled);
    ASSERT_EQ(mnuRecentFile[1].Path, path);
    RunRecentFile(1);
    for (const char* item : {"ReviewFit", "Covariance", "DoFitSave", "GraphData", "GraphFunc", "GraphOverlay",
                             "GraphResiduals", "FitData", "AlterBounds"})
        EXPECT_TRUE(MainItem(item).Enabled) << item;
    const Lines again = ShownOf(Screen);
    ASSERT_EQ(again.size(), shown.size());
    for (std::size_t i = 0; i < shown.size(); ++i)
        EXPECT_EQ(again[i], shown[i]);

    // Looking at it has changed nothing that is saved: only the model list has grown, once.
    TheScript.ExpectFile("Quillon - Save Fit Data & Parameters", path);
    RunMainCommand("DoFitSave");
    const std::string second = ReadWholeFile(path);
    EXPECT_EQ(second.size(), bytes.size() + 4);
    StartQuillon(path); // named on the command line
    TheScript.ExpectFile("Quillon - Save Fit Data & Parameters", path);
    RunMainCommand("DoFitSave");
    EXPECT_TRUE(ReadWholeFile(path) == second);
}

TEST_P(ReopenedFits, AreFittedAgainToTheSameMinimum) {
    Fit();
    const std::string path = TheScript.Directory() + "/fit.quil";
    TheScript.ExpectFile("Quillon - Save Fit Data & Parameters", path);
    RunMainCommand("DoFitSave");
    const double sum = Work.SumSq;
    const auto map = Work.FreeMap;
    RunRecentFile(1);
    RunMainCommand("FitData");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.FreeMap, map);
    EXPECT_NEAR(Work.SumSq, sum, 1e-4 * sum); // within the convergence limit of either
}

// A session that had fitted another model with other options took the restored fit for a change of them: it
// wrote the shared constant over separate ones, or 0 over zero offsets, before the guesses were even shown.
TEST_P(ReopenedFits, KeepTheirConstantsWhateverTheSessionFittedBefore) {
    Fit();
    const std::string path = TheScript.Directory() + "/fit.quil";
    TheScript.ExpectFile("Quillon - Save Fit Data & Parameters", path);
    RunMainCommand("DoFitSave");
    const auto parms = Work.Parms;
    for (const bool other : {false, true}) {
        StartQuillon("");
        Work.LastModel = other ? 13 : 0;
        Work.LastSeparateK = Work.LastNonIdeal = Flag(other);
        RunRecentFile(1);
        int dialogs = 0;
        Host.ShowModal = [&](const std::string& form) {
            if (form != GetGuessName) return;
            ++dialogs;
            GetGuessCancelButton();
        };
        RunMainCommand("FitData"); // asks nothing: nothing has changed since that fit
        EXPECT_EQ(dialogs, 1);
        EXPECT_EQ(Work.Parms, parms);
        EXPECT_EQ(Work.FitDone, FlagTrue);
    }
}

} // namespace
} // namespace Quillon

// Species, masses, integration and simulation at their windows, by mouse and by keyboard.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "fit/forms/GetGuess.h"
#include "forms/shell/Binding.h"
#include "graphs/kinds/PickSet.h"
#include "graphs/kinds/SpecialOptions.h"
#include "models/forms/SpecForm.h"
#include "models/species/SpeciesAtPoint.h"
#include "tests/forms/Player.h"
#include "tests/forms/Scans.h"
#include "workspace/records/Workspace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

const char* const OfData =
    "Do you want the plot to use the experimental data (Yes) or the theoretical fit (No)?";
const char* const OverwriteAsk = "Do you want the simulated data to overwrite the experimental data?";
const char* const NoiseAsk = "Do you want to add random noise to the simulation?";

struct AnalysisAtTheWindows : testing::Test {
    AnalysisAtTheWindows() { UseFinishedFit(); }
    Player player;

    static std::string YTitle() { return Chart.Spec.AxisY1.Title.Text.Str(); }
    // Closes the graph; the main window takes the keys, as a window manager has it.
    static void CloseGraph() {
        Player::Window(ChartsName)->close();
        Player::Window(AnalmenuName)->activateWindow();
        Player::Serve();
    }
    // Types into the input box that stands, over what it offers.
    void ExpectInput(const char* text) {
        player.Expect("QInputDialog", [text] {
            Player::Type(text);
            Player::Press(Qt::Key_Return);
        });
    }
    void PickSecondSet() {
        player.Expect(PickSetName, [] {
            Player::Widget(PickSetWindow.SetList)->setFocus();
            Player::Press(Qt::Key_Down);
            Player::Press(Qt::Key_Return);
        });
    }
};

TEST_F(AnalysisAtTheWindows, SpeciesOfAllSetsAreShown) {
    player.ClickMenu("GraphSpecies");
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
    EXPECT_EQ(Chart.DataY.Sets(), 9); // monomer, dimer and total of three sets
    EXPECT_EQ(YTitle(), "Absorbance");
    EXPECT_EQ(Charts.SpecialOpts[LogYOption].Text, "Convert Y-Axis to Natural Log");
    CloseGraph();
    player.ClickMenu("GraphSpeciesFraction");
    EXPECT_EQ(Chart.DataY.Sets(), 6);
    EXPECT_EQ(YTitle(), "Fraction of Total Absorbance");
}

TEST_F(AnalysisAtTheWindows, SpeciesOfOneSetAreReachedByKeys) {
    PickSecondSet();
    player.PressMenu(Qt::Key_G, "GraphSpeciesSet");
    ASSERT_TRUE(Player::Window(ChartsName)->isVisible());
    ASSERT_EQ(Chart.DataY.Sets(), 3);
    const long point = Work.SetPts[1] + 7; // the seventh of set 2
    EXPECT_FLOAT_EQ(Chart.DataY(7, 1), SpeciesAtPoint(point)[0]);
    CloseGraph();
    PickSecondSet();
    player.PressMenu(Qt::Key_G, "GraphSpeciesFractionSet");
    EXPECT_EQ(Chart.DataY.Sets(), 2);
    EXPECT_NEAR(Chart.DataY(7, 1) + Chart.DataY(7, 2), 1.0, 1e-6);
}

TEST_F(AnalysisAtTheWindows, MassesAskAndAreShown) {
    player.ExpectMessage(OfData, "No");
    ExpectInput("9"); // asks again
    ExpectInput("30");
    player.ClickMenu("GraphMvsC");
    ASSERT_TRUE(Player::Window(ChartsName)->isVisible());
    EXPECT_EQ(Chart.DataY.Points(), Work.SetPts[1] - 29);
    EXPECT_EQ(YTitle(), "Weight-Average Buoyant Mass (Da)");
    CloseGraph();
    player.ExpectMessage(OfData, "Return"); // yes
    player.Expect("QInputDialog", [] {
        // what the last graph was made with is offered
        EXPECT_EQ(QApplication::activeModalWidget()->findChild<QLineEdit*>()->text(), "30");
        Player::Press(Qt::Key_Return);
    });
    player.PressMenu(Qt::Key_G, "mnuGraphMvsR");
    EXPECT_EQ(Chart.Spec.AxisX1.Title.Text.Str(), "radius relative to sample center (cm)");
    CloseGraph();
    player.ExpectMessage(OfData, "Yes");
    player.Expect("QInputDialog", [] { Player::Press(Qt::Key_Escape); });
    player.ClickMenu("mnuGraphMvsR");
    EXPECT_FALSE(Player::Window(ChartsName)->isVisible());
}

TEST_F(AnalysisAtTheWindows, IntegrationFollowsSetUnitAndRadii) {
    const std::int16_t units = Work.ConcUnits;
    player.Expect(SpecFormName, [&] {
        EXPECT_EQ(SpecForm.SpecName[2].Text, "Dimer");
        const std::string first = SpecForm.SpecConc[0].Text;
        Player::Widget(SpecForm.SetList)->setFocus();
        Player::Press(Qt::Key_Down);
        EXPECT_EQ(SpecForm.SetList.Value, 2);
        EXPECT_NE(SpecForm.SpecConc[0].Text, first);
        Player::Click(SpecForm.UseMolar);
        EXPECT_TRUE(SpecForm.SpecConc[0].Text.ends_with(" M"));
        Player::Click(SpecForm.RangeButton);
        const long row = Work.SetRow[2];
        EXPECT_NEAR(std::stod(SpecForm.Inner.Text), Work.ScanRadius[row][Work.FitRange[0][row]], 1e-4);
        Player::TabTo(SpecForm.Inner);
        Player::Type("6.5"); // above the outer radius
        player.ExpectMessage("Inner radius must be less than outer.");
        Player::Press(Qt::Key_Tab);
        EXPECT_TRUE(Player::Widget(SpecForm.Inner)->hasFocus());
        Player::Type("6.0");
        Player::Press(Qt::Key_Tab);
        EXPECT_EQ(SpecForm.Inner.Text, "6.0000");
        Player::Click(SpecForm.CopyButton);
        const QString copied = QGuiApplication::clipboard()->text();
        EXPECT_TRUE(copied.startsWith("set\tlabel\t"));
        EXPECT_EQ(copied.count('\n'), 1 + 3 * 3);
        Player::Press(Qt::Key_Escape);
    });
    player.ClickMenu("DoIntegrate");
    EXPECT_EQ(Work.ConcUnits, units);
}

TEST_F(AnalysisAtTheWindows, SimulationBesideTheData) {
    const OneBased<float> data = Work.PtY;
    player.ExpectMessage(OverwriteAsk, "Return"); // no
    player.ExpectMessage(NoiseAsk, "No");
    player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
    player.ClickMenu("DoSimulate");
    EXPECT_TRUE(Player::Window(ChartsName)->isVisible());
    EXPECT_EQ(Work.PtY, data);
    EXPECT_EQ(Chart.DataY.Sets(), 2 * Work.NumSets);
}

TEST_F(AnalysisAtTheWindows, NoiseEndedTheProgram) {
    OneBased<float> former = Work.PtFit;
    for (int run = 0; run < 2; ++run) {
        player.ExpectMessage(OverwriteAsk, "No");
        player.ExpectMessage(NoiseAsk, "Yes");
        ExpectInput("0.01");
        player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
        player.ClickMenu("DoSimulate");
        EXPECT_NE(Work.PtFit, former) << "each simulation has a noise of its own";
        former = Work.PtFit;
        CloseGraph();
        QTest::qWait(2); // the clock seeds
    }
}

TEST_F(AnalysisAtTheWindows, SimulationInPlaceOfTheDataAndBack) {
    const Workspace before = Work;
    EXPECT_FALSE(MainItem("BringBackMeasured").Enabled);
    player.ExpectMessage(OverwriteAsk, "Yes");
    player.ExpectMessage(NoiseAsk, "Yes");
    ExpectInput("0.01");
    player.Expect(GetGuessName, [] { Player::Click(GetGuess.OkButton); });
    player.PressMenu(Qt::Key_A, "DoSimulate");
    EXPECT_EQ(Work.FitDone, FlagFalse);
    double sum = 0.0; // of the squares of the noise: the scans had less of it
    for (long p = 1; p <= Work.NumPts; ++p)
        sum += std::pow(static_cast<double>(Work.PtY[p]) - before.PtFit[p], 2);
    EXPECT_NEAR(std::sqrt(sum / Work.NumPts), 0.01, 0.002);
    CloseGraph();
    ASSERT_TRUE(MainItem("BringBackMeasured").Enabled);
    player.ClickMenu("BringBackMeasured");
    EXPECT_EQ(Work.PtY, before.PtY);
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_FALSE(MainItem("BringBackMeasured").Enabled);
}

} // namespace
} // namespace Quillon

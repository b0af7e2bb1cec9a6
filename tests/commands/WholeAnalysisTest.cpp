// A whole analysis as a user plays it on the records of the windows: from the start of the program through
// the table of scans, model, units and guesses to the results.
#include "chart/CHART.h"
#include "chart/Charts.h"
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "fit/forms/GetGuess.h"
#include "models/forms/ModelForm.h"
#include "models/forms/UnitsForm.h"
#include "models/table/ParmScale.h"
#include "reporting/Results.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormEvents.h"
#include "scandata/forms/FileFormScans.h"
#include "tests/support/RecordingSurface.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <numbers>

namespace Quillon {
namespace {

constexpr double Sigma = 1.2;    // of the monomer at 10000 rpm, cm^-2
constexpr double Constant = 3.0; // dimer over monomer squared, both as signal
constexpr double Outer = 6.15;   // cm, end of the column

// The first column of a six-channel cell at one speed: c + K c^2 with c = c0 exp(sigma (r^2 - outer^2) / 2),
// and an offset; written to five decimals.
std::string MonomerDimerScan(int rpm, double atOuter, double offset) {
    char line[64];
    std::snprintf(line, sizeof line, "Monomer and dimer\r\nR 1 20.0 %d 0079200 8.6853E10 280 32\r\n", rpm);
    std::string text = line;
    const double sigma = Sigma * rpm * rpm / 1e8;
    for (int i = 0; i <= 140; ++i) {
        const double r = 5.80 + 0.0025 * i;
        const double c = atOuter * std::exp(sigma * (r * r - Outer * Outer) / 2);
        std::snprintf(line, sizeof line, "   %.4f  %.5E  1.0E-03\r\n", r, c + Constant * c * c + offset);
        text += line;
    }
    return text;
}

struct WholeAnalysis : testing::Test {
    WholeAnalysis() {
        SetScreenSurface(screen.Surface());
        StartQuillon("");
        Work.ChannelRadii[0] = 5.85F; // channel A of six
        Work.ChannelRadii[8] = 6.15F;
    }
    ~WholeAnalysis() override { RemoveScreenSurface(); }
    RecordingSurface screen;
    Script script;

    void ChooseScans() {
        const std::vector<std::string> paths{
            script.MakeFile("00020.RA1", MonomerDimerScan(10000, 0.25, 0.004)),
            script.MakeFile("00033.RA1", MonomerDimerScan(14000, 0.30, -0.002)),
            script.MakeFile("00044.RA1", MonomerDimerScan(17500, 0.35, 0.001))};
        script.ExpectModal(FileFormName, [this, paths] {
            for (int line = 0; line < 3; ++line) {
                FileFormCheckFocus(line);
                script.ExpectFile("Quillon - Read Data File", paths[static_cast<std::size_t>(line)]);
                if (line == 0)
                    FileFormTimer1(); // a fresh workspace opens in the file dialog
                else
                    FileFormNewFileButton();
                script.ExpectModal(ChartsName, [] { ChartKey(13, 0); });
                FileFormKey(line, 'a');
                EXPECT_EQ(FileForm.ChannelBox[static_cast<std::size_t>(line)].Text, "A");
            }
            FileFormOkButton();
        });
        RunMainCommand("ReadData");
    }

    void ChooseModelAndUnits() {
        script.ExpectModal(ModelFormName, [] {
            ModelFormRowClick(2);
            ModelFormOkButton();
        });
        RunMainCommand("DoModelSet");
        script.ExpectModal(UnitsFormName, [] {
            UnitsFormMassClick(2);
            UnitsFormOkButton();
        });
        RunMainCommand("DefineUnits");
    }

    void ExpectGuessQuestions() {
        script.ExpectMessage({"Do you want new guesses for the concentrations?", "Quillon", BoxIcon::Question,
                              BoxButtons::YesNo, BoxAnswer::Yes},
                             BoxAnswer::Yes);
        script.ExpectMessage({"Do you also want the baseline offsets reset to zero?", "Quillon",
                              BoxIcon::Information, BoxButtons::YesNo, BoxAnswer::No},
                             BoxAnswer::No);
    }
};

TEST_F(WholeAnalysis, FindsMassAndConstantOfMonomerAndDimer) {
    ChooseScans();
    EXPECT_EQ(Work.DataChosen, FlagTrue);
    EXPECT_EQ(Work.NumSets, 3);
    EXPECT_EQ(Work.NewData, 1);
    EXPECT_EQ(Work.SetLabel[2], "00033.RA1 Ch A");
    EXPECT_TRUE(MainItem("GraphData").Enabled);
    EXPECT_FALSE(MainItem("FitData").Enabled);

    ChooseModelAndUnits();
    EXPECT_EQ(Work.Model, 2);
    EXPECT_EQ(Work.MassUnits, 2);
    EXPECT_TRUE(MainItem("FitData").Enabled);

    RunMainCommand("FitPause"); // the iteration starts by itself
    ExpectGuessQuestions();
    script.ExpectModal(GetGuessName, [] {
        ASSERT_EQ(GetGuess.GuessRows[0], SlotNo(0));
        for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row) {
            const long slot = GetGuess.GuessRows[row].Number;
            GetGuess.FitCheck[row].Value = slot == 0 || slot == 2 || slot >= 8 ? 1 : 0;
            if (GetGuess.FitCheck[row].Enabled) GetGuessFitCheck(static_cast<int>(row));
        }
        GetGuessOkButton();
    });
    script.ExpectModal(ResultsName, [] { ResultsOkButton(); });
    RunMainCommand("FitData");

    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
    EXPECT_EQ(Work.FitTitle, "monomer <-> dimer fit");
    EXPECT_EQ(Work.NumFree, 8); // mass, constant, and loading and offset of each set
    // The data are exact but for the last digit written, so the fit is as good as its convergence limit.
    const double omega = 10000 * std::numbers::pi / 30;
    const double buoyancy = 1 - static_cast<double>(Work.VbarA) * static_cast<double>(Work.SolventDensity);
    const double kDa = Sigma * 83144710.0 * 293.15 / (buoyancy * omega * omega) / 1000;
    EXPECT_NEAR(ToUserUnits(SlotNo(0), Work.Parms[0]), kDa, 0.005 * kDa);
    EXPECT_NEAR(Work.Parms[2], std::log(Constant), 0.05);
    EXPECT_LT(Work.RmsResidual, 1e-4F);
    EXPECT_FALSE(Results.ParmsFit.Text.empty());
    EXPECT_TRUE(MainItem("ReviewFit").Enabled && MainItem("DoFitSave").Enabled &&
                MainItem("GraphOverlay").Enabled);
}

TEST_F(WholeAnalysis, OpeningTheTableAgainEndsTheFitOnlyWhenItIsAcceptedWithAChange) {
    ChooseScans();
    Work.FitDone = Work.FitValid = FlagTrue;
    script.ExpectModal(FileFormName, [] {
        EXPECT_FALSE(FileForm.Timer1);
        EXPECT_EQ(FileForm.NameBox[2].Text, "00044.RA1");
        EXPECT_EQ(FileForm.ChannelBox[2].Text, "A");
        FileFormCancelButton();
    });
    RunMainCommand("ReadData");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    script.ExpectModal(FileFormName, [] { FileFormOkButton(); });
    RunMainCommand("ReadData");
    EXPECT_EQ(Work.FitDone, FlagTrue);
    EXPECT_TRUE(MainItem("GraphOverlay").Enabled);
    script.ExpectModal(FileFormName, [] {
        FileForm.Check1[2].Value = 0;
        FileFormCheckClick(2);
        FileFormOkButton();
    });
    RunMainCommand("ReadData");
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_FALSE(MainItem("GraphOverlay").Enabled);
}

} // namespace
} // namespace Quillon

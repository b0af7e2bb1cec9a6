// The curve over the data while guesses are typed, apparent masses, what logarithms mean.
#include "commands/fitting/LiveCurve.h"

#include "fit/equations/FreeMap.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/MassEstimate.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ParmScale.h"
#include "reporting/values/LogMeaning.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

// Three speeds, without noise, with the truth in Parms.
ModelCase Experiment(std::int16_t model) {
    ModelCase c;
    c.Name = "Live";
    c.Model = model;
    c.LnK2 = std::log(2.0);
    c.Fitted = {0};
    c.Noise = 0.0;
    c.Sets = {{.Rpm = 12000, .OuterSignal = 1.0},
              {.Rpm = 15000, .OuterSignal = 1.1, .Offset = 0.03},
              {.Rpm = 18000, .OuterSignal = 1.2, .Temperature = 21.0F}};
    return c;
}

void Load(const ModelCase& c) {
    Work = SimulatedWorkspace(c);
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.LastModel = Work.Model;
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
}

struct LiveTest : testing::Test {
    Script script;
    static std::size_t RowFor(SlotNo slot) {
        for (std::size_t row = 0; row < GetGuess.GuessRows.size(); ++row)
            if (GetGuess.GuessRows[row] == slot) return row;
        ADD_FAILURE() << "slot " << slot.Number << " is not in the form";
        return 0;
    }
    static void Open(std::int16_t model = 1) {
        Load(Experiment(model));
        LoadGetGuess();
        StartLiveCurve();
    }
    static void Type(SlotNo slot, const std::string& text) { GetGuess.Guess[RowFor(slot)].Text = text; }
    static double Rms() { return std::stod(LiveCurve.Rms.Text.substr(4)); }
};

TEST_F(LiveTest, AtTheTruthTheCurveGoesThroughTheData) {
    Open();
    EXPECT_TRUE(FollowGuesses());
    EXPECT_TRUE(LiveCurve.Pair.HasCurves && LiveCurve.Pair.HasResiduals);
    EXPECT_LT(Rms(), 1e-5);
    EXPECT_TRUE(LiveCurve.Rms.Text.ends_with(" over 210 points")) << LiveCurve.Rms.Text;
    EXPECT_FALSE(FollowGuesses()) << "nothing has been typed since";
}

// An offset that is too high by 0.01 in one set of three leaves 0.01 in a third of the points.
TEST_F(LiveTest, TheRmsIsThatOfWhatIsTyped) {
    Open();
    Type(SlotOffset(SetNo(1)), "0.01");
    EXPECT_TRUE(FollowGuesses());
    EXPECT_NEAR(Rms(), 0.01 / std::sqrt(3.0), 1e-5);
    Type(SlotOffset(SetNo(1)), "0.02");
    EXPECT_TRUE(FollowGuesses());
    EXPECT_NEAR(Rms(), 0.02 / std::sqrt(3.0), 1e-5);
}

TEST_F(LiveTest, TheAnalysisStaysWhatItWas) {
    Open(2);
    const Workspace before = Work;
    const int builds = GraphPair.Builds;
    for (const char* text : {"35", "1E30", "-", "", "0", "-5"}) {
        Type(SlotNo(0), text);
        FollowGuesses();
        EXPECT_TRUE(Work == before) << text;
    }
    EXPECT_EQ(GraphPair.Builds, builds) << "the workbench is left alone";
}

TEST_F(LiveTest, WhatIsNoNumberIsNoEdit) {
    Open();
    FollowGuesses();
    const std::string rms = LiveCurve.Rms.Text;
    Type(SlotNo(0), "-");
    EXPECT_FALSE(FollowGuesses());
    EXPECT_EQ(LiveCurve.Rms.Text, rms);
}

TEST_F(LiveTest, AValueWithoutAFunctionHasNoCurve) {
    Open();
    Type(SlotA(SetNo(1)), "9E37");
    EXPECT_TRUE(FollowGuesses());
    EXPECT_EQ(LiveCurve.Rms.Text, "The function has no value at these guesses");
    EXPECT_EQ(LiveCurve.Rms.ToolTip, "Overflow.") << "e to that power is beyond any number";
    EXPECT_FALSE(LiveCurve.Pair.HasCurves);
    EXPECT_FALSE(LiveCurve.Pair.Upper.DataY.Empty()) << "the data stay";
    EXPECT_TRUE(script.Asked.empty());
}

// --- apparent masses ---------------------------------------------------------------------------------------

TEST_F(LiveTest, TheApparentSigmaOfOneSpeciesIsItsOwn) {
    Load(Experiment(1));
    const double truth = static_cast<double>(Work.Parms[0]);
    for (const SetNo set : EachSet()) {
        const std::optional<double> sigma = ApparentSigma(set);
        ASSERT_TRUE(sigma.has_value());
        EXPECT_NEAR(*sigma / truth, 1.0, 1e-4)
            << "set " << set.Number << ", at its own speed and temperature";
    }
    Work.Parms[SlotOffset(SetNo(2))] = 0.0F; // 0.03 in truth
    EXPECT_LT(*ApparentSigma(SetNo(2)), 0.99 * truth) << "an offset that is not taken off flattens the slope";
}

TEST_F(LiveTest, AMixtureIsHeavierThanItsMonomer) {
    Load(Experiment(2));
    Work.FreeMap[2] = SlotHeld;
    const std::optional<MassEstimate> estimate = EstimateMass();
    ASSERT_TRUE(estimate.has_value());
    EXPECT_EQ(estimate->Sets.size(), 3U);
    const double truth = static_cast<double>(Work.Parms[0]);
    for (const SigmaOfSet& of : estimate->Sets) {
        EXPECT_GT(of.Sigma, truth);
        EXPECT_LT(of.Sigma, 2.0 * truth);
        EXPECT_GE(of.Sigma, estimate->Sigma);
    }
}

TEST_F(LiveTest, DataThatFallHaveNoEstimate) {
    Load(Experiment(1));
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtY[p] = 1.0F - 0.001F * static_cast<float>(p);
    EXPECT_FALSE(EstimateMass().has_value());
    for (float& y : Work.PtY)
        y = -0.1F;
    EXPECT_FALSE(ApparentSigma(SetNo(1)).has_value());
}

TEST_F(LiveTest, TheButtonPutsTheEstimateIntoTheMass) {
    Open();
    const float truth = Work.Parms[0];
    const std::size_t row = RowFor(SlotNo(0));
    EXPECT_TRUE(GetGuess.Estimate[row].Visible);
    EXPECT_FALSE(GetGuess.Estimate[RowFor(SlotA(SetNo(1)))].Visible);
    Work.Parms[0] = 0.5F * truth;
    GetGuessEstimate(static_cast<int>(row));
    EXPECT_NEAR(static_cast<double>(Work.Parms[0] / truth), 1.0, 1e-4);
    EXPECT_EQ(GetGuess.Guess[row].Text, ParmText(SlotNo(0)));
    EXPECT_TRUE(GetGuess.Note.Text.starts_with("Apparent sigma (1/cm^2): set 1 ")) << GetGuess.Note.Text;
    EXPECT_NE(GetGuess.Note.Text.find(", set 3 "), std::string::npos);
}

TEST_F(LiveTest, WithoutAnEstimateTheMassStays) {
    Open();
    const float before = Work.Parms[0];
    for (float& y : Work.PtY)
        y = -0.1F;
    GetGuessEstimate(static_cast<int>(RowFor(SlotNo(0))));
    EXPECT_EQ(Work.Parms[0], before);
    EXPECT_EQ(script.Beeps, 1);
    EXPECT_FALSE(GetGuess.Note.Text.empty());
}

// --- logarithms --------------------------------------------------------------------------------------------

TEST_F(LiveTest, LogarithmsAreToldInMoles) {
    Load(Experiment(2));
    Work.ConcUnits = ConcUnit::Mole;
    BuildParmScale();
    Work.Parms[2] = ToInternal(SlotNo(2), 10.34F);
    Work.Parms[SlotA(SetNo(1))] = ToInternal(SlotA(SetNo(1)), -10.98F);
    EXPECT_EQ(LogMeaning(SlotNo(2)), "ln K 10.34 = 3.1E4 L/mol, Kd 32 uM");
    EXPECT_EQ(LogMeaning(SlotA(SetNo(1))), "ln c -10.98 = 17 uM");
    EXPECT_EQ(LogMeaning(SlotNo(0)), "");
    EXPECT_EQ(LogMeaning(SlotOffset(SetNo(1))), "");
}

TEST_F(LiveTest, InSignalUnitsAConstantHasItsMolesBehindIt) {
    Load(Experiment(2));
    Work.Parms[SlotA(SetNo(1))] = ToInternal(SlotA(SetNo(1)), -0.3567F);
    EXPECT_EQ(LogMeaning(SlotA(SetNo(1))), "ln c -0.3567 = 0.7 AU");
    Work.Parms[2] = ToInternal(SlotNo(2), 1.5F); // exp 1.5 = 4.48; K = 4.48 * 40000 * 1.2 / 2 = 1.08E5 L/mol
    EXPECT_EQ(LogMeaning(SlotNo(2)), "ln K 1.5 = 4.5 in the units shown, 1.1E5 L/mol, Kd 9.3 uM");
    Work.ExtA = Workspace{}.ExtA;
    EXPECT_EQ(LogMeaning(SlotNo(2)),
              "ln K 1.5 = 4.5 in the units shown; no molar extinction coefficient is given");
}

TEST_F(LiveTest, ConcentrationsHaveThePrefixThatSuitsThem) {
    EXPECT_EQ(MolarText(1.7e-5), "17 uM");
    EXPECT_EQ(MolarText(0.9999e-6), "1 uM");
    EXPECT_EQ(MolarText(2.5e-3), "2.5 mM");
    EXPECT_EQ(MolarText(1.0), "1 M");
    EXPECT_EQ(MolarText(4.56e-10), "460 pM");
    EXPECT_EQ(MolarText(1e-15), "1.0E-15 M");
}

TEST_F(LiveTest, TipsFollowWhatIsTyped) {
    Open(2);
    FollowGuesses();
    const std::size_t row = RowFor(SlotA(SetNo(1)));
    const std::string before = GetGuess.Guess[row].ToolTip;
    EXPECT_TRUE(before.starts_with("ln c ")) << before;
    Type(SlotA(SetNo(1)), "0");
    FollowGuesses();
    EXPECT_EQ(GetGuess.Guess[row].ToolTip, "ln c 0 = 1 AU");
    EXPECT_EQ(GetGuess.ParameterName[row].ToolTip, "ln c 0 = 1 AU");
    EXPECT_EQ(GetGuess.Guess[RowFor(SlotNo(0))].ToolTip, "");
}

} // namespace
} // namespace Quillon

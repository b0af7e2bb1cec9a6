// Starting concentrations: the table of models worked out by hand, the reference point and its substitutes.
#include "models/SEDEQ3.h"
#include "tests/support/ModelFixtures.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

constexpr const char* Question = "Do you also want the baseline offsets reset to zero?";

// Signal 1 at the reference point (L = 0); constants 1, 0.5, 2, 3 in slots 2, 4, 6, 7.
void StartGuess(int model) {
    Work = UnitWorkspace(model);
    Work.Parms[2] = 1.0F;
    Work.Parms[4] = 0.5F;
    Work.Parms[6] = 2.0F;
    Work.Parms[7] = 3.0F;
    Work.Parms[SlotA(1)] = -9.0F;
    Work.Parms[SlotB(1)] = -8.0F;
    Work.Parms[SlotOffset(1)] = 0.25F;
}

struct GuessRow {
    int Model;
    double Sum;   // of the constants, with their signs
    double Parts; // what the rest is divided by
};
// (Sum - ln 3) / Parts for eA = eB = path = 1, models 9 to 20.
constexpr GuessRow GuessRows[] = {
    {9, -4, 3},  {10, -5, 3},   {11, -7, 3},   {12, -5, 3},   {13, -6, 3},   {14, -6, 3},
    {15, -2, 3}, {16, -4.5, 3}, {17, -5.5, 3}, {18, -5.5, 3}, {19, -3.5, 3}, {20, -4.5, 3},
};

TEST(InitialGuesses, OfSelfAssociations) {
    Script script;
    for (int model = 1; model <= 7; ++model) {
        StartGuess(model);
        Work.ExtA = Work.ExtB = 1.0F;
        InitialGuesses(false);
        const double expected = model == 1 ? 0 : model == 7 ? std::log(0.5) : -std::log(10.0);
        EXPECT_NEAR(Work.Parms[SlotA(1)], expected, 1e-6) << model;
        EXPECT_NEAR(Work.Parms[SlotB(1)], model < 6 ? -8.0 : expected, 1e-6) << model;
    }
}

TEST(InitialGuesses, OfMixturesWithUnitCoefficients) {
    Script script;
    StartGuess(8);
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], (-2 - std::log(2.0)) / 2, 1e-6);
    EXPECT_NEAR(Work.Parms[SlotB(1)], Work.Parms[SlotA(1)], 1e-6);
    for (const GuessRow& row : GuessRows) {
        StartGuess(row.Model);
        InitialGuesses(false);
        const double expected = (row.Sum - std::log(3.0)) / row.Parts;
        EXPECT_NEAR(Work.Parms[SlotA(1)], expected, 1e-6) << row.Model;
        EXPECT_NEAR(Work.Parms[SlotB(1)], expected, 1e-6) << row.Model;
    }
    StartGuess(21);
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], (-8 - 6 - 1 - std::log(4.0)) / 4, 1e-6);
}

TEST(InitialGuesses, CoefficientsAndPathEnter) {
    Script script;
    // eA = 2, eB = 5, path 1.2, ratios of the first set cancel: T1 = ln 2.4, T2 = ln 14.4.
    const auto prepare = [](int model) {
        StartGuess(model);
        Work.ExtA = 2.0F;
        Work.ExtB = 5.0F;
        Work.CellPath[1] = 1.2F;
        Work.ExtinctionRatio[0][1] = 1.7F;
        Work.ExtinctionRatio[1][1] = 0.6F;
    };
    prepare(8);
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], (-2 - std::log(7.0) + std::log(2.4)) / 2, 1e-6);
    EXPECT_NEAR(Work.Parms[SlotB(1)], Work.Parms[SlotA(1)] + std::log(2.5), 1e-6);
    prepare(9);
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], (-4 - std::log(14.4) + 3 * std::log(2.4)) / 3, 1e-6);
    prepare(21);
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], (-15 - std::log(14.0) + 4 * std::log(2.4)) / 4, 1e-6);
}

TEST(InitialGuesses, InterferenceReadsTheExtinctionsAllTheSame) {
    Script script;
    StartGuess(8);
    Work.ConcUnits = 5;
    Work.ExtA = 2.0F;
    Work.ExtB = 5.0F;
    Work.RefrA = Work.RefrB = 77.0F;
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotB(1)] - Work.Parms[SlotA(1)], std::log(2.5), 1e-6);
}

TEST(InitialGuesses, ModelTwentyTwoKeepsItsValues) {
    Script script;
    StartGuess(22);
    InitialGuesses(false);
    EXPECT_EQ(Work.Parms[SlotA(1)], -9.0F);
    EXPECT_EQ(Work.Parms[SlotB(1)], -8.0F);
}

TEST(InitialGuesses, ClearTheFit) {
    Script script;
    StartGuess(1);
    Work.FitDone = Work.FitValid = FlagTrue;
    InitialGuesses(false);
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.FitValid, 0);
}

TEST(InitialGuesses, ReferencePointIsTheFirstAtOrBeyondTheMiddle) {
    Script script;
    StartGuess(1);
    Work.PtY[1] = 0.1F;
    Work.PtY[2] = 0.2F; // x = 0
    Work.PtY[3] = 0.4F;
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], std::log(0.2), 1e-6);
    Work.PtX[2] = -0.1F;
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], std::log(0.4), 1e-6);
}

TEST(InitialGuesses, NegativeReferencePointGivesWayToTheNextPositiveOne) {
    Script script;
    StartGuess(1);
    Work.PtY[2] = -0.01F;
    Work.PtY[3] = 0.3F;
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], std::log(0.3), 1e-6);
}

TEST(InitialGuesses, AllNegativeSetTakesItsRise) {
    Script script;
    StartGuess(1);
    Work.PtY[1] = -0.5F;
    Work.PtY[2] = -0.4F;
    Work.PtY[3] = -0.25F;
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], std::log(0.25), 1e-6);
    Work.PtY[3] = -0.6F;
    InitialGuesses(false);
    EXPECT_NEAR(Work.Parms[SlotA(1)], std::log(0.1), 1e-6);
}

TEST(InitialGuesses, FlatNegativeSetHasNoLogarithm) {
    Script script;
    StartGuess(1);
    Work.PtY[1] = Work.PtY[2] = Work.PtY[3] = -0.5F;
    EXPECT_THROW(InitialGuesses(false), RuntimeError);
}

TEST(InitialGuesses, OtherSetsAreBroughtToTheFirstOnesSignal) {
    Script script;
    Work = SimulatedWorkspace(ModelCaseNamed("Model01Scattered"));
    Work.ExtinctionRatio[0][6] = 0.5F; // set 2, in a cell a quarter as long
    InitialGuesses(false);
    long p = Work.SetPts[1] + 1;
    while (Work.PtX[p] < 0)
        ++p;
    const double expected = std::log(Work.PtY[p]) + std::log(1.2 / (0.25 * 0.5));
    EXPECT_NEAR(Work.Parms[SlotA(2)], expected, 1e-5);
}

TEST(InitialGuesses, AsksForTheOffsetsWithNoInFront) {
    Script script;
    StartGuess(1);
    BoxRequest box;
    box.Text = Question;
    box.Title = "Quillon";
    box.Icon = BoxIcon::Information;
    box.Buttons = BoxButtons::YesNo;
    box.Default = BoxAnswer::No;
    script.ExpectMessage(box, BoxAnswer::No);
    InitialGuesses(true);
    EXPECT_EQ(Work.Parms[SlotOffset(1)], 0.25F);
    script.ExpectMessage(box, BoxAnswer::Yes);
    InitialGuesses(true);
    EXPECT_EQ(Work.Parms[SlotOffset(1)], 0.0F);
}

TEST(InitialGuesses, QuestionWithSeparateConstantsFollowsTheThirdSlot) {
    for (const int model : {2, 3, 4, 5, 6, 8, 9}) {
        Script script;
        StartGuess(model);
        Work.SeparateK = FlagTrue;
        const bool asks = model == 4 || model == 5 || model > 6;
        if (asks) script.ExpectMessage(Question, BoxAnswer::Yes);
        InitialGuesses(true);
        EXPECT_EQ(Work.Parms[SlotOffset(1)], asks ? 0.0F : 0.25F) << model;
    }
}

TEST(FindFirstAtLeast, TellsAMissByTheEnd) {
    OneBased<float> values(4);
    values[1] = -1;
    values[2] = 0;
    values[3] = 0;
    values[4] = 3;
    EXPECT_EQ(FindFirstAtLeast(values, 1, 4, 0.0F), 2);
    EXPECT_EQ(FindFirstAtLeast(values, 3, 4, 0.0F), 3);
    EXPECT_EQ(FindFirstAtLeast(values, 1, 3, 1.0F), 4);
}

} // namespace
} // namespace Quillon

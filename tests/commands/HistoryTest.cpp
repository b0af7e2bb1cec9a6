// The history of the analysis: what a step back gives, what makes a step, and what the steps have in common.
#include "commands/Analmenu.h"
#include "commands/Commands.h"
#include "commands/StartUp.h"
#include "commands/history/HistoryForm.h"
#include "models/function/FitFunction.h"
#include "models/table/Catalogue.h"
#include "persistence/codec/FitCodec.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace Quillon {
namespace {

struct HistoryOf : testing::Test {
    HistoryOf() {
        StartQuillon("");
        Work = SimulatedWorkspace(ModelCaseNamed("Model02"));
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        StartHistory();
        SetMenuStatus();
    }
    Script script;

    static void SetMass(float sigma) {
        RunCommand([sigma] { Work.Parms[0] = sigma; }, "&Set Mass...");
    }
};

// --- every member comes back -----------------------------------------------------------------------------

template <class T>
requires std::is_arithmetic_v<T> || std::is_enum_v<T>
void Alter(T& value) {
    value = static_cast<T>(static_cast<double>(value) == 1.0 ? 2.0 : 1.0);
}
void Alter(std::string& text) {
    text += "x";
}
void Alter(FitOutcome& outcome) {
    Alter(outcome.Sentence);
}
template <class T> void Alter(std::vector<T>& list) {
    list.emplace_back();
}
template <class T, long Lo, class Kind> void Alter(BasedArray<T, Lo, Kind>& array) {
    if (array.Empty()) array.Recreate(Lo);
    for (T& element : array)
        Alter(element);
}
template <class T, long Lo> void Alter(BasedMatrix<T, Lo>& matrix) {
    matrix.Recreate(Lo + 1, Lo + 1, T{3});
}
template <class T, std::size_t N> void Alter(std::array<T, N>& several) {
    for (T& one : several)
        Alter(one);
}

// Those of the program and its user; the rest is the analysis.
const std::set<std::string> ProgramsOwn{
    "YieldInterval", "PauseBeforeFit", "RescueMode",    "FormScalingPercent", "CellType",
    "RangeLogPlot",  "WorkDirectory",  "ChosenPath",    "ChosenName",         "EditBackColor",
    "ChannelRadii",  "RotorExpansion", "ReportFontSize"};

TEST_F(HistoryOf, AStepBackGivesEveryMemberOfTheAnalysis) {
    const Workspace before = Work;
    VisitMembers([&](const char* name, auto member) {
        if (std::string(name) == "MaxSets") return; // a limit, of one value in every analysis
        Work = before;
        StartHistory();
        RunCommand([&] {
            Alter(Work.*member);
            Work.SumSq = 17.0; // so that there is a step whatever the member is
        });
        const auto altered = Work.*member;
        ASSERT_TRUE(CanUndo()) << name;
        UndoCommand();
        const bool isOurs = std::string(name) == "AbortFit"; // which every command clears
        if (ProgramsOwn.contains(name))
            EXPECT_TRUE(Work.*member == altered) << name;
        else
            EXPECT_TRUE(Work.*member == before.*member) << name;
        if (!isOurs) {
            EXPECT_FALSE(altered == before.*member) << name;
        }
    });
}

TEST_F(HistoryOf, ThereIsNoDifferenceBetweenZeroAndMinusZeroToANumber) {
    Work.PtY[1] = 0.0F;
    StartHistory();
    RunCommand([] { Work.PtY[1] = -0.0F; });
    EXPECT_TRUE(CanUndo());
    UndoCommand();
    EXPECT_FALSE(std::signbit(Work.PtY[1]));
    RedoCommand();
    EXPECT_TRUE(std::signbit(Work.PtY[1]));
}

TEST_F(HistoryOf, WhatTheFunctionKeepsOfOtherPointsIsForgotten) {
    const double first = FitFunction(5);
    RunCommand([] {
        Work.SetSigmaScale[1] *= 2.0F;
        ResetFitFunction();
    });
    EXPECT_NE(FitFunction(5), first);
    UndoCommand();
    EXPECT_EQ(FitFunction(5), first);
}

// --- what makes a step -----------------------------------------------------------------------------------

TEST_F(HistoryOf, ACommandThatChangesNothingIsNoStep) {
    RunCommand([] {}, "&Look...");
    RunCommand([] { Work.DataDirectory += "/elsewhere"; }, "Look for files"); // where file dialogs start
    EXPECT_FALSE(CanUndo());
    EXPECT_FALSE(MainItem("Undo").Enabled);
    SetMass(2.0F);
    EXPECT_TRUE(MainItem("Undo").Enabled);
    EXPECT_FALSE(MainItem("Redo").Enabled);
    EXPECT_EQ(History.Steps.back().Command, "Set Mass");
}

TEST_F(HistoryOf, UndoAllGivesTheBytesOfTheFirstState) {
    const std::string first = EncodeFit(Work);
    RunCommand([] { Work.DataDirectory += "/elsewhere"; });
    for (const float sigma : {2.0F, 3.0F, 4.0F})
        SetMass(sigma);
    RunMainCommand("UseOverlay");
    const std::string last = EncodeFit(Work);
    while (MainItem("Undo").Enabled)
        RunMainCommand("Undo");
    EXPECT_TRUE(EncodeFit(Work) == first);
    EXPECT_TRUE(MainItem("UseResiduals").Checked);
    while (MainItem("Redo").Enabled)
        RunMainCommand("Redo");
    EXPECT_TRUE(EncodeFit(Work) == last);
}

TEST_F(HistoryOf, AChangeAfterAStepBackEndsTheWayForward) {
    SetMass(2.0F);
    SetMass(3.0F);
    RunMainCommand("Undo");
    SetMass(4.0F);
    EXPECT_FALSE(CanRedo());
    RunMainCommand("Undo");
    EXPECT_EQ(Work.Parms[0], 2.0F);
}

TEST_F(HistoryOf, WhatNoFileHoldsComesBackAsItWasWhenTheStepWasLeft) {
    RunCommand([] { Work.NewData = Changed::Constraints; });
    EXPECT_FALSE(CanUndo());
    SetMass(2.0F);
    RunCommand([] { Work.NewData = Changed::Nothing; });
    RunMainCommand("Undo");
    EXPECT_EQ(Work.NewData, Changed::Constraints);
    RunMainCommand("Redo");
    EXPECT_EQ(Work.NewData, Changed::Nothing);
}

TEST_F(HistoryOf, AChangeOutsideOfACommandCanBeTakenBack) {
    const float sigma = Work.Parms[0];
    Work.Parms[0] = 9.0F;
    UndoCommand();
    EXPECT_EQ(Work.Parms[0], sigma);
}

TEST_F(HistoryOf, FiftyStepsAndTheFirstStateStay) {
    const std::string first = EncodeFit(Work);
    for (int n = 1; n <= 200; ++n)
        SetMass(static_cast<float>(n));
    EXPECT_EQ(History.Steps.size(), HistoryLength + 1);
    for (std::size_t n = 1; n < HistoryLength; ++n)
        UndoCommand();
    EXPECT_EQ(Work.Parms[0], 151.0F);
    UndoCommand();
    EXPECT_TRUE(EncodeFit(Work) == first);
    EXPECT_FALSE(CanUndo());
}

TEST_F(HistoryOf, AnAnalysisThatNoFileTakesIsNoStep) {
    RunCommand([] { Work.FitTitle = std::string(40000, 'x'); });
    EXPECT_FALSE(CanUndo());
    EXPECT_NE(History.Failure, "") << "that Undo does not know of it was told nowhere";
    RunCommand([] { Work.FitTitle = "short"; });
    EXPECT_TRUE(CanUndo());
    EXPECT_EQ(History.Failure, "");
}

// --- steps share -----------------------------------------------------------------------------------------

TEST_F(HistoryOf, StepsShareThePointsThatTheyHaveInCommon) {
    const KeptAnalysis one = KeepAnalysis(Work);
    Work.Parms[0] = 2.0F;
    Work.PtFit[1] += 1.0F;
    const KeptAnalysis two = KeepAnalysis(Work, &one);
    int shared = 0;
    for (std::size_t i = 0; i < one.Large.size(); ++i)
        shared += one.Large[i] == two.Large[i];
    EXPECT_EQ(shared, static_cast<int>(one.Large.size()) - 1);
    EXPECT_TRUE(WholeAnalysis(two) == Work);
    EXPECT_FALSE(WholeAnalysis(one) == Work);
}

// --- the form --------------------------------------------------------------------------------------------

// A fit of the points at hand with so many parameters.
void TakeFit(std::int16_t free, double sumSq) {
    RunCommand(
        [&] {
            Work.FitDone = FlagTrue;
            Work.NumFree = free;
            Work.SumSq = sumSq;
            Work.RmsResidual = 0.00398F;
        },
        "&Fit Data...");
}

TEST_F(HistoryOf, TheFormTellsOfEachStepAndADoubleClickGoesThere) {
    TakeFit(3, 0.5);
    const std::string fit = EncodeFit(Work);
    SetMass(2.0F);
    script.ExpectModal(HistoryFormName, [&] {
        ASSERT_EQ(HistoryForm.Rows.size(), 3U);
        EXPECT_EQ(HistoryForm.Rows[0],
                  (std::vector<std::string>{"", "12:00:00", "Start", ModelDialogName(2), "", ""}));
        EXPECT_EQ(HistoryForm.Rows[1],
                  (std::vector<std::string>{"", "12:00:00", "Fit Data", ModelDialogName(2), "3.980E-3",
                                            std::to_string(Work.NumPts - 3)}));
        EXPECT_EQ(HistoryForm.Rows[2][0], ">");
        EXPECT_FALSE(HistoryForm.GoButton.Enabled); // there already
        HistoryFormGo(1);
        EXPECT_EQ(HistoryForm.Rows[1][0], ">");
        HistoryFormMark({0});
        EXPECT_TRUE(HistoryForm.GoButton.Enabled);
        HistoryFormCloseButton();
    });
    RunMainCommand("ShowHistory");
    EXPECT_TRUE(EncodeFit(Work) == fit);
    EXPECT_TRUE(CanRedo());
    EXPECT_EQ(History.Steps.size(), 3U); // to look at it is no step
}

// F of 3 and 20 degrees of freedom is exceeded by 4.938 in 1% of cases and by 3.098 in 5% (tables of the F
// distribution).
TEST_F(HistoryOf, TwoMarkedFitsGiveTheirFRatio) {
    Work.NumPts = 25;
    for (auto* numbers : {&Work.PtX, &Work.PtY, &Work.PtFit})
        numbers->Resize(25);
    Work.PtSet.Resize(25);
    StartHistory();
    TakeFit(5, 1.0);
    TakeFit(2, 1.0 + 3.0 * 4.938 / 20.0);
    TakeFit(2, 1.0);
    TakeFit(5, 2.0);
    const auto ratio = [](std::size_t one, std::size_t other) {
        return FRatioText(History.Steps[one], History.Steps[other]);
    };
    for (const std::string& text : {ratio(1, 2), ratio(2, 1)}) {
        EXPECT_TRUE(text.starts_with("F = 4.938 with 3 and 20 degrees of freedom.")) << text;
        EXPECT_NE(text.find("as large in 1.0% of experiments"), std::string::npos) << text;
    }
    EXPECT_EQ(ratio(1, 4),
              "F = 2.0, the ratio of the sums of squares of two fits with 20 degrees of freedom each.");
    EXPECT_EQ(ratio(3, 4),
              "The fit with more parameters has the larger sum of squares: there is no F ratio.");
    EXPECT_EQ(ratio(0, 1), "There is no F ratio: not both of them are fits.");
    RunCommand([] { Work.PtY[1] += 1.0F; });
    EXPECT_EQ(ratio(1, 5), "There is no F ratio: they are fits of other points.");
}

} // namespace
} // namespace Quillon

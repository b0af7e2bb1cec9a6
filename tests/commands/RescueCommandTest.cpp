// What the fit command makes of a fit that did not end at a minimum.
#include "commands/Analmenu.h"
#include "commands/fitting/FitCommand.h"
#include "fit/GNLLSQ.h"
#include "fit/equations/FreeMap.h"
#include "fit/forms/GetGuess.h"
#include "fit/forms/HoldForm.h"
#include "models/SEDEQ3.h"
#include "persistence/Defaults.h"
#include "platform/Platform.h"
#include "reporting/Results.h"
#include "tests/fit/Robustness.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace Quillon {
namespace {

void Load(const std::string& name) {
    Work = SimulatedWorkspace(ModelCaseNamed(name));
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.MonitorMode = 0;
    Work.LastModel = Work.Model;
    Work.LastNonIdeal = Work.NonIdeal;
    Work.LastSeparateK = Work.SeparateK;
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
}

void Accept() {
    EXPECT_TRUE(AssignFreePositions(FitChoices()));
}

class RescueCommand : public testing::Test {
protected:
    // A fit whose first step carries a constant out of the range of a single: it fails in its first
    // iteration.
    void SetUp() override {
        Load("Model12");
        Work.Parms[6] -= 12.0F;
        InitialGuesses(false);
        Outside.ExpectModal(GetGuessName, Accept);
    }
    static std::string PlainEnd() {
        const Workspace kept = Work;
        ApplyModelFlags();
        Accept();
        RunFit();
        const std::string sentence = Work.Outcome.Sentence;
        EXPECT_NE(Work.Outcome.End, FitEnd::Converged);
        EXPECT_NE(Work.Outcome.End, FitEnd::StoppedShort);
        EXPECT_TRUE(Work.Outcome.Reason.starts_with("The fitted value of data set ")) << Work.Outcome.Reason;
        const std::string told = sentence + "\n\n" + Work.Outcome.Reason;
        Work = kept;
        return told;
    }
    // The box behind the failure, answered with the check box as said.
    void Answer(BoxAnswer answer, bool always) {
        Host.AskChecked = [=, this](const BoxRequest& request, const std::string& caption, bool& checked) {
            ++Questions;
            EXPECT_EQ(request.Text, RescueQuestion);
            EXPECT_EQ(request.Default, BoxAnswer::Yes) << "preselected";
            EXPECT_EQ(request.Buttons, BoxButtons::YesNo);
            EXPECT_EQ(caption, AlwaysCaption);
            EXPECT_FALSE(checked);
            checked = always;
            return answer;
        };
    }
    Script Outside;
    int Questions = 0;
};

TEST_F(RescueCommand, NoKeepsTheFailure) {
    const std::string sentence = PlainEnd();
    Outside.AnswerAllMessages(BoxAnswer::Ok);
    Answer(BoxAnswer::No, false);
    FitDataCommand();
    EXPECT_EQ(Questions, 1) << "asked once";
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_TRUE(sentence.starts_with(Work.Outcome.Sentence + "\n\n"));
    EXPECT_EQ(Work.RescueMode, Rescue::Ask);
}

TEST_F(RescueCommand, YesEndsAtTheMinimumAndShowsIt) {
    Outside.ExpectMessage(PlainEnd());
    Answer(BoxAnswer::Yes, false);
    Outside.ExpectModal(ResultsName, [] { EXPECT_FALSE(Results.Warning.Visible); });
    FitDataCommand();
    EXPECT_EQ(Questions, 1);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
    EXPECT_TRUE(Work.Outcome.Rescued);
    EXPECT_TRUE(FitStateText().starts_with("converged, with damped steps; rms residual ")) << FitStateText();
    EXPECT_EQ(Work.RescueMode, Rescue::Ask);
}

TEST_F(RescueCommand, AlwaysIsTheLastTimeThatItIsAsked) {
    LoadAnalmenu();
    const Workspace start = Work;
    Outside.ExpectMessage(PlainEnd());
    Answer(BoxAnswer::Yes, true);
    Outside.ExpectModal(ResultsName, [] {});
    FitDataCommand();
    EXPECT_EQ(Work.RescueMode, Rescue::Always);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
    // The preference stands in the menu and in the ini file.
    SetMenuStatus();
    EXPECT_TRUE(MainItem("AlwaysRescue").Checked);
    Work = FreshWorkspace();
    ReadFitDefaults();
    EXPECT_EQ(Work.RescueMode, Rescue::Always);
    // Nothing is asked or told any more when the search finds a minimum.
    Work = start;
    Work.RescueMode = Rescue::Always;
    Outside.ExpectModal(GetGuessName, Accept);
    Outside.ExpectModal(ResultsName, [] {});
    FitDataCommand();
    EXPECT_EQ(Questions, 1);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
}

TEST_F(RescueCommand, NoSearchIsMadeForACancelledFit) {
    Outside.DuringEvents = [] { Work.AbortFit = FlagTrue; };
    Answer(BoxAnswer::Yes, false);
    FitDataCommand();
    EXPECT_EQ(Questions, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Cancelled);
}

// Scans of a mixture whose iteration converges in the wrong proportion of a set.
void LoadCaught() {
    for (std::uint64_t seed = 1;; ++seed) {
        ASSERT_LT(seed, 20U) << "none is caught";
        LoadMixture({9, 1}, seed);
        StartFromDefaults();
        ApplyModelFlags();
        Accept();
        const Workspace start = Work;
        RunFit();
        const bool caught =
            Work.Outcome.End == FitEnd::Converged && FindLowerMinimum(start.Parms).has_value();
        Work = start;
        if (!caught) continue;
        Work.DataChosen = Work.ModelChosen = FlagTrue;
        Work.LastModel = Work.Model;
        Work.LastNonIdeal = Work.NonIdeal;
        Work.LastSeparateK = Work.SeparateK;
        return;
    }
}

class LowerMinimum : public testing::Test {
protected:
    // The command with one answer to the question; gives the sum of the fit that is then shown.
    double Fit(BoxAnswer answer) {
        Outside.ExpectModal(GetGuessName, Accept);
        Outside.ExpectModal(ResultsName, [] {});
        Host.AskChecked = [=, this](const BoxRequest& request, const std::string&, bool&) {
            Question = request.Text;
            return answer;
        };
        FitDataCommand();
        EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
        return Work.SumSq;
    }
    Script Outside;
    std::string Question;
};

TEST_F(LowerMinimum, IsOfferedWithBothSumsAndTakenByYes) {
    LoadCaught();
    const Workspace start = Work;
    const double kept = Fit(BoxAnswer::No);
    EXPECT_FALSE(Work.Outcome.Rescued);
    const std::string warning = Work.Outcome.Reason;
    const std::string asked = Question;
    Work = start;
    const double taken = Fit(BoxAnswer::Yes);
    EXPECT_TRUE(Work.Outcome.Rescued);
    EXPECT_LT(taken, 0.999 * kept);
    EXPECT_EQ(asked, LowerMinimumQuestion(kept, taken));
    EXPECT_TRUE(warning.ends_with(LowerMinimumText(taken))) << warning;
}

TEST_F(LowerMinimum, IsTakenWithoutAQuestionWhereDampedStepsAlwaysAre) {
    LoadCaught();
    const Workspace start = Work;
    Work.RescueMode = Rescue::Always;
    const double taken = Fit(BoxAnswer::No);
    EXPECT_EQ(Question, "");
    Work = start;
    Work.RescueMode = Rescue::Never;
    EXPECT_GT(Fit(BoxAnswer::No), 1.001 * taken) << "the iteration alone";
    EXPECT_EQ(Work.Outcome.Reason, "");
}

// Fits that converge at a minimum by themselves are the same to the bit, whatever is wanted of the others.
TEST(RescueOff, AFitThatConvergesHasTheSameBits) {
    int converged = 0;
    for (const ModelCase& c : ModelCases()) {
        Workspace ends[2];
        for (const bool rescue : {false, true}) {
            Script script;
            Load(c.Name);
            Work.RescueMode = rescue ? Rescue::Always : Rescue::Never;
            script.AnswerAllMessages(BoxAnswer::Ok);
            Host.ShowModal = [](const std::string& form) {
                if (form == GetGuessName) Accept();
            };
            FitDataCommand();
            Work.RescueMode = Rescue::Ask;
            ends[rescue ? 1 : 0] = Work;
        }
        if (ends[0].Outcome.End != FitEnd::Converged) continue;
        ++converged;
        EXPECT_LE(*ends[0].Outcome.ExpectedDecrease, 1.0) << c.Name;
        EXPECT_TRUE(ends[0] == ends[1]) << c.Name;
    }
    EXPECT_GT(converged, 20);
}

TEST(DataStateTextTest, CountsOneSetAsOne) {
    Work = FreshWorkspace();
    Work.NumSets = 1;
    Work.NumPts = 140;
    EXPECT_EQ(DataStateText(), "1 data set, 140 points");
    Work.NumSets = 3;
    Work.NumPts = 1;
    EXPECT_EQ(DataStateText(), "3 data sets, 1 point");
}

TEST(FitStateTextTest, TellsAStopOnTheWay) {
    Work = FreshWorkspace();
    EXPECT_EQ(FitStateText(), "");
    Work.Outcome = {FitEnd::StoppedShort, "Stopped short of a minimum: 98.0"};
    Work.FitDone = FlagTrue;
    Work.RmsResidual = 0.169F;
    EXPECT_EQ(FitStateText(), "Stopped short of a minimum: 98.0; rms residual 1.690E-1");
    Work.FitDone = FlagFalse;
    Work.Outcome = {FitEnd::Singular, "Singular Matrix - Fit Aborted"};
    EXPECT_EQ(FitStateText(), "Singular Matrix - Fit Aborted");
}

// A monomer and a dimer, with no dimer anywhere.
std::string LoadWithoutDimer(Script& script) {
    Load("Model02");
    Work.Bounds[0][2] = -2000.0F;
    Work.Parms[2] = -1000.0F;
    script.ExpectModal(GetGuessName, Accept);
    return "No point depends on " + Work.ParmName[2] + ". Hold it.";
}

TEST(BeforeTheFit, AParameterThatNoPointDependsOnIsNamed) {
    Script script;
    const std::string text = LoadWithoutDimer(script);
    script.ExpectModal(HoldFormName, [&] {
        EXPECT_EQ(HoldForm.Note.Text, text);
        ASSERT_EQ(HoldForm.HoldCheck.size(), 1U);
        EXPECT_EQ(HoldForm.HoldCheck[0].Text, Work.ParmName[2]);
        EXPECT_EQ(HoldForm.HoldCheck[0].Value, 1);
        HoldFormFitButton();
    });
    script.ExpectMessage("Singular Matrix - Fit Aborted\n\n" + text);
    script.ExpectMessage(RescueQuestion, BoxAnswer::No);
    FitDataCommand();
    EXPECT_EQ(Work.FitDone, 0);
}

TEST(BeforeTheFit, HeldOnRequestItLeavesTheOthersTheirFit) {
    Script script;
    LoadWithoutDimer(script);
    script.ExpectModal(HoldFormName, [] { HoldFormHoldButton(); });
    script.ExpectModal(ResultsName, [] {});
    const std::int16_t fitted =
        ToInt16(static_cast<long>(std::count_if(Work.FreeMap.begin(), Work.FreeMap.begin() + Work.NumParms,
                                                [](std::int16_t map) { return map >= 0; })));
    FitDataCommand();
    EXPECT_NE(Work.FitDone, 0);
    EXPECT_EQ(Work.FreeMap[2], SlotHeld);
    EXPECT_EQ(Work.Parms[2], -1000.0F);
    EXPECT_EQ(Work.NumFree, fitted - 1);
    for (long a = 0; a < Work.NumFree; ++a)
        EXPECT_EQ(Work.FreeMap[Work.FreeIndex[a]], a);
}

TEST(BeforeTheFit, CancelFitsNothingAndHoldsNothing) {
    Script script;
    LoadWithoutDimer(script);
    script.ExpectModal(HoldFormName, [] { HoldFormCancelButton(); });
    Work.FitDone = FlagTrue; // one that stood
    const Workspace before = Work;
    FitDataCommand();
    EXPECT_TRUE(Work == before);
}

// Three readings of one set, and four parameters.
TEST(BeforeTheFit, PointsThatDoNotSufficeAreCountedAndAllParametersListed) {
    Script script;
    Load("Model02");
    ASSERT_FALSE(LoadHoldForm());
    Work.NumPts = ToInt16(static_cast<long>(Work.NumFree));
    ASSERT_TRUE(LoadHoldForm());
    const std::string count = std::to_string(Work.NumFree);
    EXPECT_EQ(HoldForm.Note.Text.substr(0, HoldForm.Note.Text.find('\n')),
              count + " points, " + count + " fitted parameters: hold at least 1.");
    EXPECT_EQ(HoldForm.HoldCheck.size(), static_cast<std::size_t>(Work.NumFree));
    for (Control& check : HoldForm.HoldCheck)
        check.Value = 0;
    HoldFormCheck(0);
    EXPECT_FALSE(HoldForm.HoldButton.Enabled);
    for (Control& check : HoldForm.HoldCheck)
        check.Value = 1;
    HoldFormCheck(0);
    const Workspace before = Work;
    script.ExpectMessage("There is nothing to do!  You must fit at least one parameter");
    HoldFormHoldButton(); // nothing would be left to fit
    EXPECT_TRUE(HoldForm.State.Shown);
    EXPECT_TRUE(Work == before);
    HoldForm.HoldCheck.back().Value = 0;
    HoldFormHoldButton();
    EXPECT_FALSE(HoldForm.State.Shown);
    EXPECT_EQ(HoldForm.Answer, HoldAnswer::HoldAndFit);
    EXPECT_EQ(Work.NumFree, 1);
}

} // namespace
} // namespace Quillon

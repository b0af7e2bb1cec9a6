// The fit without questions.
#include "commands/fitting/FitAtOnce.h"
#include "fit/forms/GetGuess.h"
#include "models/table/DefaultBounds.h"
#include "models/table/ParmScale.h"
#include "reporting/Results.h"
#include "tests/support/ModelCases.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

// An experiment that has never been fitted.
void LoadUnfitted(const std::string& name) {
    Work = SimulatedWorkspace(ModelCaseNamed(name));
    Work.DataChosen = Work.ModelChosen = FlagTrue;
    Work.MonitorMode = Monitor::None;
    Work.NewData = Changed::Nothing;
    Work.LastModel = 0;
    Work.PauseBeforeFit = FlagTrue;
    BuildParmNames();
    BuildParmFormats();
    BuildParmScale();
    SetDefaultBounds();
}

TEST(FitWithoutQuestions, NothingIsAskedAndTheResultsAreShown) {
    Script script;
    LoadUnfitted("Model02");
    script.ExpectModal(ResultsName, [] { EXPECT_EQ(Work.FitDone, FlagTrue); });
    FitAtOnce();
    EXPECT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    EXPECT_EQ(script.Asked, std::vector<std::string>{std::string("modal: ") + ResultsName});
    EXPECT_EQ(Work.PauseBeforeFit, FlagTrue); // as the user has it
    EXPECT_EQ(Work.LastModel, Work.Model);
}

TEST(FitWithoutQuestions, WithoutAChoiceTheModelThatStandsIsTaken) {
    Script script;
    LoadUnfitted("Model01");
    Work.ModelChosen = FlagFalse;
    script.ExpectModal(ResultsName, [] {});
    FitAtOnce();
    EXPECT_EQ(Work.ModelChosen, FlagTrue);
    EXPECT_EQ(Work.FitDone, FlagTrue) << Work.Outcome.Sentence;
    EXPECT_EQ(Work.FitTitle, "single species fit");
}

TEST(FitWithoutQuestions, QuestionsAreThoseOfTheUserAgainAfterwards) {
    Script script;
    LoadUnfitted("Model02");
    script.ExpectModal(ResultsName, [] {});
    FitAtOnce();
    script.ExpectModal(GetGuessName, [] {});
    Host.ShowModal(GetGuessName);
    script.ExpectMessage("Do you want new guesses for the concentrations?", BoxAnswer::No);
    EXPECT_FALSE(AskYesNo("Do you want new guesses for the concentrations?", "Quillon"));
}

} // namespace
} // namespace Quillon

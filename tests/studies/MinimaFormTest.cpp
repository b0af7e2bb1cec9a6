// The form that searches for other minima.
#include "studies/MinimaForm.h"
#include "SimulatedCase.h"
#include "fit/GNLLSQ.h"
#include "platform/Platform.h"
#include "studies/methods/OtherMinima.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/TypeInto.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

void OpenOnFit(const char* name) {
    LoadCase(ModelCaseNamed(name));
    RunFit();
    LoadMinimaForm();
}

void Enter(MinimaInput input, const std::string& keys) {
    MinimaFormGotFocus(input);
    TypeInto(MinimaFormBox(input), keys, [&](int key) { return MinimaFormKeyPress(input, key); });
    MinimaFormLostFocus(input);
}

TEST(MinimaForm, OpensWithoutATable) {
    Script script;
    OpenOnFit("Model10");
    EXPECT_EQ(MinimaForm.CountInput.Text, "6");
    EXPECT_EQ(MinimaForm.SeedInput.Text, "1");
    EXPECT_TRUE(MinimaForm.Rows.empty());
    EXPECT_TRUE(MinimaForm.SearchButton.Enabled);
    EXPECT_FALSE(MinimaForm.StopButton.Enabled);
    EXPECT_FALSE(MinimaForm.TakeButton.Enabled);
    MinimaFormTakeButton();
    EXPECT_TRUE(MinimaForm.State.Shown);
}

TEST(MinimaForm, ShowsTheMinimaAndTakesTheOneThatIsMarked) {
    Script script;
    OpenOnFit("Model10");
    const Workspace own = Work;
    Enter(MinimaInput::Count, "12");
    MinimaFormSearchButton();
    EXPECT_TRUE(Work == own);
    ASSERT_GE(MinimaForm.Rows.size(), 2U);
    int twin = -1;
    long met = 0;
    for (std::size_t i = 0; i < MinimaForm.Rows.size(); ++i) {
        ASSERT_EQ(MinimaForm.Rows[i].size(), MinimaForm.Columns.size());
        met += std::stol(MinimaForm.Rows[i][2]);
        MinimaFormRow(static_cast<int>(i));
        const bool isOwn = MinimaForm.Rows[i][3] == "your fit";
        EXPECT_EQ(MinimaForm.TakeButton.Enabled, !isOwn);
        if (!isOwn && twin < 0) twin = static_cast<int>(i);
    }
    EXPECT_EQ(MinimaForm.Columns[4], "Ln K1(A+B)  (per AU)");
    EXPECT_LE(met, 13);
    EXPECT_TRUE(MinimaForm.Progress.Text.starts_with("13 fits: ")) << MinimaForm.Progress.Text;
    ASSERT_GE(twin, 0);
    MinimaFormRow(twin);
    MinimaFormTakeButton();
    EXPECT_FALSE(MinimaForm.State.Shown);
    EXPECT_TRUE(MinimaForm.Taken);
    EXPECT_FALSE(Work == own);
    EXPECT_NE(Work.FitDone, 0);
    EXPECT_EQ(Work.Outcome.End, FitEnd::Converged);
}

TEST(MinimaForm, StopShowsWhatThereIs) {
    Script script;
    OpenOnFit("Model02");
    script.DuringEvents = [] {
        if (MinimaForm.Progress.Text == "3 of 7 fits") {
            EXPECT_TRUE(MinimaForm.StopButton.Enabled);
            EXPECT_FALSE(MinimaForm.SearchButton.Enabled);
            MinimaFormCloseButton(); // the window's own way out stops the search and nothing else
            EXPECT_TRUE(MinimaForm.State.Shown);
        }
    };
    MinimaFormSearchButton();
    EXPECT_EQ(MinimaForm.Progress.Text, "3 fits: 1 minimum. Stopped before the end.");
    EXPECT_EQ(MinimaForm.Rows.size(), 1U);
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_TRUE(MinimaForm.SearchButton.Enabled);
    MinimaFormCloseButton();
    EXPECT_FALSE(MinimaForm.State.Shown);
    EXPECT_FALSE(MinimaForm.Taken);
}

TEST(MinimaForm, RefusesACountThatIsNone) {
    for (const char* text : {"0", "1001"}) {
        Script script;
        OpenOnFit("Model02");
        script.ExpectMessage("Enter a number from 1 to 1000.");
        Enter(MinimaInput::Count, text);
        EXPECT_EQ(script.Beeps, 1);
        EXPECT_EQ(MinimaForm.State.FocusOn, &MinimaForm.CountInput);
    }
}

TEST(MinimaForm, EnterLeadsFromTheCountToTheSearch) {
    Script script;
    OpenOnFit("Model02");
    EXPECT_EQ(MinimaFormKeyPress(MinimaInput::Count, '\r'), '\r');
    EXPECT_EQ(MinimaForm.State.FocusOn, &MinimaForm.SeedInput);
    MinimaFormKeyPress(MinimaInput::Seed, '\r');
    EXPECT_EQ(MinimaForm.State.FocusOn, &MinimaForm.SearchButton);
}

} // namespace
} // namespace Quillon

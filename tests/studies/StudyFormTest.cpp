// The form of the studies: what it asks, shows, sorts and takes.
#include "studies/StudyForm.h"
#include "SimulatedCase.h"
#include "fit/GNLLSQ.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "reporting/values/Correlation.h"
#include "studies/methods/StudyLines.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Quillon {
namespace {

void OpenOnFit(const char* name, StudyKind kind) {
    ForgetStudies(); // of another test's fit that is the same
    LoadCase(ModelCaseNamed(name));
    RunFit();
    ASSERT_TRUE(CanStudy(kind));
    LoadStudyForm(kind);
}

TEST(StudyForm, ComparesAndTakesTheRowThatIsMarked) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    const Workspace own = Work;
    EXPECT_FALSE(StudyForm.TakeButton.Enabled);
    EXPECT_FALSE(StudyForm.StopButton.Enabled);
    StudyForm.Inputs[0].Box.Text = "1, 2";
    StudyFormRunButton();
    EXPECT_TRUE(Work == own);
    ASSERT_EQ(StudyForm.Rows.size(), 2U);
    for (const auto& row : StudyForm.Rows)
        EXPECT_EQ(row.size(), StudyForm.Columns.size());
    EXPECT_EQ(StudyForm.Rows[1][0], "2 (yours)");
    StudyFormRow(1);
    EXPECT_FALSE(StudyForm.TakeButton.Enabled); // it is the fit already
    StudyFormSort(12);                          // the weight: the dimer has all of it
    EXPECT_EQ(StudyForm.Rows[0][0], "1");
    EXPECT_EQ(StudyForm.Chosen, 1) << "the mark stays with its row";
    StudyFormSort(12);
    EXPECT_EQ(StudyForm.Rows[0][0], "2 (yours)");
    StudyFormRow(1);
    ASSERT_TRUE(StudyForm.TakeButton.Enabled);
    StudyFormTakeButton();
    EXPECT_TRUE(StudyForm.Taken);
    EXPECT_FALSE(StudyForm.State.Shown);
    EXPECT_EQ(Work.Model, 1);
}

TEST(StudyForm, PlansDesignsAndLeavesTheAnalysis) {
    Script script;
    OpenOnFit("Model02", StudyKind::Plan);
    const Workspace own = Work;
    EXPECT_FALSE(StudyForm.GraphButton.Visible);
    EXPECT_FALSE(StudyForm.TakeButton.Visible);
    EXPECT_EQ(StudyForm.Inputs[0].Box.Text, SingleText(Work.RmsResidual));
    StudyForm.Inputs[1].Box.Text = "1, 1.2";
    StudyForm.Inputs[2].Box.Text = "0.5,1";
    StudyFormRunButton();
    EXPECT_TRUE(Work == own);
    ASSERT_EQ(StudyForm.Rows.size(), 4U);
    EXPECT_EQ(StudyForm.Rows[1][0], "1");
    EXPECT_EQ(StudyForm.Rows[2][1], "0.5");
    EXPECT_TRUE(StudyForm.Columns[2].starts_with("Error of "));
    StudyFormRow(1);
    EXPECT_NE(StudyForm.Notes.Text.find(" +/- "), std::string::npos) << StudyForm.Notes.Text;
    script.ExpectMessage("Enter factors between commas, all above 0.");
    StudyForm.Inputs[2].Box.Text = "1, 0";
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Rows.size(), 4U);
}

// A model without a fit was told as fitted: "All models have been fitted." stood above an empty line.
TEST(StudyForm, CountsTheModelsThatCouldBeFitted) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    Work.ExtB = 0.0F;
    Work.ConcUnits = 2;
    StudyForm.Inputs[0].Box.Text = "2, 8";
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Progress.Text,
              "1 of 2 models could be fitted. Mark a line without a sum of squares to read why.");
    StudyFormRow(1);
    EXPECT_TRUE(StudyForm.Notes.Text.starts_with("8: ")) << StudyForm.Notes.Text;
    StudyForm.Inputs[0].Box.Text = "2";
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Progress.Text, "All models have been fitted.");
}

TEST(StudyForm, TellsAListThatIsNone) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    StudyForm.Inputs[0].Box.Text = "1, 23";
    script.ExpectMessage("'23' is no model; they are 1 to 22");
    StudyFormRunButton();
    EXPECT_TRUE(StudyForm.Rows.empty());
    EXPECT_TRUE(StudyForm.RunButton.Enabled);
}

// The message about a wrong list stood over a form that offered to stop a comparison.
TEST(StudyForm, OffersToStopNothingWhileAWrongInputIsTold) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    StudyForm.Inputs[0].Box.Text = "1, 2";
    StudyFormRunButton();
    const auto rows = StudyForm.Rows;
    ASSERT_EQ(rows.size(), 2U);
    StudyForm.Inputs[0].Box.Text = "no model";
    bool told = false;
    Host.MessageBoxAnswer = [&](const BoxRequest&) {
        told = true;
        EXPECT_FALSE(StudyForm.StopButton.Enabled);
        EXPECT_TRUE(StudyForm.RunButton.Enabled);
        return BoxAnswer::Ok;
    };
    StudyFormRunButton();
    EXPECT_TRUE(told);
    EXPECT_EQ(StudyForm.Rows, rows);
}

// A probability below what a double holds was shown as 0.0E0.
TEST(StudyForm, AProbabilityIsNeverShownAsNothing) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    StudyForm.Inputs[0].Box.Text = "1, 2";
    StudyFormRunButton();
    for (const std::vector<std::string>& row : StudyForm.Rows)
        EXPECT_TRUE(row[9].empty() || row[9] == "< 1E-300" || row[9].find("E-") != std::string::npos)
            << row[9];
}

TEST(StudyForm, ProfilesTheChosenParameterWithItsLimits) {
    Script script;
    OpenOnFit("Model02", StudyKind::Profile);
    ASSERT_EQ(StudyForm.Inputs.size(), 4U);
    EXPECT_EQ(StudyForm.Inputs[0].Box.Items.size(), static_cast<std::size_t>(Work.NumFree));
    StudyFormListRow(0, 1); // ln K
    StudyForm.Inputs[3].Box.Text = "5";
    StudyFormRunButton();
    ASSERT_EQ(StudyForm.Rows.size(), 5U);
    EXPECT_EQ(StudyForm.Columns[0], "Ln K(1>N)  (AU^1-N)");
    EXPECT_TRUE(StudyForm.Progress.Text.starts_with("68.3%: ")) << StudyForm.Progress.Text;
    EXPECT_NE(StudyForm.Progress.Text.find("; 95.0%: "), std::string::npos);
    StudyFormListRow(1, 2); // the same once more
    script.ExpectMessage("A map needs two different parameters.");
    StudyFormRunButton();
    StudyFormListRow(1, 1);
    StudyForm.Inputs[3].Box.Text = "3";
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Rows.size(), 9U);
}

TEST(StudyForm, ResamplesAndTakesNothing) {
    Script script;
    OpenOnFit("Model02", StudyKind::Resample);
    StudyForm.Inputs[0].Box.Text = "12";
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Rows.size(), static_cast<std::size_t>(Work.NumFree) + 3U);
    EXPECT_TRUE(StudyForm.Progress.Text.starts_with("12 fits to resampled data (parametric, seed 1)"));
    EXPECT_FALSE(StudyForm.TakeButton.Visible);
    StudyForm.Inputs[0].Box.Text = "many";
    script.ExpectMessage("Enter a number from 1 to 100000.");
    StudyFormRunButton();
    StudyFormCloseButton();
    EXPECT_FALSE(StudyForm.State.Shown);
}

TEST(StudyForm, AStopShowsWhatThereIsAndTheFormStays) {
    Script script;
    OpenOnFit("Model02", StudyKind::Resample);
    StudyForm.Inputs[0].Box.Text = "200";
    script.DuringEvents = [] {
        if (StudyForm.Progress.Text.starts_with("3 of 200 fits") && StudyForm.StopButton.Enabled)
            StudyFormCloseButton();
    };
    StudyFormRunButton();
    EXPECT_TRUE(StudyForm.State.Shown);
    EXPECT_TRUE(StudyForm.Progress.Text.starts_with("3 fits")) << StudyForm.Progress.Text;
    EXPECT_NE(StudyForm.Progress.Text.find("Stopped before the end."), std::string::npos);
    EXPECT_EQ(Work.AbortFit, 0);
}

// A map that was stopped showed nothing of what it had.
TEST(StudyForm, AMapThatIsStoppedShowsThePairsThatItHas) {
    Script script;
    OpenOnFit("Model02", StudyKind::Profile);
    StudyFormListRow(1, 2);
    StudyForm.Inputs[3].Box.Text = "5";
    script.DuringEvents = [] {
        if (StudyForm.Progress.Text.starts_with("5 of 25 values") && StudyForm.StopButton.Enabled)
            StudyFormStopButton();
    };
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Rows.size(), 5U);
    EXPECT_EQ(StudyForm.Progress.Text, "Stopped before the end.");
    EXPECT_EQ(StudyForm.Fraction, 0.2);
    EXPECT_TRUE(StudyForm.CopyButton.Enabled);
    EXPECT_FALSE(StudyForm.GraphButton.Enabled) << "its lines would go round what was not fitted";
    script.DuringEvents = {};
    StudyFormRunButton();
    EXPECT_EQ(StudyForm.Rows.size(), 25U);
    EXPECT_EQ(StudyForm.Fraction, 1.0);
    EXPECT_TRUE(StudyForm.GraphButton.Enabled);
}

TEST(StudyForm, CopiesItsTable) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    StudyForm.Inputs[0].Box.Text = "2";
    StudyFormRunButton();
    Host.SetClipboardText = [&](const std::string& text) {
        script.ClipboardHolds = text;
        return true;
    };
    StudyFormCopyButton();
    EXPECT_TRUE(script.ClipboardHolds.starts_with("Model\tName\tFitted\t")) << script.ClipboardHolds;
    EXPECT_EQ(std::count(script.ClipboardHolds.begin(), script.ClipboardHolds.end(), '\n'), 2);
}

// What a window had found was gone when it closed, and no report knew of it.
TEST(StudyForm, WhatWasFoundIsKeptUntilTheFitIsAnother) {
    Script script;
    OpenOnFit("Model02", StudyKind::Compare);
    StudyForm.Inputs[0].Box.Text = "1, 2";
    StudyFormRunButton();
    const auto compared = StudyForm.Rows;
    StudyFormCloseButton();
    LoadStudyForm(StudyKind::Profile);
    EXPECT_TRUE(StudyForm.Rows.empty());
    StudyFormListRow(0, 1);
    StudyForm.Inputs[3].Box.Text = "5";
    StudyFormRunButton();
    StudyFormCloseButton();
    LoadStudyForm(StudyKind::Resample);
    StudyForm.Inputs[0].Box.Text = "12";
    StudyFormRunButton();
    StudyFormCloseButton();

    EXPECT_TRUE(KeptStudies().Compared && KeptStudies().Resampled);
    ASSERT_EQ(KeptStudies().Profiles.size(), 1U);
    LoadStudyForm(StudyKind::Compare);
    EXPECT_EQ(StudyForm.Rows, compared);
    EXPECT_EQ(StudyForm.Inputs[0].Box.Text, "1, 2");
    LoadStudyForm(StudyKind::Profile);
    EXPECT_EQ(StudyForm.Rows.size(), 5U);
    EXPECT_EQ(StudyForm.Inputs[0].Box.Value, 1);
    EXPECT_EQ(StudyForm.Inputs[2].Box.Text, "0.683, 0.95");
    LoadStudyForm(StudyKind::Resample);
    EXPECT_EQ(StudyForm.Inputs[0].Box.Text, "12");
    EXPECT_TRUE(StudyForm.Progress.Text.starts_with("12 fits to resampled data"));

    const Workspace studied = Work;
    Work.LimitsDone = FlagTrue; // limits that are searched are of the same fit
    EXPECT_FALSE(KeptStudies().Empty());
    Work.Parms[2] += 0.5F;
    EXPECT_TRUE(KeptStudies().Empty());
    Work = studied;
    Work.ExtA *= 2.0F;
    EXPECT_TRUE(KeptStudies().Empty());
    Work = studied;
    EXPECT_FALSE(KeptStudies().Empty());
    Work.FitDone = FlagFalse;
    EXPECT_TRUE(KeptStudies().Empty());
}

TEST(StudyForm, AStudyThatWasStoppedIsNotKept) {
    Script script;
    OpenOnFit("Model04", StudyKind::Resample);
    StudyForm.Inputs[0].Box.Text = "200";
    script.DuringEvents = [] {
        if (StudyForm.StopButton.Enabled && StudyForm.Fraction > 0.0) StudyFormCloseButton();
    };
    StudyFormRunButton();
    EXPECT_NE(StudyForm.Progress.Text.find("Stopped before the end."), std::string::npos);
    EXPECT_TRUE(KeptStudies().Empty());
}

// The table of all correlations: those of the draws by the textbook's formula.
TEST(StudyForm, ShowsHowResampledValuesGoTogether) {
    Script script;
    OpenOnFit("Model02", StudyKind::Resample);
    EXPECT_FALSE(StudyForm.CorrelationsButton.Enabled);
    StudyForm.Inputs[0].Box.Text = "12";
    StudyFormRunButton();
    ASSERT_TRUE(StudyForm.CorrelationsButton.Enabled);
    script.ExpectModal(CorrelationName, [] {});
    StudyFormCorrelationsButton();
    const auto count = static_cast<std::size_t>(Work.NumFree);
    ASSERT_EQ(Correlation.Cells.size(), count);
    const Resampling& found = *KeptStudies().Resampled;
    double sums[5]{};
    for (const Draw& draw : found.Draws) {
        const double x = draw.Values[0], y = draw.Values[1];
        const double terms[]{x, y, x * x, y * y, x * y};
        for (int i = 0; i < 5; ++i)
            sums[i] += terms[i] / static_cast<double>(found.Draws.size());
    }
    const double r = (sums[4] - sums[0] * sums[1]) /
                     std::sqrt((sums[2] - sums[0] * sums[0]) * (sums[3] - sums[1] * sums[1]));
    EXPECT_EQ(Correlation.Cells[0][1].Text, CoefficientText(r));
    EXPECT_EQ(Correlation.Cells[1][0].Text, CoefficientText(r));
    const TextTable table = CorrelationsTable(found);
    EXPECT_EQ(table.Rows[1][1], CoefficientText(r));
    EXPECT_EQ(table.Rows[0][2], "") << "the lower triangle alone";
}

} // namespace
} // namespace Quillon

// The results window and the lines it shares with the report, word for word.
#include "reporting/Results.h"
#include "fit/Confidence.h"
#include "fit/forms/WaitForm.h"

#include "HandBuiltFit.h"
#include "models/table/ParmScale.h"
#include "reporting/values/Correlation.h"
#include "reporting/values/FitNotes.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quillon {
namespace {

TEST(Results, CaptionsOfTheWindow) {
    Script script;
    Work = HandBuiltFit();
    FillResults();
    EXPECT_EQ(Results.Caption, "Quillon - Results");
    EXPECT_EQ(Results.Frame1.Text, "Results");
    EXPECT_EQ(Results.Frame2.Text, "Fit Statistics");
    EXPECT_EQ(Results.SumSqLabel.Text, "Sum of Squared Residuals:");
    EXPECT_EQ(Results.DegFreedomLabel.Text, "Degrees of Freedom:");
    EXPECT_EQ(Results.RmsLabel.Text, "RMS Residual:");
    EXPECT_EQ(Results.ZScoreLabel.Text, "Runs test Z:");
    EXPECT_EQ(Results.Label1.Text, "Fitted Parameters:");
    EXPECT_EQ(Results.Label3.Text, "Parameters Held Constant:");
    EXPECT_EQ(Results.ComputeConfidence.Text, "&Compute Confidence Intervals");
    EXPECT_EQ(Results.ViewCorr.Text, "&View Parameter Cross-Correlations");
    EXPECT_EQ(Results.Command1.Text, "&Report Only");
    EXPECT_EQ(Results.Command2.Text, "Report and Residual &Plot");
    Work.OverlayPlot = FlagTrue;
    FillResults();
    EXPECT_EQ(Results.Command2.Text, "Report and Data+Fit &Plot");
}

TEST(Results, Statistics) {
    Script script;
    Work = HandBuiltFit();
    Work.PtY[2] = -1.0F; // signs + - + and + + +: n1 = 5, n2 = 1, two changes
    FillResults();
    EXPECT_EQ(Results.SumSqValue.Text, "1.234568E-3");
    EXPECT_EQ(Results.DegFreedom.Text, "2");
    EXPECT_EQ(Results.RmsValue.Text, "5.E-1");
    // mean = 10/6 + 1 = 8/3, variance = 10 * 4 / (36 * 5) = 2/9, Z = (2/3) / sqrt(2/9) = sqrt 2
    EXPECT_EQ(Results.ZScore.Text, "1.41");
}

TEST(Results, FittedParametersWithErrors) {
    Script script;
    Work = HandBuiltFit();
    FillResults();
    EXPECT_EQ(Results.Label2.Text, "Value and Estimated Standard Error");
    EXPECT_EQ(Results.ParmsFit.Text, "MW A mon  (kDa)              45.0000  +/-  3.7500\n"
                                     "Ln K(1>N)  (AU^1-N)          3.2500  +/-  0.2500\n"
                                     "Ln c(A,mon), set 1  (AU)     -1.0000  +/-  0.5000\n"
                                     "Zero Offset, set 1  (AU)     -.2500  +/-  0.0625");
}

// The constants ran twice as wide as the list and had to be scrolled for.
TEST(Results, DerivedConstantsAreBrokenToTheWidthOfTheList) {
    Script script;
    Work = HandBuiltFit();
    Work.ExtA = 30000.0F;
    Work.CellPath[1] = 1.2F;
    FillResults();
    const std::string& text = Results.ParmsFit.Text;
    ASSERT_NE(text.find("Kd = "), std::string::npos) << text;
    ASSERT_NE(text.find("Delta G = "), std::string::npos) << text;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        EXPECT_LE(end - start, 56U) << text.substr(start, end - start);
        start = end + 1;
    }
}

TEST(Results, FittedParametersWithLimits) {
    Script script;
    Work = HandBuiltFit();
    Work.LimitsDone = FlagTrue;
    const float lower[] = {1.25F, 1.0F, -1.5F, -0.375F};
    const float upper[] = {2.0F, 1.75F, -0.5F, 0.125F};
    Work.ParmLimits[0].Recreate(3);
    Work.ParmLimits[1].Recreate(3);
    for (long a = 0; a < 4; ++a) {
        Work.ParmLimits[0][a] = lower[a];
        Work.ParmLimits[1][a] = upper[a];
    }
    FillResults();
    EXPECT_EQ(Results.Label2.Text, "Value and 68.3% Confidence Interval:");
    EXPECT_EQ(Results.ParmsFit.Text, "MW A mon  (kDa)              45.0000  [ 37.5000, 60.0000 ]\n"
                                     "Ln K(1>N)  (AU^1-N)          3.2500  [ 3.0000, 3.7500 ]\n"
                                     "Ln c(A,mon), set 1  (AU)     -1.0000  [ -1.5000, -0.5000 ]\n"
                                     "Zero Offset, set 1  (AU)     -.2500  [ -.3750, 0.1250 ]");
    EXPECT_FALSE(Results.ComputeConfidence.Enabled);
    Work.LimitsDone = FlagFalse;
    FillResults();
    EXPECT_TRUE(Results.ComputeConfidence.Enabled);
}

// Limits searched at 68.3% were headed "95.0%" once the level had been changed, and could not be searched
// again.
TEST(Results, LimitsAreHeadedByTheirOwnLevelAndCanBeSearchedAtAnother) {
    Script script;
    Work = HandBuiltFit();
    Work.LimitsDone = FlagTrue;
    for (auto& side : Work.ParmLimits)
        side.Recreate(3);
    Work.LimitsLevel = 0.683F;
    Work.ConfidenceLevel = 0.95F;
    FillResults();
    EXPECT_EQ(Results.Label2.Text, "Value and 68.3% Confidence Interval:");
    EXPECT_TRUE(Results.ComputeConfidence.Enabled);
    script.ExpectModal(WaitFormName, [] { Work.LimitsLevel = Work.ConfidenceLevel; });
    ResultsComputeConfidence();
    EXPECT_EQ(Results.Label2.Text, "Value and 95.0% Confidence Interval:");
    EXPECT_FALSE(Results.ComputeConfidence.Enabled);
}

TEST(Results, ALimitThatWasNotFoundSaysSoAndWhy) {
    Script script;
    Work = HandBuiltFit();
    Work.LimitsDone = FlagTrue;
    Work.ParmLimits[0].Recreate(3, -0.5F);
    Work.ParmLimits[1].Recreate(3, 0.25F);
    Work.ParmLimits[1][1] = NoLimit;
    Work.LimitReason.Recreate(3);
    Work.LimitReason[1] = "The data do not determine Ln K(1>N). Hold it.";
    FillResults();
    EXPECT_NE(Results.ParmsFit.Text.find("[ 1.5000, not found ]"), std::string::npos)
        << Results.ParmsFit.Text;
    EXPECT_EQ(Results.Warning.Text, "A limit was not found: The data do not determine Ln K(1>N). Hold it.");
    EXPECT_EQ(Results.Warning.ForeColor, RedColor);
    EXPECT_TRUE(Results.Warning.Visible);
    EXPECT_EQ(ParameterNote(SlotNo(Work.FreeIndex[1])), "limit not found");
}

TEST(Results, AFitThatIsNoMinimumSaysSoInRed) {
    Script script;
    Work = HandBuiltFit();
    Work.Outcome = {FitEnd::StoppedShort, "Stopped short of a minimum: 98.0",
                    "The data do not determine Ln K(1>N). Hold it."};
    FillResults();
    EXPECT_TRUE(Results.Warning.Visible);
    EXPECT_EQ(Results.Warning.ForeColor, RedColor);
    EXPECT_EQ(Results.Warning.Text, "Stopped short of a minimum: 98.0.\n"
                                    "The data do not determine Ln K(1>N). Hold it.");
    Work.NormMatrix(1, 1) = 0.0;
    FillResults();
    EXPECT_NE(Results.ParmsFit.Text.find("3.2500  not determined"), std::string::npos);
    EXPECT_EQ(ParameterNote(SlotNo(Work.FreeIndex[1])), "not determined by the data");
}

TEST(Results, NamesAreBroughtToACommonWidthInAProportionalFont) {
    Script script;
    Work = HandBuiltFit();
    const TextMeasure narrowBlanks = [](const std::string& text) {
        int width = 0;
        for (const char c : text)
            width += c == ' ' ? 3 : c == 'M' || c == 'W' ? 11 : 7;
        return width;
    };
    int widest = 0;
    for (long a = 0; a < 4; ++a)
        widest = std::max(widest, narrowBlanks(FittedName(FreePos(a))));
    const std::vector<std::string> lines = FittedLines(narrowBlanks);
    ASSERT_EQ(lines.size(), 4U);
    for (long a = 0; a < 4; ++a) {
        const std::string& line = lines[static_cast<std::size_t>(a)];
        const std::string rest = ParmText(SlotNo(Work.FreeIndex[a])) + "  " + AccuracyText(FreePos(a));
        ASSERT_TRUE(line.ends_with(rest));
        const int column = narrowBlanks(line.substr(0, line.size() - rest.size()));
        EXPECT_GE(column, widest + 10.5);
        EXPECT_LT(column, widest + 10.5 + 3);
    }
}

TEST(Results, PaddingWithABlankWithoutWidthEnds) {
    EXPECT_EQ(PadToWidth("a", 9.0, [](const std::string&) { return 0; }), "a");
}

TEST(Results, LeadingZero) {
    EXPECT_EQ(WithLeadingZero(".25"), "0.25");
    EXPECT_EQ(WithLeadingZero("-.25"), "-.25");
    EXPECT_EQ(WithLeadingZero("1.25"), "1.25");
    EXPECT_EQ(WithLeadingZero(""), "");
}

TEST(Results, HeldParameters) {
    Script script;
    Work = HandBuiltFit();
    FillResults();
    EXPECT_EQ(Results.ParmsConst.Text, "N                          2.0000\n"
                                       "Ln c(A,mon), set 2 (AU)    -0.5000");
    Work.FreeMap[1] = Work.FreeMap[11] = SlotUnused;
    Work.FreeMap[13] = SlotTied; // told among the constraints
    Work.FreeMap[14] = SlotHeld; // of a set beyond those in the fit
    FillResults();
    EXPECT_EQ(Results.ParmsConst.Text, "No parameters held constant.");
}

TEST(Results, NoConstraints) {
    Script script;
    Work = HandBuiltFit();
    Work.OffsetLink[2] = 1; // not in force
    FillResults();
    EXPECT_FALSE(Results.ShowConstraintButton.Visible);
    EXPECT_FALSE(Results.ConstraintText.Visible);
    EXPECT_EQ(Results.ConstraintText.Text, "");
}

TEST(Results, Constraints) {
    Script script;
    Work = HandBuiltFitWithConstraints();
    FillResults();
    EXPECT_TRUE(Results.ShowConstraintButton.Visible);
    EXPECT_EQ(Results.ShowConstraintButton.Text, "&Show Concentration Constraints");
    EXPECT_TRUE(Results.ConstraintText.Visible);
    EXPECT_EQ(Results.ConstraintText.Text, "Zero offset for set 2 was held = to set 1");
    Work.ConstraintFlags = OffsetBit;
    FillResults();
    EXPECT_TRUE(Results.ShowConstraintButton.Visible);
    EXPECT_EQ(Results.ShowConstraintButton.Text, "&Show Constraints");
}

TEST(Results, TiesNameSetsNotRows) {
    Script script;
    Work = HandBuiltFitWithConstraints();
    Work.SetRow[1] = 2; // rows 2, 5 and 9 are sets 1, 2 and 3
    Work.SetRow[2] = 5;
    Work.SetRow[3] = 9;
    Work.SetOfRow[1] = 0;
    Work.SetOfRow[2] = 1;
    Work.SetOfRow[5] = 2;
    Work.SetOfRow[9] = 3;
    Work.NumSets = 3;
    Work.OffsetLink[2] = 9;
    Work.OffsetLink[5] = 9;
    EXPECT_EQ(OffsetLinkLines(), (std::vector<std::string>{"Zero offset for set 1 was held = to set 3",
                                                           "Zero offset for set 2 was held = to set 3"}));
}

TEST(Results, CorrelationWarning) {
    Script script;
    Work = HandBuiltFit();
    FillResults();
    EXPECT_FALSE(Results.Message.Visible);
    EXPECT_EQ(Results.Message.Text, "");

    Work.NormMatrix(1, 0) = 0.98 * 0.125; // roots of the diagonal: 1/4, 1/2, 1, 1/8
    FillResults();
    EXPECT_TRUE(Results.Message.Visible);
    EXPECT_EQ(Results.Message.ForeColor, RedColor);
    EXPECT_EQ(Results.Message.Text, "WARNING---there is 1 parameter cross correlation > 0.97");

    Work.NormMatrix(2, 0) = -0.995 * 0.25;
    FillResults();
    EXPECT_EQ(Results.Message.Text,
              "WARNING---there are 2 parameter cross correlations > 0.97 and 1 higher than 0.99");
    EXPECT_EQ(Work.HighCount, 2);
    EXPECT_EQ(Work.VeryHighCount, 1);
}

TEST(Results, ConfidenceIsSearchedOnce) {
    Script script;
    Work = HandBuiltFit();
    script.ExpectModal(WaitFormName, [] {
        Work.ParmLimits[0].Recreate(3);
        Work.ParmLimits[1].Recreate(3);
        Work.LimitsDone = FlagTrue;
    });
    ResultsComputeConfidence();
    EXPECT_EQ(Results.Label2.Text, "Value and 68.3% Confidence Interval:");
    ResultsComputeConfidence(); // draws again, asks nothing
    EXPECT_FALSE(Results.ComputeConfidence.Enabled);
}

TEST(Results, ButtonsOfTheWindow) {
    Script script;
    Work = HandBuiltFit();
    script.ExpectModal(CorrelationName, [] { EXPECT_EQ(Correlation.Names.size(), 4U); });
    ResultsViewCorr();
    ResultsOkButton();
    EXPECT_EQ(script.Forms, std::vector<std::string>{"hide Results"});
}

TEST(Results, AFitOfOnePointIsADivisionByZero) {
    Script script;
    Work = HandBuiltFit();
    Work.NumPts = 1;
    Work.SetPts.Recreate(1, 1);
    try {
        FillResults();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Division by zero");
    }
}

} // namespace
} // namespace Quillon

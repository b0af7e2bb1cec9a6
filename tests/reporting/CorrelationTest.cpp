// The table of cross-correlations as data, and the report's list.
#include "reporting/values/Correlation.h"

#include "HandBuiltFit.h"
#include "input/NUMINPUT.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace Quillon {
namespace {

// The roots of the diagonal are 1/4, 1/2, 1, 1/8.
Workspace CorrelatedFit() {
    Workspace w = HandBuiltFit();
    w.NormMatrix(1, 0) = 0.98 * 0.125;
    w.NormMatrix(2, 0) = -0.995 * 0.25;
    w.NormMatrix(3, 1) = 0.5 * 0.0625;
    return w;
}

TEST(Correlation, TableIsSymmetricWithOnesOnTheDiagonal) {
    Script script;
    Work = CorrelatedFit();
    FillCorrelation();
    EXPECT_EQ(Correlation.Caption, "Quillon - Parameter Cross-Correlations");
    EXPECT_EQ(Correlation.Names, (std::vector<std::string>{"MW A mon", "Ln K(1>N)", "Ln c(A,mon), set 1",
                                                           "Zero Offset, set 1"}));
    const std::vector<std::vector<std::string>> expected = {
        {"+1.0000", "+0.9800", "-0.9950", "+0.0000"},
        {"+0.9800", "+1.0000", "+0.0000", "+0.5000"},
        {"-0.9950", "+0.0000", "+1.0000", "+0.0000"},
        {"+0.0000", "+0.5000", "+0.0000", "+1.0000"},
    };
    ASSERT_EQ(Correlation.Cells.size(), expected.size());
    for (std::size_t a = 0; a < 4; ++a)
        for (std::size_t b = 0; b < 4; ++b)
            EXPECT_EQ(Correlation.Cells[a][b].Text, expected[a][b]) << a << "," << b;
}

// Written by a road of their own where that is safe: next to a half, to 1 and to 0 it must not be.
TEST(Correlation, CoefficientsAreWrittenAsTheirPictureHasThem) {
    for (const double value : {0.0, -0.0, 1.0, -1.0, 0.99994999, 0.99995, -0.99996, 0.5, 0.12345, -0.12345,
                               0.123449999999, 0.00005, -0.00004, -1e-9, 0.00015, 1.25, 1e9})
        EXPECT_EQ(CoefficientText(value), FormatNumber(value, "+0.0000;-0.0000")) << value;
    for (int i = -2000; i <= 2000; ++i) {
        const double value = i * 0.000499975;
        EXPECT_EQ(CoefficientText(value), FormatNumber(value, "+0.0000;-0.0000")) << value;
    }
}

TEST(Correlation, ColoursOfTheCells) {
    Script script;
    Work = CorrelatedFit();
    FillCorrelation();
    const auto kind = [](std::size_t a, std::size_t b) { return Correlation.Cells[a][b].Class; };
    EXPECT_EQ(kind(0, 1), CorrelationClass::High);
    EXPECT_EQ(kind(1, 0), CorrelationClass::High);
    EXPECT_EQ(kind(0, 2), CorrelationClass::VeryHigh);
    EXPECT_EQ(kind(2, 0), CorrelationClass::VeryHigh);
    EXPECT_EQ(kind(1, 3), CorrelationClass::Plain);
    EXPECT_EQ(kind(1, 1), CorrelationClass::Plain);
    EXPECT_EQ(CorrelationColor(CorrelationClass::Plain), DefaultColor);
    EXPECT_NE(CorrelationColor(CorrelationClass::High), CorrelationColor(CorrelationClass::VeryHigh));
    Work.HighCorrelation = Work.CorrMatrix(1, 0); // at the threshold is not above it
    FillCorrelation();
    EXPECT_EQ(kind(0, 1), CorrelationClass::Plain);
}

TEST(Correlation, LegendTellsTheThresholds) {
    Script script;
    Work = CorrelatedFit();
    FillCorrelation();
    EXPECT_EQ(Correlation.HighLegend.Text, "= Correlation > +0.9700");
    EXPECT_EQ(Correlation.VeryHighLegend.Text, "= Correlation > +0.9900");
    EXPECT_EQ(Correlation.HighLegend.BackColor, CorrelationColor(CorrelationClass::High));
    EXPECT_EQ(Correlation.VeryHighLegend.BackColor, CorrelationColor(CorrelationClass::VeryHigh));
}

TEST(Correlation, ConfidenceSearchLeavesNothingOfItsMatrixInTheTable) {
    Script script;
    Work = CorrelatedFit();
    Work.CorrMatrix.Recreate(3, 3, 0.7F); // eigenvectors
    FillCorrelation();
    EXPECT_EQ(Correlation.Cells[3][2].Text, "+0.0000");
    EXPECT_EQ(Work.HighCount, 2);
    EXPECT_EQ(Work.VeryHighCount, 1);
}

TEST(Correlation, OneFittedParameterHasOneCell) {
    Script script;
    Work = HandBuiltFit();
    Work.NumFree = 1;
    FillCorrelation();
    ASSERT_EQ(Correlation.Cells.size(), 1U);
    ASSERT_EQ(Correlation.Cells[0].size(), 1U);
    EXPECT_EQ(Correlation.Cells[0][0].Text, "+1.0000");
    EXPECT_EQ(Work.HighCount, 0);
    EXPECT_TRUE(CorrelationLines(72).empty());
}

TEST(Correlation, ADiagonalOfZeroShowsNoCorrelation) {
    Script script;
    Work = CorrelatedFit();
    Work.NormMatrix(0, 0) = 0.0;
    FillCorrelation();
    for (std::size_t b = 0; b < 4; ++b)
        EXPECT_EQ(Correlation.Cells[0][b].Text, "+0.0000");
}

TEST(Correlation, ListOfTheReport) {
    Script script;
    Work = CorrelatedFit();
    FillCorrelation();
    EXPECT_EQ(CorrelationLines(72), (std::vector<std::string>{
                                        " Correlation with #           1       2       3       4",
                                        "  1 MW A mon            +1.0000",
                                        "  2 Ln K(1>N)           +0.9800 +1.0000",
                                        "  3 Ln c(A,mon), set 1  -0.9950 +0.0000 +1.0000",
                                        "  4 Zero Offset, set 1  +0.0000 +0.5000 +0.0000 +1.0000",
                                    }));
}

TEST(Correlation, ListIsSplitWhereThePaperIsNarrow) {
    Script script;
    Work = CorrelatedFit();
    FillCorrelation();
    const std::vector<std::string> expected = {
        " Correlation with #           1       2       3",
        "  1 MW A mon            +1.0000",
        "  2 Ln K(1>N)           +0.9800 +1.0000",
        "  3 Ln c(A,mon), set 1  -0.9950 +0.0000 +1.0000",
        "  4 Zero Offset, set 1  +0.0000 +0.5000 +0.0000",
        " Correlation with #           4",
        "  4 Zero Offset, set 1  +1.0000",
    };
    EXPECT_EQ(CorrelationLines(54), expected);
    EXPECT_EQ(CorrelationLines(47), expected) << "the third column ends at character 47";
    EXPECT_EQ(CorrelationLines(10).size(), 5U + 4U + 3U + 2U) << "at least one column at a time";
}

TEST(Correlation, OkHidesTheTable) {
    Script script;
    CorrelationOkButton();
    EXPECT_EQ(script.Forms, std::vector<std::string>{"hide Correlation"});
}

} // namespace
} // namespace Quillon

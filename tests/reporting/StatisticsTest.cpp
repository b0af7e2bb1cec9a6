// Residuals, runs test, errors and correlations against hand-worked numbers.
#include "reporting/values/Statistics.h"
#include "fit/Sums.h"
#include "fit/Undetermined.h"

#include "HandBuiltFit.h"
#include "platform/RuntimeError.h"
#include "tests/support/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace Quillon {
namespace {

// One data set for each text: a character '+', '-' or '0' for the sign of each residual.
void SetSigns(const std::vector<std::string>& sets) {
    Work = FreshWorkspace();
    std::string all;
    Work.NumSets = static_cast<std::int16_t>(sets.size());
    Work.SetPts.Recreate(Work.NumSets);
    for (std::size_t s = 0; s < sets.size(); ++s) {
        Work.SetPts[static_cast<long>(s) + 1] = static_cast<std::int16_t>(sets[s].size());
        all += sets[s];
    }
    Work.NumPts = static_cast<std::int16_t>(all.size());
    Work.PtY.Recreate(Work.NumPts, 1.0F);
    Work.PtFit.Recreate(Work.NumPts, 1.0F);
    for (std::size_t p = 0; p < all.size(); ++p)
        Work.PtY[static_cast<long>(p) + 1] += all[p] == '+' ? 0.5F : all[p] == '-' ? -0.25F : 0.0F;
}

float RunsZOf(const std::vector<std::string>& sets) {
    SetSigns(sets);
    RunsTest();
    return Work.RunsZ;
}

std::string ErrorOf(const std::vector<std::string>& sets) {
    SetSigns(sets);
    try {
        RunsTest();
    } catch (const RuntimeError& error) {
        return error.Text;
    }
    return "";
}

TEST(Statistics, ResidualIsDataLessFit) {
    Script script;
    SetSigns({"+-0"});
    CalcResiduals();
    EXPECT_EQ(Work.PtResid.Hi(), 3);
    EXPECT_EQ(Work.PtResid[1], 0.5F);
    EXPECT_EQ(Work.PtResid[2], -0.25F);
    EXPECT_EQ(Work.PtResid[3], 0.0F);
}

TEST(Statistics, RunsTestOfSignsInTwoBlocks) {
    Script script;
    // n1 = n2 = 3, one change; mean = 18/6 + 1 = 4, variance = 18 * 12 / (36 * 5) = 6/5
    EXPECT_FLOAT_EQ(RunsZOf({"+++---"}), static_cast<float>(3.0 / std::sqrt(1.2)));
}

TEST(Statistics, RunsTestOfAlternatingSigns) {
    Script script;
    // n1 = n2 = 2, three changes; mean = 8/4 + 1 = 3
    EXPECT_EQ(RunsZOf({"+-+-"}), 0.0F);
    // n1 = 4, n2 = 2, four changes; mean = 16/6 + 1, variance = 16 * 10 / (36 * 5) = 8/9
    EXPECT_FLOAT_EQ(RunsZOf({"+-++-+"}),
                    static_cast<float>((4.0 - (16.0 / 6.0 + 1.0)) / std::sqrt(8.0 / 9.0)));
}

TEST(Statistics, RunsTestCountsNoChangeBetweenSets) {
    Script script;
    // no change inside either set; mean = 3, variance = 8 * 4 / (16 * 3) = 2/3
    EXPECT_FLOAT_EQ(RunsZOf({"++", "--"}), static_cast<float>(3.0 / std::sqrt(2.0 / 3.0)));
    // as one set the change counts
    EXPECT_FLOAT_EQ(RunsZOf({"++--"}), static_cast<float>(2.0 / std::sqrt(2.0 / 3.0)));
    // a set without points between two others changes nothing
    EXPECT_EQ(RunsZOf({"++", "", "--"}), RunsZOf({"++", "--"}));
}

TEST(Statistics, RunsTestTakesAZeroResidualAsPositive) {
    Script script;
    EXPECT_EQ(RunsZOf({"0+0---"}), RunsZOf({"+++---"}));
    EXPECT_NE(RunsZOf({"0+0---"}), RunsZOf({"-+----"}));
}

TEST(Statistics, RunsTestWithoutVarianceIsOne) {
    Script script;
    EXPECT_EQ(RunsZOf({"+++++"}), 1.0F);
    EXPECT_EQ(RunsZOf({"---"}), 1.0F);
    EXPECT_EQ(RunsZOf({"+-"}), 1.0F); // 2 n1 n2 = n1 + n2
}

TEST(Statistics, RunsTestOfNoneOrOnePointIsADivisionByZero) {
    Script script;
    EXPECT_EQ(ErrorOf({}), "Division by zero");
    EXPECT_EQ(ErrorOf({"+"}), "Division by zero");
    EXPECT_EQ(ErrorOf({"-"}), "Division by zero");
    EXPECT_EQ(ErrorOf({"+-"}), "");
}

TEST(Statistics, RoundSignificantKeepsThatManyDigits) {
    EXPECT_DOUBLE_EQ(RoundSignificant(0.83512, 3), 0.835);
    EXPECT_DOUBLE_EQ(RoundSignificant(12.345, 3), 12.3);
    EXPECT_DOUBLE_EQ(RoundSignificant(-1234.5, 3), -1230.0);
    EXPECT_DOUBLE_EQ(RoundSignificant(0.00098765, 3), 0.000988);
    EXPECT_DOUBLE_EQ(RoundSignificant(1000.0, 1), 1000.0);
    EXPECT_DOUBLE_EQ(RoundSignificant(0.001, 2), 0.001);
    EXPECT_DOUBLE_EQ(RoundSignificant(6.02214076e23, 4), 6.022e23);
    EXPECT_EQ(RoundSignificant(0.0, 3), 0.0);
}

TEST(Statistics, RoundSignificantAtTheEdges) {
    EXPECT_DOUBLE_EQ(RoundSignificant(0.125, 2), 0.13); // half away from zero
    EXPECT_DOUBLE_EQ(RoundSignificant(-0.125, 2), -0.13);
    EXPECT_DOUBLE_EQ(RoundSignificant(999.6, 3), 1000.0);
    // the single logarithm of this number is 3 already
    EXPECT_DOUBLE_EQ(RoundSignificant(999.99994, 8), 999.99994);
    EXPECT_EQ(RoundSignificant(4.9e-324, 3), 4.9e-324);
}

TEST(Statistics, LogBase10IsSingleAndNeverFails) {
    EXPECT_EQ(LogBase10(1000.0), 3.0F);
    EXPECT_EQ(LogBase10(0.01), -2.0F);
    EXPECT_EQ(LogBase10(2.0), 0.301029995663981F);
    EXPECT_EQ(LogBase10(0.0), -6.0F);
    EXPECT_EQ(LogBase10(-3.0), -6.0F);
}

TEST(Statistics, StandardErrorIsRootOfTheDiagonalTimesRms) {
    Script script;
    Work = HandBuiltFit();
    EXPECT_DOUBLE_EQ(StandardError(FreePos(0)), 0.125);
    EXPECT_DOUBLE_EQ(StandardError(FreePos(1)), 0.25);
    EXPECT_DOUBLE_EQ(StandardError(FreePos(2)), 0.5);
    EXPECT_DOUBLE_EQ(StandardError(FreePos(3)), 0.0625);
    Work.NormMatrix(2, 2) = -4.0; // a diagonal that rounding made negative counts by its magnitude
    EXPECT_DOUBLE_EQ(StandardError(FreePos(2)), 1.0);
}

TEST(Statistics, DisplayedErrorIsInUserUnits) {
    Script script;
    Work = HandBuiltFit();
    EXPECT_FLOAT_EQ(DisplayedError(FreePos(0)), 3.75F);   // factor 30
    EXPECT_FLOAT_EQ(DisplayedError(FreePos(1)), 0.25F);   // an addend does not stretch
    EXPECT_FLOAT_EQ(DisplayedError(FreePos(3)), 0.0625F); // factor 1
    Work.ParmScale[0] = -30.0F;                           // a floating particle
    EXPECT_FLOAT_EQ(DisplayedError(FreePos(0)), 3.75F);
}

TEST(Statistics, DisplayedErrorIsTheWiderSide) {
    Script script;
    Work = HandBuiltFit();
    // Singles lie 2^-19 apart above 16 and 2^-20 below it, so that a step of 0.6 * 2^-19 becomes a whole
    // 2^-19 upward and half of that downward.
    Work.Parms[2] = 16.0F;
    Work.ParmScale[2] = 0.0F;
    Work.RmsResidual = 1.0F;
    const double error = 0.6 * std::ldexp(1.0, -19);
    Work.NormMatrix(1, 1) = error * error;
    EXPECT_EQ(DisplayedError(FreePos(1)), std::ldexp(1.0F, -19));
}

TEST(Statistics, AnErrorBeyondSingleIsTold) {
    Script script;
    Work = HandBuiltFit();
    Work.NormMatrix(0, 0) = 1e100;
    try {
        DisplayedError(FreePos(0));
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Text, "Overflow");
    }
}

// --- correlations --------------------------------------------------------------------------------------

void SetMatrix(const std::vector<std::vector<double>>& m) {
    Work = FreshWorkspace();
    const long n = static_cast<long>(m.size());
    Work.NumFree = static_cast<std::int16_t>(n);
    Work.NormMatrix.Recreate(n - 1, n - 1);
    for (long a = 0; a < n; ++a)
        for (long b = 0; b < n; ++b)
            Work.NormMatrix(a, b) = m[static_cast<std::size_t>(a)][static_cast<std::size_t>(b)];
}

struct Counts {
    std::int16_t High = 99, VeryHigh = 99;
};
Counts Correlate() {
    Counts counts;
    ComputeCorrelations(counts.High, counts.VeryHigh);
    return counts;
}

TEST(Statistics, CorrelationsOfAHandWorkedMatrix) {
    Script script;
    SetMatrix({{4.0, 1.0, -6.0}, {1.0, 1.0, -3.0}, {-6.0, -3.0, 16.0}});
    const Counts counts = Correlate();
    EXPECT_EQ(counts.High, 0);
    EXPECT_EQ(counts.VeryHigh, 0);
    EXPECT_EQ(Work.CorrMatrix(0, 0), 1.0F);
    EXPECT_EQ(Work.CorrMatrix(1, 0), 0.5F);
    EXPECT_EQ(Work.CorrMatrix(2, 0), -0.75F);
    EXPECT_EQ(Work.CorrMatrix(2, 1), -0.75F);
    EXPECT_EQ(Work.CorrMatrix(2, 2), 1.0F);
    EXPECT_EQ(Work.CorrMatrix(0, 2), 0.0F) << "the upper triangle is not filled";
}

TEST(Statistics, CorrelationAtAThresholdDoesNotCount) {
    Script script;
    SetMatrix({{4.0, -1.0}, {-1.0, 1.0}});
    Work.HighCorrelation = 0.5F;
    Work.VeryHighCorrelation = 0.5F;
    EXPECT_EQ(Correlate().High, 0);
    Work.HighCorrelation = std::nextafter(0.5F, 0.0F);
    EXPECT_EQ(Correlate().High, 1);
    EXPECT_EQ(Correlate().VeryHigh, 0);
    Work.VeryHighCorrelation = Work.HighCorrelation;
    EXPECT_EQ(Correlate().High, 1) << "a very high one counts as high too";
    EXPECT_EQ(Correlate().VeryHigh, 1);
}

TEST(Statistics, CorrelationWithAZeroOrNegativeDiagonalIsZero) {
    Script script;
    for (const double diagonal : {0.0, -1e-9}) {
        SetMatrix({{diagonal, 0.5, 0.5}, {0.5, 1.0, 0.25}, {0.5, 0.25, 1.0}});
        Work.HighCorrelation = 0.2F;
        EXPECT_EQ(Correlate().High, 1);
        EXPECT_EQ(Work.CorrMatrix(1, 0), 0.0F);
        EXPECT_EQ(Work.CorrMatrix(2, 0), 0.0F);
        EXPECT_EQ(Work.CorrMatrix(2, 1), 0.25F);
    }
    SetMatrix({{0.0, 0.5}, {0.5, 1.0}});
    Correlate();
    EXPECT_EQ(Work.CorrMatrix(0, 0), 0.0F);
}

TEST(Statistics, OneFittedParameterHasOneCellAndNoCount) {
    Script script;
    SetMatrix({{7.0}});
    const Counts counts = Correlate();
    EXPECT_EQ(counts.High, 0);
    EXPECT_EQ(counts.VeryHigh, 0);
    EXPECT_EQ(Work.CorrMatrix.Size(), 1U);
    EXPECT_EQ(Work.CorrMatrix(0, 0), 1.0F);
}

} // namespace
} // namespace Quillon

// What is said of single parameters and data sets after a fit.

#include "reporting/values/FitNotes.h"

#include "HandBuiltFit.h"
#include "reporting/ParameterTable.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

constexpr long Points = 40; // of each of three sets

// Three sets without a model: residuals are given point by point.
void GiveResiduals(float (*residual)(long set, long point)) {
    Work.NumSets = 3;
    Work.SetPts.Recreate(3, static_cast<std::int16_t>(Points));
    Work.NumPts = static_cast<std::int16_t>(3 * Points);
    Work.PtX.Recreate(Work.NumPts, 1.0F);
    Work.PtY.Recreate(Work.NumPts);
    Work.PtFit.Recreate(Work.NumPts, 0.5F);
    Work.PtSet.Recreate(Work.NumPts);
    for (std::int16_t set = 1; set <= 3; ++set) {
        Work.SetRow[set] = Work.SetOfRow[set] = set;
        for (long i = 0; i < Points; ++i) {
            const long p = (set - 1) * Points + i + 1;
            Work.PtSet[p] = set;
            Work.PtY[p] = 0.5F + residual(set, i);
        }
    }
    Work.NumParms = 17;
    for (const long set : {1L, 2L, 3L})
        Work.FreeMap[SlotOffset(set)] = SlotHeld;
}

// Signs that change as chance has it: two of a kind, then two of the other.
float InPairs(long point) {
    return point % 4 < 2 ? 0.01F : -0.01F;
}

class Notes : public testing::Test {
protected:
    Notes() { Work = HandBuiltFit(); }
    static std::string Of(long free) { return ParameterNote(SlotNo(Work.FreeIndex[free])); }
};

TEST_F(Notes, AParameterSaysWhatItGoesTogetherWith) {
    Work.NormMatrix(0, 1) = Work.NormMatrix(1, 0) = -0.999 * 0.125; // of sqrt(0.0625 * 0.25)
    EXPECT_EQ(Of(0), "correlated -0.999 with Ln K(1>N)");
    EXPECT_EQ(Of(1), "correlated -0.999 with MW A mon");
    EXPECT_EQ(Of(2), "");
}

// 0.99996 in three decimals would be 1.
TEST_F(Notes, ACorrelationNeverLooksLikeOne) {
    Work.NormMatrix(0, 1) = Work.NormMatrix(1, 0) = 0.99996 * 0.125;
    EXPECT_EQ(Of(0), "correlated 0.99996 with Ln K(1>N)");
}

TEST_F(Notes, OnlyTheHighestPartnerIsNamedAndNoneBelowTheThreshold) {
    Work.NormMatrix(0, 1) = Work.NormMatrix(1, 0) = 0.992 * 0.125;
    Work.NormMatrix(0, 2) = Work.NormMatrix(2, 0) = 0.995 * 0.25; // of sqrt(0.0625 * 1)
    Work.NormMatrix(1, 2) = Work.NormMatrix(2, 1) = 0.98 * 0.5;
    EXPECT_EQ(Of(0), "correlated 0.995 with Ln c(A,mon), set 1");
    EXPECT_EQ(Of(2), ""); // a concentration
    Work.VeryHighCorrelation = 0.996F;
    EXPECT_EQ(Of(0), "");
}

// The table threw out of the bounds of the matrix.
TEST_F(Notes, AFitWithoutTheInverseOfItsMatrixHasRowsWithoutErrors) {
    const std::vector<ParameterRow> whole = ParameterRows();
    ASSERT_FALSE(whole.empty());
    EXPECT_NE(whole[0].Cells[2], "");
    Work.AtBound[1] = 1;
    for (const ZeroBasedMatrix<double>& left : {ZeroBasedMatrix<double>(), ZeroBasedMatrix<double>(1, 1)}) {
        Work.NormMatrix = left;
        const std::vector<ParameterRow> rows = ParameterRows();
        ASSERT_EQ(rows.size(), whole.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i].Cells[1], whole[i].Cells[1]);
            EXPECT_EQ(rows[i].Cells[2], "");
        }
        EXPECT_EQ(Of(1), "at its upper bound");
    }
}

TEST_F(Notes, SeveralStandBesideEachOther) {
    Work.AtBound[1] = 1;
    Work.NormMatrix(1, 1) = 9.0; // error 1.5 of a logarithm
    EXPECT_EQ(Of(1), "at its upper bound; error larger than the value");
    Work.AtBound[1] = -1;
    EXPECT_EQ(Of(1), "at its lower bound; error larger than the value");
}

TEST_F(Notes, OfWhatIsHeldOrNotYetFittedThereAreNone) {
    EXPECT_EQ(ParameterNote(SlotNo(1)), "");
    Work.AtBound[1] = 1;
    Work.FitDone = FlagFalse;
    EXPECT_EQ(Of(1), "");
}

TEST_F(Notes, StatisticsOfASetAreThoseByHand) {
    GiveResiduals([](long set, long point) { return static_cast<float>(set) * InPairs(point); });
    const SetQuality second = QualityOfSet(SetNo(2));
    EXPECT_EQ(second.Points, Points);
    EXPECT_NEAR(*second.Rms, 0.02, 1e-7);
    EXPECT_NEAR(*second.Mean, 0.0, 1e-7);
    // 20 of each sign, 19 changes from one point to the next: mean 21, variance 20 * 19 * 2 / 39 / 2.
    EXPECT_NEAR(*second.RunsZ, 2.0 / std::sqrt(800.0 * 760.0 / (1600.0 * 39.0)), 1e-6);
}

TEST_F(Notes, AMeanResidualAsksForTheZeroOffset) {
    GiveResiduals([](long set, long point) { return InPairs(point) * 0.5F + (set == 2 ? 0.004F : 0.0F); });
    EXPECT_EQ(SetNote(SetNo(1)), "");
    EXPECT_EQ(SetNote(SetNo(2)), "mean residual +0.004: fit its zero offset?");
    Work.FreeMap[SlotOffset(2)] = SlotTied;
    EXPECT_EQ(SetNote(SetNo(2)), "mean residual +0.004: give it a zero offset of its own?");
    Work.FreeMap[SlotOffset(2)] = 0;
    EXPECT_EQ(SetNote(SetNo(2)), "mean residual +0.004");
}

// "fit its zero offset?; residuals are ..." read badly.
TEST_F(Notes, AQuestionStandsLast) {
    GiveResiduals([](long set, long point) {
        return set == 3 ? (point % 20 < 10 ? 0.018F : -0.002F) : InPairs(point);
    });
    EXPECT_EQ(SetNote(SetNo(3)),
              "residuals are not independent, runs Z = 5.8; mean residual +0.008: fit its zero offset?");
}

// Standard error of the mean 0.005 / sqrt(40) = 0.00079: 0.002 is 2.5 of them.
TEST_F(Notes, AMeanResidualWithinItsScatterIsNotTold) {
    GiveResiduals([](long set, long point) { return InPairs(point) * 0.5F - (set == 2 ? 0.002F : 0.0F); });
    EXPECT_EQ(SetNote(SetNo(2)), "");
}

// Ten of one sign, ten of the other: 3 changes where 21 are to be expected.
TEST_F(Notes, ResidualsThatGoTogetherAreTold) {
    GiveResiduals(
        [](long set, long point) { return set == 3 ? (point % 20 < 10 ? 0.01F : -0.01F) : InPairs(point); });
    EXPECT_EQ(SetNote(SetNo(1)), "");
    EXPECT_EQ(SetNote(SetNo(3)), "residuals are not independent, runs Z = 5.8");
}

TEST_F(Notes, ASetThatFitsWorseThanTheOthersIsToldByItsNoise) {
    GiveResiduals([](long set, long point) { return InPairs(point) * (set == 1 ? 2.5F : 1.0F); });
    EXPECT_EQ(SetNote(SetNo(1)), "rms 2.5 times that of the other sets");
    EXPECT_EQ(SetNote(SetNo(2)), "");
    for (const long row : {1L, 2L, 3L})
        Work.SetNoise[row] = row == 1 ? 0.025F : 0.01F;
    EXPECT_EQ(SetNote(SetNo(1)), "");
}

TEST_F(Notes, OfAFewPointsNothingIsSaid) {
    EXPECT_EQ(SetNote(SetNo(1)), "");
    EXPECT_EQ(QualityOfSet(SetNo(1)).Points, 3);
    Work.FitValid = FlagFalse;
    EXPECT_FALSE(QualityOfSet(SetNo(1)).Rms.has_value());
}

TEST_F(Notes, LinesNameParametersFirstThenSets) {
    GiveResiduals([](long set, long point) { return InPairs(point) * 0.5F + (set == 2 ? 0.004F : 0.0F); });
    Work.AtBound[1] = 1;
    EXPECT_EQ(NoteLines(), (std::vector<std::string>{"Ln K(1>N): at its upper bound",
                                                     "Set 2: mean residual +0.004: fit its zero offset?"}));
}

} // namespace
} // namespace Quillon

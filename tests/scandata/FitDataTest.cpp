// The flat vectors of the fit: x, y, scales, labels, pseudo-points.
#include "scandata/table/FitData.h"

#include "ScanFixture.h"
#include "scandata/table/Temperatures.h"

#include <cmath>

namespace Quillon {
namespace {

using Floats = std::vector<float>;

// Rows with points at the radii given, 20,000 rpm, 20 degrees, 1.2 cm path, all in the fit.
struct FitDataTest : ScanTest {
    static void Load(long row, const Floats& radii, const Floats& values) {
        const long n = static_cast<long>(radii.size());
        Work.ScanRadius[row].Recreate(n);
        Work.ScanValue[row].Recreate(n);
        std::copy(radii.begin(), radii.end(), Work.ScanRadius[row].begin());
        std::copy(values.begin(), values.end(), Work.ScanValue[row].begin());
        Work.ScanPoints[row] = ToInt16(n);
        Work.FitRange[0][row] = 1;
        Work.FitRange[1][row] = ToInt16(n);
        Work.ScanRPM[row] = 20000.0F;
        Work.ScanTemperature[row] = 20.0F;
        Work.ScanFile[row] = std::to_string(row) + ".RA1";
        Work.ScanDirectory[row] = "/data";
        Work.IncludeSet[row] = 1;
    }
    static void LoadThree(long row) { Load(row, {6.0F, 6.5F, 7.0F}, {0.25F, 0.5F, 0.75F}); }
    static Floats Y() { return {Work.PtY.begin(), Work.PtY.end()}; }
    static std::vector<int> Sets() { return {Work.PtSet.begin(), Work.PtSet.end()}; }
    static std::vector<int> PointsOfSets() { return {Work.SetPts.begin(), Work.SetPts.end()}; }
    static std::string ErrorOfBuild() {
        try {
            BuildFitData();
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return "no error";
    }
};

TEST_F(FitDataTest, XIsHalfTheSquareFromTheMiddleOfTheRange) {
    LoadThree(1);
    BuildFitData();
    ASSERT_EQ(Work.NumPts, 3);
    // r^2/2 is 18, 21.125, 24.5; the mean of the two ends is 21.25.
    EXPECT_EQ(Work.PtX[1], -3.25F);
    EXPECT_EQ(Work.PtX[2], -0.125F);
    EXPECT_EQ(Work.PtX[3], 3.25F);
    EXPECT_EQ(Y(), (Floats{0.25F, 0.5F, 0.75F}));
    EXPECT_EQ(Sets(), (std::vector<int>{1, 1, 1}));
}

TEST_F(FitDataTest, XIsRoundedOnlyOnce) {
    Load(1, {5.9007F, 6.4311F, 7.1213F}, {0, 0, 0});
    BuildFitData();
    for (long p = 1; p <= 3; ++p) {
        const auto half = [](long i) {
            const long double r = Work.ScanRadius[1][i];
            return r * r / 2.0L;
        };
        const long double x = half(p) - (half(1) + half(3)) / 2.0L;
        EXPECT_EQ(Work.PtX[p], static_cast<float>(x));
    }
}

TEST_F(FitDataTest, OnlyTheRangeEnters) {
    Load(1, {5.0F, 6.0F, 6.5F, 7.0F, 8.0F}, {9.0F, 0.25F, 0.5F, 0.75F, 9.0F});
    Work.FitRange[0][1] = 2;
    Work.FitRange[1][1] = 4;
    BuildFitData();
    EXPECT_EQ(Y(), (Floats{0.25F, 0.5F, 0.75F}));
    EXPECT_EQ(Work.PtX[1], -3.25F);
}

TEST_F(FitDataTest, ASinglePointStandsAtZero) {
    LoadThree(1);
    Work.FitRange[0][1] = Work.FitRange[1][1] = 2;
    BuildFitData();
    EXPECT_EQ(Work.NumPts, 1);
    EXPECT_EQ(PointsOfSets(), std::vector<int>{1});
    EXPECT_EQ(Work.PtX[1], 0.0F);
    EXPECT_EQ(Work.PtY[1], 0.5F);
}

TEST_F(FitDataTest, SetsAreTheIncludedRowsInOrder) {
    for (long row : {2L, 3L, 11L})
        LoadThree(row);
    Work.IncludeSet[1] = 0;
    Work.IncludeSet[3] = 0;
    Work.FitRange[1][11] = 2;
    BuildFitData();
    EXPECT_EQ(Work.NumSets, 2);
    EXPECT_EQ(Work.SetRow[1], 2);
    EXPECT_EQ(Work.SetRow[2], 11);
    EXPECT_EQ(Work.SetRow[3], 0);
    EXPECT_EQ(Work.SetOfRow[2], 1);
    EXPECT_EQ(Work.SetOfRow[3], 0);
    EXPECT_EQ(Work.SetOfRow[11], 2);
    EXPECT_EQ(PointsOfSets(), (std::vector<int>{3, 2}));
    EXPECT_EQ(Sets(), (std::vector<int>{1, 1, 1, 2, 2}));
}

TEST_F(FitDataTest, TheRowsOfSetsLeadBack) {
    Work.NumSets = 2;
    Work.SetRow[1] = 7;
    Work.SetRow[2] = 3;
    Work.SetOfRow[5] = 1;
    BuildSetOfRow();
    for (long row = 1; row <= 18; ++row)
        EXPECT_EQ(Work.SetOfRow[row], row == 7 ? 1 : row == 3 ? 2 : 0);
}

TEST_F(FitDataTest, ScalesAreRelativeToTheFirstSet) {
    LoadThree(1);
    LoadThree(2);
    LoadThree(3);
    Work.ScanRPM[2] = 10000.0F;
    Work.ScanTemperature[2] = 4.0F;
    Work.CellPath[2] = 0.3F;
    Work.ScanRPM[3] = 30000.0F;
    Work.ScanTemperature[3] = 25.0F;
    BuildFitData();
    EXPECT_EQ(Work.SetSigmaScale[1], 1.0F);
    EXPECT_EQ(Work.SetSignalScale[1], 1.0F);
    EXPECT_EQ(Work.SetSigmaScale[2], 1.25F); // (1/2)^2 (20/4): degrees Celsius as they stand
    EXPECT_EQ(Work.SetSignalScale[2], 0.25F);
    EXPECT_EQ(Work.SetSigmaScale[3], 1.8F); // (3/2)^2 (20/25)
    EXPECT_EQ(Work.SetSignalScale[3], 1.0F);
}

TEST_F(FitDataTest, SigmaCouldNotFollowAbsoluteTemperatures) {
    LoadThree(1);
    LoadThree(2);
    LoadThree(3);
    Work.ScanTemperature[1] = 4.0F;
    Work.ScanTemperature[2] = 4.1F;
    Work.ScanTemperature[3] = 0.0F;
    Work.TemperatureScale = TemperatureScales::Kelvin;
    BuildFitData();
    EXPECT_FLOAT_EQ(Work.SetSigmaScale[2], static_cast<float>(277.15 / 277.25));
    EXPECT_FLOAT_EQ(Work.SetSigmaScale[3],
                    static_cast<float>(277.15 / 273.15)); // water's freezing is no nothing
    Work.TemperatureScale = TemperatureScales::Celsius;
    EXPECT_TRUE(ErrorOfBuild().find("a temperature of 0") != std::string::npos);
}

TEST_F(FitDataTest, TemperaturesThatChangeAMassWereTakenInSilence) {
    for (const long row : {1L, 2L, 3L, 5L})
        LoadThree(row);
    Work.ScanTemperature[1] = 4.0F;
    Work.ScanTemperature[2] = 4.1F;
    Work.ScanTemperature[3] = 4.02F; // 0.5% and no more
    Work.ScanTemperature[5] = 3.9F;
    Work.ScanTemperature[4] = 9.0F; // not in the fit
    const auto doubts = TemperatureDoubts(RowsInFit());
    ASSERT_EQ(doubts.size(), 2U);
    EXPECT_EQ(doubts[0].Row, RowNo(2));
    // 4/4.1 = 0.97561, 277.15/277.25 = 0.99964; their ratio 0.97596
    EXPECT_EQ(
        doubts[0].Text,
        "the temperature is 4.1 degrees and that of the first set 4: by their ratio in degrees Celsius "
        "sigma is taken 2.44% lower, by absolute temperatures it is 0.04% lower, so that a mass may come "
        "out wrong by 2.4%");
    EXPECT_EQ(doubts[1].Row, RowNo(5));
    EXPECT_NE(doubts[1].Text.find("sigma is taken 2.56% higher"), std::string::npos) << doubts[1].Text;
    Work.TemperatureScale = TemperatureScales::Kelvin;
    EXPECT_TRUE(TemperatureDoubts(RowsInFit()).empty());
}

TEST_F(FitDataTest, ATenthOfADegreeAtRoomTemperatureIsNoDoubt) {
    LoadThree(1);
    LoadThree(2);
    Work.ScanTemperature[2] = 20.1F;
    EXPECT_TRUE(TemperatureDoubts(RowsInFit()).empty());
    Work.ScanTemperature[2] = 20.2F;
    EXPECT_EQ(TemperatureDoubts(RowsInFit()).size(), 1U);
}

TEST_F(FitDataTest, LabelsNameFileChannelAndBaseline) {
    LoadThree(1);
    Work.DataChannel[1] = 2;
    Work.BaselineFile[1] = "b.RA1";
    BuildFitData();
    EXPECT_EQ(Work.SetLabel[1], "/data/1.RA1 Ch B -BL");
    EXPECT_EQ(Work.LabelPrefix, "");
    LoadThree(2);
    BuildFitData();
    EXPECT_EQ(Work.SetLabel[1], "1.RA1 Ch B -BL");
    EXPECT_EQ(Work.SetLabel[2], "2.RA1");
    EXPECT_EQ(Work.SetLabel[3], "");
    EXPECT_EQ(Work.LabelPrefix, "/data/");
    Work.IncludeSet[1] = 0;
    BuildFitData();
    EXPECT_EQ(Work.SetLabel[1], "/data/2.RA1");
    EXPECT_EQ(Work.SetLabel[2], "");
    EXPECT_EQ(Work.LabelPrefix, ""); // not that of the former build
}

TEST_F(FitDataTest, TheBaselineIsSubtractedAtTheShiftedRadius) {
    LoadThree(1);
    Work.BaselineRadius[1] = OneBased<float>(2);
    Work.BaselineValue[1] = OneBased<float>(2);
    Work.BaselineRadius[1][1] = 6.25F;
    Work.BaselineRadius[1][2] = 6.75F;
    Work.BaselineValue[1][2] = 0.5F;
    Work.BaselinePoints[1] = 2;
    Work.BaselineShift[1] = 0.125F;
    BuildFitData();
    EXPECT_EQ(Y(), (Floats{0.25F, 0.5F, 0.75F})); // no baseline file: nothing is subtracted
    Work.BaselineFile[1] = "b.RA1";
    BuildFitData();
    EXPECT_EQ(Y(), (Floats{0.25F, 0.25F, 0.25F})); // the shift is not in force
    Work.BaselineShifted[1] = FlagTrue;
    BuildFitData();
    EXPECT_EQ(Y(), (Floats{0.25F, 0.375F, 0.25F})); // 6.5 cm is read at 6.375 cm
    Work.BaselineShift[1] = -0.125F;
    BuildFitData();
    EXPECT_EQ(Y(), (Floats{0.25F, 0.125F, 0.25F}));
}

TEST_F(FitDataTest, BothConstraintsAppendAPseudoPoint) {
    LoadThree(1);
    LoadThree(2);
    Work.ConcConstraintA[1] = 0.5F;
    Work.ConcToleranceA[1] = 0.25F;
    Work.ConcConstraintB[1] = 0.25F;
    Work.ConcToleranceB[1] = 0.5F;
    Work.ConcConstraintB[2] = 1.0F;
    Work.ConcToleranceB[2] = 0.125F;
    Work.ConstraintFlags = ConcentrationBit;
    BuildFitData();
    ASSERT_EQ(Work.NumPts, 9);
    EXPECT_EQ(PointsOfSets(), (std::vector<int>{5, 4}));
    EXPECT_EQ(Sets(), (std::vector<int>{1, 1, 1, 1, 1, 2, 2, 2, 2}));
    EXPECT_EQ(Work.PtY[4], 1.5F);   // 0.5 * 0.75 / 0.25
    EXPECT_EQ(Work.PtY[5], 0.375F); // 0.25 * 0.75 / 0.5, from the last true point
    EXPECT_EQ(Work.PtY[9], 6.0F);   // 1 * 0.75 / 0.125
    for (long p : {4L, 5L, 9L})
        EXPECT_EQ(Work.PtX[p], -3.4e38F);
    EXPECT_EQ(Work.PtX[6], -3.25F);
    EXPECT_EQ(Work.ConstraintFlags, ConcentrationBit);
}

TEST_F(FitDataTest, ThePseudoPointWeighsTheBaselineFreeSignal) {
    LoadThree(1);
    Work.BaselineFile[1] = "b.RA1";
    Work.BaselinePoints[1] = 1;
    Work.BaselineRadius[1] = OneBased<float>(1, 6.0F);
    Work.BaselineValue[1] = OneBased<float>(1, 0.25F);
    Work.ConcConstraintA[1] = 0.5F;
    Work.ConcToleranceA[1] = 0.5F;
    Work.ConstraintFlags = ConcentrationBit;
    BuildFitData();
    EXPECT_EQ(Work.PtY[4], 0.5F);
}

TEST_F(FitDataTest, WithoutTheBitThereAreNoPseudoPoints) {
    LoadThree(1);
    Work.ConcConstraintA[1] = 0.5F;
    BuildFitData();
    EXPECT_EQ(Work.NumPts, 3);
    EXPECT_EQ(Work.ConstraintFlags, 0);
}

TEST_F(FitDataTest, TheBitGoesWithTheLastConstraintOfTheFit) {
    LoadThree(1);
    LoadThree(2);
    Work.ConcConstraintA[2] = 0.5F;
    Work.ConstraintFlags = ConcentrationBit;
    Work.IncludeSet[2] = 0;
    BuildFitData();
    EXPECT_EQ(Work.ConstraintFlags, 0);
    EXPECT_EQ(Work.ConcConstraintA[2], 0.5F);
    // A value below zero keeps the bit and adds no point.
    Work.ConcConstraintB[1] = -0.5F;
    Work.ConstraintFlags = ConcentrationBit;
    BuildFitData();
    EXPECT_EQ(Work.ConstraintFlags, ConcentrationBit);
    EXPECT_EQ(Work.NumPts, 3);
}

TEST_F(FitDataTest, TiesToRowsOutsideTheFitGo) {
    for (long row = 1; row <= 4; ++row)
        LoadThree(row);
    Work.OffsetLink[1] = 2;
    Work.OffsetLink[3] = 4;
    Work.OffsetLink[9] = 2; // a row outside the fit keeps its tie
    Work.IncludeSet[2] = 0;
    BuildFitData();
    EXPECT_EQ(Work.OffsetLink[1], 0);
    EXPECT_EQ(Work.OffsetLink[3], 4);
    EXPECT_EQ(Work.OffsetLink[9], 2);
    EXPECT_EQ(Work.ConstraintFlags, OffsetBit);
    Work.IncludeSet[4] = 0;
    BuildFitData();
    EXPECT_EQ(Work.OffsetLink[3], 0);
    EXPECT_EQ(Work.ConstraintFlags, 0);
}

TEST_F(FitDataTest, TheStateAfterABuild) {
    LoadThree(1);
    Work.SetChanged[1] = Work.SetChanged[5] = FlagTrue;
    Work.FitValid = Work.FitDone = FlagTrue;
    std::vector<Pointer> shown;
    Host.SetPointer = [&](Pointer p) { shown.push_back(p); };
    BuildFitData();
    EXPECT_EQ(Work.DataChosen, FlagTrue);
    EXPECT_EQ(Work.FitValid, 0);
    EXPECT_EQ(Work.FitDone, 0);
    EXPECT_EQ(Work.SetChanged[1], 0);
    EXPECT_EQ(Work.SetChanged[5], 0);
    EXPECT_EQ(Work.NumParms, 11); // the model was set up for one set
    EXPECT_EQ(shown, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Standard}));
}

TEST_F(FitDataTest, TheParameterScaleFollowsANewFirstSet) {
    LoadThree(1);
    LoadThree(2);
    Work.MassUnits = 2;
    Work.ScanRPM[2] = 40000.0F;
    BuildFitData();
    const float atFirst = Work.ParmScale[0];
    Work.ParmScale[0] = 1.0F;
    BuildFitData();
    EXPECT_EQ(Work.ParmScale[0], atFirst); // the model's set-up builds it too
    Work.IncludeSet[1] = 0;
    BuildFitData();
    EXPECT_FLOAT_EQ(Work.ParmScale[0], atFirst / 4.0F); // the mass that a sigma means goes with 1 / speed^2
}

TEST_F(FitDataTest, SixteenBitsCountThePoints) {
    Floats radii;
    for (int i = 0; i < 2047; ++i)
        radii.push_back(6.0F + 0.0005F * static_cast<float>(i));
    for (long row = 1; row <= 16; ++row)
        Load(row, radii, Floats(2047, 0.5F));
    BuildFitData();
    EXPECT_EQ(Work.NumPts, 32752);
    Load(17, Floats(radii.begin(), radii.begin() + 15), Floats(15, 0.5F));
    BuildFitData();
    EXPECT_EQ(Work.NumPts, 32767);
    const Workspace before = Work;
    Load(17, Floats(radii.begin(), radii.begin() + 16), Floats(16, 0.5F));
    EXPECT_EQ(ErrorOfBuild(),
              "The sets have 32768 points together, and a fit takes at most 32767: narrow their "
              "ranges or leave sets out");
    Load(17, radii, Floats(2047, 0.5F));
    Load(18, radii, Floats(2047, 0.5F));
    EXPECT_EQ(ErrorOfBuild(),
              "The sets have 36846 points together, and a fit takes at most 32767: narrow their "
              "ranges or leave sets out");
    EXPECT_EQ(Work.NumPts, before.NumPts);
    EXPECT_EQ(Work.NumSets, before.NumSets);
    EXPECT_TRUE(Work.PtX == before.PtX);
}

TEST_F(FitDataTest, AFailedBuildKeepsTheFormerFitAndAsksForTheTable) {
    LoadThree(1);
    LoadThree(2);
    Work.OffsetLink[1] = 2;
    BuildFitData();
    Work.Parms[8] = 1.0F;
    Work.FitDone = FlagTrue;
    Work.IncludeSet[2] = 0;
    LoadThree(3);
    Work.ScanTemperature[3] = 0.0F;
    Workspace expected = Work;
    expected.DataChosen = 0;
    EXPECT_EQ(ErrorOfBuild(),
              "Set 3 (3.RA1): the header holds a temperature of 0, which cannot be related to other sets");
    EXPECT_TRUE(Work == expected);
    Work.ScanTemperature[3] = 20.0F;
    EXPECT_EQ(ErrorOfBuild(), "no error");
    EXPECT_EQ(Work.SetRow[2], 3);
}

TEST_F(FitDataTest, SetsWithoutSpeedTemperatureOrPathCannotBeCompared) {
    for (long row : {1L, 2L}) {
        for (auto member : {&Workspace::ScanRPM, &Workspace::ScanTemperature}) {
            LoadThree(1);
            LoadThree(2);
            (Work.*member)[row] = 0.0F;
            EXPECT_TRUE(ErrorOfBuild().starts_with("Set " + std::to_string(row) + " (" + std::to_string(row) +
                                                   ".RA1): the header holds "));
        }
    }
    LoadThree(1);
    LoadThree(2);
    Work.CellPath[1] = 0.0F;
    EXPECT_EQ(ErrorOfBuild(), "Set 1 (1.RA1): its optical path is 0");
}

TEST_F(FitDataTest, AloneASetNeedsNoTemperature) {
    LoadThree(1);
    Work.ScanTemperature[1] = 0.0F;
    EXPECT_EQ(ErrorOfBuild(), "no error");
    EXPECT_EQ(Work.SetSigmaScale[1], 1.0F);
}

TEST_F(FitDataTest, ARangeOutsideTheScanIsAnError) {
    LoadThree(1);
    for (const auto& [first, last] :
         std::vector<std::pair<int, int>>{{0, 2}, {1, 4}, {3, 2}, {2, 0}, {0, 0}, {-1, 2}, {4, 4}}) {
        Work.FitRange[0][1] = ToInt16(first);
        Work.FitRange[1][1] = ToInt16(last);
        EXPECT_EQ(ErrorOfBuild(), "Set 1 (1.RA1): its range, points " + std::to_string(first) + " to " +
                                      std::to_string(last) + ", lies outside the scan, which has 3");
    }
}

TEST_F(FitDataTest, AToleranceOfZeroIsAnError) {
    LoadThree(1);
    Work.ConcConstraintA[1] = 0.5F;
    Work.ConcToleranceA[1] = 0.0F;
    Work.ConstraintFlags = ConcentrationBit;
    EXPECT_EQ(ErrorOfBuild(), "Set 1 (1.RA1): its loading is constrained with a tolerance of 0");
}

TEST_F(FitDataTest, ASpeedThatNoRotorHasIsNamed) {
    LoadThree(1);
    Work.ScanRPM[1] = 1e38F; // alone it was an "Overflow" of the units
    EXPECT_EQ(ErrorOfBuild(), "Set 1 (1.RA1): the header holds a rotor speed of 1E+38 rpm");
    Work.ScanRPM[1] = 1e6F;
    EXPECT_EQ(ErrorOfBuild(), "no error");
}

TEST_F(FitDataTest, SpeedsThatCannotBeRelatedAreNamed) {
    LoadThree(1);
    LoadThree(2);
    Work.ScanFile[2] = "00012.RA1";
    Work.ScanRPM[1] = 1e-20F;
    Work.ScanRPM[2] = 10000.0F;
    EXPECT_EQ(
        ErrorOfBuild(),
        "Set 2 (00012.RA1): a rotor speed of 10000 rpm cannot be related to the 1E-20 rpm of the first set");
}

TEST_F(FitDataTest, NoIncludedRowLeavesAnEmptyFit) {
    LoadThree(1);
    BuildFitData();
    Work.IncludeSet[1] = 0;
    EXPECT_EQ(ErrorOfBuild(), "no error");
    EXPECT_EQ(Work.NumSets, 0);
    EXPECT_EQ(Work.NumPts, 0);
    EXPECT_EQ(Work.PtX.Size(), 0U);
    LoadThree(1);
    EXPECT_EQ(ErrorOfBuild(), "no error");
    EXPECT_EQ(Work.NumPts, 3);
}

} // namespace
} // namespace Quillon

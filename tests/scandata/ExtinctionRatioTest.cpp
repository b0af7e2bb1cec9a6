// The comparison of wavelengths after a read.
#include "scandata/reader/ExtinctionForm.h"
#include "scandata/reader/ExtinctionRatios.h"

#include "ScanFixture.h"

namespace Quillon {
namespace {

struct ExtinctionRatios : ScanTest {
    static std::string At(const std::string& wavelength, const std::string& letter = "R") {
        return ScanText(ManyPoints(2), letter + " 1 20.0 3000 60 1E9 " + wavelength + " 32");
    }
    static void Load(long row, float wavelength) {
        Work.ScanFile[row] = "00001.RA1";
        Work.ScanWavelength[row] = wavelength;
        Work.ExtinctionRatio[0][row] = 2.0F;
        Work.ExtinctionRatio[1][row] = 3.0F;
    }
    static std::pair<float, float> Ratios(long row) {
        return {Work.ExtinctionRatio[0][row], Work.ExtinctionRatio[1][row]};
    }
    void ExpectForm(long row, float a, float b) {
        script.ExpectModal(ExtinctionFormName, [=] {
            EXPECT_EQ(Work.CurrentRow, row - 1);
            Work.ExtinctionRatio[0][row] = a;
            Work.ExtinctionRatio[1][row] = b;
        });
    }
    const std::pair<float, float> One{1.0F, 1.0F};
    const std::pair<float, float> Loaded{2.0F, 3.0F};
};

TEST_F(ExtinctionRatios, WithinOneNanometreTheyAreOne) {
    Load(1, 280.0F);
    Load(2, 500.0F);
    ASSERT_TRUE(Read(At("281"), 2).Ok);
    EXPECT_EQ(Ratios(2), One);
    EXPECT_EQ(Ratios(1), Loaded);
}

TEST_F(ExtinctionRatios, BeyondOneNanometreTheFormAsks) {
    Load(1, 280.0F);
    Work.CurrentRow = 2;
    Work.CurrentPage = 1;
    ExpectForm(12, 0.5F, 0.25F);
    ASSERT_TRUE(Read(At("281.5"), 12).Ok);
    EXPECT_EQ(Ratios(12), (std::pair<float, float>{0.5F, 0.25F}));
    EXPECT_EQ(Work.CurrentRow, 2);
}

TEST_F(ExtinctionRatios, InterferenceDataHaveNone) {
    Load(1, 280.0F);
    Load(3, 280.0F);
    ASSERT_TRUE(Read(At("675", "P"), 3).Ok);
    EXPECT_EQ(Ratios(3), One);
}

TEST_F(ExtinctionRatios, AReadIntoTheFirstRowComparesAllOthers) {
    Load(1, 280.0F);
    Load(2, 260.0F);
    Load(3, 281.0F);
    Load(14, 250.0F);
    Work.ExtinctionRatio[0][4] = 9.0F;
    Work.CurrentRow = 5;
    ExpectForm(3, 0.5F, 0.6F);
    ExpectForm(14, 0.7F, 0.8F);
    ASSERT_TRUE(Read(At("260.5"), 1).Ok);
    EXPECT_EQ(Ratios(1), Loaded);
    EXPECT_EQ(Ratios(2), One);
    EXPECT_EQ(Ratios(3), (std::pair<float, float>{0.5F, 0.6F}));
    EXPECT_EQ(Ratios(4), One); // no file there
    EXPECT_EQ(Ratios(14), (std::pair<float, float>{0.7F, 0.8F}));
    EXPECT_EQ(Work.CurrentRow, 5);
}

TEST_F(ExtinctionRatios, AFirstRowAtItsOldWavelengthComparesNothing) {
    Load(1, 280.0F);
    Load(2, 260.0F);
    ASSERT_TRUE(Read(At("281"), 1).Ok);
    EXPECT_EQ(Ratios(2), Loaded);
}

TEST_F(ExtinctionRatios, TheOldWavelengthCountsInWholeNanometres) {
    // 279.5 counts as 280 (ties to even), from which 281 is not more than 1 away.
    Load(1, 279.5F);
    Load(2, 260.0F);
    ASSERT_TRUE(Read(At("281"), 1).Ok);
    EXPECT_EQ(Ratios(2), Loaded);
    // 280.5 counts as 280, from which 281.25 is.
    Work.ScanWavelength[1] = 280.5F;
    ExpectForm(2, 4.0F, 5.0F);
    ASSERT_TRUE(Read(At("281.25"), 1).Ok);
    EXPECT_EQ(Ratios(2), (std::pair<float, float>{4.0F, 5.0F}));
}

TEST_F(ExtinctionRatios, AWavelengthBeyondReasonDoesNotBlockTheRow) {
    Work.ScanWavelength[1] = 1e30F;
    EXPECT_TRUE(Read(At("280"), 1).Ok);
    Work.ScanWavelength[1] = -1e30F;
    EXPECT_TRUE(Read(At("280"), 1).Ok);
}

TEST_F(ExtinctionRatios, InterferenceDataInTheFirstRowClearAllOthers) {
    Load(1, 280.0F);
    Load(2, 260.0F);
    ASSERT_TRUE(Read(At("675", "P"), 1).Ok);
    EXPECT_EQ(Ratios(2), One);
}

TEST_F(ExtinctionRatios, KnownRatiosOfTheSameWavelengthAreAdopted) {
    for (long row : {2L, 3L, 5L, 6L}) {
        Load(row, 260.0F);
        Work.ExtinctionRatio[0][row] = static_cast<float>(row);
        Work.ExtinctionRatio[1][row] = static_cast<float>(10 * row);
    }
    Work.ScanWavelength[3] = 259.0F;
    Work.ScanWavelength[6] = 261.5F;
    Work.ExtinctionRatio[0][5] = 1.0F;
    Work.ExtinctionRatio[1][5] = 1.0F;
    AdoptKnownRatios(RowNo(5));
    EXPECT_EQ(Ratios(5), (std::pair<float, float>{3.0F, 30.0F})); // the last one in reach
}

TEST_F(ExtinctionRatios, RatiosThatWereEnteredAreNotReplaced) {
    Load(2, 260.0F);
    Load(5, 260.0F);
    Work.ExtinctionRatio[0][5] = 1.0F;
    Work.ExtinctionRatio[1][5] = 1.5F;
    AdoptKnownRatios(RowNo(5));
    EXPECT_EQ(Ratios(5), (std::pair<float, float>{1.0F, 1.5F}));
}

TEST_F(ExtinctionRatios, ARowWithoutAWavelengthHasNothingToGive) {
    Work.ExtinctionRatio[0][2] = 2.0F;
    Work.ScanWavelength[5] = 0.5F;
    AdoptKnownRatios(RowNo(5));
    EXPECT_EQ(Ratios(5), One);
}

} // namespace
} // namespace Quillon

// Reading a baseline scan: the same layout, fewer rules.
#include "ScanFixture.h"
#include "platform/Paths.h"

namespace Quillon {
namespace {

struct BaselineReading : ScanTest {
    void ExpectBaselineFailure(const std::string& reason, const std::string& file = "baseline.RA1") {
        ExpectReadFailure(reason, file, BaselineReadError);
    }
};

TEST_F(BaselineReading, SpeedAndPointsGoIntoTheRow) {
    ASSERT_TRUE(ReadAsBaseline(
        ScanText({"6.0 0.01 0.1", "6.1 0.02 -1", "6.2 0.03", "0 0"}, "R 2 20.0 3000 0000060 1E9 280 32"), 4));
    EXPECT_EQ(Work.BaselineRPM[4], 3000.0F);
    ASSERT_EQ(Work.BaselinePoints[4], 2);
    EXPECT_EQ(Work.BaselineRadius[4][2], 6.2F);
    EXPECT_EQ(Work.BaselineValue[4][2], 0.03F);
}

TEST_F(BaselineReading, TheShiftIsClearedAndNothingElse) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(5))).Ok);
    Work.BaselineShifted[1] = FlagTrue;
    Work.BaselineShift[1] = 0.01F;
    Workspace expected = Work;
    ASSERT_TRUE(ReadAsBaseline(ScanText({"6.0 0.01"}, "P 2 25.0 3000 60 1E9 675 32", "CM/PIXEL: 1, other")));
    expected.BaselineShifted[1] = 0;
    expected.BaselineShift[1] = 0.0F;
    expected.BaselineRPM[1] = 3000.0F;
    expected.BaselinePoints[1] = 1;
    expected.BaselineRadius[1] = OneBased<float>(1, 6.0F);
    expected.BaselineValue[1] = OneBased<float>(1, 0.01F);
    EXPECT_TRUE(Work == expected);
}

TEST_F(BaselineReading, TheHeaderIsAWholeLine) {
    ASSERT_TRUE(ReadAsBaseline(ScanText({"6.0 0.01"}, "R 2 20.0, 3000 60 1E9 280 32")));
    EXPECT_EQ(Work.BaselineRPM[1], 3000.0F);
    EXPECT_EQ(Work.BaselinePoints[1], 1);
}

TEST_F(BaselineReading, WithoutABlankBehindTheSpeedItIsZero) {
    ASSERT_TRUE(ReadAsBaseline(ScanText({"6.0 0.01"}, "R 2 20.0 3000")));
    EXPECT_EQ(Work.BaselineRPM[1], 0.0F);
}

TEST_F(BaselineReading, MorePointsThanTheScanAreAccepted) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(5))).Ok);
    ASSERT_TRUE(ReadAsBaseline(ScanText(ManyPoints(500))));
    EXPECT_EQ(Work.BaselinePoints[1], 500);
    EXPECT_EQ(Work.ScanPoints[1], 5);
}

TEST_F(BaselineReading, OnlyTheArrayLimitsTheCount) {
    ASSERT_TRUE(ReadAsBaseline(ScanText(ManyPoints(2048))));
    EXPECT_EQ(Work.BaselinePoints[1], 2048);
    ExpectBaselineFailure("line 2051, '8.048000 2.049000': the baseline holds more than 2048 points");
    EXPECT_FALSE(ReadAsBaseline(ScanText(ManyPoints(2049))));
    EXPECT_EQ(Work.BaselinePoints[1], 2048);
}

TEST_F(BaselineReading, TheLargestPointNumberEndsTheListSilently) {
    Work.MaxPtsPerSet = 32767;
    ASSERT_TRUE(ReadAsBaseline(ScanText(ManyPoints(40000))));
    EXPECT_EQ(Work.BaselinePoints[1], 32766);
}

TEST_F(BaselineReading, FailuresAreToldOnce) {
    const std::string ended = "a radius of 0 ends the list of points before the first one";
    for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>>{
             {"", "the file is empty"},
             {"comment\r\n", "the file ends before its parameter line"},
             {"comment\r\n" + GoodHeader, "the file ends before its first point"},
             {ScanText({"6.0"}), "line 3, '6.0': a radius without a value"},
             {ScanText({"6.0,0.1"}),
              "line 3, '6.0,0.1': a comma between the numbers of a point; they are parted by blanks"},
             {ScanText({"6.0 0.1", "", "6.1 0.2"}), "line 4, '': an empty line within the list of points"},
             {ScanText({"0 0"}), "line 3, '0 0': " + ended},
             {ScanText({"0 0 -1"}), "line 3, '0 0 -1': " + ended},
             {ScanText({"6.0 0.1"}, "R "), "line 2, 'R ': the parameter line is shorter than type and cell"},
             {ScanText({"6.0 0.1"}, "R 1 20 1E39 60 "),
              "line 2, 'R 1 20 1E39 60 ': a number that is too large for its field"}}) {
        ExpectBaselineFailure(reason);
        EXPECT_FALSE(ReadAsBaseline(text)) << text;
        EXPECT_EQ(Work.BaselinePoints[1], 0);
    }
}

TEST_F(BaselineReading, AMissingFileIsToldOnce) {
    ExpectBaselineFailure("File not found", "none.RA1");
    EXPECT_FALSE(ReadBaseline(script.Directory() + "/none.RA1", RowNo(1)));
    ExpectBaselineFailure("Path/File access error", FileTitle(script.Directory()));
    EXPECT_FALSE(ReadBaseline(script.Directory(), RowNo(1)));
}

TEST_F(BaselineReading, AFailureKeepsTheFormerPointsInReach) {
    ASSERT_TRUE(ReadAsBaseline(ScanText(ManyPoints(20))));
    Work.BaselineShifted[1] = FlagTrue;
    ExpectBaselineFailure("line 4, '6.1': a radius without a value");
    EXPECT_FALSE(ReadAsBaseline(ScanText({"6.0 0.1", "6.1"})));
    EXPECT_EQ(Work.BaselinePoints[1], 20);
    EXPECT_EQ(Work.BaselineRadius[1].Hi(), 20);
    EXPECT_EQ(Work.BaselineValue[1].Hi(), 20);
    EXPECT_EQ(Work.BaselineShifted[1], FlagTrue);
}

} // namespace
} // namespace Quillon

// Files that cannot be read into a line of the table: the line goes on with what it held.
#include "ScanFixture.h"
#include "scandata/forms/FileForm.h"
#include "scandata/forms/FileFormScans.h"

namespace Quillon {
namespace {

struct FailedRead : ScanTest {
    // A table with a scan of five points at 10,000 rpm in its first line.
    FailedRead() {
        LoadFileForm();
        FileFormReadFiles({script.MakeFile("00001.RA1", ScanText(ManyPoints(5)))});
    }

    // The file dialog will be answered with a baseline of the text given.
    void ExpectBaseline(const std::string& name, const std::string& text) {
        script.ExpectFile("Quillon - Read Data File for Blank", script.MakeFile(name, text));
    }
};

TEST_F(FailedRead, OfAScanLeavesTheFormerScan) {
    const std::string broken = ScanText({"7.0 0.9", "7.1"}, "P 1 4.0 20000 60 1E9 675 10", "something else");
    ExpectReadFailure("line 4, '7.1': a radius without a value", "00002.IP1");
    FileFormReadFiles({script.MakeFile("00002.IP1", broken)});
    EXPECT_EQ(FileForm.NameBox[0].Text, "00001.RA1");
    EXPECT_EQ(Work.ScanFile[1], "00001.RA1");
    EXPECT_EQ(Work.ScanComment[1], "Sample");
    EXPECT_EQ(Work.ScanRPM[1], 10000.0F);
    EXPECT_EQ(Work.ScanTemperature[1], 20.0F);
    EXPECT_EQ(Work.InterferenceData, FlagFalse);
    EXPECT_EQ(Work.ScanPoints[1], 5);
    EXPECT_EQ(Work.ScanRadius[1][1], 6.0F);
    EXPECT_EQ(Work.ScanValue[1][1], 0.001F);
}

TEST_F(FailedRead, OfABaselineLeavesTheFormerBaseline) {
    ExpectBaseline("00009.RA1", ScanText(ManyPoints(3)));
    FileFormSubtractBlankButton();
    ASSERT_EQ(Work.BaselineFile[1], "00009.RA1");
    ExpectBaseline("00010.RA1", ScanText({"7.0 0.9", "7.1"}, "R 1 20.0 3000 60 1E9 280 10"));
    ExpectReadFailure("line 4, '7.1': a radius without a value", "00010.RA1", BaselineReadError);
    FileFormSubtractBlankButton();
    EXPECT_EQ(FileForm.BlankFile[0].Text, "00009.RA1");
    EXPECT_EQ(Work.BaselineFile[1], "00009.RA1");
    EXPECT_EQ(Work.BaselineRPM[1], 10000.0F);
    EXPECT_EQ(Work.BaselinePoints[1], 3);
    EXPECT_EQ(Work.BaselineRadius[1][1], 6.0F);
    EXPECT_EQ(Work.BaselineValue[1][1], 0.001F);
}

} // namespace
} // namespace Quillon

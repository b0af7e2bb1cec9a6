// What a scan file holds and where it goes.
#include "ScanFixture.h"

namespace Quillon {
namespace {

struct ScanReading : ScanTest {};

TEST_F(ScanReading, HeaderAndPointsGoIntoTheRow) {
    Work.ScanWavelength[1] = 281.0F;
    const ScanReadResult read = Read(ScanText({"   5.7030  -1.19000E-001    4.90900E-001",
                                               "   5.7070   0.25530    0.00000", "   7.3010   9.25000E-0002"},
                                              "R 2 03.9 14000 0131226 1.9080E11 281 32", "  SegB  "),
                                     3);
    ASSERT_TRUE(read.Ok);
    EXPECT_EQ(read.Comment, "  SegB  ");
    EXPECT_EQ(Work.ScanComment[3], "SegB");
    EXPECT_EQ(Work.ScanTemperature[3], 3.9F);
    EXPECT_EQ(read.Temperature, 3.9F);
    EXPECT_EQ(Work.ScanRPM[3], 14000.0F);
    EXPECT_EQ(read.Rpm, 14000.0F);
    EXPECT_EQ(Work.ScanTime[3], 131226);
    EXPECT_EQ(Work.ScanOmega2t[3], 1.9080e11F);
    EXPECT_EQ(Work.ScanWavelength[3], 281.0F);
    EXPECT_EQ(Work.ScansAveraged[3], 32);
    ASSERT_EQ(Work.ScanPoints[3], 3);
    EXPECT_EQ(Work.ScanRadius[3][1], 5.703F);
    EXPECT_EQ(Work.ScanValue[3][1], -0.119F);
    EXPECT_EQ(Work.ScanRadius[3][2], 5.707F);
    EXPECT_EQ(Work.ScanValue[3][2], 0.2553F);
    EXPECT_EQ(Work.ScanRadius[3][3], 7.301F);
    EXPECT_EQ(Work.ScanValue[3][3], 0.0925F);
    EXPECT_EQ(read.FirstRadius, 5.703F);
    EXPECT_EQ(read.LastRadius, 7.301F);
}

TEST_F(ScanReading, AFreshReadResetsTheRow) {
    Work.CellPathlength = 0.3F;
    Work.FitRange[0][1] = 7;
    Work.FitRange[1][1] = 9;
    Work.BaselineShifted[1] = FlagTrue;
    Work.BaselineShift[1] = 0.01F;
    Work.DataChosen = FlagTrue;
    for (long j = 1; j <= 3; ++j)
        Work.SetParmMemory(j, 1) = 1.5F;
    ASSERT_TRUE(Read(ScanText(ManyPoints(5))).Ok);
    EXPECT_EQ(Work.FitRange[0][1], 1);
    EXPECT_EQ(Work.FitRange[1][1], 5);
    EXPECT_EQ(Work.CellPath[1], 0.3F);
    EXPECT_EQ(Work.BaselineShifted[1], 0);
    EXPECT_EQ(Work.BaselineShift[1], 0.0F);
    EXPECT_EQ(Work.NewData, -1);
    EXPECT_EQ(Work.DataChosen, 0);
    EXPECT_EQ(Work.SetChanged[1], -1);
    for (long j = 1; j <= 3; ++j)
        EXPECT_EQ(Work.SetParmMemory(j, 1), 0.0F);
}

TEST_F(ScanReading, TheDirectoryIsTheChosenPathUpToTheName) {
    const std::string path = script.MakeFile("00001.RA1", ScanText(ManyPoints(2)));
    Work.ChosenPath = "/data/run.RA1/old/run.RA1";
    Work.ChosenName = "run.RA1";
    ASSERT_TRUE(ReadScan(path, RowNo(1)).Ok);
    EXPECT_EQ(Work.ScanDirectory[1], "/data/");
}

TEST_F(ScanReading, WithoutAChoiceTheDirectoryIsThatOfTheFile) {
    const std::string path = script.MakeFile("00001.RA1", ScanText(ManyPoints(2)));
    ASSERT_TRUE(ReadScan(path, RowNo(1)).Ok);
    EXPECT_EQ(Work.ScanDirectory[1], script.Directory() + "/");
}

TEST_F(ScanReading, LineEndsOfEitherKindAndTrailingBlanks) {
    ASSERT_TRUE(Read(ScanText({"   5.86300    0.08440    0.04610 ", "   5.86500    0.07180    0.04980 "},
                              "R 2 20.0 10000 0084667 9.2280E10 280 32 ", "SegB ", "\n"))
                    .Ok);
    EXPECT_EQ(Work.ScanComment[1], "SegB");
    EXPECT_EQ(Work.ScansAveraged[1], 32);
    EXPECT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(Work.ScanValue[1][2], 0.0718F);
}

TEST_F(ScanReading, AnEmptyFirstLineIsAnEmptyComment) {
    const ScanReadResult read =
        Read("\r\nR 1 20.0 50000 3300 9.047e+10 100 1\r\n   6.2210  -4.03715e-01   0.00000e+00 \r\n");
    ASSERT_TRUE(read.Ok);
    EXPECT_EQ(read.Comment, "");
    EXPECT_EQ(Work.ScanComment[1], "");
    EXPECT_EQ(Work.ScanOmega2t[1], 9.047e10F);
    EXPECT_EQ(Work.ScanValue[1][1], -4.03715e-01F);
}

TEST_F(ScanReading, ALastLineWithoutAnEndCounts) {
    ASSERT_TRUE(Read("c\r\n" + GoodHeader + "\r\n6.0 0.1\r\n6.1 0.2").Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2);
}

TEST_F(ScanReading, TwoBlanksBetweenFieldsCountAsOne) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "R 1   20.0  3000 0000060  9.2280E10  280  32")).Ok);
    EXPECT_EQ(Work.ScanTemperature[1], 20.0F);
    EXPECT_EQ(Work.ScanRPM[1], 3000.0F);
    EXPECT_EQ(Work.ScanTime[1], 60);
    EXPECT_EQ(Work.ScanWavelength[1], 280.0F);
    EXPECT_EQ(Work.ScansAveraged[1], 32);
}

TEST_F(ScanReading, TimeIsRoundedToWholeSecondsTiesToEven) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "R 1 20.0 3000 60.5 1E9 280 32")).Ok);
    EXPECT_EQ(Work.ScanTime[1], 60);
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "R 1 20.0 3000 61.5 1E9 280 32")).Ok);
    EXPECT_EQ(Work.ScanTime[1], 62);
}

TEST_F(ScanReading, TheCountOfScansIsCutToTheWidthOfTheWavelength) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "P 1 20.0 3000 60 1E9 675 12345")).Ok);
    EXPECT_EQ(Work.ScansAveraged[1], 1234);
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "P 1 20.0 3000 60 1E9 8 12345")).Ok);
    EXPECT_EQ(Work.ScansAveraged[1], 12);
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "P 1 20.0 3000 60 1E9 675.0 12345")).Ok);
    EXPECT_EQ(Work.ScansAveraged[1], 12345);
}

TEST_F(ScanReading, WithoutABlankBehindTheWavelengthBothLastFieldsAreZero) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "R 1 20.0 3000 60 1E9 280")).Ok);
    EXPECT_EQ(Work.ScanWavelength[1], 0.0F);
    EXPECT_EQ(Work.ScansAveraged[1], 0);
    EXPECT_EQ(Work.ScanOmega2t[1], 1e9F);
}

TEST_F(ScanReading, ABlankBehindTheWavelengthSavesIt) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "R 1 20.0 3000 60 1E9 280 ")).Ok);
    EXPECT_EQ(Work.ScanWavelength[1], 280.0F);
    EXPECT_EQ(Work.ScansAveraged[1], 0);
}

TEST_F(ScanReading, TextInANumericFieldReadsAsZero) {
    ASSERT_TRUE(Read(ScanText({"6.0 none", "6.1x 0.2y 1z"}, "R 1 warm 3000rpm 60 1E9 280 32")).Ok);
    EXPECT_EQ(Work.ScanTemperature[1], 0.0F);
    EXPECT_EQ(Work.ScanRPM[1], 3000.0F);
    EXPECT_EQ(Work.ScanValue[1][1], 0.0F);
    EXPECT_EQ(Work.ScanRadius[1][2], 6.1F);
    EXPECT_EQ(Work.ScanValue[1][2], 0.2F);
}

TEST_F(ScanReading, ThePrefixIsDroppedByPosition) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "999 21.5 3000 60 1E9 280 32")).Ok);
    EXPECT_EQ(Work.ScanTemperature[1], 21.5F);
}

TEST_F(ScanReading, LeadingBlanksOfTheHeaderAreNoPartOfThePrefix) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "   P 1 21.5 3000 60 1E9 675 32")).Ok);
    EXPECT_EQ(Work.ScanTemperature[1], 21.5F);
    EXPECT_EQ(Work.InterferenceData, -1);
}

TEST_F(ScanReading, ACommaEndsTheHeaderAndStartsThePoints) {
    ASSERT_TRUE(Read(ScanText({"6.1 0.2"}, "R 1 20.0 3000 60 1E9 280 32,6.0 0.1")).Ok);
    ASSERT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(Work.ScanRadius[1][1], 6.0F);
    EXPECT_EQ(Work.ScanValue[1][1], 0.1F);
    EXPECT_EQ(Work.ScanRadius[1][2], 6.1F);
}

TEST_F(ScanReading, ACommaInTheMiddleOfTheHeaderCutsItsFieldsOff) {
    ASSERT_TRUE(Read(ScanText({"6.1 0.2"}, "R 1 20.0 3000 ,60 1E9 280 32")).Ok);
    EXPECT_EQ(Work.ScanRPM[1], 3000.0F);
    EXPECT_EQ(Work.ScanTime[1], 0);
    EXPECT_EQ(Work.ScanWavelength[1], 0.0F);
    EXPECT_EQ(Work.ScanRadius[1][1], 60.0F);
    EXPECT_EQ(Work.ScanValue[1][1], 1e9F);
}

TEST_F(ScanReading, AQuotedHeaderRunsToItsClosingQuote) {
    ASSERT_TRUE(Read(ScanText({"6.0 0.1"}, "\"P 1 20.0 3000 60 1E9 675 32\"")).Ok);
    EXPECT_EQ(Work.InterferenceData, -1);
    EXPECT_EQ(Work.ScanWavelength[1], 675.0F);
    EXPECT_EQ(Work.ScansAveraged[1], 32);
    EXPECT_EQ(Work.ScanPoints[1], 1);
}

TEST_F(ScanReading, AQuotedHeaderMayHoldACommaAndALineEnd) {
    ASSERT_TRUE(Read("c\r\n\"R 1 20.0 3000 60 1E9 280\r\n 32, and more\"\r\n6.0 0.1\r\n").Ok);
    EXPECT_EQ(Work.ScanRPM[1], 3000.0F);
    EXPECT_EQ(Work.ScanPoints[1], 1);
}

TEST_F(ScanReading, AQuotedPointLineIsAPoint) {
    ASSERT_TRUE(Read(ScanText({"\"6.0,0.1\"", "\"6.1 0.2\""})).Ok);
    ASSERT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(Work.ScanValue[1][1], 0.1F);
    EXPECT_EQ(Work.ScanValue[1][2], 0.2F);
}

TEST_F(ScanReading, TabsPartNumbersAndAnEmptyFieldIsZero) {
    ASSERT_TRUE(Read(ScanText({"6.0\t0.1\t0.01", "6.1\t\t0.2"})).Ok);
    ASSERT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(Work.ScanValue[1][1], 0.1F);
    EXPECT_EQ(Work.ScanValue[1][2], 0.0F);
}

TEST_F(ScanReading, ANegativeThirdNumberExcludesThePoint) {
    ASSERT_TRUE(
        Read(ScanText({"6.0 0.1 0.01", "6.1 0.2 -0.01", "6.2 0.3", "6.3 0.4 0", "6.4 0.5 -1E-30"})).Ok);
    ASSERT_EQ(Work.ScanPoints[1], 3);
    EXPECT_EQ(Work.ScanRadius[1][1], 6.0F);
    EXPECT_EQ(Work.ScanRadius[1][2], 6.2F);
    EXPECT_EQ(Work.ScanRadius[1][3], 6.3F);
    EXPECT_EQ(Work.FitRange[1][1], 3);
}

TEST_F(ScanReading, OnlyTheSignOfTheThirdNumberCounts) {
    ASSERT_TRUE(
        Read(ScanText({"6.0 0.1 1E999", "6.1 0.2 -", "6.2 0.3 -x", "6.3 0.4 -0", "6.4 0.5 7 -1"})).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 5);
}

TEST_F(ScanReading, ARadiusOfZeroEndsTheListAndIsNotCounted) {
    const ScanReadResult read = Read(ScanText({"6.0 0.1", "6.1 0.2", "0 0", "6.2 0.3", "rubbish"}));
    ASSERT_TRUE(read.Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(read.LastRadius, 6.1F);
}

TEST_F(ScanReading, ARadiusOfZeroEndsTheListWhateverTheValue) {
    ASSERT_TRUE(Read(ScanText({"6.0 0.1", "6.1 0.2", "0.000 7.5"})).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2);
}

TEST_F(ScanReading, AnExcludedTerminatorCostsTheLastTruePoint) {
    const ScanReadResult read = Read(ScanText({"6.0 0.1", "6.1 0.2", "6.2 0.3", "0 0 -1"}));
    ASSERT_TRUE(read.Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(read.LastRadius, 6.1F);
}

TEST_F(ScanReading, EmptyLinesAtTheEndOfTheFileAreNoPoints) {
    ASSERT_TRUE(Read(ScanText({"6.0 0.1", "6.1 0.2", ""})).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2);
    ASSERT_TRUE(Read(ScanText({"6.0 0.1", "", "  "})).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 1);
}

TEST_F(ScanReading, RadiiNeedNotRise) {
    ASSERT_TRUE(Read(ScanText({"6.2 0.1", "6.1 0.2", "6.1 0.3"})).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 3);
    EXPECT_EQ(Work.ScanRadius[1][2], 6.1F);
}

TEST_F(ScanReading, AReadOfFewerPointsLeavesNothingOfTheFormerOnes) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(50))).Ok);
    ASSERT_TRUE(Read(ScanText(ManyPoints(3))).Ok);
    EXPECT_EQ(Work.ScanRadius[1].Hi(), 3);
    EXPECT_EQ(Work.ScanValue[1].Hi(), 3);
    EXPECT_EQ(Work.FitRange[1][1], 3);
}

TEST_F(ScanReading, TheTypeLetterTellsInterferenceData) {
    for (const auto& [letter, interference] :
         std::vector<std::pair<std::string, int>>{{"R", 0}, {"P", -1}, {"r", 0}, {"p", -1}, {"F", 0}}) {
        ASSERT_TRUE(Read(ScanText(ManyPoints(2), letter + " 4 20.0 50000 0003685 9.7819E10 675 50")).Ok);
        EXPECT_EQ(Work.InterferenceData, interference) << letter;
    }
}

struct PixelScaleComments : ScanTest {
    std::string CommentOf(const std::string& line, const std::string& letter = "P") {
        const ScanReadResult read =
            Read(ScanText(ManyPoints(2), letter + " 4 20.0 50000 0003685 9.7819E10 675 50", line));
        EXPECT_TRUE(read.Ok);
        EXPECT_EQ(read.Comment, line);
        return Work.ScanComment[1];
    }
};

TEST_F(PixelScaleComments, TheTextBehindTheCommaAndOneCharacterIsTheComment) {
    EXPECT_EQ(CommentOf("cm/pixel:  0.00071350165, Sample"), "Sample");
    EXPECT_EQ(CommentOf("CM/PIXEL: 0.0007,;  Sample, two  "), "  Sample, two  ");
}

TEST_F(PixelScaleComments, WithoutACommaTheFirstCharacterIsDropped) {
    EXPECT_EQ(CommentOf("Cm/Pixel: 0.0007"), "m/Pixel: 0.0007");
}

TEST_F(PixelScaleComments, ACommaAtTheVeryEndLeavesNothing) {
    EXPECT_EQ(CommentOf("CM/PIXEL: 0.0007,"), "");
    EXPECT_EQ(CommentOf("CM/PIXEL: 0.0007, "), "");
}

TEST_F(PixelScaleComments, OnlyInterferenceFilesThatStartSoAreMeant) {
    EXPECT_EQ(CommentOf("cm/pixel: 0.0007, Sample", "R"), "cm/pixel: 0.0007, Sample");
    EXPECT_EQ(CommentOf(" cm/pixel: 0.0007, Sample"), "cm/pixel: 0.0007, Sample");
    EXPECT_EQ(CommentOf("cm/pixe"), "cm/pixe");
}

struct DataTypes : ScanTest {};

TEST_F(DataTypes, TheFileNameSettlesTheType) {
    const auto settle = [](const std::string& name) {
        Work.InterferenceData = 5;
        Work.DataTypeName = "before";
        SettleDataType(name);
        return std::to_string(Work.InterferenceData) + " " + Work.DataTypeName;
    };
    EXPECT_EQ(settle("00120.IP1"), "-1 Fringes");
    EXPECT_EQ(settle("00120.ip1"), "-1 Fringes");
    EXPECT_EQ(settle("00120.RA4"), "0 Absorbance");
    EXPECT_EQ(settle("x.ra"), "5 before");
    EXPECT_EQ(settle("00120.FI2"), "0 FI");
    EXPECT_EQ(settle("run.red"), "5 before");
    EXPECT_EQ(settle("IPx"), "-1 Fringes");
    EXPECT_EQ(settle("IP"), "5 before");
    EXPECT_EQ(settle(""), "5 before");
}

TEST_F(DataTypes, TheNameOverridesTheLetterButNotTheComment) {
    ASSERT_TRUE(
        Read(ScanText(ManyPoints(2), "P 4 20.0 50000 0003685 9.7819E10 675 50", "cm/pixel: 0.0007, Sample"),
             1, "00001.RA1")
            .Ok);
    EXPECT_EQ(Work.InterferenceData, -1);
    SettleDataType("00001.RA1");
    EXPECT_EQ(Work.InterferenceData, 0);
    EXPECT_EQ(Work.DataTypeName, "Absorbance");
    EXPECT_EQ(Work.ScanComment[1], "Sample");
}

} // namespace
} // namespace Quillon

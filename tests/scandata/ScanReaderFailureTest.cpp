// Reads that fail: what is said, and what is left of the row.
#include "ScanFixture.h"
#include "platform/Paths.h"

namespace Quillon {
namespace {

const std::string TooManyPoints =
    "There are too many data points. Exit program, increase the MaxPtsPerSet value in the Quillon.ini file, "
    "and then try again.";

const std::string TooMany2047 = "the scan holds more than 2047 points";
const std::string CommaInHeader =
    "a comma ends the parameter line; numbers have a decimal point and are parted by blanks";

struct ScanFailures : ScanTest {
    // A row with five points whose read of the text given fails for that reason, and stays usable.
    void ExpectFailure(const std::string& text, const std::string& reason,
                       const std::string& sentence = FileReadError) {
        SCOPED_TRACE(text.substr(0, 120));
        Work = FreshWorkspace();
        ASSERT_TRUE(Read(ScanText(ManyPoints(5))).Ok);
        Work.FitRange[0][1] = 2;
        Work.DataChosen = FlagTrue;
        Work.NewData = 0;
        ExpectReadFailure(reason, "00001.RA1", sentence);
        EXPECT_FALSE(Read(text).Ok);
        EXPECT_EQ(Work.ScanPoints[1], 5);
        EXPECT_EQ(Work.FitRange[0][1], 2);
        EXPECT_EQ(Work.FitRange[1][1], 5);
        EXPECT_GE(Work.ScanRadius[1].Hi(), 5);
        EXPECT_GE(Work.ScanValue[1].Hi(), 5);
        EXPECT_EQ(Work.DataChosen, -1);
        EXPECT_EQ(Work.NewData, 0);
    }
};

TEST_F(ScanFailures, AnEmptyFile) {
    ExpectFailure("", "the file is empty");
}

TEST_F(ScanFailures, AFileThatEndsInsideTheHeader) {
    ExpectFailure("comment", "the file ends before its parameter line");
    ExpectFailure("comment\r\n", "the file ends before its parameter line");
    ExpectFailure("comment\r\n" + GoodHeader, "the file ends before its first point");
    ExpectFailure("comment\r\n" + GoodHeader + "\r\n", "the file ends before its first point");
    ExpectFailure("comment\r\n" + GoodHeader + "\r\n\r\n", "the file ends before its first point");
}

TEST_F(ScanFailures, AHeaderShorterThanItsPrefix) {
    ExpectFailure(ScanText(ManyPoints(3), "R "),
                  "line 2, 'R ': the parameter line is shorter than type and cell");
    ExpectFailure(ScanText(ManyPoints(3), ""),
                  "line 2, '': the parameter line is shorter than type and cell");
    ExpectFailure(ScanText(ManyPoints(3), "R,1 20.0 3000 60 1E9 280 32"),
                  "line 2, 'R,1 20.0 3000 60 1E9 280 32': " + CommaInHeader);
}

// What stands behind the comma is read as the first point, and its radius of 0 ends the list.
TEST_F(ScanFailures, ADecimalCommaInTheHeader) {
    ExpectFailure(ScanText(ManyPoints(3), "R 1 20,0 3000 60 1E9 280 32"),
                  "line 2, 'R 1 20,0 3000 60 1E9 280 32': " + CommaInHeader);
}

TEST_F(ScanFailures, AHeaderOfThreeCharactersIsLongEnough) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(3), "R 1")).Ok);
    EXPECT_EQ(Work.ScanRPM[1], 0.0F);
    EXPECT_EQ(Work.ScansAveraged[1], 0);
}

TEST_F(ScanFailures, APointWithARadiusAlone) {
    ExpectFailure(ScanText({"6.0 0.1", "6.1"}), "line 4, '6.1': a radius without a value");
    ExpectFailure(ScanText({"6.0 0.1", "6.1 "}), "line 4, '6.1 ': a radius without a value");
    ExpectFailure(ScanText({"6.0 0.1", "0"}), "line 4, '0': a radius without a value");
}

TEST_F(ScanFailures, AnEmptyLineBetweenPoints) {
    ExpectFailure(ScanText({"6.0 0.1", "", "6.1 0.2"}),
                  "line 4, '': an empty line within the list of points");
    ExpectFailure(ScanText({"", "6.1 0.2"}), "line 3, '': an empty line within the list of points");
}

TEST_F(ScanFailures, ACommaBetweenTheNumbersOfAPoint) {
    const std::string why = "a comma between the numbers of a point; they are parted by blanks";
    ExpectFailure(ScanText({"6.0,0.1", "6.1,0.2"}), "line 3, '6.0,0.1': " + why);
    ExpectFailure(ScanText({"6.0, 0.1"}), "line 3, '6.0, 0.1': " + why);
    ExpectFailure(ScanText({"6.0 , 0.1"}), "line 3, '6.0 , 0.1': " + why);
    ExpectFailure(ScanText({"6.0 0.1,", "6.1 0.2,"}), "line 3, '6.0 0.1,': " + why);
    ExpectFailure(ScanText({"6.0 0.1,"}), "line 3, '6.0 0.1,': " + why);
}

TEST_F(ScanFailures, ADecimalComma) {
    const std::string why = "a decimal comma; numbers in a scan have a decimal point";
    ExpectFailure(ScanText({"6,0010  0,1234", "6,0020  0,1235"}), "line 3, '6,0010  0,1234': " + why);
    ExpectFailure(ScanText({"6\t0,1234"}), "line 3, '6 0,1234': " + why);
}

TEST_F(ScanFailures, AListWithoutATruePoint) {
    const std::string ended = "a radius of 0 ends the list of points before the first one";
    ExpectFailure(ScanText({"0 0"}), "line 3, '0 0': " + ended);
    ExpectFailure(ScanText({"radius absorbance", "6.0 0.1"}), "line 3, 'radius absorbance': " + ended);
    ExpectFailure(ScanText({"0 0 -1"}), "line 3, '0 0 -1': " + ended);
    ExpectFailure(ScanText({"6.0 0.1", "0 0 -1"}), "line 4, '0 0 -1': " + ended);
    ExpectFailure(ScanText({"6.0 0.1 -1", "6.1 0.2 -1"}),
                  "there are no points: all 2 are excluded by a negative third number");
}

TEST_F(ScanFailures, NumbersBeyondTheirWidth) {
    const std::string why = "': a number that is too large for its field";
    for (const std::string header : {"R 1 1E39 3000 60 1E9 280 32", "R 1 20.0 3000 2147483648 1E9 280 32",
                                     "R 1 20.0 3000 60 1E9 28000.0 32768"})
        ExpectFailure(ScanText(ManyPoints(3), header), "line 2, '" + header + why);
    ExpectFailure(ScanText({"6.0 1E39"}), "line 3, '6.0 1E39" + why);
    ExpectFailure(ScanText({"6.0 1E999"}), "line 3, '6.0 1E999" + why + " (Overflow)");
}

TEST_F(ScanFailures, ALongLineIsCut) {
    const std::string line = "6.1" + std::string(100, 'x');
    ExpectFailure(ScanText({"6.0 0.1", line}),
                  "line 4, '" + line.substr(0, 60) + "...': a radius without a value");
}

TEST_F(ScanFailures, BinaryRubbish) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i)
        bytes += static_cast<char>((i * 167 + 13) % 256);
    script.AnswerAllMessages(BoxAnswer::Ok);
    EXPECT_FALSE(Read(bytes).Ok);
    ASSERT_EQ(script.Asked.size(), 1U);
    EXPECT_TRUE(script.Asked[0].starts_with("message: " + FileReadError + "\n\n00001.RA1: line "))
        << script.Asked[0];
}

TEST_F(ScanFailures, AMissingFileIsToldTwice) {
    const std::string path = script.Directory() + "/none.RA1";
    ExpectTold("File " + path + " does not exist");
    ExpectReadFailure("File not found", "none.RA1");
    EXPECT_FALSE(ReadScan(path, RowNo(1)).Ok);
}

TEST_F(ScanFailures, ADirectoryIsNoFile) {
    ExpectTold("File " + script.Directory() + " does not exist");
    ExpectReadFailure("Path/File access error", FileTitle(script.Directory()));
    EXPECT_FALSE(ReadScan(script.Directory(), RowNo(1)).Ok);
}

TEST_F(ScanFailures, AFileThatMayNotBeRead) {
    const std::string path = script.MakeFile("locked.RA1", ScanText(ManyPoints(3)));
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileAccess); };
    ExpectReadFailure("Path/File access error", "locked.RA1");
    EXPECT_FALSE(ReadScan(path, RowNo(1)).Ok);
}

TEST_F(ScanFailures, ThePointerIsPutBack) {
    std::vector<Pointer> shown;
    Host.SetPointer = [&](Pointer p) { shown.push_back(p); };
    ExpectReadFailure("the file is empty");
    Read("");
    ASSERT_GE(shown.size(), 2U);
    EXPECT_EQ(shown.front(), Pointer::Hourglass);
    EXPECT_EQ(shown.back(), Pointer::Standard);
}

TEST_F(ScanFailures, ThePointLimitItselfIsTooMany) {
    ExpectFailure(ScanText(ManyPoints(2048)), TooMany2047, TooManyPoints);
    EXPECT_EQ(Work.ScanRadius[1][2048], 8.047F); // the points read so far stay
    EXPECT_EQ(Work.ScanValue[1][2048], 2.048F);
    ExpectFailure(ScanText(ManyPoints(5000)), TooMany2047, TooManyPoints);
}

TEST_F(ScanFailures, OnePointFewerIsAccepted) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2047))).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2047);
    EXPECT_EQ(Work.FitRange[1][1], 2047);
}

TEST_F(ScanFailures, ATerminatorTakesAPlaceAndExcludedPointsDoNot) {
    std::vector<std::string> points = ManyPoints(2047);
    points.push_back("0 0");
    ExpectFailure(ScanText(points), TooMany2047, TooManyPoints);
    points = ManyPoints(2047);
    points.insert(points.begin() + 10, "6.5 0.1 -1");
    ASSERT_TRUE(Read(ScanText(points)).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2047);
}

TEST_F(ScanFailures, TheLimitIsThatOfTheWorkspace) {
    Work.MaxPtsPerSet = 4000;
    ASSERT_TRUE(Read(ScanText(ManyPoints(3999))).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 3999);
    ExpectReadFailure("the scan holds more than 3999 points", "00001.RA1", TooManyPoints);
    EXPECT_FALSE(Read(ScanText(ManyPoints(4000))).Ok);
    Work.MaxPtsPerSet = 32767;
    ASSERT_TRUE(Read(ScanText(ManyPoints(32766))).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 32766);
    ExpectReadFailure("the scan holds more than 32766 points", "00001.RA1", TooManyPoints);
    EXPECT_FALSE(Read(ScanText(ManyPoints(32767))).Ok);
}

TEST_F(ScanFailures, TheMessageNamesTheProgramInForce) {
    Work.ProgramName = "Bench";
    script.ExpectMessage(
        {"There are too many data points. Exit program, increase the MaxPtsPerSet value in "
         "the Bench.ini file, and then try again.\n\n00001.RA1: the scan holds more than 2047 "
         "points",
         "Bench", BoxIcon::Warning, BoxButtons::Ok, BoxAnswer::Ok},
        BoxAnswer::Ok);
    EXPECT_FALSE(Read(ScanText(ManyPoints(2048))).Ok);
}

TEST_F(ScanFailures, EveryTruncationOfAScanIsReadOrRefused) {
    const std::string whole = ScanText({"   6.0010  -1.19000E-001    4.90900E-001", "   6.1 0.2 -1", "0 0"});
    const std::size_t second = whole.find("0.2");
    const std::size_t excluded = whole.find(" -1\r") + 3; // from here on the second point does not count
    script.AnswerAllMessages(BoxAnswer::Ok);
    for (std::size_t n = 0; n <= whole.size(); ++n) {
        Work = FreshWorkspace();
        const std::size_t told = script.Asked.size();
        const bool ok = Read(whole.substr(0, n)).Ok;
        EXPECT_EQ(script.Asked.size() - told, ok ? 0U : 1U) << n;
        EXPECT_EQ(Work.ScanPoints[1], !ok ? 0 : n > second && n < excluded ? 2 : 1) << n;
        EXPECT_GE(Work.ScanRadius[1].Hi(), Work.ScanPoints[1]);
    }
}

} // namespace
} // namespace Quillon

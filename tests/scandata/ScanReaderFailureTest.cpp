// Reads that fail: what is said, and what is left of the row.
#include "ScanFixture.h"

namespace Quillon {
namespace {

const std::string TooManyPoints =
    "There are too many data points. Exit program, increase the MaxPtsPerSet value in the Quillon.ini file, "
    "and then try again.";

struct ScanFailures : ScanTest {
    // A row with five points whose read of the text given fails with that message, and stays usable.
    void ExpectFailure(const std::string& text, const std::string& message = FileReadError) {
        SCOPED_TRACE(text.substr(0, 120));
        Work = FreshWorkspace();
        ASSERT_TRUE(Read(ScanText(ManyPoints(5))).Ok);
        Work.FitRange[0][1] = 2;
        Work.DataChosen = FlagTrue;
        Work.NewData = 0;
        ExpectTold(message);
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
    ExpectFailure("");
}

TEST_F(ScanFailures, AFileThatEndsInsideTheHeader) {
    ExpectFailure("comment");
    ExpectFailure("comment\r\n");
    ExpectFailure("comment\r\n" + GoodHeader);
    ExpectFailure("comment\r\n" + GoodHeader + "\r\n");
    ExpectFailure("comment\r\n" + GoodHeader + "\r\n\r\n");
}

TEST_F(ScanFailures, AHeaderShorterThanItsPrefix) {
    ExpectFailure(ScanText(ManyPoints(3), "R "));
    ExpectFailure(ScanText(ManyPoints(3), ""));
    ExpectFailure(ScanText(ManyPoints(3), "R,1 20.0 3000 60 1E9 280 32"));
}

TEST_F(ScanFailures, AHeaderOfThreeCharactersIsLongEnough) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(3), "R 1")).Ok);
    EXPECT_EQ(Work.ScanRPM[1], 0.0F);
    EXPECT_EQ(Work.ScansAveraged[1], 0);
}

TEST_F(ScanFailures, APointWithARadiusAlone) {
    ExpectFailure(ScanText({"6.0 0.1", "6.1"}));
    ExpectFailure(ScanText({"6.0 0.1", "6.1 "}));
    ExpectFailure(ScanText({"6.0 0.1", "0"}));
}

TEST_F(ScanFailures, AnEmptyLineBetweenPoints) {
    ExpectFailure(ScanText({"6.0 0.1", "", "6.1 0.2"}));
    ExpectFailure(ScanText({"", "6.1 0.2"}));
}

TEST_F(ScanFailures, ACommaBetweenTheNumbersOfAPoint) {
    ExpectFailure(ScanText({"6.0,0.1", "6.1,0.2"}));
    ExpectFailure(ScanText({"6.0, 0.1"}));
    ExpectFailure(ScanText({"6.0 , 0.1"}));
    ExpectFailure(ScanText({"6.0 0.1,", "6.1 0.2,"}));
    ExpectFailure(ScanText({"6.0 0.1,"}));
}

TEST_F(ScanFailures, AListWithoutATruePoint) {
    ExpectFailure(ScanText({"0 0"}));
    ExpectFailure(ScanText({"0 0 -1"}));
    ExpectFailure(ScanText({"6.0 0.1", "0 0 -1"}));
    ExpectFailure(ScanText({"6.0 0.1 -1", "6.1 0.2 -1"}));
}

TEST_F(ScanFailures, NumbersBeyondTheirWidth) {
    ExpectFailure(ScanText(ManyPoints(3), "R 1 1E39 3000 60 1E9 280 32"));
    ExpectFailure(ScanText(ManyPoints(3), "R 1 20.0 3000 2147483648 1E9 280 32"));
    ExpectFailure(ScanText(ManyPoints(3), "R 1 20.0 3000 60 1E9 28000.0 32768"));
    ExpectFailure(ScanText({"6.0 1E39"}));
    ExpectFailure(ScanText({"6.0 1E999"}));
}

TEST_F(ScanFailures, BinaryRubbish) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i)
        bytes += static_cast<char>((i * 167 + 13) % 256);
    ExpectFailure(bytes);
    ExpectFailure(std::string(1000, '\0'));
}

TEST_F(ScanFailures, AMissingFileIsToldTwice) {
    const std::string path = script.Directory() + "/none.RA1";
    ExpectTold("File " + path + " does not exist");
    ExpectTold(FileReadError);
    EXPECT_FALSE(ReadScan(path, 1).Ok);
}

TEST_F(ScanFailures, ADirectoryIsNoFile) {
    ExpectTold("File " + script.Directory() + " does not exist");
    ExpectTold(FileReadError);
    EXPECT_FALSE(ReadScan(script.Directory(), 1).Ok);
}

TEST_F(ScanFailures, AFileThatMayNotBeRead) {
    const std::string path = script.MakeFile("locked.RA1", ScanText(ManyPoints(3)));
    Host.ReadFile = [](const std::string&) -> std::string { RaiseError(ErrorText::FileAccess); };
    ExpectTold(FileReadError);
    EXPECT_FALSE(ReadScan(path, 1).Ok);
}

TEST_F(ScanFailures, ThePointerIsPutBack) {
    std::vector<Pointer> shown;
    Host.SetPointer = [&](Pointer p) { shown.push_back(p); };
    ExpectTold(FileReadError);
    Read("");
    ASSERT_GE(shown.size(), 2U);
    EXPECT_EQ(shown.front(), Pointer::Hourglass);
    EXPECT_EQ(shown.back(), Pointer::Standard);
}

TEST_F(ScanFailures, ThePointLimitItselfIsTooMany) {
    ExpectFailure(ScanText(ManyPoints(2048)), TooManyPoints);
    EXPECT_EQ(Work.ScanRadius[1][2048], 8.047F); // the points read so far stay
    EXPECT_EQ(Work.ScanValue[1][2048], 2.048F);
    ExpectFailure(ScanText(ManyPoints(5000)), TooManyPoints);
}

TEST_F(ScanFailures, OnePointFewerIsAccepted) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2047))).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2047);
    EXPECT_EQ(Work.FitRange[1][1], 2047);
}

TEST_F(ScanFailures, ATerminatorTakesAPlaceAndExcludedPointsDoNot) {
    std::vector<std::string> points = ManyPoints(2047);
    points.push_back("0 0");
    ExpectFailure(ScanText(points), TooManyPoints);
    points = ManyPoints(2047);
    points.insert(points.begin() + 10, "6.5 0.1 -1");
    ASSERT_TRUE(Read(ScanText(points)).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2047);
}

TEST_F(ScanFailures, TheLimitIsThatOfTheWorkspace) {
    Work.MaxPtsPerSet = 4000;
    ASSERT_TRUE(Read(ScanText(ManyPoints(3999))).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 3999);
    ExpectTold(TooManyPoints);
    EXPECT_FALSE(Read(ScanText(ManyPoints(4000))).Ok);
    Work.MaxPtsPerSet = 32767;
    ASSERT_TRUE(Read(ScanText(ManyPoints(32766))).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 32766);
    ExpectTold(TooManyPoints);
    EXPECT_FALSE(Read(ScanText(ManyPoints(32767))).Ok);
}

TEST_F(ScanFailures, TheMessageNamesTheProgramInForce) {
    Work.ProgramName = "Bench";
    script.ExpectMessage({"There are too many data points. Exit program, increase the MaxPtsPerSet value in "
                          "the Bench.ini file, and then try again.",
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

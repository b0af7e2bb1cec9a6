// Written scans: names, header, and the way back through the reader.
#include "scandata/reader/ScanWriter.h"

#include "ScanFixture.h"
#include "models/function/FitFunction.h"
#include "scandata/table/FitData.h"

#include <bit>
#include <cmath>
#include <random>

namespace Quillon {
namespace {

struct ScanWriting : ScanTest {
    std::string PathOf(const std::string& name) { return script.Directory() + "/" + name; }
};

TEST_F(ScanWriting, TheCellNumberStandsWhereTheConventionSays) {
    EXPECT_EQ(CellNumberOf("00001.RA2"), 2);
    EXPECT_EQ(CellNumberOf("run.red"), 0);
    EXPECT_EQ(CellNumberOf(""), 0);
    EXPECT_EQ(CellNumberOf("7"), 7);
    Work.NameConvention = 0;
    EXPECT_EQ(CellNumberOf("abcd3.RA2"), 3);
    EXPECT_EQ(CellNumberOf("abcde.RA2"), 0);
    EXPECT_EQ(CellNumberOf("abcd"), 0);
    EXPECT_EQ(CellNumberOf("abcd4"), 4);
}

TEST_F(ScanWriting, TheNameTellsSetChannelCellAndSpeed) {
    Work.ScanRPM[3] = 20999.0F;
    EXPECT_EQ(SuggestedScanName(RowNo(3), 1), "s03_1_20.RA1");
    Work.DataChannel[3] = 2;
    EXPECT_EQ(SuggestedScanName(RowNo(3), 4), "s03b4_20.RA4");
    Work.InterferenceData = FlagTrue;
    EXPECT_EQ(SuggestedScanName(RowNo(12), 4), "s12_4_0.IP4");
    Work.InterferenceData = 0;
    Work.DataTypeName = "FI";
    EXPECT_EQ(SuggestedScanName(RowNo(12), 4), "s12_4_0.FI4");
}

TEST_F(ScanWriting, TheOfferedNameTellsItsTypeAndItsCellAgain) {
    for (const auto& [interference, type] :
         std::vector<std::pair<int, std::string>>{{0, "Absorbance"}, {-1, "Fringes"}, {0, "FI"}}) {
        Work.InterferenceData = ToInt16(interference);
        Work.DataTypeName = type;
        const std::string name = SuggestedScanName(RowNo(5), 3);
        Work.InterferenceData = 7;
        Work.DataTypeName = "";
        SettleDataType(name);
        EXPECT_EQ(Work.InterferenceData, interference);
        EXPECT_EQ(Work.DataTypeName, type);
        for (int convention : {0, 1}) {
            Work.NameConvention = ToInt16(convention);
            EXPECT_EQ(CellNumberOf(name), 3);
        }
    }
}

TEST_F(ScanWriting, TheHeaderHasTheOrderOfTheReader) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(2), "R 2 20.5 14000 0131226 1.9080E11 281 32", "SegB")).Ok);
    EXPECT_EQ(ScanHeaderText("A comment", RowNo(1), 2),
              "A comment\r\nR 2 20.5 14000 0131226 1.908E+11 281 32\r\n");
    Work.InterferenceData = FlagTrue;
    Work.ScanTemperature[1] = 4.0F;
    EXPECT_EQ(ScanHeaderText("", RowNo(1), 12), "\r\nP12 4.0 14000 0131226 1.908E+11 281 32\r\n");
}

TEST_F(ScanWriting, APointIsTwoNumbersPartedByBlanks) {
    EXPECT_EQ(ScanPointText(6.125F, -0.25F), "     6.125          -0.25\r\n");
    EXPECT_EQ(ScanPointText(5.8999F, 1.5e-7F), "    5.8999        1.5E-07\r\n");
}

TEST_F(ScanWriting, TheGoodPointsComeBack) {
    ASSERT_TRUE(
        Read(ScanText(ManyPoints(40), "P 2 20.5 14000 0131226 1.9080E11 281 32", "  SegB, \"x\" ")).Ok);
    Work.FitRange[0][1] = 7;
    Work.FitRange[1][1] = 31;
    const std::string path = PathOf("s01_2_14.RA2");
    WriteScan(path, RowNo(1), 2);
    Work.InterferenceData = 0;
    Work.ScanWavelength[1] = Work.ScanWavelength[2] = 281.0F;
    const ScanReadResult read = ReadScan(path, RowNo(2));
    ASSERT_TRUE(read.Ok);
    EXPECT_EQ(Work.InterferenceData, FlagTrue);
    EXPECT_EQ(Work.ScanComment[2], "SegB, \"x\"");
    EXPECT_EQ(Work.ScanTemperature[2], 20.5F);
    EXPECT_EQ(Work.ScanRPM[2], 14000.0F);
    EXPECT_EQ(Work.ScanTime[2], 131226);
    EXPECT_EQ(Work.ScanOmega2t[2], 1.9080e11F);
    EXPECT_EQ(Work.ScanWavelength[2], 281.0F);
    EXPECT_EQ(Work.ScansAveraged[2], 32);
    ASSERT_EQ(Work.ScanPoints[2], 25);
    for (long p = 1; p <= 25; ++p) {
        EXPECT_EQ(Work.ScanRadius[2][p], Work.ScanRadius[1][p + 6]);
        EXPECT_EQ(Work.ScanValue[2][p], Work.ScanValue[1][p + 6]);
    }
}

TEST_F(ScanWriting, AnySingleComesBackBitForBit) {
    std::mt19937 random(20200421);
    for (int i = 0; i < 200000; ++i) {
        const float radius = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (!std::isfinite(radius) || !std::isfinite(value)) continue;
        const std::string line = ScanPointText(radius, value);
        char* rest = nullptr;
        // strtod and a rounding to single is what a double reader does.
        ASSERT_EQ(static_cast<float>(std::strtod(line.c_str(), &rest)), radius) << line;
        ASSERT_EQ(static_cast<float>(std::strtod(rest, &rest)), value) << line;
        ASSERT_STREQ(rest, "\r\n");
    }
}

TEST_F(ScanWriting, AnyHeaderComesBack) {
    std::mt19937 random(11);
    const auto number = [&](double low, double high) {
        return static_cast<float>(low + (high - low) * static_cast<double>(random()) / 4294967296.0);
    };
    const std::string path = PathOf("header.RA1");
    for (int i = 0; i < 300; ++i) {
        Work = FreshWorkspace();
        Work.ScanRadius[1] = OneBased<float>(1, 6.0F);
        Work.ScanValue[1] = OneBased<float>(1, 0.5F);
        Work.FitRange[0][1] = Work.FitRange[1][1] = 1;
        Work.ScanTemperature[1] = number(-5, 60);
        Work.ScanRPM[1] = number(0, 100000);
        Work.ScanOmega2t[1] = std::ldexp(number(0.5, 1), static_cast<int>(random() % 200) - 100);
        Work.ScanWavelength[1] = i % 3 == 0 ? std::floor(number(1, 900)) : number(0, 1000);
        Work.ScanTime[1] = static_cast<std::int32_t>(random() >> (1 + random() % 31));
        Work.ScansAveraged[1] = ToInt16(static_cast<long>(random() % 32768) >> (random() % 16));
        WriteScan(path, RowNo(1), 1);
        Work.InterferenceData = 0;
        Work.ScanWavelength[2] = 0.0F;
        script.AnswerAllMessages(BoxAnswer::Ok);
        Host.ShowModal = [](const std::string&) {};
        ASSERT_TRUE(ReadScan(path, RowNo(2)).Ok) << ScanHeaderText("", RowNo(1), 1);
        EXPECT_EQ(Work.ScanTemperature[2], Work.ScanTemperature[1]);
        EXPECT_EQ(Work.ScanRPM[2], Work.ScanRPM[1]);
        EXPECT_EQ(Work.ScanOmega2t[2], Work.ScanOmega2t[1]);
        EXPECT_EQ(Work.ScanWavelength[2], Work.ScanWavelength[1]);
        EXPECT_EQ(Work.ScanTime[2], Work.ScanTime[1]);
        EXPECT_EQ(Work.ScansAveraged[2], Work.ScansAveraged[1]) << ScanHeaderText("", RowNo(1), 1);
    }
}

TEST_F(ScanWriting, AWrittenScanServesAsABaseline) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(10), "R 2 20.5 14000 0131226 1.9080E11 281 32")).Ok);
    const std::string path = PathOf("b.RA1");
    WriteScan(path, RowNo(1), 2);
    ASSERT_TRUE(ReadBaseline(path, RowNo(1)));
    EXPECT_EQ(Work.BaselineRPM[1], 14000.0F);
    EXPECT_TRUE(Work.BaselineRadius[1] == Work.ScanRadius[1]);
    EXPECT_TRUE(Work.BaselineValue[1] == Work.ScanValue[1]);
}

TEST_F(ScanWriting, AFailureOfTheDiskIsToldToTheCaller) {
    ASSERT_TRUE(Read(ScanText(ManyPoints(3))).Ok);
    Host.WriteFile = [](const std::string&, const std::string&) { RaiseError(ErrorText::DiskFull); };
    EXPECT_THROW(WriteScan(PathOf("full.RA1"), RowNo(1), 1), RuntimeError);
}

// A single species in two sets with zero offsets of 0.125 and 0.25; the second one carries a pseudo-point.
struct ResidualWriting : ScanWriting {
    ResidualWriting() {
        for (long row : {1L, 2L}) {
            EXPECT_TRUE(Read(ScanText(ManyPoints(20)), row).Ok);
            Work.ScanFile[row] = "x";
            Work.IncludeSet[row] = 1;
        }
        Work.FitRange[0][2] = 3;
        Work.FitRange[1][2] = 12;
        Work.ConcConstraintA[1] = 0.5F;
        Work.ConstraintFlags = ConcentrationBit;
        BuildFitData();
        Work.Parms[0] = 1.5F;
        Work.Parms[8] = Work.Parms[11] = -3.0F;
        Work.Parms[10] = 0.125F;
        Work.Parms[13] = 0.25F;
    }
    // value - (exp(sigma x + ln c) + offset) of a point of the second set.
    static double Residual(long p, double offset) {
        const auto half = [](long i) {
            const double r = Work.ScanRadius[2][i];
            return r * r / 2.0;
        };
        const double x = half(p) - (half(3) + half(12)) / 2.0;
        return Work.ScanValue[2][p] - (std::exp(1.5 * x - 3.0) + offset);
    }
    void ExpectFile(const std::string& path, const std::string& comment, double offset) {
        ASSERT_TRUE(ReadScan(path, RowNo(3)).Ok);
        EXPECT_EQ(Work.ScanComment[3], comment);
        EXPECT_EQ(Work.ScanRPM[3], Work.ScanRPM[2]);
        ASSERT_EQ(Work.ScanPoints[3], 10);
        for (long p = 1; p <= 10; ++p) {
            EXPECT_EQ(Work.ScanRadius[3][p], Work.ScanRadius[2][p + 2]);
            EXPECT_NEAR(Work.ScanValue[3][p], Residual(p + 2, offset), 1e-6);
        }
    }
};

TEST_F(ResidualWriting, TheResidualsOfASet) {
    const Workspace before = Work;
    ASSERT_TRUE(WriteResiduals(PathOf("r.RA1"), SetNo(2), 1, false));
    EXPECT_TRUE(Work == before);
    ExpectFile(PathOf("r.RA1"), "residuals", 0.25);
}

TEST_F(ResidualWriting, TheZeroOffsetStaysInTheFileOnRequest) {
    const Workspace before = Work;
    ASSERT_TRUE(WriteResiduals(PathOf("r.RA1"), SetNo(2), 1, true));
    EXPECT_TRUE(Work == before);
    ExpectFile(PathOf("r.RA1"), "residuals with no offset", 0.0);
}

TEST_F(ResidualWriting, TheFittedFunctionIsAsBeforeAfterwards) {
    const double value = FitFunction(25);
    ASSERT_TRUE(WriteResiduals(PathOf("r.RA1"), SetNo(2), 1, true));
    EXPECT_EQ(FitFunction(25), value);
}

TEST_F(ResidualWriting, AFaultOfTheModelIsToldOnceAndWritesNothing) {
    Work.Parms[0] = 1e30F;
    script.AnswerAllMessages(BoxAnswer::Ok);
    EXPECT_FALSE(WriteResiduals(PathOf("r.RA1"), SetNo(2), 1, true));
    EXPECT_EQ(script.Asked.size(), 1U);
    EXPECT_FALSE(Host.FileExists(PathOf("r.RA1")));
    EXPECT_EQ(Work.AbortFit, 0);
    EXPECT_EQ(Work.Parms[13], 0.25F);
}

} // namespace
} // namespace Quillon

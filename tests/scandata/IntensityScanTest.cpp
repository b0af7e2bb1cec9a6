// Scans of intensities, against logarithms taken here.
#include "scandata/reader/IntensityScan.h"
#include "ScanFixture.h"
#include "scandata/reader/AdoptScan.h"
#include "scandata/table/LeftOut.h"

#include <cmath>
#include <cstdio>

namespace Quillon {
namespace {

const RowNo Row1(1);
const std::string IntensityHeader = "I 1 20.0 10000 0084667 9.2280E10 280 32";

std::string Line(double radius, double first, double second) {
    char text[80];
    std::snprintf(text, sizeof text, "%.4f %.8E %.8E", radius, first, second);
    return text;
}

// 20 readings with a lamp that varies; the absorbance rises from mean - 0.1 to mean + 0.1.
std::string PairText(bool sampleFirst, double mean = 0.5) {
    std::vector<std::string> lines;
    for (int i = 0; i < 20; ++i) {
        const double reference = 9000.0 + 300.0 * std::sin(static_cast<double>(i));
        const double sample = reference * std::pow(10.0, -(mean - 0.1 + 0.2 * i / 19.0));
        lines.push_back(sampleFirst ? Line(6.0 + 0.003 * i, sample, reference)
                                    : Line(6.0 + 0.003 * i, reference, sample));
    }
    return ScanText(lines, IntensityHeader);
}

struct IntensityTest : ScanTest {
    ScanReadResult Adopt(const std::string& text, long row = 1, const std::string& name = "00001.RI1") {
        return AdoptScan(script.MakeFile(name, text), RowNo(row));
    }
    void ExpectAbsorbance() {
        ASSERT_EQ(Work.ScanPoints[1], 20);
        for (int i = 0; i < 20; ++i)
            EXPECT_NEAR(static_cast<double>(Work.ScanValue[1][i + 1]), 0.4 + 0.2 * i / 19.0, 1e-7) << i;
    }
};

TEST_F(IntensityTest, BecomesAbsorbanceWhicheverColumnIsTheSample) {
    for (const bool sampleFirst : {true, false}) {
        ASSERT_TRUE(Adopt(PairText(sampleFirst)).Ok);
        EXPECT_EQ(Work.IntensityOrder[1],
                  sampleFirst ? IntensityOrders::SampleFirst : IntensityOrders::ReferenceFirst);
        ExpectAbsorbance();
        EXPECT_EQ(Work.DataTypeName, "Absorbance");
        EXPECT_FALSE(Work.InterferenceData);
    }
}

TEST_F(IntensityTest, IsKnownByItsTypeLetterAndByItsName) {
    ASSERT_TRUE(Adopt(PairText(true), 1, "00001.RA1").Ok) << "letter I";
    ExpectAbsorbance();
    std::string named = PairText(true);
    named.replace(named.find("I 1 "), 1, "R");
    ASSERT_TRUE(Adopt(named).Ok);
    ExpectAbsorbance();
    EXPECT_FALSE(IsIntensityScan("R 1", "00001.RA1"));
    EXPECT_FALSE(IsIntensityScan("R 1", "RI"));
}

TEST_F(IntensityTest, ReadingsThatAreNotPositiveAreLeftOutAndCounted) {
    const ScanReadResult read = Adopt(
        ScanText({Line(6.0, 100, 1000), Line(6.003, 0, 1000), Line(6.006, 100, -5), Line(6.009, 10, 1000)},
                 IntensityHeader));
    ASSERT_TRUE(read.Ok) << read.Failure.Reason;
    ASSERT_EQ(Work.ScanPoints[1], 2);
    EXPECT_FLOAT_EQ(Work.ScanValue[1][1], 1.0F);
    EXPECT_FLOAT_EQ(Work.ScanValue[1][2], 2.0F);
    EXPECT_EQ(CountLeftOut(Row1, LeftOutBy::Intensity), 2);
    EXPECT_EQ(IntensityRemark(Row1),
              "intensities, taken as absorbance with the sample in the first column; 2 "
              "readings that are not above 0 left out");
}

TEST_F(IntensityTest, OneWithoutLightIsNoScan) {
    const ScanReadResult read = Adopt(ScanText({Line(6.0, 0, 1000), Line(6.003, 0, 1000)}, IntensityHeader));
    EXPECT_FALSE(read.Ok);
    EXPECT_EQ(read.Failure.Reason, "there are no points: at no radius are both intensities above 0");
}

TEST_F(IntensityTest, ALineWithOneReadingIsTold) {
    const ScanReadResult read = Adopt(ScanText({Line(6.0, 100, 1000), "6.003 99"}, IntensityHeader));
    EXPECT_FALSE(read.Ok);
    EXPECT_EQ(read.Failure.Reason,
              "line 4, '6.003 99': an intensity scan has two readings at each radius, of "
              "sample and reference");
}

TEST_F(IntensityTest, ARadiusOfZeroEndsItTheSameWay) {
    ASSERT_TRUE(Adopt(ScanText({Line(6.0, 100, 1000), Line(6.003, 100, 1000), "0 0 0"}, IntensityHeader)).Ok);
    EXPECT_EQ(Work.ScanPoints[1], 2);
    EXPECT_EQ(ReadingsOf(Row1), 2);
}

TEST_F(IntensityTest, AnotherOrderChangesTheSign) {
    ASSERT_TRUE(Adopt(PairText(true)).Ok);
    const OneBased<float> before = Work.ScanValue[1];
    Exclude(Row1, {6.03F, 6.03F});
    SetIntensityOrder(Row1, IntensityOrders::ReferenceFirst);
    EXPECT_NEAR(static_cast<double>(Work.ScanValue[1][1]), -static_cast<double>(before[1]), 1e-7);
    SetIntensityOrder(Row1, IntensityOrders::SampleFirst);
    TakeBack(Row1, [](const LeftOutReading&) { return true; });
    EXPECT_TRUE(Work.ScanValue[1] == before) << "there and back changes no bit";
}

// A dilute sample whose mean comes out below 0 by itself goes with the others of its cell, speed and
// wavelength.
TEST_F(IntensityTest, OneGroupHasOneOrder) {
    ASSERT_TRUE(Adopt(PairText(true), 1, "00001.RI1").Ok);
    ASSERT_TRUE(Adopt(PairText(true, -0.01), 2, "00002.RI1").Ok);
    ASSERT_TRUE(Adopt(PairText(true, -0.01), 3, "00002.RI2").Ok) << "another cell";
    EXPECT_EQ(Work.IntensityOrder[2], IntensityOrders::ReferenceFirst);
    DecideIntensityOrders({RowNo(1), RowNo(2), RowNo(3)});
    EXPECT_EQ(Work.IntensityOrder[1], IntensityOrders::SampleFirst);
    EXPECT_EQ(Work.IntensityOrder[2], IntensityOrders::SampleFirst);
    EXPECT_EQ(Work.IntensityOrder[3], IntensityOrders::ReferenceFirst);
    EXPECT_NEAR(static_cast<double>(Work.ScanValue[2][1]), -0.11, 1e-7);
}

TEST_F(IntensityTest, AScanOfAbsorbanceInItsPlaceLeavesNothingOfIt) {
    ASSERT_TRUE(Adopt(PairText(true)).Ok);
    ASSERT_TRUE(Adopt(ScanText(ManyPoints(5)), 1, "00001.RA1").Ok);
    EXPECT_EQ(Work.IntensityOrder[1], IntensityOrders::None);
    EXPECT_TRUE(Work.Intensity[0][1].Empty());
    EXPECT_EQ(IntensityRemark(Row1), "");
}

TEST_F(IntensityTest, SpansAreThoseOfTheRange) {
    ASSERT_TRUE(Adopt(ScanText({Line(6.0, 100, 1000), Line(6.003, 200, 1000), Line(6.006, 300, 2000)},
                               IntensityHeader))
                    .Ok);
    Work.FitRange[0][1] = 2;
    const auto [sample, reference] = IntensitySpans(Row1);
    EXPECT_EQ(sample.Lowest, 200.0F);
    EXPECT_EQ(sample.Mean, 250.0F);
    EXPECT_EQ(reference.Highest, 2000.0F);
}

} // namespace
} // namespace Quillon

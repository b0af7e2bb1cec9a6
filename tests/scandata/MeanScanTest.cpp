// The mean of several scans, against means taken here and the noise that it must have.
#include "scandata/reader/MeanScan.h"
#include "ScanFixture.h"
#include "scandata/range/ProposeRange.h"
#include "scandata/reader/ScanWriter.h"
#include "scandata/table/LeftOut.h"
#include "scandata/table/TableRows.h"
#include "tests/support/Simulate.h"

#include <cmath>
#include <cstdio>

namespace Quillon {
namespace {

const RowNo MeanRow(1);
using Points = std::vector<std::pair<double, double>>;

double Curve(double r) {
    return 0.3 * std::exp(4.0 * (r - 6.5));
}

Points Grid(double from, long count, const std::function<double(double)>& value = Curve) {
    Points points;
    for (long i = 0; i < count; ++i) {
        const double r = from + 0.003 * static_cast<double>(i);
        points.emplace_back(r, value(r));
    }
    return points;
}

struct MeanScan : ScanTest {
    std::string File(const std::string& name, const Points& points, int averaged = 10,
                     const std::string& start = "R 1 20.0 10000 0084667 9.2280E10 280") {
        std::vector<std::string> lines;
        char text[80];
        for (const auto& [r, y] : points) {
            std::snprintf(text, sizeof text, "%.4f %.9E", r, y);
            lines.push_back(text);
        }
        return script.MakeFile(name, ScanText(lines, start + " " + std::to_string(averaged)));
    }
    static double Value(long p) { return static_cast<double>(Work.ScanValue[MeanRow][p]); }
    void ExpectRefused(const std::vector<std::string>& paths, const std::string& reason) {
        const Workspace before = Work;
        const MeanReadResult read = AdoptMean(paths, MeanRow);
        EXPECT_FALSE(read.Read.Ok);
        EXPECT_EQ(read.Read.Failure.Reason, reason);
        EXPECT_EQ(read.Path, paths.front());
        EXPECT_TRUE(Work.ScanFile == before.ScanFile && Work.ScanValue == before.ScanValue);
    }
};

TEST_F(MeanScan, OfOnePathIsThatScan) {
    ASSERT_TRUE(AdoptMean({File("00001.RA1", Grid(6.0, 20))}, MeanRow).Read.Ok);
    EXPECT_TRUE(Work.MeanOf[1].empty());
    EXPECT_EQ(MeanRemark(MeanRow), "");
    EXPECT_EQ(Work.ScansAveraged[1], 10);
}

TEST_F(MeanScan, CountsEachScanByItsReadings) {
    const std::string a = File("00001.RA1", Grid(6.0, 5, [](double) { return 0.1; }), 10);
    const std::string b = File("00002.RA1", Grid(6.0, 5, [](double) { return 0.4; }), 30);
    ASSERT_TRUE(AdoptMean({a, b}, MeanRow).Read.Ok);
    for (long p = 1; p <= 5; ++p)
        EXPECT_NEAR(Value(p), (10 * 0.1 + 30 * 0.4) / 40.0, 1e-7);
    EXPECT_EQ(Work.ScansAveraged[1], 40);
    EXPECT_EQ(Work.ScanFile[1], "00002.RA1");
    ASSERT_EQ(Work.MeanOf[1].size(), 2U);
    EXPECT_EQ(Work.MeanOf[1][0].File, "00001.RA1");
    EXPECT_EQ(Work.MeanOf[1][1].Sha256, Work.ScanSha256[1]);
    // w (y - mean)^2 summed: 10 0.225^2 + 30 0.075^2, over one degree of freedom and the mean weight of 20.
    const double spread = std::sqrt((10 * 0.225 * 0.225 + 30 * 0.075 * 0.075) / 20.0);
    ASSERT_TRUE(RmsBetweenScans(MeanRow));
    EXPECT_NEAR(*RmsBetweenScans(MeanRow), spread, 1e-6);
}

TEST_F(MeanScan, TakesTheRadiiOfTheLastAndReadsTheOthersBetweenTheirPoints) {
    const auto line = [](double r) { return 2.0 * r - 11.0; };
    const std::string a = File("00001.RA1", Grid(6.001, 30, line));
    const std::string b = File("00002.RA1", Grid(6.0, 30, line));
    const MeanReadResult read = AdoptMean({a, b}, MeanRow);
    ASSERT_TRUE(read.Read.Ok);
    ASSERT_EQ(Work.ScanPoints[1], 29) << "the first scan does not reach 6.0";
    EXPECT_EQ(read.Read.Remark,
              "1 of 30 readings are not in the mean, since one of the scans does not reach their radii");
    EXPECT_FLOAT_EQ(Work.ScanRadius[1][1], 6.003F);
    for (long p = 1; p <= 29; ++p)
        EXPECT_NEAR(Value(p), line(static_cast<double>(Work.ScanRadius[1][p])), 2e-6);
    EXPECT_LT(*RmsBetweenScans(MeanRow), 1e-5);
}

TEST_F(MeanScan, OfNScansHasTheirNoiseOverTheRootOfN) {
    // Over 5 means of 4 scans with 400 readings each the squares over sd^2 / 4 are chi-squared with 2000
    // degrees of freedom, whose standard deviation is sqrt(4000).
    constexpr double Sd = 0.01;
    NoiseSource noise(11);
    double chi = 0.0, between = 0.0;
    for (int mean = 0; mean < 5; ++mean) {
        std::vector<std::string> paths;
        for (int k = 1; k <= 4; ++k)
            paths.push_back(File("0000" + std::to_string(k) + ".RA1",
                                 Grid(6.0, 400, [&](double r) { return Curve(r) + Sd * noise.Gaussian(); })));
        ASSERT_TRUE(AdoptMean(paths, MeanRow).Read.Ok);
        for (long p = 1; p <= 400; ++p)
            chi += std::pow(Value(p) - Curve(6.0 + 0.003 * static_cast<double>(p - 1)), 2) / (Sd * Sd / 4.0);
        between += std::pow(*RmsBetweenScans(MeanRow), 2) / 5.0;
    }
    EXPECT_NEAR(chi, 2000.0, 4.0 * std::sqrt(4000.0));
    // 6000 degrees of freedom between them: the variance of one scan.
    EXPECT_NEAR(between / (Sd * Sd), 1.0, 4.0 * std::sqrt(2.0 / 6000.0));
}

TEST_F(MeanScan, WeightsMakeTheMostOfScansOfUnlikeCounts) {
    // Noise sd / sqrt(w) of counts 10, 20 and 50 leaves sd / sqrt(80).
    constexpr double Sd = 0.05;
    NoiseSource noise(5);
    std::vector<std::string> paths;
    for (const int w : {10, 20, 50})
        paths.push_back(File(
            "000" + std::to_string(w) + ".RA1",
            Grid(6.0, 600, [&](double r) { return Curve(r) + Sd / std::sqrt(w) * noise.Gaussian(); }), w));
    ASSERT_TRUE(AdoptMean(paths, MeanRow).Read.Ok);
    double chi = 0.0;
    for (long p = 1; p <= 600; ++p)
        chi += std::pow(Value(p) - Curve(6.0 + 0.003 * static_cast<double>(p - 1)), 2) / (Sd * Sd / 80.0);
    EXPECT_NEAR(chi, 600.0, 4.0 * std::sqrt(1200.0));
}

TEST_F(MeanScan, RefusesWhatIsAnotherMeasurement) {
    const std::string last = File("00009.RA1", Grid(6.0, 20));
    const std::string cell = File("00001.RA2", Grid(6.0, 20));
    const std::string speed = File("00002.RA1", Grid(6.0, 20), 10, "R 1 20.0 10200 0084667 9.2280E10 280");
    const std::string wavelength =
        File("00003.RA1", Grid(6.0, 20), 10, "R 1 20.0 10050 0084667 9.2280E10 284");
    const std::string fringes = File("00004.txt", Grid(6.0, 20), 10, "P 1 20.0 10000 0084667 9.2280E10 280");
    const std::string apart = File("00005.RA1", Grid(8.0, 20));
    ExpectRefused({cell, last}, "cell 2 is not the 1 of the last scan of the mean");
    ExpectRefused({speed, last}, "the speed of 10200 rpm is not the 10000 rpm of the last scan of the mean");
    ExpectRefused({wavelength, last},
                  "the wavelength of 284 nm is not the 280 nm of the last scan of the mean");
    ExpectRefused({fringes, last}, "it is not of the kind of the last scan of the mean");
    EXPECT_EQ(AdoptMean({apart, last}, MeanRow).Read.Failure.Reason,
              "the scans of the mean do not have three radii in common");
    EXPECT_TRUE(Work.ScanFile[1].empty());
    const MeanReadResult missing = AdoptMean({"nowhere.RA1", last}, MeanRow);
    EXPECT_EQ(missing.Path, "nowhere.RA1");
    EXPECT_TRUE(missing.Read.Failure.Missing);
}

TEST_F(MeanScan, TellsThatAScanStandsTwice) {
    Host.Sha256 = [](std::string_view bytes) { return std::string(64, bytes.empty() ? 'a' : 'b'); };
    const std::string a = File("00001.RA1", Grid(6.0, 20)), b = File("00002.RA1", Grid(6.0, 20));
    const MeanReadResult read = AdoptMean({a, b}, MeanRow);
    ASSERT_TRUE(read.Read.Ok);
    EXPECT_EQ(read.Read.Remark, "00002.RA1 holds the same bytes as 00001.RA1, so that the mean is less "
                                "certain than its count of scans says");
    EXPECT_EQ(MeanRemark(MeanRow),
              "the mean of 2 scans (00001.RA1, 00002.RA1), rms between them 0.00E00 over the range");
}

TEST_F(MeanScan, OfIntensitiesIsTheMeanOfTheirAbsorbances) {
    const auto file = [&](const std::string& name, double factor, double absorbance) {
        std::vector<std::string> lines;
        char text[80];
        for (int i = 0; i < 10; ++i) {
            const double reference = factor * (9000.0 + 100.0 * i);
            const double sample = i == 4 ? -1.0 : reference * std::pow(10.0, -absorbance - 0.01 * i);
            std::snprintf(text, sizeof text, "%.4f %.9E %.9E", 6.0 + 0.003 * i, sample, reference);
            lines.push_back(text);
        }
        return script.MakeFile(name, ScanText(lines, "I 1 20.0 10000 0084667 9.2280E10 280 10"));
    };
    ASSERT_TRUE(AdoptMean({file("00001.RI1", 1.0, 0.4), file("00002.RI1", 1.3, 0.6)}, MeanRow).Read.Ok);
    ASSERT_EQ(Work.ScanPoints[1], 9);
    EXPECT_EQ(CountLeftOut(MeanRow, LeftOutBy::Intensity), 1);
    EXPECT_EQ(Work.IntensityOrder[1], IntensityOrders::SampleFirst);
    for (long p = 1; p <= 9; ++p)
        EXPECT_NEAR(Value(p), 0.5 + 0.01 * static_cast<double>(p <= 4 ? p - 1 : p), 2e-6) << p;
    EXPECT_NEAR(*RmsBetweenScans(MeanRow), 0.2 / std::sqrt(2.0), 1e-5);
}

TEST_F(MeanScan, RmsGoesByTheReadingsOfTheRange) {
    // Equal up to the 10th reading, 0.2 apart behind it.
    const std::string a = File("00001.RA1", Grid(6.0, 20, [](double) { return 0.1; }));
    const std::string b = File("00002.RA1", Grid(6.0, 20, [](double r) { return r < 6.0285 ? 0.1 : 0.3; }));
    ASSERT_TRUE(AdoptMean({a, b}, MeanRow).Read.Ok);
    Work.FitRange[1][1] = 10;
    EXPECT_NEAR(*RmsBetweenScans(MeanRow), 0.0, 1e-7);
    ASSERT_TRUE(LeaveOut(MeanRow, {1, 2}, LeftOutBy::Hand)); // the range is now readings 3 to 10
    EXPECT_NEAR(*RmsBetweenScans(MeanRow), 0.0, 1e-7);
    Work.FitRange[1][1] = 12;
    EXPECT_NEAR(*RmsBetweenScans(MeanRow), std::sqrt(4.0 / 12.0 * 0.02), 1e-6);
    CopyRow(MeanRow, RowNo(2));
    EXPECT_EQ(RmsBetweenScans(RowNo(2)), RmsBetweenScans(MeanRow));
    ASSERT_TRUE(AdoptMean({a}, MeanRow).Read.Ok);
    EXPECT_FALSE(RmsBetweenScans(MeanRow)) << "another scan is no mean";
}

TEST_F(MeanScan, NamesOfFieldsTellTheCellAndNotTheEnding) {
    EXPECT_EQ(CellNumberOf("Run7-s0001-c3-s0009-w280-r_-n1.ra1"), 3);
    EXPECT_EQ(CellNumberOf("00001.RA2"), 2);
    const std::string a = File("Run7-s0001-c3-s0008-w280-r_-n1.ra1", Grid(6.0, 20));
    const std::string b = File("Run7-s0001-c2-s0009-w280-r_-n1.ra1", Grid(6.0, 20));
    EXPECT_EQ(AdoptMean({a, b}, MeanRow).Read.Failure.Reason,
              "cell 3 is not the 2 of the last scan of the mean");
}

} // namespace
} // namespace Quillon

// Spikes, growing noise and columns, found in scans whose truth is known.
#include "scandata/range/Spikes.h"
#include "scandata/range/FindColumns.h"
#include "scandata/table/TableRows.h"
#include "tests/support/Simulate.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

// 100 readings of a column at equilibrium, steep at its end; noise is a function of the signal.
template <class Noise> OneBased<float> Gradient(std::uint64_t seed, Noise&& noise, long points = 100) {
    NoiseSource source(seed);
    OneBased<float> values(points);
    for (long p = 1; p <= points; ++p) {
        const double r = 6.85 + 0.3 * static_cast<double>(p - 1) / static_cast<double>(points - 1);
        const double signal = 2.0 * std::exp(2.0 * (r * r - 7.15 * 7.15));
        values[p] = static_cast<float>(signal + noise(signal) * source.Gaussian());
    }
    return values;
}

OneBased<float> Radii(long points = 100) {
    OneBased<float> radii(points);
    for (long p = 1; p <= points; ++p)
        radii[p] =
            static_cast<float>(6.85 + 0.3 * static_cast<double>(p - 1) / static_cast<double>(points - 1));
    return radii;
}

double Even(double) {
    return 0.005;
}

TEST(Spikes, AreFoundWhereTheyWerePut) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        OneBased<float> values = Gradient(seed, Even);
        values[40] += 0.08F; // 16 times the noise
        values[70] -= 0.08F;
        values[71] -= 0.08F;
        EXPECT_EQ(FindSpikes(Radii(), values, 1, 100), (std::vector<long>{40, 70, 71})) << seed;
    }
}

// With normal noise a reading beyond six deviations is one of 5e8.
TEST(Spikes, AreRarelySeenInNoiseAlone) {
    long found = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed)
        found += static_cast<long>(FindSpikes(Radii(), Gradient(seed, Even), 1, 100).size());
    EXPECT_LE(found, 6) << "of 30000 readings";
}

TEST(Spikes, ASteepGradientHasNone) {
    EXPECT_TRUE(FindSpikes(Radii(), Gradient(1, [](double) { return 0.0; }), 1, 100).empty());
    const OneBased<float> flat(100, 0.3F);
    EXPECT_TRUE(FindSpikes(Radii(), flat, 1, 100).empty());
}

TEST(Spikes, NoiseThatGrowsWithTheSignalIsNone) {
    long found = 0;
    for (std::uint64_t seed = 1; seed <= 100; ++seed)
        found += static_cast<long>(
            FindSpikes(Radii(), Gradient(seed, [](double y) { return 0.004 * (1.0 + 2.0 * y * y); }), 1, 100)
                .size());
    EXPECT_LE(found, 40) << "of 10000 readings, at nine times the noise of the others";
}

TEST(Spikes, FewPointsHaveNone) {
    OneBased<float> values = Gradient(1, Even);
    values[5] += 1.0F;
    EXPECT_TRUE(FindSpikes(Radii(), values, 1, 29).empty());
    EXPECT_FALSE(FindSpikes(Radii(), values, 1, 30).empty());
}

// --- the ceiling -------------------------------------------------------------------------------------------

TEST(Ceiling, IsProposedWhereTheNoiseGrows) {
    int near = 0;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        const OneBased<float> values = Gradient(
            seed, [](double y) { return y > 1.2 ? 0.05 : 0.005; }, 300);
        const float ceiling = ProposeCeiling(values, 1, 300);
        near += std::fabs(ceiling - 1.2F) < 0.15F;
    }
    EXPECT_GE(near, 36);
}

TEST(Ceiling, IsNoneInEvenNoise) {
    int proposed = 0;
    for (std::uint64_t seed = 1; seed <= 200; ++seed)
        proposed += ProposeCeiling(Gradient(seed, Even, 300), 1, 300) > 0.0F;
    EXPECT_LE(proposed, 6);
}

TEST(Ceiling, IsNoneWithoutNoiseOrPoints) {
    EXPECT_EQ(ProposeCeiling(Gradient(
                                 1, [](double) { return 0.0; }, 30),
                             1, 30),
              0.0F);
    EXPECT_EQ(ProposeCeiling(OneBased<float>(100, 0.5F), 1, 100), 0.0F);
}

// --- columns -----------------------------------------------------------------------------------------------

// A scan from 5.8 to 7.2 cm, 0.003 cm apart, in row 1: columns between radii hold a gradient, the rest is
// noise of half a unit.
struct Columns : testing::Test {
    struct Column {
        double Inner, Outer;
    };
    Columns() {
        Work = FreshWorkspace();
        Work.RotorExpansion = 0.0F;
        const float radii[] = {5.85F, 0, 6.35F, 0, 6.85F, 0, 0, 0, 6.15F, 0, 6.65F, 0, 7.15F, 0, 0, 0};
        for (long i = 0; i < 16; ++i)
            Work.ChannelRadii[i] = radii[i];
        Work.CenterpieceType[1] = Centerpiece::SixChannel;
        Work.ScanFile[1] = "00001.RA1";
    }
    static void Scan(const std::vector<Column>& columns) {
        NoiseSource source(3);
        const long points = 467;
        Work.ScanRadius[1].Recreate(points);
        Work.ScanValue[1].Recreate(points);
        Work.ScanPoints[1] = points;
        for (long p = 1; p <= points; ++p) {
            const double r = 5.8 + 0.003 * static_cast<double>(p - 1);
            double value = 0.5 * source.Gaussian();
            for (const Column& column : columns)
                if (r >= column.Inner && r <= column.Outer)
                    value = 0.3 * std::exp(0.1 * (r * r - column.Inner * column.Inner)) +
                            0.005 * source.Gaussian();
            Work.ScanRadius[1][p] = static_cast<float>(r);
            Work.ScanValue[1][p] = static_cast<float>(value);
        }
    }
    static double Inner(const ScanColumn& column) {
        return static_cast<double>(Work.ScanRadius[1][column.Range.First]);
    }
    static double Outer(const ScanColumn& column) {
        return static_cast<double>(Work.ScanRadius[1][column.Range.Last]);
    }
};

TEST_F(Columns, OfSixChannelsAreThree) {
    Scan({{5.87, 6.12}, {6.37, 6.62}, {6.87, 7.12}});
    const std::vector<ScanColumn> found = FindColumns(RowNo(1));
    ASSERT_EQ(found.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(found[i].Channel, static_cast<int>(i) + 1);
        EXPECT_NEAR(Inner(found[i]), 5.87 + 0.5 * static_cast<double>(i), 0.0121);
        EXPECT_NEAR(Outer(found[i]), 6.12 + 0.5 * static_cast<double>(i), 0.0121);
        EXPECT_GE(Inner(found[i]), 5.87 + 0.5 * static_cast<double>(i));
        EXPECT_LE(Outer(found[i]), 6.12 + 0.5 * static_cast<double>(i));
    }
}

TEST_F(Columns, AnEmptyChannelIsNone) {
    Scan({{5.87, 6.12}, {6.87, 7.12}});
    const std::vector<ScanColumn> found = FindColumns(RowNo(1));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].Channel, 1);
    EXPECT_EQ(found[1].Channel, 3);
}

TEST_F(Columns, ALongColumnIsOneWithoutChannel) {
    Scan({{6.2, 7.1}});
    const std::vector<ScanColumn> found = FindColumns(RowNo(1));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Channel, 0);
    EXPECT_NEAR(Inner(found[0]), 6.2, 0.0121);
    EXPECT_NEAR(Outer(found[0]), 7.1, 0.0121);
    Scan({{5.87, 6.12}, {6.37, 6.62}});
    Work.CenterpieceType[1] = Centerpiece::TwoChannel;
    EXPECT_EQ(FindColumns(RowNo(1)).size(), 1U);
}

TEST_F(Columns, AScanWithoutABreakHasNoneToPropose) {
    Scan({{5.0, 8.0}});
    EXPECT_TRUE(FindColumns(RowNo(1)).empty());
}

TEST_F(Columns, GetALineEach) {
    Scan({{5.87, 6.12}, {6.37, 6.62}, {6.87, 7.12}});
    CopyRow(RowNo(1), RowNo(2));
    Work.ScanFile[2] = "00002.RA1";
    EXPECT_EQ(TakeColumns(RowNo(1), FindColumns(RowNo(1))), 0);
    for (const long row : {1, 2, 3}) {
        EXPECT_EQ(Work.ScanFile[row], "00001.RA1");
        EXPECT_EQ(Work.DataChannel[row], row);
        EXPECT_EQ(Work.IncludeSet[row], row == 1 ? Work.IncludeSet[1] : 1);
    }
    EXPECT_EQ(Work.ScanFile[4], "00002.RA1");
    for (long row = 5; row <= 18; ++row)
        Work.ScanFile[row] = "x";
    EXPECT_EQ(TakeColumns(RowNo(1), FindColumns(RowNo(1))), 2) << "there is no room for two more";
}

} // namespace
} // namespace Quillon

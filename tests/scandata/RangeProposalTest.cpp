// Ranges proposed from a scan, and what is said against the one that was chosen.
#include "ScanFixture.h"
#include "scandata/range/FindColumns.h"
#include "scandata/range/ProposeRange.h"
#include "scandata/range/RangeDoubts.h"
#include "scandata/table/DataSetTable.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <random>

namespace Quillon {
namespace {

// An equilibrium column of 0.01 cm from point to point between two breaks of the signal: points 1..10 and
// 61..70 are noise of half a unit, the others rise exponentially with a noise of the size given.
OneBased<float> Column(double noise, double steepness = 3.0) {
    std::mt19937 random(7);
    std::normal_distribution<double> normal;
    OneBased<float> values(70);
    for (long p = 1; p <= 70; ++p) {
        const bool column = p > 10 && p <= 60;
        const double signal = column ? 0.2 * std::exp(steepness * static_cast<double>(p - 10) / 50.0) : 0.0;
        values[p] = static_cast<float>(signal + normal(random) * (column ? noise : 0.5));
    }
    return values;
}

bool ReadExample(Script& script, const std::string& folder, const std::string& file) {
    std::ifstream stream(std::string(QUILLON_SOURCE) + "/examples/" + folder + "/" + file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const std::string path = script.MakeFile(file, text);
    Work.ChosenPath = path;
    Work.ChosenName = file;
    return !text.empty() && ReadScan(path, RowNo(1)).Ok;
}

// A range against the row's: within 0.01 cm, by radii that are written with four decimals.
void ExpectRange(const std::string& file, RowNo row, const PointRange& range) {
    ASSERT_GT(range.First, 0) << file;
    const OneBased<float>& radii = Work.ScanRadius[row];
    EXPECT_NEAR(radii[range.First], radii[Work.FitRange[0][row]], 0.01001) << file;
    EXPECT_NEAR(radii[range.Last], radii[Work.FitRange[1][row]], 0.01001) << file;
}

TEST(RangeProposal, IsTheLongestStretchWithoutABreakLessTwoPointsAtEachEnd) {
    // y = 0 but for a spike of 1 at points 5 and 20 of 30: bends at 4, 5, 6 and 19, 20, 21.
    OneBased<float> values(30);
    values[5] = values[20] = 1.0F;
    EXPECT_EQ(ProposeRange(values, 1, 30), (PointRange{9, 16})); // of 7..18
    EXPECT_EQ(ProposeRange(values, 1, 4), PointRange{}); // two points are left, one is cut on either side
    EXPECT_EQ(ProposeRange(values, 1, 2), PointRange{});
}

TEST(RangeProposal, StaysWithinTheColumnForQuietAndNoisyScans) {
    for (const double noise : {0.0005, 0.003, 0.006, 0.01}) {
        const PointRange range = ProposeRange(Column(noise), 1, 70);
        EXPECT_GE(range.First, 11) << noise;
        EXPECT_LE(range.First, 16) << noise;
        EXPECT_GE(range.Last, 55) << noise;
        EXPECT_LE(range.Last, 60) << noise;
    }
}

TEST(RangeProposal, OfARowKeepsToItsChannel) {
    Work = FreshWorkspace();
    const RowNo row(3);
    Work.RotorExpansion = 0.0F;
    Work.ScanValue[row] = Column(0.001);
    Work.ScanRadius[row].Recreate(70);
    for (long p = 1; p <= 70; ++p)
        Work.ScanRadius[row][p] = 6.0F + 0.01F * static_cast<float>(p);
    Work.ScanPoints[row] = 70;
    const PointRange whole = ProposeRangeOf(row);
    EXPECT_EQ(whole, ProposeRange(Work.ScanValue[row], 1, 70));
    Work.CenterpieceType[row] = Centerpiece::SixChannel;
    Work.DataChannel[row] = Channel::B;
    Work.ChannelRadii[2] = 6.195F; // points 20 to 40
    Work.ChannelRadii[10] = 6.405F;
    Work.ChannelRadii[4] = 6.405F; // where the next one begins
    const PointRange channel = ProposeRangeOf(row);
    EXPECT_EQ(channel, (PointRange{23, 37})); // bends are asked of 21..39
    Work.ChannelRadii[8] = 6.155F;            // channel A ends before point 16, C begins behind point 45
    Work.ChannelRadii[4] = 6.455F;
    EXPECT_EQ(ProposeRangeOf(row), (PointRange{19, 42}));
    Work.ChannelRadii[8] = 6.055F; // the column breaks before A ends: it begins at point 11, bends at 11
    EXPECT_EQ(ProposeRangeOf(row), (PointRange{14, 42}));
    Work.CenterpieceType[row] = Centerpiece::TwoChannel; // which has no channels
    EXPECT_EQ(ProposeRangeOf(row), whole);
}

// The innermost column fills less than half of its channel, the second one begins before its channel does.
TEST(RangeProposal, OfTheExamplesOfMonomerAndDimerIsThatOfTheirJob) {
    const float inner[] = {5.87F, 6.37F, 6.87F};
    const float outer[] = {6.12F, 6.62F, 7.12F};
    for (const std::string file : {"00020.RA2", "00033.RA2", "00044.RA2"}) {
        Script script;
        Work = FreshWorkspace();
        ASSERT_TRUE(ReadExample(script, "monomer-dimer", file));
        const RowNo row(1);
        Work.CenterpieceType[row] = Centerpiece::SixChannel;
        const std::vector<ScanColumn> found = FindColumns(row);
        ASSERT_EQ(found.size(), 3U) << file;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(found[i].Channel, static_cast<int>(i) + 1);
            ASSERT_TRUE(SetRadialRange(row, inner[i], outer[i]));
            ExpectRange(file, row, found[i].Range);
            Work.DataChannel[row] = static_cast<std::int16_t>(found[i].Channel);
            EXPECT_EQ(ProposeRangeOf(row), found[i].Range);
        }
    }
}

TEST(RangeProposal, OfTheExamplesOfOneSpeciesIsThatOfTheirJob) {
    for (const std::string file : {"00012.RA1", "00024.RA1", "00036.RA1"}) {
        Script script;
        Work = FreshWorkspace();
        ASSERT_TRUE(ReadExample(script, "single-species", file));
        ASSERT_TRUE(SetRadialRange(RowNo(1), 6.79F, 7.14F));
        ExpectRange(file, RowNo(1), ProposeRangeOf(RowNo(1)));
    }
}

// --- jumps -------------------------------------------------------------------------------------------------

TEST(RangeDoubts, AStepOfMoreThanTenTimesTheMedianIsAJump) {
    OneBased<float> values(12);
    for (long p = 1; p <= 12; ++p)
        values[p] = 0.01F * static_cast<float>(p);
    EXPECT_EQ(FirstJump(values, 1, 12), 0);
    values[8] += 0.08F; // steps of 0.09 and -0.07
    EXPECT_EQ(FirstJump(values, 1, 12), 0);
    values[8] += 0.04F; // 0.13 and -0.11
    EXPECT_EQ(FirstJump(values, 1, 12), 7);
    EXPECT_EQ(FirstJump(values, 8, 12), 8);
    EXPECT_EQ(FirstJump(values, 9, 12), 0);
}

// An edge with a reading in its middle was no jump, since its two steps are alike.
TEST(RangeDoubts, AJumpThatIsSpreadOverTwoOrThreeSteps) {
    const auto edge = [](const std::vector<float>& heights) {
        OneBased<float> values(20);
        for (long p = 1; p <= 20; ++p) {
            const auto place =
                static_cast<std::size_t>(std::clamp(p - 10, 0L, static_cast<long>(heights.size())));
            values[p] = 0.01F * static_cast<float>(p) + (place > 0 ? heights[place - 1] : 0.0F);
        }
        return values;
    };
    EXPECT_EQ(FirstJump(edge({0.5F, 1.1F}), 1, 20), 10);
    EXPECT_EQ(FirstJump(edge({-0.6F, -1.1F}), 1, 20), 10);
    EXPECT_EQ(FirstJump(edge({0.3F, 0.7F, 1.0F}), 1, 20), 10);
    EXPECT_EQ(FirstJump(edge({0.5F, 1.1F}), 11, 20), 11) << "the second half alone";
    EXPECT_EQ(FirstJump(edge({0.05F, 0.1F}), 1, 20), 0) << "too small";
    EXPECT_EQ(FirstJump(edge({0.3F, 0.6F, 0.9F, 1.2F, 1.5F}), 1, 20), 0) << "a slope of its own";
}

TEST(RangeDoubts, ASteepEndIsNoJump) {
    // The last step is thirty times the median one, and the one before it nearly as much.
    EXPECT_EQ(FirstJump(Column(0.0, 7.0), 11, 60), 0);
    EXPECT_GT(FirstJump(Column(0.001), 1, 70), 0);
    EXPECT_EQ(FirstJump(Column(0.005), 11, 60), 0);
}

TEST(RangeDoubts, ReadingsThatRepeatMakeNoJumpOfTheNextOne) {
    OneBased<float> values(20);
    for (long p = 1; p <= 20; ++p)
        values[p] = 0.001F * static_cast<float>(p / 4); // three of four steps are 0
    EXPECT_EQ(FirstJump(values, 1, 20), 0);
    EXPECT_EQ(FirstJump(OneBased<float>(20, 0.5F), 1, 20), 0);
}

struct Doubts : ScanTest {
    Doubts() {
        std::vector<std::string> points = ManyPoints(30);
        points[20] = "6.020000 1.5";
        Read(ScanText(points));
    }
    const RowNo row{1};
};

TEST_F(Doubts, AWholeScanIsDoubtedUnlessSomeoneNamedIt) {
    EXPECT_EQ(
        RangeDoubts(row),
        "no fitting range is chosen, so that the whole scan is fitted; it holds jumps, the first at 6.0190 "
        "cm: meniscus, bottom or the edge of a column is then fitted as signal");
    EXPECT_EQ(
        RangeDoubts(row, true),
        "the fitting range 6.0000 to 6.0290 cm holds jumps, the first at 6.0190 cm: meniscus, bottom or the "
        "edge of a column is then fitted as signal");
    Work.ScanValue[1][21] = 0.021F;
    EXPECT_EQ(RangeDoubts(row), "no fitting range is chosen, so that the whole scan is fitted, meniscus and "
                                "bottom too where it holds them");
    EXPECT_EQ(RangeDoubts(row, true), "");
    Work.DataChannel[1] = Channel::A;
    EXPECT_EQ(RangeDoubts(row), "");
}

TEST_F(Doubts, ARangeBesideTheJumpIsNot) {
    Work.FitRange[1][1] = 20;
    EXPECT_EQ(RangeDoubts(row), "");
    Work.FitRange[1][1] = 21;
    EXPECT_NE(RangeDoubts(row), "");
}

} // namespace
} // namespace Quillon

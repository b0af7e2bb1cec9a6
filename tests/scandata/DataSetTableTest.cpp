// The rules of the data set table: search, channels, ranges, constraints of a row.
#include "scandata/table/DataSetTable.h"

#include "ScanFixture.h"

namespace Quillon {
namespace {

long Search(const std::vector<float>& values, float target, bool reverse, int mode, long first = 1,
            long last = 0) {
    OneBased<float> array(static_cast<long>(values.size()));
    std::copy(values.begin(), values.end(), array.begin());
    long result = 99;
    SearchArray(array, first, last == 0 ? array.Hi() : last, target, result, reverse, mode);
    return result;
}

TEST(SearchArray, ModeOneStopsAtOrAbove) {
    EXPECT_EQ(Search({1, 2, 3, 2}, 2, false, 1), 2);
    EXPECT_EQ(Search({1, 2, 3, 2}, 1.5F, false, 1), 2);
    EXPECT_EQ(Search({1, 2, 3, 2}, 2, true, 1), 4);
    EXPECT_EQ(Search({1, 2, 3, 2}, 2.5F, true, 1), 3);
    EXPECT_EQ(Search({1, 2, 3, 2}, 4, false, 1), -1);
}

TEST(SearchArray, ModeMinusOneStopsAtOrBelow) {
    EXPECT_EQ(Search({3, 2, 1, 2}, 2, false, -1), 2);
    EXPECT_EQ(Search({1, 2, 3, 4}, 3.5F, true, -1), 3);
    EXPECT_EQ(Search({1, 2, 3, 4}, 3, true, -1), 3);
    EXPECT_EQ(Search({1, 2, 3, 4}, 0.5F, true, -1), -1);
}

TEST(SearchArray, ModeZeroStopsAtAnEqualOneAndMissesWithZero) {
    EXPECT_EQ(Search({1, 2, 3, 2}, 2, false, 0), 2);
    EXPECT_EQ(Search({1, 2, 3, 2}, 2, true, 0), 4);
    EXPECT_EQ(Search({1, 2, 3, 2}, 2.5F, false, 0), 0);
}

TEST(SearchArray, OnlyThePartNamedIsSearched) {
    EXPECT_EQ(Search({1, 2, 3, 4}, 1, false, 1, 2, 3), 2);
    EXPECT_EQ(Search({1, 2, 3, 4}, 4, false, 1, 2, 3), -1);
    EXPECT_EQ(Search({1, 2, 3, 4}, 9, true, -1, 2, 3), 3);
    EXPECT_EQ(Search({1, 2, 3, 4}, 1, false, 0, 3, 2), 0);
}

// A row with the radii given, the values 1, 2, 3, ..., and a rotor that does not stretch.
struct TableRules : ScanTest {
    TableRules() { Work.RotorExpansion = 0.0F; }
    static void Load(long row, const std::vector<float>& radii) {
        const long n = static_cast<long>(radii.size());
        Work.ScanRadius[row].Recreate(n);
        Work.ScanValue[row].Recreate(n);
        for (long i = 1; i <= n; ++i) {
            Work.ScanRadius[row][i] = radii[static_cast<std::size_t>(i - 1)];
            Work.ScanValue[row][i] = static_cast<float>(i);
        }
        Work.ScanPoints[row] = ToInt16(n);
        Work.FitRange[0][row] = 1;
        Work.FitRange[1][row] = ToInt16(n);
    }
    static std::pair<int, int> Range(long row) { return {Work.FitRange[0][row], Work.FitRange[1][row]}; }
    using Points = std::pair<int, int>;
    float inner = 0.0F;
    float outer = 0.0F;
};

TEST_F(TableRules, TheRadiiOfAChannelMoveOutwardWithTheSpeed) {
    Work.RotorExpansion = 1e-11F;
    Work.ScanRPM[10] = 20000.0F;
    Work.CenterpieceType[10] = 3;
    const double stretch = 4e8 * 1e-11; // 0.004 cm
    const double radii[4][2] = {{5.8, 6.35}, {6.4, 6.8}, {6.85, 7.25}, {0.0, 0.0}};
    for (int channel = 1; channel <= 3; ++channel) {
        ChannelRadiiOf(RowNo(10), channel, inner, outer);
        EXPECT_FLOAT_EQ(inner, static_cast<float>(radii[channel - 1][0] + stretch));
        EXPECT_FLOAT_EQ(outer, static_cast<float>(radii[channel - 1][1] + stretch));
    }
}

TEST_F(TableRules, EachCellAndChannelHasItsPlaceAmongTheRadii) {
    for (long i = 0; i <= 15; ++i)
        Work.ChannelRadii[i] = static_cast<float>(i);
    const int longInner[] = {0, 2, 4};
    const int shortInner[] = {1, 3, 5, 7};
    for (int channel = 1; channel <= 4; ++channel) {
        Work.CenterpieceType[1] = 4;
        ChannelRadiiOf(RowNo(1), channel, inner, outer);
        EXPECT_EQ(inner, static_cast<float>(shortInner[channel - 1]));
        EXPECT_EQ(outer, static_cast<float>(shortInner[channel - 1] + 8));
        if (channel == 4) continue;
        Work.CenterpieceType[1] = 3;
        ChannelRadiiOf(RowNo(1), channel, inner, outer);
        EXPECT_EQ(inner, static_cast<float>(longInner[channel - 1]));
        EXPECT_EQ(outer, static_cast<float>(longInner[channel - 1] + 8));
    }
}

TEST_F(TableRules, ACellWithoutChannelsHasNoRadii) {
    for (const auto& [code, channel] :
         std::vector<std::pair<int, int>>{{1, 1}, {0, 1}, {5, 1}, {3, 0}, {3, 5}}) {
        Work.CenterpieceType[1] = ToInt16(code);
        EXPECT_THROW(ChannelRadiiOf(RowNo(1), channel, inner, outer), RuntimeError) << code << " " << channel;
    }
}

TEST_F(TableRules, AChannelStartsOnePointInsideItsFirstPoint) {
    Load(2, {6.3F, 6.39F, 6.4F, 6.5F, 6.7F, 6.8F, 6.81F, 6.9F});
    inner = 6.4F;
    outer = 6.8F;
    EXPECT_TRUE(SetChannelRange(RowNo(2), inner, outer, 2));
    EXPECT_EQ(Range(2), Points(4, 6));
    EXPECT_EQ(inner, 6.5F);
    EXPECT_EQ(outer, 6.8F);
}

TEST_F(TableRules, ALimitBelowAllRadiiGivesTheSecondPoint) {
    Load(1, {6.0F, 6.1F, 6.2F, 6.3F});
    inner = 5.0F;
    outer = 6.25F;
    EXPECT_TRUE(SetChannelRange(RowNo(1), inner, outer, 1));
    EXPECT_EQ(Range(1), Points(2, 3));
    EXPECT_EQ(inner, 6.1F);
    EXPECT_EQ(outer, 6.2F);
}

// A channel that the scan does not reach took the whole scan, meniscus and ribs and all.
TEST_F(TableRules, TheRangeStaysWhereTheScanDoesNotReachTheChannel) {
    Load(1, {6.0F, 6.1F, 7.0F, 7.1F});
    Work.FitRange[0][1] = 2;
    Work.FitRange[1][1] = 3;
    const Workspace before = Work;
    for (const auto& [from, to] : {std::pair{5.0F, 5.9F}, std::pair{7.2F, 7.5F}, std::pair{6.4F, 6.8F}}) {
        inner = from;
        outer = to;
        EXPECT_FALSE(SetChannelRange(RowNo(1), inner, outer, 1)) << from;
        EXPECT_EQ(inner, from);
        EXPECT_EQ(outer, to);
    }
    EXPECT_FALSE(SetChannel(RowNo(1), 2)); // 6.4 to 6.8 cm
    EXPECT_TRUE(Work == before);
    EXPECT_EQ(NoPointsInChannel(RowNo(1), 2), "the scan has no points in channel B, 6.4 to 6.8 cm");
}

TEST_F(TableRules, WithoutAChannelAScanBeyondTheOuterRadiusEndsAtItsLastPoint) {
    Load(1, {6.5F, 6.6F, 6.7F});
    inner = 5.8F;
    outer = 6.35F;
    EXPECT_FALSE(SetChannelRange(RowNo(1), inner, outer, 0));
    EXPECT_EQ(Range(1), Points(1, 3));
    EXPECT_EQ(outer, 6.7F);
}

TEST_F(TableRules, ASinglePointInAChannelIsTaken) {
    Load(1, {6.0F, 6.5F, 7.0F});
    inner = 6.4F;
    outer = 6.8F;
    EXPECT_TRUE(SetChannelRange(RowNo(1), inner, outer, 2));
    EXPECT_EQ(Range(1), Points(2, 2));
}

TEST_F(TableRules, WithoutAChannelTheStartAndTheInnerRadiusAreLeft) {
    Load(1, {6.0F, 6.1F, 6.2F, 6.3F});
    Work.FitRange[0][1] = 2;
    inner = 5.5F;
    outer = 6.25F;
    EXPECT_TRUE(SetChannelRange(RowNo(1), inner, outer, 0));
    EXPECT_EQ(Range(1), Points(2, 3));
    EXPECT_EQ(inner, 5.5F);
    EXPECT_EQ(outer, 6.2F);
}

TEST_F(TableRules, AnEmptyRowHasNoRange) {
    EXPECT_FALSE(SetChannelRange(RowNo(5), inner, outer, 1));
    EXPECT_FALSE(SetChannel(RowNo(5), 0));
    EXPECT_FALSE(SetChannel(RowNo(5), 2));
    EXPECT_FALSE(SetRadialRange(RowNo(5), 6.0F, 7.0F));
}

TEST_F(TableRules, AChannelChangesTheSetAndForgetsItsParameters) {
    Load(12, {6.3F, 6.45F, 6.5F, 6.7F, 6.9F});
    Work.SetParmMemory(1, 12) = Work.SetParmMemory(2, 12) = Work.SetParmMemory(3, 12) = 1.0F;
    EXPECT_TRUE(SetChannel(RowNo(12), 2));
    EXPECT_EQ(Work.DataChannel[12], 2);
    EXPECT_EQ(Range(12), Points(3, 4));
    EXPECT_EQ(Work.SetChanged[12], -1);
    for (long j = 1; j <= 3; ++j)
        EXPECT_EQ(Work.SetParmMemory(j, 12), 0.0F);
    EXPECT_TRUE(SetChannel(RowNo(12), 0));
    EXPECT_EQ(Work.DataChannel[12], 0);
    EXPECT_EQ(Range(12), Points(1, 5));
}

TEST_F(TableRules, AChannelOfACellWithoutChannelsLeavesTheRow) {
    Load(1, {6.0F, 6.1F});
    Work.CenterpieceType[1] = 1;
    const Workspace before = Work;
    EXPECT_THROW(SetChannel(RowNo(1), 2), RuntimeError);
    EXPECT_TRUE(Work == before);
}

TEST_F(TableRules, TheCenterpieceSetsTheRangeOfTheChosenChannelAfresh) {
    Work.ChannelRadii[3] = 6.5F; // channel B of the short cell
    Work.ChannelRadii[11] = 6.75F;
    Load(2, {6.3F, 6.41F, 6.5F, 6.6F, 6.7F, 6.79F, 6.9F});
    SetChannel(RowNo(2), 2);
    EXPECT_EQ(Range(2), Points(3, 6));
    EXPECT_EQ(SetCenterpiece(RowNo(2), 4, inner, outer), ChannelRange::Set);
    EXPECT_EQ(Work.CenterpieceType[2], 4);
    EXPECT_EQ(Range(2), Points(4, 5));
    EXPECT_EQ(inner, 6.6F);
    EXPECT_EQ(outer, 6.7F);
    EXPECT_EQ(SetCenterpiece(RowNo(2), 3, inner, outer), ChannelRange::Set);
    EXPECT_EQ(Range(2), Points(3, 6));
    Work.ChannelRadii[3] = 7.5F; // the short cell has it where the scan does not reach
    Work.ChannelRadii[11] = 7.6F;
    EXPECT_EQ(SetCenterpiece(RowNo(2), 4, inner, outer), ChannelRange::NotReached);
    EXPECT_EQ(Work.CenterpieceType[2], 4);
    EXPECT_EQ(Range(2), Points(3, 6));
}

TEST_F(TableRules, ACenterpieceWithoutChannelsOrAChannelLeavesTheRange) {
    Load(2, {6.3F, 6.41F, 6.5F, 6.6F});
    SetRadialRange(RowNo(2), 6.4F, 6.55F);
    EXPECT_EQ(SetCenterpiece(RowNo(2), 4, inner, outer), ChannelRange::None); // no channel chosen
    EXPECT_EQ(Work.CenterpieceType[2], 4);
    Work.DataChannel[2] = 2;
    EXPECT_EQ(SetCenterpiece(RowNo(2), 1, inner, outer), ChannelRange::None);
    EXPECT_EQ(Work.CenterpieceType[2], 1);
    EXPECT_EQ(Range(2), Points(2, 3));
}

TEST_F(TableRules, OnTheSecondPageTheChannelOfTheFirstPageCounts) {
    Load(12, {6.3F, 6.41F, 6.5F, 6.6F, 6.9F});
    Work.ScanRPM[12] = 10000.0F;
    Work.ScanRPM[3] = 60000.0F;
    Work.RotorExpansion = 1e-9F; // 0.1 cm at the speed of row 12
    Work.DataChannel[12] = 0;
    Work.DataChannel[3] = 2;
    EXPECT_EQ(SetCenterpiece(RowNo(12), 3, inner, outer), ChannelRange::Set); // 6.5 to 6.9 cm
    EXPECT_EQ(Range(12), Points(4, 5));
    Work.DataChannel[12] = 2;
    Work.DataChannel[3] = 0;
    Work.FitRange[0][12] = 1;
    EXPECT_EQ(SetCenterpiece(RowNo(12), 3, inner, outer), ChannelRange::None);
    EXPECT_EQ(Range(12), Points(1, 5));
}

TEST_F(TableRules, ARadialRangeHoldsThePointsBetweenItsRadii) {
    Load(1, {6.0F, 6.1F, 6.2F, 6.3F, 6.4F});
    EXPECT_TRUE(SetRadialRange(RowNo(1), 6.1F, 6.3F));
    EXPECT_EQ(Range(1), Points(2, 4));
    EXPECT_TRUE(SetRadialRange(RowNo(1), 6.05F, 6.39F));
    EXPECT_EQ(Range(1), Points(2, 4));
    EXPECT_TRUE(SetRadialRange(RowNo(1), 5.0F, 8.0F));
    EXPECT_EQ(Range(1), Points(1, 5));
    EXPECT_TRUE(SetRadialRange(RowNo(1), 6.2F, 6.2F));
    EXPECT_EQ(Range(1), Points(3, 3));
    for (const auto& [a, b] :
         std::vector<std::pair<float, float>>{{6.5F, 7.0F}, {5.0F, 5.9F}, {6.21F, 6.29F}, {6.3F, 6.1F}}) {
        EXPECT_FALSE(SetRadialRange(RowNo(1), a, b));
        EXPECT_EQ(Range(1), Points(3, 3));
    }
}

struct SetConstraints : ScanTest {
    void ExpectQuestion(const std::string& text, BoxAnswer answer) {
        script.ExpectMessage({text, "Quillon", BoxIcon::Question, BoxButtons::YesNo, BoxAnswer::Yes}, answer);
    }
    const std::string FromOther =
        " previously was constrained to match that of this one.  Do you want this constraint removed?";
    const std::string ToOther =
        "The baseline for this file previously was constrained to match that of file #7.  Do you want this "
        "constraint removed?";
    const std::string Concentrations =
        "The concentrations for this file previously were constrained.  Do you want these constraints "
        "removed?";
};

TEST_F(SetConstraints, TiesFromOtherRowsAreAskedForOneByOne) {
    Work.OffsetLink[1] = 4;
    Work.OffsetLink[3] = 2;
    Work.OffsetLink[18] = 4;
    ExpectQuestion("The baseline for file #1" + FromOther, BoxAnswer::Yes);
    ExpectQuestion("The baseline for file #18" + FromOther, BoxAnswer::No);
    RemoveSetConstraints(RowNo(4));
    EXPECT_EQ(Work.OffsetLink[1], 0);
    EXPECT_EQ(Work.OffsetLink[3], 2);
    EXPECT_EQ(Work.OffsetLink[18], 4);
}

TEST_F(SetConstraints, ATieOfTheRowItselfIsAskedForAlone) {
    Work.OffsetLink[4] = 7;
    Work.OffsetLink[5] = 4;
    ExpectQuestion(ToOther, BoxAnswer::No);
    RemoveSetConstraints(RowNo(4));
    EXPECT_EQ(Work.OffsetLink[4], 7);
    ExpectQuestion(ToOther, BoxAnswer::Yes);
    RemoveSetConstraints(RowNo(4));
    EXPECT_EQ(Work.OffsetLink[4], 0);
    EXPECT_EQ(Work.OffsetLink[5], 4);
}

TEST_F(SetConstraints, BothConcentrationsGoTogether) {
    Work.ConcConstraintB[4] = 0.5F;
    ExpectQuestion(Concentrations, BoxAnswer::No);
    RemoveSetConstraints(RowNo(4));
    EXPECT_EQ(Work.ConcConstraintB[4], 0.5F);
    Work.ConcConstraintA[4] = 0.25F;
    ExpectQuestion(Concentrations, BoxAnswer::Yes);
    RemoveSetConstraints(RowNo(4));
    EXPECT_EQ(Work.ConcConstraintA[4], 0.0F);
    EXPECT_EQ(Work.ConcConstraintB[4], 0.0F);
}

TEST_F(SetConstraints, SharedConcentrationsAreAskedForBothWays) {
    Work.ConcLink[2] = 4;
    Work.ConcLink[4] = 1;
    ExpectQuestion(
        "The concentrations for file #2 previously were those of this one.  Do you want this constraint "
        "removed?",
        BoxAnswer::Yes);
    ExpectQuestion("The concentrations for this file previously were those of file #1.  Do you want this "
                   "constraint removed?",
                   BoxAnswer::No);
    RemoveSetConstraints(RowNo(4));
    EXPECT_EQ(Work.ConcLink[2], 0);
    EXPECT_EQ(Work.ConcLink[4], 1);
}

TEST_F(SetConstraints, ARowWithoutConstraintsIsNotAskedAbout) {
    Work.OffsetLink[1] = 2;
    Work.ConcConstraintA[1] = 0.5F;
    RemoveSetConstraints(RowNo(4));
    EXPECT_TRUE(script.Asked.empty());
}

} // namespace
} // namespace Quillon

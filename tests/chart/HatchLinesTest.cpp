// The lines of hatches: how many, where they run, and that none leaves its area.
#include "chart/pens/HatchLines.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {

namespace {

constexpr DeviceRect Surface = {0, 0, 999, 999};

std::vector<PlaneSegment> InSquare(BrushKind kind) { // 40 wide, lines 10 apart
    return HatchLines(kind, OutlineOf(DeviceRect{100, 100, 140, 140}), 10.0, Surface);
}

double Length(const PlaneSegment& line) {
    return std::hypot(line.To.X - line.From.X, line.To.Y - line.From.Y);
}

double Total(const std::vector<PlaneSegment>& lines) {
    double sum = 0.0;
    for (const PlaneSegment& line : lines)
        sum += Length(line);
    return sum;
}

} // namespace

TEST(HatchLines, OnlyHatchesHaveLines) {
    EXPECT_FALSE(IsHatch(BrushKind::Hollow));
    EXPECT_FALSE(IsHatch(BrushKind::Solid));
    EXPECT_TRUE(IsHatch(BrushKind::Horizontal));
    EXPECT_TRUE(IsHatch(BrushKind::DiagonalCross));
    EXPECT_TRUE(InSquare(BrushKind::Hollow).empty());
    EXPECT_TRUE(InSquare(BrushKind::Solid).empty());
}

// An edge that lies on a line belongs to the area on one of its sides only, so that neighbours do not draw it
// twice: of the lines at 100, 110, ..., 140 four are drawn.
TEST(HatchLines, HorizontalAndVerticalLinesStandAtMultiplesOfTheSpacing) {
    const std::vector<PlaneSegment> across = InSquare(BrushKind::Horizontal);
    ASSERT_EQ(across.size(), 4U);
    for (const PlaneSegment& line : across) {
        EXPECT_DOUBLE_EQ(line.From.Y, line.To.Y);
        EXPECT_DOUBLE_EQ(std::remainder(line.From.Y, 10.0), 0.0);
        EXPECT_DOUBLE_EQ(line.From.X, 100.0);
        EXPECT_DOUBLE_EQ(line.To.X, 140.0);
    }
    const std::vector<PlaneSegment> down = InSquare(BrushKind::Vertical);
    ASSERT_EQ(down.size(), 4U);
    for (const PlaneSegment& line : down) {
        EXPECT_DOUBLE_EQ(line.From.X, line.To.X);
        EXPECT_DOUBLE_EQ(std::remainder(line.From.X, 10.0), 0.0);
        EXPECT_DOUBLE_EQ(Length(line), 40.0);
    }
}

// The diagonals of a square of 40 at steps of 10 along its edges: 10, 20, 30, 40, 30, 20 and 10 times the
// square root of two.
TEST(HatchLines, DiagonalsFallAndRise) {
    const std::vector<PlaneSegment> falling = InSquare(BrushKind::ForwardDiagonal);
    EXPECT_EQ(falling.size(), 7U);
    EXPECT_NEAR(Total(falling), 160.0 * std::sqrt(2.0), 1e-9);
    for (const PlaneSegment& line : falling)
        EXPECT_NEAR(line.To.Y - line.From.Y, line.To.X - line.From.X, 1e-9); // y is downward
    const std::vector<PlaneSegment> rising = InSquare(BrushKind::BackwardDiagonal);
    EXPECT_EQ(rising.size(), 7U);
    EXPECT_NEAR(Total(rising), 160.0 * std::sqrt(2.0), 1e-9);
    for (const PlaneSegment& line : rising)
        EXPECT_NEAR(line.To.Y - line.From.Y, line.From.X - line.To.X, 1e-9);
}

TEST(HatchLines, CrossesAreBothTheirDirections) {
    EXPECT_EQ(InSquare(BrushKind::Cross).size(), 8U);
    EXPECT_EQ(InSquare(BrushKind::DiagonalCross).size(), 14U);
}

TEST(HatchLines, AHoleStaysOpen) {
    // A square ring as one outline that goes round outside, in, round inside and back.
    const std::vector<PlanePoint> ring = OutlineOf(std::vector<DevicePoint>{
        {0, 0}, {100, 0}, {100, 100}, {0, 100}, {0, 0}, {25, 25}, {25, 75}, {75, 75}, {75, 25}, {25, 25}});
    const std::vector<PlaneSegment> lines = HatchLines(BrushKind::Horizontal, ring, 20.0, Surface);
    // At 40 and 60 two pieces of 25 each; at 80 one of 100; at 0 or 100 one of 100; at 20 one of 100 that the
    // way between the squares cuts in two.
    EXPECT_EQ(lines.size(), 8U);
    EXPECT_NEAR(Total(lines), 3 * 100.0 + 4 * 25.0, 1e-9);
}

TEST(HatchLines, LinesStayInAnEllipse) {
    const std::vector<PlanePoint> ellipse = ArcOutline({300.0, 200.0}, 80.0, 50.0, 0.0, 360.0);
    double covered = 0.0;
    for (const PlaneSegment& line : HatchLines(BrushKind::BackwardDiagonal, ellipse, 4.0, Surface)) {
        for (const PlanePoint point : {line.From, line.To})
            EXPECT_LE(std::hypot((point.X - 300.0) / 80.0, (point.Y - 200.0) / 50.0), 1.0 + 1e-9);
        covered += Length(line) * 4.0 / std::sqrt(2.0);
    }
    EXPECT_NEAR(covered, 3.14159265 * 80.0 * 50.0, 100.0); // lines times distance: the area
}

TEST(HatchLines, OutlinesOfArcs) {
    const std::vector<PlanePoint> slice = ArcOutline({10.0, 20.0}, 4.0, 2.0, 90.0, 90.0);
    EXPECT_NEAR(slice.front().X, 10.0, 1e-12); // the centre
    EXPECT_NEAR(slice.front().Y, 20.0, 1e-12);
    EXPECT_NEAR(slice[1].X, 10.0, 1e-12);
    EXPECT_NEAR(slice[1].Y, 18.0, 1e-12);
    EXPECT_NEAR(slice.back().X, 6.0, 1e-12);
    EXPECT_NEAR(slice.back().Y, 20.0, 1e-12);
    EXPECT_EQ(slice.size(), 47U); // centre, and 45 chords of two degrees
}

TEST(HatchLines, AHugeAreaTakesNoMoreLinesThanTheSurfaceShows) {
    const std::vector<PlanePoint> huge = OutlineOf(DeviceRect{-2000000, -2000000, 2000000, 2000000});
    EXPECT_EQ(HatchLines(BrushKind::Horizontal, huge, 10.0, Surface).size(), 100U);
    EXPECT_TRUE(
        HatchLines(BrushKind::Horizontal, OutlineOf(DeviceRect{0, 2000, 10, 3000}), 10.0, Surface).empty());
}

TEST(HatchLines, NoAreaNoLines) {
    EXPECT_TRUE(HatchLines(BrushKind::Cross, {}, 10.0, Surface).empty());
    EXPECT_TRUE(
        HatchLines(BrushKind::Cross, OutlineOf(std::vector<DevicePoint>{{1, 1}, {90, 90}}), 10.0, Surface)
            .empty());
}

TEST(HatchLines, WidthAndDistanceAreTheSameOnEveryResolution) {
    EXPECT_DOUBLE_EQ(HatchSpacing(96.0), 8.0);
    EXPECT_DOUBLE_EQ(HatchSpacing(1200.0), 100.0);
    EXPECT_DOUBLE_EQ(HatchSpacing(20.0), 4.0); // coarse devices keep the lines apart
    EXPECT_DOUBLE_EQ(HatchWidth(96.0), 1.0);
    EXPECT_DOUBLE_EQ(HatchWidth(1200.0), 12.5);
}

} // namespace Quillon

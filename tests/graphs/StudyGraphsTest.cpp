// Pictures of studies: bars and contours against what they should be.
#include "graphs/kinds/StudyGraphs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace Quillon {
namespace {

TEST(Histograms, CountEveryValueOnce) {
    std::vector<double> values;
    for (int i = 0; i < 1000; ++i)
        values.push_back(std::fmod(i * 0.6180339887, 1.0));
    const HistogramBars bars = BarsOf(values);
    ASSERT_EQ(bars.Edges.size(), bars.Counts.size() + 1);
    EXPECT_EQ(std::accumulate(bars.Counts.begin(), bars.Counts.end(), 0L), 1000);
    EXPECT_NEAR(static_cast<double>(bars.Counts.size()), 10.0, 1.0); // the range 1 by 2 * 0.5 / 10
    for (const long count : bars.Counts)
        EXPECT_NEAR(static_cast<double>(count), 1000.0 / static_cast<double>(bars.Counts.size()), 5.0);
}

TEST(Histograms, OfOneValueAreOneBar) {
    const HistogramBars bars = BarsOf({3.0, 3.0});
    ASSERT_EQ(bars.Counts.size(), 1U);
    EXPECT_EQ(bars.Counts[0], 2);
}

// ratio = 1 + x^2 + y^2 / 4: in the root of ratio - 1 each contour is an ellipse with half axes 1 and 2 times
// the root of level - 1.
TEST(Contours, OfAParaboloidAreEllipses) {
    ContourMap map;
    for (int i = -20; i <= 20; ++i) {
        map.Values[0].push_back(0.1 * i);
        map.Values[1].push_back(0.2 * i);
    }
    for (const double x : map.Values[0])
        for (const double y : map.Values[1])
            map.Ratios.push_back(1.0 + x * x + y * y / 4.0);
    for (const double level : {1.25, 2.0}) {
        const std::vector<ContourPiece> pieces = ContourPieces(map, level);
        EXPECT_GT(pieces.size(), 20U);
        double around = 0.0;
        for (const ContourPiece& piece : pieces) {
            EXPECT_NEAR(piece.X1 * piece.X1 + piece.Y1 * piece.Y1 / 4.0, level - 1.0, 0.02);
            const double dx = piece.X2 - piece.X1, dy = (piece.Y2 - piece.Y1) / 2.0;
            around += std::hypot(dx, dy);
        }
        EXPECT_NEAR(around, 2.0 * 3.14159265 * std::sqrt(level - 1.0), 0.05);
    }
    EXPECT_TRUE(ContourPieces(map, 100.0).empty());
}

ContourMap Paraboloid(int half) {
    ContourMap map;
    for (int i = -half; i <= half; ++i) {
        map.Values[0].push_back(4.0 * i / half);
        map.Values[1].push_back(8.0 * i / half);
    }
    for (const double x : map.Values[0])
        for (const double y : map.Values[1])
            map.Ratios.push_back(1.0 + x * x + y * y / 4.0);
    return map;
}

// The contours of a map of 9 by 9 had corners.
TEST(Contours, OfACoarseGridAreSmooth) {
    const ContourMap map = Paraboloid(4), fine = RefinedMap(map, 96);
    ASSERT_GE(fine.Values[0].size(), 97U);
    ASSERT_EQ(fine.Ratios.size(), fine.Values[0].size() * fine.Values[1].size());
    for (std::size_t i = 0; i < fine.Values[0].size(); ++i)
        for (std::size_t j = 0; j < fine.Values[1].size(); ++j) {
            const double x = fine.Values[0][i], y = fine.Values[1][j];
            EXPECT_NEAR(fine.Ratios[i * fine.Values[1].size() + j], 1.0 + x * x + y * y / 4.0, 1e-12);
        }
    for (const ContourPiece& piece : ContourPieces(fine, 5.0))
        EXPECT_NEAR(std::hypot(piece.X1, piece.Y1 / 2.0), 2.0, 1e-3);
    EXPECT_EQ(RefinedMap(fine, 96).Ratios.size(), fine.Ratios.size());
}

TEST(Contours, StayAwayFromWhatHasNoValue) {
    ContourMap map = Paraboloid(4);
    map.Ratios[0] = INFINITY; // a corner
    const ContourMap fine = RefinedMap(map, 96);
    for (const double ratio : fine.Ratios)
        EXPECT_FALSE(std::isnan(ratio));
    for (const ContourPiece& piece : ContourPieces(fine, 5.0))
        EXPECT_NEAR(std::hypot(piece.X1, piece.Y1 / 2.0), 2.0, 1e-3);
}

// Dashes begin anew with each line: pieces one by one would show none.
TEST(Contours, AreOneLineEach) {
    const std::vector<ContourLine> closed = ContourLines(ContourPieces(RefinedMap(Paraboloid(4), 96), 5.0));
    ASSERT_EQ(closed.size(), 1U);
    EXPECT_EQ(closed[0].front(), closed[0].back());
    EXPECT_GT(closed[0].size(), 100U);
    // Beyond the grid in the corners: four lines, or three where two of them meet.
    const std::vector<ContourLine> open = ContourLines(ContourPieces(Paraboloid(4), 20.0));
    EXPECT_EQ(open.size(), 4U);
    for (const ContourLine& line : open)
        EXPECT_NE(line.front(), line.back());
}

} // namespace
} // namespace Quillon

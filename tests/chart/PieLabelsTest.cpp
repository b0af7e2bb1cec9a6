// Labels about a pie.
#include "chart/draw/PieLabels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace Quillon {
namespace {

constexpr PieRing Ring{{400, 300}, 150, 150, 8, 8, 20, 100, 499};

std::vector<PieLabel> LabelsOf(const std::vector<double>& values) {
    double sum = 0.0;
    for (const double value : values)
        sum += value;
    std::vector<PieLabel> labels;
    double end = 90.0;
    for (const double value : values) {
        labels.push_back({end - 180.0 * value / sum, value / sum, 60});
        end -= 360.0 * value / sum;
    }
    return labels;
}

// Every label that is shown stands within the heights given, clear of the pie and of all others.
void ExpectTidyLabels(const std::vector<PieLabel>& labels, const PieRing& ring) {
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const PieLabel& a = labels[i];
        if (!a.Shown) continue;
        EXPECT_GE(a.Top, ring.Top);
        EXPECT_LE(a.Top + ring.LineHeight - 1, ring.Bottom);
        const double x = std::clamp(ring.Centre.X, a.Left, a.Left + a.Width) - ring.Centre.X;
        const double y = std::clamp(ring.Centre.Y, a.Top, a.Top + ring.LineHeight) - ring.Centre.Y;
        EXPECT_GT(std::hypot(x / ring.RadiusX, y / ring.RadiusY), 1.0) << i;
        for (int part = 1; a.Moved && part <= 10; ++part) { // nor does its line cross the pie
            const double lx = a.From.X + (a.To.X - a.From.X) * part / 10.0 - ring.Centre.X;
            const double ly = a.From.Y + (a.To.Y - a.From.Y) * part / 10.0 - ring.Centre.Y;
            EXPECT_GT(std::hypot(lx / ring.RadiusX, ly / ring.RadiusY), 0.99) << i;
        }
        for (std::size_t k = i + 1; k < labels.size(); ++k) {
            const PieLabel& b = labels[k];
            const bool apart = !b.Shown || a.Left + a.Width <= b.Left || b.Left + b.Width <= a.Left ||
                               a.Top + ring.LineHeight <= b.Top || b.Top + ring.LineHeight <= a.Top;
            EXPECT_TRUE(apart) << i << " and " << k;
        }
    }
}

TEST(PieLabelsTest, LabelsWithRoomStandBesideTheirSlices) {
    std::vector<PieLabel> labels = LabelsOf({1, 1, 1, 1});
    PlacePieLabels(labels, Ring);
    for (const PieLabel& label : labels) {
        EXPECT_TRUE(label.Shown);
        EXPECT_FALSE(label.Moved);
    }
    // The first slice has its middle at 45 degrees: 158 units from the centre, its label a part above that.
    const double root = std::numbers::sqrt2 / 2.0;
    EXPECT_EQ(labels[0].Left, static_cast<int>(std::nearbyint(400 + 158 * root)));
    EXPECT_EQ(labels[0].Top, static_cast<int>(std::nearbyint(300 - 158 * root - (1 + root) * 10)));
    EXPECT_EQ(labels[2].Left + labels[2].Width, static_cast<int>(std::nearbyint(400 - 158 * root)));
    ExpectTidyLabels(labels, Ring);
}

TEST(PieLabelsTest, ThinSlicesHaveTheirLabelsMovedApart) {
    std::vector<PieLabel> labels = LabelsOf({25, 1, 1, 1, 1, 60}); // the thin ones to the right
    PlacePieLabels(labels, Ring);
    ExpectTidyLabels(labels, Ring);
    for (const PieLabel& label : labels)
        EXPECT_TRUE(label.Shown);
    const PieLabel& moved = labels[4];
    EXPECT_TRUE(moved.Moved);
    // The line leads from the edge of the pie to the label.
    const double angle = moved.Angle * std::numbers::pi / 180.0;
    EXPECT_NEAR(moved.From.X, 400 + 150 * std::cos(angle), 1.0);
    EXPECT_NEAR(moved.From.Y, 300 - 150 * std::sin(angle), 1.0);
    EXPECT_LE(moved.To.X, moved.Left);
    EXPECT_GE(moved.To.X, moved.Left - Ring.GapX);
    EXPECT_EQ(moved.To.Y, moved.Top + 10);
}

TEST(PieLabelsTest, TheSmallestSlicesGoWithoutWhereThereIsNoRoom) {
    std::vector<double> values(60, 1.0); // 30 on a side, where 20 lines have room
    values[15] = 0.5;
    std::vector<PieLabel> labels = LabelsOf(values);
    PlacePieLabels(labels, Ring);
    ExpectTidyLabels(labels, Ring);
    const auto shown = std::count_if(labels.begin(), labels.end(), [](const PieLabel& l) { return l.Shown; });
    EXPECT_LE(shown, 40);
    EXPECT_GE(shown, 10);
    EXPECT_FALSE(labels[15].Shown);
}

TEST(PieLabelsTest, AnySlices) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> exponent(-3.0, 3.0);
    for (int round = 0; round < 500; ++round) {
        std::vector<double> values;
        for (unsigned i = 0; i < 1 + random() % 40; ++i)
            values.push_back(std::pow(10.0, exponent(random)));
        PieRing ring = Ring;
        ring.LineHeight = 5 + static_cast<int>(random() % 25);
        ring.RadiusY = 100 + static_cast<int>(random() % 50);
        std::vector<PieLabel> labels = LabelsOf(values);
        PlacePieLabels(labels, ring);
        ExpectTidyLabels(labels, ring);
    }
}

} // namespace
} // namespace Quillon

// Is it at equilibrium? Held against signals whose noise and whose approach are known.
#include "runs/Approach.h"
#include "runs/Channels.h"
#include "runs/Groups.h"
#include "tests/support/MadeRun.h"
#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

constexpr double Noise = 0.004;

// A scan of 200 readings, an exponential plus shift times the radius and noise.
RunScan MadeColumn(NoiseSource& noise, int number, double shift, double sd = Noise) {
    RunScan scan;
    scan.Cell = 1;
    scan.Name.Scan = number;
    scan.File = "scan" + std::to_string(number);
    scan.Head.Rpm = 10000.0F;
    scan.Head.Wavelength = 280.0F;
    scan.Head.Time = number * 1000;
    scan.Radii.Recreate(200);
    scan.Readings.Recreate(200);
    for (long p = 1; p <= 200; ++p) {
        const double r = 6.9 + 0.001 * static_cast<double>(p);
        scan.Radii[p] = static_cast<float>(r);
        scan.Readings[p] =
            static_cast<float>(0.3 * std::exp(6.0 * (r - 7.0)) + shift + sd * noise.Gaussian());
    }
    return scan;
}

// A group of scans that are shifted so far from the last one.
SortedRun RunOf(const std::vector<double>& shifts, double sd = Noise) {
    Work = FreshWorkspace();
    SortedRun run;
    NoiseSource noise(3);
    for (std::size_t i = 0; i < shifts.size(); ++i)
        run.Scans.push_back(MadeColumn(noise, static_cast<int>(i) + 1, shifts[i], sd));
    GroupRun(run);
    JudgeRun(run, {});
    return run;
}

std::string Answers(const SortedRun& run) {
    std::string letters;
    for (const ScanJudgement& judged : run.Groups.front().Judged)
        letters += EquilibriumWord(judged.Answer)[0];
    return letters;
}

double MeanSquareNoise(const RunScan& scan) {
    return std::pow(*NoiseBetween(ReadingsOf(scan), 6.0F, 8.0F), 2);
}

TEST(Approach, NoiseComesFromSecondDifferencesAndIsThatOfTheReadings) {
    // 300 scans of 198 second differences; those of independent readings overlap, so that the mean square
    // has a relative variance of 35/18 2/n (the sum of squared autocorrelations of 1, -4, 6, -4, 1 over 6).
    NoiseSource noise(1);
    double sum = 0.0;
    for (int i = 0; i < 300; ++i)
        sum += MeanSquareNoise(MadeColumn(noise, i, 0.0));
    const double deviation = std::sqrt(35.0 / 18.0 * 2.0 / (300.0 * 198.0));
    EXPECT_NEAR(sum / 300.0 / (Noise * Noise), 1.0, 4.0 * deviation);
}

TEST(Approach, NoiseNeedsThreeReadings) {
    NoiseSource noise(1);
    const RunScan scan = MadeColumn(noise, 1, 0.0);
    EXPECT_TRUE(NoiseBetween(ReadingsOf(scan), 6.9005F, 6.9035F));
    EXPECT_FALSE(NoiseBetween(ReadingsOf(scan), 6.9005F, 6.9025F));
    EXPECT_FALSE(NoiseBetween(ReadingsOf(scan), 8.0F, 9.0F));
}

TEST(Approach, DifferencesAreTakenAtTheRadiiOfTheLastScan) {
    RunScan last, other;
    for (int p = 0; p < 5; ++p) {
        last.Radii.Resize(p + 1, 7.0F + 0.1F * static_cast<float>(p));
        last.Readings.Resize(p + 1, 0.0F);
    }
    for (int p = 0; p < 4; ++p) { // between those of the last one, on a line through 2 at 7.1
        other.Radii.Resize(p + 1, 7.05F + 0.1F * static_cast<float>(p));
        other.Readings.Resize(p + 1, 1.5F + static_cast<float>(p));
    }
    const auto rms = RmsFrom(ReadingsOf(last), ReadingsOf(other), 6.0F, 8.0F); // at 7.1, 7.2, 7.3
    ASSERT_TRUE(rms);
    EXPECT_NEAR(*rms, std::sqrt((4.0 + 9.0 + 16.0) / 3.0), 1e-4);
    EXPECT_FALSE(RmsFrom(ReadingsOf(last), ReadingsOf(other), 7.15F, 8.0F)); // two
}

TEST(Approach, ScansAgreeUpToTheNoise) {
    EXPECT_EQ(Answers(RunOf({0.1, 0.05, 0.02, 0, 0, 0})), "nnnyyy");
    EXPECT_EQ(Answers(RunOf({0.1})), "u");
    EXPECT_EQ(Answers(RunOf({0.02, 0})), "ny");
}

TEST(Approach, AScanBetweenAgreeingOnesStandsOut) {
    const SortedRun run = RunOf({0.1, 0, 0, 0.05, 0, 0});
    EXPECT_EQ(Answers(run), "nnnoyy"); // not all later ones agree with those before it
    EXPECT_EQ(ApproachText(run, run.Groups[0]), "at equilibrium since scan 5; scan 4 stands out");
}

TEST(Approach, ALastScanThatStandsOutIsNotTheLast) {
    const SortedRun run = RunOf({0.1, 0, 0, 0, 0.05});
    EXPECT_EQ(Answers(run), "nyyyo");
    EXPECT_EQ(run.Groups[0].Last, 3U);
    EXPECT_EQ(ApproachText(run, run.Groups[0]), "at equilibrium since scan 2; scan 5 stands out");
}

TEST(Approach, AGroupThatStillMovesIsNotYetThere) {
    const SortedRun run = RunOf({0.03, 0.02, 0.01, 0});
    EXPECT_EQ(Answers(run), "nnny");
    EXPECT_EQ(ApproachText(run, run.Groups[0]), "not yet at equilibrium");
}

TEST(Approach, TenScansThatMoveByFarMoreThanTheNoiseAreAVelocityRun) {
    std::vector<double> shifts;
    for (int i = 0; i < 10; ++i)
        shifts.push_back(0.1 * i);
    EXPECT_EQ(RunOf(shifts).Groups[0].Optics, ScanOptics::Velocity);
    EXPECT_FALSE(HasLast(RunOf(shifts).Groups[0]));
    shifts.pop_back();
    const SortedRun nine = RunOf(shifts);
    EXPECT_EQ(nine.Groups[0].Optics, ScanOptics::Absorbance);
    EXPECT_EQ(ApproachText(nine, nine.Groups[0]),
              "not yet at equilibrium: its last scans differ by more than 20 times "
              "the noise, as those of a velocity run");
    shifts = {1, 0.9, 0.8, 0.7, 0.6, 0.5, 0.4, 0.3, 0.2, 0.02, 0};
    EXPECT_EQ(RunOf(shifts).Groups[0].Optics, ScanOptics::Absorbance); // the last step is small
}

TEST(Approach, TheRadiiOfAJobAreTheOnesCompared) {
    Work = FreshWorkspace();
    SortedRun run;
    NoiseSource noise(5);
    for (int i = 1; i <= 3; ++i)
        run.Scans.push_back(MadeColumn(noise, i, 0.0));
    for (long p = 1; p <= 100; ++p)
        run.Scans[0].Readings[p] += 0.02F; // up to 7.0 cm
    GroupRun(run);
    JudgeRun(run, {});
    EXPECT_EQ(Answers(run), "nyy");
    JudgeRun(run, {7.005F, {}});
    EXPECT_EQ(Answers(run), "yyy");
}

TEST(Approach, ChannelsOfASixChannelCellAreFoundAndTheWorstCounts) {
    Work = FreshWorkspace();
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {14000};
    plan.Channels = 3;
    plan.Points = 500;
    plan.ScansPerStage = 6;
    plan.DecayScans = 0.5;
    SortedRun run;
    for (const MadeScan& scan : MakeRun(plan))
        run.Scans.push_back(ReadRunScan(scan.Name, scan.Bytes));
    GroupRun(run);
    JudgeRun(run, {});
    const std::vector<RunChannel>& channels = run.Groups[0].Channels;
    ASSERT_EQ(channels.size(), 3U);
    const double inner[] = {5.87, 6.42, 6.9}, outer[] = {6.09, 6.6, 7.12};
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_EQ(channels[c].Samples, 3);
        EXPECT_EQ(channels[c].Channel, static_cast<int>(c) + 1);
        EXPECT_NEAR(static_cast<double>(channels[c].Inner), inner[c], 0.015);
        EXPECT_NEAR(static_cast<double>(channels[c].Outer), outer[c], 0.015);
    }
    EXPECT_EQ(Answers(run).back(), 'y');
    EXPECT_EQ(Answers(run).front(), 'n');
}

TEST(Approach, AColumnThatTheRadiiOfItsChannelCutIsTakenWhole) {
    Work = FreshWorkspace();
    RunPlan plan;
    plan.Cells = {1};
    plan.Speeds = {14000};
    plan.Channels = 3;
    plan.Points = 500;
    plan.ScansPerStage = 1;
    RunScan scan = ReadRunScan("00001.RA1", MakeRun(plan).front().Bytes);
    for (float& radius : scan.Radii)
        radius -= 0.06F; // the cell sits off: the channels begin at 5.80, 6.40 and 6.85 cm
    const std::vector<RunChannel> channels = ChannelsOf(scan, {});
    ASSERT_EQ(channels.size(), 3U);
    const double inner[] = {5.81, 6.36, 6.84}, outer[] = {6.03, 6.54, 7.06};
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_NEAR(static_cast<double>(channels[c].Inner), inner[c], 0.015) << c;
        EXPECT_NEAR(static_cast<double>(channels[c].Outer), outer[c], 0.015) << c;
    }
}

TEST(Approach, AColumnOfOneSampleIsNoCellOfSeveral) {
    Work = FreshWorkspace();
    NoiseSource noise(9);
    RunScan scan;
    // Air, a meniscus at 6.6 cm and a sample to 7.15 cm.
    for (long p = 0; p < 600; ++p) {
        const double r = 5.9 + 0.0021 * static_cast<double>(p);
        const bool edge = std::fabs(r - 6.6) < 0.01 || r > 7.15;
        const double signal = r < 6.6 ? 0.0 : 0.2 * std::exp(3.0 * (r - 6.6));
        scan.Radii.Resize(p + 1, static_cast<float>(r));
        scan.Readings.Resize(p + 1, static_cast<float>(signal + (edge ? 0.5 : 0.004) * noise.Gaussian()));
    }
    scan.Head.Rpm = 14000.0F;
    const std::vector<RunChannel> channels = ChannelsOf(scan, {});
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_EQ(channels[0].Channel, 0);
}

TEST(Approach, TheFirstScanWithinTheNoiseIsNamedWithinOneOfTheTrueOne) {
    // The mean square of a difference is 2 s^2 from noise and d^2 from what is still to move: a scan is
    // within one noise level of the end as long as the rms of d over the column is below s.
    int right = 0;
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        Work = FreshWorkspace();
        NoiseSource noise(seed);
        const double decay = 1.0 + 1.5 * noise.Uniform();
        SortedRun run;
        int truth = -1;
        for (int i = 0; i < 24; ++i) {
            const double shift = 0.2 * std::exp(-i / decay);
            if (truth < 0 && shift - 0.2 * std::exp(-23 / decay) < Noise) truth = i;
            run.Scans.push_back(MadeColumn(noise, i, shift));
        }
        GroupRun(run);
        JudgeRun(run, {});
        const std::string answers = Answers(run);
        const int found = static_cast<int>(answers.find('y'));
        if (std::abs(found - truth) <= 1) ++right;
    }
    EXPECT_GE(right, 190);
}

} // namespace
} // namespace Quillon

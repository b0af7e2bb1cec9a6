// The approach to equilibrium against closed forms, and the test of equilibrium on approaches whose truth is
// known.
#include "runs/Approach.h"
#include "planning/approach/EquilibriumTime.h"
#include "planning/approach/LammSolver.h"
#include "platform/RuntimeError.h"
#include "runs/Groups.h"
#include "tests/support/Simulate.h"
#include "workspace/records/Workspace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace Quillon {
namespace {

constexpr double Day = 86400.0;

// 3 mm near 7 cm; a protein of 50 kDa at a speed that is good for it.
LammColumn SomeColumn(double sigmaX = 3.0) {
    LammColumn column{6.9, 7.2, 6e-7, 0.0, 400};
    column.Sigma = sigmaX / ((7.2 * 7.2 - 6.9 * 6.9) / 2.0);
    return column;
}

// The equilibrium of a filling of 1: exp(sigma (xi - xi_b)) times sigma X / (1 - exp(-sigma X)).
double RestAt(const LammColumn& column, double radius) {
    const double x = (column.Bottom * column.Bottom - column.Meniscus * column.Meniscus) / 2.0;
    const double s = column.Sigma * x;
    return s / -std::expm1(-s) *
           std::exp(column.Sigma * (radius * radius - column.Bottom * column.Bottom) / 2.0);
}

TEST(LammSolver, ComesToRestAtTheEquilibriumOfTheSector) {
    for (const double sigmaX : {0.5, 3.0, 8.0, -2.0}) {
        LammState state = FilledColumn(SomeColumn(sigmaX), 1.0);
        AdvanceTo(state, 20.0 * Day, 400, 1.02);
        for (double r = 6.9; r <= 7.2; r += 0.01) {
            const double rest = RestAt(state.Column, r);
            EXPECT_NEAR(ConcentrationAt(state, r) / rest, 1.0, 1e-5) << sigmaX << " " << r;
            EXPECT_NEAR(ConcentrationAt(ColumnAtRest(state.Column, 1.0), r) / rest, 1.0, 1e-9)
                << sigmaX << " " << r;
        }
    }
}

TEST(LammSolver, LosesNothing) {
    for (const double sigmaX : {3.0, 40.0}) {
        LammState state = FilledColumn(SomeColumn(sigmaX), 0.7);
        const double mass = MassOf(state);
        EXPECT_NEAR(mass, 0.7 * (7.2 * 7.2 - 6.9 * 6.9) / 2.0, 1e-12);
        for (int scan = 1; scan <= 20; ++scan) {
            AdvanceTo(state, scan * 3600.0, 100);
            EXPECT_NEAR(MassOf(state) / mass, 1.0, 1e-10) << sigmaX << " " << scan;
        }
    }
}

TEST(LammSolver, TimeStepsAreOfSecondOrder) {
    const auto after = [](int steps) {
        LammState state = FilledColumn(SomeColumn(), 1.0);
        AdvanceTo(state, 1e4, 60, 1.1); // what changes at once at the ends has settled
        AdvanceTo(state, 5e4, steps);
        return ConcentrationAt(state, 7.15);
    };
    const double truth = after(1280);
    const double coarse = std::abs(after(10) - truth), fine = std::abs(after(20) - truth);
    EXPECT_GT(coarse / fine, 3.0);
    EXPECT_LT(coarse / fine, 6.0);
}

// Walls that are parallel: M. Mason and W. Weaver, Phys. Rev. 23 (1924) 412. y from the meniscus, 0 to 1,
// time in h^2 / D.
double MasonWeaver(double alpha, double y, double time) {
    using std::numbers::pi;
    double c = std::exp(y / alpha) / (alpha * std::expm1(1.0 / alpha));
    const double drift = std::exp(y / (2.0 * alpha) - time / (4.0 * alpha * alpha));
    for (int m = 1; m <= 60; ++m) {
        const double k = m * pi, ends = 1.0 - (m % 2 ? -1.0 : 1.0) * std::exp(-1.0 / (2.0 * alpha));
        const double weight = 1.0 + 4.0 * k * k * alpha * alpha;
        c += 16.0 * alpha * alpha * drift * std::exp(-k * k * time) * k * ends *
             (std::sin(k * y) + 2.0 * k * alpha * std::cos(k * y)) / (weight * weight);
    }
    return c;
}

// So far from the axis that the sector has parallel walls to 1 in 30,000.
TEST(LammSolver, FarFromTheAxisItIsTheSolutionOfMasonAndWeaver) {
    const double h = 0.3, middle = 1e4;
    LammColumn column{middle - h / 2, middle + h / 2, 6e-7, 0.0, 800};
    for (const double alpha : {0.2, 1.0}) {
        column.Sigma = 1.0 / (alpha * middle * h);
        LammState state = FilledColumn(column, 1.0);
        const double unit = h * h / column.Diffusion;
        for (const double time : {0.02, 0.1, 0.3}) {
            AdvanceTo(state, time * unit, 300, time < 0.05 ? 1.02 : 1.0);
            for (const double y : {0.0, 0.2, 0.5, 0.9, 1.0})
                EXPECT_NEAR(ConcentrationAt(state, middle + h * (y - 0.5)), MasonWeaver(alpha, y, time), 4e-4)
                    << alpha << " " << time << " " << y;
        }
    }
}

TEST(LammSolver, RefusesWhatIsNoColumn) {
    const auto refuses = [](LammColumn column) {
        try {
            FilledColumn(column, 1.0);
        } catch (const RuntimeError& error) {
            return !error.Text.empty();
        }
        return false;
    };
    LammColumn column = SomeColumn();
    EXPECT_FALSE(refuses(column));
    EXPECT_TRUE(refuses({7.2, 6.9, 6e-7, 1.0, 400}));
    EXPECT_TRUE(refuses({6.9, 7.2, 0.0, 1.0, 400}));
    EXPECT_TRUE(refuses({6.9, 7.2, 6e-7, 1.0, 1}));
    EXPECT_TRUE(refuses({6.9, 7.2, 6e-7, 1e4, 400}));
}

ApproachInput Protein() {
    ApproachInput input;
    input.MassKDa = 50.0;
    input.Rpm = 15000.0;
    input.Meniscus = 6.9;
    input.Bottom = 7.2;
    return input;
}

// By hand at 293.15 K: sigma = 50 * 0.27 * (15000 pi / 30)^2 / (8.314463 * 293.15) * 1e-4 = 1.3666; the
// sphere of 50 kDa and 0.73 mL/g has a radius of 2.436 nm, 3.045 nm with 1.25, so that D = 4.04740e-21 / (6
// pi 1.002e-3 3.045e-9).
TEST(EquilibriumTime, ConstantsAreThoseByHand) {
    const ApproachTimes times = TimesOf(Protein());
    EXPECT_NEAR(times.Sigma, 1.3666, 2e-4);
    EXPECT_NEAR(times.Diffusion, 7.037e-7, 2e-10);
    EXPECT_NEAR(times.Svedberg, 1.3666 * 7.037e-7 / (1570.796 * 1570.796) * 1e13, 1e-3);
    EXPECT_NEAR(times.SigmaX, 1.3666 * 2.115, 1e-3);
}

// In a column of 3 mm near 7 cm the walls are nearly parallel: the estimate is that of the sector within some
// percent. Four times the height, sixteen times as long, as far as diffusion alone counts.
TEST(EquilibriumTime, EstimateAndSolutionAgree) {
    for (const double rpm : {5000.0, 10000.0, 15000.0}) {
        ApproachInput input = Protein();
        input.Rpm = rpm;
        const ApproachTimes times = TimesOf(input);
        EXPECT_NEAR(times.EstimateSeconds / times.SolvedSeconds, 1.0, 0.05) << rpm;
    }
    ApproachInput tall = Protein(), low = Protein();
    tall.Rpm = low.Rpm = 1000.0;
    low.Meniscus = 7.0;
    low.Bottom = 7.075;
    EXPECT_NEAR(TimesOf(tall).EstimateSeconds / TimesOf(low).EstimateSeconds, 16.0, 0.05);
}

// The slowest term alone is left near the end: with ten times less to miss it takes ln 10 / (D pi^2 U / h^2)
// longer.
TEST(EquilibriumTime, TheEndIsTheSlowestTerm) {
    ApproachInput input = Protein();
    input.Epsilon = 1e-3;
    const ApproachTimes former = TimesOf(input);
    input.Epsilon = 1e-4;
    const ApproachTimes latter = TimesOf(input);
    const double inverse = former.Sigma * 7.05 * 0.3;
    const double pi2 = std::numbers::pi * std::numbers::pi;
    const double rate = former.Diffusion * pi2 * (1.0 + inverse * inverse / (4.0 * pi2)) / 0.09;
    EXPECT_NEAR((latter.EstimateSeconds - former.EstimateSeconds) * rate, std::log(10.0), 1e-9);
    EXPECT_NEAR((latter.SolvedSeconds - former.SolvedSeconds) * rate, std::log(10.0), 0.1);
}

TEST(EquilibriumTime, FromALowerSpeedItIsShorter) {
    ApproachInput input = Protein();
    const double fromFilling = TimesOf(input).SolvedSeconds;
    input.FormerRpm = 12000.0;
    EXPECT_LT(TimesOf(input).SolvedSeconds, fromFilling);
    input.FormerRpm = input.Rpm;
    EXPECT_EQ(TimesOf(input).SolvedSeconds, 0.0);
}

TEST(EquilibriumTime, WhatMakesNoExperimentIsToldInWords) {
    const auto refused = [](auto change) {
        ApproachInput input = Protein();
        change(input);
        try {
            TimesOf(input);
        } catch (const RuntimeError& error) {
            return error.Text;
        }
        return std::string();
    };
    EXPECT_NE(refused([](ApproachInput& in) { in.MassKDa = 0.0; }), "");
    EXPECT_NE(refused([](ApproachInput& in) { in.Rpm = -1.0; }), "");
    EXPECT_NE(refused([](ApproachInput& in) { in.Celsius = 101.0; }).find("0 and 100"), std::string::npos);
    EXPECT_NE(refused([](ApproachInput& in) { in.Bottom = 6.8; }), "");
    EXPECT_NE(refused([](ApproachInput& in) { in.FrictionalRatio = 0.9; }), "");
    EXPECT_NE(refused([](ApproachInput& in) {
                  in.VBar = 1.0;
                  in.Density = 1.0;
              }).find("neither"),
              std::string::npos);
    EXPECT_NE(refused([](ApproachInput& in) { in.Epsilon = 0.0; }), "");
    EXPECT_NE(refused([](ApproachInput& in) {
                  in.MassKDa = 1e5;
                  in.Rpm = 60000.0;
              }).find("leaves nothing"),
              std::string::npos);
}

// --- the test of equilibrium on such an approach -----------------------------------------------------------

// Scans of a column every few hours, with noise; truth(i) is the rms of the column's difference from that of
// the last one.
struct SimulatedApproach {
    SortedRun Run;
    std::vector<double> Truth;
};

SimulatedApproach Approach(double mass, double hoursBetween, int scans, double noise, std::uint64_t seed) {
    ApproachInput input = Protein();
    input.MassKDa = mass;
    input.Rpm = 15000.0 * std::sqrt(50.0 / mass);
    LammState state = FilledColumn(ColumnOf(input, input.Rpm), 0.4);
    SimulatedApproach made;
    NoiseSource source(seed);
    std::vector<std::vector<double>> columns;
    for (int n = 1; n <= scans; ++n) {
        AdvanceTo(state, n * hoursBetween * 3600.0, 40);
        RunScan scan;
        scan.Cell = 1;
        scan.Name.Scan = n;
        scan.Head.Rpm = static_cast<float>(input.Rpm);
        scan.Head.Wavelength = 280.0F;
        scan.Head.Time = static_cast<std::int32_t>(n * hoursBetween * 3600.0);
        columns.emplace_back();
        for (long p = 1; p <= 230; ++p) {
            const double r = 6.93 + 0.001 * static_cast<double>(p);
            columns.back().push_back(ConcentrationAt(state, r));
            scan.Radii.Resize(p, static_cast<float>(r));
            scan.Readings.Resize(p, static_cast<float>(columns.back().back() + noise * source.Gaussian()));
        }
        made.Run.Scans.push_back(scan);
    }
    for (const std::vector<double>& column : columns) {
        double squares = 0.0;
        for (std::size_t p = 0; p < column.size(); ++p)
            squares += std::pow(column[p] - columns.back()[p], 2);
        made.Truth.push_back(std::sqrt(squares / static_cast<double>(column.size())));
    }
    return made;
}

// The first scan from which all lie within the noise of the last one; from 0.
std::size_t FirstWithin(const std::vector<double>& truth, double noise) {
    std::size_t first = truth.size() - 1;
    while (first > 0 && truth[first - 1] <= noise)
        --first;
    return first;
}

std::size_t FirstNamed(const SortedRun& run) {
    const auto& judged = run.Groups.front().Judged;
    std::size_t first = judged.size() - 1;
    while (first > 0 && judged[first - 1].Answer == AtEquilibrium::Yes)
        --first;
    return first;
}

// QUILLON_MUTATIONS runs all 200 of them; 40 do between.
TEST(EquilibriumTest, NamesTheFirstScanWithinTheNoiseWithinOneScanIn95OfAHundred) {
    Work = FreshWorkspace();
    const int runs = std::getenv("QUILLON_MUTATIONS") ? 200 : 40;
    constexpr double noise = 0.004;
    int met = 0;
    for (int i = 0; i < runs; ++i) {
        const double mass = 20.0 + 20.0 * (i % 5), hours = 2.0 + i % 3;
        SimulatedApproach made = Approach(mass, hours, 16, noise, static_cast<std::uint64_t>(i) + 1);
        GroupRun(made.Run);
        JudgeRun(made.Run, {6.93F, 7.16F});
        const auto named = static_cast<int>(FirstNamed(made.Run)),
                   truth = static_cast<int>(FirstWithin(made.Truth, noise));
        met += std::abs(named - truth) <= 1;
    }
    EXPECT_GE(met, runs * 95 / 100);
}

} // namespace
} // namespace Quillon

// The system's own exponential and power: against long double arithmetic, and the same bits on every road.
#include "models/function/Exponential.h"
#include "models/function/Species.h"

#include "platform/VectorWidth.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace Quillon {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

// QUILLON_MUTATIONS tries as many numbers.
int Tries() {
    const char* text = std::getenv("QUILLON_MUTATIONS");
    return text ? std::atoi(text) : 20000;
}

// How far a number lies from what it should be, in units of the last place of that.
double UnitsOff(double value, long double exact) {
    const double rounded = static_cast<double>(exact);
    const double unit = std::nextafter(rounded, Infinity) - rounded;
    return static_cast<double>(std::fabs(static_cast<long double>(value) - exact) /
                               static_cast<long double>(unit));
}

double WorstBetween(double low, double high) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> any(low, high);
    double worst = 0.0;
    for (int i = 0; i < Tries(); ++i) {
        const double u = any(random);
        worst = std::max(worst, UnitsOff(Exponential(u), std::exp(static_cast<long double>(u))));
    }
    return worst;
}

TEST(Exponential, ErrsByLessThanAUnitInTheLastPlace) {
    EXPECT_LT(WorstBetween(-1.0, 1.0), 1.0);
    EXPECT_LT(WorstBetween(-30.0, 12.0), 1.0);
    EXPECT_LT(WorstBetween(-708.0, 709.7), 1.0);
}

TEST(Exponential, IsRoundedOnceBelowTheNormalNumbers) {
    EXPECT_LT(WorstBetween(-745.0, -708.0), 1.0);
    EXPECT_EQ(Exponential(-745.13), 5e-324);
}

TEST(Exponential, OfZeroIsOne) {
    EXPECT_EQ(Exponential(0.0), 1.0);
    EXPECT_EQ(Exponential(-0.0), 1.0);
    EXPECT_EQ(Exponential(5e-324), 1.0);
}

TEST(Exponential, EndsInZeroAndInfinity) {
    EXPECT_EQ(Exponential(-745.2), 0.0);
    EXPECT_EQ(Exponential(-1e300), 0.0);
    EXPECT_EQ(Exponential(-Infinity), 0.0);
    EXPECT_LT(Exponential(709.78), Infinity);
    EXPECT_EQ(Exponential(709.79), Infinity);
    EXPECT_EQ(Exponential(1e300), Infinity);
    EXPECT_EQ(Exponential(Infinity), Infinity);
    EXPECT_TRUE(std::isnan(Exponential(NotANumber)));
}

TEST(RealPower, ErrsByTheUnitsOfItsExponent) {
    std::mt19937_64 random(12);
    std::uniform_real_distribution<double> logarithm(-20.0, 5.0), power(0.3, 6.0);
    for (int i = 0; i < Tries(); ++i) {
        const double a = std::exp(logarithm(random)), n = power(random);
        const long double exact = std::pow(static_cast<long double>(a), static_cast<long double>(n));
        ASSERT_LT(UnitsOff(RealPower(a, n), exact), 2.0 * (1.0 + std::fabs(n * std::log(a))))
            << a << " " << n;
    }
}

TEST(RealPower, KnowsTheEndsOfTheRange) {
    EXPECT_EQ(RealPower(0.0, 2.5), 0.0);
    EXPECT_EQ(RealPower(1.0, 2.5), 1.0);
    EXPECT_EQ(RealPower(7.0, 0.0), 1.0);
    EXPECT_EQ(RealPower(0.0, 0.0), 1.0);
    EXPECT_EQ(RealPower(Infinity, 2.5), Infinity);
    EXPECT_EQ(RealPower(1e200, 2.5), Infinity);
    EXPECT_NEAR(RealPower(1e-310, 0.5) / std::sqrt(1e-310), 1.0, 1e-12);
    EXPECT_TRUE(std::isnan(RealPower(NotANumber, 2.5)));
}

// --- columns

// Runs work on the narrow road and on the widest that the processor has.
template <class Work> void OnEachRoad(Work&& work) {
    const VectorWidth before = VectorsInUse;
    for (const VectorWidth width : {VectorWidth::Narrow, WidestVectors()}) {
        VectorsInUse = width;
        work();
    }
    VectorsInUse = before;
}

void ExpectSameBits(double a, double b) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(a), std::bit_cast<std::uint64_t>(b)) << a << " " << b;
}

// In runs of any length, so that each number comes through a full register and through what is left over.
TEST(Exponentials, HaveTheSameBitsOnEveryRoadAndInEveryRun) {
    std::vector<float> x;
    for (int i = 0; i < 60; ++i)
        x.push_back(-1.0F + 0.035F * static_cast<float>(i));
    OnEachRoad([&] {
        for (long run = 1; run <= 13; ++run)
            for (std::size_t first = 0; first + static_cast<std::size_t>(run) <= x.size(); first += 5) {
                std::vector<double> out(static_cast<std::size_t>(run));
                Exponentials(out.data(), x.data() + first, run, 3.7, -1.25);
                for (std::size_t i = 0; i < out.size(); ++i)
                    ExpectSameBits(out[i], Exponential(static_cast<double>(x[first + i]) * 3.7 - 1.25));
            }
    });
}

// One number beyond the plain range among others, which keep their bits.
TEST(Exponentials, KnowTheEndsOfTheRange) {
    const std::vector<float> x = {0.5F, 1000.0F, -0.5F, -1000.0F, 0.25F, -709.5F, 0.0F};
    OnEachRoad([&] {
        std::vector<double> out(x.size());
        Exponentials(out.data(), x.data(), static_cast<long>(x.size()), 1.0, 0.0);
        EXPECT_EQ(out[1], Infinity);
        EXPECT_EQ(out[3], 0.0);
        for (std::size_t i = 0; i < x.size(); ++i)
            ExpectSameBits(out[i], Exponential(static_cast<double>(x[i])));
        Exponentials(out.data(), x.data(), static_cast<long>(x.size()), NotANumber, 0.0);
        for (const double value : out)
            EXPECT_TRUE(std::isnan(value));
    });
}

TEST(RealPowers, HaveTheSameBitsOnEveryRoad) {
    std::vector<double> a;
    for (int i = 0; i < 61; ++i)
        a.push_back(std::exp(-20.0 + 0.41 * i));
    OnEachRoad([&] {
        std::vector<double> out(a.size());
        RealPowers(out.data(), a.data(), static_cast<long>(a.size()), 2.04);
        for (std::size_t i = 0; i < a.size(); ++i)
            ExpectSameBits(out[i], RealPower(a[i], 2.04));
    });
}

TEST(RealPowers, KnowWhatIsNoPlainNumber) {
    const std::vector<double> a = {1.5, 0.0, 2.5, 1e-310, Infinity, 3.5, 1e200};
    OnEachRoad([&] {
        std::vector<double> out(a.size());
        RealPowers(out.data(), a.data(), static_cast<long>(a.size()), 2.04);
        for (std::size_t i = 0; i < a.size(); ++i)
            ExpectSameBits(out[i], RealPower(a[i], 2.04));
        const std::vector<double> odd(a.size(), NotANumber);
        RealPowers(out.data(), odd.data(), static_cast<long>(odd.size()), 2.04);
        for (const double value : out)
            EXPECT_TRUE(std::isnan(value));
    });
}

TEST(MonomerPowers, HaveTheBitsOfThePowerByItselfOnEveryRoad) {
    std::vector<double> a;
    for (int i = 0; i < 61; ++i)
        a.push_back(std::exp(-9.0 + 0.3 * i));
    OnEachRoad([&] {
        for (const double n : {1.0, 2.0, 3.0, 4.0, 7.0, 2.5}) {
            std::vector<double> out(a.size());
            MonomerPowers(out.data(), a.data(), static_cast<long>(a.size()), n);
            for (std::size_t i = 0; i < a.size(); ++i)
                ExpectSameBits(out[i], MonomerPower(a[i], n));
        }
    });
}

TEST(Exponentials, OfDoublesHaveTheBitsOfOneByItselfOnEveryRoad) {
    std::vector<double> x;
    for (int i = 0; i < 61; ++i)
        x.push_back(-3.0 + 0.1 * i);
    OnEachRoad([&] {
        for (const double slope : {0.3, -7.0, 400.0}) { // the last one beyond the range of a double
            std::vector<double> out(x.size());
            Exponentials(out.data(), x.data(), static_cast<long>(x.size()), slope, 0.7);
            for (std::size_t i = 0; i < x.size(); ++i)
                ExpectSameBits(out[i], Exponential(x[i] * slope + 0.7));
        }
    });
}

} // namespace
} // namespace Quillon

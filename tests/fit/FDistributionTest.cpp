// The F distribution against published tables, closed forms and a quadrature of its density.
#include "fit/equations/FDistribution.h"

#include "platform/RuntimeError.h"
#include "tests/support/RealMatrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <vector>

namespace Quillon {
namespace {

constexpr Real Pi = std::numbers::pi_v<Real>;

// --- the distribution once more, by quadrature -----------------------------------------------------------
//
// With tan^2 phi = n1 F / n2 the density becomes cos^(n2-1) phi sin^(n1-1) phi: smooth from 0 to pi/2 for all
// n1, n2 from 1 on, and normalised by its own integral, so that no gamma function enters.

class Density {
public:
    Density(Real p, Real q) : P(p), Q(q) { // cos^p sin^q
        Mode = std::atan(std::sqrt(std::max(q, Real(1e-12L)) / std::max(p, Real(1e-12L))));
        LogMost = Log(Mode);
        Low = Edge(0);
        High = Edge(Pi / 2);
    }
    // The share of the integral from phi to pi/2.
    Real Above(Real phi) const { return Integral(phi, High) / Integral(Low, High); }

private:
    Real Log(Real phi) const {
        Real sum = 0;
        if (P != 0) sum += P * std::log(std::cos(phi));
        if (Q != 0) sum += Q * std::log(std::sin(phi));
        return sum;
    }
    Real Value(Real phi) const {
        const Real log = Log(phi) - LogMost;
        return std::isnan(log) ? 0 : std::exp(log);
    }
    // Where the density has fallen below anything that counts, towards an end.
    Real Edge(Real end) const {
        if (Value(end) > 1e-26L) return end;
        Real out = end, in = Mode;
        for (int i = 0; i < 60; ++i) {
            const Real middle = (out + in) / 2;
            (Value(middle) > 1e-26L ? in : out) = middle;
        }
        return out;
    }
    Real Integral(Real from, Real to) const {
        if (from >= to) return 0;
        from = std::max(from, Low);
        constexpr int Panels = 24;
        const Real h = (to - from) / Panels;
        Real sum = 0;
        for (int i = 0; i < Panels; ++i)
            sum += Panel(from + static_cast<Real>(i) * h, h);
        return sum;
    }
    Real Panel(Real a, Real h) const {
        const Real fa = Value(a), fm = Value(a + h / 2), fb = Value(a + h);
        return Adaptive(a, h, fa, fm, fb, h * (fa + 4 * fm + fb) / 6, 1e-12L * (High - Low), 0);
    }
    Real Adaptive(Real a, Real h, Real fa, Real fm, Real fb, Real whole, Real tolerance, int depth) const {
        const Real fl = Value(a + h / 4), fr = Value(a + 3 * h / 4);
        const Real left = h * (fa + 4 * fl + fm) / 12, right = h * (fm + 4 * fr + fb) / 12;
        const Real more = left + right - whole;
        if (depth > 40 || std::fabs(more) < 15 * tolerance) return left + right + more / 15;
        return Adaptive(a, h / 2, fa, fl, fm, left, tolerance / 2, depth + 1) +
               Adaptive(a + h / 2, h / 2, fm, fr, fb, right, tolerance / 2, depth + 1);
    }

    Real P, Q, Mode = 0, LogMost = 0, Low = 0, High = 0;
};

Real TailByQuadrature(const Density& density, Real f, Real n1, Real n2) {
    return density.Above(std::atan(std::sqrt(n1 * f / n2)));
}

Real BetaByQuadrature(Real a, Real b, Real x) {
    // x = cos^2 phi; I_x(a, b) is the part with the smaller cosines.
    return Density(2 * a - 1, 2 * b - 1).Above(std::acos(std::sqrt(x)));
}

TEST(Quadrature, MeetsClosedForms) {
    // The yardstick itself: upper tails for n1 = 2, and the arcsine law for a = b = 1/2.
    for (const int n2 : {1, 2, 7, 100, 30000})
        for (const double f : {0.1, 1.0, 3.7}) {
            const Density density(n2 - 1, 1);
            const Real expected = std::pow(1 + 2 * Real(f) / n2, -Real(n2) / 2);
            EXPECT_NEAR(static_cast<double>(TailByQuadrature(density, f, 2, n2)),
                        static_cast<double>(expected), 1e-11);
        }
    for (const double x : {0.01, 0.3, 0.9})
        EXPECT_NEAR(static_cast<double>(BetaByQuadrature(0.5L, 0.5L, x)),
                    2 / std::numbers::pi * std::asin(std::sqrt(x)), 1e-11);
}

// --- published tables ------------------------------------------------------------------------------------

struct Tabulated {
    float Alpha, N1, N2;
    double F, LastPlace;
};

// Abramowitz & Stegun, Handbook of Mathematical Functions, table 26.9: percentage points of the F
// distribution; NIST/SEMATECH e-Handbook of Statistical Methods, section 1.3.6.7.3.
constexpr Tabulated Table[] = {
    {0.5F, 1, 1, 1.00, 0.01},      {0.1F, 1, 1, 39.86, 0.01},      {0.1F, 2, 2, 9.00, 0.01},
    {0.1F, 10, 10, 2.323, 0.001},  {0.05F, 1, 1, 161.448, 0.001},  {0.05F, 2, 1, 199.500, 0.001},
    {0.05F, 1, 2, 18.513, 0.001},  {0.05F, 3, 7, 4.347, 0.001},    {0.05F, 5, 10, 3.326, 0.001},
    {0.05F, 1, 10, 4.965, 0.001},  {0.05F, 10, 20, 2.348, 0.001},  {0.05F, 10, 10, 2.978, 0.001},
    {0.05F, 1, 100, 3.936, 0.001}, {0.05F, 10, 100, 1.927, 0.001}, {0.025F, 4, 12, 4.12, 0.01},
    {0.01F, 1, 1, 4052.19, 0.02},  {0.01F, 1, 10, 10.044, 0.001},  {0.01F, 5, 10, 5.636, 0.001},
    {0.01F, 10, 10, 4.849, 0.001}, {0.001F, 1, 10, 21.04, 0.01},   {0.001F, 10, 10, 8.754, 0.001},
};

TEST(FInverse, MeetsPublishedTables) {
    for (const Tabulated& t : Table)
        EXPECT_NEAR(static_cast<double>(FInverse(t.Alpha, t.N1, t.N2)), t.F, 0.51 * t.LastPlace)
            << t.Alpha << " " << t.N1 << " " << t.N2;
}

// --- closed forms ----------------------------------------------------------------------------------------

constexpr float Alphas[] = {0.001F, 0.005F, 0.01F, 0.05F, 0.1F, 0.25F, 0.317F, 0.5F, 0.75F, 0.9F, 0.999F};

void ExpectRelative(float got, Real expected, double tolerance) {
    EXPECT_NEAR(static_cast<double>(static_cast<Real>(got) / expected), 1.0, tolerance);
}

TEST(FInverse, TwoDegreesAbove) {
    for (const float alpha : Alphas)
        for (const int n2 : {1, 2, 3, 10, 77, 500, 30000}) {
            const Real n = n2;
            const Real expected = n / 2 * std::expm1(-2 / n * std::log(static_cast<Real>(alpha)));
            SCOPED_TRACE(testing::Message() << alpha << " " << n2);
            ExpectRelative(FInverse(alpha, 2.0F, static_cast<float>(n2)), expected, 1e-6);
        }
}

TEST(FInverse, TwoDegreesBelow) {
    // 1 - alpha = (n1 F / (2 + n1 F))^(n1/2).
    for (const float alpha : Alphas)
        for (const int n1 : {1, 2, 3, 10, 62}) {
            const Real n = n1;
            const Real share = std::exp(2 / n * std::log1p(-static_cast<Real>(alpha)));
            const Real expected = 2 * share / (n * (1 - share));
            SCOPED_TRACE(testing::Message() << alpha << " " << n1);
            ExpectRelative(FInverse(alpha, static_cast<float>(n1), 2.0F), expected, 1e-6);
        }
}

// With one degree above F is the square of Student's t, whose quantiles for 1, 2 and 4 degrees are known in
// closed form (W. T. Shaw, J. Comput. Finance 9, 37, 2006).
TEST(FInverse, SquareOfStudentsT) {
    for (const float each : Alphas) {
        SCOPED_TRACE(each);
        const Real alpha = static_cast<Real>(each);
        const Real cotangent = 1 / std::tan(Pi * alpha / 2);
        ExpectRelative(FInverse(each, 1, 1), cotangent * cotangent, 1e-6);
        const Real A = 1 - alpha;
        ExpectRelative(FInverse(each, 1, 2), 2 * A * A / (alpha * (2 - alpha)), 1e-6);
        const Real root = std::sqrt(alpha * (2 - alpha)); // sqrt(4 p (1 - p)) with p = 1 - alpha / 2
        const Real q = std::cos(std::acos(root) / 3) / root;
        ExpectRelative(FInverse(each, 1, 4), 4 * (q - 1), 1e-6);
    }
}

TEST(FInverse, DegreesChangePlacesWithTheTails) {
    for (const int n1 : {1, 3, 12, 60})
        for (const int n2 : {1, 5, 40, 2000})
            EXPECT_NEAR(static_cast<double>(FInverse(0.25F, static_cast<float>(n1), static_cast<float>(n2)) *
                                            FInverse(0.75F, static_cast<float>(n2), static_cast<float>(n1))),
                        1.0, 1e-6);
}

TEST(FInverse, EqualDegreesHaveTheirMedianAtOne) {
    for (const float n : {1.0F, 2.0F, 9.0F, 300.0F, 20000.0F})
        EXPECT_NEAR(static_cast<double>(FInverse(0.5F, n, n)), 1.0, 1e-6);
}

// The true F lies within a part in a million: the tail that the quadrature gives there lies on either side.
TEST(FInverse, MeetsTheQuadratureOverAGrid) {
    for (const int n1 : {1, 2, 3, 4, 5, 8, 13, 27, 44, 60})
        for (const int n2 : {1, 2, 3, 6, 11, 40, 150, 400, 1000, 5000, 30000}) {
            const Density density(n2 - 1, n1 - 1);
            for (const float alpha : {0.001F, 0.01F, 0.05F, 0.317F, 0.5F}) {
                const Real f =
                    static_cast<Real>(FInverse(alpha, static_cast<float>(n1), static_cast<float>(n2)));
                const auto above = [&](Real factor) {
                    return static_cast<double>(TailByQuadrature(density, f * factor, n1, n2));
                };
                EXPECT_GT(above(1 - 1e-6L), static_cast<double>(alpha)) << n1 << " " << n2 << " " << alpha;
                EXPECT_LT(above(1 + 1e-6L), static_cast<double>(alpha)) << n1 << " " << n2 << " " << alpha;
            }
        }
}

TEST(FProbability, MeetsTheQuadratureOverAGrid) {
    for (const int n1 : {1, 2, 5, 11, 34, 60})
        for (const int n2 : {1, 4, 17, 220, 3000, 30000}) {
            const Density density(n2 - 1, n1 - 1);
            for (const float f : {0.01F, 0.3F, 0.9F, 1.0F, 1.3F, 4.0F, 30.0F})
                EXPECT_NEAR(
                    static_cast<double>(FProbability(f, static_cast<float>(n1), static_cast<float>(n2))),
                    static_cast<double>(TailByQuadrature(density, static_cast<Real>(f), n1, n2)), 1e-6)
                    << n1 << " " << n2 << " " << f;
        }
}

// With two degrees of freedom above, the tail is (1 + 2 F / n2)^(-n2 / 2).
TEST(FProbability, OfADoubleReachesFarBelowASingle) {
    for (const double f : {1.0, 30.0, 500.0, 3000.0}) {
        const double n2 = 400.0, tail = std::pow(1.0 + 2.0 * f / n2, -n2 / 2.0);
        EXPECT_NEAR(FTail(f, 2.0, n2) / tail, 1.0, 1e-7) << f;
    }
    EXPECT_GT(FTail(3000.0, 2.0, 400.0), 0.0);
    EXPECT_LT(FTail(3000.0, 2.0, 400.0), 1e-200);
}

TEST(FProbability, IsOneAtZeroAndFalls) {
    EXPECT_EQ(FProbability(0.0F, 3.0F, 10.0F), 1.0F);
    float before = 1.0F;
    for (float f = 0.25F; f < 8.0F; f += 0.25F) {
        const float now = FProbability(f, 3.0F, 10.0F);
        EXPECT_LT(now, before);
        before = now;
    }
}

TEST(FInverse, RefusesWhatHasNoAnswer) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    for (const float alpha : {0.0F, 1.0F, -0.1F, 1.5F, none})
        EXPECT_THROW(FInverse(alpha, 2.0F, 5.0F), RuntimeError) << alpha;
    for (const float n : {0.0F, -3.0F, none}) {
        EXPECT_THROW(FInverse(0.1F, n, 5.0F), RuntimeError) << n;
        EXPECT_THROW(FInverse(0.1F, 2.0F, n), RuntimeError) << n;
    }
}

// --- the incomplete beta function --------------------------------------------------------------------------

TEST(BetaIncomplete, OneParameterOfOne) {
    for (const float x : {0.0F, 1e-4F, 0.125F, 0.5F, 0.9F, 0.9999F, 1.0F})
        for (const float a : {0.5F, 1.0F, 2.5F, 30.0F}) {
            const double wide = static_cast<double>(x);
            const double power = static_cast<double>(a);
            EXPECT_NEAR(static_cast<double>(BetaIncomplete(a, 1.0F, x)), std::pow(wide, power), 1e-7);
            EXPECT_NEAR(static_cast<double>(BetaIncomplete(1.0F, a, x)), 1.0 - std::pow(1.0 - wide, power),
                        1e-7);
        }
}

TEST(BetaIncomplete, ArcsineLaw) {
    for (const float x : {0.001F, 0.1F, 0.5F, 0.75F, 0.999F})
        EXPECT_NEAR(static_cast<double>(BetaIncomplete(0.5F, 0.5F, x)),
                    2 / std::numbers::pi * std::asin(std::sqrt(static_cast<double>(x))), 1e-7);
}

TEST(BetaIncomplete, EndsAreZeroAndOne) {
    for (const float a : {0.5F, 3.0F, 15000.0F}) {
        EXPECT_EQ(BetaIncomplete(a, 2.0F, 0.0F), 0.0F);
        EXPECT_EQ(BetaIncomplete(a, 2.0F, 1.0F), 1.0F);
    }
}

TEST(BetaIncomplete, MirrorsItself) {
    for (const float x : {0.0625F, 0.25F, 0.5F, 0.875F}) // 1 - x is exact
        for (const float a : {0.5F, 2.0F, 17.0F, 900.0F})
            for (const float b : {0.5F, 1.5F, 60.0F})
                EXPECT_NEAR(static_cast<double>(BetaIncomplete(a, b, x) + BetaIncomplete(b, a, 1.0F - x)),
                            1.0, 2e-7);
    EXPECT_NEAR(static_cast<double>(BetaIncomplete(40.0F, 40.0F, 0.5F)), 0.5, 1e-7);
}

// For whole parameters it is a sum of binomial probabilities (Abramowitz & Stegun 26.5.24).
TEST(BetaIncomplete, TailOfABinomial) {
    for (const int n : {3, 10, 60})
        for (int a = 1; a <= n; a += 2)
            for (const float x : {0.03F, 0.4F, 0.5F, 0.8F}) {
                const Real p = static_cast<Real>(x);
                Real term = std::pow(1 - p, Real(n)), sum = 0;
                for (int j = 0; j <= n; ++j) {
                    if (j >= a) sum += term;
                    term *= p / (1 - p) * static_cast<Real>(n - j) / static_cast<Real>(j + 1);
                }
                EXPECT_NEAR(static_cast<double>(
                                BetaIncomplete(static_cast<float>(a), static_cast<float>(n - a + 1), x)),
                            static_cast<double>(sum), 1e-7);
            }
}

TEST(BetaIncomplete, MeetsTheQuadrature) {
    for (const float a : {0.5F, 1.25F, 6.5F, 200.0F, 15000.0F})
        for (const float b : {0.5F, 3.75F, 30.0F})
            for (const float x : {0.02F, 0.35F, 0.7F, 0.97F, 0.9995F})
                EXPECT_NEAR(static_cast<double>(BetaIncomplete(a, b, x)),
                            static_cast<double>(BetaByQuadrature(static_cast<Real>(a), static_cast<Real>(b),
                                                                 static_cast<Real>(x))),
                            1e-6)
                    << a << " " << b << " " << x;
}

TEST(BetaFraction, ClosedFormForAParameterOfOne) {
    // I_x(a, 1) = x^a leaves 1 / (1 - x) for the fraction.
    for (const double a : {0.5, 4.0, 100.0})
        for (const double x : {0.1, 0.5, 0.8})
            EXPECT_NEAR(BetaFraction(a, 1.0, x) * (1.0 - x), 1.0, 1e-9);
}

TEST(LogGamma, MeetsFactorialsAndTheHalf) {
    EXPECT_NEAR(LogGamma(0.5), 0.5 * std::log(std::numbers::pi), 1e-9);
    EXPECT_NEAR(LogGamma(1.0), 0.0, 1e-9);
    Real log = 0;
    for (int n = 1; n <= 20000; ++n) {
        log += std::log(static_cast<Real>(n)); // ln n! = ln Gamma(n + 1)
        if (n > 20 && n % 997 != 0) continue;
        EXPECT_NEAR(LogGamma(n + 1.0), static_cast<double>(log), 1e-9 + 1e-14 * static_cast<double>(log))
            << n;
    }
}

TEST(SameSign, ZeroCountsAsPositive) {
    EXPECT_TRUE(SameSign(1.0F, 1e-30F));
    EXPECT_TRUE(SameSign(-1.0F, -1e-30F));
    EXPECT_FALSE(SameSign(-1.0F, 1.0F));
    EXPECT_FALSE(SameSign(1.0F, -1.0F));
    EXPECT_TRUE(SameSign(0.0F, 2.0F));
    EXPECT_FALSE(SameSign(0.0F, -2.0F));
}

// --- the root search
// ----------------------------------------------------------------------------------------

struct Search {
    float Root = 0.0F;
    int Evaluations = 0;
    float Least = 1e30F, Most = -1e30F; // arguments
};

Search RootOf(const std::function<double(double)>& g, float guess) {
    Search s;
    const bool stop = false;
    s.Root = FindRoot(
        [&](float x) {
            ++s.Evaluations;
            s.Least = std::min(s.Least, x);
            s.Most = std::max(s.Most, x);
            return static_cast<float>(g(static_cast<double>(x)));
        },
        guess, stop);
    return s;
}

double ToleranceAt(double root) {
    return 2.0 * (root * 6e-8 + 2.5e-5);
}

TEST(FindRoot, StaysInTheFirstBracketWhenItHoldsTheRoot) {
    const Search s = RootOf([](double x) { return 1.1 - x * x; }, 1.0F);
    EXPECT_NEAR(static_cast<double>(s.Root), std::sqrt(1.1), ToleranceAt(1.05));
    EXPECT_EQ(s.Least, 0.9F);
    EXPECT_EQ(s.Most, 1.1F);
    EXPECT_LE(s.Evaluations, 8); // interpolation, not bisection
}

TEST(FindRoot, WidensOutwardAndInward) {
    for (const double root : {0.004, 0.3, 2.0, 9.0, 150.0}) {
        const Search s = RootOf([&](double x) { return root * root - x * x; }, 1.04F);
        EXPECT_NEAR(static_cast<double>(s.Root), root, ToleranceAt(root)) << root;
        EXPECT_LE(s.Evaluations, 40) << root;
    }
}

TEST(FindRoot, ClosesInOnAStepByBisection) {
    const Search s = RootOf([](double x) { return x < 1.37 ? 1.0 : -1.0; }, 1.0F);
    EXPECT_NEAR(static_cast<double>(s.Root), 1.37, ToleranceAt(1.37));
}

TEST(FindRoot, MeetsARootOfHighOrder) {
    const Search s = RootOf([](double x) { return -std::pow(x - 1.25, 5.0); }, 1.2F);
    // A fifth power is flatter than a single can tell within 1e-9 of zero: the whole flat stretch is root.
    EXPECT_NEAR(static_cast<double>(s.Root), 1.25, 0.03);
}

TEST(FindRoot, ExactZeroEndsTheSearch) {
    // Zero at the middle of the bracket and next to it: the search ends there although the bracket is wide.
    const Search s = RootOf([](double x) { return std::fabs(x - 1.0) < 0.01 ? 0.0 : 1.0 - x; }, 1.0F);
    EXPECT_NEAR(static_cast<double>(s.Root), 1.0, 1e-6);
    EXPECT_EQ(s.Evaluations, 3);
}

TEST(FindRoot, LeavesAtOnceWhenStopped) {
    for (int limit = 1; limit <= 6; ++limit) {
        bool stop = false;
        int count = 0;
        const float root = FindRoot(
            [&](float x) {
                if (++count == limit) stop = true;
                return 7.0F - x * x * x;
            },
            0.5F, stop);
        EXPECT_EQ(root, 0.0F);
        EXPECT_EQ(count, limit);
    }
}

TEST(FindRoot, NoSignChangeIsAnError) {
    EXPECT_THROW(RootOf([](double) { return 1.0; }, 1.0F), RuntimeError);
    EXPECT_THROW(RootOf([](double) { return -1.0; }, 1.0F), RuntimeError);
}

} // namespace
} // namespace Quillon

// Resampling: quantiles and block lengths by hand, spreads against closed forms, coverage.
#include "studies/methods/Resampling.h"
#include "FittedCase.h"
#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/FreeMap.h"
#include "platform/Platform.h"
#include "platform/VectorWidth.h"
#include "reporting/values/Statistics.h"
#include "studies/methods/BlockLength.h"
#include "tests/support/ScriptedPlatform.h"
#include "workspace/records/Roads.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quillon {
namespace {

TEST(Quantiles, AreLinearBetweenOrderStatistics) {
    const std::vector<double> values{1.0, 2.0, 4.0, 8.0};
    EXPECT_DOUBLE_EQ(Quantile(values, 0.0), 1.0);
    EXPECT_DOUBLE_EQ(Quantile(values, 0.5), 3.0);   // place 1.5
    EXPECT_DOUBLE_EQ(Quantile(values, 0.25), 1.75); // place 0.75
    EXPECT_DOUBLE_EQ(Quantile(values, 0.9), 6.8);   // place 2.7
    EXPECT_DOUBLE_EQ(Quantile(values, 1.0), 8.0);
    EXPECT_DOUBLE_EQ(Quantile({5.0}, 0.3), 5.0);
}

TEST(Spreads, AreThoseByHand) {
    const Spread spread = SpreadOf({8.0, 1.0, 4.0, 2.0, 5.0}, 0.5);
    EXPECT_DOUBLE_EQ(spread.Mean, 4.0);
    EXPECT_DOUBLE_EQ(spread.Sd, std::sqrt((16.0 + 9.0 + 0.0 + 4.0 + 1.0) / 4.0));
    EXPECT_DOUBLE_EQ(spread.Median, 4.0);
    EXPECT_DOUBLE_EQ(spread.Lower, 2.0);
    EXPECT_DOUBLE_EQ(spread.Upper, 5.0);
    EXPECT_EQ(SpreadOf({3.0}, 0.95).Sd, 0.0);
}

// Sums of five neighbours: R(k) = 5 - k, so that g = 25, G = 2 (4 + 6 + 6 + 4) = 40 and the length is the
// cube root of 2 * 1600 / (4/3 * 625) * n.
TEST(BlockLengths, FollowTheAutocorrelation) {
    NoiseSource source(3);
    constexpr std::size_t N = 4000;
    std::vector<double> white(N), running(N);
    for (double& value : white)
        value = source.Gaussian();
    for (std::size_t i = 0; i < N; ++i)
        for (std::size_t k = 0; k < 5; ++k)
            running[i] += white[(i + k) % N];
    const double expected = std::cbrt(2.0 * 1600.0 / (4.0 / 3.0 * 625.0) * static_cast<double>(N));
    EXPECT_NEAR(static_cast<double>(BlockLength(running)), expected, 0.25 * expected);
    EXPECT_LE(BlockLength(white), 5);
    EXPECT_EQ(BlockLength({1.0, -1.0, 1.0}), 1);
    EXPECT_EQ(BlockLength(std::vector<double>(50, 0.7)), 1);
    EXPECT_EQ(BlockForLimits(running), 2 * BlockLength(running));
    EXPECT_EQ(BlockForLimits({1.0, -1.0, 1.0}), 1);
}

// Critical values at 97.5% by the share of the points that a block has: 1.9600 + 2.9694 b + 0.4160 b^2 -
// 0.5324 b^3 (Kiefer and Vogelsang, table 1).
TEST(BlockLengths, StretchLimitsByThePublishedCriticalValues) {
    for (const long block : {5L, 20L, 33L}) {
        const double b = static_cast<double>(block) / 100.0;
        const double critical = 1.9600 + 2.9694 * b + 0.4160 * b * b - 0.5324 * b * b * b;
        EXPECT_NEAR(BlockStretch(block, 100), critical / 1.9600, 1e-3);
    }
    EXPECT_EQ(BlockStretch(1, 100), 1.0);
}

TEST(Correlations, NameThePartnerThatAParameterGoesTogetherWithMost) {
    Resampling result;
    result.Names = {"MW A", "Ln K", "Ln c"};
    result.Correlations = {{1.0}, {-0.95, 1.0}, {0.97, 0.5, 1.0}};
    EXPECT_EQ(PartnerText(result, 0), "MW A goes together with Ln c: correlation 0.970.");
    EXPECT_EQ(PartnerText(result, 1), "Ln K goes together with MW A: correlation -0.950.");
    EXPECT_EQ(PartnerText(result, 2), "Ln c goes together with MW A: correlation 0.970.");
    result.Correlations[1][0] = -0.6;
    EXPECT_EQ(PartnerText(result, 1), "");
    EXPECT_EQ(PartnerText(result, 3), "") << "a derived quantity";
}

// The variance of a zero offset is that of a point over the count of its points, and offsets of different
// sets have nothing in common: 600 fits know a standard deviation to 3% and a correlation to 0.04.
TEST(Resampling, OfALinearModelHasTheCovarianceInClosedForm) {
    for (const ResampleKind kind : {ResampleKind::Parametric, ResampleKind::Residuals}) {
        Script script;
        LoadOffsetsAlone();
        ASSERT_TRUE(RunFit()) << Work.Outcome.Sentence;
        const Resampling result = Resample({600, kind, 0.95, 1}, {});
        ASSERT_EQ(result.Failed, 0);
        ASSERT_EQ(result.Slots.size(), static_cast<std::size_t>(Work.NumSets));
        CalcResiduals();
        long p = 1;
        for (std::size_t s = 0; s < result.Slots.size(); ++s) {
            const long n = Work.SetPts[static_cast<long>(s) + 1];
            double squares = 0.0;
            for (const long end = p + n; p < end; ++p)
                squares += std::pow(static_cast<double>(Work.PtResid[p]), 2);
            const double stretch = static_cast<double>(Work.NumPts) / (Work.NumPts - Work.NumFree);
            const double sd = std::sqrt(squares / static_cast<double>(n) * stretch / static_cast<double>(n));
            // Blocks of noise that goes its own way scatter a little more or less than the noise.
            const double tolerance = kind == ResampleKind::Parametric ? 0.12 : 0.4;
            EXPECT_NEAR(result.Spreads[s].Sd / sd, 1.0, tolerance) << s;
            EXPECT_NEAR(result.Spreads[s].Mean, static_cast<double>(Work.Parms[result.Slots[s]]), sd / 5.0);
            EXPECT_NEAR(result.Spreads[s].Upper - result.Spreads[s].Lower, 2 * 1.96 * sd,
                        2 * 1.96 * sd * (tolerance + 0.05));
            for (std::size_t b = 0; b < s; ++b)
                EXPECT_NEAR(result.Correlations[s][b], 0.0, 0.17);
        }
    }
}

// With little noise a fit is nearly linear: the spread is that of the normal matrix.
TEST(Resampling, OfWellDeterminedParametersScattersByTheLinearErrors) {
    Script script;
    FitCase("Model01");
    const Resampling result = Resample({500, ResampleKind::Parametric, 0.683, 2}, {});
    ASSERT_EQ(result.Failed, 0);
    ComputeCorrelations(Work.HighCount, Work.VeryHighCount);
    for (long a = 0; a < Work.NumFree; ++a) {
        const auto place = static_cast<std::size_t>(a);
        const double error = static_cast<double>(DisplayedError(FreePos(a)));
        EXPECT_NEAR(result.Spreads[place].Sd / error, 1.0, 0.15) << result.Names[place];
        for (long b = 0; b < a; ++b)
            EXPECT_NEAR(result.Correlations[place][static_cast<std::size_t>(b)],
                        static_cast<double>(Work.CorrMatrix(a, b)), 0.2);
    }
}

TEST(Resampling, IsTheSameForAnyNumberOfThreadsOnEveryRoadAndOtherForOtherSeeds) {
    Script script;
    FitCase("Model02");
    const auto valuesOf = [](std::uint64_t seed) {
        std::vector<double> values;
        for (const Draw& draw : Resample({12, ResampleKind::Residuals, 0.9, seed}, {}).Draws)
            values.insert(values.end(), draw.Values.begin(), draw.Values.end());
        return values;
    };
    const VectorWidth widest = VectorsInUse;
    VectorsInUse = VectorWidth::Narrow;
    const std::vector<double> loop = valuesOf(1);
    VectorsInUse = widest;
    for (const int threads : {1, 2, 16}) {
        UseThreads(threads);
        EXPECT_EQ(valuesOf(1), loop) << threads;
    }
    EXPECT_NE(valuesOf(2), loop);
}

TEST(Resampling, LeavesTheFitAsItIs) {
    Script script;
    FitCase("Model02");
    const Workspace own = Work;
    Resample({5, ResampleKind::Parametric, 0.95, 1}, {});
    EXPECT_TRUE(Work == own);
}

// A fit that may not take a second step ends nowhere.
TEST(Resampling, CountsFitsThatFail) {
    Script script;
    FitCase("Model02");
    Work.MaxIterations = 1;
    const Resampling result = Resample({4, ResampleKind::Parametric, 0.95, 1}, {});
    EXPECT_EQ(result.Ended, 4);
    EXPECT_EQ(result.Failed, 4);
    EXPECT_TRUE(result.Spreads.empty());
    EXPECT_EQ(QuantileText(result), "");
}

TEST(Resampling, ACancelShowsWhatThereIs) {
    Script script;
    FitCase("Model02");
    const Resampling result = Resample({50, ResampleKind::Parametric, 0.95, 1}, [](long done) {
        if (done == 7) Work.AbortFit = FlagTrue;
    });
    EXPECT_FALSE(result.Complete);
    EXPECT_EQ(result.Ended, 7);
    ASSERT_FALSE(result.Spreads.empty());
    EXPECT_EQ(QuantileText(result),
              "Fewer than five fits lie beyond each limit: the limits are no more than a hint. Run more.");
}

TEST(Resampling, LoadingConstraintsStay) {
    Script script;
    LoadCase(ModelCaseNamed("Model02Constrained"));
    RunFit();
    ASSERT_NE(Work.FitDone, 0) << Work.Outcome.Sentence;
    const Resampling result = Resample({20, ResampleKind::Parametric, 0.95, 1}, {});
    EXPECT_EQ(result.Failed, 0);
    EXPECT_LT(result.Draws[0].SumSq, 3.0 * Work.SumSq);
}

// Readings that go together with their neighbours: noise that is the mean of five independent ones. The
// linear errors count each reading as one of its own and are too small by the root of 5, so that their 95%
// hold the truth about 62 times in 100 (a normal deviate within 1.96 / 2.24); blocks see what goes together.
// Of normal means the same blocks hold 93.3% (20,000 sets of 100 points drawn for it); 500 of them scatter
// by 1.1%.
TEST(Resampling, InBlocksCoversWhereNeighboursGoTogetherAndLinearErrorsDoNot) {
    Script script;
    LoadOffsetsAlone();
    const Workspace truth = Work;
    CalcSumSq();
    const OneBased<float> exact = Work.PtFit;
    constexpr int Experiments = 100;
    NoiseSource source(11);
    long linear = 0, blocks = 0, all = 0;
    for (int i = 0; i < Experiments; ++i) {
        Work = truth;
        double last[5] = {};
        for (double& value : last)
            value = source.Gaussian();
        for (long p = 1; p <= Work.NumPts; ++p) {
            last[p % 5] = source.Gaussian();
            double sum = 0.0;
            for (const double value : last)
                sum += value;
            Work.PtY[p] = static_cast<float>(static_cast<double>(exact[p]) + 0.003 * sum / std::sqrt(5.0));
        }
        ASSERT_TRUE(RunFit());
        const Resampling result =
            Resample({200, ResampleKind::Residuals, 0.95, static_cast<std::uint64_t>(i)}, {});
        for (long a = 0; a < Work.NumFree; ++a) {
            const Spread& spread = result.Spreads[static_cast<std::size_t>(a)];
            const auto value = static_cast<double>(truth.Parms[Work.FreeIndex[a]]);
            const double off = static_cast<double>(Work.Parms[Work.FreeIndex[a]]) - value;
            linear += std::fabs(off) < 1.96 * StandardError(FreePos(a));
            blocks += spread.Lower < value && value < spread.Upper;
            ++all;
        }
    }
    const double ofLinear = static_cast<double>(linear) / static_cast<double>(all);
    const double ofBlocks = static_cast<double>(blocks) / static_cast<double>(all);
    RecordProperty("LinearCoverage", std::to_string(ofLinear));
    RecordProperty("BlockCoverage", std::to_string(ofBlocks));
    std::printf("coverage at 95%%: linear errors %.3f, blocks %.3f of %ld\n", ofLinear, ofBlocks, all);
    EXPECT_LT(ofLinear, 0.73);
    EXPECT_GE(ofBlocks, 0.92);
}

} // namespace
} // namespace Quillon

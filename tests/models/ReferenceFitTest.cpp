// The dense least squares and the simulated experiments of the tests, against closed forms and a certified
// problem.
#include "tests/support/ReferenceFit.h"
#include "tests/support/ModelCases.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace Quillon {
namespace {

// A straight line through points: intercept and slope.
struct Line {
    RealVector X, Y;
    LeastSquaresFunction Function() const {
        return [*this](const RealVector& p, RealVector& residual, RealMatrix& derivative) {
            residual.assign(X.size(), 0);
            derivative = RealMatrix(X.size(), 2);
            for (std::size_t i = 0; i < X.size(); ++i) {
                residual[i] = Y[i] - p[0] - p[1] * X[i];
                derivative(i, 0) = 1;
                derivative(i, 1) = X[i];
            }
            return true;
        };
    }
};

TEST(DenseLeastSquares, StraightLineMeetsTheClosedForm) {
    const Line line{{0, 1, 2, 3, 4, 7}, {1.1L, 2.9L, 5.2L, 6.8L, 9.1L, 15.3L}};
    const LeastSquaresEnd end = MinimiseSumSq(line.Function(), {0, 0});
    ASSERT_TRUE(end.Converged);
    const Real n = 6;
    Real sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (std::size_t i = 0; i < 6; ++i) {
        sx += line.X[i];
        sy += line.Y[i];
        sxx += line.X[i] * line.X[i];
        sxy += line.X[i] * line.Y[i];
    }
    const Real det = n * sxx - sx * sx;
    EXPECT_NEAR(static_cast<double>(end.P[1] - (n * sxy - sx * sy) / det), 0, 1e-17);
    EXPECT_NEAR(static_cast<double>(end.P[0] - (sxx * sy - sx * sxy) / det), 0, 1e-17);
    EXPECT_NEAR(static_cast<double>(end.Covariance(0, 0)), static_cast<double>(sxx / det), 1e-16);
    EXPECT_NEAR(static_cast<double>(end.Covariance(0, 1)), static_cast<double>(-sx / det), 1e-16);
    EXPECT_NEAR(static_cast<double>(end.Covariance(1, 1)), static_cast<double>(n / det), 1e-16);
    EXPECT_LT(end.Slope, 1e-15L);
}

TEST(DenseLeastSquares, WrongDerivativesRestWhereTheyAreOrthogonal) {
    // A line through the origin with the derivative given as z in place of x: rest is at sum(z y)/sum(z x).
    const RealVector x = {1, 2, 3}, y = {1.1L, 1.9L, 3.2L}, z = {1, 2, 4};
    const auto function = [&](const RealVector& p, RealVector& residual, RealMatrix& derivative) {
        residual.assign(3, 0);
        derivative = RealMatrix(3, 1);
        for (std::size_t i = 0; i < 3; ++i) {
            residual[i] = y[i] - p[0] * x[i];
            derivative(i, 0) = z[i];
        }
        return true;
    };
    const LeastSquaresEnd rest = GaussNewtonRest(function, {0});
    ASSERT_TRUE(rest.Converged);
    const Real expected = (1.1L + 2 * 1.9L + 4 * 3.2L) / (1 + 4 + 12);
    EXPECT_NEAR(static_cast<double>(rest.P[0]), static_cast<double>(expected), 1e-13);
    Real sum = 0;
    for (std::size_t i = 0; i < 3; ++i)
        sum += (y[i] - expected * x[i]) * (y[i] - expected * x[i]);
    EXPECT_NEAR(static_cast<double>(rest.SumSq), static_cast<double>(sum), 1e-15);
}

TEST(DenseLeastSquares, TellsParametersThatTheDataDoNotSeparate) {
    RealMatrix A(3, 2);
    for (std::size_t i = 0; i < 3; ++i) {
        A(i, 0) = static_cast<Real>(i + 1);
        A(i, 1) = 2 * static_cast<Real>(i + 1);
    }
    EXPECT_THROW(SolveDense(A, {1, 2, 3}), std::domain_error);
    EXPECT_THROW(SolveDense(RealMatrix(3, 1), {1, 2, 3}), std::domain_error);
    EXPECT_THROW(SolveDense(RealMatrix(1, 2), {1}), std::domain_error);
}

// Misra1a of the NIST Statistical Reference Datasets: dental research data, y = b1 (1 - exp(-b2 x)).
TEST(DenseLeastSquares, MeetsTheCertifiedValuesOfMisra1a) {
    const RealVector y = {10.07L, 14.73L, 17.94L, 23.93L, 29.61L, 35.18L, 40.02L,
                          44.82L, 50.76L, 55.05L, 61.01L, 66.40L, 75.47L, 81.78L};
    const RealVector x = {77.6L,  114.9L, 141.1L, 190.8L, 239.9L, 289.0L, 332.8L,
                          378.4L, 434.8L, 477.3L, 536.8L, 593.1L, 689.1L, 760.0L};
    const auto function = [&](const RealVector& p, RealVector& residual, RealMatrix& derivative) {
        residual.assign(x.size(), 0);
        derivative = RealMatrix(x.size(), 2);
        for (std::size_t i = 0; i < x.size(); ++i) {
            const Real e = std::exp(-p[1] * x[i]);
            residual[i] = y[i] - p[0] * (1 - e);
            derivative(i, 0) = 1 - e;
            derivative(i, 1) = p[0] * x[i] * e;
        }
        return true;
    };
    for (const RealVector& start : {RealVector{500, 0.0001L}, RealVector{250, 0.0005L}}) {
        const LeastSquaresEnd end = MinimiseSumSq(function, start);
        ASSERT_TRUE(end.Converged);
        EXPECT_NEAR(static_cast<double>(end.P[0]), 2.3894212918E+02, 1e-8);
        EXPECT_NEAR(static_cast<double>(end.P[1]), 5.5015643181E-04, 1e-14);
        EXPECT_NEAR(static_cast<double>(end.SumSq), 1.2455138894E-01, 1e-11);
        const Real variance = end.SumSq / 12;
        EXPECT_NEAR(static_cast<double>(std::sqrt(variance * end.Covariance(0, 0))), 2.7070075241E+00, 1e-9);
        EXPECT_NEAR(static_cast<double>(std::sqrt(variance * end.Covariance(1, 1))), 7.2668688436E-06, 1e-15);
    }
}

TEST(NoiseSource, IsNormalAndRepeatable) {
    NoiseSource one(7), same(7), other(8);
    double sum = 0, square = 0, fourth = 0;
    constexpr int Count = 200000;
    int differing = 0;
    for (int i = 0; i < Count; ++i) {
        const double g = one.Gaussian();
        EXPECT_EQ(g, same.Gaussian());
        differing += g != other.Gaussian();
        sum += g;
        square += g * g;
        fourth += g * g * g * g;
    }
    // Standard errors of the three means are 1, sqrt(2) and sqrt(96) over sqrt(Count); five of each.
    const double unit = 5 / std::sqrt(static_cast<double>(Count));
    EXPECT_NEAR(sum / Count, 0, unit);
    EXPECT_NEAR(square / Count, 1, unit * std::sqrt(2.0));
    EXPECT_NEAR(fourth / Count, 3, unit * std::sqrt(96.0));
    EXPECT_GT(differing, Count - 5);
}

std::vector<std::string> FitCaseNames() {
    std::vector<std::string> names;
    for (const ModelCase& c : ModelCases())
        names.push_back(c.Name);
    return names;
}

class ReferenceFitCase : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(All, ReferenceFitCase, testing::ValuesIn(FitCaseNames()),
                         [](const auto& each) { return each.param; });

TEST_P(ReferenceFitCase, ReturnsTheTruthAndForwardDifferencesRestCloseBy) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed(GetParam()));
    const RealVector truth = ReferenceParms(w);
    const ReferenceFit fit = FitReference(w);
    ASSERT_TRUE(fit.End.Converged);
    const Real freedom = w.NumPts - w.NumFree;
    // In the metric of the errors the distance from the truth is chi-squared with NumFree degrees; five
    // standard deviations of that, and some room for the curvature of the models.
    const RealVector free = FreeParms(w, truth);
    const Real atTruth = EvaluateReference(w, truth).SumSq;
    const Real distance = (atTruth - fit.End.SumSq) / (fit.End.SumSq / freedom);
    EXPECT_GT(distance, 0);
    EXPECT_LT(distance, w.NumFree + 5 * std::sqrt(2.0L * w.NumFree));
    for (std::size_t k = 0; k < free.size(); ++k) {
        const Real error = std::sqrt(fit.End.SumSq / freedom * fit.End.Covariance(k, k));
        EXPECT_LT(std::abs(fit.End.P[k] - free[k]), 5 * error)
            << "slot " << w.FreeIndex[static_cast<long>(k)];
    }
    const ReferenceFit rest = FitWithForwardDifferences(w, fit.Parms);
    ASSERT_TRUE(rest.End.Converged);
    EXPECT_GE(rest.End.SumSq, fit.End.SumSq * (1 - 1e-17L));
    EXPECT_LT(rest.End.SumSq, fit.End.SumSq * 1.001L);
}

TEST(SimulatedExperiment, NoiseIsThatOfTheCase) {
    const ModelCase& theCase = ModelCaseNamed("Model02EighteenSets");
    const Workspace w = SimulatedWorkspace(theCase);
    const Real sum = EvaluateReference(w, ReferenceParms(w)).SumSq;
    EXPECT_NEAR(static_cast<double>(std::sqrt(sum / w.NumPts)), theCase.Noise,
                5 * theCase.Noise / std::sqrt(2.0 * w.NumPts));
}

TEST(SimulatedExperiment, TableAndFlatVectorsTellTheSame) {
    const Workspace w = SimulatedWorkspace(ModelCaseNamed("Model08Scattered"));
    long n = 0;
    for (long s = 1; s <= w.NumSets; ++s) {
        const long row = w.SetRow[s];
        EXPECT_EQ(row, 3 * s);
        EXPECT_EQ(w.SetOfRow[row], s);
        for (long p = w.FitRange[0][row]; p <= w.FitRange[1][row]; ++p) {
            ++n;
            EXPECT_EQ(w.PtY[n], w.ScanValue[row][p]);
            EXPECT_EQ(w.PtSet[n], s);
            const float before = p > w.FitRange[0][row] ? w.PtX[n - 1] : -9.0F;
            EXPECT_GT(w.PtX[n], before);
        }
        EXPECT_NEAR(w.PtX[n] + w.PtX[n - w.SetPts[s] + 1], 0, 1e-6); // the ends lie evenly about 0
    }
    EXPECT_EQ(n, w.NumPts);
    // Row 3 turns at 16,000 rpm, row 6 at 12,000 and 20.4 degrees, in a cell a quarter as long.
    EXPECT_NEAR(w.SetSigmaScale[2], 0.75 * 0.75 * 20.0 / 20.4, 1e-7);
    EXPECT_NEAR(w.SetSignalScale[2], 0.25, 1e-7);
}

TEST(SimulatedExperiment, SigmaIsThatOfTheMass) {
    // 60 kDa at 15,000 rpm and 20 degrees: M (1 - 0.735 * 1.003994) w^2 / (R 293.15).
    const Workspace w = SimulatedWorkspace(ModelCaseNamed("Model01"));
    const double omega = 15000 * 2 * 3.14159265358979 / 60;
    EXPECT_NEAR(w.Parms[0], 60000 * (1 - 0.735 * 1.003994) * omega * omega / (8.3144710e7 * 293.15), 1e-6);
}

} // namespace
} // namespace Quillon

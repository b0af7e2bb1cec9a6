// Ceres Solver with one residual block for each data set.
#include "bench/Problem.h"

#include <ceres/ceres.h>

#include <memory>

namespace Quillon::Bench {

namespace {

// Residuals of one set with hand-written derivatives, row by row as Ceres wants them.
class SetCost : public ceres::CostFunction {
public:
    SetCost(const Problem& problem, int set) : P(problem), Set(set) {
        set_num_residuals(problem.PointsPerSet);
        mutable_parameter_block_sizes()->push_back(problem.Globals);
        mutable_parameter_block_sizes()->push_back(problem.PerSet);
    }

    bool Evaluate(double const* const* v, double* residuals, double** jacobians) const override {
        return P.Kind == Association::DimerTetramer ? Dimer(v, residuals, jacobians)
                                                    : Hetero(v, residuals, jacobians);
    }

private:
    // What does not hang on the point is taken out of the loops, as one would write it by hand.
    bool Dimer(double const* const* v, double* residuals, double** jacobians) const {
        const auto s = static_cast<std::size_t>(Set);
        const double k1 = std::exp(v[0][1]);
        const double k2 = std::exp(v[0][2]);
        const double sigma = P.SigmaScale[s] * v[0][0];
        const float* x = P.X.data() + Set * P.PointsPerSet;
        const float* y = P.Y.data() + Set * P.PointsPerSet;
        double* jg = jacobians ? jacobians[0] : nullptr;
        double* js = jacobians ? jacobians[1] : nullptr;
        for (int i = 0; i < P.PointsPerSet; ++i) {
            const double a = std::exp(x[i] * sigma + v[1][0]);
            const double a2 = a * a;
            const double dimer = k1 * a2;
            const double tetramer = k2 * a2 * a2;
            residuals[i] = y[i] - (a + dimer + tetramer + v[1][1]);
            if (!jacobians) continue;
            const double slope = a + 2.0 * dimer + 4.0 * tetramer;
            if (jg) {
                jg[3 * i] = -slope * x[i] * P.SigmaScale[s];
                jg[3 * i + 1] = -dimer;
                jg[3 * i + 2] = -tetramer;
            }
            if (js) {
                js[2 * i] = -slope;
                js[2 * i + 1] = -1.0;
            }
        }
        return true;
    }

    bool Hetero(double const* const* v, double* residuals, double** jacobians) const {
        const auto s = static_cast<std::size_t>(Set);
        const double k = std::exp(v[0][0]) * P.SignalAB[s];
        const double sigmaA = P.SigmaScale[s] * P.SigmaA;
        const double sigmaB = P.SigmaScale[s] * P.SigmaB;
        const float* x = P.X.data() + Set * P.PointsPerSet;
        const float* y = P.Y.data() + Set * P.PointsPerSet;
        double* jg = jacobians ? jacobians[0] : nullptr;
        double* js = jacobians ? jacobians[1] : nullptr;
        for (int i = 0; i < P.PointsPerSet; ++i) {
            const double a = std::exp(x[i] * sigmaA + v[1][0]);
            const double b = std::exp(x[i] * sigmaB + v[1][1]);
            const double ab = k * a * b;
            residuals[i] = y[i] - (P.ScaleA[s] * a + P.ScaleB[s] * b + ab + v[1][2]);
            if (jg) jg[i] = -ab;
            if (js) {
                js[3 * i] = -(P.ScaleA[s] * a + ab);
                js[3 * i + 1] = -(P.ScaleB[s] * b + ab);
                js[3 * i + 2] = -1.0;
            }
        }
        return true;
    }

    const Problem& P;
    int Set;
};

// The same residuals for Ceres' own numeric differences.
struct SetResiduals {
    const Problem& P;
    int Set;
    bool operator()(const double* globals, const double* own, double* residuals) const {
        for (int i = 0; i < P.PointsPerSet; ++i) {
            const auto at = static_cast<std::size_t>(Set * P.PointsPerSet + i);
            residuals[i] = static_cast<double>(P.Y[at]) -
                           Value(P, Set, static_cast<double>(P.X[at]), globals, own, nullptr);
        }
        return true;
    }
};

ceres::CostFunction* NumericCost(const Problem& p, int set) {
    auto* residuals = new SetResiduals{p, set};
    if (p.Kind == Association::DimerTetramer)
        return new ceres::NumericDiffCostFunction<SetResiduals, ceres::FORWARD, ceres::DYNAMIC, 3, 2>(
            residuals, ceres::TAKE_OWNERSHIP, p.PointsPerSet);
    return new ceres::NumericDiffCostFunction<SetResiduals, ceres::FORWARD, ceres::DYNAMIC, 1, 3>(
        residuals, ceres::TAKE_OWNERSHIP, p.PointsPerSet);
}

Solution Solve(const Problem& p, ceres::LinearSolverType linear, bool numeric, bool dogleg = false) {
    Solution found;
    found.Parameters = p.Start;
    double* v = found.Parameters.data();
    ceres::Problem problem;
    auto* ordering = new ceres::ParameterBlockOrdering;
    for (int s = 0; s < p.Sets; ++s) {
        double* own = v + p.Globals + s * p.PerSet;
        problem.AddResidualBlock(numeric ? NumericCost(p, s) : new SetCost(p, s), nullptr, v, own);
        ordering->AddElementToGroup(own, 0);
    }
    ordering->AddElementToGroup(v, 1);
    ceres::Solver::Options options;
    options.linear_solver_type = linear;
    if (linear == ceres::DENSE_SCHUR)
        options.linear_solver_ordering.reset(ordering);
    else
        delete ordering;
    options.num_threads = 1;
    options.function_tolerance = Tolerance(p);
    options.gradient_tolerance = 0.0;
    options.parameter_tolerance = 0.0;
    options.max_num_iterations = 100;
    if (dogleg) options.trust_region_strategy_type = ceres::DOGLEG;
    options.logging_type = ceres::SILENT;
    ceres::Solver::Summary summary;
    ceres::Solve(options, &problem, &summary);
    found.Iterations = summary.num_successful_steps + summary.num_unsuccessful_steps;
    return found;
}

} // namespace

Solution RunCeresAnalytic(const Problem& p, const std::string& linearSolver) {
    ceres::LinearSolverType type = ceres::DENSE_NORMAL_CHOLESKY;
    if (linearSolver == "schur" || linearSolver == "dogleg") type = ceres::DENSE_SCHUR;
    if (linearSolver == "sparse") type = ceres::SPARSE_NORMAL_CHOLESKY;
    if (linearSolver == "qr") type = ceres::DENSE_QR;
    return Solve(p, type, false, linearSolver == "dogleg");
}

Solution RunCeresNumeric(const Problem& p) {
    return Solve(p, ceres::DENSE_SCHUR, true);
}

} // namespace Quillon::Bench

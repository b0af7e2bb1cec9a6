// cminpack's lmder, analytic derivatives.
#include "bench/Problem.h"

#include <cminpack.h>

#include <algorithm>

namespace Quillon::Bench {

namespace {

int Evaluate(void* data, int, int, const double* v, double* residuals, double* J, int rows, int flag) {
    const auto& p = *static_cast<const Problem*>(data);
    if (flag == 2)
        std::fill_n(J, static_cast<std::size_t>(rows) * static_cast<std::size_t>(p.Parameters()), 0.0);
    double d[8];
    for (int s = 0; s < p.Sets; ++s)
        for (int i = 0; i < p.PointsPerSet; ++i) {
            const int at = s * p.PointsPerSet + i;
            const double* own = v + p.Globals + s * p.PerSet;
            const double x = static_cast<double>(p.X[static_cast<std::size_t>(at)]);
            if (flag != 2) {
                residuals[at] =
                    Value(p, s, x, v, own, nullptr) - static_cast<double>(p.Y[static_cast<std::size_t>(at)]);
                continue;
            }
            Value(p, s, x, v, own, d);
            for (int g = 0; g < p.Globals; ++g)
                J[at + rows * g] = d[g];
            for (int j = 0; j < p.PerSet; ++j)
                J[at + rows * (p.Globals + s * p.PerSet + j)] = d[p.Globals + j];
        }
    return 0;
}

} // namespace

Solution RunMinpack(const Problem& p) {
    const auto m = static_cast<std::size_t>(p.Points());
    const auto n = static_cast<std::size_t>(p.Parameters());
    Solution found;
    found.Parameters = p.Start;
    std::vector<double> residuals(m), J(m * n), diag(n), qtf(n), wa1(n), wa2(n), wa3(n), wa4(m);
    std::vector<int> pivots(n);
    int functions = 0;
    int jacobians = 0;
    lmder(Evaluate, const_cast<Problem*>(&p), static_cast<int>(m), static_cast<int>(n),
          found.Parameters.data(), residuals.data(), J.data(), static_cast<int>(m), Tolerance(p), 0.0, 0.0,
          400, diag.data(), 1, 100.0, 0, &functions, &jacobians, pivots.data(), qtf.data(), wa1.data(),
          wa2.data(), wa3.data(), wa4.data());
    found.Iterations = jacobians;
    return found;
}

} // namespace Quillon::Bench

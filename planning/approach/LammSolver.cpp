#include "planning/approach/LammSolver.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

double Xi(double radius) {
    return radius * radius / 2.0;
}

// P / (exp(P) - 1), 1 at 0.
double Bernoulli(double p) {
    return std::abs(p) < 1e-12 ? 1.0 - p / 2.0 : p / std::expm1(p);
}

double Width(const LammColumn& column) {
    return (Xi(column.Bottom) - Xi(column.Meniscus)) / column.Cells;
}

void Check(const LammColumn& column) {
    constexpr double LargestExponent = 300.0; // exp of it is still a number to count with
    if (!(column.Meniscus > 0.0 && column.Bottom > column.Meniscus && std::isfinite(column.Bottom)))
        RaiseError("The bottom of the column has to lie outside of its meniscus");
    if (!(column.Diffusion > 0.0 && std::isfinite(column.Diffusion)))
        RaiseError("The diffusion coefficient has to be above 0");
    if (column.Cells < 2) RaiseError("The column needs two cells or more");
    if (!(std::abs(column.Sigma) * (Xi(column.Bottom) - Xi(column.Meniscus)) <= LargestExponent))
        RaiseError("Such a speed leaves nothing to be seen of such a mass: reduce one of them");
}

// The change of the means in time is a tridiagonal matrix times the means.
struct Tridiagonal {
    std::vector<double> Below, On, Above; // Below[0] and the last Above are unused
};

Tridiagonal ChangeMatrix(const LammColumn& column) {
    const auto n = static_cast<std::size_t>(column.Cells);
    const double h = Width(column), p = column.Sigma * h;
    Tridiagonal m{std::vector<double>(n), std::vector<double>(n), std::vector<double>(n)};
    for (std::size_t i = 0; i + 1 < n; ++i) { // the face between i and i + 1
        const double xi = Xi(column.Meniscus) + h * static_cast<double>(i + 1);
        const double share = 2.0 * xi * column.Diffusion / (h * h);
        const double inward = share * Bernoulli(p), outward = share * Bernoulli(-p);
        m.On[i] -= outward;
        m.Above[i] += inward;
        m.On[i + 1] -= inward;
        m.Below[i + 1] += outward;
    }
    return m;
}

std::vector<double> Times(const Tridiagonal& m, const std::vector<double>& c) {
    std::vector<double> change(c.size());
    for (std::size_t i = 0; i < c.size(); ++i) {
        change[i] = m.On[i] * c[i];
        if (i > 0) change[i] += m.Below[i] * c[i - 1];
        if (i + 1 < c.size()) change[i] += m.Above[i] * c[i + 1];
    }
    return change;
}

// Solves (1 - step m) x = right: positive on the diagonal by columns, so that no pivot is looked for.
std::vector<double> SolveImplicit(const Tridiagonal& m, double step, std::vector<double> right) {
    const std::size_t n = right.size();
    std::vector<double> above(n);
    double pivot = 1.0 - step * m.On[0];
    for (std::size_t i = 0;; ++i) {
        right[i] /= pivot;
        if (i + 1 == n) break;
        above[i] = -step * m.Above[i] / pivot;
        const double below = -step * m.Below[i + 1];
        right[i + 1] -= below * right[i];
        pivot = 1.0 - step * m.On[i + 1] - below * above[i];
    }
    for (std::size_t i = n - 1; i-- > 0;)
        right[i] -= above[i] * right[i + 1];
    return right;
}

// One step of TR-BDF2: by the trapezoid to the part gamma of it, then by backward differences over both.
void Step(const Tridiagonal& m, double dt, std::vector<double>& c) {
    const double gamma = 2.0 - std::sqrt(2.0); // the same matrix serves both halves
    const double half = gamma * dt / 2.0;
    std::vector<double> right = Times(m, c);
    for (std::size_t i = 0; i < c.size(); ++i)
        right[i] = c[i] + half * right[i];
    const std::vector<double> between = SolveImplicit(m, half, std::move(right));
    std::vector<double> last(c.size());
    const double ofBetween = 1.0 / (gamma * (2.0 - gamma));
    const double ofStart = (1.0 - gamma) * (1.0 - gamma) / (gamma * (2.0 - gamma));
    for (std::size_t i = 0; i < c.size(); ++i)
        last[i] = ofBetween * between[i] - ofStart * c[i];
    c = SolveImplicit(m, half, std::move(last));
}

double CentreOf(const LammState& state, std::size_t cell) {
    return Xi(state.Column.Meniscus) + Width(state.Column) * (static_cast<double>(cell) + 0.5);
}

// c exp(-sigma (xi - middle)) at the middle of a cell, where c has the shape of an equilibrium within it.
double ReducedAt(const LammState& state, std::size_t cell, double middle) {
    const double p = state.Column.Sigma * Width(state.Column) / 2.0;
    const double bulge = std::abs(p) < 1e-6 ? 1.0 : p / std::sinh(p);
    return state.Mean[cell] * bulge * std::exp(-state.Column.Sigma * (CentreOf(state, cell) - middle));
}

} // namespace

LammState FilledColumn(const LammColumn& column, double concentration) {
    Check(column);
    return {column, 0.0, std::vector<double>(static_cast<std::size_t>(column.Cells), concentration)};
}

LammState ColumnAtRest(const LammColumn& column, double concentration) {
    LammState state = FilledColumn(column, concentration);
    const double densest = CentreOf(state, column.Sigma < 0.0 ? 0 : state.Mean.size() - 1);
    double sum = 0.0;
    for (std::size_t i = 0; i < state.Mean.size(); ++i)
        sum += state.Mean[i] = std::exp(column.Sigma * (CentreOf(state, i) - densest));
    for (double& mean : state.Mean)
        mean *= concentration * column.Cells / sum;
    return state;
}

void AdvanceTo(LammState& state, double seconds, int steps, double growth) {
    const double length = seconds - state.Seconds;
    if (!(length > 0.0) || steps < 1) return;
    const Tridiagonal m = ChangeMatrix(state.Column);
    double parts = 0.0, part = 1.0;
    for (int i = 0; i < steps; ++i, part *= growth)
        parts += part;
    part = length / parts;
    for (int i = 0; i < steps; ++i, part *= growth)
        Step(m, part, state.Mean);
    state.Seconds = seconds;
}

double MassOf(const LammState& state) {
    double sum = 0.0;
    for (const double mean : state.Mean)
        sum += mean;
    return sum * Width(state.Column);
}

double ConcentrationAt(const LammState& state, double radius) {
    const double xi = std::clamp(Xi(radius), Xi(state.Column.Meniscus), Xi(state.Column.Bottom));
    const double place = (xi - Xi(state.Column.Meniscus)) / Width(state.Column) - 0.5;
    const auto last = static_cast<double>(state.Mean.size() - 2);
    const auto left = static_cast<std::size_t>(std::clamp(std::floor(place), 0.0, last));
    const double share =
        place - static_cast<double>(left); // beyond 0 to 1 in the outer halves of the end cells
    return (1.0 - share) * ReducedAt(state, left, xi) + share * ReducedAt(state, left + 1, xi);
}

double RiseOf(const LammState& state) {
    return ConcentrationAt(state, state.Column.Bottom) - ConcentrationAt(state, state.Column.Meniscus);
}

} // namespace Quillon

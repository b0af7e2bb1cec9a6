#include "models/function/NonIdeal.h"

#include "models/function/Exponential.h"
#include "models/function/Species.h"
#include "workspace/records/Workspace.h"

#include <cmath>
#include <optional>

namespace Quillon {

namespace {

// With c1 the monomer, ct the total weight concentration and e the non-ideality factor,
//     c1 = a exp(e ct),   cN = K1 c1^N,   cM = K2 c1^M,   f(ct) = ct - c1 - cN - cM = 0,
//     f'(ct) = 1 - e (c1 + N cN + M cM)
// where mass action holds between concentrations as if ideal, since every unit of monomer brings the same
// term to the logarithm of the activity coefficient (E. T. Adams and H. Fujita, in J. W. Williams, ed.,
// Ultracentrifugal Analysis in Theory and Experiment, Academic Press 1963).
struct Trial {
    double Monomer{}, N{}, M{}, Total{};
    double PassMonomer{}; // the monomer at the total that the pass started from
};

bool IsFinite(const Trial& t) {
    return std::isfinite(t.Monomer) && std::isfinite(t.N) && std::isfinite(t.M) && std::isfinite(t.Total);
}

bool Close(double now, double before, double tolerance) {
    return std::fabs(now - before) < tolerance * before;
}

struct Equations {
    const FitFrame& F;
    double a;
    bool HasN, HasM;

    double Oligomer(double m) const { return HasN ? F.K1 * MonomerPower(m, F.PowerN) : 0.0; }
    double Second(double m) const { return HasM ? F.K2 * MonomerPower(m, F.PowerM) : 0.0; }
    // f'(ct): positive at the physical root, where mass action still damps.
    double Slope(double c1, double cN, double cM) const {
        return 1.0 - c1 * F.BFactor - F.PowerN * F.BFactor * cN - F.PowerM * F.BFactor * cM;
    }
};

// Model 1, where c1 is all of ct: plain fixed-point steps c1 <- a exp(e c1), to 1e-8. From the point before
// it takes a few passes; what needs a hundred does not contract, and is left to the bracketed search.
bool MonomerPasses(const Equations& q, Trial& t) {
    for (int pass = 0; pass <= 100; ++pass) {
        // [decision: attraction-is-positive]
        const double m = q.a * Exponential(t.Monomer * q.F.BFactor);
        if (!std::isfinite(m)) return false;
        const bool converged = Close(m, t.Monomer, 1e-8);
        t.Monomer = t.PassMonomer = t.Total = m;
        if (converged) return true;
    }
    return false;
}

// Models with oligomers: Newton steps ct <- ct - f / f' on the total, to 1e-7 in each concentration.
bool OligomerPasses(const Equations& q, Trial& t) {
    const double e = q.F.BFactor;
    for (int pass = 0; pass <= 100; ++pass) {
        Trial next;
        const double m = q.a * Exponential(t.Total * e);
        const double f = t.Total - m - q.Oligomer(m) - q.Second(m);
        next.PassMonomer = m;
        next.Total = t.Total - f / q.Slope(t.Monomer, t.N, t.M);
        next.Monomer = q.a * Exponential(next.Total * e);
        next.N = q.Oligomer(next.Monomer);
        next.M = q.Second(next.Monomer);
        if (!IsFinite(next) || !std::isfinite(m)) return false; // the last finite pass stands
        const bool converged = Close(next.Monomer, t.Monomer, 1e-7) && Close(next.N, t.N, 1e-7) &&
                               Close(next.Total, t.Total, 1e-7) && (!q.HasM || Close(next.M, t.M, 1e-7));
        t = next;
        if (converged) return true;
    }
    return false;
}

Trial TrialAt(const Equations& q, double total) {
    const double m = q.a * Exponential(total * q.F.BFactor);
    return {m, q.Oligomer(m), q.Second(m), total, m};
}
double SlopeAt(const Equations& q, double total) {
    const Trial t = TrialAt(q, total);
    return q.Slope(t.Monomer, t.N, t.M);
}

// The physical root from below: the function is concave, so that Newton's steps from a total of 0 rise to
// the smaller root and never pass it. Nothing where there is none.
std::optional<Trial> RootFromBelow(const Equations& q) {
    double total = 0.0;
    for (int pass = 0; pass < 200; ++pass) {
        const Trial t = TrialAt(q, total);
        const double slope = q.Slope(t.Monomer, t.N, t.M);
        const double rest = t.Monomer + t.N + t.M - total;
        if (!std::isfinite(rest) || !(slope > 0.0)) return {};
        const double step = rest / slope;
        total += step;
        if (!std::isfinite(total)) return {};
        if (std::fabs(step) <= 1e-13 * total) return Trial{t.Monomer, t.N, t.M, total, t.Monomer};
    }
    return {};
}

// Where the sides of the equation never meet: the total at which they come closest, that of slope 0. The two
// roots have met there when they vanished, so that the signal goes on without a jump, and it hangs on nothing
// but the parameters. The slope falls with the total, from 1 at most.
Trial ClosestApproach(const Equations& q) {
    double low = 0.0;
    if (!(SlopeAt(q, low) > 0.0)) return TrialAt(q, low);
    double high = 1.0;
    while (SlopeAt(q, high) > 0.0 && std::isfinite(high))
        high *= 2.0;
    while (high - low > 1e-15 * high) {
        const double middle = low + (high - low) / 2.0;
        if (middle <= low || middle >= high) break;
        (SlopeAt(q, middle) > 0.0 ? low : high) = middle;
    }
    return TrialAt(q, low);
}

Trial StartOf(const Equations& q, double measured, bool newSet) {
    const FitFrame& f = q.F;
    if (!newSet) return {f.LastMonomer, f.LastN, f.LastM, f.LastTotal, f.LastMonomer};
    Trial t;
    t.Monomer = q.a * Exponential((measured - f.Offset) * f.BFactor / f.ScaleA);
    t.N = q.Oligomer(t.Monomer);
    t.M = q.Second(t.Monomer);
    t.Total = t.N + q.a + t.M;
    t.PassMonomer = t.Monomer;
    return t;
}

} // namespace

NonIdealPoint SolveNonIdeal(FitFrame& frame, double a, double measured, bool newSet) {
    const ModelFamily family = FamilyOf(Work.Model);
    const Equations q{frame, a, HasPowerN(family), HasPowerM(family)};
    Trial t = StartOf(q, measured, newSet);
    if (!IsFinite(t)) t = {a, q.Oligomer(a), q.Second(a), a, a};
    const bool converged = q.HasN ? OligomerPasses(q, t) : MonomerPasses(q, t);
    if (!converged || !(q.Slope(t.Monomer, t.N, t.M) > 0.0)) {
        const std::optional<Trial> root = RootFromBelow(q);
        t = root ? *root : ClosestApproach(q);
    }
    frame.LastTotal = t.PassMonomer + t.N + t.M;
    frame.LastN = t.N * frame.ScaleA;
    frame.LastM = t.M * frame.ScaleA;
    frame.LastMonomer = t.Monomer;
    return {t.Monomer, frame.LastN, frame.LastM};
}

} // namespace Quillon

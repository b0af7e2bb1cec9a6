#include "fit/equations/NormalEquations.h"

#include "fit/equations/Bounds.h"
#include "fit/equations/MatInv.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace Quillon {

namespace {

// Where a matrix has no inverse, dampings from a hundredth of what a double resolves of its largest element
// are tried, in decades; at the size of the diagonal itself any symmetric matrix of products has one.
constexpr double SmallestDamping = 1e-18;
constexpr double NextDamping = 10.0;

using Places = std::vector<FreePos>;

// The free positions of the equations, which are those of the analysis at the time they were taken.
OrdinalRange<FreeKind> EachPlace(const NormalEquations& e) {
    return {FreePos(0), FreePos(e.Vector.Hi())};
}

Places AllPlaces(const NormalEquations& e) {
    Places all;
    for (const FreePos a : EachPlace(e))
        all.push_back(a);
    return all;
}

ZeroBasedMatrix<double> Damped(const NormalEquations& e, const Places& places, double damping) {
    const long last = static_cast<long>(places.size()) - 1;
    ZeroBasedMatrix<double> matrix(last, last);
    for (long i = 0; i <= last; ++i)
        for (long j = 0; j <= last; ++j)
            matrix(i, j) = e.Matrix(places[static_cast<std::size_t>(i)], places[static_cast<std::size_t>(j)]);
    for (long i = 0; i <= last; ++i)
        matrix(i, i) += damping;
    return matrix;
}

// Calls attempt with a damping, and with larger ones until it answers true; the damping that did it, or -1
// where none did.
template <class Attempt> double FirstThatServes(double damping, double scale, Attempt&& attempt) {
    const double most = std::max(damping, 10.0 * scale);
    while (damping <= most) {
        try {
            if (attempt(damping)) return damping;
        } catch (const RuntimeError&) {
            // Numbers beyond the range of a double are no solution.
        }
        damping = std::max(damping * NextDamping, SmallestDamping * scale);
        if (!(damping > 0.0)) break;
    }
    return -1.0;
}

// The inverse at the given damping or the next larger one that has an inverse; damping is then that one. An
// empty matrix where none of them has.
ZeroBasedMatrix<double> InverseFrom(const NormalEquations& e, double& damping) {
    ZeroBasedMatrix<double> matrix;
    damping = FirstThatServes(damping, LargestDiagonal(e), [&](double tried) {
        matrix = Damped(e, AllPlaces(e), tried);
        return Invert(matrix) == Inverted;
    });
    return damping < 0.0 ? ZeroBasedMatrix<double>{} : matrix;
}

// The right side of the problem without the other places.
ZeroBased<double> RightSide(const NormalEquations& e, const Places& places) {
    ZeroBased<double> right(static_cast<long>(places.size()) - 1);
    for (std::size_t i = 0; i < places.size(); ++i)
        right[static_cast<long>(i)] = e.Vector[places[i]];
    return right;
}

// The step of the problem without the other places, by free position.
PerFree<double> StepOf(const NormalEquations& e, const Places& places, double damping) {
    const long last = static_cast<long>(places.size()) - 1;
    ZeroBased<double> solution(last);
    const double served = FirstThatServes(damping, LargestDiagonal(e), [&](double tried) {
        ZeroBasedMatrix<double> matrix = Damped(e, places, tried);
        const Decomposition d = Factor(matrix);
        if (d.Code != Decomposed) return false;
        ZeroBased<double> right = RightSide(e, places); // is used up
        Solve(d, right, matrix, solution);
        return true;
    });
    PerFree<double> step(e.Vector.Hi());
    if (served < 0.0) return step;
    for (long i = 0; i <= last; ++i)
        step[places[static_cast<std::size_t>(i)]] = solution[i];
    return step;
}

// True when the fitted parameter stands at a bound and would be moved beyond it.
bool IsBlocked(FreePos place, double step) {
    if (!Work.BoundsActive) return false;
    const SlotNo slot = SlotOf(place);
    const bool rises = (step > 0.0) == (IsAdditiveSlot(slot) || Work.ParmScale[slot] > 0.0F);
    return StandsAtBound(slot, rises ? 1 : 0);
}

// Takes out what is blocked; false when nothing is.
bool TakeOutBlocked(Places& places, const PerFree<double>& step) {
    const auto blocked = [&](FreePos place) { return step[place] != 0.0 && IsBlocked(place, step[place]); };
    return std::erase_if(places, blocked) > 0;
}

double LargestSignal() {
    const Workspace& w = Work; // the thread's own is looked up once
    float largest = 0.0F;
    for (long p = 1; p <= w.NumPts; ++p)
        if (w.PtX[p] != PointMarker) largest = std::max(largest, std::fabs(w.PtY[p]));
    return static_cast<double>(largest);
}

// The variance of a point by the fit.
double VarianceOfAPoint() {
    const int freedom = Work.NumPts - Work.NumFree;
    const double found = freedom > 0 ? Work.SumSq / freedom : 0.0;
    return std::max(found, LeastVariance());
}

// What a step of the linearised problem lowers the sum by, in shares of a degree of freedom.
double DecreaseBy(const NormalEquations& e, const PerFree<double>& step) {
    double promise = 0.0;
    for (const FreePos a : EachPlace(e))
        promise += step[a] * e.Vector[a];
    if (promise == 0.0) return 0.0;
    const double d = promise / VarianceOfAPoint();
    return std::isfinite(d) && d > -1.0 ? std::fabs(d) : std::numeric_limits<double>::infinity();
}

} // namespace

double LeastVariance() {
    const double floor = RoundingOfSingles * LargestSignal();
    return floor * floor;
}

NormalEquations TakeNormalEquations() {
    return {Work.NormMatrix, Work.NormVector};
}

double LargestDiagonal(const NormalEquations& e) {
    double largest = 0.0;
    for (const FreePos a : EachPlace(e))
        largest = std::max(largest, e.Matrix(a, a));
    return largest;
}

PerFree<double> DampedStep(const NormalEquations& e, double damping, MovedParms parms) {
    Places places = AllPlaces(e);
    if (parms == MovedParms::Concentrations)
        std::erase_if(places, [](FreePos a) { return !FollowsASet(RuleOfSlot(SlotOf(a)).Holds); });
    for (;;) {
        PerFree<double> step = StepOf(e, places, damping);
        if (!TakeOutBlocked(places, step)) return step;
    }
}

double ExpectedDecrease(const NormalEquations& e, MovedParms parms) {
    return DecreaseBy(e, DampedStep(e, 0.0, parms));
}

double ExpectedDecreaseOf(const NormalEquations& e, const PerFree<double>& step) {
    Places places = AllPlaces(e);
    return TakeOutBlocked(places, step) ? ExpectedDecrease(e) : DecreaseBy(e, step);
}

ZeroBasedMatrix<double> DeterminedInverse(const NormalEquations& e) {
    double damping = 0.0;
    ZeroBasedMatrix<double> inverse = InverseFrom(e, damping);
    if (damping == 0.0 || inverse.Size() == 0) return inverse;
    double stronger = 100.0 * damping;
    const ZeroBasedMatrix<double> other = InverseFrom(e, stronger);
    for (const FreePos a : EachPlace(e)) {
        // A hundredfold damping takes a variance that rests on it down by as much, any other not visibly.
        if (other.Size() != 0 && inverse(a, a) <= 1.5 * other(a, a)) continue;
        for (const FreePos b : EachPlace(e))
            inverse(a, b) = inverse(b, a) = 0.0;
    }
    return inverse;
}

} // namespace Quillon

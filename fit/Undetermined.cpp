#include "fit/Undetermined.h"

#include "fit/equations/JacobiEigen.h"
#include "models/function/Constraints.h"
#include "models/function/FitFunction.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double NamedShare = 1.0 / 3.0; // of the largest element

using Places = std::vector<FreePos>;

Places WithoutEffect(const NormalEquations& e) {
    Places places;
    for (FreePos a(0); a <= FreePos(e.Vector.Hi()); ++a)
        if (e.Matrix(a, a) == 0.0) places.push_back(a);
    return places;
}

bool HoldsNumbers(const NormalEquations& e) {
    return std::all_of(e.Matrix.Data(), e.Matrix.Data() + e.Matrix.Size(),
                       [](double v) { return std::isfinite(v); });
}

const std::string& NameOf(FreePos place) {
    return Work.ParmName[SlotOf(place)];
}

// "a", "a and b", "a, b and c"
std::string Listed(const Places& places) {
    std::string text;
    for (std::size_t i = 0; i < places.size(); ++i)
        text += (i == 0 ? "" : i + 1 == places.size() ? " and " : ", ") + NameOf(places[i]);
    return text;
}

// A name may end with a point of its own, as that of the virial coefficient does.
std::string WithAdvice(const std::string& sentence, const char* advice) {
    return sentence + (sentence.ends_with('.') ? " " : ". ") + advice;
}

std::string HoldThem(const std::string& sentence, const Places& places) {
    return WithAdvice(sentence, places.size() == 1 ? "Hold it." : "Hold them.");
}

// The eigenvector of the smallest eigenvalue.
PerFree<double> LongestAxis(const NormalEquations& e) {
    ZeroBasedMatrix<double> matrix = e.Matrix;
    ZeroBased<double> values;
    ZeroBasedMatrix<double> vectors;
    JacobiEigen(matrix, values, vectors);
    const long axis = std::min_element(values.begin(), values.end()) - values.begin();
    PerFree<double> elements(values.Hi());
    for (FreePos a(0); a <= FreePos(values.Hi()); ++a)
        elements[a] = vectors(a.Number, axis);
    return elements;
}

// The free positions whose elements are above a third of the largest.
Places LeadingPlaces(const PerFree<double>& elements) {
    double largest = 0.0;
    for (const double element : elements)
        largest = std::max(largest, std::fabs(element));
    Places places;
    for (FreePos a(0); a <= FreePos(elements.Hi()); ++a)
        if (std::fabs(elements[a]) > NamedShare * largest) places.push_back(a);
    return places;
}

// Takes out what the fitted value at a point depends on; false where it has no value.
bool TakeOutMoved(Places& places, long point) {
    try {
        const double value = FitFunction(point);
        if (!Work.AbortFit) CalcDerivs(point, value);
    } catch (const RuntimeError&) {
        return false; // the fit that follows fails at this point and tells why
    }
    std::erase_if(places, [](FreePos a) { return Work.Deriv[a] != 0.0; });
    return !Work.AbortFit;
}

bool IsFirstOfSet(long point) {
    return point == 1 || SetOfPoint(point) != SetOfPoint(point - 1);
}

// Asks the true points that are the first ones of their sets, or the others, in turn for as long as a place
// is left; false where one has no value.
bool TakeOutAllMoved(Places& places, bool byFirstOnes) {
    for (long p = 1; p <= Work.NumPts && !places.empty(); ++p)
        if (!IsPseudoPoint(p) && IsFirstOfSet(p) == byFirstOnes && !TakeOutMoved(places, p)) return false;
    return true;
}

} // namespace

std::string CombinationText(const PerFree<double>& elements) {
    const Places places = LeadingPlaces(elements);
    const std::string first = "The data do not determine " + NameOf(places.at(0));
    if (places.size() == 1) return HoldThem(first, places);
    return WithAdvice(first + " together with " + Listed({places.begin() + 1, places.end()}),
                      "Hold one of them.");
}

std::string UndeterminedText(const NormalEquations& e) {
    if (e.Matrix.Size() == 0 || !HoldsNumbers(e)) return "";
    const Places none = WithoutEffect(e);
    return none.empty() ? CombinationText(LongestAxis(e)) : WithoutEffectText(none);
}

std::vector<FreePos> PlacesWithoutEffect() {
    Places left;
    for (const FreePos a : EachFree())
        left.push_back(a);
    const FitOutcome outcome = Work.Outcome;
    ResetFitFunction();
    const bool answered = TakeOutAllMoved(left, true) && TakeOutAllMoved(left, false); // mostly the first do
    ResetFitFunction();
    ResetConstraintSums();
    ForgetStop();
    Work.Outcome = outcome;
    return answered && Work.NumPts > 0 ? left : Places{};
}

std::string WithoutEffectText(const std::vector<FreePos>& places) {
    return HoldThem("No point depends on " + Listed(places), places);
}

bool HasInverse() {
    return Work.NumFree > 0 && Work.NormMatrix.RowHi() == Work.NumFree - 1 &&
           Work.NormMatrix.ColumnHi() == Work.NumFree - 1;
}

bool HasNoError(FreePos place) {
    return !HasInverse() || Work.NormMatrix(place, place) == 0.0;
}

bool IsUndetermined(FreePos place) {
    if (HasNoError(place)) return true;
    const SlotNo slot = SlotOf(place);
    const Quantity holds = RuleOfSlot(slot).Holds;
    if (holds == Quantity::Offset) return false;
    const double size = IsAdditive(holds) ? 1.0 : std::fabs(static_cast<double>(Work.Parms[slot]));
    return !(StandardError(place) <= size);
}

bool HasError(SlotNo slot) {
    return Work.FitDone != 0 && IsFitted(slot) && HasInverse() && !HasNoError(FreePosOf(slot));
}

double StandardError(FreePos freePosition) {
    return std::sqrt(std::fabs(Work.NormMatrix(freePosition, freePosition))) *
           static_cast<double>(Work.RmsResidual);
}

float DisplayedError(FreePos freePosition) {
    const SlotNo slot = SlotOf(freePosition);
    const double value = static_cast<double>(Work.Parms[slot]);
    const double error = StandardError(freePosition);
    const double shown = static_cast<double>(ToUserUnits(slot, Work.Parms[slot]));
    const double above = static_cast<double>(ToUserUnits(slot, ToSingle(value + error)));
    const double below = static_cast<double>(ToUserUnits(slot, ToSingle(value - error)));
    return ToSingle(std::max(std::abs(above - shown), std::abs(below - shown)));
}

std::string PressingText() {
    Places lower, upper;
    for (const FreePos a : EachFree())
        if (Work.AtBound[a] != 0) (Work.AtBound[a] < 0 ? lower : upper).push_back(a);
    const auto pressing = [](const Places& places, const std::string& side) {
        if (places.empty()) return std::string();
        return Listed(places) + (places.size() == 1 ? " presses against its " : " press against their ") +
               side + (places.size() == 1 ? " bound." : " bounds.");
    };
    const std::string both = lower.empty() || upper.empty() ? "" : " ";
    return pressing(lower, "lower") + both + pressing(upper, "upper");
}

} // namespace Quillon

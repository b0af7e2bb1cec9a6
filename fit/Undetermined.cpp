#include "fit/Undetermined.h"

#include "fit/Confidence.h"
#include "models/ModelTable.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double NamedShare = 1.0 / 3.0; // of the largest element

using Places = std::vector<long>;

Places WithoutEffect(const NormalEquations& e) {
    Places places;
    for (long a = 0; a <= e.Vector.Hi(); ++a)
        if (e.Matrix(a, a) == 0.0) places.push_back(a);
    return places;
}

bool HoldsNumbers(const NormalEquations& e) {
    return std::all_of(e.Matrix.Data(), e.Matrix.Data() + e.Matrix.Size(),
                       [](double v) { return std::isfinite(v); });
}

const std::string& NameOf(long place) {
    return Work.ParmName[Work.FreeIndex[place]];
}

// "a", "a and b", "a, b and c"
std::string Listed(const Places& places) {
    std::string text;
    for (std::size_t i = 0; i < places.size(); ++i)
        text += (i == 0 ? "" : i + 1 == places.size() ? " and " : ", ") + NameOf(places[i]);
    return text;
}

std::string HoldThem(const Places& places) {
    return places.size() == 1 ? ". Hold it." : ". Hold them.";
}

} // namespace

std::vector<long> UndeterminedPlaces(const NormalEquations& e) {
    if (e.Matrix.Size() == 0 || !HoldsNumbers(e)) return {};
    const Places none = WithoutEffect(e);
    if (!none.empty()) return none;
    ZeroBasedMatrix<double> matrix = e.Matrix;
    ZeroBased<double> values;
    ZeroBasedMatrix<double> vectors;
    JacobiEigen(matrix, values, vectors);
    const long axis = std::min_element(values.begin(), values.end()) - values.begin();
    double largest = 0.0;
    for (long a = 0; a <= values.Hi(); ++a)
        largest = std::max(largest, std::fabs(vectors(a, axis)));
    Places places;
    for (long a = 0; a <= values.Hi(); ++a)
        if (std::fabs(vectors(a, axis)) > NamedShare * largest) places.push_back(a);
    return places;
}

std::string UndeterminedText(const NormalEquations& e) {
    const Places places = UndeterminedPlaces(e);
    if (places.empty()) return "";
    if (e.Matrix(places[0], places[0]) == 0.0)
        return "No point depends on " + Listed(places) + HoldThem(places);
    const std::string first = "The data do not determine " + NameOf(places[0]);
    if (places.size() == 1) return first + HoldThem(places);
    return first + " together with " + Listed({places.begin() + 1, places.end()}) + ". Hold one of them.";
}

bool HasNoError(long place) {
    return Work.NormMatrix(place, place) == 0.0;
}

bool IsUndetermined(long place) {
    if (HasNoError(place)) return true;
    const long slot = Work.FreeIndex[place];
    const Quantity holds = RuleOfSlot(slot).Holds;
    if (holds == Quantity::Offset) return false;
    const double error =
        std::sqrt(std::fabs(Work.NormMatrix(place, place))) * static_cast<double>(Work.RmsResidual);
    const double size = IsAdditive(holds) ? 1.0 : std::fabs(static_cast<double>(Work.Parms[slot]));
    return !(error <= size);
}

std::string PressingText() {
    Places lower, upper;
    for (long a = 0; a < Work.NumFree; ++a)
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

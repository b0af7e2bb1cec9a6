#include "models/species/Integration.h"

#include "input/NUMINPUT.h"
#include "models/function/SharedConcentrations.h"
#include "models/species/SpeciesAtPoint.h"
#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"

#include <cmath>
#include <numeric>

namespace Quillon {

namespace {

constexpr double StepWidth = 0.001; // cm
constexpr double WidestCell = 20.0; // cm; a rotor has less, and the count of steps is a 16-bit number

double WidthOf(float inner, float outer) {
    return static_cast<double>(outer) - static_cast<double>(inner);
}

std::int16_t StepsOf(double width) {
    if (width > WidestCell) RaiseError("no cell is wider than " + FormatNumber(WidestCell, "0") + " cm");
    const std::int16_t steps = ToInt16(width / StepWidth);
    if (steps <= 0) RaiseError(ErrorText::DivisionByZero);
    return steps;
}

// Ends and middles of the steps.
std::vector<double> RadiiOf(float inner, float outer) {
    const double from = static_cast<double>(inner);
    const double width = WidthOf(inner, outer);
    const std::int16_t steps = StepsOf(width);
    const double half = width / (2.0 * steps);
    std::vector<double> radii(2 * static_cast<std::size_t>(steps) + 1);
    for (std::size_t i = 0; i < radii.size(); ++i)
        radii[i] = from + half * static_cast<double>(i);
    return radii;
}

// Simpson's rule over the whole of equal steps, divided by the width. [decision: mean-by-simpson]
double MeanOf(const std::vector<double>& values) {
    const std::size_t last = values.size() - 1;
    double sum = values[0] + values[last];
    for (std::size_t i = 1; i < last; ++i)
        sum += (i % 2 ? 4.0 : 2.0) * values[i];
    return sum / (3.0 * static_cast<double>(last));
}

// The signals at all radii; what cannot be shown is told with the place where it begins.
SpeciesColumns SignalsAt(SpeciesPlan& plan, const std::vector<double>& radii, double reference) {
    std::vector<double> x;
    for (const double r : radii)
        x.push_back(r * r / 2.0 - reference);
    SpeciesColumns signals;
    const bool solved = EvaluateSpecies(plan, x, signals);
    for (std::size_t i = 0; i < radii.size(); ++i)
        for (const std::vector<double>& column : signals)
            if (!std::isfinite(column[i]))
                RaiseError("the model is beyond the range of numbers at a radius of " +
                           FormatNumber(radii[i], "0.000") + " cm");
    if (!solved) RaiseError("the non-ideal model has no solution at some radius of the cell");
    return signals;
}

std::vector<double> MeanSignals(SpeciesPlan& plan, SetNo set, float inner, float outer) {
    std::vector<double> means;
    for (const std::vector<double>& column : SignalsAt(plan, RadiiOf(inner, outer), ReferenceX(RowOf(set))))
        means.push_back(MeanOf(column));
    return means;
}

// The means of all species in a unit; none where the model refuses it or a coefficient is 0.
std::optional<std::vector<double>> InUnit(const SpeciesPlan& plan, const std::vector<double>& signals,
                                          SpeciesUnit unit) {
    if (!SpeciesHaveUnit(unit)) return std::nullopt;
    std::vector<double> values = signals;
    for (std::size_t k = 0; k < values.size(); ++k) {
        const double one = SignalOfUnit(plan.Kind[k], unit, plan.Frame.CurRow);
        if (!(one > 0.0)) return std::nullopt;
        values[k] /= one;
    }
    return values;
}

struct Means {
    std::optional<std::vector<double>> Signal, Weight, Molar;
    const std::optional<std::vector<double>>& In(SpeciesUnit unit) const {
        return unit == SpeciesUnit::Signal ? Signal : unit == SpeciesUnit::Weight ? Weight : Molar;
    }
};

// The sum of what weight takes of each species.
template <class Weight>
std::optional<double> Sum(const std::optional<std::vector<double>>& values, Weight&& weight) {
    if (!values) return std::nullopt;
    double sum = 0.0;
    for (std::size_t k = 0; k < values->size(); ++k)
        sum += weight(k) * (*values)[k];
    return sum;
}

IntegratedRow TotalRow(const Means& means, const std::string& label) {
    const auto all = [](std::size_t) { return 1.0; };
    IntegratedRow row{label, Sum(means.Signal, all), Sum(means.Weight, all), Sum(means.Molar, all), {}};
    row.Share = 1.0;
    return row;
}

// All monomers of A or of B, wherever they are: by number in molar units, by their part of the signals.
IntegratedRow ComponentRow(const Means& means, const SpeciesPlan& plan, bool ofA) {
    const auto count = [&](std::size_t k) {
        const MonomerCount n = MonomersIn(plan.Kind[k]);
        return ofA ? n.A : n.B;
    };
    const RowNo row = plan.Frame.CurRow;
    const auto part = [&](std::size_t k) {
        const MonomerCount n = MonomersIn(plan.Kind[k]);
        const double a = n.A * SignalOfUnit(SpeciesKind::MonomerA, SpeciesUnit::Molar, row);
        const double b = n.B * SignalOfUnit(SpeciesKind::MonomerB, SpeciesUnit::Molar, row);
        if (n.A == 0.0 || n.B == 0.0) return count(k) > 0.0 ? 1.0 : 0.0;
        return Divide(ofA ? a : b, a + b);
    };
    return {ofA ? "Total A" : "Total B", Sum(means.Signal, part), {}, Sum(means.Molar, count), {}};
}

IntegratedRow SpeciesRow(const Means& means, std::size_t k, const char* label, SpeciesUnit unit) {
    IntegratedRow row{label, {}, {}, {}, {}};
    const auto put = [k](std::optional<double>& to, const std::optional<std::vector<double>>& from) {
        if (from) to = (*from)[k];
    };
    put(row.Signal, means.Signal);
    put(row.Weight, means.Weight);
    put(row.Molar, means.Molar);
    if (const auto& shown = means.In(unit)) {
        const double total = std::accumulate(shown->begin(), shown->end(), 0.0);
        if (total > 0.0) row.Share = (*shown)[k] / total;
    }
    return row;
}

} // namespace

void CheckCellWidth(float inner, float outer) {
    StepsOf(WidthOf(inner, outer));
}

IntegratedSet IntegrateCell(SetNo set, float inner, float outer, SpeciesUnit unit) {
    SpeciesPlan plan = PlanSpecies(set, SpeciesUnit::Signal);
    Means means;
    means.Signal = MeanSignals(plan, set, inner, outer);
    means.Weight = InUnit(plan, *means.Signal, SpeciesUnit::Weight);
    means.Molar = InUnit(plan, *means.Signal, SpeciesUnit::Molar);
    IntegratedSet result;
    const bool twoComponents = TraitsOfModel().TwoSpecies;
    const bool signals = twoComponents && unit == SpeciesUnit::Signal;
    result.Rows.push_back(TotalRow(means, signals ? "Total Signal" : "Total"));
    if (twoComponents) {
        result.Rows.push_back(ComponentRow(means, plan, true));
        result.Rows.push_back(ComponentRow(means, plan, false));
    } else {
        result.MonomerMolar = Sum(means.Molar, [&](std::size_t k) { return MonomersIn(plan.Kind[k]).A; });
    }
    std::size_t k = 0;
    for (const ListedSpecies& each : SpeciesOfModel(Work.Model))
        result.Rows.push_back(SpeciesRow(means, k++, each.Label, unit));
    return result;
}

} // namespace Quillon

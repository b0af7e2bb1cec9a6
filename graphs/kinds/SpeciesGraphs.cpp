#include "graphs/kinds/SpeciesGraphs.h"

#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/PickSet.h"
#include "graphs/kinds/SeriesNames.h"
#include "graphs/kinds/SpecialOptions.h"
#include "models/species/SpeciesAtPoint.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

constexpr const char* LogOption = "Convert Y-Axis to Natural Log";

bool OfFringes() {
    return Work.ConcUnits == ConcUnit::Fringes || Work.InterferenceData;
}

std::string ConcentrationTitle(bool oneSet) {
    switch (UnitInForce()) {
    case SpeciesUnit::Weight:
        return "Concentration (mg/mL)";
    case SpeciesUnit::Molar:
        return oneSet ? "Concentration (Molar)" : "Concentration (molar)";
    default:
        return OfFringes() ? "Fringes" : "Absorbance";
    }
}

std::string FractionTitle() {
    switch (UnitInForce()) {
    case SpeciesUnit::Weight:
        return "Weight Fraction";
    case SpeciesUnit::Molar:
        return "Mole Fraction";
    default:
        return OfFringes() ? "Fraction of Total Fringes" : "Fraction of Total Absorbance";
    }
}

// "total c", or "total c (monomers)" where molar values of oligomers and complexes count their monomers.
std::string TotalName() {
    return UnitInForce() == SpeciesUnit::Molar ? "total c (monomers)" : "total c";
}

std::vector<double> Sum(const SpeciesColumns& columns, bool countMonomers) {
    std::vector<double> total(columns[0].size());
    std::size_t k = 0;
    for (const ListedSpecies& each : SpeciesOfModel(Work.Model)) {
        const MonomerCount n = MonomersIn(each.Kind);
        const double weight = countMonomers ? n.A + n.B : 1.0;
        for (std::size_t i = 0; i < total.size(); ++i)
            total[i] += weight * columns[k][i];
        ++k;
    }
    return total;
}

void Divide(SpeciesColumns& columns, const std::vector<double>& total) {
    for (std::vector<double>& column : columns)
        for (std::size_t i = 0; i < column.size(); ++i)
            column[i] = total[i] > 0.0 ? column[i] / total[i] : static_cast<double>(MissingValue);
}

// The columns that a set shows: its species, behind them the total.
SpeciesColumns ShownColumns(SpeciesGraph kind, SetNo set) {
    const SpeciesUnit unit = UnitInForce();
    SpeciesColumns columns = SpeciesOfSet(set, unit);
    const bool fractions = kind == SpeciesGraph::Fraction;
    std::vector<double> total = Sum(columns, !fractions && unit == SpeciesUnit::Molar);
    if (fractions)
        Divide(columns, total);
    else
        columns.push_back(std::move(total));
    return columns;
}

struct SpeciesSeries {
    SetTable X, Y;
    std::vector<std::string> Names;
    SetLooks Looks;
};

void AddNames(SpeciesSeries& series, SpeciesGraph kind, SetNo set, bool oneSet) {
    const std::string number = std::to_string(set.Number);
    for (const std::string& name : SpeciesNames())
        series.Names.push_back(oneSet ? name : name + " set " + number);
    if (kind == SpeciesGraph::Fraction) return;
    series.Names.push_back(oneSet ? "total conc" : TotalName() + ", set " + number);
}

// The total has a colour of its own, behind those of the species.
SetLook LookOf(std::size_t column, long place) {
    return {static_cast<std::int16_t>(column), static_cast<std::int16_t>(place - 1)};
}

void FillSet(SpeciesSeries& series, SpeciesGraph kind, SetNo set, long place) {
    const SpeciesColumns columns = ShownColumns(kind, set);
    const long first = FirstPointOf(set);
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const long s = (place - 1) * static_cast<long>(columns.size()) + static_cast<long>(k) + 1;
        for (std::size_t i = 0; i < columns[k].size(); ++i) {
            const long point = static_cast<long>(i);
            series.X(point + 1, s) = Work.PtX[first + point];
            series.Y(point + 1, s) = static_cast<float>(columns[k][i]);
        }
        series.Looks.Sets.push_back(LookOf(k, place));
    }
}

// One line for each species, one for the total, one for each set.
void FillLegend(SetLooks& looks, SpeciesGraph kind) {
    std::int16_t color = 0;
    for (const std::string& name : SpeciesNames())
        looks.Legend.push_back({name, {color++, 0}});
    if (kind == SpeciesGraph::Concentration) looks.Legend.push_back({TotalName(), {color, 0}});
    for (const SetNo set : EachSet())
        looks.Legend.push_back({SeriesName(set), {-1, static_cast<std::int16_t>(set.Number - 1)}});
}

SpeciesSeries CollectSeries(SpeciesGraph kind, SetNo set) {
    const SetRange shown = SetsOf(set);
    const long each = SpeciesOfModel(Work.Model).Count + (kind == SpeciesGraph::Concentration ? 1 : 0);
    const long sets = CountOf(shown);
    SpeciesSeries series{
        SetTable(LongestSet(shown), sets * each), SetTable(LongestSet(shown), sets * each), {}, {}};
    const bool oneSet = set != AllSets;
    for (const SetNo k : shown) {
        FillSet(series, kind, k, PlaceIn(shown, k));
        AddNames(series, kind, k, oneSet);
    }
    if (!oneSet && sets > 1) FillLegend(series.Looks, kind);
    return series;
}

// The lines of one set go by species: the title says which set it is.
std::string TitleFor(SetNo set) {
    return set != AllSets ? Work.FitTitle + ", " + SeriesName(set) : Work.FitTitle;
}

void Show(SpeciesGraph kind, SetNo set) {
    const char* const name = kind == SpeciesGraph::Fraction ? "Species Fraction" : "Species Concentration";
    if (MakeSpeciesGraph(kind, set))
        ShowCharts(OriginOf(name, set, FitStands, [kind, set] { return MakeSpeciesGraph(kind, set); }));
}

void ShowPicked(SpeciesGraph kind) {
    const SetNo set = PickSet();
    if (set != NoSet) Show(kind, set);
}

} // namespace

bool MakeSpeciesGraph(SpeciesGraph kind, SetNo set) {
    const SpeciesSeries series = CollectSeries(kind, set);
    GraphSpec spec = StartGraph(PlotStyles::Lines);
    spec.SymbolMode = 3;
    spec.Title1.Text = TitleFor(set);
    spec.Title2.Text = DataFrom();
    spec.AxisX1.Title.Text = Work.XAxisTitle;
    spec.AxisY1.Title.Text =
        kind == SpeciesGraph::Fraction ? FractionTitle() : ConcentrationTitle(set != AllSets);
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    const bool made = HandOver(spec, series.X, series.Y, series.Names, series.Looks);
    OfferLogOption(LogOption);
    return made;
}

void GraphSpecies() {
    Show(SpeciesGraph::Concentration, AllSets);
}
void GraphSpeciesFraction() {
    Show(SpeciesGraph::Fraction, AllSets);
}
void GraphSpeciesSet() {
    ShowPicked(SpeciesGraph::Concentration);
}
void GraphSpeciesFractionSet() {
    ShowPicked(SpeciesGraph::Fraction);
}

} // namespace Quillon

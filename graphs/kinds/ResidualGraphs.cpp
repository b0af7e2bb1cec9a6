#include "graphs/kinds/ResidualGraphs.h"

#include "fit/Sums.h"
#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/Latin1.h"
#include "graphs/kinds/PickSet.h"
#include "graphs/kinds/SeriesNames.h"
#include "graphs/kinds/SpecialOptions.h"
#include "input/NUMINPUT.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

double PowerOfTen(float value) {
    return std::pow(10.0, std::floor(std::log10(static_cast<double>(value))));
}

// The root mean square of the fit; one without it gets that of its residuals.
float RmsOfFit() {
    if (Work.RmsResidual != 0.0F) return Work.RmsResidual;
    double sum = 0.0;
    for (const float r : Work.PtResid)
        sum += static_cast<double>(r) * static_cast<double>(r);
    const int freedom = Work.NumPts - Work.NumFree;
    return freedom > 0 ? static_cast<float>(std::sqrt(sum / freedom)) : 0.0F;
}

float LargestResidual(const SetRange& sets) {
    float largest = 0.0F;
    for (const SetNo set : sets) {
        const long p = FirstPointOf(set);
        for (long i = 0; i < TruePointsOf(set); ++i)
            largest = std::max(largest, std::fabs(Work.PtResid[p + i]));
    }
    return largest;
}

// The value of a point on the chosen axis. A point's x holds the radius only relative to its set: the radius
// itself stands in the scan.
float Abscissa(ResidualAxis axis, SetNo set, long point, long place) {
    if (axis == ResidualAxis::X) return Work.PtX[point];
    if (axis == ResidualAxis::Fitted) return Work.PtFit[point];
    const RowNo row = RowOf(set);
    return Work.ScanRadius[row][Work.FitRange[0][row] + place];
}

std::string AxisTitle(ResidualAxis axis) {
    if (axis == ResidualAxis::Radius) return "Radius (cm)";
    return axis == ResidualAxis::X ? Work.XAxisTitle : Work.DataTypeName;
}

void SetTitles(GraphSpec& spec, SetNo set) {
    const double rms = set != AllSets ? RmsOfSet(set) : static_cast<double>(RmsOfFit());
    const std::string number = FormatNumber(rms, "0.000E-##");
    const std::string what = set != AllSets
                                 ? "RMS deviation for set " + std::to_string(set.Number) + " = " + number
                                 : "RMS residual = " + number;
    const std::string origin = set != AllSets ? SeriesName(set) : Latin1Text(Work.LabelPrefix);
    const std::string behind = origin.empty() ? "" : "; data from " + origin;
    if (what.size() + behind.size() <= LongestTitle) {
        spec.Title1.Text = what + behind;
        return;
    }
    spec.Title1.Text = what;
    spec.Title2.Text = WithPath("Data from ", origin);
}

bool IsWhole(double value) {
    return value >= 0.5 && std::fabs(value - std::nearbyint(value)) < 1e-5 * value;
}

// The places behind the point with which the tics of an interval read as what they are.
int PlacesOf(float interval) {
    constexpr int enough = 6; // digits of a single
    double scaled = static_cast<double>(interval);
    int places = 0;
    for (; !IsWhole(scaled) && (places < enough || scaled < 1.0); ++places)
        scaled *= 10.0;
    return places;
}

void ScaleAxis(GraphAxis& axis, float low, float high, float interval) {
    axis.ScaleMode = ScaleModes::Manual;
    axis.Min = axis.FirstTic = low;
    axis.Max = high;
    axis.TicInterval = interval;
    axis.Decimals = ToInt16(PlacesOf(interval));
}

// Of the sets one above the other: from one step below the first to one above the last, and as many whole
// steps more at either end as it takes until every point is in.
struct SpreadScale {
    float Low{}, High{};
};
SpreadScale ScaleOfSpread(float step) {
    double low = -1.0;
    double high = Work.NumSets;
    for (const SetNo k : EachSet()) {
        const long p = FirstPointOf(k);
        for (long i = 0; i < TruePointsOf(k); ++i) {
            const double steps = static_cast<double>(Work.PtResid[p + i]) / static_cast<double>(step);
            low = std::min(low, std::floor(static_cast<double>(k.Number - 1) + steps));
            high = std::max(high, std::ceil(static_cast<double>(k.Number - 1) + steps));
        }
    }
    return {static_cast<float>(low) * step, static_cast<float>(high) * step};
}

// Where the residuals of each set are zero: one line for all, unless they stand above each other.
std::vector<GraphMark> ZeroLines(const SetRange& sets, float step) {
    std::vector<GraphMark> lines{LineAt(0.0F)};
    if (!(step > 0.0F)) return lines;
    for (const SetNo k : SetRange{sets.First + 1, sets.Last})
        lines.push_back(LineAt(static_cast<float>(k.Number - 1) * step));
    return lines;
}

void Show(ResidualAxis axis, SetNo set) {
    if (!MakeResidualGraph(axis, set)) return;
    const char* const name = axis == ResidualAxis::X        ? "Residuals vs. X"
                             : axis == ResidualAxis::Fitted ? "Residuals vs. Y"
                                                            : "Residuals vs. radius";
    ShowCharts(
        OriginOf(name, set, FitOfTheseDataStands, [axis, set] { return MakeResidualGraph(axis, set); }));
}

void ShowPicked(ResidualAxis axis) {
    const SetNo set = PickSet();
    if (set != NoSet) Show(axis, set);
}

} // namespace

double RmsOfSet(SetNo set) {
    const long first = FirstPointOf(set);
    const long n = TruePointsOf(set);
    double sum = 0.0;
    for (long i = 0; i < n; ++i)
        sum += static_cast<double>(Work.PtResid[first + i]) * static_cast<double>(Work.PtResid[first + i]);
    return n > 0 ? std::sqrt(sum / static_cast<double>(n)) : 0.0;
}

float SpreadStep(float rms) {
    const float w = 4.0F * rms;
    const double d = PowerOfTen(w);
    return static_cast<float>(d * std::nearbyint(static_cast<double>(w) / d));
}

float ResidualLimit(float rms, float largest) {
    const double d = PowerOfTen(rms);
    const double m = d * std::nearbyint(static_cast<double>(rms) / d);
    const double times = std::max(1.0, std::ceil(static_cast<double>(largest) / m - 1e-6));
    return static_cast<float>(m * times);
}

bool MakeResidualGraph(ResidualAxis axis, SetNo set) {
    CalcResiduals();
    GraphSpec spec = StartGraph(PlotStyles::SymbolsOnly);
    spec.SymbolMode = 1;
    const SetRange sets = SetsOf(set);
    const float rms = std::fabs(set != AllSets ? static_cast<float>(RmsOfSet(set)) : RmsOfFit());
    const float scale = rms == 0.0F ? 1.0F : rms;
    const bool spread = set == AllSets && Work.SpreadResiduals && Work.NumSets > 1;
    const float step = spread ? SpreadStep(scale) : 0.0F;
    SetTitles(spec, set);
    spec.AxisX1.Title.Text = AxisTitle(axis);
    spec.AxisX1.ScaleMode = ScaleModes::Autorange;
    spec.AxisY1.Title.Text = "Y(exp) - Y(fit)";
    if (spread) {
        const SpreadScale scaled = ScaleOfSpread(step);
        ScaleAxis(spec.AxisY1, scaled.Low, scaled.High, step);
    } else {
        const float limit = ResidualLimit(scale, LargestResidual(sets));
        ScaleAxis(spec.AxisY1, -limit, limit, limit / 2.0F);
    }
    SetTable x(LongestSet(sets), CountOf(sets));
    SetTable y(LongestSet(sets), CountOf(sets));
    std::vector<std::string> names;
    for (const SetNo k : sets) {
        const long p = FirstPointOf(k);
        const long series = PlaceIn(sets, k);
        for (long i = 0; i < TruePointsOf(k); ++i) {
            x(i + 1, series) = Abscissa(axis, k, p + i, i);
            y(i + 1, series) = static_cast<float>(k.Number - 1) * step + Work.PtResid[p + i];
        }
        names.push_back(SeriesName(k));
    }
    const bool made = HandOver(spec, x, y, names, LooksOfSets(sets), ZeroLines(sets, step));
    OfferLogOption("");
    return made;
}

void GraphResiduals() {
    Show(ResidualAxis::X, AllSets);
}
void GraphResidualsY() {
    Show(ResidualAxis::Fitted, AllSets);
}
void GraphResidualsR() {
    Show(ResidualAxis::Radius, AllSets);
}
void GraphResidSet() {
    ShowPicked(ResidualAxis::X);
}
void GraphResidSetY() {
    ShowPicked(ResidualAxis::Fitted);
}
void GraphResidualsRSet() {
    ShowPicked(ResidualAxis::Radius);
}

} // namespace Quillon

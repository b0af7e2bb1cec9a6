#include "graphs/kinds/MassGraphs.h"

#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/SeriesNames.h"
#include "graphs/kinds/SpecialOptions.h"
#include "input/NUMINPUT.h"
#include "models/species/SpeciesAtPoint.h"
#include "models/table/Catalogue.h"
#include "models/table/ModelTable.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr double GasConstant = 83144710.0; // erg per mole and kelvin

long LastWindow = UsualMassPoints; // what the box offers

// A true point of a set: r^2/2, radius and what is measured or fitted there above the zero offset.
struct MassPoint {
    double X, Radius, Value, Ln;
};

double OffsetOf(SetNo set) {
    const bool none = OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0);
    return none ? 0.0 : static_cast<double>(Work.Parms[SlotOffset(set)]);
}

std::vector<MassPoint> PointsOf(SetNo set, bool ofFit) {
    const RowNo row = RowOf(set);
    const OneBased<float>& values = ofFit ? Work.PtFit : Work.PtY;
    const double offset = OffsetOf(set);
    const long first = FirstPointOf(set);
    std::vector<MassPoint> points;
    for (long i = 0; i < TruePointsOf(set); ++i) {
        const double r = Work.ScanRadius[row][Work.FitRange[0][row] + i];
        const double value = static_cast<double>(values[first + i]) - offset;
        points.push_back({r * r / 2.0, r, value, value > 0.0 ? std::log(value) : 0.0});
    }
    return points;
}

// The line through the points of a window, from its mean.
struct WindowLine {
    double MeanX = 0.0, MeanLn = 0.0, Slope = 0.0, MeanRadius = 0.0;
};

WindowLine LineThrough(const MassPoint* p, std::size_t n) {
    WindowLine line;
    const double middle = p[n / 2].X; // sums about it lose no digits
    const auto count = static_cast<double>(n);
    double sx = 0.0, sy = 0.0, sxx = 0.0, sxy = 0.0, sr = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        const double x = p[i].X - middle;
        sx += x;
        sy += p[i].Ln;
        sxx += x * x;
        sxy += x * p[i].Ln;
        sr += p[i].Radius;
    }
    line.MeanX = middle + sx / count;
    line.MeanLn = sy / count;
    line.Slope = Divide(count * sxy - sx * sy, count * sxx - sx * sx);
    line.MeanRadius = sr / count;
    return line;
}

// Mass over slope, for a set.
double MassOfSlope(SetNo set) {
    const RowNo row = RowOf(set);
    const double omega = static_cast<double>(Work.ScanRPM[row]) / 30.0 * 3.14159265358979;
    const double rt = GasConstant * (static_cast<double>(Work.ScanTemperature[row]) + 273.15);
    const double buoyancy = 1.0 - static_cast<double>(Work.SolventDensity) * static_cast<double>(Work.VbarA);
    return Divide(rt, (MassesAreBuoyant() ? 1.0 : buoyancy) * omega * omega);
}

// What a unit of concentration of the chosen species shows in a set. Signals are those of the first set.
double SignalOfConcentration(SetNo set, bool speciesB) {
    const RowNo row = RowOf(set);
    const std::size_t column = speciesB ? 1 : 0;
    const double ratio = static_cast<double>(Work.ExtinctionRatio[column][row]);
    const double path = static_cast<double>(Work.CellPath[row]);
    switch (UnitInForce()) {
    case SpeciesUnit::Weight: {
        const bool fringes = Work.ConcUnits == ConcUnit::FringeWeight;
        const float a = fringes ? Work.FringeMassA : Work.AbsorpA;
        const float b = fringes ? Work.FringeMassB : Work.AbsorpB;
        return static_cast<double>(speciesB ? b : a) * ratio * path;
    }
    case SpeciesUnit::Molar:
        return SignalOfUnit(speciesB ? SpeciesKind::MonomerB : SpeciesKind::MonomerA, SpeciesUnit::Molar,
                            row);
    default:
        return Divide(static_cast<double>(Work.SetSignalScale[set]) * ratio,
                      static_cast<double>(Work.ExtinctionRatio[column][RowOf(SetNo(1))]));
    }
}

// The middle of the range of a set, cm.
double CentreOf(SetNo set) {
    const RowNo row = RowOf(set);
    const double inner = Work.ScanRadius[row][Work.FitRange[0][row]];
    const double outer = Work.ScanRadius[row][Work.FitRange[1][row]];
    return (inner + outer) / 2.0;
}

// The signal at the centre of a window: its middle point, or between the two middle ones the line's.
double CentralSignal(const MassPoint* p, std::size_t n, const WindowLine& line) {
    return n % 2 ? p[n / 2].Value : std::exp(line.MeanLn);
}

std::string MassTitle() {
    return MassesAreBuoyant() ? "Weight-Average Buoyant Mass (Da)" : "Weight-Average Molar Mass (Da)";
}

std::string AbscissaTitle(MassAxis axis) {
    if (axis == MassAxis::Radius) return "radius relative to sample center (cm)";
    switch (UnitInForce()) {
    case SpeciesUnit::Weight:
        return "Concentration (mg/mL)";
    case SpeciesUnit::Molar:
        return "Concentration (molar)";
    default:
        return Work.ConcUnits == ConcUnit::Fringes || Work.InterferenceData
                   ? "Concentration (relative fringes)"
                   : "Concentration (relative AU)";
    }
}

std::string LeftOutText(long windows) {
    if (windows == 0) return "";
    return Counted(windows, "window") + " left out: a signal without its zero offset is not positive there";
}

struct MassSeries {
    std::vector<MassCurve> Curves;
    std::size_t Longest = 0;
    long LeftOut = 0;
};

MassSeries CollectCurves(MassAxis axis, SetNo set, const MassChoice& choice) {
    MassSeries series;
    for (const SetNo k : SetsOf(set)) {
        series.Curves.push_back(ApparentMasses(axis, k, choice));
        series.Longest = std::max(series.Longest, series.Curves.back().X.size());
        series.LeftOut += series.Curves.back().LeftOut;
    }
    if (series.Longest > 0) return series;
    if (series.LeftOut > 0)
        RaiseError("no window has only positive signals; a smaller window or another zero offset may help");
    const std::string window = std::to_string(choice.Points);
    if (set == AllSets) RaiseError("no data set has " + window + " points, the length of the window");
    RaiseError("data set " + std::to_string(set.Number) + " has " + std::to_string(TruePointsOf(set)) +
               " points, and a window takes " + window);
}

std::string WindowPrompt(long most) {
    return "Number of radial points per calculated mass (min " + std::to_string(FewestMassPoints) + ", max " +
           std::to_string(most) + ")? Higher numbers give more smoothing but give loss of detail.";
}

// Asks until the answer lies in the range; 0 when cancelled.
long AskWindow() {
    const long most = MostMassPoints();
    if (most < FewestMassPoints)
        RaiseError("no data set has " + std::to_string(FewestMassPoints) + " points, the shortest window");
    for (;;) {
        const std::string offered = std::to_string(std::clamp(LastWindow, FewestMassPoints, most));
        const InputAnswer answer = Host.AskText({WindowPrompt(most), Work.ProgramName, offered});
        if (answer.Cancelled) return 0;
        const double n = static_cast<double>(NumValue(answer.Text));
        const bool whole = IsNumeric(answer.Text) && n == std::floor(n);
        if (whole && n >= static_cast<double>(FewestMassPoints) && n <= static_cast<double>(most))
            return LastWindow = static_cast<long>(n);
        Host.Beep();
    }
}

void AskAndShow(MassAxis axis) {
    MassChoice choice;
    choice.OfFit =
        !AskYesNo("Do you want the plot to use the experimental data (Yes) or the theoretical fit (No)?",
                  Work.ProgramName);
    choice.Points = AskWindow();
    if (choice.Points == 0) return;
    if (axis == MassAxis::Concentration && TraitsOfModel().TwoSpecies)
        choice.SpeciesB = !AskYesNo("Do you wish to express concentrations from the properties of species A "
                                    "(Yes) or species B (No)?",
                                    Work.ProgramName);
    const char* const name =
        axis == MassAxis::Radius ? "Apparent Molar Mass vs. Radius" : "Apparent Molar Mass vs. Concentration";
    if (MakeMassGraph(axis, AllSets, choice))
        ShowCharts(OriginOf(name, AllSets, FitStands,
                            [axis, choice] { return MakeMassGraph(axis, AllSets, choice); }));
}

} // namespace

bool MassesAreBuoyant() {
    return Work.MassUnits != MassUnit::Molar;
}

long MostMassPoints() {
    long most = 0;
    for (const SetNo set : EachSet())
        most = std::max(most, TruePointsOf(set));
    return most;
}

MassCurve ApparentMasses(MassAxis axis, SetNo set, const MassChoice& choice) {
    MassCurve curve;
    const std::vector<MassPoint> points = PointsOf(set, choice.OfFit);
    const auto n = static_cast<std::size_t>(choice.Points);
    const double factor = MassOfSlope(set);
    const double unit = axis == MassAxis::Concentration ? SignalOfConcentration(set, choice.SpeciesB) : 1.0;
    std::size_t positive = 0; // points in a row, up to the present one
    for (std::size_t last = 0; last < points.size(); ++last) {
        positive = points[last].Value > 0.0 ? positive + 1 : 0;
        if (last + 1 < n) continue;
        if (positive < n) {
            ++curve.LeftOut;
            continue;
        }
        const MassPoint* window = &points[last + 1 - n];
        const WindowLine line = LineThrough(window, n);
        curve.Mass.push_back(line.Slope * factor);
        curve.X.push_back(axis == MassAxis::Radius ? line.MeanRadius - CentreOf(set)
                                                   : Divide(CentralSignal(window, n, line), unit));
    }
    return curve;
}

bool MakeMassGraph(MassAxis axis, SetNo set, const MassChoice& choice) {
    const MassSeries series = CollectCurves(axis, set, choice);
    const SetRange sets = SetsOf(set);
    GraphSpec spec = StartGraph(PlotStyles::SymbolsOnly);
    spec.SymbolMode = 1;
    spec.Title1.Text = std::string("Apparent mass of ") + (choice.OfFit ? "the fit" : "the data") + ", " +
                       std::to_string(choice.Points) + " points, zero offsets subtracted";
    spec.Title2.Text = DataFrom();
    spec.AxisX1.Title.Text = AbscissaTitle(axis);
    spec.AxisY1.Title.Text = MassTitle();
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    SetTable x(static_cast<long>(series.Longest), CountOf(sets));
    SetTable y(static_cast<long>(series.Longest), CountOf(sets));
    std::vector<std::string> names;
    for (const SetNo k : sets) {
        const long place = PlaceIn(sets, k);
        const MassCurve& curve = series.Curves[static_cast<std::size_t>(place - 1)];
        for (std::size_t i = 0; i < curve.X.size(); ++i) {
            x(static_cast<long>(i) + 1, place) = ToSingle(curve.X[i]);
            y(static_cast<long>(i) + 1, place) = ToSingle(curve.Mass[i]);
        }
        names.push_back(SeriesName(k));
    }
    const bool made = HandOver(spec, x, y, names, LooksOfSets(sets));
    OfferLogOption("");
    Charts.StatusLine.Text = LeftOutText(series.LeftOut);
    return made;
}

void GraphMvsC() {
    AskAndShow(MassAxis::Concentration);
}
void GraphMvsR() {
    AskAndShow(MassAxis::Radius);
}

} // namespace Quillon

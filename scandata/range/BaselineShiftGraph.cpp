#include "scandata/range/BaselineShiftGraph.h"

#include "chart/CHART.h"
#include "chart/Charts.h"
#include "input/NUMINPUT.h"
#include "platform/Platform.h"
#include "scandata/range/BaselineShift.h"
#include "scandata/table/BaselineAt.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Cancel.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

constexpr int LeftArrow = 37;
constexpr int RightArrow = 39;
constexpr int CtrlDown = 2;

struct Adjustment {
    RowNo Row;
    float Calculated, Present;
    std::string Failure; // of a key; empty when all went well
};

std::string TitleOf(const Adjustment& a, bool begins) {
    return ShiftInstruction(begins) + FormatNumber(static_cast<double>(a.Calculated), ".000") +
           " cm; present value = " + FormatNumber(static_cast<double>(a.Present), ".000");
}

long FittedPoints(RowNo row) {
    const long first = Work.FitRange[0][row];
    const long last = Work.FitRange[1][row];
    if (first < 1 || last < first || last > Work.ScanRadius[row].Hi())
        RaiseError(RowName(row) + ": its range lies outside the scan");
    return last - first + 1;
}

// Data, baseline and difference of the fitted points with the present shift.
void FillSeries(const Adjustment& a, SetTable& x, SetTable& y) {
    const long first = Work.FitRange[0][a.Row];
    const long n = FittedPoints(a.Row);
    if (n != x.Points()) RaiseError(RowName(a.Row) + ": its range is not that of the graph any more");
    BaselinePlace place;
    for (long i = 1; i <= n; ++i) {
        const float r = Work.ScanRadius[a.Row][first + i - 1];
        const float data = Work.ScanValue[a.Row][first + i - 1];
        const float baseline = BaselineAt(r - a.Present, a.Row, place);
        for (long s = 1; s <= 3; ++s)
            x(i, s) = r;
        y(i, 1) = data;
        y(i, 2) = baseline;
        y(i, 3) = data - baseline;
    }
}

void Draw(const Adjustment& a) {
    const long n = FittedPoints(a.Row);
    Chart.GraphHeld = FlagFalse;
    GraphSpec spec;
    GraphInit(spec, GraphTypes::XYPlot, PlotStyles::Lines);
    spec.SymbolMode = 3;
    spec.AxisX1.Title.Text = "Radius";
    spec.AxisY1.Title.Text = Work.DataTypeName;
    spec.AxisX1.ScaleMode = spec.AxisY1.ScaleMode = ScaleModes::Autorange;
    spec.Legend.Show = 1;
    SetTable x(n, 3);
    SetTable y(n, 3);
    FillSeries(a, x, y);
    Chart.GraphHeld = FlagTrue;
    PlotSets(spec, x, y, static_cast<int>(n), 1, 3,
             {"data", "baseline with present shift", "data-baseline with present shift"}, {}, {});
    SetGraphComment(TitleOf(a, true));
    ChartMenuStatus(Charts);
}

// One key; true when it ends the adjustment.
bool TakeKey(Adjustment& a, int code, int shift) {
    if (code == KeyReturn || code == KeyEscape) return true;
    if (code != LeftArrow && code != RightArrow) return false;
    const float step = shift & CtrlDown ? 0.005F : 0.001F;
    a.Present += code == LeftArrow ? -step : step;
    FillSeries(a, Chart.DataX, Chart.DataY);
    SetGraphComment(TitleOf(a, false));
    RedrawChart();
    return false;
}

// The same inside the window's loop of events, which a failure ends too: it is told when the window is gone.
bool EndsOnKey(Adjustment& a, int code, int shift) {
    try {
        return TakeKey(a, code, shift);
    } catch (const RuntimeError& error) {
        a.Failure = error.Text;
        return true;
    }
}

void LetGo() {
    Charts.EndsOnKey = nullptr;
    Charts.Needed = Charts.Shown = false;
    Charts.KeyCode = Charts.KeyShift = 0;
    Chart.GraphHeld = FlagFalse;
    ClearZoom();
    ChartMenuStatus(Charts);
    ClearCancel();
}

} // namespace

const char* ShiftInstruction(bool begins) {
    return begins ? "Use L/R cursor keys to shift baseline (w/ CTRL = big movement); ENTER when "
                    "done\\calculated "
                    "shift = "
                  : "Use cursor keys to shift baseline (w/CNTRL=big movement); ENTER when done\\calculated "
                    "shift = ";
}

void AdjustBaselineShift(RowNo row) {
    try {
        Adjustment a{row, CalculatedShift(row), StartingShift(row), ""};
        Draw(a);
        Charts.Needed = Charts.Shown = true;
        Charts.EndsOnKey = [&a](int code, int shift) { return EndsOnKey(a, code, shift); };
        Host.ShowModal(ChartsName);
        if (!a.Failure.empty()) RaiseError(a.Failure);
        LetGo();
        SetBaselineShift(row, a.Present);
    } catch (const RuntimeError& error) {
        LetGo();
        Tell("Error during baseline shift routine, turning off shift.\n\n" + error.Text, Work.ProgramName,
             BoxIcon::Warning);
        Work.BaselineShifted[row] = FlagFalse;
        Work.BaselineShift[row] = 0.0F;
    }
}

} // namespace Quillon

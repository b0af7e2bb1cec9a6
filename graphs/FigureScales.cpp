#include "graphs/FigureScales.h"

#include "chart/scale/Tics.h"
#include "graphs/kinds/GraphParts.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

constexpr double FreePart = 0.04; // of the range, at each end
constexpr double NearZero =
    1.0 / 4.0;                // the least of the data as a part of the greatest: a third of their height
constexpr double Hair = 1e-6; // of a step, by which a limit may miss a tic

FigureRange RangeOf(const SetTable& values, FigureRange range) {
    for (long set = 1; set <= values.Sets(); ++set)
        for (long point = 1; point <= values.Points(); ++point) {
            const float value = values(point, set);
            if (value == MissingValue) continue;
            range.Low = std::min(range.Low, static_cast<double>(value));
            range.High = std::max(range.High, static_cast<double>(value));
        }
    return range;
}

// What takes any value in.
constexpr FigureRange NoRange{std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};

// A range with a length; without values that of 0 to 1.
FigureRange WithLength(FigureRange range) {
    if (range.Low > range.High) return {0.0, 1.0};
    if (range.Low < range.High) return range;
    const double half = range.Low == 0.0 ? 0.5 : std::fabs(range.Low) / 2.0;
    return {range.Low - half, range.High + half};
}

FigureRange Widened(const FigureRange& range) {
    const double more = FreePart * (range.High - range.Low);
    return {range.Low == 0.0 ? 0.0 : range.Low - more, range.High == 0.0 ? 0.0 : range.High + more};
}

double FirstTicOf(const FigureRange& range, double step) {
    return std::ceil(range.Low / step - Hair) * step;
}

double StepFor(const FigureRange& range, double labels) {
    double step = RoundStep((range.High - range.Low) / std::max(labels, 1.0));
    while (FirstTicOf(range, step) + step > range.High + Hair * step)
        step = RoundStep(step / 3.0); // 5 to 2 to 1 to 0.5
    return step;
}

int Exponent(double value) {
    return static_cast<int>(std::floor(std::log10(value) + 1e-9));
}

// As many digits as tell the tics apart.
void FormatTics(GraphAxis& axis, double most, double step) {
    constexpr double longest = 1e5, shortest = 1e-4;
    const bool plain = most < longest && step >= shortest;
    axis.TicFormat = plain ? TicFormats::Decimal : TicFormats::Exponential;
    const int digits = plain ? -Exponent(step) : std::max(Exponent(most) - Exponent(step), 1);
    axis.Decimals = ToInt16(std::clamp(digits, 0, 9));
}

} // namespace

FigureScales ScalesOf(const std::vector<CellGraphs>& cells) {
    FigureRange x = NoRange;
    const CellGraphs* widest = &cells.front();
    for (const CellGraphs& cell : cells) {
        x = RangeOf(cell.Upper.DataX, x);
        if (cell.Lower.Spec.AxisY1.Max > widest->Lower.Spec.AxisY1.Max) widest = &cell;
    }
    return {WithLength(x), widest->Lower.Spec.AxisY1};
}

FigureRange SignalRange() {
    FigureRange range = WithLength(RangeOf(Chart.DataY, NoRange));
    if (range.Low > 0.0 && range.Low <= NearZero * range.High) range.Low = 0.0;
    return range;
}

void ScaleFigureAxis(GraphAxis& axis, FigureRange range, double length, double label) {
    const FigureRange scale = Widened(range);
    const double step = StepFor(scale, length / label);
    axis.ScaleMode = ScaleModes::Manual;
    axis.Min = static_cast<float>(scale.Low);
    axis.Max = static_cast<float>(scale.High);
    axis.FirstTic = static_cast<float>(FirstTicOf(scale, step));
    axis.TicInterval = static_cast<float>(step);
    FormatTics(axis, std::max(std::fabs(scale.Low), std::fabs(scale.High)), step);
}

void ScaleLowerPart(const FigureScales& scales, const FigureRect& frame) {
    GraphSpec& spec = Chart.Spec;
    ScaleFigureAxis(spec.AxisX1, scales.X, frame.Right - frame.Left, LabelAcross);
    spec.AxisY1.ScaleMode = ScaleModes::Manual;
    HandOnScale(scales.Residual, spec.AxisY1);
    CopyOppositeAxes(spec);
}

void ScaleUpperPart(const FigureRect& frame) {
    ScaleFigureAxis(Chart.Spec.AxisY1, SignalRange(), frame.Bottom - frame.Top, LabelDown);
    CopyOppositeAxes(Chart.Spec);
}

} // namespace Quillon

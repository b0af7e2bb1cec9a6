#include "chart/scale/Tics.h"

#include "chart/pens/Fonts.h"
#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/FormatTic.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

// The next whole number at or above a quotient of scale values. These are singles: a quotient that differs
// from a whole number by no more than their last digit is that number, so that 0.09 is 9 steps of 0.01.
double StepsUp(double quotient) {
    const double whole = std::nearbyint(quotient);
    const double noise = std::numeric_limits<float>::epsilon() * std::max(1.0, std::fabs(quotient));
    return std::fabs(quotient - whole) <= noise ? whole : std::ceil(quotient);
}

double StepsDown(double quotient) {
    return -StepsUp(-quotient);
}

// The step whose count over the range is at most the number of labels that fit. From its start it goes 1, 2,
// 10, 20, 100, ...; five is never tried.
double ChooseStep(const GraphAxis& axis, int labels) {
    const double m = std::max(std::fabs(axis.Max), std::fabs(axis.Min));
    const double range = std::fabs(static_cast<double>(axis.Max) - static_cast<double>(axis.Min));
    double step = std::pow(10.0, std::floor(std::log(m) / std::log(10.0)) - 1.0);
    double multiplier = 2.0;
    while (StepsUp(range / step) > labels) {
        step *= multiplier;
        multiplier = 7.0 - multiplier; // 2, 5, 2, 5, ...
    }
    return step;
}

void ChooseDecimals(GraphAxis& axis, double step) {
    if (std::fabs(step) < 1.0 && axis.TicFormat == TicFormats::Decimal)
        axis.Decimals = ToInt16(static_cast<double>(std::ceil(std::fabs(LogBase10(step * 1.1)))));
}

void ChooseLinearTics(GraphAxis& axis, int length, int labelSpace) {
    const int labels = length / std::max(labelSpace, 1);
    if (labels <= 1 || axis.Max == axis.Min) { // a tic at each end, and the range as it is
        const double step = static_cast<double>(axis.Max) - static_cast<double>(axis.Min);
        axis.FirstTic = axis.Min;
        axis.TicInterval = FiniteSingle(step);
        ChooseDecimals(axis, step);
        return;
    }
    const double step = ChooseStep(axis, labels);
    axis.TicInterval = FiniteSingle(step);
    ChooseDecimals(axis, step);
    axis.Max = FiniteSingle(step * StepsUp(static_cast<double>(axis.Max) / step));
    axis.Min = FiniteSingle(step * StepsDown(static_cast<double>(axis.Min) / step));
    axis.FirstTic = axis.Min;
}

void ChooseLogTics(GraphAxis& axis, int length, int labelSpace) {
    axis.FirstTic = static_cast<float>(std::nearbyint(static_cast<double>(axis.Min) + 0.499999));
    const double decades = static_cast<double>(axis.Max) - static_cast<double>(axis.Min);
    const double r = decades * labelSpace / std::max(length, 1); // the part of a decade that one label takes
    axis.TicInterval = 0.0F;
    if (std::log10(3.0) > r) axis.TicInterval = 1.0F;
    if (std::log10(2.0) > r) axis.TicInterval = 2.0F;
    if (std::log10(1.25) > r) axis.TicInterval = 4.0F;
    if (std::log10(10.0 / 9.0) > r) axis.TicInterval = 8.0F;
}

bool ChoosesTics(const GraphAxis& axis) {
    return axis.ScaleMode == ScaleModes::Prescaled || axis.ScaleMode == ScaleModes::Autorange;
}

// The offsets of the tics within a step: 0, and on a log10 axis those of the minor tics of a decade.
struct StepOffsets {
    std::array<float, 10> Table{};
    int Count = 1;
    void Add(double multiple) {
        Table[static_cast<std::size_t>(Count++)] = static_cast<float>(std::log10(multiple));
    }
};

StepOffsets OffsetsOf(const GraphAxis& axis) {
    StepOffsets offsets;
    if (!IsLog10(axis) || axis.TicInterval == 0.0F) return offsets;
    if (axis.TicInterval == 2.0F) {
        offsets.Add(2.0);
        offsets.Add(5.0);
    } else if (axis.TicInterval == 4.0F) {
        for (double multiple = 2.0; multiple < 9.0; multiple += 2.0)
            offsets.Add(multiple);
    } else if (axis.TicInterval == 8.0F) {
        for (double multiple = 2.0; multiple < 10.0; multiple += 1.0)
            offsets.Add(multiple);
    } else {
        offsets.Add(3.0);
    }
    return offsets;
}

// The ends of the scale between which a tic counts. They are a hair wider than the scale, since its limits
// and the tics are singles, but never by more than a part of it that shows.
struct TicRange {
    double Low{}, High{};
    explicit TicRange(const GraphAxis& axis, double step) {
        const double a = axis.Min;
        const double b = axis.Max;
        Low = std::min(a, b);
        High = std::max(a, b);
        const double most = (High - Low) / 1000.0;
        const double least = 1e-5 * std::min(std::fabs(step), High - Low);
        Low -= std::max(std::min(1e-5 * std::fabs(Low), most), least);
        High += std::max(std::min(1e-5 * std::fabs(High), most), least);
    }
    bool Holds(double value) const { return value >= Low && value <= High; }
};

constexpr double MostSteps = 1000.5;

// Steps of equal length over the scale: step i, from 0 to Steps, stands at First + (Skipped + i) * Step.
struct StepRun {
    double First{}, Step{};
    double Skipped{}; // steps before the scale
    int Steps = 1;
};

// Sets the number of steps that reach from First to the end of the scale.
void CountSteps(StepRun& run, double low, double end) {
    double steps = (end - run.First) / run.Step + 1e-3;
    run.Skipped = std::floor((low - run.First) / run.Step) - 1.0;
    if (!(run.Skipped > 0.0) || !std::isfinite(steps)) run.Skipped = 0.0;
    if (!std::isfinite(steps)) return;
    while (steps - run.Skipped > MostSteps) {
        run.Step *= 10.0;
        run.Skipped = std::floor(run.Skipped / 10.0);
        steps /= 10.0;
    }
    steps -= run.Skipped;
    run.Steps = steps >= 1.0 ? static_cast<int>(steps) : 1;
}

StepRun LinearRun(const GraphAxis& axis) {
    StepRun run{axis.FirstTic, axis.TicInterval};
    if (run.Step != 0.0) CountSteps(run, axis.Min, axis.Max);
    return run;
}

StepRun LogRun(const GraphAxis& axis) {
    const double low = std::floor(static_cast<double>(std::min(axis.Min, axis.Max)));
    StepRun run{std::floor(static_cast<double>(axis.FirstTic)), 1.0};
    // FirstTic is the first decade within the scale; the minor tics before it belong to the decade below.
    if (run.First > low) run.First -= 1.0;
    CountSteps(run, low, std::floor(static_cast<double>(std::max(axis.Min, axis.Max))));
    return run;
}

std::vector<Tic> CategoryTics() {
    std::vector<Tic> tics;
    const int count = std::max<int>(Chart.State.Npts, 1);
    for (int i = 1; i <= count; ++i)
        tics.push_back({(i - 0.5) / count, true, i});
    return tics;
}

} // namespace

void ChooseAxisTics(GraphAxis& axis, std::int16_t kind, int length, int labelSpace) {
    if (kind == AxisKinds::Category) {
        axis.TicInterval = 1.0F / static_cast<float>(std::max<int>(Chart.State.Npts, 1));
        axis.FirstTic = axis.TicInterval / 2.0F;
        return;
    }
    SetLog10Axis(axis);
    if (IsLog10(axis))
        ChooseLogTics(axis, length, labelSpace);
    else
        ChooseLinearTics(axis, length, labelSpace);
}

double RoundStep(double wanted) {
    const double decade = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double times : {1.0, 2.0, 5.0})
        if (times * decade >= wanted) return times * decade;
    return 10.0 * decade;
}

void HandOnFormat(const GraphAxis& from, GraphAxis& to) {
    to.TicFormat = from.TicFormat;
    to.Decimals = from.Decimals;
}

void HandOnScale(const GraphAxis& from, GraphAxis& to) {
    to.Min = from.Min;
    to.Max = from.Max;
    to.FirstTic = from.FirstTic;
    to.TicInterval = from.TicInterval;
    to.Factor = from.Factor;
    to.FactorName = from.FactorName;
    HandOnFormat(from, to);
}

void ChooseTics() {
    GraphSpec& spec = Chart.Spec;
    const GraphState& state = Chart.State;
    const int width = spec.Frame.X2 - spec.Frame.X1 + 1;
    const int height = spec.Frame.Y2 - spec.Frame.Y1 + 1;
    if (ChoosesTics(spec.AxisX1)) {
        ChooseAxisTics(spec.AxisX1, state.KindX, width, state.ClearX + state.LabelWidthX1);
        if (spec.AxisX2.Show == 1) HandOnScale(spec.AxisX1, spec.AxisX2);
    }
    if (ChoosesTics(spec.AxisY1)) {
        const int line = SelectFont(spec.AxisY1.LabelFont, Chart.Layout.Sizes.Label[2], 0).Height;
        ChooseAxisTics(spec.AxisY1, state.KindY, height, state.ClearY + line);
        if (spec.AxisY2.Show == 1) HandOnScale(spec.AxisY1, spec.AxisY2);
    }
}

std::vector<Tic> TicPositions(const GraphAxis& axis, std::int16_t kind) {
    if (kind == AxisKinds::Category) return CategoryTics();
    std::vector<Tic> tics;
    const bool log10 = IsLog10(axis);
    const StepRun run = log10 ? LogRun(axis) : LinearRun(axis);
    const StepOffsets offsets = run.Step == 1.0 || !log10 ? OffsetsOf(axis) : StepOffsets{};
    const TicRange range(axis, run.Step);
    for (int i = 0; i <= run.Steps; ++i)
        for (int k = 0; k < offsets.Count; ++k) {
            const double offset = static_cast<double>(offsets.Table[static_cast<std::size_t>(k)]);
            const double value = run.First + (run.Skipped + i) * run.Step + offset;
            if (range.Holds(value)) tics.push_back({value, k == 0, 0});
        }
    return tics;
}

std::string TicLabel(const GraphAxis& axis, std::int16_t kind, const Tic& tic) {
    if (kind == AxisKinds::Category) {
        const bool named = tic.Category <= Chart.CatLabels.Hi() && !Chart.CatLabels[tic.Category].empty();
        return named ? Chart.CatLabels[tic.Category] : std::to_string(tic.Category);
    }
    SetLog10Axis(axis);
    double value = tic.Value;
    const bool exponential = axis.TicFormat == TicFormats::Exponential;
    if (exponential && std::fabs(value) < 1e-5 * std::fabs(static_cast<double>(axis.TicInterval)))
        value = 0.0;
    return FormatTic(value, axis.Decimals, axis.TicFormat);
}

} // namespace Quillon

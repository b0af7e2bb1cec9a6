#include "chart/scale/AxisScale.h"

#include "chart/records/ChartState.h"
#include "chart/records/Records.h"
#include "chart/records/SetTable.h"
#include "platform/Narrow.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

// The lowest and the highest of something.
struct Range {
    float Low{}, High{};
    void Take(float value) {
        Low = std::min(Low, value);
        High = std::max(High, value);
    }
};

// The value that seeds the range: that of the first point, in it of the first set, that has one. 0 without
// any.
float FirstValue(const SetTable& data) {
    for (long point = 1; point <= data.Points(); ++point)
        for (long set = 1; set <= data.Sets(); ++set)
            if (data(point, set) != MissingValue) return data(point, set);
    return 0.0F;
}

Range RangeOfValues(const SetTable& data) {
    const float first = FirstValue(data);
    Range range{first, first};
    for (long set = 1; set <= data.Sets(); ++set) {
        const float* values = data.Set(set);
        for (long i = 0; i < data.Points(); ++i)
            if (values[i] != MissingValue) range.Take(values[i]);
    }
    return range;
}

// The heights of the stacks in a point: of the positive values of all sets, and of the negative ones.
struct StackHeights {
    double Up = 0.0, Down = 0.0;
};
StackHeights StacksAt(const SetTable& data, long point) {
    StackHeights stacks;
    for (long set = 1; set <= data.Sets(); ++set) {
        const float value = data(point, set);
        if (value != MissingValue) (value > 0.0F ? stacks.Up : stacks.Down) += value;
    }
    return stacks;
}

// The range of the heights of stacks over all points.
Range RangeOfStacks(const SetTable& data) {
    const float first = FirstValue(data);
    Range range{first, first};
    for (long point = 1; point <= data.Points(); ++point) {
        const StackHeights stacks = StacksAt(data, point);
        range.High = std::max(range.High, FiniteSingle(stacks.Up));
        range.Low = std::min(range.Low, FiniteSingle(stacks.Down));
    }
    return range;
}

void CategoryRange(GraphAxis& axis) {
    axis.Min = 0.0F;
    axis.Max = 1.0F;
    axis.Factor = 1.0F;
    axis.FirstTic = 0.0F;
    axis.TicInterval = 1.0F / static_cast<float>(std::max<int>(Chart.State.Npts, 1));
    axis.FactorName = "";
}

// A range of no length gets one. Where 1 is lost in the rounding of a large value, its own size is taken.
void Widen(Range& range) {
    if (range.Low != range.High) return;
    range.High = range.Low + 1.0F;
    if (range.High == range.Low)
        range.High = FiniteSingle(range.Low + std::fabs(static_cast<double>(range.Low)));
    if (range.High == range.Low) range.Low = 0.0F;
}

std::string PrescaleName(int k) {
    switch (k) {
    case 0:
        return "";
    case 1:
        return "Thousands";
    case 2:
        return "Millions";
    case 3:
        return "Billions";
    case 4:
        return "Trillions";
    case -1:
        return "Thousandths";
    case -2:
        return "Millionths";
    case -3:
        return "Billionths";
    case -4:
        return "Trillionths";
    default:
        return " x 10^" + std::to_string(-3 * k);
    }
}

// Digits behind the point that tell apart values over a range that is the part d of the larger limit m.
int DecimalsFor(const GraphAxis& axis, float m, float d) {
    if (axis.TicFormat == TicFormats::Exponential) return 1 - static_cast<int>(std::floor(LogBase10(d)));
    const float logM = LogBase10(m);
    const int digits = 1 - static_cast<int>(std::floor(LogBase10(d) + logM));
    if (m < 10.0F) return std::min(digits, 9);
    return digits - static_cast<int>(std::trunc(logM));
}

} // namespace

float LogBase10(double x) {
    static const double inverse = 1.0 / std::log(10.0);
    return x > 0.0 ? static_cast<float>(std::log(x) * inverse) : -6.0F;
}

bool IsLog10(const GraphAxis& axis) {
    return axis.ScaleType == ScaleTypes::Logarithmic && axis.LogBase == 10.0F;
}

void SetLog10Axis(const GraphAxis& axis) {
    Chart.Log10Axis = Flag(IsLog10(axis));
}

float FiniteSingle(double value) {
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -most, most));
}

float LoadDivisor(const GraphAxis& axis) {
    return axis.ScaleMode == ScaleModes::Manual && axis.Factor != 0.0F ? axis.Factor : 1.0F;
}

double DrawDivisor(const GraphAxis& axis, float loadFactor) {
    const double divisor = static_cast<double>(axis.Factor) / static_cast<double>(loadFactor);
    return std::isfinite(divisor) && divisor != 0.0 ? divisor : 1.0;
}

void TransformSet(const GraphAxis& axis, float* values, long count) {
    const float divisor = LoadDivisor(axis);
    const bool logarithmic = axis.ScaleType == ScaleTypes::Logarithmic;
    const double logOfBase = logarithmic ? std::log(static_cast<double>(axis.LogBase)) : 1.0;
    for (long i = 0; i < count; ++i) {
        float v = values[i];
        if (v != MissingValue && divisor != 1.0F) v /= divisor;
        if (logarithmic)
            v = v > 0.0F ? static_cast<float>(std::log(static_cast<double>(v)) / logOfBase) : MissingValue;
        values[i] = std::isfinite(v) ? v : MissingValue;
    }
}

void AutoRange(GraphAxis& axis, std::int16_t kind, const SetTable& data, float loadFactor) {
    if (kind == AxisKinds::Category) {
        CategoryRange(axis);
        return;
    }
    if (axis.ScaleMode == ScaleModes::Manual || axis.ScaleMode == ScaleModes::Zoomed) return;
    const std::int16_t type = Chart.Spec.GraphType;
    const bool bars = type != GraphTypes::CategoryLines && type != GraphTypes::XYPlot;
    const bool stacked = bars && Chart.Spec.PlotStyle != 1;
    Range range = stacked ? RangeOfStacks(data) : RangeOfValues(data);
    Widen(range);
    axis.Min = range.Low;
    axis.Max = range.High;
    if (axis.ScaleMode == ScaleModes::Prescaled) {
        axis.Min = FiniteSingle(static_cast<double>(range.Low) * static_cast<double>(loadFactor));
        axis.Max = FiniteSingle(static_cast<double>(range.High) * static_cast<double>(loadFactor));
        ChoosePrescale(axis);
    } else if (axis.Factor != loadFactor) { // a prescale of before does not hold for a range in stored units
        axis.Factor = loadFactor;
        axis.FactorName = "";
    }
}

void ChoosePrescale(GraphAxis& axis) {
    axis.Factor = 1.0F;
    axis.FactorName = "";
    if (axis.ScaleType == ScaleTypes::Logarithmic) return;
    const double m = std::max(std::fabs(axis.Min), std::fabs(axis.Max));
    if (!(m > 0.0)) return;
    const int k = static_cast<int>(std::floor((std::log(m) / std::log(10.0)) / 3.0));
    axis.FactorName = PrescaleName(k);
    axis.Factor = static_cast<float>(std::pow(10.0, 3.0 * k));
    axis.Min = FiniteSingle(static_cast<double>(axis.Min) / static_cast<double>(axis.Factor));
    axis.Max = FiniteSingle(static_cast<double>(axis.Max) / static_cast<double>(axis.Factor));
}

void AutoFormat(GraphAxis& axis) {
    if (axis.ScaleMode == ScaleModes::Manual || axis.ScaleMode == ScaleModes::Zoomed) return;
    SetLog10Axis(axis);
    if (IsLog10(axis)) {
        const bool plain = axis.Max <= 6.0F && axis.Min >= -5.0F;
        axis.TicFormat = plain ? TicFormats::Decimal : TicFormats::Exponential;
        axis.Decimals =
            plain ? ToInt16(std::max(0.0, -std::floor(static_cast<double>(axis.Min)))) : std::int16_t{1};
        return;
    }
    const float low = std::fabs(axis.Min);
    const float high = std::fabs(axis.Max);
    const float m = std::max(low, high);
    if (!(m > 0.0F)) return;
    if (m >= 100000.0F || m < 0.0001F) axis.TicFormat = TicFormats::Exponential;
    const double d = (static_cast<double>(axis.Max) - static_cast<double>(axis.Min)) / static_cast<double>(m);
    axis.Decimals = ToInt16(std::max(DecimalsFor(axis, m, static_cast<float>(d)), 0));
}

} // namespace Quillon

#include "chart/hand/ScaleType.h"

#include "chart/records/ChartState.h"
#include "chart/scale/AxisScale.h"

#include <cmath>

namespace Quillon {

namespace {

constexpr const char* LnPrefix = "Ln (";

bool IsLogarithmic(const GraphAxis& axis) {
    return axis.ScaleType == ScaleTypes::Logarithmic;
}

bool IsNatural(const GraphAxis& axis) {
    return IsLogarithmic(axis) && axis.LogBase == NaturalBase;
}

// A value of a scale, without its divisor, as the number that it stands for, and back.
double NumberOf(const GraphAxis& axis, double value) {
    return IsLogarithmic(axis) ? std::pow(static_cast<double>(axis.LogBase), value) : value;
}
double PlaceOf(const GraphAxis& axis, double number) {
    return IsLogarithmic(axis) ? std::log(number) / std::log(static_cast<double>(axis.LogBase)) : number;
}

std::string WithoutLn(const std::string& title) {
    if (!title.starts_with(LnPrefix) || !title.ends_with(")")) return title;
    const std::size_t prefix = std::string(LnPrefix).size();
    return title.substr(prefix, title.size() - prefix - 1);
}

std::string WithLn(const std::string& title) {
    return title.empty() || title.starts_with(LnPrefix) ? title : LnPrefix + title + ")";
}

// Tics for a scale that no autorange follows.
void PlainTics(GraphAxis& axis) {
    const std::int16_t mode = axis.ScaleMode;
    axis.ScaleMode = ScaleModes::Autorange;
    axis.TicFormat = TicFormats::Decimal;
    AutoFormat(axis);
    axis.ScaleMode = mode;
    axis.FirstTic = IsLog10(axis) ? std::ceil(axis.Min) : axis.Min;
    axis.TicInterval = IsLog10(axis) ? 1.0F : (axis.Max - axis.Min) / 10.0F;
}

// The stored values that raw columns give on an axis that divides by loadFactor.
SetTable Transformed(SetTable raw, GraphAxis axis, float loadFactor) {
    axis.ScaleMode = ScaleModes::Manual;
    axis.Factor = loadFactor;
    for (long set = 1; set <= raw.Sets(); ++set)
        TransformSet(axis, raw.Set(set), raw.Points());
    return raw;
}

// The raw columns worked out from the stored ones.
SetTable RawFrom(SetTable stored, const GraphAxis& axis, float loadFactor) {
    for (long set = 1; set <= stored.Sets(); ++set)
        for (long point = 1; point <= stored.Points(); ++point) {
            float& value = stored(point, set);
            if (value != MissingValue)
                value = FiniteSingle(NumberOf(axis, static_cast<double>(value)) *
                                     static_cast<double>(loadFactor));
        }
    return stored;
}

// Those that were kept, where the stored ones are still theirs.
SetTable RawOf(const SetTable& stored, const ColumnsBefore& before, const GraphAxis& axis, float loadFactor) {
    if (!before.Raw.Empty() && Transformed(before.Raw, axis, loadFactor) == stored) return before.Raw;
    return RawFrom(stored, axis, loadFactor);
}

void Move(float& place, const GraphAxis& from, const GraphAxis& to, float loadFactor) {
    const double number = NumberOf(from, static_cast<double>(place)) * static_cast<double>(loadFactor);
    const double moved = PlaceOf(to, number);
    if (std::isfinite(moved)) place = FiniteSingle(moved);
}

void MoveNotes(bool alongX, const GraphAxis& from, const GraphAxis& to, float loadFactor) {
    constexpr std::int16_t ellipse = 5; // its second place is a pair of radii
    for (GraphNote& note : Chart.Notes)
        Move(alongX ? note.X : note.Y, from, to, loadFactor);
    for (GraphMark& mark : Chart.Marks) {
        Move(alongX ? mark.X1 : mark.Y1, from, to, loadFactor);
        if (mark.Kind != ellipse) Move(alongX ? mark.X2 : mark.Y2, from, to, loadFactor);
    }
}

} // namespace

bool SameScaleType(const GraphAxis& one, const GraphAxis& other) {
    return one.ScaleType == other.ScaleType && (!IsLogarithmic(one) || one.LogBase == other.LogBase);
}

void ConvertAxis(GraphAxis& axis, const GraphAxis& to) {
    const double factor = axis.Factor;
    const double low = PlaceOf(to, NumberOf(axis, static_cast<double>(axis.Min)) * factor);
    const double high = PlaceOf(to, NumberOf(axis, static_cast<double>(axis.Max)) * factor);
    const std::string title = axis.Title.Text.Str();
    axis.Title.Text = IsNatural(to) ? WithLn(title) : IsNatural(axis) ? WithoutLn(title) : title;
    axis.ScaleType = to.ScaleType;
    axis.LogBase = to.LogBase;
    axis.Factor = 1.0F;
    axis.FactorName = "";
    if (axis.ScaleMode == ScaleModes::Zoomed) axis.ScaleMode = ScaleModes::Manual;
    const bool stands = std::isfinite(low) && std::isfinite(high) && low != high;
    if (!stands) axis.ScaleMode = ScaleModes::Autorange;
    axis.Min = stands ? FiniteSingle(low) : 0.0F;
    axis.Max = stands ? FiniteSingle(high) : 1.0F;
    PlainTics(axis);
}

long ValuesWithoutLogarithm(bool alongX) {
    const SetTable& data = alongX ? Chart.DataX : Chart.DataY;
    long count = 0;
    for (long set = 1; set <= data.Sets(); ++set)
        for (long point = 1; point <= data.Points(); ++point)
            count += data(point, set) != MissingValue && !(data(point, set) > 0.0F) ? 1 : 0;
    return count;
}

void ConvertColumns(bool alongX, const GraphAxis& from, const GraphAxis& to) {
    SetTable& data = alongX ? Chart.DataX : Chart.DataY;
    ColumnsBefore& before = alongX ? Chart.Columns.X : Chart.Columns.Y;
    float& loadFactor = alongX ? Chart.LoadFactorX : Chart.LoadFactorY;
    before.Raw = RawOf(data, before, from, loadFactor);
    data = Transformed(before.Raw, to, 1.0F);
    MoveNotes(alongX, from, to, loadFactor);
    loadFactor = 1.0F;
    if (!IsLogarithmic(to)) before.Raw = {};
}

} // namespace Quillon

#include "chart/hand/ScaleType.h"

#include "chart/records/ChartState.h"
#include "chart/scale/AxisScale.h"
#include "chart/scale/Tics.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr const char* LnBegin = "Ln (";
constexpr const char* LnEnd = ")";
constexpr std::size_t LongestTitle = 80;

bool IsLogarithmic(const GraphAxis& axis) {
    return axis.ScaleType == ScaleTypes::Logarithmic;
}

bool IsNatural(const GraphAxis& axis) {
    return IsLogarithmic(axis) && axis.LogBase == NaturalBase;
}

std::string WithoutLn(const std::string& title) {
    if (!title.starts_with(LnBegin) || !title.ends_with(LnEnd)) return title;
    const std::size_t begin = std::string(LnBegin).size();
    return title.substr(begin, title.size() - begin - 1);
}

// No title stays none.
std::string WithLn(const std::string& title) {
    return title.empty() ? title : LnTitle(title);
}

void BracketTitle(GraphTitle& title, LnTitles& titles) {
    if (titles.Bracketed.empty() || title.Text.Str() != titles.Plain)
        titles = {title.Text.Str(), WithLn(title.Text)};
    title.Text = titles.Bracketed;
}

void UnbracketTitle(GraphTitle& title, LnTitles& titles) {
    if (titles.Plain.empty() || title.Text.Str() != titles.Bracketed)
        titles = {WithoutLn(title.Text), title.Text.Str()};
    title.Text = titles.Plain;
}

// Tics for a scale that no autorange follows.
void PlainTics(GraphAxis& axis) {
    const std::int16_t mode = axis.ScaleMode;
    axis.ScaleMode = ScaleModes::Autorange;
    axis.TicFormat = TicFormats::Decimal;
    AutoFormat(axis);
    axis.ScaleMode = mode;
    if (IsLog10(axis)) {
        axis.FirstTic = std::ceil(std::min(axis.Min, axis.Max));
        axis.TicInterval = 1.0F;
        return;
    }
    const double low = std::min(axis.Min, axis.Max);
    const double step = RoundStep((std::max(axis.Min, axis.Max) - low) / 8.0);
    axis.FirstTic = FiniteSingle(std::ceil(low / step) * step);
    axis.TicInterval = FiniteSingle(step);
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
                value = FiniteSingle(NumberAt(axis, static_cast<double>(value)) *
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
    const double number = NumberAt(from, static_cast<double>(place)) * static_cast<double>(loadFactor);
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

std::string LnTitle(const std::string& title) {
    return (LnBegin + title).substr(0, LongestTitle - 1) + LnEnd;
}

bool SameScaleType(const GraphAxis& one, const GraphAxis& other) {
    return one.ScaleType == other.ScaleType && (!IsLogarithmic(one) || one.LogBase == other.LogBase);
}

double NumberAt(const GraphAxis& axis, double place) {
    return IsLogarithmic(axis) ? std::pow(static_cast<double>(axis.LogBase), place) : place;
}

double PlaceOf(const GraphAxis& axis, double number) {
    return IsLogarithmic(axis) ? std::log(number) / std::log(static_cast<double>(axis.LogBase)) : number;
}

void ConvertAxis(GraphAxis& axis, const GraphAxis& to, LnTitles& titles) {
    const double factor = axis.Factor;
    const double low = PlaceOf(to, NumberAt(axis, static_cast<double>(axis.Min)) * factor);
    const double high = PlaceOf(to, NumberAt(axis, static_cast<double>(axis.Max)) * factor);
    if (IsNatural(to) && !IsNatural(axis)) BracketTitle(axis.Title, titles);
    if (!IsNatural(to) && IsNatural(axis)) UnbracketTitle(axis.Title, titles);
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

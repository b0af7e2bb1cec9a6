#include "studies/methods/ResamplingLines.h"

#include "input/NUMINPUT.h"
#include "models/table/ParmScale.h"
#include "platform/Words.h"
#include "reporting/values/ParmLines.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quillon {

namespace {

// "blocks of 1 to 7 points"
std::string BlocksText(const std::vector<long>& lengths) {
    const auto [least, most] = std::minmax_element(lengths.begin(), lengths.end());
    const std::string first = *least == *most ? "" : std::to_string(*least) + " to ";
    return "blocks of " + first + Counted(*most, "point");
}

// Values of a line behind its name: "42.51, median 42.49 [ 41.90, 43.11 ], s.d. 0.31".
template <class Show> std::string SpreadLine(const std::string& name, const Spread& spread, Show&& show) {
    return "    " + name + ": mean " + show(spread.Mean) + ", median " + show(spread.Median) + " [ " +
           show(spread.Lower) + ", " + show(spread.Upper) + " ], s.d. " + FormatNumber(spread.Sd, "#.##E+##");
}

// What results call a quantity, and what readers do.
struct QuantityName {
    const char *Name, *Shown, *Picture;
};
constexpr QuantityName QuantityNames[] = {
    {"log10_k", "log10 K", "#0.0000"}, {"kd", "Kd", "#.####E+##"}, {"delta_g_kj", "Delta G", "#0.000"}};

const QuantityName& NameOf(const DerivedQuantity& quantity) {
    for (const QuantityName& name : QuantityNames)
        if (quantity.Quantity == name.Name) return name;
    return QuantityNames[0];
}

} // namespace

const char* KindName(ResampleKind kind) {
    return kind == ResampleKind::Parametric ? "parametric" : "residuals";
}

std::string ResamplingHead(const Resampling& resampling) {
    std::string text =
        std::to_string(resampling.Ended) + " fits to resampled data (" + KindName(resampling.Choice.Kind);
    if (!resampling.BlockLengths.empty()) text += " in " + BlocksText(resampling.BlockLengths);
    text += ", seed " + std::to_string(resampling.Choice.Seed) + ")";
    if (resampling.Failed > 0)
        text += ", " + std::to_string(resampling.Failed) + " of which failed" + resampling.Broken;
    return text;
}

std::string SpreadText(SlotNo slot, double displayed) {
    if (std::fabs(displayed) > static_cast<double>(std::numeric_limits<float>::max())) return "-";
    return ParmText(slot, static_cast<float>(displayed));
}

TextTable ResamplingTable(const Resampling& resampling) {
    const std::string level = FormatNumber(resampling.Choice.Level, "#0.0%");
    TextTable table{
        ResamplingHead(resampling),
        {"Quantity", "Mean", "Standard deviation", "Median", "Lower, " + level, "Upper, " + level},
        {}};
    const auto add = [&](const std::string& name, const Spread& spread, const auto& show) {
        table.Rows.push_back({name, show(spread.Mean), FormatNumber(spread.Sd, "#.##E+##"),
                              show(spread.Median), show(spread.Lower), show(spread.Upper)});
    };
    for (std::size_t a = 0; a < resampling.Spreads.size(); ++a)
        add(ParmCaption(SlotNo(resampling.Slots[a])), resampling.Spreads[a],
            [&](double value) { return SpreadText(SlotNo(resampling.Slots[a]), value); });
    for (std::size_t i = 0; i < resampling.DerivedSpreads.size(); ++i)
        add(QuantityCaption(resampling.Derived[i]), resampling.DerivedSpreads[i],
            [&](double value) { return QuantityText(resampling.Derived[i], value); });
    return table;
}

std::string QuantityCaption(const DerivedQuantity& quantity) {
    const std::string unit = quantity.Unit.empty() ? "" : "  (" + quantity.Unit + ")";
    return quantity.Name + ": " + NameOf(quantity).Shown + unit;
}

std::string QuantityText(const DerivedQuantity& quantity, double value) {
    return std::isfinite(value) ? FormatNumber(value, NameOf(quantity).Picture) : "-";
}

std::vector<std::string> ResamplingLines(const Resampling& resampling) {
    std::vector<std::string> lines{ResamplingHead(resampling) + ";"};
    lines.push_back("  in brackets what " + FormatNumber(resampling.Choice.Level, "#0.0%") +
                    " of them lie in");
    for (std::size_t a = 0; a < resampling.Spreads.size(); ++a)
        lines.push_back(
            SpreadLine(ParmCaption(SlotNo(resampling.Slots[a])), resampling.Spreads[a],
                       [&](double value) { return SpreadText(SlotNo(resampling.Slots[a]), value); }));
    for (std::size_t i = 0; i < resampling.DerivedSpreads.size(); ++i) {
        lines.push_back(SpreadLine(QuantityCaption(resampling.Derived[i]), resampling.DerivedSpreads[i],
                                   [&](double value) { return QuantityText(resampling.Derived[i], value); }));
    }
    if (const std::string known = QuantileText(resampling); !known.empty()) lines.push_back("  " + known);
    return lines;
}

} // namespace Quillon

#include "batch/outputs/ResamplingOutputs.h"

#include "batch/outputs/CsvParts.h"
#include "batch/outputs/JsonParts.h"
#include "studies/methods/ResamplingLines.h"

namespace Quillon {

namespace {

void AddSpread(std::vector<std::string>& members, const Spread& spread) {
    const auto add = [&](const char* name, double value) {
        members.push_back(JsonMember(name, JsonNumber(value)));
    };
    add("mean", spread.Mean);
    add("sd", spread.Sd);
    add("median", spread.Median);
    add("lower", spread.Lower);
    add("upper", spread.Upper);
    add("lower_error", spread.LowerError);
    add("upper_error", spread.UpperError);
}

std::string ParameterRecord(const Resampling& resampling, std::size_t place) {
    std::vector<std::string> members{JsonMember("slot", std::to_string(resampling.Slots[place])),
                                     JsonMember("name", JsonString(resampling.Names[place]))};
    AddSpread(members, resampling.Spreads[place]);
    return InlineObject(members);
}

std::string NumberList(const std::vector<double>& numbers) {
    std::vector<std::string> items;
    for (const double number : numbers)
        items.push_back(JsonNumber(number));
    return InlineList(items);
}

std::string DerivedRecord(const Resampling& resampling, std::size_t place) {
    const DerivedQuantity& quantity = resampling.Derived[place];
    std::vector<std::string> members{
        JsonMember("slot", std::to_string(quantity.Slot)), JsonMember("name", JsonString(quantity.Name)),
        JsonMember("quantity", JsonString(quantity.Quantity)), JsonMember("unit", JsonString(quantity.Unit))};
    AddSpread(members, resampling.DerivedSpreads[place]);
    members.push_back(JsonMember("correlations", NumberList(resampling.DerivedCorrelations[place])));
    return InlineObject(members);
}

std::string WholeNumbers(const std::vector<long>& numbers) {
    std::vector<std::string> items;
    for (const long number : numbers)
        items.push_back(std::to_string(number));
    return InlineList(items);
}

std::string CorrelationsRecord(const Resampling& resampling) {
    if (resampling.Correlations.empty()) return JsonNull;
    std::vector<std::string> rows;
    for (const std::vector<double>& row : resampling.Correlations)
        rows.push_back(NumberList(row));
    return InlineObject(
        {JsonMember("slots", WholeNumbers(resampling.Slots)), JsonMember("matrix", InlineList(rows))});
}

// ",slot_2,slot_8\n"
std::string SlotHeads(const Resampling& resampling) {
    std::string text;
    for (const long slot : resampling.Slots)
        text += ",slot_" + std::to_string(slot);
    return text + "\n";
}

} // namespace

std::string ResamplingJson(const Resampling& resampling) {
    std::vector<std::string> parameters, derived;
    for (std::size_t a = 0; a < resampling.Spreads.size(); ++a)
        parameters.push_back(ParameterRecord(resampling, a));
    for (std::size_t i = 0; i < resampling.DerivedSpreads.size(); ++i)
        derived.push_back(DerivedRecord(resampling, i));
    const std::string known = QuantileText(resampling);
    const std::string blocks =
        resampling.BlockLengths.empty() ? JsonNull : WholeNumbers(resampling.BlockLengths);
    return InlineObject({JsonMember("kind", JsonString(KindName(resampling.Choice.Kind))),
                         JsonMember("count", std::to_string(resampling.Choice.Count)),
                         JsonMember("failed", std::to_string(resampling.Failed)),
                         JsonMember("seed", std::to_string(resampling.Choice.Seed)),
                         JsonMember("level", JsonNumber(resampling.Choice.Level)),
                         JsonMember("block_lengths", blocks), JsonMember("parameters", JsonList(parameters)),
                         JsonMember("correlations", CorrelationsRecord(resampling)),
                         JsonMember("derived", JsonList(derived)),
                         JsonMember("limits", known.empty() ? JsonNull : JsonString(known))});
}

std::string DrawsCsv(const Resampling& resampling) {
    std::string text = "draw,converged,sum_of_squares" + SlotHeads(resampling);
    for (std::size_t i = 0; i < resampling.Draws.size(); ++i) {
        const Draw& draw = resampling.Draws[i];
        std::vector<std::string> fields{std::to_string(i + 1), draw.Converged ? "yes" : "no",
                                        draw.Converged ? ShortestText(draw.SumSq) : ""};
        for (std::size_t a = 0; a < resampling.Slots.size(); ++a)
            fields.push_back(draw.Converged ? ShortestText(draw.Values[a]) : "");
        text += CsvLine(fields);
    }
    return text;
}

std::string CorrelationsCsv(const Resampling& resampling) {
    std::string text = "slot,name" + SlotHeads(resampling);
    const std::vector<std::vector<double>>& triangle = resampling.Correlations;
    for (std::size_t a = 0; a < triangle.size(); ++a) {
        std::vector<std::string> fields{std::to_string(resampling.Slots[a]), resampling.Names[a]};
        for (std::size_t b = 0; b < triangle.size(); ++b)
            fields.push_back(ShortestText(a >= b ? triangle[a][b] : triangle[b][a]));
        text += CsvLine(fields);
    }
    for (std::size_t i = 0; i < resampling.DerivedCorrelations.size(); ++i) {
        std::vector<std::string> fields{std::to_string(resampling.Derived[i].Slot),
                                        QuantityCaption(resampling.Derived[i])};
        for (const double value : resampling.DerivedCorrelations[i])
            fields.push_back(ShortestText(value));
        text += CsvLine(fields);
    }
    return text;
}

} // namespace Quillon

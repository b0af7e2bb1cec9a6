#include "batch/CompareTable.h"

#include "batch/console/OneLine.h"
#include "batch/options/OutputPlaces.h"
#include "batch/outputs/CsvParts.h"
#include "batch/outputs/JsonParts.h"
#include "models/table/Catalogue.h"
#include "platform/Paths.h"

namespace Quillon {

namespace {

// A column and what stands there, as CSV and as JSON.
struct Cell {
    const char* Name;
    std::string Csv, Json;
};

Cell TextCell(const char* name, const std::string& text) {
    return {name, text, JsonString(text)};
}
Cell CountCell(const char* name, bool exists, long value) {
    const std::string text = std::to_string(value);
    return {name, exists ? text : "", exists ? text : JsonNull};
}
Cell NumberCell(const char* name, const std::optional<double>& value) {
    return {name, CsvNumber(value), JsonNumber(value)};
}
Cell NumberCell(const char* name, bool exists, double value) {
    return NumberCell(name, exists ? std::optional(value) : std::nullopt);
}
Cell FlagCell(const char* name, bool value) {
    return {name, value ? "yes" : "no", JsonFlag(value)};
}

std::vector<Cell> CellsOf(const ComparedModel& row) {
    const bool fit = row.HasFit;
    Cell reference = TextCell("reference", row.Reference);
    if (row.Reference.empty()) reference.Json = JsonNull;
    return {CountCell("model", true, row.Variant.Model),
            TextCell("name", ModelReportName(row.Variant.Model)),
            TextCell("options", OptionsText(row.Variant)),
            CountCell("free", fit, row.Free),
            CountCell("degrees_of_freedom", fit, row.Freedom),
            NumberCell("sum_of_squares", fit, row.SumSq),
            NumberCell("rms", fit, row.Rms),
            NumberCell("runs_z", row.RunsZ),
            reference,
            NumberCell("F", row.F),
            NumberCell("p", row.P),
            NumberCell("delta_aicc", row.DeltaAicc),
            NumberCell("delta_bic", row.DeltaBic),
            NumberCell("weight", row.Weight),
            FlagCell("converged", row.Minimum),
            FlagCell("minimum", row.Minimum),
            TextCell("notes", OneLine(row.Notes))};
}

} // namespace

std::string CompareCsv(const Comparison& comparison) {
    std::vector<std::string> head;
    for (const Cell& cell : CellsOf(ComparedModel{}))
        head.push_back(cell.Name);
    std::string text = CsvLine(head);
    for (const ComparedModel& row : comparison.Rows) {
        std::vector<std::string> fields;
        for (const Cell& cell : CellsOf(row))
            fields.push_back(cell.Csv);
        text += CsvLine(fields);
    }
    return text;
}

std::string CompareJson(const Comparison& comparison) {
    std::vector<std::string> models;
    for (const ComparedModel& row : comparison.Rows) {
        std::vector<std::string> members;
        for (const Cell& cell : CellsOf(row))
            members.push_back(JsonMember(cell.Name, cell.Json));
        models.push_back(InlineObject(members));
    }
    return JsonText({JsonMember("models", JsonList(models))});
}

std::string CompareTable(const Comparison& comparison, const std::string& path) {
    return EndingOf(path) == "json" ? CompareJson(comparison) : CompareCsv(comparison);
}

} // namespace Quillon

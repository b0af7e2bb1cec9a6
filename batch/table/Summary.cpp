#include "batch/table/Summary.h"

#include "batch/console/OneLine.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace Quillon {

namespace {

void AddNames(CsvCells& names, const SummaryLine& line) {
    for (const auto& [name, value] : line.Values)
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

std::string ValueOf(const SummaryLine& line, const std::string& name) {
    for (const auto& [other, value] : line.Values)
        if (other == name) return value;
    return "";
}

CsvCells CellsOf(const SummaryLine& line, const CsvCells& names) {
    CsvCells cells{std::to_string(line.Row)};
    cells.insert(cells.end(), line.Cells.begin(), line.Cells.end());
    cells.insert(cells.end(), line.Fields.begin(), line.Fields.end());
    for (const std::string& name : names)
        cells.push_back(ValueOf(line, name));
    return cells;
}

[[noreturn]] void FailPart(const std::string& path, const std::string& reason) {
    RaiseError(OneLine(path + ": " + reason));
}

// The place of the first field behind the columns of the table.
std::size_t PlaceOfFields(const CsvCells& heads, const std::string& path) {
    const auto fields =
        std::search(heads.begin(), heads.end(), std::begin(SummaryFields), std::end(SummaryFields),
                    [](const std::string& head, const char* field) { return head == field; });
    if (heads.front() != SummaryRow || fields == heads.end()) FailPart(path, "this is no summary of a table");
    return static_cast<std::size_t>(fields - heads.begin());
}

long RowNumber(const std::string& cell, const std::string& path) {
    long row = 0;
    const char* const end = cell.data() + cell.size();
    const auto [stop, failure] = std::from_chars(cell.data(), end, row);
    if (failure != std::errc{} || stop != end || row < 1) FailPart(path, Quoted(cell) + " is no row");
    return row;
}

SummaryLine LineOf(const CsvCells& cells, const CsvCells& heads, std::size_t fields,
                   const std::string& path) {
    if (cells.size() != heads.size())
        FailPart(path, "a line has " + std::to_string(cells.size()) + " cells under " +
                           std::to_string(heads.size()) + " heads");
    const auto at = [&](std::size_t place) { return cells.begin() + static_cast<std::ptrdiff_t>(place); };
    const std::size_t values = fields + std::size(SummaryFields);
    SummaryLine line{RowNumber(cells.front(), path), {at(1), at(fields)}, {at(fields), at(values)}, {}};
    for (std::size_t i = values; i < cells.size(); ++i)
        line.Values.emplace_back(heads[i], cells[i]);
    return line;
}

} // namespace

std::string SummaryText(const CsvCells& columns, const std::vector<SummaryLine>& lines) {
    CsvCells names;
    for (const SummaryLine& line : lines)
        AddNames(names, line);
    CsvCells heads{SummaryRow};
    heads.insert(heads.end(), columns.begin(), columns.end());
    heads.insert(heads.end(), std::begin(SummaryFields), std::end(SummaryFields));
    heads.insert(heads.end(), names.begin(), names.end());
    std::string text = CsvLine(heads);
    for (const SummaryLine& line : lines)
        text += CsvLine(CellsOf(line, names));
    return text;
}

SummaryPart ParseSummary(const std::string& text, const std::string& path) {
    std::vector<CsvCells> lines;
    try {
        lines = ParseCsv(text);
    } catch (const RuntimeError& error) {
        FailPart(path, error.Text);
    }
    if (lines.empty()) FailPart(path, "this is no summary of a table");
    const CsvCells heads = lines.front();
    const std::size_t fields = PlaceOfFields(heads, path);
    SummaryPart part{{heads.begin() + 1, heads.begin() + static_cast<std::ptrdiff_t>(fields)}, {}};
    for (std::size_t i = 1; i < lines.size(); ++i)
        part.Lines.push_back(LineOf(lines[i], heads, fields, path));
    return part;
}

} // namespace Quillon

#pragma once
// The summary of a table of fits: its lines put together, and parts of it read and merged.

#include "input/Csv.h"

#include <string>
#include <utility>
#include <vector>

namespace Quillon {

// What the summary tells of each fit beside its parameters, in this order.
inline constexpr const char* SummaryFields[] = {"status",         "reason", "converged",          "minimum",
                                                "sum_of_squares", "rms",    "degrees_of_freedom", "runs_z"};
inline constexpr const char* SummaryRow = "row";
inline constexpr const char* SummaryError = " error"; // behind the name of a parameter

// The line of a row: cells of the table, the fields, and named values of parameters.
struct SummaryLine {
    long Row = 0;
    CsvCells Cells;  // as many as the table has columns
    CsvCells Fields; // as many as SummaryFields
    std::vector<std::pair<std::string, std::string>> Values;
};

// The whole text, lines by rising row. Values stand under their names, which come in the order in which the
// lines first have them.
std::string SummaryText(const CsvCells& columns, const std::vector<SummaryLine>& lines);

// A part of a summary, read again.
struct SummaryPart {
    CsvCells Columns; // of the table
    std::vector<SummaryLine> Lines;
};
// A text that is no summary is a RuntimeError in one line that names path.
SummaryPart ParseSummary(const std::string& text, const std::string& path);

} // namespace Quillon

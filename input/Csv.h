#pragma once
// Tables as comma separated values (RFC 4180): cells between commas, a cell with a comma, a quote or an end
// of line in it between double quotes, a quote in it doubled. Lines end with LF or CR LF.

#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

using CsvCells = std::vector<std::string>;

// The lines of a text, those with nothing in them left out. A byte order mark in front is passed over. A
// quote that is not closed is a RuntimeError that names its line.
std::vector<CsvCells> ParseCsv(std::string_view text);

// A line with its end; cells are quoted where they have to be, so that a line that is read and written again
// is the same.
std::string CsvLine(const CsvCells& cells);

} // namespace Quillon

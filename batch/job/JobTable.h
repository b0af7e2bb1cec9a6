#pragma once
// A table whose rows fill a job: "{NAME}" in a value of the job, or in the path of an output, stands for the
// cell of the column NAME.

#include "input/Csv.h"

#include <string>
#include <vector>

namespace Quillon {

struct JobTable {
    std::string Path;           // for messages
    CsvCells Heads;             // names of the columns
    std::vector<CsvCells> Rows; // row n of the table is Rows[n - 1]
};

// A row as it fills a job. A row with fewer cells or more than there are columns fills none.
struct JobRow {
    const JobTable* Table = nullptr;
    long Number = 0; // from 1
    const CsvCells& Cells() const { return Table->Rows[static_cast<std::size_t>(Number - 1)]; }
};

// Reads a table: a line of heads and at least one row. A head that is empty, stands twice or holds a brace is
// a RuntimeError in one line, and so is a text that is no table.
JobTable ParseJobTable(const std::string& text, const std::string& path);

// text with the row's cells in place of names in braces. A name that is no column is a RuntimeError.
std::string Filled(const std::string& text, const JobRow& row);

// Whether text names a column of the table.
bool NamesAColumn(const std::string& text, const JobTable& table);

// A name in braces that is no column; "" when all are.
std::string UnknownColumn(const std::string& text, const JobTable& table);

// What stands behind the "=" of the lines of a job, comments left out.
struct JobValue {
    std::string Text;
    int Line = 0;
};
std::vector<JobValue> ValuesOfJob(const std::string& job);

// Why a row fills no job: "the row has 3 cells, the table 5 columns"; "" for one that does.
std::string WhyRowIsNone(const JobRow& row);

} // namespace Quillon

#pragma once
// Cells of CSV texts; their lines are made by CsvLine, which quotes what has to be.

#include "batch/outputs/Numbers.h"
#include "input/Csv.h"

#include <optional>
#include <string>

namespace Quillon {

// A cell of a line that is put together by hand: one with what parts cells or lines stands in quotes.
std::string CsvField(const std::string& text);

// A number by its shortest text, empty without one.
template <class T> std::string CsvNumber(const std::optional<T>& value) {
    return value ? ShortestText(*value) : "";
}

} // namespace Quillon

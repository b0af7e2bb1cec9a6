#pragma once
// Pieces of CSV texts (RFC 4180, lines end with LF).

#include "batch/Numbers.h"

#include <optional>
#include <string>
#include <vector>

namespace Quillon {

// A field; one with what parts fields or lines stands in quotes.
std::string CsvField(const std::string& text);

// A number by its shortest text, empty without one.
template <class T> std::string CsvNumber(const std::optional<T>& value) {
    return value ? ShortestText(*value) : "";
}

// A line of fields, as they stand: what may need quotes has been through CsvField.
std::string CsvLine(const std::vector<std::string>& fields);

} // namespace Quillon

#pragma once
// Columns of numbers from a text that another program has put on the clipboard.

#include "chart/records/SetTable.h"

#include <string>
#include <vector>

namespace Quillon {

// Columns of numbers from a text: X and Y of each set.
struct PastedData {
    SetTable X, Y;                  // what is empty or not there is missing
    std::vector<std::string> Names; // of the sets, from the heads of the Y columns; empty without heads
};

// Takes a text apart. Columns are separated by tabs where the first line has one, else by semicolons, else by
// commas, else by blanks, of which any number are one; a field may stand between quotes, which count where it
// begins. A first line with a text and without any number gives the names; numbers in quotes may be names.
// Where no comma separates, a decimal comma is read as well. An odd number of columns is the
// RuntimeError OddColumns, anything that is no number or a column too many another.
inline constexpr const char* OddColumns = "The number of data columns must be an even number (an X and Y "
                                          "column for each data series)!  Aborting...";
PastedData ReadPastedText(const std::string& text);

} // namespace Quillon

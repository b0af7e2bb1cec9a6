#pragma once
// Mean concentrations over the cell as CSV: what the form of integrated concentrations shows, all sets.

#include <string>

namespace Quillon {

struct CellRadii {
    float Inner = 5.6F, Outer = 7.3F; // cm
};

// Reads "INNER,OUTER". What is no such pair, or no cell, is a RuntimeError that says so.
CellRadii ParseCell(const std::string& text);

// A line for each row of the form, with the head
//
//     set,label,inner_cm,outer_cm,species,signal,mg_per_ml,molar,share
//
// share is a species' part of the total in the units in force; it is 1 for the total and empty for the totals
// of A and B. A unit that the model has no coefficient for is empty. What cannot be integrated is a
// RuntimeError that names the set.
std::string IntegrateCsv(const CellRadii& cell);

} // namespace Quillon

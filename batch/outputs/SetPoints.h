#pragma once
// Where the points of each set lie in the flat vectors of the fit.

#include "workspace/records/Counts.h"

#include <string>
#include <vector>

namespace Quillon {

// Points First..LastTrue are measured ones, LastTrue + 1..Last those of concentration constraints.
struct SetPoints {
    SetNo Set;
    RowNo Row;
    long First{};
    long LastTrue{};
    long Last{};
};

std::vector<SetPoints> PointsBySet();

// The label of a set. A lone one, whose directory nothing has taken off, is given without it.
std::string SetName(SetNo set);

} // namespace Quillon

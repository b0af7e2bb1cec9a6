#pragma once
// The columns of the graph at hand as they were before something was done to them that numbers do not come
// back from: logarithms drop what is not positive, and a sum that is rounded does not lead back. Whatever
// gives the graph other columns empties it.

#include "chart/records/SetTable.h"
#include "platform/Arrays.h"

#include <string>

namespace Quillon {

// The title of an axis without and with "Ln (...)" around it, as the scale last went from the one to the
// other: a title may hold 80 characters, and what the brackets have pushed out of it comes back from here.
// Both are empty before that.
struct LnTitles {
    std::string Plain, Bracketed;
    bool operator==(const LnTitles&) const = default;
};

// Of the values along X, or of those along Y.
struct ColumnsBefore {
    // As the caller handed them over, in the caller's units. Empty where the stored values are these.
    SetTable Raw;
    // The stored values before the first shift. Empty while no set is shifted.
    SetTable Unshifted;
    // What has been added to each set since then, in stored units; by set, from 1. In double: shifts that add
    // up to nothing are nothing.
    OneBased<double> Shift;
    LnTitles Titles; // of the axis; what an axis reads otherwise was typed since then, and stays
};

struct ChartColumns {
    ColumnsBefore X, Y;
};

inline bool IsShifted(const ColumnsBefore& before) {
    return !before.Unshifted.Empty();
}

} // namespace Quillon

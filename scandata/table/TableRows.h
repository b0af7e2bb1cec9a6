#pragma once
// Whole rows of the data set table moved, copied and emptied. What a row is made of is every member of the
// workspace that is held by row, and its remembered parameters; who names another row (a tie of zero offsets,
// the sets of the present fit) goes on naming the same one wherever it stands.

#include "workspace/records/Counts.h"

namespace Quillon {

// A row without a scan, as a fresh table has it, and out of the fit. Its own ties and those of others to it
// are gone.
void EmptyRow(RowNo row);

// Takes a row to the place of another; those between move up or down by one.
void MoveRow(RowNo from, RowNo to);

// Makes room: an empty row at that place, the rows behind it moved down as far as the first empty one.
// False, and nothing changed, when none of them is empty. HighestSet follows.
bool InsertRow(RowNo at);

// Takes a row out; those behind it move up.
void RemoveRow(RowNo row);

// The scan, its range, baseline and cell of a row go into another one, which is in the fit then and counts as
// changed. Constraints are not copied.
void CopyRow(RowNo from, RowNo to);

// True when no row holds a scan.
bool TableIsEmpty();

} // namespace Quillon

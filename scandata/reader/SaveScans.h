#pragma once
// The commands that write scans: the good data of a row, those of all sets in the fit, and a set's residuals
// as a baseline. A file that cannot be written is told once and nothing is written half.

#include "workspace/records/Counts.h"

namespace Quillon {

void SaveSubset(RowNo row); // asks for the file
void WriteIncludedSets();   // asks for the file of each included row; a cancel ends the command
void WriteBaselineDialog(bool withOffset); // asks for the set and the file

} // namespace Quillon

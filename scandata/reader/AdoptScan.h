#pragma once
// The one road by which a file becomes a part of a row of the data set table, whoever has named the file.

#include "scandata/reader/ScanReader.h"

#include <string>

namespace Quillon {

// Reads the scan at path into a row (1..MaxSets), which then holds it as any fresh row does: included in the
// fit, file and directory named, no baseline, the centerpiece of Work.CellType, no channel, the whole scan as
// the range, the type of data settled by the name, HighestSet raised. Work.ChosenPath and ChosenName are
// those of the file. A scan along wavelengths is none. A failure is handed back untold and leaves the whole
// workspace as it was.
ScanReadResult AdoptScan(const std::string& path, RowNo row, Ratios ratios = Ratios::Compared);

// Reads the baseline at path for a row and names it there; the row's data count as changed. A failure as
// above.
ReadFailure AdoptBaseline(const std::string& path, RowNo row);

} // namespace Quillon

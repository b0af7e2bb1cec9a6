#pragma once
// Writing scans in the layout that the reader takes: a subset of a scan, or the residuals of a fit as a
// baseline. A line ends with CR LF, numbers are parted by blanks and have as many digits as bring the same
// single back; the third number of a point is left out. A file is written whole or not at all: failures are
// the RuntimeErrors of the seam's WriteFile.

#include "workspace/records/Counts.h"

#include <string>

namespace Quillon {

// The cell number that a file name tells: of the newer names the one of their fields
// (scandata/reader/ScanNames.h), else with the newer Work.NameConvention its last character, otherwise its
// fifth; 0 where there is no digit.
int CellNumberOf(const std::string& fileName);

// The name offered for the good data of a row: "s", the set in two digits, the channel in lower case ("_" for
// none), the cell, "_", the speed in whole thousands, and a type that says what the data are and the cell
// once more: "s03b1_20.RA1", "IP" for fringes, "FI" for that type. The cell stands where both naming
// conventions look for it, so that the written file tells it again.
std::string SuggestedScanName(RowNo row, int cell);

// A comment and a row's header as lines 1 and 2 of a file, each with its end. The type letter is P for
// interference data and R otherwise; cell has one digit, or two.
std::string ScanHeaderText(const std::string& comment, RowNo row, int cell);

// One line for a point, with its end.
std::string ScanPointText(float radius, float value);

// The whole text of a file with the points of a row's fit range, its comment and header.
std::string ScanText(RowNo row, int cell);

// Writes the points of a row's fit range with its comment and header.
void WriteScan(const std::string& path, RowNo row, int cell);

// Writes the residuals of fit set k at its true points as a scan, at the current parameters. With
// offsetIncluded the zero offset counts as 0 in the fitted values, so that the file holds it. The header is
// that of the set's row. An arithmetic fault in the model has been told when false comes back, and nothing is
// written then. Work.PtFit and the parameters stay as they are.
bool WriteResiduals(const std::string& path, SetNo k, int cell, bool offsetIncluded);

} // namespace Quillon

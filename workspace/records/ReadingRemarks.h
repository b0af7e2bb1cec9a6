#pragma once
// What was found in a file of points that is no failure: readings that are no number and count as 0, lines
// behind the end of the list that are not read.
//
// It follows from the bytes of the file and from nothing else. So it is kept by their SHA-256 for as long as
// the program runs, and whoever shows a row or writes of it has it, wherever the row has gone meanwhile. A
// saved fit brings it along (persistence/codec/FitExtension.h). On the main thread alone.

#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

// Keeps what a file was read with; without a hash or a remark nothing is kept.
void KeepReadingRemark(const std::string& sha256, const std::string& remark);

// "line 4, '6.1 nan': a reading that is no number counts as 0", or "" where nothing is known of the file.
std::string ReadingRemark(const std::string& sha256);

// The same of the scan of a row, of a mean with the name of each of its files in front, "; " between them;
// and of the row's baseline, "" without one.
std::string RemarkOfScan(const Workspace& analysis, RowNo row);
std::string RemarkOfBaseline(const Workspace& analysis, RowNo row);

} // namespace Quillon

#pragma once
// The scans that lie in a folder or an archive.

#include "runs/SortedRun.h"

#include <string>

namespace Quillon {

// Reads every scan at a place, in the order of the walk; each file is opened once. Files that are no scans
// are passed over, one with the name or the headers of a scan that cannot be read is told, and so are scans
// with the same bytes, of which the first stays. A place that cannot be read or holds no scan is a
// RuntimeError that names it. The bytes of scans are kept where keepBytes asks for it: of an archive, whose
// scans are to be laid into a folder afterwards.
SortedRun ReadRun(const std::string& place, bool keepBytes);

// A name for people and for tables of UTF-8: bytes that are none of it as "\xNN".
std::string ShownName(const std::string& name);

} // namespace Quillon

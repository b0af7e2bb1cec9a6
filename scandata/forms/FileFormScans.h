#pragma once
// What the user does in the table of data sets with files: reading scans and baselines, copying a line for
// its next channel, clearing.

#include "scandata/forms/FileForm.h"

#include <string>
#include <vector>

namespace Quillon {

void FileFormNewFileButton();
void FileFormSubtractBlankButton();

// Load Next Channel. Where the line behind holds a scan it asks first whether to make room for the new one;
// without room in the table it says so.
void FileFormCopyFile();

void FileFormClearFiles(); // asks first where a scan is loaded

// Runs what fills the rows, as one change of the table, and tells what it gives in one message.
void FileFormFill(const TableFilling& fill);

// Reads scans from outside the table, one or several, as below, with channels and ranges proposed.
void FileFormOpenScans(const std::vector<std::string>& paths);

// Reads scans: the first into the current line, the others into the lines behind it that are free; one that
// cannot be read leaves its line to the next. What could not be read, and how many found no line, is told in
// one message at the end. Used for several files chosen at once and for files dropped on the form. Of several
// scans each gets a line for each of its columns (scandata/range/FindColumns.h), with its range proposed, for
// the user to look at; of one, and of a scan without a break, the whole scan is taken.
void FileFormReadFiles(const std::vector<std::string>& paths);

} // namespace Quillon

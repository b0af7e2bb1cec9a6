#pragma once
// What the user does in the table of data sets with files: reading scans and baselines, copying a line for
// its next channel, clearing.

#include <string>
#include <vector>

namespace Quillon {

void FileFormNewFileButton();
void FileFormSubtractBlankButton();
void FileFormCopyFile();
void FileFormClearFiles();

// Reads scans: the first into the current line, the others into the lines behind it that are free. Stops at
// the first that cannot be read, and tells when the table has no free line left. Used for several files
// chosen at once and for files dropped on the form.
void FileFormReadFiles(const std::vector<std::string>& paths);

} // namespace Quillon

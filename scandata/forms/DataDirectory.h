#pragma once
// Where the file dialogs start when nobody has said where the data are.

#include <string>

namespace Quillon {

// Fills Work.DataDirectory: the working directory, or what a search of the places where the instruments'
// programs leave their data finds instead; the last hit counts. With the newer Work.NameConvention these are,
// below each file-system root, "xlawin/xladata", "xlawin/xlidata", "xladata", "xlidata", and then today's
// directory in the one found; with another convention "xla", and today's directory in it, where they hold a
// file.
void FindDataDirectory();

// The name of today's directory: month, day and year of two digits each, without a leading zero of the month.
std::string TodaysDirectoryName();

} // namespace Quillon

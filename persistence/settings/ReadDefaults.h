#pragma once
// Reading the settings from the ini file.

#include <string>

namespace Quillon {

// The settings of the fit, section "gnllsq", into Work. A key that is missing gives its standing default. A
// value that cannot be taken (a number beyond its width) is told once, by its key, with what was read so far
// in force.
void ReadFitDefaults();

// The settings of the program, its own section, into Work, in the same way.
void ReadProgramDefaults();

// Says that the settings could not all be taken from the file, and why.
void TellReadFailure(const std::string& why);

} // namespace Quillon

#pragma once
// What quillon-fit says of itself.

#include <string>

namespace Quillon {

// What --help prints: each option with what it does, and what the exit status means, in lines with
// their ends. The page of the manual and the completion of the shell are held against it.
std::string HelpText();

// What --version prints, with its line end.
std::string VersionText();

} // namespace Quillon

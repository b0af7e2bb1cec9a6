#pragma once
// A fit save file may belong to a sister of this program, which is then started with it.

#include <string>

namespace Quillon {

// Offers to open the file in the program that it belongs to, finds that program (in the ini file under
// "Program Locations", or by asking) and starts it. True when it has been started; the user has been told
// otherwise, or did not want it. With fromCommandLine nothing is asked before the start.
bool OpenInSisterProgram(const std::string& program, const std::string& path, bool fromCommandLine);

} // namespace Quillon

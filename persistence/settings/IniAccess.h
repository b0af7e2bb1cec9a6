#pragma once
// The program's ini file: where it lies, and who says so when it cannot be written.

#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <string>

namespace Quillon {

// Sections. Each is found without regard to case.
namespace IniSection {
inline constexpr const char* FitSettings = "gnllsq";                 // how fits run and are shown
inline constexpr const char* Program = "quillon";                    // units, coefficients, cells
inline constexpr const char* ProgramLocations = "Program Locations"; // of programs that belong together
inline constexpr const char* RecentFiles = "File MRU";               // of the File menu, the latest first
inline constexpr const char* Desktop = "Desktop";                    // where windows and panes stand
} // namespace IniSection

// "QUILLON.ini", and where it lies: in the user's folder of settings, whether there is one yet or not.
std::string IniFileName();
std::string IniFilePath();

// Tells that settings could not be written, with the file's path. why: what went wrong, in words without a
// full stop.
void TellWriteFailure(const std::string& why);

} // namespace Quillon

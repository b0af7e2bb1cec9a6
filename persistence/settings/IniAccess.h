#pragma once
// The program's ini file: where it lies, and who says so when it cannot be written.

#include "platform/Paths.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

// Sections. Each is found without regard to case.
namespace IniSection {
inline constexpr const char* FitSettings = "gnllsq";
inline constexpr const char* Program = "quillon";
inline constexpr const char* ProgramLocations = "Program Locations";
inline constexpr const char* RecentFiles = "File MRU";
inline constexpr const char* Desktop = "Desktop"; // where windows and panes stand
} // namespace IniSection

inline std::string IniFileName() {
    return Work.ProgramNameUpper + ".ini";
}
inline std::string IniFilePath() {
    return JoinPath(Host.ConfigDirectory(), IniFileName());
}

// why: what went wrong, in words.
inline void TellWriteFailure(const std::string& why) {
    Tell("Error occurred while writing defaults to " + IniFileName() + "\n\n" + IniFilePath() + ": " + why,
         Work.ProgramName, BoxIcon::Warning);
}

} // namespace Quillon

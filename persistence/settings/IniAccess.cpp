#include "persistence/settings/IniAccess.h"

#include "platform/Paths.h"

namespace Quillon {

std::string IniFileName() {
    return Work.ProgramNameUpper + ".ini";
}

std::string IniFilePath() {
    return JoinPath(Host.ConfigDirectory(), IniFileName());
}

void TellWriteFailure(const std::string& why) {
    Tell("Error occurred while writing defaults to " + IniFileName() + "\n\n" + IniFilePath() + ": " + why,
         Work.ProgramName, BoxIcon::Warning);
}

} // namespace Quillon

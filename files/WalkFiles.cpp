#include "files/WalkFiles.h"

#include "files/FileStep.h"
#include "files/ReadWhole.h"
#include "platform/Paths.h"

#include <string_view>
#include <sys/stat.h>

namespace Quillon {

std::vector<PassedFile> WalkFiles(const std::string& place, const MeetFile& meet) {
    return IsDirectory(place) ? WalkFolder(place, meet) : WalkArchive(place, meet);
}

bool StaysBelow(const std::string& name) {
    if (name.empty() || name.find('\0') != std::string::npos || IsSeparator(name[0])) return false;
    if (name.size() > 1 && name[1] == ':') return false; // a drive
    std::string_view rest = name;
    while (true) {
        const std::size_t end = rest.find_first_of("/\\");
        if (rest.substr(0, end) == "..") return false;
        if (end == std::string_view::npos) return true;
        rest.remove_prefix(end + 1);
    }
}

void MakeFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) == 0) return;
    if (errno == EEXIST) RaiseError("there is something of that name already, and nothing is overwritten");
    RaiseWriteError(errno);
}

} // namespace Quillon

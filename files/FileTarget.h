#pragma once
// Which file a name means: through links, through descriptors that the program was started with, and under
// several spellings.

#include <optional>
#include <string>
#include <sys/stat.h>
#include <utility>

namespace Quillon {

// The part of a path before its last "/", with it; "./" when there is none.
std::string FolderOf(const std::string& path);

// Where bytes for a name go. Links are followed as the system follows them: where it refuses to, so does
// this, and the file at the end need not be there.
struct FileTarget {
    std::string Path;           // behind all links
    bool Exists = false;        // something stands there
    struct stat Status {};      // of it
    bool OpenElsewhere = false; // the name is that of an open descriptor ("/dev/stdout"): another file in its
                                // place would be seen by nobody who reads there
    int Error = 0;              // why nothing can be said about the name
};
FileTarget FindTarget(const std::string& path);

// One text for all spellings of a file, which need not be there yet: its folder without links, and its name.
// Where the folder cannot be looked at, the path as it is.
std::string ResolvedPath(const std::string& path);

// What tells a file that is there from every other one of the machine: its device and number. None for a name
// that leads nowhere.
using FileId = std::pair<dev_t, ino_t>;
std::optional<FileId> IdOf(const std::string& path);

// True when both names are those of one file that is there, by device and number: through links, hard ones
// too.
bool IsSameFile(const std::string& a, const std::string& b);

// True when a name is that of the program that is running.
bool IsThisProgram(const std::string& path);

} // namespace Quillon

#include "files/Descriptor.h"
#include "files/FileStep.h"
#include "files/WalkFiles.h"
#include "platform/Paths.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace Quillon {

namespace {

constexpr int DeepestFolder = 32; // below the one that was named

struct Walk {
    const MeetFile& Meet;
    std::vector<PassedFile> Passed;
    long Files = 0;
};

// The next bytes of a file behind those in bytes, up to so many in all.
void ReadUpTo(int descriptor, std::size_t most, std::string& bytes) {
    while (bytes.size() < most) {
        const std::size_t had = bytes.size();
        const std::size_t room = std::min(most - had, std::max(had, StartOfFile));
        bytes.resize(had + room);
        ssize_t n = 0;
        const int error = Step(FileStep::Read, [&] {
            n = ::read(descriptor, bytes.data() + had, room);
            return n < 0 ? -1 : 0;
        });
        bytes.resize(had + (error || n < 0 ? 0 : static_cast<std::size_t>(n)));
        if (error == EINTR) continue;
        if (error) RaiseReadError(error);
        if (n == 0) return;
    }
}

std::string ReadRest(int descriptor, std::string start) {
    ReadUpTo(descriptor, LargestMet + 1, start);
    if (start.size() > LargestMet) RaiseError("it is larger than 64 MB");
    return start;
}

// A pipe or a device that has the name of a scan must not hold the walk up: it is opened without waiting,
// and read only when it has turned out to be a file.
void MeetOne(Walk& walk, const Descriptor& folder, const std::string& title, const std::string& name) {
    const auto pass = [&](std::string why) { walk.Passed.push_back({name, std::move(why)}); };
    int number = -1;
    const int error = Step(FileStep::Open, [&] {
        return number = ::openat(folder.Number, title.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    });
    const Descriptor file(number);
    if (error) return pass(ReadErrorText(error));
    struct stat status {};
    if (::fstat(file.Number, &status) != 0) return pass(ReadErrorText(errno));
    if (S_ISDIR(status.st_mode)) return pass("a link to a folder");
    if (!S_ISREG(status.st_mode)) return pass("neither a file nor a folder");
    if (++walk.Files > MostMet) RaiseError("it holds more than 20000 files; name the folder of one run");
    std::string start;
    try {
        ReadUpTo(file.Number, StartOfFile, start);
    } catch (const RuntimeError& failure) {
        return pass(failure.Text);
    }
    walk.Meet({name, start, [&] { return ReadRest(file.Number, start); }});
}

// The names in an open folder, sorted; a folder's has a "/" behind it.
std::vector<std::string> NamesIn(int folder) {
    const int copy = ::fcntl(folder, F_DUPFD_CLOEXEC, 0); // closed with the listing
    DIR* const listing = copy < 0 ? nullptr : ::fdopendir(copy);
    if (!listing) {
        const int error = errno;
        if (copy >= 0) ::close(copy);
        RaiseReadError(error);
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> closing(listing, ::closedir);
    std::vector<std::string> names;
    while (const dirent* entry = ::readdir(listing)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") continue;
        struct stat status {};
        const bool isFolder =
            ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
        names.push_back(isFolder ? name + '/' : name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// below is "" or ends with "/".
void WalkBelow(Walk& walk, const Descriptor& folder, const std::string& below, int depth) {
    for (const std::string& title : NamesIn(folder.Number)) {
        if (!title.ends_with('/')) {
            MeetOne(walk, folder, title, below + title);
            continue;
        }
        const std::string bare = title.substr(0, title.size() - 1);
        const Descriptor next(
            ::openat(folder.Number, bare.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (!next)
            walk.Passed.push_back({below + bare, ReadErrorText(errno)});
        else if (depth == DeepestFolder)
            walk.Passed.push_back({below + bare, "it lies more than 32 folders deep"});
        else
            WalkBelow(walk, next, below + title, depth + 1);
    }
}

} // namespace

std::vector<PassedFile> WalkFolder(const std::string& folder, const MeetFile& meet) {
    const Descriptor top(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!top) RaiseReadError(errno);
    Walk walk{meet, {}, 0};
    WalkBelow(walk, top, "", 0);
    return std::move(walk.Passed);
}

} // namespace Quillon

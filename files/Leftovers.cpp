#include "files/Leftovers.h"

#include "files/Descriptor.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <dirent.h>
#include <memory>
#include <mutex>
#include <set>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <vector>

namespace Quillon {

namespace {

constexpr std::string_view Start = ".quillon-"; // then the number of the process, "-" and a count

std::atomic<unsigned> Given{0}; // names of this process so far; files are written on several threads

// Who has given a name: the process, 0 when it is none of ours, and as the how manieth of it.
struct Giver {
    pid_t Process = 0;
    unsigned Count = 0;
};

Giver GiverOf(std::string_view name) {
    if (!name.starts_with(Start)) return {};
    name.remove_prefix(Start.size());
    pid_t owner = 0;
    unsigned count = 0;
    const char* const end = name.data() + name.size();
    const auto number = std::from_chars(name.data(), end, owner);
    if (number.ec != std::errc{} || number.ptr == end || *number.ptr != '-') return {};
    const auto rest = std::from_chars(number.ptr + 1, end, count);
    return rest.ec == std::errc{} && rest.ptr == end && owner > 0 ? Giver{owner, count} : Giver{};
}

// A name with our own number that we have not given yet is that of an earlier process of the number.
bool IsDead(const Giver& giver) {
    if (giver.Process == ::getpid()) return giver.Count > Given;
    return ::kill(giver.Process, 0) != 0 && errno == ESRCH;
}

// Nobody marks it as in use. A file that cannot be asked counts as in use.
bool IsFree(const std::string& path) {
    const Descriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    return file && ::fstat(file.Number, &status) == 0 && S_ISREG(status.st_mode) &&
           ::flock(file.Number, LOCK_EX | LOCK_NB) == 0;
}

std::vector<std::string> LeftoversIn(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), &::closedir);
    if (!listing) return names;
    while (const dirent* entry = ::readdir(listing.get()))
        if (const Giver giver = GiverOf(entry->d_name); giver.Process > 0 && IsDead(giver))
            names.emplace_back(entry->d_name);
    return names;
}

bool IsFirstLookInto(const std::string& folder) {
    static std::mutex one;
    static std::set<std::string> seen;
    const std::scoped_lock lock(one);
    return seen.insert(folder).second;
}

} // namespace

std::string NameBeside(const std::string& folder) {
    return folder + std::string(Start) + std::to_string(::getpid()) + "-" + std::to_string(++Given);
}

void MarkInUse(int descriptor) {
    ::flock(descriptor, LOCK_EX | LOCK_NB);
}

void RemoveLeftovers(const std::string& folder) {
    if (!IsFirstLookInto(folder)) return;
    for (const std::string& name : LeftoversIn(folder))
        if (const std::string path = folder + name; IsFree(path)) ::unlink(path.c_str());
}

} // namespace Quillon

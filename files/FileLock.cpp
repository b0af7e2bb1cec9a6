#include "files/FileLock.h"

#include "files/Descriptor.h"
#include "files/FileTarget.h"

#include <cerrno>
#include <chrono>
#include <sys/file.h>
#include <thread>

namespace Quillon {

namespace {

constexpr std::chrono::seconds LongestWait{3}; // a copy that has been stopped must not stop the others
constexpr std::chrono::milliseconds BetweenTries{5};

bool Take(int descriptor, std::chrono::milliseconds longestWait) {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    for (;;) {
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return true;
        if (errno != EWOULDBLOCK && errno != EINTR) return false;
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(BetweenTries);
    }
}

std::shared_ptr<void> Hold(const std::string& path, std::chrono::milliseconds longestWait) {
    const std::string resolved = ResolvedPath(path);
    const std::string folder = FolderOf(resolved);
    const std::string lock = folder + "." + resolved.substr(resolved.rfind('/') + 1) + ".lock";
    const auto file =
        std::make_shared<Descriptor>(::open(lock.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    return *file && Take(file->Number, longestWait) ? file : nullptr;
}

} // namespace

std::shared_ptr<void> HoldFile(const std::string& path) {
    return Hold(path, LongestWait);
}

std::shared_ptr<void> HoldFileNow(const std::string& path) {
    return Hold(path, std::chrono::milliseconds{0});
}

} // namespace Quillon

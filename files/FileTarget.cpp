#include "files/FileTarget.h"

#include "files/FileStep.h"

#include <climits>
#include <cstdlib>
#include <linux/magic.h>
#include <memory>
#include <sys/vfs.h>
#include <unistd.h>

namespace Quillon {

namespace {

constexpr int LongestChain = 40; // links behind one another, as many as the system follows

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

// What a link holds; "" for what is no link.
std::string LinkText(const std::string& path) {
    char text[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), text, sizeof text);
    return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : "";
}

// "/proc/self/fd/1" and the like look like links but are open files.
bool IsDescriptorName(const std::string& path) {
    const std::string name = NameOf(path);
    struct statfs system {};
    return !name.empty() && name.find_first_not_of("0123456789") == std::string::npos &&
           ::statfs(FolderOf(path).c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

} // namespace

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

FileTarget FindTarget(const std::string& path) {
    FileTarget target;
    target.Path = path;
    target.Exists = ::stat(path.c_str(), &target.Status) == 0;
    if (!target.Exists && errno != ENOENT) {
        target.Error = errno;
        return target;
    }
    // The system has followed the links just now, to their end or to where nothing is.
    for (int i = 0; i < LongestChain; ++i) {
        target.OpenElsewhere = IsDescriptorName(target.Path);
        const std::string next = target.OpenElsewhere ? "" : LinkText(target.Path);
        if (next.empty()) return target;
        target.Path = next[0] == '/' ? next : FolderOf(target.Path) + next;
    }
    target.Error = ELOOP;
    return target;
}

std::string ResolvedPath(const std::string& path) {
    const FileTarget target = FindTarget(path);
    const std::unique_ptr<char, decltype(&std::free)> folder(
        ::realpath(FolderOf(target.Path).c_str(), nullptr), &std::free);
    if (target.Error || !folder) return path;
    const std::string resolved = folder.get();
    return (resolved == "/" ? "" : resolved) + "/" + NameOf(target.Path);
}

std::optional<FileId> IdOf(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileId{status.st_dev, status.st_ino};
}

bool IsSameFile(const std::string& a, const std::string& b) {
    const std::optional<FileId> id = IdOf(a);
    return id && id == IdOf(b);
}

bool IsThisProgram(const std::string& path) {
    return IsSameFile(path, "/proc/self/exe");
}

} // namespace Quillon

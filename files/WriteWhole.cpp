#include "files/Descriptor.h"
#include "files/WholeFile.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <sys/stat.h>

namespace Quillon {

std::function<int(FileStep)> BeforeFileStep;

namespace {

constexpr std::size_t LargestPiece = 65536; // bytes of one write
constexpr int LongestChain = 40;            // links behind one another, as many as the system follows

const char* WriteErrorText(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorText::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorText::PermissionDenied;
    case ENOENT:
    case ENOTDIR:
        return ErrorText::PathNotFound;
    default:
        return ErrorText::FileAccess;
    }
}

[[noreturn]] void RaiseWriteError(int error) {
    RaiseError(WriteErrorText(error));
}

// A step on the disk: 0, or the error number. call returns -1 when it has failed.
template <class Call> int Step(FileStep step, const Call& call) {
    if (const int injected = BeforeFileStep ? BeforeFileStep(step) : 0) return injected;
    return call() == -1 ? errno : 0;
}

int WriteAll(int descriptor, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = 0;
        const int error = Step(FileStep::Write, [&] {
            n = ::write(descriptor, bytes.data() + done, std::min(bytes.size() - done, LargestPiece));
            return n < 0 ? -1 : 0;
        });
        if (error == EINTR) continue;
        if (error || n == 0) return error ? error : ENOSPC;
        done += static_cast<std::size_t>(n);
    }
    return 0;
}

// Some file systems have nothing to bring to a disk.
int Flush(FileStep step, int descriptor) {
    const int error = Step(step, [&] { return ::fsync(descriptor); });
    return error == EINVAL || error == ENOSYS ? 0 : error;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return "./";
    return path.substr(0, slash + 1);
}

// The file behind a link, which need not be there.
std::string BehindLinks(std::string path) {
    for (int i = 0; i < LongestChain; ++i) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length <= 0) return path; // no link
        const std::string next(target, static_cast<std::size_t>(length));
        path = next[0] == '/' ? next : FolderOf(path) + next;
    }
    RaiseError(ErrorText::FileAccess);
}

// A name of this process's own, of a length that every directory takes; "." keeps it out of most listings.
std::string NameBeside(const std::string& folder) {
    static unsigned count = 0;
    return folder + ".quillon-" + std::to_string(::getpid()) + "-" + std::to_string(++count);
}

// What is to be written, and where.
struct Replacement {
    std::string Folder; // with its "/"
    std::string Target;
    const std::string& Bytes;
    const struct stat* Former; // nullptr when there is no former file
    mode_t Mode() const { return Former ? Former->st_mode & 0777 : 0666; }
};

// Permissions and, as far as this user may, owner and group. Giving a file away can take permissions from it,
// so these come last.
int KeepAttributes(int descriptor, const Replacement& what) {
    if (!what.Former) return 0;
    const bool kept = ::fchown(descriptor, what.Former->st_uid, what.Former->st_gid) == 0 ||
                      ::fchown(descriptor, static_cast<uid_t>(-1), what.Former->st_gid) == 0;
    static_cast<void>(kept); // a file of this user's own is better than none
    return Step(FileStep::Keep, [&] { return ::fchmod(descriptor, what.Mode()); });
}

int Fill(int descriptor, const Replacement& what) {
    int error = WriteAll(descriptor, what.Bytes);
    if (!error) error = KeepAttributes(descriptor, what);
    if (!error) error = Flush(FileStep::Flush, descriptor);
    return error;
}

// The complete file beside takes the target's name, or goes.
int Replace(const std::string& beside, const Replacement& what) {
    const int error =
        Step(FileStep::Replace, [&] { return std::rename(beside.c_str(), what.Target.c_str()); });
    if (error) ::unlink(beside.c_str());
    return error;
}

// A file without a name. Unsupported: the file system has no such files, and nothing has been left.
constexpr int Unsupported = -1;

int WriteNameless(const Replacement& what) {
    int number = -1;
    const int refused = Step(FileStep::Make, [&] {
        number = ::open(what.Folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, what.Mode());
        return number;
    });
    Descriptor file(number);
    if (refused == EOPNOTSUPP || refused == EISDIR || refused == EINVAL) return Unsupported;
    if (refused) return refused;
    if (const int error = Fill(file.Number, what)) return error;
    const std::string open = "/proc/self/fd/" + std::to_string(file.Number);
    std::string beside;
    int error = EEXIST;
    for (int i = 0; i < 100 && error == EEXIST; ++i) { // another process of that number may have left some
        beside = NameBeside(what.Folder);
        error = Step(FileStep::Name, [&] {
            return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, beside.c_str(), AT_SYMLINK_FOLLOW);
        });
    }
    return error ? Unsupported : Replace(beside, what);
}

int WriteNamed(const Replacement& what) {
    std::string beside;
    int number = -1;
    int error = EEXIST;
    for (int i = 0; i < 100 && error == EEXIST; ++i) {
        beside = NameBeside(what.Folder);
        error = Step(FileStep::Make, [&] {
            number = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, what.Mode());
            return number;
        });
    }
    if (error) return error;
    Descriptor file(number);
    error = Fill(file.Number, what);
    if (file.Close() != 0 && !error) error = errno;
    if (!error) return Replace(beside, what);
    ::unlink(beside.c_str());
    return error;
}

// The new name survives a loss of power; a file system that cannot do it is no failure.
void FlushName(const Replacement& what) {
    const Descriptor folder(::open(what.Folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) Flush(FileStep::FlushName, folder.Number);
}

void WriteInPlace(const std::string& path, const std::string& bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file) RaiseWriteError(errno);
    if (const int error = WriteAll(file.Number, bytes)) RaiseWriteError(error);
}

} // namespace

void WriteWhole(const std::string& path, const std::string& bytes) {
    struct stat former {};
    const bool exists = ::stat(path.c_str(), &former) == 0;
    if ((exists && S_ISDIR(former.st_mode)) || path.empty()) RaiseError(ErrorText::FileAccess);
    if (exists && !S_ISREG(former.st_mode)) return WriteInPlace(path, bytes);
    const std::string target = BehindLinks(path);
    if (exists && ::access(target.c_str(), W_OK) != 0) RaiseWriteError(errno);
    const Replacement what{FolderOf(target), target, bytes, exists ? &former : nullptr};
    int error = WriteNameless(what);
    if (error == Unsupported) error = WriteNamed(what);
    if (error) RaiseWriteError(error);
    FlushName(what);
}

std::string WhyNotWritable(const std::string& path) {
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) return "is a directory";
    if (exists && ::access(path.c_str(), W_OK) != 0) return WriteErrorText(errno);
    if (exists && !S_ISREG(status.st_mode)) return "";
    return ::access(FolderOf(BehindLinks(path)).c_str(), W_OK) == 0 ? "" : WriteErrorText(errno);
}

void WriteStandardOutput(const std::string& bytes) {
    if (const int error = WriteAll(STDOUT_FILENO, bytes)) RaiseWriteError(error);
}

void SurviveFileSizeLimit() {
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace Quillon

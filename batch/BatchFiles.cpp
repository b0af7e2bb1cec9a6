// Files of the batch run: read whole, written whole.
#include "batch/BatchPlatform.h"
#include "platform/Paths.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace Quillon {

namespace {

// A file descriptor that closes itself.
struct OpenFile {
    explicit OpenFile(int descriptor) : Descriptor(descriptor) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (Descriptor >= 0) ::close(Descriptor);
    }
    int Descriptor;
};

[[noreturn]] void RaiseReadError(int error) {
    const bool missing = error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
    RaiseError(missing ? ErrorText::FileNotFound : ErrorText::FileAccess);
}

const char* WriteErrorText(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
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

// 0, or the error number.
int WriteAll(int descriptor, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (n > 0)
            done += static_cast<std::size_t>(n);
        else if (n == 0 || errno != EINTR)
            return n == 0 ? ENOSPC : errno;
    }
    return 0;
}

// Devices and pipes cannot be replaced by another file; they take the bytes as they come.
void WriteInPlace(const std::string& path, const std::string& bytes) {
    const OpenFile file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.Descriptor < 0) RaiseWriteError(errno);
    if (const int error = WriteAll(file.Descriptor, bytes)) RaiseWriteError(error);
}

// Where a link leads to, so that the file behind it is replaced and not the link.
std::string LinkTarget(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) ? resolved : path;
}

// Writes the bytes to a new file and brings them to the disk; 0, or the error number.
int WriteNewFile(const std::string& path, mode_t mode, bool sameMode, const std::string& bytes) {
    OpenFile file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file.Descriptor < 0) return errno;
    int error = WriteAll(file.Descriptor, bytes);
    if (!error && sameMode && ::fchmod(file.Descriptor, mode) != 0) error = errno;
    if (!error && ::fsync(file.Descriptor) != 0) error = errno;
    const int closed = ::close(file.Descriptor);
    file.Descriptor = -1;
    return !error && closed != 0 ? errno : error;
}

// The new name in its directory survives a loss of power; a file system that cannot do it is no failure.
void SyncDirectory(const std::string& path) {
    const std::string directory = DirectoryOf(path);
    const OpenFile opened(
        ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.Descriptor >= 0) ::fsync(opened.Descriptor);
}

} // namespace

std::string BatchReadFile(const std::string& path) {
    const OpenFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.Descriptor < 0) RaiseReadError(errno);
    struct stat status {};
    if (::fstat(file.Descriptor, &status) != 0) RaiseReadError(errno);
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode)) RaiseError(ErrorText::FileAccess);
    std::string bytes;
    if (status.st_size > 0) bytes.reserve(static_cast<std::size_t>(status.st_size));
    char block[16384];
    for (;;) {
        const ssize_t n = ::read(file.Descriptor, block, sizeof block);
        if (n > 0)
            bytes.append(block, static_cast<std::size_t>(n));
        else if (n == 0)
            return bytes;
        else if (errno != EINTR)
            RaiseReadError(errno);
    }
}

void BatchWriteFile(const std::string& path, const std::string& bytes) {
    struct stat former {};
    const bool exists = ::stat(path.c_str(), &former) == 0;
    if (exists && S_ISDIR(former.st_mode)) RaiseError(ErrorText::FileAccess);
    if (exists && !S_ISREG(former.st_mode)) {
        WriteInPlace(path, bytes);
        return;
    }
    const std::string target = exists ? LinkTarget(path) : path;
    const std::string beside = target + ".new-" + std::to_string(::getpid());
    const mode_t mode = exists ? former.st_mode & 0777 : 0666;
    int error = WriteNewFile(beside, mode, exists, bytes);
    if (!error && ::rename(beside.c_str(), target.c_str()) != 0) error = errno;
    if (error) {
        if (error != EEXIST) ::unlink(beside.c_str());
        RaiseWriteError(error);
    }
    SyncDirectory(target);
}

std::string WhyNotWritable(const std::string& path) {
    if (BatchDirectoryExists(path)) return "is a directory";
    struct stat status {};
    const bool device = ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
    const std::string directory = DirectoryOf(path);
    const std::string place = device ? path : directory.empty() ? "." : directory;
    return ::access(place.c_str(), W_OK) == 0 ? "" : WriteErrorText(errno);
}

bool BatchFileExists(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool BatchDirectoryExists(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void WriteStandardOutput(const std::string& bytes) {
    if (const int error = WriteAll(STDOUT_FILENO, bytes)) RaiseWriteError(error);
}

} // namespace Quillon

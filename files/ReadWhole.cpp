#include "files/Descriptor.h"
#include "files/WholeFile.h"
#include "platform/RuntimeError.h"

#include <cerrno>
#include <sys/stat.h>

namespace Quillon {

namespace {

[[noreturn]] void RaiseReadError(int error) {
    const bool missing = error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
    RaiseError(missing ? ErrorText::FileNotFound : ErrorText::FileAccess);
}

} // namespace

std::string ReadWhole(const std::string& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) RaiseReadError(errno);
    struct stat status {};
    if (::fstat(file.Number, &status) != 0) RaiseReadError(errno);
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode)) RaiseError(ErrorText::FileAccess);
    std::string bytes;
    if (status.st_size > 0) bytes.reserve(static_cast<std::size_t>(status.st_size));
    char block[16384];
    for (;;) {
        const ssize_t n = ::read(file.Number, block, sizeof block);
        if (n > 0)
            bytes.append(block, static_cast<std::size_t>(n));
        else if (n == 0)
            return bytes;
        else if (errno != EINTR)
            RaiseReadError(errno);
    }
}

bool IsFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool IsDirectory(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace Quillon
